// smallest_window.cpp -- the least that a window program can do: a window of the program's size, filled once.
#include <windows.h>

static LRESULT CALLBACK OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    PAINTSTRUCT paint;
    switch (message) {
        case WM_PAINT: PatBlt(BeginPaint(window, &paint), 0, 0, 1024, 768, WHITENESS); EndPaint(window, &paint); return 0;
        case WM_DESTROY: PostQuitMessage(0); return 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, PWSTR, int) {
    WNDCLASSW description     = {};
    description.lpfnWndProc   = OnMessage;
    description.hInstance     = instance;
    description.lpszClassName = L"smallest";
    RegisterClassW(&description);
    RECT frame = {0, 0, 1024, 768};
    AdjustWindowRect(&frame, WS_OVERLAPPEDWINDOW, FALSE);
    const HWND window = CreateWindowW(L"smallest", L"smallest", WS_OVERLAPPEDWINDOW, 0, 0, frame.right - frame.left,
                                      frame.bottom - frame.top, nullptr, nullptr, instance, nullptr);
    ShowWindow(window, SW_SHOWNORMAL);
    for (MSG message; GetMessageW(&message, nullptr, 0, 0) > 0;) DispatchMessageW(&message);
    return 0;
}
