// toolbar.h -- the tool bar's thinking: what its buttons do and show, and where it stands. Its window is tool_window.h.
#pragma once
#include "platform/tool_window.h"
#include "resources/resource.h"

// The check buttons' ids are consecutive.
constexpr int firstCheckButton = buttonMoveFile1, lastCheckButton = buttonAfMap;
constexpr bool IsCheckButton(int id) { return id >= firstCheckButton && id <= lastCheckButton; }
constexpr bool IsToolButton(int id) { return IsCheckButton(id) || (id >= buttonOpen1 && id <= buttonSetup); }

// The window, its icons and states; its dialog keys are served from then on.
void CreateToolbarWindow();
void DestroyToolbarWindow();
void* ToolbarWindowHandle();
// Goes to a spot tied to the main window with fromMainWindow 1; with 0 it stays and is only pulled onto the monitor.
void PlaceToolbar(int fromMainWindow);
// `rect` moved by as little as brings it onto the monitor; one larger than the monitor starts at its left and top.
ScreenRect PulledOnto(const ScreenRect& monitor, const ScreenRect& rect);

// State of a check button, shown by the window when there is one.
void CheckButton(int id, bool on);
bool ButtonChecked(int id);
// Button 1112 shows the state of File 2, or of File 3 while Shift is held in Expert mode; 1034 changes its icon too.
void ShowSecondFileButtons();

void DefaultToolbar();
