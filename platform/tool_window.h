// tool_window.h -- the small window of buttons beside the main one. What its buttons mean is app/toolbar.h's business.
// Two halves: app/toolbar_window.cpp shows dialog 1018; the headless half keeps the states.
#pragma once

struct ScreenRect { int left, top, right, bottom; };  // screen pixels, right and bottom exclusive

// Makes the window, not yet shown, all buttons clear. `pressed` is called for each press with the button's state after
// it; buttons that hold no state say false. `closed` is called when the window is asked to close, `gone` when it went.
struct ToolWindowEvents {
    void (*pressed)(int id, bool checked);
    void (*closed)();
    void (*gone)();
};
int OpenToolWindow(const ToolWindowEvents& events);  // 0 done, 1 failed
void CloseToolWindow();
void* ToolWindowHandle();  // nullptr when there is none
// Without the window these do nothing.
void SetToolButton(int id, bool checked);
void SetToolButtonIcon(int id, int iconResource);
void SetToolButtonTip(int id, const char* text);  // ASCII
ScreenRect ToolWindowRect();
// Moves and shows it, without activating it or changing size and order.
void PlaceToolWindow(int left, int top);
