#include "app/toolbar.h"

#include "app/layout_cycle.h"
#include "settings/graph_layout.h"
#include "tests/app/input_fixture.h"

namespace {

struct Toolbar : InputTest {
    void SetUp() override {
        InputTest::SetUp();
        shown.clear();
    }
    static bool Shows(int id) { return ShownToolButton(id); }
    static void ExpectModeButtons(bool position, bool graphs, bool play, bool afMap) {
        EXPECT_EQ(Shows(buttonPosition), position);
        EXPECT_EQ(Shows(buttonGraphs), graphs);
        EXPECT_EQ(Shows(buttonPlay), play);
        EXPECT_EQ(Shows(buttonAfMap), afMap);
    }
    static void ExpectViewCommand() {
        EXPECT_EQ(activityCount, 100);
        EXPECT_EQ(animationPending, 1);
        EXPECT_EQ(mouseButtons, 0u);
    }
    static void LayRearOverFront() {
        channelPosition[chVRW] = channelPosition[chVFW];
        channelZoom[chVRW] = channelZoom[chVFW];
    }
    static std::string DialogsShown() {
        std::string ids;
        for (const Shown& one : shown) ids += one.kind + " " + one.title + ";";
        return ids;
    }
};

TEST_F(Toolbar, StartsWithTheStatesOfItsTable) {
    EXPECT_TRUE(Shows(buttonMoveFile1));
    EXPECT_TRUE(Shows(buttonMoveFile2));
    ExpectModeButtons(false, true, false, false);
    const int icons[][2] = {{1111, 1001}, {1112, 1002}, {1033, 1003}, {1034, 1004}, {1035, 1005}, {1036, 1006},
                            {1113, 1007}, {1114, 1008}, {1115, 1009}, {1117, 1011}, {1116, 1010}, {1037, 1012}};
    for (const auto& [id, icon] : icons) EXPECT_EQ(ShownToolIcon(id), icon) << id;
}

TEST_F(Toolbar, EveryButtonTellsWhatItDoesAndItsKey) {
    const struct { int id; const char* tip; } rows[] = {
        {1111, "Move File 1 (Z)"},   {1112, "Move File 2 (X), with Shift File 3"},
        {1033, "Open File 1 (1)"},   {1034, "Open File 2 (2), with Shift File 3"},
        {1035, "Overlay the speeds, fit the traces, standard layout"},
        {1036, "Close File 2 and 3, with Shift File 3"},
        {1113, "Graph position"},    {1114, "Graphs (Esc)"},
        {1115, "Meter and body (A)"}, {1117, "A/F map (E)"},
        {1116, "Play (S)"},          {1037, "Setup (F)"}};
    for (const auto& row : rows) EXPECT_EQ(ShownToolTip(row.id), row.tip) << row.id;
}

TEST_F(Toolbar, AfterADeviceResetItShowsWhatTheVariablesSay) {
    fileMoveOn[0] = 0;
    AnimeMode = 1;
    ResetDevice();
    EXPECT_FALSE(Shows(buttonMoveFile1));
    EXPECT_TRUE(Shows(buttonMoveFile2));
    EXPECT_TRUE(Shows(buttonAnime));
    ExpectModeButtons(false, true, false, false);
    graphPositionOn = afMapOn = realTimePlayOn = 1;
    ResetDevice();
    ExpectModeButtons(true, false, false, true);
}

TEST_F(Toolbar, AWindowMadeAnewShowsTheModes) {
    graphPositionOn = realTimePlayOn = afMapOn = 1;
    DestroyToolbarWindow();
    CreateToolbarWindow();
    ExpectModeButtons(true, false, true, true);
}

TEST_F(Toolbar, AStartAnewBeginsTheLayoutsAndTheStatesAnew) {
    ScriptToolPress(1113, true);
    layoutCycle = 2;
    LoadDefaults();
    EXPECT_EQ(layoutCycle, 0);
    ExpectModeButtons(false, true, false, false);
}

TEST_F(Toolbar, EveryCommandGivesTheForegroundBack) {
    for (int id : {1111, 1112, 1033, 1034, 1035, 1036, 1113, 1114, 1115, 1117, 1116, 1037}) {
        ScriptForeground(Foreground::toolbar);
        ScriptToolPress(id, true);
        EXPECT_EQ(ForegroundWindow(), Foreground::mainWindow) << id;
    }
}

TEST_F(Toolbar, Button1111SwitchesFile1) {
    ScriptToolPress(1111, false);
    EXPECT_EQ(fileMoveOn[0], 0);
    EXPECT_FALSE(ButtonChecked(1111));
    ScriptToolPress(1111, true);
    EXPECT_EQ(fileMoveOn[0], 1);
}

TEST_F(Toolbar, Button1112SwitchesFile2AndWithShiftFile3OnlyAtExpertLevel) {
    ScriptToolPress(1112, false);
    EXPECT_EQ(fileMoveOn[1], 0);
    shiftDown = 1;
    ExpertMode = 1;
    ScriptToolPress(1112, true);
    EXPECT_EQ(fileMoveOn[1], 1);
    ExpertMode = 2;
    ScriptToolPress(1112, false);
    EXPECT_EQ(fileMoveOn[1], 1);
    EXPECT_EQ(fileMoveOn[2], 0);
}

TEST_F(Toolbar, ShiftAtExpertLevelTurnsTheButtonsOfFile2IntoThoseOfFile3) {
    ExpertMode = 2;
    fileMoveOn[2] = 0;
    ScriptHold(true, false);
    Step();
    EXPECT_FALSE(Shows(1112));
    EXPECT_EQ(ShownToolIcon(1112), 1014);
    EXPECT_EQ(ShownToolIcon(1034), 1015);
    ScriptHold(false, false);
    Step();
    EXPECT_TRUE(Shows(1112));
    EXPECT_EQ(ShownToolIcon(1112), 1002);
    EXPECT_EQ(ShownToolIcon(1034), 1004);
}

TEST_F(Toolbar, Buttons1033And1034OpenLogsAndSpendTheClick) {
    const struct { int id, shift, level, slot; } rows[] = {{1033, 0, 2, 0}, {1034, 0, 2, 1}, {1034, 1, 1, 1}, {1034, 1, 2, 2}};
    SampleLogOptions options;
    options.laps = 1;
    const std::vector<uint8_t> bytes = MakeSampleLog(options);
    const std::string log = folder.Write("a.zrk", {reinterpret_cast<const char*>(bytes.data()), bytes.size()});
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.id << " shift " << row.shift << " level " << row.level);
        for (int slot = 0; slot < fileSlots; slot++) ResetSlot(slot);
        shiftDown = row.shift;
        ExpertMode = row.level;
        dragKind = 0;
        mouseButtons = 1;
        widgetHover = 1;
        QueueAnswer(Answer::path, log);
        ScriptToolPress(row.id, false);
        for (int slot = 0; slot < fileSlots; slot++) EXPECT_EQ(sampleCount[slot] > 1, slot == row.slot) << slot;
        EXPECT_EQ(dragKind, 1);
        EXPECT_EQ(mouseButtons, 0u);
        EXPECT_EQ(widgetHover, 0u);
    }
}

