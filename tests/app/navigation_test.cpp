// How the cursors move: drags, lap steps, glides, and the magnified view.
#include "tests/app/input_fixture.h"

namespace {

struct Navigation : InputTest {
    void SetUp() override {
        InputTest::SetUp();
        FillSlot(0, 100000);
        SetMarks(0, {10000, 30000, 60000});
        scrollBarOn = 0;
    }
    // A press on the plot at this distance from the middle.
    static void Drag(int distance) { Click(left, 500 + distance, 400); }
};

// --- cursor drag -----------------------------------------------------------------------------------------------------------------

TEST_F(Navigation, ADragAtTheMiddleStandsStill) {
    BaseLinePos = 100;  // no part of this
    cursorPos[0] = 5000;
    Drag(0);
    EXPECT_EQ(dragKind, 2);
    Step(5);
    EXPECT_EQ(cursorPos[0], 5000);
}

TEST_F(Navigation, ADragRunsByItsDistanceScaleAndMagnification) {
    timeScale = 3.0;
    timeFactor[0] = 0.5;
    timeFactor[1] = 0.5;
    viewZoom = 2.0;
    viewZoomGoal = 20000;
    cursorPos[0] = 500000;
    Drag(-101);
    EXPECT_EQ(cursorPos[0], 500000 - 378) << "(1.5 x 0.5 x 100 x -101 + 0.5) x 0.05 = -378.7";
    Step();
    EXPECT_EQ(cursorPos[0], 500000 - 2 * 378);
}

TEST_F(Navigation, OtherFilesRunByWholeRatiosOfTheirTimeFactors) {
    for (int slot : {1, 2}) FillSlot(slot, 100000);
    timeScale = 1.0;
    timeFactor[0] = 1.0;
    timeFactor[1] = 2.9;
    timeFactor[2] = 0.9;
    Drag(100);
    EXPECT_EQ(cursorPos[0], 500);
    EXPECT_EQ(cursorPos[1], 1000);
    EXPECT_EQ(cursorPos[2], 0) << "0.9 is cut to 0";
}

TEST_F(Navigation, ASlowerFile2LeadsTheDrag) {
    for (int slot : {1, 2}) FillSlot(slot, 100000);
    timeScale = 1.0;
    timeFactor[0] = 2.5;
    timeFactor[1] = 1.0;
    timeFactor[2] = 0.5;
    Drag(100);
    EXPECT_EQ(cursorPos[1], 500);
    EXPECT_EQ(cursorPos[0], 1000);
    EXPECT_EQ(cursorPos[2], 250);
}

TEST_F(Navigation, ADragEndsTheGlideOfFilesThatTakePart) {
    FillSlot(1, 100000);
    fileMoveOn[1] = 0;
    cursorPos[0] = cursorPos[1] = 1000000;
    jumpTarget[0] = jumpTarget[1] = 50000;
    Drag(100);
    EXPECT_EQ(jumpTarget[0], -1);
    EXPECT_EQ(jumpTarget[1], 50000);
}

TEST_F(Navigation, WithAllFilesOffADragMovesNothingButALapClickJumps) {
    std::fill(std::begin(fileMoveOn), std::end(fileMoveOn), 0);
    Drag(100);
    EXPECT_EQ(cursorPos[0], 0);
    Release();
    Click(left, 50, 300 + 15 + 5);
    EXPECT_EQ(jumpTarget[0], 10000);
}

TEST_F(Navigation, ADragPastAnEndStopsThere) {
    cursorPos[0] = 200;
    Drag(-300);
    EXPECT_EQ(cursorPos[0], 0);
    Release();
    cursorPos[0] = 9999900;
    realTimePlayOn = 1;
    CheckButton(buttonPlay, true);
    Drag(300);
    EXPECT_EQ(cursorPos[0], 9999999);
    EXPECT_EQ(realTimePlayOn, 0) << "the end of File 1 ends the play";
    EXPECT_FALSE(ButtonChecked(buttonPlay));
}

TEST_F(Navigation, WildTimeFactorsDoNotOverflow) {
    FillSlot(1, 1000);
    timeFactor[0] = 0.005;
    timeFactor[1] = 1e9;
    timeScale = 200;
    Drag(499);
    EXPECT_EQ(cursorPos[1], 99999);
}

// --- lap steps -------------------------------------------------------------------------------------------------------------------

TEST_F(Navigation, OneStepBackGoesToTheLapsStartAndTheNextToTheLapBefore) {
    cursorPos[0] = 4000000;
    currentLap[0] = 3;
    Press(30);
    EXPECT_EQ(jumpTarget[0], 30000);
    Step(100);
    EXPECT_EQ(cursorPos[0], 3000000);
    Press(30);
    EXPECT_EQ(jumpTarget[0], 10000);
}

TEST_F(Navigation, AStepDuringAGlideGoesOnFromItsLap) {
    cursorPos[0] = 4000000;
    currentLap[0] = 3;
    Press(30);
    EXPECT_EQ(jumpTarget[0], 30000);
    Press(30);
    EXPECT_EQ(jumpTarget[0], 10000);
    Press(31);
    EXPECT_EQ(jumpTarget[0], 30000);
    Press(31);
    Press(31);
    EXPECT_EQ(jumpTarget[0], 100000) << "the end of the log";
    Press(31);
    EXPECT_EQ(jumpTarget[0], 100000);
}

TEST_F(Navigation, AtLap0AStepBackStaysThere) {
    currentLap[0] = 1;
    Press(30);
    EXPECT_EQ(jumpTarget[0], -1) << "arrived at 0";
    EXPECT_EQ(cursorPos[0], 0);
    cursorPos[0] = 500000;
    Press(30);
    Press(30);
    EXPECT_EQ(jumpTarget[0], 0);
}

TEST_F(Navigation, SeveralStepsCountFromTheCurrentLap) {
    cursorPos[0] = 6500000;
    currentLap[0] = 4;
    activityCount = 100;
    ScriptHWheel(-240);
    Step();
    EXPECT_EQ(jumpTarget[0], 10000);
}

TEST_F(Navigation, AStaleCurrentLapIsHeldInside) {
    cursorPos[0] = 100;
    for (int lap : {-7, 0, 5, 9999}) {
        currentLap[0] = lap;
        jumpTarget[0] = -1;
        Press(31);
        EXPECT_GE(jumpTarget[0], 10000) << lap;
    }
}

TEST_F(Navigation, LapStepsMoveFilesInUseThatTakePart) {
    FillSlot(1, 50000);
    SetMarks(1, {20000});
    FillSlot(2, 50000);
    SetMarks(2, {20000});
    fileMoveOn[0] = 0;
    slotInUse[2] = 0;
    Press(31);
    EXPECT_EQ(jumpTarget[0], -1);
    EXPECT_EQ(jumpTarget[1], 20000);
    EXPECT_EQ(jumpTarget[2], -1);
}

TEST_F(Navigation, SideButtonsStepOncePerPress) {
    cursorPos[0] = 4000000;
    currentLap[0] = 3;
    ScriptButtons(back);
    Step();
    EXPECT_EQ(jumpTarget[0], 30000);
    Step();
    EXPECT_EQ(jumpTarget[0], 30000) << "edges only";
    ScriptButtons(forward);
    Step();
    EXPECT_EQ(jumpTarget[0], 60000);
}

TEST_F(Navigation, LapStepsWaitForTheMainWindow) {
    ScriptForeground(Foreground::toolbar);
    Press(31);
    EXPECT_EQ(lapSteps, -1);
    EXPECT_EQ(jumpTarget[0], -1);
    ScriptForeground(Foreground::mainWindow);
    MoveMouse(400, 600);
    Step();
    EXPECT_EQ(lapSteps, 0);
    EXPECT_EQ(jumpTarget[0], 10000);
}

// A log whose laps have these distances, one count a sample, with the mouse on the course.
struct CourseSteps : Navigation {
    void SetUp() override {
        Navigation::SetUp();
        for (int lap = 0; lap < 4; lap++)
            for (uint32_t i = lapStart[0][lap]; i < lapStart[0][lap + 1]; i++) lapDistance[0][i] = i - lapStart[0][lap];
        for (int lap = 0; lap < 4; lap++) lapLength[0][lap + 1] = lapStart[0][lap + 1] - lapStart[0][lap];
        courseCenterX = 600;
        courseCenterY = 300;
        MoveMouse(600, 300);
        Step();
        cursorPos[0] = 4500000;  // halfway through lap 3, which begins at 30000
        currentLap[0] = 3;
    }
};

TEST_F(CourseSteps, OverTheCourseAStepKeepsThePlaceOnTheTrack) {
    Press(30);
    EXPECT_EQ(jumpTarget[0], 20000) << "halfway through lap 2";
}

TEST_F(CourseSteps, ALapWithoutLengthIsSkipped) {
    lapLength[0][3] = 0;
    Press(30);
    EXPECT_EQ(jumpTarget[0], -1);
}

TEST_F(CourseSteps, ALapWithoutLengthLeavesTheOtherFilesTheirStep) {
    FillSlot(1, 100000);
    SetMarks(1, {10000});
    std::fill(lapLength[1], lapLength[1] + 3, 10000);
    for (uint32_t i = 0; i < 20000; i++) lapDistance[1][i] = i % 10000;
    currentLap[1] = 1;
    lapLength[0][3] = 0;
    lapDistance[0][45000] = 0;  // nothing of nothing is no place either
    Press(31);
    EXPECT_EQ(jumpTarget[0], -1);
    EXPECT_EQ(jumpTarget[1], 10000);
}

TEST_F(CourseSteps, APlacePastTheLapsEndStopsTheStepForTheOtherFilesToo) {
    FillSlot(1, 100000);
    SetMarks(1, {10000});
    std::fill(lapLength[1], lapLength[1] + 3, 10000);
    currentLap[1] = 1;
    lapLength[0][3] = 14000;
    Press(31);
    EXPECT_EQ(jumpTarget[0], -1);
    EXPECT_EQ(jumpTarget[1], -1);
}

TEST_F(CourseSteps, WithSeveralMarksTheLengthIsThatOfTheGroup) {
    MarksPerLap[0] = 2;
    Press(30);
    EXPECT_EQ(jumpTarget[0], 10000 + 4285) << "15000 of 30000 + 40000, of 20000";
}

TEST_F(CourseSteps, StepsPastTheTableStayInIt) {
    lapSteps = -1000000;
    Step();
    EXPECT_GE(jumpTarget[0], 0);
    EXPECT_LE(jumpTarget[0], 100000);
}

// --- glide ------------------------------------------------------------------------------------------------------------------------

TEST_F(Navigation, AGlideGoesASeventhOfItsWayAndArrives) {
    jumpTarget[0] = 1000;
    zoomDragOn = 1;
    Step();
    EXPECT_EQ(cursorPos[0], 14285);
    EXPECT_EQ(animationPending, 1);
    EXPECT_EQ(rulerFade, 0);
    Step(200);
    EXPECT_EQ(cursorPos[0], 100000);
    EXPECT_EQ(jumpTarget[0], -1);
}

TEST_F(Navigation, ArrivalIsWithinHalfASample) {
    jumpTarget[0] = 1000;
    cursorPos[0] = 100050;
    Step();
    EXPECT_EQ(jumpTarget[0], 1000);
    EXPECT_EQ(cursorPos[0], 100043);
    rulerFade = 32;
    Step();
    EXPECT_EQ(cursorPos[0], 100000);
    EXPECT_EQ(jumpTarget[0], -1);
    EXPECT_EQ(rulerFade, 14);
}

TEST_F(Navigation, ArrivalEndsATimeZoom) {
    Click(right, 600, 300);
    EXPECT_EQ(zoomDragOn, 1);
    jumpTarget[0] = 0;
    Step();
    EXPECT_EQ(zoomDragOn, 0);
}

TEST_F(Navigation, AGlideToTheEndStopsOnTheLastHundredth) {
    jumpTarget[0] = 100000;
    Step(200);
    EXPECT_EQ(cursorPos[0], 9999999);
    EXPECT_EQ(jumpTarget[0], -1);
}

TEST_F(Navigation, AnEndOfAnotherFileDoesNotEndThePlay) {
    FillSlot(1, 1000);
    cursorPos[1] = 200000;
    realTimePlayOn = 1;
    Step();
    EXPECT_EQ(cursorPos[1], 99999);
    EXPECT_EQ(realTimePlayOn, 1);
}

// --- ruler fade ---------------------------------------------------------------------------------------------------------------------

TEST_F(Navigation, RulerFadesOverTheLapListAndComesBack) {
    MoveMouse(50, 310);
    Step();
    EXPECT_EQ(rulerFade, 31);
    activityCount = 150;
    Step(60);
    EXPECT_EQ(rulerFade, 4);
    rulerFade = 2;
    Step();
    EXPECT_EQ(rulerFade, 2) << "a floor, no lift";
    MoveMouse(500, 310);
    Step(40);
    EXPECT_EQ(rulerFade, 32);
}

// --- magnification --------------------------------------------------------------------------------------------------------------------

TEST_F(Navigation, MagnificationEasesByAnEighth) {
    viewZoomGoal = 20000;
    MoveMouse(500, 649);
    Step();
    EXPECT_DOUBLE_EQ(viewZoom, 1.125);
    Step();
    EXPECT_DOUBLE_EQ(viewZoom, 1.125 + 0.875 / 8);
}

TEST_F(Navigation, TheViewJumpsWithTheMouseDuringAZoomAndFollowsSoftlyAfterwards) {
    viewZoomGoal = 20000;
    MoveMouse(500, 600);
    Step();
    EXPECT_EQ(scrollY, 87) << "600 x 1.125 - 350, held at 700 x 1.125 - 700";
    viewZoom = 2.0;
    scrollY = 100;
    MoveMouse(500, 400);
    Step();
    EXPECT_EQ(scrollY, 100 + 350 / 12);
    ScriptHold(false, true);
    Step();
    EXPECT_EQ(scrollY, 129) << "Ctrl pins it";
}

TEST_F(Navigation, CtrlDoesNotPinBeforeTheZoomHasSettled) {
    HoldCtrl();
    viewZoomGoal = 20000;
    viewZoom = 1.9994;
    scrollY = 0;
    MoveMouse(500, 600);
    Step();
    EXPECT_NE(scrollY, 0);
    scrollY = 50;
    viewZoom = 1.9996;
    Step();
    EXPECT_EQ(scrollY, 50);
}

TEST_F(Navigation, BelowAThousandthOfMagnificationNothingIsScrolled) {
    ScriptClientSize(1000, 2000);
    ReadClientSize();
    viewZoom = 1.0009;
    scrollY = 50;
    MoveMouse(500, 1999);
    Step();
    EXPECT_EQ(scrollY, 0);
}

TEST_F(Navigation, ScrollIsHeldInsideTheMagnifiedView) {
    viewZoom = 3.0;
    viewZoomGoal = 30000;
    MoveMouse(500, 0);
    Step(100);
    EXPECT_EQ(scrollY, 0);
    MoveMouse(500, 699);
    Step(300);
    EXPECT_LE(scrollY, 1400);
    EXPECT_GT(scrollY, 1380);
    viewZoomGoal = 10000;
    activityCount = 150;
    Step(100);
    EXPECT_EQ(scrollY, 0);
}

}  // namespace
