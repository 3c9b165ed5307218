#include "platform/win32/controls.h"

#include "platform/win32/wide.h"

std::string ControlText(HWND dialog, int id) {
    const HWND control = GetDlgItem(dialog, id);
    std::wstring text(static_cast<size_t>(GetWindowTextLengthW(control)) + 1, L'\0');
    text.resize(static_cast<size_t>(GetWindowTextW(control, text.data(), static_cast<int>(text.size()))));
    return Utf8(text);
}

void SetControlText(HWND dialog, int id, const char* text) { SetDlgItemTextW(dialog, id, Wide(text).c_str()); }

void SetControlNumber(HWND dialog, int id, int number) { SetDlgItemTextW(dialog, id, std::to_wstring(number).c_str()); }

bool ControlChecked(HWND dialog, int id) { return IsDlgButtonChecked(dialog, id) == BST_CHECKED; }

void CheckControl(HWND dialog, int id, bool on) { CheckDlgButton(dialog, id, on ? BST_CHECKED : BST_UNCHECKED); }

void AddListItem(HWND dialog, int id, const std::wstring& text) {
    SendDlgItemMessageW(dialog, id, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str()));
}

void SelectListItem(HWND dialog, int id, int item) { SendDlgItemMessageW(dialog, id, CB_SETCURSEL, static_cast<WPARAM>(item), 0); }

int SelectedListItem(HWND dialog, int id) { return static_cast<int>(SendDlgItemMessageW(dialog, id, CB_GETCURSEL, 0, 0)); }

void ShowControl(HWND dialog, int id, bool shown) { ShowWindow(GetDlgItem(dialog, id), shown ? SW_SHOWNA : SW_HIDE); }
