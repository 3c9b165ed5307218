// Hit tests, the three buttons and the wheel: every row of their tables.
#include <cstring>
#include <vector>

#include "app/input_parts.h"
#include "tests/app/input_fixture.h"

namespace {

constexpr int valueRow2 = 80 + 2 * 15 + 5;  // y inside row 2 of the value panel

struct Mouse : InputTest {
    void SetUp() override {
        InputTest::SetUp();
        for (int slot = 0; slot < fileSlots; slot++) {
            FillSlot(slot, 100000);
            SetMarks(slot, {10000, 30000, 60000});
        }
        scrollBarOn = 0;
    }
    // One step with the mouse here and nothing pressed.
    static void PointAt(int x, int y) {
        MoveMouse(x, y);
        Step();
    }
};

// --- hit tests -------------------------------------------------------------------------------------------------------------------

TEST_F(Mouse, LapListColumnsEndBeforeTheirFarSide) {
    struct Place { int x, y, hover; };
    const Place places[] = {{5, 310, 0},   {6, 310, 1},   {83, 310, 1},  {84, 310, 0},  {109, 310, 0}, {110, 310, 2},
                            {189, 310, 2}, {190, 310, 0}, {214, 310, 0}, {215, 310, 3}, {294, 310, 3}, {295, 310, 0},
                            {50, 300, 0},  {50, 301, 1},  {50, 359, 1},  {50, 360, 0}};
    for (const Place& p : places) {
        PointAt(p.x, p.y);
        EXPECT_EQ(lapHover, p.hover) << p.x << ", " << p.y;
    }
}

TEST_F(Mouse, ScrolledLapListIsShorter) {
    lapViewOffset[0] = 2;
    PointAt(50, 329);
    EXPECT_EQ(lapHover, 1);
    PointAt(50, 330);
    EXPECT_EQ(lapHover, 0);
}

TEST_F(Mouse, ValuePanelColumnsNeedTheirFile) {
    struct Place { int x, y, hover; };
    const Place places[] = {{5, 100, 0},   {6, 100, 1},   {99, 100, 1},  {100, 100, 0}, {109, 100, 0}, {110, 100, 2},
                            {204, 100, 2}, {205, 100, 0}, {215, 100, 3}, {309, 100, 3}, {310, 100, 0},
                            {50, 80, 0},   {50, 81, 1},   {50, 244, 1},  {50, 245, 0}};
    for (const Place& p : places) {
        PointAt(p.x, p.y);
        EXPECT_EQ(panelHover, p.hover) << p.x << ", " << p.y;
    }
    slotInUse[1] = slotInUse[2] = 0;
    PointAt(150, 100);
    EXPECT_EQ(panelHover, 0);
    PointAt(250, 100);
    EXPECT_EQ(panelHover, 0);
}

TEST_F(Mouse, ValuePanelHasThreeMoreRowsAtTheExpertLevel) {
    PointAt(50, 80 + 14 * 15 - 1);
    EXPECT_EQ(panelHover, 0);
    ExpertMode = 2;
    PointAt(51, 80 + 14 * 15 - 1);
    EXPECT_EQ(panelHover, 1);
    PointAt(50, 80 + 14 * 15);
    EXPECT_EQ(panelHover, 0);
}

TEST_F(Mouse, HiddenPanelsAreNotHit) {
    CursolValueMode = 2;
    PointAt(50, 100);
    EXPECT_EQ(panelHover, 0);
    PointAt(50, 310);
    EXPECT_EQ(lapHover, 0);
}

TEST_F(Mouse, WithTheFloatingPanelsSwitchedOffNoneStaysUnderTheMouse) {
    AnimeMode = 1;
    meterX = 700, meterY = 200, meterZoom = 1.0;
    PointAt(700, 200);
    EXPECT_EQ(widgetHover, 2u);
    AnimeMode = 0;
    PointAt(701, 200);
    EXPECT_EQ(widgetHover, 0u);
}

TEST_F(Mouse, FloatingPanelsAreHitByTheirReachAndNeedTheirSettings) {
    AnimeMode = BodyDisplay = SusgramDisplay = ExpertMode = 1;
    bodyX = 400, bodyY = 500, bodyZoom = 0.5;
    meterX = 700, meterY = 200, meterZoom = 1.0;
    histX = 800, histY = 500, histZoom = 1.0;
    struct Place { int x, y; unsigned hover; };
    const Place places[] = {{400, 500, 1}, {528, 500, 1}, {529, 500, 0}, {400, 372, 1}, {400, 371, 0}, {400, 550, 1}, {400, 551, 0},
                            {700, 200, 2}, {572, 72, 2},  {571, 200, 0}, {828, 328, 2}, {800, 436, 4}, {800, 435, 0}, {928, 500, 4},
                            {929, 500, 0}};
    for (const Place& p : places) {
        PointAt(p.x, p.y);
        EXPECT_EQ(widgetHover, p.hover) << p.x << ", " << p.y;
    }
    BodyDisplay = 0;
    PointAt(400, 500);
    EXPECT_EQ(widgetHover, 0u);
    ExpertMode = 0;
    PointAt(800, 500);
    EXPECT_EQ(widgetHover, 0u);
    ExpertMode = 1;
    SusgramDisplay = 0;
    PointAt(801, 500);
    EXPECT_EQ(widgetHover, 0u);
    AnimeMode = 0;
    PointAt(700, 200);
    EXPECT_EQ(widgetHover, 0u);
}

TEST_F(Mouse, AFloatingPanelOverrulesTheListsBelowIt) {
    AnimeMode = 1;
    meterX = 50, meterY = 200, meterZoom = 1.0;
    PointAt(50, 100);
    EXPECT_EQ(widgetHover, 2u);
    EXPECT_EQ(panelHover, 0);
    PointAt(50, 310);
    EXPECT_EQ(widgetHover, 2u);
    EXPECT_EQ(lapHover, 0);
}

// --- left button -------------------------------------------------------------------------------------------------------------------

TEST_F(Mouse, AClickOnAValueRowTogglesTheChannelOnce) {
    showChannel[1][chVFW] = 1;
    Click(left, 150, valueRow2);
    EXPECT_EQ(showChannel[1][chVFW], 0);
    EXPECT_EQ(dragKind, 1);
    Step(3);
    EXPECT_EQ(showChannel[1][chVFW], 0) << "the press is spent";
    MoveMouse(700, 400);
    Step();
    EXPECT_EQ(cursorPos[0], 0) << "nothing else acts until release";
    Release();
    EXPECT_EQ(dragKind, 0);
}

TEST_F(Mouse, WithShiftAValueRowTogglesItsGrid) {
    HoldShift();
    GraphGrid_disp[chVFW] = 1;
    MoveMouse(50, valueRow2);
    Step();
    ScriptButtons(left);
    EXPECT_TRUE(Contains(Recorded(ReadInput), "SetDrawTarget gridStrip")) << "rebuilt";
    EXPECT_EQ(GraphGrid_disp[chVFW], 0);
    EXPECT_EQ(showChannel[0][chVFW], 1);
}

TEST_F(Mouse, AClickOnALapJumpsThatFileAlone) {
    fileMoveOn[1] = 0;
    Click(left, 150, 300 + 2 * 15 + 5);
    EXPECT_EQ(jumpTarget[1], 30000);
    EXPECT_EQ(jumpTarget[0], -1);
    EXPECT_EQ(cursorPos[0], 0);
    EXPECT_EQ(fileMoveOn[0], 1);
    EXPECT_EQ(fileMoveOn[1], 0);
    EXPECT_GT(cursorPos[1], 0) << "glides";
    EXPECT_LT(cursorPos[1], 3000000);
}

TEST_F(Mouse, AScrolledListCountsFromItsFirstRow) {
    lapViewOffset[0] = 1;
    Click(left, 50, 300 + 1 * 15 + 5);
    EXPECT_EQ(jumpTarget[0], 30000);
}

TEST_F(Mouse, WithCtrlTheCursorIsThereAtOnce) {
    HoldCtrl();
    Click(left, 250, 300 + 3 * 15 + 5);
    EXPECT_EQ(cursorPos[2], 6000000);
    EXPECT_EQ(jumpTarget[2], -1) << "arrived";
}

TEST_F(Mouse, ALapPastTheEndOfItsFileIsHeldInside) {
    lapStart[0][2] = 500000;
    HoldCtrl();
    Click(left, 50, 300 + 2 * 15 + 5);
    EXPECT_EQ(cursorPos[0], 9999999);
}

TEST_F(Mouse, ALapOfAFileNotInUseIsPassedOver) {
    slotInUse[1] = 0;
    Click(left, 150, 300 + 1 * 15 + 5);
    EXPECT_EQ(jumpTarget[1], -1);
    EXPECT_EQ(dragKind, 2) << "the press runs the cursors";
    EXPECT_EQ(cursorPos[0], 0) << "but the list is under the mouse";
}

TEST_F(Mouse, ScrollBarDragSendsFile1ToItsPlaceAndTheOthersBeside) {
    scrollBarOn = 1;
    cursorPos[0] = 1000000;
    cursorPos[1] = 2000000;
    timeFactor[1] = 0.5;
    sampleCount[2] = 15000;
    Click(left, 400, 690);
    EXPECT_EQ(dragKind, 3);
    EXPECT_EQ(lapHover, 4);
    EXPECT_EQ(scrollBarGrow, 32);
    EXPECT_EQ(jumpTarget[0], 40000);
    EXPECT_EQ(jumpTarget[1], 20000 + 15000);
    EXPECT_EQ(jumpTarget[2], 15000) << "File 2's ratio, held inside File 3";
    MoveMouse(600, 100);
    Step();
    EXPECT_EQ(jumpTarget[0], 60000) << "goes on above the bar";
    Release();
    MoveMouse(600, 101);
    Step();
    EXPECT_EQ(lapHover, 0);
}

TEST_F(Mouse, ScrollBarBeginsBelow24PixelsAndNeedsToBeOn) {
    scrollBarOn = 1;
    Click(left, 400, 676);
    EXPECT_EQ(dragKind, 2);
    Release();
    Click(left, 400, 677);
    EXPECT_EQ(dragKind, 3);
    Release();
    scrollBarOn = 0;
    Click(left, 400, 690);
    EXPECT_EQ(dragKind, 2);
}

TEST_F(Mouse, ScrollBarMovesAFileThatIsInUseOrTakesPart) {
    scrollBarOn = 1;
    fileMoveOn[1] = 0;
    slotInUse[1] = 0;
    fileMoveOn[2] = 0;
    Click(left, 400, 690);
    EXPECT_EQ(jumpTarget[1], -1);
    EXPECT_EQ(jumpTarget[2], 40000);
}

TEST_F(Mouse, AHeldPanelFollowsTheMouse) {
    AnimeMode = SusgramDisplay = ExpertMode = 1;
    BodyDisplay = 1;
    struct Panel { const char* name; int32_t *x, *y; };
    for (const Panel& panel : {Panel{"body", &bodyX, &bodyY}, Panel{"meter", &meterX, &meterY}, Panel{"histogram", &histX, &histY}}) {
        SCOPED_TRACE(panel.name);
        for (int32_t* place : {&bodyX, &bodyY, &meterX, &meterY, &histX, &histY}) *place = 5000;
        *panel.x = 500;
        *panel.y = 400;
        Click(left, 500, 400);
        MoveMouse(530, 380);
        Step();
        MoveMouse(900, 380);
        Step();
        EXPECT_EQ(*panel.x, 900);
        EXPECT_EQ(*panel.y, 380);
        EXPECT_EQ(cursorPos[0], 0);
        Release();
    }
}

TEST_F(Mouse, TheCourseMapTakesItsPress) {
    courseCenterX = 600, courseCenterY = 300;
    Click(left, 620, 300);
    EXPECT_EQ(courseHover, 1);
    EXPECT_EQ(cursorPos[0], 0);
    EXPECT_EQ(dragKind, 0);
}

TEST_F(Mouse, AfMapRaisesItsBandAtOnceAndFromTheSeventhPassOn) {
    afMapOn = 1;
    afLow = 1250;
    Click(left, 600, 300);
    EXPECT_EQ(afLow, 1260);
    Step(5);
    EXPECT_EQ(afLow, 1260);
    Step(2);
    EXPECT_EQ(afLow, 1280);
    Release();
    ScriptButtons(left);
    Step();
    EXPECT_EQ(afLow, 1290);
    Step(100);
    EXPECT_EQ(afLow, 1600) << "held";
}

TEST_F(Mouse, APendingCsvRangeOpensItsDialogOnce) {
    csvRangePending = 1;
    Click(left, 600, 300);
    Step(3);
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].title, std::to_string(dialogCsvRange));
    EXPECT_EQ(cursorPos[0], 0);
}

