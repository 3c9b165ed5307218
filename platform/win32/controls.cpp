#include "platform/win32/controls.h"

#include "platform/win32/wide.h"

std::string ControlText(HWND dialog, int id) {
    const HWND control = GetDlgItem(dialog, id);
    std::wstring text(static_cast<size_t>(GetWindowTextLengthW(control)) + 1, L'\0');
    text.resize(static_cast<size_t>(GetWindowTextW(control, text.data(), static_cast<int>(text.size()))));
    return Utf8(text);
}

void SetControlText(HWND dialog, int id, const char* text) { SetDlgItemTextW(dialog, id, Wide(text).c_str()); }

bool ControlChecked(HWND dialog, int id) { return IsDlgButtonChecked(dialog, id) == BST_CHECKED; }

void CheckControl(HWND dialog, int id, bool on) { CheckDlgButton(dialog, id, on ? BST_CHECKED : BST_UNCHECKED); }

void ShowControl(HWND dialog, int id, bool shown) { ShowWindow(GetDlgItem(dialog, id), shown ? SW_SHOWNA : SW_HIDE); }