TEST_F(Toolbar, Button1036UnloadsFile2And3OrWithShiftFile3Alone) {
    FillSlot(0, 100);
    FillSlot(1, 100);
    FillSlot(2, 100);
    ScriptHold(true, false);
    Step();
    ScriptToolPress(1036, false);
    EXPECT_EQ(slotInUse[1], 1);
    EXPECT_EQ(slotInUse[2], 0);
    FillSlot(2, 100);
    ScriptHold(false, false);
    Step();
    afFade = 0;
    ScriptToolPress(1036, false);
    for (int slot : {1, 2}) {
        EXPECT_EQ(slotInUse[slot], 0);
        EXPECT_EQ(lapCount[slot], 1);
        EXPECT_EQ(sampleCount[slot], 1);
        EXPECT_EQ(cursorPos[slot], 0);
    }
    EXPECT_EQ(sampleCount[0], 100);
    EXPECT_EQ(afFade, 128);
}

TEST_F(Toolbar, Button1036WithFile1AloneChangesNothingThatShows) {
    FillSlot(0, 100);
    ScriptToolPress(1036, false);
    EXPECT_EQ(slotInUse[0], 1);
    EXPECT_EQ(sampleCount[0], 100);
    EXPECT_EQ(sampleCount[1], 1);
    EXPECT_EQ(sampleCount[2], 1);
}