TEST_F(Mouse, AFileNameTogglesItsDimmingUnlessItIsStillFading) {
    const int32_t rects[fileSlots][4] = {{10, 16, 100, 31}, {10, 31, 100, 61}, {10, 46, 100, 91}};
    std::copy(&rects[0][0], &rects[0][0] + 12, &titleRect[0][0]);
    Click(left, 20, 20);
    EXPECT_EQ(fileDim[0], 1);
    Release();
    fileBright[0] = 97;
    Click(left, 20, 20);
    EXPECT_EQ(fileDim[0], 1);
    Release();
    fileBright[0] = 254;
    Click(left, 20, 20);
    EXPECT_EQ(fileDim[0], 1);
    Release();
    fileBright[0] = 96;
    Click(left, 20, 20);
    EXPECT_EQ(fileDim[0], 0);
    Release();
    Click(left, 20, 50);
    EXPECT_EQ(fileDim[1], 0);
    EXPECT_EQ(fileDim[2], 1) << "the last rectangle that holds the mouse";
    EXPECT_EQ(cursorPos[0], 0);
}

TEST_F(Mouse, BesideTheFileNamesAPressRunsTheCursorsAgain) {
    const int32_t rect[4] = {10, 16, 100, 31};
    std::copy(std::begin(rect), std::end(rect), titleRect[0]);
    for (int y : {16, 30}) {
        Click(left, 99, y);
        EXPECT_EQ(dragKind, 0) << y;
        Release();
    }
    const struct { int x, y; } outside[] = {{9, 20}, {100, 20}, {20, 15}, {20, 31}};
    for (const auto& place : outside) {
        Click(left, place.x, place.y);
        EXPECT_EQ(dragKind, 2) << place.x << ", " << place.y;
        Release();
    }
}

