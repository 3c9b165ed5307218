// Every row of the key table.
#include <cctype>

#include "graph/grid.h"
#include "run_data/derived_channels.h"
#include "tests/app/input_fixture.h"

namespace {

constexpr int tab = 9, escape = 27, arrowRight = 28, arrowLeft = 29, arrowUp = 30, arrowDown = 31;

struct Keys : InputTest {
    // What the key leaves of activityCount, which an idle pass then counts down by 1.
    int ActivityAfter(int key) {
        activityCount = 7;
        Press(key);
        return activityCount + 1;
    }
    // Presses a key and expects this count, or 7 - 1 when the key leaves it alone.
    void ExpectActivity(int key, int count) { EXPECT_EQ(ActivityAfter(key), count) << "key " << key; }
    bool OpenedDialog(int id) { return shown.size() == 1 && shown[0].kind == "dialog" && shown[0].title == std::to_string(id); }
};

TEST_F(Keys, OneKeyIsTakenInAPass) {
    ScriptChar('m');
    ScriptChar('m');
    Step();
    EXPECT_EQ(Memo_view, 0);
    Step();
    EXPECT_EQ(Memo_view, 1);
}

TEST_F(Keys, LettersWorkInBothCases) {
    for (int key : {'n', 'N'}) {
        viewZoomGoal = 10000;
        Press(key);
        EXPECT_EQ(viewZoomGoal, 20000);
    }
}

TEST_F(Keys, UnknownKeysDoNothing) {
    for (int key : {int{'y'}, int{'?'}, 13, 1, 127, 200, 255}) ExpectActivity(key, 7);
}

TEST_F(Keys, QueueIsEmptiedAfterEachKeyInTheAfMap) {
    afMapOn = 1;
    ScriptChar('n');
    ScriptChar('m');
    Step(2);
    EXPECT_EQ(viewZoomGoal, 20000);
    EXPECT_EQ(Memo_view, 1) << "the second key is gone";
}

// --- held keys ------------------------------------------------------------------------------------------------------------------

TEST_F(Keys, CtrlKeepsTheProgramAwakeInEachPass) {
    HoldCtrl();
    Step();
    EXPECT_EQ(ctrlDown, 1);
    EXPECT_EQ(activityCount, 99);
    Step();
    EXPECT_EQ(activityCount, 99);
    ScriptHold(false, false);
    Step();
    EXPECT_EQ(ctrlDown, 0);
    EXPECT_EQ(activityCount, 98);
}

TEST_F(Keys, ShiftWakesTheProgramOnce) {
    HoldShift();
    Step(2);
    EXPECT_EQ(shiftDown, 1);
    EXPECT_EQ(activityCount, 98);
}

TEST_F(Keys, AShiftHeldSinceBeforeAStartAnewCountsAsPressed) {
    HoldShift();
    Step();
    LoadDefaults();
    ReadClientSize();
    MoveMouse(0, 0);
    activityCount = 7;
    Step();
    EXPECT_EQ(activityCount, 99);
}

TEST_F(Keys, ShiftShowsFile3OnTheButtonsOfFile2AtTheExpertLevel) {
    fileMoveOn[1] = 1;
    fileMoveOn[2] = 0;
    ExpertMode = 1;
    HoldShift();
    Step();
    EXPECT_TRUE(ButtonChecked(buttonMoveFile2));
    ScriptHold(false, false);
    Step();
    ExpertMode = 2;
    HoldShift();
    Step();
    EXPECT_FALSE(ButtonChecked(buttonMoveFile2));
    ScriptHold(false, false);
    Step();
    EXPECT_TRUE(ButtonChecked(buttonMoveFile2));
}

// --- moving ---------------------------------------------------------------------------------------------------------------------

TEST_F(Keys, TabLetsTheExtremeMarksCome) {
    FillSlot(0, 5000);
    cursorPos[0] = 100000;
    extremeMarkValid[0][0] = 1;
    extremeMarkSample[0][0] = 1000;
    extremeMarkY[0][0] = 200;
    EXPECT_TRUE(Only(Recorded(DrawFrame), "DrawCircle").empty());
    ExpectActivity(tab, 100);
    EXPECT_FALSE(Only(Recorded(DrawFrame), "DrawCircle").empty());
}

TEST_F(Keys, EscGoesBackToNormalGraphs) {
    afMapOn = graphPositionOn = 1;
    CheckButton(buttonAfMap, true);
    CheckButton(buttonPosition, true);
    CheckButton(buttonPlay, true);
    CheckButton(buttonGraphs, false);
    ScriptForeground(Foreground::toolbar);
    ExpectActivity(escape, 100);
    EXPECT_EQ(afMapOn, 0);
    EXPECT_EQ(graphPositionOn, 0);
    EXPECT_EQ(rulerFade, 6) << "5, and one pass on";
    EXPECT_TRUE(ButtonChecked(buttonGraphs));
    for (int id : {buttonAfMap, buttonPosition, buttonPlay}) EXPECT_FALSE(ButtonChecked(id)) << id;
    EXPECT_EQ(ForegroundWindow(), Foreground::mainWindow);
}

TEST_F(Keys, EscEndsRealTimePlay) {
    realTimePlayOn = 1;
    Press(escape);
    EXPECT_EQ(realTimePlayOn, 0);
}

TEST_F(Keys, ArrowsJumpByAStepThatFollowsTimeScaleShiftAndCtrl) {
    struct Case { bool shift, ctrl; int step; };
    for (const Case& c : {Case{false, false, 700}, Case{false, true, 1400}, Case{true, false, 140}, Case{true, true, 280}}) {
        FillSlot(0, 50000);
        timeScale = 3.5;
        ScriptHold(c.shift, c.ctrl);
        for (int key : {arrowRight, arrowLeft}) {
            cursorPos[0] = 1000099;
            jumpTarget[0] = -1;
            Press(key);
            EXPECT_EQ(jumpTarget[0], 10000 + (key == arrowRight ? c.step : -c.step)) << c.shift << c.ctrl;
        }
    }
}

TEST_F(Keys, ArrowLeftStopsAtTheStart) {
    FillSlot(0, 50000);
    cursorPos[0] = 50000;
    Press(arrowLeft);
    EXPECT_EQ(jumpTarget[0], 0);
}

TEST_F(Keys, ArrowRightPastTheEndComesToRestThere) {
    FillSlot(0, 2000);
    cursorPos[0] = 190000;
    Press(arrowRight);
    Step(100);
    EXPECT_EQ(cursorPos[0], 199999);
    EXPECT_EQ(jumpTarget[0], -1);
    EXPECT_EQ(animationPending, 0);
}

TEST_F(Keys, ArrowsMoveFilesInUseThatTakePart) {
    for (int slot = 0; slot < fileSlots; slot++) {
        FillSlot(slot, 50000);
        cursorPos[slot] = 2000000;
    }
    fileMoveOn[0] = 0;
    slotInUse[2] = 0;
    Press(arrowRight);
    EXPECT_EQ(jumpTarget[0], -1);
    EXPECT_EQ(jumpTarget[1], 21000);
    EXPECT_EQ(jumpTarget[2], -1);
    EXPECT_EQ(ActivityAfter(arrowRight), 151) << "a jump is under way";
}

TEST_F(Keys, WithAllFilesOffArrowsMoveNothing) {
    FillSlot(0, 50000);
    std::fill(std::begin(fileMoveOn), std::end(fileMoveOn), 0);
    Press(arrowRight);
    EXPECT_EQ(jumpTarget[0], -1);
}

TEST_F(Keys, ArrowsTurnTheCourseInGraphPosition) {
    graphPositionOn = 1;
    FillSlot(0, 50000);
    struct Case { int key, by; };
    for (const Case& c : {Case{arrowRight, 1}, Case{arrowLeft, -1}, Case{arrowUp, 10}, Case{arrowDown, -10}}) {
        courseOffset = 50;
        ExpectActivity(c.key, 100);
        EXPECT_EQ(courseOffset, 50 + c.by);
    }
    EXPECT_EQ(lapSteps, 0);
    EXPECT_EQ(jumpTarget[0], -1);
}

TEST_F(Keys, ATurnedCourseIsDrawnAnew) {
    graphPositionOn = 1;
    for (int key : {arrowRight, arrowLeft, arrowUp, arrowDown, int{'z'}}) {
        SCOPED_TRACE(key);
        courseOffset = 50;
        ScriptChar(key);
        EXPECT_TRUE(Contains(Recorded(ReadInput), "SetDrawTarget courseImage"));
    }
}

TEST_F(Keys, ArrowsMoveTheLafDelayInTheAfMap) {
    afMapOn = 1;
    lafDelay = 195;
    Press(arrowRight);
    EXPECT_EQ(lafDelay, 200);
    Press(arrowRight);
    EXPECT_EQ(lafDelay, 200);
    lafDelay = 5;
    Press(arrowLeft);
    Press(arrowLeft);
    EXPECT_EQ(lafDelay, 0);
    EXPECT_EQ(lafDelayShow, 0);
}

TEST_F(Keys, UpAndDownStepLaps) {
    ScriptForeground(Foreground::toolbar);  // the steps stay to be seen
    ExpectActivity(arrowUp, 100);
    EXPECT_EQ(lapSteps, 1);
    Press(arrowDown);
    ExpectActivity(arrowDown, 100);
    EXPECT_EQ(lapSteps, -1);
}

TEST_F(Keys, SpaceTurnsTheAfSwitchRound) {
    afMapOn = 1;
    Press(' ');
    EXPECT_EQ(afInvert, 1);
    Press(' ');
    EXPECT_EQ(afInvert, 0);
    EXPECT_EQ(fileMoveOn[1], 1);
}

TEST_F(Keys, SpaceTakesFile2OutOfTheMove) {
    ExpectActivity(' ', 100);
    EXPECT_EQ(fileMoveOn[1], 0);
    EXPECT_FALSE(ButtonChecked(buttonMoveFile2));
    EXPECT_EQ(courseColorFile, 1);
    Press(' ');
    EXPECT_EQ(fileMoveOn[1], 1);
    EXPECT_TRUE(ButtonChecked(buttonMoveFile2));
    EXPECT_EQ(courseColorFile, 0);
}

TEST_F(Keys, SpaceAndOColourTheCourseAnew) {
    for (int key : {' ', 'o'}) {
        SCOPED_TRACE(static_cast<char>(key));
        ScriptChar(key);
        EXPECT_TRUE(Contains(Recorded(ReadInput), "SetDrawTarget courseImage"));
    }
}

TEST_F(Keys, SpaceWithShiftMeansFile3FromTheStandardLevelOn) {
    HoldShift();
    ExpertMode = 0;
    Press(' ');
    EXPECT_EQ(fileMoveOn[1], 0);
    EXPECT_EQ(fileMoveOn[2], 1);
    ExpertMode = 1;
    Press(' ');
    EXPECT_EQ(fileMoveOn[1], 0);
    EXPECT_EQ(fileMoveOn[2], 0);
}

TEST_F(Keys, CommaAndPointMoveTheLafDelayAtTheExpertLevel) {
    struct Case { int key, by; };
    for (const Case& c : {Case{',', -5}, Case{'<', -5}, Case{'.', 5}, Case{'>', 5}}) {
        SCOPED_TRACE(static_cast<char>(c.key));
        lafDelay = 100;
        lafDelayShow = 0;
        ExpertMode = 1;
        ExpectActivity(c.key, 7);
        EXPECT_EQ(lafDelay, 100);
        ExpertMode = 2;
        ExpectActivity(c.key, 150);
        EXPECT_EQ(lafDelay, 100 + c.by);
        EXPECT_EQ(lafDelayShow, 100);
        lafDelay = c.by < 0 ? 3 : 198;
        Press(c.key);
        EXPECT_EQ(lafDelay, c.by < 0 ? 0 : 200);
    }
}

// --- views ----------------------------------------------------------------------------------------------------------------------

TEST_F(Keys, MinusBringsTheOverlayBack) {
    shortcutOverlayOn = 0;
    shortcutFade = 9;
    ExpectActivity('-', 100);
    EXPECT_EQ(shortcutOverlayOn, 1);
    EXPECT_EQ(shortcutFade, 512);
}

TEST_F(Keys, ZeroAndNineChangeTheSpeedMarginWithDebug) {
    FillSlot(0, 400);
    for (int i = 0; i < 400; i++) FSUS[0][i] = static_cast<int16_t>(i * 10);
    SusVSampleNum = 3;
    Press('0');
    Press('9');
    EXPECT_EQ(SusVSampleNum, 3) << "not without Debug";
    Debug = 1;
    ExpectActivity('0', 100);
    EXPECT_EQ(SusVSampleNum, 2);
    EXPECT_NE(VFSus[0][200], 0) << "computed anew";
    std::fill(VFSus[0].begin(), VFSus[0].end(), 0);
    ExpectActivity('9', 100);
    EXPECT_EQ(SusVSampleNum, 3);
    EXPECT_NE(VFSus[0][200], 0);
    SusVSampleNum = 0;
    Press('0');
    EXPECT_EQ(SusVSampleNum, 0);
    SusVSampleNum = 20;
    Press('9');
    EXPECT_EQ(SusVSampleNum, 20);
}

TEST_F(Keys, ATogglesTheBodyViewAndGoesBackToNormalGraphs) {
    graphPositionOn = 1;
    ExpectActivity('a', 100);
    EXPECT_EQ(AnimeMode, 1);
    EXPECT_EQ(graphPositionOn, 0);
    EXPECT_EQ(rulerFade, 5) << "4, and one pass on";
    EXPECT_TRUE(ButtonChecked(buttonAnime));
    EXPECT_TRUE(ButtonChecked(buttonGraphs));
    Press('a');
    EXPECT_EQ(AnimeMode, 0);
    EXPECT_FALSE(ButtonChecked(buttonAnime));
}

TEST_F(Keys, BTogglesTheScrollBar) {
    scrollBarGrow = 10;
    ExpectActivity('b', 55);
    EXPECT_EQ(scrollBarOn, 0);
    EXPECT_EQ(scrollBarGrow, 0);
    Press('b');
    EXPECT_EQ(scrollBarOn, 1);
    EXPECT_EQ(scrollBarGrow, 32);
}

TEST_F(Keys, CWakesTheProgramFor55Frames) { ExpectActivity('c', 55); }

TEST_F(Keys, EShowsTheAfMapAndLeavesIt) {
    graphPositionOn = 1;
    afFade = 200;
    CheckButton(buttonPosition, true);
    CheckButton(buttonPlay, true);
    ExpectActivity('e', 100);
    EXPECT_EQ(afMapOn, 1);
    EXPECT_EQ(graphPositionOn, 0);
    EXPECT_EQ(afFade, 0);
    EXPECT_TRUE(ButtonChecked(buttonAfMap));
    for (int id : {buttonPosition, buttonGraphs, buttonPlay}) EXPECT_FALSE(ButtonChecked(id)) << id;
    ExpectActivity('e', 100);
    EXPECT_EQ(afMapOn, 0);
    EXPECT_FALSE(ButtonChecked(buttonAfMap));
    EXPECT_TRUE(ButtonChecked(buttonGraphs));
}

TEST_F(Keys, EEndsRealTimePlay) {
    realTimePlayOn = 1;
    Press('e');
    EXPECT_EQ(realTimePlayOn, 0);
}

TEST_F(Keys, LSwitchesTheTagDistanceBetween0And80) {
    CslValWidth = 0;
    ExpectActivity('l', 100);
    EXPECT_EQ(CslValWidth, 80);
    CslValWidth = -3;
    Press('l');
    EXPECT_EQ(CslValWidth, 0);
}

TEST_F(Keys, PanelTogglesTake55Frames) {
    struct Case { int key; int* flag; };
    for (const Case& c : {Case{'m', &Memo_view}, Case{'q', &BodyDisplay}, Case{'w', &SusgramDisplay}}) {
        SCOPED_TRACE(static_cast<char>(c.key));
        const int before = *c.flag;
        ExpectActivity(c.key, 55);
        EXPECT_EQ(*c.flag, !before);
        Press(c.key);
        EXPECT_EQ(*c.flag, before);
    }
}

TEST_F(Keys, NDoublesTheMagnificationAndWrapsAbove40000EvenWithDebug) {
    Debug = 1;
    for (int goal : {20000, 40000, 10000}) {
        Press('n');
        EXPECT_EQ(viewZoomGoal, goal);
    }
    viewZoomGoal = 80000;
    ExpectActivity('n', 100);
    EXPECT_EQ(viewZoomGoal, 10000);
}

TEST_F(Keys, OStepsTheCourseColouring) {
    ColorMap = Debug = 0;
    ExpectActivity('o', 7);
    EXPECT_EQ(courseColorChannel, 0);
    ColorMap = 1;
    ExpectActivity('o', 100);
    EXPECT_EQ(courseColorChannel, 1);
    ColorMap = 0;
    Debug = 1;
    Press('o');
    EXPECT_EQ(courseColorChannel, 2);
    HoldShift();
    Press('o');
    EXPECT_EQ(courseColorChannel, 1);
    courseColorChannel = 0;
    Press('o');
    EXPECT_EQ(courseColorChannel, 131);
}

TEST_F(Keys, SStartsAndStopsRealTimePlay) {
    AdvanceClock(1234);
    afMapOn = graphPositionOn = 1;
    AnimeMode = 0;
    Press('s');
    EXPECT_EQ(realTimePlayOn, 1);
    EXPECT_EQ(playStamp, NowMs());
    EXPECT_EQ(AnimeMode, 1);
    EXPECT_EQ(afMapOn, 0);
    EXPECT_EQ(graphPositionOn, 0);
    for (int id : {buttonGraphs, buttonAnime, buttonPlay}) EXPECT_TRUE(ButtonChecked(id)) << id;
    Press('s');
    EXPECT_EQ(realTimePlayOn, 0);
    EXPECT_FALSE(ButtonChecked(buttonPlay));
    EXPECT_TRUE(ButtonChecked(buttonGraphs));
}

TEST_F(Keys, VWalksThroughTheReadoutModesAtTheExpertLevel) {
    ExpertMode = 2;
    CursolValueMode = 5;
    ExpectActivity('v', 100);
    EXPECT_EQ(CursolValueMode, 2) << "bit 2 is lost";
    for (int mode : {3, 0, 1}) {
        Press('v');
        EXPECT_EQ(CursolValueMode, mode);
    }
    HoldShift();
    Press('v');
    EXPECT_EQ(CursolValueMode, 5);
    Press('v');
    EXPECT_EQ(CursolValueMode, 1);
}

TEST_F(Keys, VCannotHideThePanelsBelowTheExpertLevel) {
    ExpertMode = 1;
    CursolValueMode = 1;
    Press('v');
    EXPECT_EQ(CursolValueMode, 0);
    Press('v');
    EXPECT_EQ(CursolValueMode, 1);
    HoldShift();
    Press('v');
    EXPECT_EQ(CursolValueMode, 1);
}

TEST_F(Keys, XAndZTakeFilesOutOfTheMove) {
    ExpectActivity('x', 100);
    EXPECT_EQ(fileMoveOn[1], 0);
    EXPECT_FALSE(ButtonChecked(buttonMoveFile2));
    ExpectActivity('z', 100);
    EXPECT_EQ(fileMoveOn[0], 0);
    EXPECT_FALSE(ButtonChecked(buttonMoveFile1));
    EXPECT_EQ(courseColorFile, 0);
}

TEST_F(Keys, XWithShiftMeansFile3AtTheExpertLevel) {
    HoldShift();
    ExpertMode = 1;
    Press('x');
    EXPECT_EQ(fileMoveOn[1], 0);
    ExpertMode = 2;
    Press('x');
    EXPECT_EQ(fileMoveOn[2], 0);
    EXPECT_EQ(fileMoveOn[1], 0);
    EXPECT_FALSE(ButtonChecked(buttonMoveFile2));
    Press('x');
    EXPECT_TRUE(ButtonChecked(buttonMoveFile2)) << "shows File 3";
}

TEST_F(Keys, ZPutsTheCourseBackInGraphPosition) {
    graphPositionOn = 1;
    courseOffset = 33;
    ExpectActivity('z', 100);
    EXPECT_EQ(courseOffset, 0);
    EXPECT_EQ(fileMoveOn[0], 1);
}

// --- files and dialogs ------------------------------------------------------------------------------------------------------------

TEST_F(Keys, DigitsOpenLogsIntoTheirFiles) {
    struct Case { int key, expert, slot; };
    for (const Case& c : {Case{'1', 0, 0}, Case{'2', 0, 1}, Case{'3', 2, 2}}) {
        SCOPED_TRACE(static_cast<char>(c.key));
        shown.clear();
        ExpertMode = c.expert;
        ScriptForeground(Foreground::toolbar);
        titleRect[c.slot][2] = 500;
        QueueAnswer(Answer::path, folder.Write("short.zrk", "3"));
        Press(c.key);
        ASSERT_EQ(shown.size(), 2u);
        EXPECT_EQ(shown[0].kind, "open");
        EXPECT_EQ(titleRect[c.slot][2], 10) << "the refusal empties the name of that file";
        EXPECT_EQ(ForegroundWindow(), Foreground::mainWindow);
    }
}

TEST_F(Keys, Key3BelowTheExpertLevelOnlyReturnsTheFocus) {
    ExpertMode = 1;
    ScriptForeground(Foreground::toolbar);
    ExpectActivity('3', 7);
    EXPECT_TRUE(shown.empty());
    EXPECT_EQ(ForegroundWindow(), Foreground::mainWindow);
}

TEST_F(Keys, Key4SavesTheCourseMapWhileThatIsShown) {
    CourseLayout_on = 0;
    ExpectActivity('4', 7);
    EXPECT_TRUE(shown.empty());
    CourseLayout_on = 1;
    ExpectActivity('4', 7);
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].kind, "save");
    EXPECT_NE(shown[0].text.find("*.bmp"), std::string::npos);
}

