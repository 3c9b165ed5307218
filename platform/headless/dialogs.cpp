#include "platform/dialogs.h"

#include "platform/headless/script_state.h"

static int dialogArgument = 0;

int OpenDialog(int id, int argument) {
    shown.push_back({"dialog", std::to_string(id), ""});
    if (!script.dialogHandler) return 0;
    const int outer  = dialogArgument;  // a dialog may open another one
    dialogArgument   = argument;
    const int result = script.dialogHandler(id, argument);
    dialogArgument   = outer;
    return result;
}

void RegisterDialog(int, void*) {}  // no procedure runs without windows

int DialogArgument() { return dialogArgument; }