TEST_F(Mouse, AClickBelowTheLastLapIsNoHit) {
    Click(left, 50, 300 + 4 * 15);
    EXPECT_EQ(lapHover, 0);
    EXPECT_EQ(jumpTarget[0], -1);
    EXPECT_EQ(dragKind, 2);
}

// No mouse gets there: the hit test ends with the table.
TEST_F(Mouse, AValueRowPastTheTableTogglesRow0WithShiftAndNothingElse) {
    const auto press = [](uint32_t button, int shift) {
        mousePass = {0, 0, button, true, false};
        mouseButtons = button;
        mouseY = 80 + 14 * 15 + 5;
        panelHover = 1;
        shiftDown = shift;
        dragKind = 0;
        button == left ? HandleLeftButton() : HandleRightButton();
    };
    int grids[channelTotal], flags[fileSlots][channelTotal];
    std::copy(std::begin(GraphGrid_disp), std::end(GraphGrid_disp), grids);
    std::memcpy(flags, showChannel, sizeof flags);
    press(left, 0);
    press(right, 0);
    EXPECT_TRUE(std::equal(std::begin(grids), std::end(grids), GraphGrid_disp));
    press(left, 1);
    EXPECT_EQ(GraphGrid_disp[0], !grids[0]);
    EXPECT_TRUE(std::equal(grids + 1, std::end(grids), GraphGrid_disp + 1));
    EXPECT_EQ(std::memcmp(flags, showChannel, sizeof flags), 0);
}

