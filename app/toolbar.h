// toolbar.h -- the tool bar's thinking: what its buttons do and show. Its window is toolbar_window.cpp.
#pragma once

// The hands, registered by toolbar_window.cpp before the program starts; without them there is no tool bar to see.
struct ToolbarHands {
    void (*create)();                      // the window, its icons, and SetDialogWindow
    void (*destroy)();
    void* (*window)();                     // its handle, nullptr when there is none
    void (*place)(int fromMainWindow);
    void (*showChecked)(int id, bool on);  // a check button's new state
};
void RegisterToolbarHands(const ToolbarHands& hands);

void CreateToolbarWindow();
void DestroyToolbarWindow();
void* ToolbarWindowHandle();
// Goes to a spot tied to the main window with fromMainWindow 1; with 0 it stays and is only pulled onto the monitor.
void PlaceToolbar(int fromMainWindow);

// The check buttons, by resource id.
constexpr int buttonMoveFile1 = 1111, buttonMoveFile2 = 1112, buttonPosition = 1113, buttonGraphs = 1114, buttonAnime = 1115,
              buttonPlay = 1116, buttonAfMap = 1117;
constexpr int firstCheckButton = buttonMoveFile1, lastCheckButton = buttonAfMap;
void CheckButton(int id, bool on);
bool ButtonChecked(int id);

void DefaultToolbar();
