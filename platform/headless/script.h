// script.h -- what stands in for a user and a screen: scripted input, recorded boxes and dialogs, prepared answers, a
// virtual clock. Only tests, cli/ and fuzz/ include this; the rest of the program cannot tell.
#pragma once
#include <cstdint>
#include <string>
#include <vector>

#include "platform/keyboard.h"
#include "platform/window.h"

// Start state: no input, no answers, nothing recorded, virtual clock at 0, client 1024 x 768, screen 1920 x 1080.
void DefaultScript();

// What was shown. kind is "box", "confirm", "dialog" (title holds the id), "open" or "save" (text holds the filters).
struct Shown {
    std::string kind, title, text;
};
extern std::vector<Shown> shown;  // since start or the last clear by the reader

// Answers to the next confirmation and file dialogs, in order. Without one: cancel.
enum class Answer { cancel, ok, path };
void QueueAnswer(Answer answer, const std::string& path = "");
// Called when a dialog opens headlessly, after it was recorded; nullptr for none. Its result is OpenDialog's.
void SetDialogHandler(int (*handler)(int id, int argument));
// Called while a file dialog is open; nullptr for none.
void SetFileDialogHandler(void (*handler)());

// Input.
void ScriptMouse(int x, int y);
void ScriptButtons(uint32_t mask);
void ScriptWheel(int notches);
void ScriptHWheel(int delta);
void ScriptHold(bool shift, bool ctrl);
void ScriptChar(int character);
void ScriptForeground(Foreground window);
void ScriptClose();
void ScriptClientSize(int width, int height);
void ScriptScreenSize(int width, int height);
void ScriptPumpFailure();  // the next PumpMessages fails without a close
void ScriptNoWindow();     // from now on OpenMainWindow fails

// Tool window: a press by the user with the state that a check button has after it; a close by the system.
void ScriptToolPress(int id, bool checked);
void ScriptToolClose();
// What the window shows.
bool ShownToolButton(int id);
int ShownToolIcon(int id);  // 0 for none
std::string ShownToolTip(int id);
// Where the user has dragged it.
void ScriptToolRect(const ScreenRect& rect);

// Clock: virtual (waits advance it at once) or real.
void UseVirtualClock(bool on);
bool ClockIsVirtual();
void AdvanceClock(int milliseconds);
void SetVirtualTime(int year, int month, int day, int hour, int minute);