TEST_F(Mouse, ThePlotRunsTheCursors) {
    timeScale = 5.0;
    Click(left, 600, 400);
    EXPECT_EQ(cursorPos[0], 2500) << "(5 x 100 x 100 + 0.5) x 0.05";
    EXPECT_EQ(dragKind, 2);
    MoveMouse(50, 310);  // a drag goes on over the list, where the cursors rest
    jumpTarget[0] = -1;
    Step();
    EXPECT_EQ(cursorPos[0], 2500);
}

TEST_F(Mouse, WithTheWindowInTheBackgroundAPressIsReleased) {
    Click(left, 600, 400);
    courseDrag = 1;
    ScriptForeground(Foreground::toolbar);
    Step();
    EXPECT_EQ(dragKind, 0);
    EXPECT_EQ(courseDrag, 0);
}

// --- right button ------------------------------------------------------------------------------------------------------------------

TEST_F(Mouse, RightOnALapZoomsToIt) {
    slotInUse[2] = 0;
    HoldCtrl();
    Click(right, 50, 300 + 1 * 15 + 5);
    EXPECT_DOUBLE_EQ(timeScale, 20000.0 / (1000 - 220)) << "two files' columns and 10";
    EXPECT_EQ(cursorPos[0] / 100, 20000 - static_cast<int>(210 * timeScale * 0.5));
    EXPECT_EQ(cursorPos[1], 0);
}

