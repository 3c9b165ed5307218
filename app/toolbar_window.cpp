// toolbar_window.cpp -- the hands of the tool bar: dialog 1018 with its icons and tool tips.
#include <windows.h>

#include <commctrl.h>

#include <string>
#include <vector>

#include "app/frame_loop.h"
#include "platform/tool_window.h"
#include "platform/win32/wide.h"
#include "platform/window.h"
#include "resources/resource.h"

static HWND toolWindow;
static ToolWindowEvents events;

// Made when the mouse first comes over the tool bar, which owns them: start-up should not wait for them.
struct TipText {
    int button;
    std::wstring text;
};
static std::vector<TipText> tipTexts;
static HWND tips;

static void MakeTips() {
    tips = CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP, CW_USEDEFAULT, CW_USEDEFAULT,
                           CW_USEDEFAULT, CW_USEDEFAULT, toolWindow, nullptr, GetModuleHandleW(nullptr), nullptr);
    for (TipText& tip : tipTexts) {
        TTTOOLINFOW tool = {};
        tool.cbSize      = sizeof tool;
        tool.uFlags      = TTF_IDISHWND | TTF_SUBCLASS;
        tool.hwnd        = toolWindow;
        tool.uId         = reinterpret_cast<UINT_PTR>(GetDlgItem(toolWindow, tip.button));
        tool.lpszText    = tip.text.data();
        SendMessageW(tips, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
    }
}

// The icons asked for until the tool bar is first painted, loaded then: the first frame comes before that.
struct ButtonIcon {
    int button, resource;
};
static std::vector<ButtonIcon> firstIcons;  // one of each button
static bool painted;

static void ShowIcon(const ButtonIcon& wanted) {
    const HANDLE icon = LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(wanted.resource), IMAGE_ICON,
                                   GetSystemMetrics(SM_CXICON), GetSystemMetrics(SM_CYICON), LR_SHARED);
    SendDlgItemMessageW(toolWindow, wanted.button, BM_SETIMAGE, IMAGE_ICON, reinterpret_cast<LPARAM>(icon));
}

static void KeepIcon(const ButtonIcon& wanted) {
    for (ButtonIcon& icon : firstIcons)
        if (icon.button == wanted.button) {
            icon = wanted;
            return;
        }
    firstIcons.push_back(wanted);
}

static void OnPaint() {
    painted = true;
    for (const ButtonIcon& icon : firstIcons) ShowIcon(icon);
    firstIcons.clear();
}

static void OnPower(WPARAM what) {
    switch (what) {
        case PBT_APMQUERYSUSPEND:
        case PBT_APMQUERYSTANDBY: PowerBroadcast(PowerEvent::suspendQuery); break;
        case PBT_APMSUSPEND:
        case PBT_APMSTANDBY: PowerBroadcast(PowerEvent::suspend); break;
        case PBT_APMRESUMECRITICAL:
        case PBT_APMRESUMESUSPEND:
        case PBT_APMRESUMESTANDBY:
        case PBT_APMRESUMEAUTOMATIC: PowerBroadcast(PowerEvent::resume); break;
    }
}

static void OnGone() {
    toolWindow = nullptr;
    tips       = nullptr;
    painted    = false;
    tipTexts.clear();
    firstIcons.clear();
    events.gone();
}

static INT_PTR CALLBACK ToolbarProc(HWND window, UINT message, WPARAM wParam, LPARAM) {
    switch (message) {
        case WM_INITDIALOG: return FALSE;  // leave the focus where it is
        case WM_SETCURSOR:
            if (!tips) MakeTips();
            return FALSE;
        case WM_PAINT: OnPaint(); return FALSE;
        case WM_CLOSE:
        case WM_QUIT: events.closed(); return TRUE;
        case WM_DESTROY: OnGone(); return TRUE;
        case WM_DISPLAYCHANGE: DisplayChanged(); return TRUE;
        case WM_POWERBROADCAST:
            OnPower(wParam);
            SetWindowLongPtrW(window, DWLP_MSGRESULT, TRUE);  // granted
            return TRUE;
        case WM_COMMAND:
            if (HIWORD(wParam) != BN_CLICKED || LOWORD(wParam) < buttonOpen1) return FALSE;
            events.pressed(LOWORD(wParam), IsDlgButtonChecked(window, LOWORD(wParam)) == BST_CHECKED);
            return TRUE;
    }
    return FALSE;
}

int OpenToolWindow(const ToolWindowEvents& wanted) {
    events     = wanted;
    toolWindow = CreateDialogParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(dialogToolbar),
                                    static_cast<HWND>(MainWindowHandle()), ToolbarProc, 0);
    return toolWindow ? 0 : 1;
}

void CloseToolWindow() {
    if (toolWindow) DestroyWindow(toolWindow);
}

void* ToolWindowHandle() { return toolWindow; }

void SetToolButton(int id, bool checked) {
    if (toolWindow) CheckDlgButton(toolWindow, id, checked ? BST_CHECKED : BST_UNCHECKED);
}

void SetToolButtonIcon(int id, int iconResource) {
    if (!toolWindow) return;
    if (painted)
        ShowIcon({id, iconResource});
    else
        KeepIcon({id, iconResource});
}

void SetToolButtonTip(int id, const char* text) { tipTexts.push_back({id, Wide(text)}); }

ScreenRect ToolWindowRect() {
    RECT rect = {};
    GetWindowRect(toolWindow, &rect);
    return {rect.left, rect.top, rect.right, rect.bottom};
}

void PlaceToolWindow(int left, int top) {
    SetWindowPos(toolWindow, nullptr, left, top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_SHOWWINDOW);
}
