#include "platform/window.h"

#include <windows.h>

#include <algorithm>
#include <array>

#include "platform/win32/owners.h"
#include "platform/win32/sleep_timer.h"
#include "platform/win32/wide.h"

constexpr wchar_t windowClass[] = L"ZRKA";
constexpr DWORD windowStyle = WS_OVERLAPPEDWINDOW;  // caption, system menu, minimise and maximise boxes

static HWND mainWindow;
static HWND dialogKeysWindow;
static bool closeRequested;
static bool pumped;  // since the window was made
static POINT lastPosition;  // screen; a minimised window stands far outside

// The back buffer: a section that GDI can copy from.
static HDC surfaceContext;
static HBITMAP surfaceBitmap;
static int surfaceWidth, surfaceHeight;

// Input since it was last taken.
static int wheelDelta, hWheelDelta;
static uint32_t buttonsHeld, buttonsPressed;
static std::array<uint8_t, 64> typed;  // ring; more than that within one pass is dropped
static unsigned typedFirst, typedCount;

static void PutTypedChar(WPARAM character) {
    if (character == 0 || character > 255 || typedCount == typed.size()) return;
    typed[(typedFirst + typedCount++) % typed.size()] = static_cast<uint8_t>(character);
}

// --- what the window shows -------------------------------------------------------------------------------------------

static void ShowPixels(HDC context) {
    RECT client;
    GetClientRect(mainWindow, &client);
    const int width  = std::min<int>(client.right, surfaceWidth);
    const int height = std::min<int>(client.bottom, surfaceHeight);
    BitBlt(context, 0, 0, width, height, surfaceContext, 0, 0, SRCCOPY);
    // Only when the screens have grown and the surface not yet.
    if (client.right > width) PatBlt(context, width, 0, client.right - width, client.bottom, BLACKNESS);
    if (client.bottom > height) PatBlt(context, 0, height, width, client.bottom - height, BLACKNESS);
}

static void Paint() {
    PAINTSTRUCT paint;
    ShowPixels(BeginPaint(mainWindow, &paint));
    EndPaint(mainWindow, &paint);
}

static void ReleasePixels() {
    if (surfaceContext) DeleteDC(surfaceContext);
    if (surfaceBitmap) DeleteObject(surfaceBitmap);
    surfaceContext = nullptr;
    surfaceBitmap  = nullptr;
    surfaceWidth = surfaceHeight = 0;
}

uint32_t* AllocateWindowPixels(int width, int height, int* pitch) {
    constexpr int linePixels = 16;  // 64 bytes
    ReleasePixels();
    *pitch = ((width + linePixels - 1) / linePixels | 1) * linePixels;
    BITMAPINFO info = {};
    info.bmiHeader.biSize     = sizeof info.bmiHeader;
    info.bmiHeader.biWidth    = *pitch;
    info.bmiHeader.biHeight   = -height;  // top row first
    info.bmiHeader.biPlanes   = 1;
    info.bmiHeader.biBitCount = 32;
    void* pixels   = nullptr;
    surfaceContext = CreateCompatibleDC(nullptr);
    surfaceBitmap  = CreateDIBSection(surfaceContext, &info, DIB_RGB_COLORS, &pixels, nullptr, 0);
    if (!surfaceBitmap) {
        ReleasePixels();
        return nullptr;
    }
    SelectObject(surfaceContext, surfaceBitmap);
    surfaceWidth  = width;
    surfaceHeight = height;
    return static_cast<uint32_t*>(pixels);
}

// The composition of the desktop follows the vertical blank. Loaded when it is first wanted, as few switch VSync on.
static void WaitForBlank() {
    using Flush = HRESULT(WINAPI*)();
    static const auto flush =
        reinterpret_cast<Flush>(reinterpret_cast<void*>(GetProcAddress(LoadLibraryW(L"dwmapi.dll"), "DwmFlush")));
    if (flush) flush();
}

int PresentPixels(bool waitForBlank) {
    if (!mainWindow || !surfaceContext) return -1;
    const HDC context = GetDC(mainWindow);
    ShowPixels(context);
    ReleaseDC(mainWindow, context);
    if (waitForBlank) WaitForBlank();
    return 0;
}

// --- messages ----------------------------------------------------------------------------------------------------------

static void ButtonDown(uint32_t button) {
    // A click that is over before anybody looked still counts once, hence the second mask.
    buttonsHeld |= button;
    buttonsPressed |= button;
    SetCapture(mainWindow);  // a drag may leave the window
}

static void ButtonUp(uint32_t button) {
    buttonsHeld &= ~button;
    if (buttonsHeld == 0) ReleaseCapture();
}

static uint32_t SideButton(WPARAM wParam) { return GET_XBUTTON_WPARAM(wParam) == XBUTTON1 ? 8 : 16; }

