// The order of the input step: what it reads, when the program counts as idle, who may act.
#include "tests/app/input_fixture.h"

namespace {

struct InputStep : InputTest {};

// --- reading -------------------------------------------------------------------------------------------------------------------

TEST_F(InputStep, MouseIsHeldInsideTheClientRectangle) {
    struct Place { int x, y, heldX, heldY; };
    for (const Place& p : {Place{-5, -1, 0, 0}, Place{1000, 700, 999, 699}, Place{20, 30, 20, 30}}) {
        MoveMouse(p.x, p.y);
        Step();
        EXPECT_EQ(mouseX, p.heldX);
        EXPECT_EQ(mouseY, p.heldY);
    }
}

TEST_F(InputStep, HorizontalWheelStepsLapsAndKeepsItsRemainder) {
    graphPositionOn = 1;  // lap steps are kept, so that they can be seen
    ScriptHWheel(100);
    Step();
    EXPECT_EQ(lapSteps, 0);
    ScriptHWheel(150);
    Step();
    EXPECT_EQ(lapSteps, -2);
    ScriptHWheel(-130);
    Step();
    EXPECT_EQ(lapSteps, -1) << "10 - 130 is one whole 120 back";
}

TEST_F(InputStep, WheelNotchesAddUpInGraphPositionAndHoldTheProgramAwake) {
    graphPositionOn = 1;
    ScriptWheel(2);
    Step();
    ScriptWheel(1);
    Step();
    EXPECT_EQ(wheelNotches, 3);
    EXPECT_EQ(idleFrame, 0);
    Step();
    EXPECT_EQ(activityCount, 150);
    graphPositionOn = 0;
    Step();
    EXPECT_EQ(wheelNotches, 0);
    EXPECT_EQ(viewZoomGoal, 40000) << "and act afterwards";
}

TEST_F(InputStep, WildWheelCountsAreHeld) {
    graphPositionOn = 1;
    wheelNotches = INT32_MAX;
    ScriptWheel(5);
    Step();
    EXPECT_EQ(wheelNotches, INT32_MAX);
    graphPositionOn = 0;
    lapSteps = INT32_MAX;
    Step();
    EXPECT_EQ(viewZoomGoal, 40000);
    EXPECT_EQ(lapSteps, 0);
}

// --- idle ----------------------------------------------------------------------------------------------------------------------

TEST_F(InputStep, IsIdleWhenNothingMovesNorWaits) {
    Step();
    EXPECT_EQ(idleFrame, 1);
    EXPECT_EQ(activityCount, 0);
}

TEST_F(InputStep, WhateverMovesOrWaitsWakesTheProgram) {
    struct Case {
        const char* name;
        void (*set)();
    };
    const Case cases[] = {{"mouse x", [] { MoveMouse(501, 650); }},
                          {"mouse y", [] { MoveMouse(500, 649); }},
                          {"a button", [] { ScriptButtons(16); }},
                          {"the wheel", [] { ScriptWheel(1); }},
                          {"a jump of File 1", [] { jumpTarget[0] = 0; }},
                          {"a jump of File 2", [] { slotInUse[1] = 1, jumpTarget[1] = 5; }},
                          {"a jump of File 3", [] { slotInUse[2] = 1, jumpTarget[2] = 5; }},
                          {"a zoom drag", [] { zoomDragOn = 1; }},
                          {"an animation", [] { animationPending = 1; }},
                          {"real-time play", [] { realTimePlayOn = 1; }}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        LoadDefaults();
        ScriptButtons(0);
        MoveMouse(500, 650);
        ReadClientSize();
        Step(3);
        activityCount = 7;
        c.set();
        Step();
        EXPECT_EQ(idleFrame, 0);
        EXPECT_EQ(activityCount, 150);
    }
}

TEST_F(InputStep, AJumpOfAFileNotInUseIsNoReason) {
    jumpTarget[1] = 5;
    Step();
    EXPECT_EQ(idleFrame, 1);
}

TEST_F(InputStep, AnimationIsAskedForAnewInEveryPass) {
    animationPending = 1;
    Step();
    EXPECT_EQ(animationPending, 0);
    Step();
    EXPECT_EQ(idleFrame, 1);
}

TEST_F(InputStep, ActivityCountsDownAndTheStepEndsAtZero) {
    activityCount = 2;
    viewZoomGoal = 20000;
    Step();
    EXPECT_EQ(activityCount, 1);
    EXPECT_GT(viewZoom, 1.0) << "still at work";
    const double zoom = viewZoom;
    Step();
    EXPECT_EQ(activityCount, 0);
    EXPECT_EQ(viewZoom, zoom) << "the step was left";
}

TEST_F(InputStep, CountStaysAt60WhileTheBodyViewMoves) {
    AnimeMode = 1;
    struct Case { int appear, busy, before, after; };
    for (const Case& c : {Case{31, 0, 60, 60}, Case{31, 0, 61, 60}, Case{32, 1, 60, 60}, Case{32, 0, 60, 59}}) {
        appear = c.appear;
        histBusy = c.busy;
        activityCount = c.before;
        Step();
        EXPECT_EQ(activityCount, c.after);
    }
    AnimeMode = 0;
    appear = 0;
    activityCount = 60;
    Step();
    EXPECT_EQ(activityCount, 59);
}

// --- foreground ----------------------------------------------------------------------------------------------------------------

TEST_F(InputStep, InTheBackgroundNothingActsButKeysAreRead) {
    FillSlot(0, 5000);
    ScriptForeground(Foreground::other);
    MoveMouse(900, 300);
    ScriptButtons(left);
    ScriptWheel(1);
    activityCount = 50;
    Step();
    EXPECT_EQ(mouseX, 500) << "put back";
    EXPECT_EQ(mouseY, 650);
    EXPECT_EQ(cursorPos[0], 0);
    EXPECT_EQ(dragKind, 0);
    EXPECT_EQ(viewZoomGoal, 10000);
    EXPECT_EQ(activityCount, 49) << "counts down although a button is down";
    Press('n');
    EXPECT_EQ(viewZoomGoal, 20000);
}

TEST_F(InputStep, WithTheToolBarInFrontTheProgramIsNotForeignButHitsNothing) {
    FillSlot(0, 5000);
    ScriptForeground(Foreground::toolbar);
    Click(left, 900, 300);
    EXPECT_EQ(mouseX, 900);
    EXPECT_EQ(activityCount, 150);
    EXPECT_EQ(cursorPos[0], 0);
    EXPECT_EQ(dragKind, 0);
    ScriptWheel(1);
    Step();
    EXPECT_EQ(viewZoomGoal, 10000);
    EXPECT_EQ(wheelNotches, 0);
}

TEST_F(InputStep, GraphPositionReadsTheMouseItself) {
    FillSlot(0, 5000);
    graphPositionOn = 1;
    viewZoomGoal = 20000;
    Click(left, 900, 300);
    EXPECT_EQ(cursorPos[0], 0);
    EXPECT_EQ(viewZoom, 1.0);
}

TEST_F(InputStep, MouseMovementClosesThePopup) {
    popupWanted = 1;
    activityCount = 100;
    Step();
    EXPECT_EQ(popupWanted, 1);
    MoveMouse(501, 650);
    Step();
    EXPECT_EQ(popupWanted, 0);
}

// --- course hover ---------------------------------------------------------------------------------------------------------------

TEST_F(InputStep, CourseIsHoveredWithinItsHalfSize) {
    courseCenterX = 600;
    courseCenterY = 300;
    courseZoom = 0.5f;  // 128 pixels
    struct Place { int x, y, hover; };
    for (const Place& p : {Place{600, 300, 1}, Place{727, 300, 1}, Place{728, 300, 0}, Place{473, 427, 1}, Place{600, 172, 0}}) {
        MoveMouse(p.x, p.y);
        Step();
        EXPECT_EQ(courseHover, p.hover) << p.x << ", " << p.y;
    }
}

TEST_F(InputStep, CourseHoverStandsWhileAButtonIsDownOrTheCourseIsDragged) {
    courseCenterX = 600;
    courseCenterY = 300;
    courseZoom = 0.5f;
    MoveMouse(600, 300);
    Step();
    ScriptButtons(right);
    MoveMouse(900, 600);
    Step();
    EXPECT_EQ(courseHover, 1);
    ScriptButtons(0);
    courseDrag = 1;
    Step();
    EXPECT_EQ(courseHover, 1);
    courseDrag = 0;
    MoveMouse(901, 600);
    Step();
    EXPECT_EQ(courseHover, 0);
}

TEST_F(InputStep, CourseHoverNeedsTheMainWindowInFrontAndWorksInGraphPosition) {
    courseCenterX = 600;
    courseCenterY = 300;
    graphPositionOn = 1;
    MoveMouse(600, 300);
    Step();
    EXPECT_EQ(courseHover, 1);
    ScriptForeground(Foreground::toolbar);
    MoveMouse(601, 300);
    Step();
    EXPECT_EQ(courseHover, 0);
}

}  // namespace
