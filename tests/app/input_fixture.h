// input_fixture.h -- a program at rest in a window of 1000 x 700, driven by scripted input one input step at a time.
#pragma once
#include "app/input_step.h"
#include "app/toolbar.h"
#include "platform/window.h"
#include "resources/resource.h"
#include "tests/program_fixture.h"

struct InputTest : ProgramTest {
    void SetUp() override {
        OpenWindow(1000, 700);
        AnimeMode = 0;  // no floating panels, unless a test wants them
        courseCenterX = courseCenterY = -5000;
        MoveMouse(500, 650);
        Step();
        activityCount = 0;
    }
    static void MoveMouse(int x, int y) { ScriptMouse(x, y); }
    // One pass's share, without drawing.
    static void Step(int passes = 1) {
        for (int pass = 0; pass < passes; pass++) ReadInput();
    }
    static void Press(int character) {
        ScriptChar(character);
        Step();
    }
    static void HoldShift() { ScriptHold(true, false); }
    static void HoldCtrl() { ScriptHold(false, true); }
    // A press at a place, in one step.
    static void Click(uint32_t buttons, int x, int y) {
        MoveMouse(x, y);
        ScriptButtons(0);
        Step();
        ScriptButtons(buttons);
        Step();
    }
    static void Release() {
        ScriptButtons(0);
        Step();
    }
};

constexpr uint32_t left = 1, right = 2, middle = 4, back = 8, forward = 16;