static bool ServeMouse(UINT message, WPARAM wParam) {
    switch (message) {
        case WM_LBUTTONDOWN: ButtonDown(1); return true;
        case WM_RBUTTONDOWN: ButtonDown(2); return true;
        case WM_MBUTTONDOWN: ButtonDown(4); return true;
        case WM_XBUTTONDOWN: ButtonDown(SideButton(wParam)); return true;
        case WM_LBUTTONUP: ButtonUp(1); return true;
        case WM_RBUTTONUP: ButtonUp(2); return true;
        case WM_MBUTTONUP: ButtonUp(4); return true;
        case WM_XBUTTONUP: ButtonUp(SideButton(wParam)); return true;
        case WM_CAPTURECHANGED: buttonsHeld = 0; return true;  // a dialog came between; no release will arrive
        case WM_MOUSEWHEEL: wheelDelta += GET_WHEEL_DELTA_WPARAM(wParam); return true;
        case WM_MOUSEHWHEEL: hWheelDelta += GET_WHEEL_DELTA_WPARAM(wParam); return true;
        default: return false;
    }
}

// Arrows have no character; they stand in the queue as 28 to 31.
static void ServeKey(WPARAM key) {
    switch (key) {
        case VK_RIGHT: PutTypedChar(28); break;
        case VK_LEFT: PutTypedChar(29); break;
        case VK_UP: PutTypedChar(30); break;
        case VK_DOWN: PutTypedChar(31); break;
    }
}

