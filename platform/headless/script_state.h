// script_state.h -- what script.h sets and the headless services read.
#pragma once
#include <chrono>
#include <deque>
#include <map>

#include "platform/headless/script.h"

struct PreparedAnswer {
    Answer answer;
    std::string path;
};
struct ScriptState {
    // Input.
    int mouseX = 0, mouseY = 0;
    uint32_t buttons = 0;
    int wheelDelta = 0, hWheelDelta = 0;  // 120 a notch, not yet taken
    bool shift = false, ctrl = false;
    std::deque<int> chars;
    Foreground foreground = Foreground::mainWindow;
    // Window.
    int screenWidth = 1920, screenHeight = 1080;
    int clientWidth = 1024, clientHeight = 768;
    bool sizeScripted = false;  // the script's size wins over the one the program opens its window with
    int x = 0, y = 0;
    bool minimised = false, maximised = false;
    bool open = false, openFails = false;
    bool closeRequested = false, pumpFails = false;
    // Tool window.
    bool toolWindowOpen = false;
    ToolWindowEvents toolEvents = {};
    ScreenRect toolRect = {0, 0, 78, 260};  // 48 by 144 dialog units and a caption
    std::map<int, bool> toolChecked;
    std::map<int, int> toolIcon;
    std::map<int, std::string> toolTip;
    // Answers.
    std::deque<PreparedAnswer> answers;
    int (*dialogHandler)(int id, int argument) = nullptr;
    void (*fileDialogHandler)() = nullptr;
    // Clock.
    bool virtualClock = true;
    int64_t virtualMs = 0;
    std::chrono::sys_seconds virtualStart = std::chrono::sys_days{std::chrono::year{2020} / 1 / 1};  // local time at 0
};
extern ScriptState script;

// Takes the next prepared answer; cancel when there is none.
PreparedAnswer TakeAnswer();
