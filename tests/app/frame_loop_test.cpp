#include "app/frame_loop.h"

#include "app/frame_steps.h"
#include "app/toolbar.h"
#include "draw/surface.h"
#include "platform/clock.h"
#include "platform/window.h"
#include "tests/program_fixture.h"

namespace {

struct FrameLoop : ProgramTest {
    // Passes that find nothing to do, until drawing stops.
    void ComeToRest() {
        viewZoom = 1.0;
        for (int pass = 0; pass < 400 && activityCount > 0; pass++) LoopPass();
        ASSERT_EQ(activityCount, 0);
    }
    int MsOf(void (*work)()) {
        const int64_t start = SteadyMs();
        work();
        return static_cast<int>(SteadyMs() - start);
    }
    std::vector<std::string> FrameLines() { return Recorded(DrawFrame); }
};

// --- the frame table -----------------------------------------------------------------------------------------------------------

TEST_F(FrameLoop, GridAndLabelsComeFirstInEveryMode) {
    OpenWindow(640, 400);
    scrollY = 30;
    viewZoom = 1.5;
    for (int mode : {0, 1, 2}) {
        graphPositionOn = mode == 1;
        afMapOn = mode == 2;
        const std::vector<std::string> lines = FrameLines();
        ASSERT_GE(lines.size(), 5u);
        EXPECT_EQ(lines[1], "SetBlend 0 255");
        EXPECT_EQ(lines[2], "DrawImageScaledXY 0 -30 0 0 gridStrip 640 1.5");
        EXPECT_TRUE(Contains(lines, "DrawImageRotated 220 -30 0 0 labelStrip 0 1.5 0"));
    }
}

TEST_F(FrameLoop, LabelsAreAddedInTheDarkSchemeAndSubtractedInTheLightOne) {
    OpenWindow(640, 400);
    const auto blendOfLabels = [this] {
        const std::vector<std::string> lines = FrameLines();
        for (size_t i = 1; i < lines.size(); i++)
            if (lines[i].rfind("DrawImageRotated", 0) == 0) return lines[i - 1];
        return std::string();
    };
    EXPECT_EQ(blendOfLabels(), "SetBlend 2 255");
    colortype = 1;
    EXPECT_EQ(blendOfLabels(), "SetBlend 3 255");
}

TEST_F(FrameLoop, LabelsMoveRightOfFile3sColumn) {
    OpenWindow(640, 400);
    slotInUse[2] = 1;
    EXPECT_TRUE(Contains(FrameLines(), "DrawImageRotated 325 0 0 0 labelStrip 0 1 0"));
}

TEST_F(FrameLoop, GridBlendTellsATimeZoomDrag) {
    OpenWindow(640, 400);
    zoomDragOn = 1;
    EXPECT_EQ(FrameLines()[1], "SetBlend 0 64");
}

TEST_F(FrameLoop, EachModeDrawsItsSteps) {
    OpenWindow(640, 400);
    FillSlot(0, 3000);
    SetMarks(0, {1000});
    cursorPos[0] = 100000;
    const auto draws = [this](const char* line) {
        for (const std::string& drawn : FrameLines())
            if (drawn.find(line) != std::string::npos) return true;
        return false;
    };
    const char *lapLine = "#00C800", *cursorLine = "#FFFFFF", *trace = "#00FF00";
    EXPECT_TRUE(draws(lapLine) && draws(cursorLine) && draws(trace));
    graphPositionOn = afMapOn = 1;  // graph position wins
    EXPECT_FALSE(draws(lapLine));
    EXPECT_TRUE(draws(cursorLine) && draws(trace));
    graphPositionOn = 0;
    EXPECT_FALSE(draws(lapLine) || draws(cursorLine) || draws(trace));
}

TEST_F(FrameLoop, NormalGraphsRunFromGridToCursorLine) {
    OpenWindow(640, 400);
    FillSlot(0, 3000);
    SetMarks(0, {1000});
    cursorPos[0] = 100000;
    Debug = 1;
    shortcutOverlayOn = popupWanted = 1;
    const std::vector<std::string> lines = FrameLines();
    const char* const inOrder[] = {"gridStrip", "labelStrip", "\"Keyboard shortcuts\"", "#00FF00 1", "#00C800 1", "DrawLineF 320 14 320",
                                   "coursePopup", "DrawTextF 50 0"};
    size_t at = 0;
    for (const char* part : inOrder) {
        while (at < lines.size() && lines[at].find(part) == std::string::npos) at++;
        EXPECT_LT(at, lines.size()) << part;
    }
}

TEST_F(FrameLoop, PlotsAreAddedOnlyInTheDarkSchemeWithTheBlendSetting) {
    OpenWindow(640, 400);
    const auto blendOfPlot = [this] {
        const std::vector<std::string> lines = FrameLines();
        for (size_t i = 1; i < lines.size(); i++)
            if (lines[i].rfind("SetBrightness", 0) == 0) return lines[i - 1];
        return std::string();
    };
    EXPECT_EQ(blendOfPlot(), "SetBlend 0 255");
    Blend_mode = 1;
    EXPECT_EQ(blendOfPlot(), "SetBlend 2 255");
    colortype = 1;
    EXPECT_EQ(blendOfPlot(), "SetBlend 0 255");
}

TEST_F(FrameLoop, AFrameLeavesTheRestingState) {
    OpenWindow(640, 400);
    Debug = popupWanted = shortcutOverlayOn = 1;
    for (int mode : {0, 1, 2}) {
        graphPositionOn = mode == 1;
        afMapOn = mode == 2;
        const std::vector<std::string> lines = FrameLines();
        EXPECT_EQ(Only(lines, "SetBlend").back(), "SetBlend 0 255");
        const std::vector<std::string> brightness = Only(lines, "SetBrightness");
        EXPECT_TRUE(brightness.empty() || brightness.back() == "SetBrightness 255 255 255");
    }
}

// --- overlay, popup, debug line ---------------------------------------------------------------------------------------------------

TEST_F(FrameLoop, OverlayShowsItsRows) {
    OpenWindow(1024, 768);
    shortcutOverlayOn = 1;
    rowHeight = 17;
    const std::vector<std::string> lines = Beginning(FrameLines(), "DrawTextAt 300 ");
    ASSERT_EQ(lines.size(), 21u);
    EXPECT_EQ(lines[0], "DrawTextAt 300 64 \"Keyboard shortcuts\" #FFFFFF bigFont");
    EXPECT_EQ(lines[1], "DrawTextAt 300 115 \"[1][2][3]   - File Open\" #FFFFFF bigFont");
    EXPECT_EQ(lines[6], "DrawTextAt 300 217 \"[E]         - A/F MapView\" #FFFFFF bigFont");
    EXPECT_EQ(lines[13], "DrawTextAt 300 370 \"[Shift]+[X] - MoveOn,off File3\" #FFFFFF bigFont");
    EXPECT_EQ(lines[20], "DrawTextAt 300 489 \"[Ctrl]      - Smoothing\" #FFFFFF bigFont");
}

TEST_F(FrameLoop, OverlayFadesByDrawnFramesAndEndsBelow10) {
    OpenWindow(640, 400);
    shortcutOverlayOn = 1;
    shortcutFade = 300;
    EXPECT_TRUE(Contains(FrameLines(), "SetBlend 2 255"));
    EXPECT_EQ(shortcutFade, 299);
    shortcutFade = 11;
    EXPECT_TRUE(Contains(FrameLines(), "SetBlend 2 11"));
    EXPECT_EQ(shortcutOverlayOn, 1);
    FrameLines();
    EXPECT_EQ(shortcutFade, 9);
    EXPECT_EQ(shortcutOverlayOn, 0);
    FrameLines();
    EXPECT_EQ(shortcutFade, 9);
}

TEST_F(FrameLoop, OverlayIsFrozenWhileTheProgramRests) {
    OpenWindow(640, 400);
    shortcutOverlayOn = 1;
    shortcutFade = 400;
    ComeToRest();
    const int fade = shortcutFade, frames = frameNumber;
    EXPECT_EQ(shortcutOverlayOn, 1);
    for (int pass = 0; pass < 5; pass++) LoopPass();
    EXPECT_EQ(shortcutFade, fade);
    EXPECT_EQ(frameNumber, frames);
}

TEST_F(FrameLoop, CoursePopupOpensAcrossThenDown) {
    OpenWindow(640, 400);
    mouseX = 400;
    mouseY = 20;
    popupWanted = 1;
    struct Step { int counter; const char *blend, *image; };
    const Step steps[] = {{1, "SetBlend 1 7", "DrawImageScaledXY 272 48 60 40 coursePopup 0.0625 0.02"},
                          {15, "SetBlend 1 105", "DrawImageScaledXY 272 48 60 40 coursePopup 0.9375 0.02"},
                          {16, "SetBlend 1 112", "DrawImageScaledXY 272 48 60 40 coursePopup 1 0"},
                          {17, "SetBlend 1 119", "DrawImageScaledXY 272 48 60 40 coursePopup 1 0.0625"},
                          {32, "SetBlend 1 224", "DrawImageScaledXY 272 48 60 40 coursePopup 1 1"}};
    for (const Step& step : steps) {
        SCOPED_TRACE(step.counter);
        popupCounter = step.counter - 1;
        const std::vector<std::string> lines = FrameLines();
        EXPECT_EQ(popupCounter, step.counter);
        EXPECT_TRUE(Contains(lines, step.blend));
        EXPECT_TRUE(Contains(lines, step.image));
    }
    FrameLines();
    EXPECT_EQ(popupCounter, 32);
    popupWanted = 0;
    mouseY = 300;
    EXPECT_TRUE(Contains(FrameLines(), "DrawImageScaledXY 272 300 60 40 coursePopup 1 0.9375"));
    popupCounter = 1;
    EXPECT_EQ(RecordedText(DrawFrame).find("coursePopup"), std::string::npos);
    EXPECT_EQ(popupCounter, 0);
}

TEST_F(FrameLoop, DebugLineShowsItsNumbers) {
    OpenWindow(640, 400);
    graphPositionOn = 1;  // the read-outs stay away
    EXPECT_TRUE(Only(FrameLines(), "DrawTextF").empty());
    Debug = 1;
    FillSlot(0, 3000);
    SetMarks(0, {1000, 1700});
    lapViewOffset[0] = 1;
    currentLap[0] = 2;
    activityCount = 77;
    timeScale = 2.5;
    const std::vector<std::string> lines = Only(FrameLines(), "DrawTextF");
    ASSERT_EQ(lines.size(), 7u);
    EXPECT_EQ(lines[1], "DrawTextF 100 0 #C8FFC8 smallFont \"77 0\"");
    EXPECT_EQ(lines[2].rfind("DrawTextF 250 0 #C8FFEB smallFont ", 0), 0u);
    EXPECT_EQ(lines[3], "DrawTextF 200 16 #FFC8EB smallFont \"2/3\"");
    EXPECT_EQ(lines[4], "DrawTextF 200 32 #FFC8EB smallFont \"0\"");
    EXPECT_EQ(lines[6], "DrawTextF 200 64 #FFC8EB smallFont \"2.500000 , 700\"");
}

TEST_F(FrameLoop, DebugPeakFollowsUpwardAndFallsBackAbove100) {
    OpenWindow(640, 400);
    graphPositionOn = Debug = 1;
    VSync = 0;
    const auto elapsed = [this](int ms) {
        PaceFrame();
        AdvanceClock(ms);
        return Only(FrameLines(), "DrawTextF")[2].substr(34);
    };
    EXPECT_EQ(elapsed(40), "\"40 (40)\"");
    EXPECT_EQ(elapsed(7), "\"7 (40)\"");
    EXPECT_EQ(elapsed(100), "\"100 (100)\"");
    EXPECT_EQ(elapsed(101), "\"101 (101)\"");
    EXPECT_EQ(elapsed(3), "\"3 (3)\"");
}

// --- pace -------------------------------------------------------------------------------------------------------------------------

TEST_F(FrameLoop, AnIdlePassWaits200ms) {
    OpenWindow(640, 400);
    idleFrame = 1;
    activityCount = 1;
    EXPECT_EQ(MsOf(PaceFrame), 200);
    activityCount = 2;
    EXPECT_EQ(MsOf(PaceFrame), 0);
    activityCount = 0;
    idleFrame = 0;
    EXPECT_EQ(MsOf(PaceFrame), 0);
}

TEST_F(FrameLoop, WithoutVSyncAPassTakesAtLeast15ms) {
    OpenWindow(640, 400);
    VSync = 0;
    idleFrame = 0;
    struct Case { int elapsed, waits; };
    for (const Case& c : {Case{0, 0}, Case{1, 14}, Case{14, 1}, Case{15, 0}, Case{40, 0}}) {
        SCOPED_TRACE(c.elapsed);
        PaceFrame();
        AdvanceClock(c.elapsed);
        EXPECT_EQ(MsOf(PaceFrame), c.waits);
    }
}

TEST_F(FrameLoop, AFinishedAfMapNeedsTenFramesASecond) {
    OpenWindow(640, 400);
    idleFrame = 0;
    afMapOn = 1;
    afProgress = 255;
    struct Case { int elapsed, waits; };
    for (const Case& c : {Case{0, 0}, Case{1, 99}, Case{99, 1}, Case{100, 0}}) {
        SCOPED_TRACE(c.elapsed);
        PaceFrame();
        AdvanceClock(c.elapsed);
        EXPECT_EQ(MsOf(PaceFrame), c.waits);
    }
    afProgress = 254;
    AdvanceClock(30);
    EXPECT_EQ(MsOf(PaceFrame), 0) << "VSync paces it";
}

TEST_F(FrameLoop, DurationOfAPassIncludesItsWait) {
    OpenWindow(640, 400);
    idleFrame = 1;
    activityCount = 0;
    PaceFrame();
    AdvanceClock(8);
    EXPECT_EQ(PassElapsedMs(), 8);
    PaceFrame();
    EXPECT_EQ(LastPassMs(), 208);
}

TEST_F(FrameLoop, NothingIsDrawnOnceActivityHasRunOut) {
    OpenWindow(640, 400);
    ComeToRest();
    const int frames = frameNumber;
    const int64_t start = SteadyMs();
    const std::string drawn = RecordedText([] {
        for (int pass = 0; pass < 300; pass++) LoopPass();
    });
    EXPECT_EQ(drawn, "");
    EXPECT_EQ(frameNumber, frames);
    EXPECT_EQ(SteadyMs() - start, 60000) << "a minute of nothing but waits";
}

TEST_F(FrameLoop, AKeyPressWakesTheProgramInTheNextPass) {
    OpenWindow(640, 400);
    ComeToRest();
    const int frames = frameNumber;
    ScriptChar('b');
    LoopPass();
    EXPECT_EQ(frameNumber, frames + 1);
    EXPECT_EQ(activityCount, 54);
}

TEST_F(FrameLoop, AMinimisedWindowKeepsItsSizesAndDrawsNothing) {
    OpenWindow(640, 400);
    LoopPass();
    ShowMainWindow(1);
    ScriptMouse(100, 100);
    ScriptButtons(1);
    const int frames = frameNumber;
    for (int pass = 0; pass < 5; pass++) LoopPass();
    EXPECT_EQ(frameNumber, frames);
    EXPECT_EQ(clientWidth, 640);
    EXPECT_EQ(clientHeight, 400);
    EXPECT_EQ(mouseX, 0);
    const int64_t start = SteadyMs();
    LoopPass();
    EXPECT_EQ(SteadyMs() - start, 200) << "and rests";
    ShowMainWindow(3);
    LoopPass();
    EXPECT_EQ(mouseX, 100);
    EXPECT_EQ(frameNumber, frames + 1);
}

}  // namespace
