#include "platform/dialogs.h"

#include <windows.h>

#include <commctrl.h>

#include <array>

#include "platform/win32/owners.h"

struct RegisteredDialog {
    int id;
    DLGPROC procedure;
};
// Filled before main() by the files that hold the procedures.
constexpr int maxDialogs = 32;
static std::array<RegisteredDialog, maxDialogs> registered;
static int registeredCount = 0;

// The modal dialogs that run, outermost first: a dialog can open another one.
struct RunningDialog {
    HWND window;
    DLGPROC procedure;
    int argument;
};
constexpr int maxNesting = 8;
static std::array<RunningDialog, maxNesting> running;
static int runningCount = 0;

void RegisterDialog(int id, void* procedure) {
    if (registeredCount < maxDialogs) registered[registeredCount++] = {id, reinterpret_cast<DLGPROC>(procedure)};
}

int DialogArgument() { return runningCount > 0 ? running[runningCount - 1].argument : 0; }

HWND InnermostDialog() { return runningCount > 0 ? running[runningCount - 1].window : nullptr; }

// Keeps the window of the innermost dialog before its own procedure sees the first message.
static INT_PTR CALLBACK FirstMessages(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != WM_INITDIALOG) return FALSE;
    RunningDialog& dialog = running[runningCount - 1];
    dialog.window = window;
    SetWindowLongPtrW(window, DWLP_DLGPROC, reinterpret_cast<LONG_PTR>(dialog.procedure));
    return dialog.procedure(window, message, wParam, lParam);
}

// Progress bars and their like. Loaded with the first dialog, as start-up should not wait for them.
static void LoadControlClasses() {
    using Load = BOOL(WINAPI*)(const INITCOMMONCONTROLSEX*);
    static const auto load = reinterpret_cast<Load>(
        reinterpret_cast<void*>(GetProcAddress(LoadLibraryW(L"comctl32.dll"), "InitCommonControlsEx")));
    static constexpr INITCOMMONCONTROLSEX classes = {sizeof classes, ICC_PROGRESS_CLASS};
    if (load) load(&classes);
}

int OpenDialog(int id, int argument) {
    LoadControlClasses();
    for (int i = 0; i < registeredCount; ++i) {
        if (registered[i].id != id || runningCount == maxNesting) continue;
        const HWND owner = DialogOwner();
        running[runningCount++] = {nullptr, registered[i].procedure, argument};
        const INT_PTR result =
            DialogBoxParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(id), owner, FirstMessages, argument);
        --runningCount;
        return static_cast<int>(result);
    }
    return 0;
}
