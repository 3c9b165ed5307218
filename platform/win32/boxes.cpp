#include "platform/boxes.h"

#include "platform/win32/owners.h"
#include "platform/win32/wide.h"
#include "platform/window.h"

HWND DialogOwner() {
    if (InnermostDialog()) return InnermostDialog();
    return DialogKeysWindow() ? DialogKeysWindow() : static_cast<HWND>(MainWindowHandle());
}

HWND OwnerWindow(BoxOwner owner) {
    switch (owner) {
        case BoxOwner::none: return nullptr;
        case BoxOwner::toolbar: return DialogKeysWindow();
        case BoxOwner::activeDialog: return DialogOwner();
        case BoxOwner::mainWindow: break;
    }
    return static_cast<HWND>(MainWindowHandle());
}

void ShowBox(const char* text, const char* title, BoxOwner owner) {
    MessageBoxW(OwnerWindow(owner), Wide(text).c_str(), Wide(title).c_str(), MB_OK);
}

int ConfirmBox(const char* text, const char* title, BoxOwner owner) {
    return MessageBoxW(OwnerWindow(owner), Wide(text).c_str(), Wide(title).c_str(), MB_OKCANCEL | MB_DEFBUTTON2) == IDOK;
}