TEST_F(Toolbar, Button1037OpensTheSetupAndTheMeterIsDrawnAnew) {
    meterRedraw = 0;
    ScriptToolPress(1037, false);
    EXPECT_EQ(DialogsShown(), "dialog 1019;");
    EXPECT_EQ(meterRedraw, 1);
}

TEST_F(Toolbar, Button1113ShowsGraphPosition) {
    afMapOn = realTimePlayOn = 1;
    layoutCycle = 2;
    mouseButtons = 1;
    ScriptToolPress(1113, false);  // pressed while on: it stays on
    EXPECT_EQ(graphPositionOn, 1);
    EXPECT_EQ(afMapOn, 0);
    EXPECT_EQ(realTimePlayOn, 0);
    EXPECT_EQ(layoutCycle, 0);
    EXPECT_EQ(rulerFade, 5);
    ExpectModeButtons(true, false, false, false);
    ExpectViewCommand();
}

TEST_F(Toolbar, Button1114ShowsNormalGraphs) {
    graphPositionOn = afMapOn = realTimePlayOn = 1;
    mouseButtons = 1;
    ScriptToolPress(1114, false);
    EXPECT_EQ(graphPositionOn + afMapOn + realTimePlayOn, 0);
    EXPECT_EQ(rulerFade, 5);
    ExpectModeButtons(false, true, false, false);
    ExpectViewCommand();
}

TEST_F(Toolbar, Button1115SwitchesTheBodyViewAndLeavesTheOtherModes) {
    graphPositionOn = realTimePlayOn = 1;
    ScriptToolPress(1115, true);
    EXPECT_EQ(AnimeMode, 1);
    EXPECT_EQ(rulerFade, 4);
    EXPECT_EQ(graphPositionOn + afMapOn + realTimePlayOn, 0);
    EXPECT_TRUE(Shows(1115));
    ExpectModeButtons(false, true, false, false);
    ExpectViewCommand();
    ScriptToolPress(1115, false);
    EXPECT_EQ(AnimeMode, 0);
}

TEST_F(Toolbar, Button1116PlaysAndShowsTheBodyView) {
    AnimeMode = 0;
    CheckButton(buttonAnime, false);
    graphPositionOn = afMapOn = 1;
    ScriptToolPress(1116, true);
    EXPECT_EQ(realTimePlayOn, 1);
    EXPECT_EQ(AnimeMode, 1);
    EXPECT_EQ(graphPositionOn + afMapOn, 0);
    EXPECT_TRUE(Shows(1115));
    ExpectModeButtons(false, true, true, false);
    ExpectViewCommand();
    ScriptToolPress(1116, false);
    EXPECT_EQ(realTimePlayOn, 0);
}

TEST_F(Toolbar, Button1117LeavesTheMapWhenItIsOn) {
    afMapOn = 1;
    CheckButton(buttonAfMap, true);
    ScriptToolPress(1117, false);
    EXPECT_EQ(afMapOn, 0);
    EXPECT_EQ(DialogsShown(), "");
    EXPECT_EQ(rulerFade, 5);
    ExpectModeButtons(false, true, false, false);
    ExpectViewCommand();
}

