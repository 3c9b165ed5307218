#include "platform/boxes.h"

#include "platform/headless/script_state.h"

void ShowBox(const char* text, const char* title, BoxOwner) { shown.push_back({"box", title, text}); }

int ConfirmBox(const char* text, const char* title, BoxOwner) {
    shown.push_back({"confirm", title, text});
    return TakeAnswer().answer == Answer::cancel ? 0 : 1;
}