TEST_F(Keys, KTellsTheFuelUsed) {
    FillSlot(0, 5000);
    ExpectActivity('k', 7);
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].kind, "box");
    EXPECT_NE(shown[0].text.find("cc"), std::string::npos) << shown[0].text;
}

TEST_F(Keys, ACancelledOpenLeavesTheActivityToTheLoad) {
    activityCount = 7;
    Press('1');
    EXPECT_EQ(activityCount, 149) << "the closing steps of a load";
}

TEST_F(Keys, Keys5And6AskForLayoutFiles) {
    ExpectActivity('5', 7);
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].kind, "open");
    ExpectActivity('6', 7);
    ASSERT_EQ(shown.size(), 2u);
    EXPECT_EQ(shown[1].kind, "save");
}

TEST_F(Keys, Key5RebuildsTheGridFromTheNewLayout) {
    QueueAnswer(Answer::path, folder.Write("a.cfg", "[GraphSetting]\r\nvbpos=77\r\n"));
    ScriptChar('5');
    EXPECT_TRUE(Contains(Recorded(ReadInput), "SetDrawTarget gridStrip"));
    EXPECT_EQ(channelPosition[chVB], 77);
}

TEST_F(Keys, DOpensTheAnalysisTools) {
    afMapOn = graphPositionOn = 1;
    dragKind = 2;
    ExpectActivity('d', 7);
    EXPECT_TRUE(OpenedDialog(dialogAnalysisTools));
    EXPECT_EQ(afMapOn, 0);
    EXPECT_EQ(dragKind, 0);
    EXPECT_EQ(graphPositionOn, 0) << "afterwards";
    EXPECT_EQ(rulerFade, 6);
    EXPECT_TRUE(ButtonChecked(buttonGraphs));
}