TEST_F(Toolbar, Button1117OpensTheAnalysisToolsAndShowsWhatWasStartedThere) {
    graphPositionOn = 1;
    ScriptToolPress(1117, false);
    EXPECT_EQ(DialogsShown(), "dialog 1023;");
    EXPECT_EQ(graphPositionOn, 0);
    ExpectModeButtons(false, true, false, false);
    SetDialogHandler([](int, int) { return afMapOn = 1; });
    ScriptToolPress(1117, false);
    ExpectModeButtons(false, true, false, true);
}

TEST_F(Toolbar, Button1117OpensTheDialogThatTakesTheToolsPlace) {
    SetDialogHandler([](int id, int) { return id == dialogAnalysisTools ? dialogCsvRange : 0; });
    ScriptToolPress(1117, false);
    EXPECT_EQ(DialogsShown(), "dialog 1023;dialog 1028;");
}

// --- layout cycle ---------------------------------------------------------------------------------------------------------

TEST_F(Toolbar, Button1035LaysTheSpeedsOverEachOtherThenFitsThenTakesTheStandard) {
    channelPosition[chVFW] = 500;
    channelZoom[chVFW] = 7;
    ScriptToolPress(1035, false);
    EXPECT_EQ(channelPosition[chVRW], 500);
    EXPECT_EQ(channelZoom[chVRW], 7);
    EXPECT_EQ(layoutCycle, 1);
    ScriptToolPress(1035, false);
    EXPECT_EQ(layoutCycle, 2);
    ScriptToolPress(1035, false);
    EXPECT_EQ(layoutCycle, 1);
    EXPECT_EQ(channelZoom[chNe], 50);
}

TEST_F(Toolbar, AChangedZoomOfVfwStartsTheCycleOver) {
    for (int cycle : {1, 2}) {
        layoutCycle = cycle;
        channelZoom[chVFW] = 33;
        channelZoom[chVRW] = 20;
        ScriptToolPress(1035, false);
        EXPECT_EQ(channelZoom[chVFW], 33);
        EXPECT_EQ(channelZoom[chVRW], 33);
        EXPECT_EQ(layoutCycle, 1);
    }
    layoutCycle = 2;
    channelPosition[chVFW] = channelPosition[chVRW] + 1;
    ScriptToolPress(1035, false);
    EXPECT_EQ(channelZoom[chVFW], 33) << "a position counts as well";
}

TEST_F(Toolbar, TheFitAndTheStandardLayoutRebuildTheGridTheOverlayDoesNot) {
    for (int cycle : {0, 1, 2}) {
        LayRearOverFront();
        layoutCycle = cycle;
        EXPECT_EQ(Contains(Recorded(StepLayoutCycle), "SetDrawTarget gridStrip"), cycle != 0) << cycle;
    }
}

TEST_F(Toolbar, AutoFitGivesEachTraceAThirdOfTheHeight) {
    for (int channel = 0; channel < channelTotal; channel++) {
        channelMin[0][channel] = 1000;
        channelMax[0][channel] = 3330;
    }
    channelPosition[chVB] = 77;
    channelZoom[chVB] = 3;
    clientHeight = 700;  // a third is 233
    layoutCycle = 1;
    StepLayoutCycle();
    EXPECT_DOUBLE_EQ(channelZoom[chNe], 10);
    EXPECT_EQ(channelPosition[chNe], 100 - 50 + 700);
    EXPECT_DOUBLE_EQ(channelZoom[chVRW], 10);
    EXPECT_DOUBLE_EQ(channelZoom[chTH], 1);
    EXPECT_EQ(channelPosition[chTH], 100 - 50 + 700);
    EXPECT_EQ(channelPosition[chVB], 77);
    EXPECT_EQ(channelZoom[chVB], 3);
}