TEST_F(Mouse, RightOnALapCountsTheListsFirstRow) {
    lapViewOffset[1] = 2;
    Click(right, 150, 300 + 5);
    EXPECT_DOUBLE_EQ(timeScale, 30000.0 / (1000 - 325));
    EXPECT_EQ(jumpTarget[1], 45000 - static_cast<int>(315 * timeScale * 0.5));
}

TEST_F(Mouse, RightOnAShortFirstLapIsHeldInsideTheFile) {
    SetMarks(0, {1000});
    ScriptClientSize(400, 700);
    ReadClientSize();
    cursorPos[0] = 500000;
    Click(right, 50, 305);
    EXPECT_DOUBLE_EQ(timeScale, 1000.0 / (400 - 325));
    EXPECT_EQ(jumpTarget[0], 0) << "500 - 2100";
}

TEST_F(Mouse, RightOnALapOfNoLengthKeepsASmallestScale) {
    SetMarks(0, {100, 100});
    Click(right, 50, 300 + 15 + 5);
    EXPECT_DOUBLE_EQ(timeScale, 0.001);
}

TEST_F(Mouse, RightOnALapInANarrowWindowDoesNotDivideByZero) {
    for (int width : {324, 326, 300}) {
        ScriptClientSize(width, 700);
        ReadClientSize();
        Click(right, 50, 300 + 15 + 5);
        EXPECT_GE(timeScale, 0.001);
        EXPECT_LE(timeScale, 200000.0);
        Release();
    }
}

