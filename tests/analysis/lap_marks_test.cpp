#include "analysis/lap_marks.h"

#include "app/toolbar.h"
#include "draw/recorder.h"
#include "graph/color_scheme.h"
#include "resources/resource.h"
#include "tests/program_fixture.h"

namespace {

// Marks of File 1 by hand: each draws one circle.
struct Marks : ProgramTest {
    void SetUp() override {
        OpenWindow(800, 600);
        AddMark(0, 0, 0, 300);
    }
    static void AddMark(int slot, int entry, uint32_t sample, int y) {
        extremeMarkValid[slot][entry] = 1;
        extremeMarkSample[slot][entry] = sample;
        extremeMarkY[slot][entry] = y;
    }
    static std::vector<std::string> Frame() {
        return Recorded([] { DrawExtremeMarks(MarkEvent::frame); });
    }
    static void Frames(int count) {
        while (count-- > 0) DrawExtremeMarks(MarkEvent::frame);
    }
    // x, y, radius and colour of the circles of the next frame.
    static std::vector<std::string> Circles() {
        std::vector<std::string> circles;
        for (const std::string& line : Only(Frame(), "DrawCircle")) circles.push_back(line.substr(11));
        return circles;
    }
    // The opacity of the next frame's blend; 0 when nothing is drawn.
    static int Opacity() {
        const std::vector<std::string> blends = Only(Frame(), "SetBlend");
        int mode = 0, opacity = 0;
        if (blends.empty() || std::sscanf(blends[0].c_str(), "SetBlend %d %d", &mode, &opacity) != 2) return 0;
        EXPECT_EQ(mode, blendAlpha);
        return opacity;
    }
};

TEST_F(Marks, NothingIsDrawnUntilTheTableChanges) {
    EXPECT_TRUE(Frame().empty());
    DrawExtremeMarks(MarkEvent::tableChanged);
    EXPECT_EQ(Circles().size(), 1u);
}

TEST_F(Marks, HeldMarksGrowStrongerWhileTheyShrinkAndThenStay) {
    colortype = 1;
    HoldMarks();
    DrawExtremeMarks(MarkEvent::tableChanged);
    EXPECT_EQ(Opacity(), 390 - 253);
    Frames(100);
    EXPECT_EQ(Opacity(), 390 - 159) << "it drops by 2 while above 160";
    colortype = 0;
    EXPECT_EQ(Opacity(), 415 - 159);
}

TEST_F(Marks, RadiusIsHalfTheOpacityLess70) {
    HoldMarks();
    DrawExtremeMarks(MarkEvent::tableChanged);
    EXPECT_EQ(Circles().at(0).rfind(std::to_string(BaseLineX()) + " 300 56 ", 0), 0u) << "253 / 2 - 70";
    EXPECT_EQ(Circles().at(0).rfind(std::to_string(BaseLineX()) + " 300 55 ", 0), 0u) << "251 / 2 - 70";
}

TEST_F(Marks, ReleasedMarksFadeOutAndEndBelow100) {
    DrawExtremeMarks(MarkEvent::tableChanged);
    ReleaseMarks();
    EXPECT_EQ(Opacity(), 16 + 252);
    int frames = 1;
    while (Opacity() > 0) frames++;
    // 255 - 3 a frame to 159, then one a frame to 100
    EXPECT_EQ(frames, 32 + 59);
    EXPECT_TRUE(Frame().empty());
}

TEST_F(Marks, ToggleBringsThemBackAndLetsThemLeaveOnceTheyRest) {
    DrawExtremeMarks(MarkEvent::toggle);
    EXPECT_EQ(Circles().size(), 1u);
    DrawExtremeMarks(MarkEvent::toggle);
    Frames(200);
    EXPECT_EQ(Circles().size(), 1u) << "a toggle of marks that still shrink does nothing";
    DrawExtremeMarks(MarkEvent::toggle);
    Frames(60);
    EXPECT_TRUE(Frame().empty());
}

TEST_F(Marks, AMarkLeftOfTheCursorLineIsTruncatedBeforeTheLineIsAdded) {
    timeScale = 1;
    viewZoom = 1;
    cursorPos[0] = 50;  // half a sample behind sample 0
    DrawExtremeMarks(MarkEvent::tableChanged);
    EXPECT_EQ(Circles().at(0).rfind(std::to_string(BaseLineX()) + " ", 0), 0u);
}

TEST_F(Marks, OnlyMarksInsideTheWidthAreDrawnAndTheFirstEmptyEntryEndsAList) {
    timeScale = 1;
    viewZoom = 1;
    AddMark(0, 1, 100000, 300);
    AddMark(0, 2, 20, 300);
    AddMark(0, 4, 30, 300);
    DrawExtremeMarks(MarkEvent::tableChanged);
    EXPECT_EQ(Circles().size(), 2u);
}

TEST_F(Marks, FilesWearTheirColours) {
    slotInUse[2] = 1;
    extremeMarkValid[0][0] = 0;
    AddMark(2, 0, 0, 300);
    for (int scheme : {0, 1}) {
        colortype = scheme;
        BuildColors();
        DrawExtremeMarks(MarkEvent::tableChanged);
        EXPECT_NE(Circles().at(0).find(scheme ? "#787878" : "#C8C8C8"), std::string::npos);
    }
}

TEST_F(Marks, AMarkOfASlotNotInUseIsNotDrawn) {
    extremeMarkValid[0][0] = 0;
    AddMark(1, 0, 0, 300);
    DrawExtremeMarks(MarkEvent::tableChanged);
    EXPECT_EQ(Circles().size(), 0u);
}

TEST_F(Marks, EveryCommandOfTheToolBarReleasesThem) {
    HoldMarks();
    DrawExtremeMarks(MarkEvent::tableChanged);
    ScriptToolPress(buttonMoveFile1, false);
    Frames(100);
    EXPECT_TRUE(Frame().empty());
}

}  // namespace
