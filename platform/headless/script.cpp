#include "platform/headless/script.h"

#include "platform/headless/script_state.h"

std::vector<Shown> shown;
ScriptState script;

void DefaultScript() {
    script = {};
    shown.clear();
}

void QueueAnswer(Answer answer, const std::string& path) { script.answers.push_back({answer, path}); }

PreparedAnswer TakeAnswer() {
    if (script.answers.empty()) return {Answer::cancel, ""};
    PreparedAnswer next = script.answers.front();
    script.answers.pop_front();
    return next;
}

void SetDialogHandler(int (*handler)(int id, int argument)) { script.dialogHandler = handler; }
void SetFileDialogHandler(void (*handler)()) { script.fileDialogHandler = handler; }

void ScriptMouse(int x, int y) {
    script.mouseX = x;
    script.mouseY = y;
}
void ScriptButtons(uint32_t mask) { script.buttons = mask; }
void ScriptWheel(int notches) { script.wheelDelta += notches * 120; }
void ScriptHWheel(int delta) { script.hWheelDelta += delta; }
void ScriptHold(bool shift, bool ctrl) {
    script.shift = shift;
    script.ctrl  = ctrl;
}
void ScriptChar(int character) { script.chars.push_back(character); }
void ScriptForeground(Foreground window) { script.foreground = window; }
void ScriptClose() { script.closeRequested = true; }
void ScriptClientSize(int width, int height) {
    script.clientWidth  = width;
    script.clientHeight = height;
    script.sizeScripted = true;
}
void ScriptScreenSize(int width, int height) {
    script.screenWidth  = width;
    script.screenHeight = height;
}
void ScriptPumpFailure() { script.pumpFails = true; }
void ScriptNoWindow() { script.openFails = true; }

void UseVirtualClock(bool on) { script.virtualClock = on; }
bool ClockIsVirtual() { return script.virtualClock; }
void AdvanceClock(int milliseconds) { script.virtualMs += milliseconds; }
void SetVirtualTime(int year, int month, int day, int hour, int minute) {
    namespace chrono = std::chrono;
    const chrono::sys_days date{chrono::year{year} / month / day};
    script.virtualStart = date + chrono::hours{hour} + chrono::minutes{minute} - chrono::seconds{script.virtualMs / 1000};
}