TEST_F(Mouse, RightHeldOnAPanelZoomsItWithinItsLimits) {
    AnimeMode = SusgramDisplay = ExpertMode = BodyDisplay = 1;
    struct Panel { const char* name; int32_t *x, *y; double *zoom, low, high; };
    const Panel panels[] = {{"body", &bodyX, &bodyY, &bodyZoom, 0.5, 1.5},
                            {"meter", &meterX, &meterY, &meterZoom, 0.5, 1.5},
                            {"histogram", &histX, &histY, &histZoom, 0.5, 5.0}};
    for (const Panel& panel : panels) {
        SCOPED_TRACE(panel.name);
        for (int32_t* place : {&bodyX, &bodyY, &meterX, &meterY, &histX, &histY}) *place = 5000;
        *panel.x = *panel.y = 400;
        *panel.zoom = 1.0;
        Click(right, 400, 400);
        MoveMouse(400, 300);
        Step();
        EXPECT_DOUBLE_EQ(*panel.zoom, 1.0 + 100 * 0.0005);
        Step();
        EXPECT_DOUBLE_EQ(*panel.zoom, 1.05 + 95 * 1.05 * 0.0005) << "the reference follows by a twentieth";
        MoveMouse(400, 0);
        Step(300);
        EXPECT_EQ(*panel.zoom, panel.high);
        MoveMouse(400, 699);
        Step(300);
        EXPECT_EQ(*panel.zoom, panel.low);
        EXPECT_EQ(zoomDragOn, 0);
        Release();
    }
}

TEST_F(Mouse, RightOnAValueRowTogglesItsGridOnce) {
    GraphGrid_disp[chVFW] = 1;
    MoveMouse(50, valueRow2);
    Step();
    ScriptButtons(right);
    EXPECT_TRUE(Contains(Recorded(ReadInput), "SetDrawTarget gridStrip")) << "rebuilt";
    EXPECT_EQ(GraphGrid_disp[chVFW], 0);
    Step(3);
    EXPECT_EQ(GraphGrid_disp[chVFW], 0);
    Release();
    Click(right, 50, valueRow2);
    EXPECT_EQ(GraphGrid_disp[chVFW], 1);
}

TEST_F(Mouse, ATimeZoomThatCrossesTheValuePanelTogglesNothing) {
    GraphGrid_disp[chVFW] = 1;
    Click(right, 600, 100);
    MoveMouse(50, valueRow2);
    Step();
    EXPECT_EQ(GraphGrid_disp[chVFW], 1);
}

TEST_F(Mouse, TheCourseMapTakesItsRightPress) {
    courseCenterX = 600, courseCenterY = 300;
    Click(right, 620, 300);
    EXPECT_EQ(zoomDragOn, 0);
}

TEST_F(Mouse, EveryRightPressOnTheCourseMapZoomsFromItsOwnPlace) {
    courseCenterX = 600, courseCenterY = 300;
    courseZoom = 1.0f;
    Click(right, 600, 400);
    MoveMouse(600, 390);
    Step();
    const float zoom = courseZoom;
    EXPECT_GT(zoom, 1.0f);
    Release();
    Click(right, 600, 200);
    EXPECT_EQ(courseZoom, zoom) << "the way between two presses is no zoom";
}

TEST_F(Mouse, RightLowersTheAfBand) {
    afMapOn = 1;
    afLow = 1250;
    Click(right, 600, 300);
    EXPECT_EQ(afLow, 1240);
    Step(5);
    EXPECT_EQ(afLow, 1240);
    Step();
    EXPECT_EQ(afLow, 1230);
    EXPECT_EQ(zoomDragOn, 0);
    Step(100);
    EXPECT_EQ(afLow, 900);
}

TEST_F(Mouse, RightOnThePlotStretchesTimeWhileHeld) {
    timeScale = 5.0;
    Click(right, 600, 300);
    EXPECT_EQ(zoomDragOn, 1);
    EXPECT_EQ(timeScale, 5.0);
    MoveMouse(600, 400);
    Step();
    EXPECT_DOUBLE_EQ(timeScale, 5.0 * 1.1);
    Step();
    EXPECT_DOUBLE_EQ(timeScale, 5.0 * 1.1 * 1.095);
    Release();
    EXPECT_EQ(zoomDragOn, 0);
}