TEST_F(Keys, TheAnalysisToolsOpenWithNothingHeld) {
    static int heldThen;
    SetDialogHandler([](int, int) { return heldThen = dragKind; });
    heldThen = 7;
    dragKind = 2;
    Press('d');
    EXPECT_EQ(heldThen, 0);
}

TEST_F(Keys, TheDialogThatTakesTheAnalysisToolsPlaceFollowsThem) {
    SetDialogHandler([](int id, int) { return id == dialogAnalysisTools ? dialogCsvRange : 0; });
    Press('d');
    ASSERT_EQ(shown.size(), 2u);
    EXPECT_EQ(shown[1].title, std::to_string(dialogCsvRange));
}

TEST_F(Keys, AnAfMapStartedInTheAnalysisToolsStays) {
    SetDialogHandler([](int, int) { return afMapOn = 1; });
    Press('d');
    EXPECT_EQ(afMapOn, 1);
    EXPECT_TRUE(ButtonChecked(buttonAfMap));
}

TEST_F(Keys, FOpensTheSetup) {
    ExpectActivity('f', 7);
    EXPECT_TRUE(OpenedDialog(dialogSetup));
}

TEST_F(Keys, POpensTheMonitorWithDebug) {
    Press('p');
    EXPECT_TRUE(shown.empty());
    Debug = 1;
    ExpectActivity('p', 7);
    EXPECT_TRUE(OpenedDialog(dialogRealTimeMonitor));
}

}  // namespace