TEST_F(Toolbar, AutoFitOfAFlatChannelTakesTheSmallestZoom) {
    channelMin[0][chFSUS] = channelMax[0][chFSUS] = -30;
    clientHeight = 2;  // a third is at least 1
    layoutCycle = 1;
    StepLayoutCycle();
    EXPECT_DOUBLE_EQ(channelZoom[chFSUS], 0.1);
    EXPECT_EQ(channelPosition[chFSUS], -300 - 50 + 2);
}

TEST_F(Toolbar, TheStandardLayoutIsHeldToTheClientAndWidensTheAuxInputs) {
    clientHeight = 500;
    layoutCycle = 2;
    StepLayoutCycle();
    const int positions[] = {360, 430, 500, 500, 500, 500, 450, 450, 80, 500, 500, 500, 500, 500};
    const double zooms[] = {50, 1, 20, 20, 75, 50, 8, 8, 20, 20, 20, 10, 50, 50};
    for (int channel = 0; channel < channelTotal; channel++) {
        EXPECT_EQ(channelPosition[channel], positions[channel]) << channel;
        EXPECT_EQ(channelZoom[channel], zooms[channel]) << channel;
    }
}

// --- place and system messages ----------------------------------------------------------------------------------------------

bool Same(const ScreenRect& a, const ScreenRect& b) {
    return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}

TEST_F(Toolbar, IsPulledOntoTheMonitorByItsFourEdges) {
    const ScreenRect monitor = {-100, 0, 900, 800};
    EXPECT_TRUE(Same(PulledOnto(monitor, {10, 20, 60, 90}), {10, 20, 60, 90}));
    EXPECT_TRUE(Same(PulledOnto(monitor, {880, 20, 930, 90}), {850, 20, 900, 90}));
    EXPECT_TRUE(Same(PulledOnto(monitor, {-300, 20, -250, 90}), {-100, 20, -50, 90}));
    EXPECT_TRUE(Same(PulledOnto(monitor, {10, 790, 60, 860}), {10, 730, 60, 800}));
    EXPECT_TRUE(Same(PulledOnto(monitor, {10, -70, 60, 0}), {10, 0, 60, 70}));
    EXPECT_TRUE(Same(PulledOnto(monitor, {0, 0, 5000, 5000}), {-100, 0, 4900, 5000})) << "too large: left and top count";
}

TEST_F(Toolbar, StandsAtASpotTiedToTheMainWindowOrToTheMonitorWhenThatIsMaximised) {
    ScriptScreenSize(1920, 1080);
    MoveMainWindow(100, 50);
    PlaceToolbar(1);
    EXPECT_EQ(ToolWindowRect().left, 100 + 256);
    EXPECT_EQ(ToolWindowRect().top, 50 + 700 - 288);
    ShowMainWindow(2);
    PlaceToolbar(1);
    EXPECT_EQ(ToolWindowRect().left, 256);
    EXPECT_EQ(ToolWindowRect().top, 1080 - 288);
}

TEST_F(Toolbar, OnARemovedMonitorItComesBackAndOtherwiseStays) {
    ScriptScreenSize(1920, 1080);
    ScriptToolRect({3000, 100, 3078, 360});
    PlaceToolbar(0);
    EXPECT_EQ(ToolWindowRect().right, 1920);
    EXPECT_EQ(ToolWindowRect().top, 100);
    ScriptToolRect({500, 100, 578, 360});
    PlaceToolbar(0);
    EXPECT_EQ(ToolWindowRect().left, 500);
}

TEST_F(Toolbar, ClosingItEndsTheProgramAndItsDestructionToo) {
    ScriptToolClose();
    EXPECT_EQ(quitFlag, 1);
    CloseToolWindow();
    EXPECT_EQ(quitFlag, 2);
    EXPECT_EQ(ToolbarWindowHandle(), nullptr);
}

}  // namespace
