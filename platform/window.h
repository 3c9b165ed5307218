// window.h -- the main window as the drawing layer needs it: a client area that shows pixels, messages, input.
// The headless half keeps pixels and takes its input from a script (platform/headless/script.h).
#pragma once
#include <cstdint>

#include "platform/tool_window.h"

struct WindowOptions {
    const char* title;      // UTF-8
    int iconResource;
    int x, y, width, height;  // screen position, client size
    bool minimised;           // made minimised, shown later
};
// 0 done, -1 failed.
int OpenMainWindow(const WindowOptions& options);
void CloseMainWindow();
bool MainWindowOpen();
// Serves pending messages. 0; -1 closed or failed.
int PumpMessages();
// Blocks until there is something to pump, at most for this time.
void WaitForMessages(int milliseconds);
// The close message of the main window has come.
bool CloseRequested();
// The pixels that the window shows from now on (BGRX, top row first, pitch in pixels); PresentPixels puts the top left
// part on the window, as does a paint message.
uint32_t* AllocateWindowPixels(int width, int height, int* pitch);
int PresentPixels(bool waitForBlank);
void WindowClientSize(int* width, int* height);
void WindowPosition(int* x, int* y);
void SetWindowClientSize(int width, int height);
void MoveMainWindow(int x, int y);
void ShowMainWindow(int how);  // 0 normal, 1 minimised, 2 maximised, 3 restored, 4 as it is, without activating it
bool MainWindowMaximised();
// Where the window stands when it is neither maximised nor minimised, frame included.
ScreenRect MainWindowNormalRect();
// The whole monitor nearest to a rectangle.
ScreenRect MonitorRect(const ScreenRect& place);
void BringMainWindowToFront();
enum class Foreground { mainWindow, toolbar, other };
Foreground ForegroundWindow();
void* MainWindowHandle();
void VirtualScreenSize(int* width, int* height);
void SetDialogKeysWindow(void* window);
// Input.
void MousePosition(int* x, int* y);
uint32_t MouseButtonMask();
int TakeWheelDelta();   // 120 a notch, since the last call
int TakeHWheelDelta();
int TakeTypedChar();    // 0 for none
void ClearTypedChars();
void AllowIme(bool allowed);