static LRESULT CALLBACK MainWindowMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (ServeMouse(message, wParam)) return message == WM_XBUTTONDOWN || message == WM_XBUTTONUP;
    switch (message) {
        case WM_CLOSE: closeRequested = true; return 0;  // the window lives until the settings are written
        case WM_DESTROY: mainWindow = nullptr; return 0;
        case WM_PAINT: Paint(); return 0;
        case WM_ERASEBKGND: return 1;
        case WM_CHAR: PutTypedChar(wParam); return 0;
        case WM_KEYDOWN: ServeKey(wParam); break;
        case WM_MOVE:
            if (RECT frame; !IsIconic(window) && GetWindowRect(window, &frame)) lastPosition = {frame.left, frame.top};
            break;
        case WM_SYSCOMMAND:
            // Alt or F10 alone would stop the frames until the next key. Alt with the space bar still opens the menu.
            if ((wParam & 0xFFF0) == SC_KEYMENU && lParam == 0) return 0;
            break;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

// True when the queue held the message to quit.
static bool ServeMessages(UINT kinds) {
    bool quit = false;
    for (MSG message; PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE | kinds);) {
        if (message.message == WM_QUIT) quit = true;
        if (dialogKeysWindow && IsDialogMessageW(dialogKeysWindow, &message)) continue;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    return quit;
}

// Painting comes last. The first pump leaves it to the second: an empty window would be painted, and the tool bar with
// all its buttons, while the first frame waits. That an empty queue is found before it also puts a frame on the screen.
int PumpMessages() {
    constexpr UINT allButPaint = PM_QS_INPUT | PM_QS_POSTMESSAGE | PM_QS_SENDMESSAGE;
    bool quit = ServeMessages(allButPaint);
    if (pumped) quit |= ServeMessages(0);
    pumped = true;
    return quit || closeRequested || !mainWindow ? -1 : 0;
}

void WaitForMessages(int milliseconds) {
    const HANDLE timer = SleepTimer(milliseconds);
    MsgWaitForMultipleObjectsEx(1, &timer, INFINITE, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
}

bool CloseRequested() { return closeRequested; }

// --- the window ----------------------------------------------------------------------------------------------------------

static HICON OwnIcon(int resource, int widthMetric, int heightMetric) {
    return static_cast<HICON>(LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(resource), IMAGE_ICON,
                                         GetSystemMetrics(widthMetric), GetSystemMetrics(heightMetric), LR_SHARED));
}

static void RegisterWindowClass(int iconResource) {
    WNDCLASSEXW description   = {};
    description.cbSize        = sizeof description;
    description.style         = CS_OWNDC;
    description.lpfnWndProc   = MainWindowMessage;
    description.hInstance     = GetModuleHandleW(nullptr);
    description.hIcon         = OwnIcon(iconResource, SM_CXICON, SM_CYICON);
    description.hIconSm       = OwnIcon(iconResource, SM_CXSMICON, SM_CYSMICON);
    description.hCursor       = LoadCursorW(nullptr, IDC_ARROW);
    description.lpszClassName = windowClass;
    RegisterClassExW(&description);  // fails harmlessly when a device reset comes here again
}

static SIZE FrameSize(int clientWidth, int clientHeight) {
    RECT frame = {0, 0, clientWidth, clientHeight};
    AdjustWindowRectEx(&frame, windowStyle, FALSE, 0);
    return {frame.right - frame.left, frame.bottom - frame.top};
}

int OpenMainWindow(const WindowOptions& options) {
    RegisterWindowClass(options.iconResource);
    const SIZE frame = FrameSize(options.width, options.height);
    lastPosition     = {options.x, options.y};
    mainWindow = CreateWindowExW(0, windowClass, Wide(options.title).c_str(), windowStyle, options.x, options.y, frame.cx,
                                 frame.cy, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    if (!mainWindow) return -1;
    pumped = false;
    AllowIme(false);
    if (options.minimised) ShowWindow(mainWindow, SW_SHOWMINIMIZED);
    return 0;
}

void CloseMainWindow() {
    if (mainWindow) DestroyWindow(mainWindow);
    ReleasePixels();
    closeRequested = false;
    buttonsHeld = buttonsPressed = 0;
}

bool MainWindowOpen() { return mainWindow != nullptr; }

void* MainWindowHandle() { return mainWindow; }

void WindowClientSize(int* width, int* height) {
    RECT client = {};
    GetClientRect(mainWindow, &client);
    *width  = client.right;
    *height = client.bottom;
}

void WindowPosition(int* x, int* y) {
    *x = lastPosition.x;
    *y = lastPosition.y;
}

void SetWindowClientSize(int width, int height) {
    const SIZE frame = FrameSize(width, height);
    SetWindowPos(mainWindow, nullptr, 0, 0, frame.cx, frame.cy, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void MoveMainWindow(int x, int y) {
    SetWindowPos(mainWindow, nullptr, x, y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void ShowMainWindow(int how) {
    constexpr int commands[] = {SW_SHOWNORMAL, SW_SHOWMINIMIZED, SW_SHOWMAXIMIZED, SW_RESTORE, SW_SHOWNA};
    ShowWindow(mainWindow, commands[how]);
}

bool MainWindowMaximised() { return IsZoomed(mainWindow); }

static MONITORINFO MonitorNear(const RECT& rect) {
    MONITORINFO monitor = {};
    monitor.cbSize      = sizeof monitor;
    GetMonitorInfoW(MonitorFromRect(&rect, MONITOR_DEFAULTTONEAREST), &monitor);
    return monitor;
}

ScreenRect MainWindowNormalRect() {
    WINDOWPLACEMENT placement = {};
    placement.length = sizeof placement;
    GetWindowPlacement(mainWindow, &placement);
    // A placement is counted from the work area, which a task bar at the left or the top shifts.
    RECT rect = placement.rcNormalPosition;
    const MONITORINFO monitor = MonitorNear(rect);
    OffsetRect(&rect, monitor.rcWork.left - monitor.rcMonitor.left, monitor.rcWork.top - monitor.rcMonitor.top);
    return {rect.left, rect.top, rect.right, rect.bottom};
}

ScreenRect MonitorRect(const ScreenRect& place) {
    const RECT rect = MonitorNear({place.left, place.top, place.right, place.bottom}).rcMonitor;
    return {rect.left, rect.top, rect.right, rect.bottom};
}

void BringMainWindowToFront() { SetForegroundWindow(mainWindow); }

Foreground ForegroundWindow() {
    const HWND window = GetForegroundWindow();
    if (window && window == mainWindow) return Foreground::mainWindow;
    return window && window == dialogKeysWindow ? Foreground::toolbar : Foreground::other;
}

void VirtualScreenSize(int* width, int* height) {
    *width  = GetSystemMetrics(SM_CXVIRTUALSCREEN);
    *height = GetSystemMetrics(SM_CYVIRTUALSCREEN);
}

void SetDialogKeysWindow(void* window) { dialogKeysWindow = static_cast<HWND>(window); }
HWND DialogKeysWindow() { return dialogKeysWindow; }

// --- input -----------------------------------------------------------------------------------------------------------------

void MousePosition(int* x, int* y) {
    POINT position = {};
    GetCursorPos(&position);
    ScreenToClient(mainWindow, &position);
    *x = position.x;
    *y = position.y;
}

uint32_t MouseButtonMask() {
    const uint32_t mask = buttonsHeld | buttonsPressed;
    buttonsPressed = 0;
    return mask;
}

static int Take(int& value) {
    const int taken = value;
    value = 0;
    return taken;
}
int TakeWheelDelta() { return Take(wheelDelta); }
int TakeHWheelDelta() { return Take(hWheelDelta); }

int TakeTypedChar() {
    if (typedCount == 0) return 0;
    const int character = typed[typedFirst];
    typedFirst = (typedFirst + 1) % typed.size();
    --typedCount;
    return character;
}

void ClearTypedChars() { typedCount = 0; }

void AllowIme(bool allowed) {
    if (allowed)
        ImmAssociateContextEx(mainWindow, nullptr, IACE_DEFAULT);
    else
        ImmAssociateContext(mainWindow, nullptr);
}