TEST_F(Mouse, ATimeZoomIsMeasuredFromWhereItBegan) {
    timeScale = 5.0;
    MoveMouse(600, 100);
    Step();
    MoveMouse(600, 400);  // moved and pressed in the same pass
    ScriptButtons(right);
    Step();
    EXPECT_EQ(timeScale, 5.0);
    Step(5);
    EXPECT_EQ(timeScale, 5.0);
}

TEST_F(Mouse, AStartAnewForgetsWhatTheButtonsHeld) {
    GraphGrid_disp[chVFW] = 0;
    Click(right, 600, 300);
    LoadDefaults();
    ReadClientSize();
    FillSlot(0, 1000);
    MoveMouse(50, valueRow2);
    GraphGrid_disp[chVFW] = 1;
    ScriptHWheel(119);
    Step();
    EXPECT_EQ(GraphGrid_disp[chVFW], 0) << "a first press, not a held one";
    graphPositionOn = 1;  // where lap steps stay to be seen
    DefaultInputStep();
    ScriptHWheel(1);
    Step();
    EXPECT_EQ(lapSteps, 0) << "119 are forgotten";
}

TEST_F(Mouse, TimeZoomIsHeldBetweenATenthAnd200) {
    Click(right, 600, 0);
    MoveMouse(600, 699);
    Step(200);
    EXPECT_EQ(timeScale, 200.0);
    MoveMouse(600, 0);
    Step(200);
    EXPECT_EQ(timeScale, 0.1);
}

// --- anywhere ----------------------------------------------------------------------------------------------------------------------

void ExpectHeldRanges() {
    for (int slot = 0; slot < fileSlots; slot++) {
        EXPECT_GE(jumpTarget[slot], -1);
        EXPECT_LE(jumpTarget[slot], sampleCount[slot]);
        EXPECT_GE(cursorPos[slot], 0);
        EXPECT_LT(cursorPos[slot], sampleCount[slot] * 100);
        EXPECT_GE(lapViewOffset[slot], 0);
        EXPECT_LT(lapViewOffset[slot], lapCount[slot]);
    }
    EXPECT_GE(timeScale, 0.001);
    EXPECT_LE(timeScale, 200000.0);
    EXPECT_TRUE(viewZoomGoal >= 10000 && viewZoomGoal <= 80000);
    EXPECT_TRUE(mouseX >= 0 && mouseX < clientWidth && mouseY >= 0 && mouseY < clientHeight);
    EXPECT_TRUE(scrollY >= 0 && scrollY <= 80000);
    EXPECT_TRUE(lapHover >= 0 && lapHover <= 4 && panelHover >= 0 && panelHover <= 3 && widgetHover <= 7);
}

// A log without laps, one with as many as a log can have, and an empty slot.
TEST_F(Mouse, PressesAndDragsAnywhereLeaveEveryValueInItsRange) {
    FillSlot(0, 10);
    std::vector<uint32_t> marks;
    for (uint32_t mark = 1; mark < 510; mark++) marks.push_back(mark * 3);
    FillSlot(1, 2000);
    SetMarks(1, marks);
    ResetSlot(2);
    AnimeMode = BodyDisplay = SusgramDisplay = scrollBarOn = 1;
    Debug = 1;
    courseCenterX = 800, courseCenterY = 300;
    constexpr int sizes[][2] = {{1000, 700}, {333, 200}, {40, 900}, {7, 7}, {1, 1}};
    uint32_t random = 1;
    const auto below = [&random](int limit) { return static_cast<int>((random = random * 1664525 + 1013904223) >> 8) % limit; };
    for (const auto& size : sizes)
        for (int level : {0, 1, 2})
            for (int pass = 0; pass < 400; pass++) {
                SCOPED_TRACE(testing::Message() << size[0] << " x " << size[1] << " level " << level << " pass " << pass);
                ScriptClientSize(size[0], size[1]);
                ReadClientSize();
                ExpertMode = level;
                if (pass % 5 == 0) ScriptButtons(static_cast<uint32_t>(below(32)));
                ScriptHold(below(3) == 0, below(3) == 0);
                MoveMouse(below(size[0] * 2) - size[0] / 2, below(size[1] * 2) - size[1] / 2);
                ScriptWheel(below(5) - 2);
                ScriptHWheel(below(500) - 250);
                Step();
                lapViewOffset[1] = below(lapCount[1]);
                ExpectHeldRanges();
                if (HasFailure()) return;
            }
}

// --- middle button and wheel --------------------------------------------------------------------------------------------------------

TEST_F(Mouse, MiddleOnAValueRowColoursTheCourseByIt) {
    MoveMouse(50, valueRow2);
    Step();
    ScriptButtons(middle);
    EXPECT_TRUE(Contains(Recorded(ReadInput), "SetDrawTarget courseImage")) << "redrawn";
    EXPECT_EQ(courseColorChannel, 3);
    Release();
    courseColorChannel = 7;
    Click(middle, 600, 400);
    EXPECT_EQ(courseColorChannel, 7);
    Release();
    Click(right | middle, 50, valueRow2);
    EXPECT_EQ(courseColorChannel, 7) << "the right button is held";
}

TEST_F(Mouse, MiddleElsewhereLetsTheExtremeMarksCome) {
    cursorPos[0] = 100000;
    extremeMarkValid[0][0] = 1;
    extremeMarkSample[0][0] = 1000;
    extremeMarkY[0][0] = 200;
    EXPECT_TRUE(Only(Recorded(DrawFrame), "DrawCircle").empty());
    Click(middle, 600, 400);
    EXPECT_FALSE(Only(Recorded(DrawFrame), "DrawCircle").empty());
}

TEST_F(Mouse, WheelUpMagnifiesByNotches) {
    ScriptWheel(2);
    Step();
    EXPECT_EQ(viewZoomGoal, 30000);
    ScriptWheel(5);
    Step();
    EXPECT_EQ(viewZoomGoal, 40000);
    Debug = 1;
    ScriptWheel(50);
    Step();
    EXPECT_EQ(viewZoomGoal, 80000) << "only with Debug";
    EXPECT_EQ(wheelNotches, 0);
}

TEST_F(Mouse, WheelDownGoesStraightBackAndEasesInSome30Frames) {
    viewZoomGoal = 40000;
    viewZoom = 4.0;
    ScriptWheel(-1);
    Step();
    EXPECT_EQ(viewZoomGoal, 10000);
    int frames = 1;
    for (; viewZoom >= 1.02; frames++) Step();
    EXPECT_GT(frames, 25);
    EXPECT_LT(frames, 45);
}

TEST_F(Mouse, WheelOverTheCourseStepsItsColouring) {
    courseCenterX = 600, courseCenterY = 300;
    MoveMouse(600, 300);
    ScriptWheel(3);
    Step();
    EXPECT_EQ(courseColorChannel, 3);
    ScriptWheel(-9);
    Step();
    EXPECT_EQ(courseColorChannel, 0);
    EXPECT_EQ(viewZoomGoal, 10000);
}

TEST_F(Mouse, WheelWidensTheAfBandAndTakesLapStepsToo) {
    afMapOn = 1;
    afWidth = 50;
    ScriptWheel(2);
    lapSteps = 3;
    cursorPos[0] = 6500000;
    currentLap[0] = 4;
    Step();
    EXPECT_EQ(afWidth, 75);
    EXPECT_EQ(lapSteps, 0);
    EXPECT_EQ(jumpTarget[0], -1) << "they are used up";
    ScriptWheel(-100);
    Step();
    EXPECT_EQ(afWidth, 0);
    ScriptWheel(100);
    Step();
    EXPECT_EQ(afWidth, 200);
    EXPECT_EQ(viewZoomGoal, 10000);
}

}  // namespace
