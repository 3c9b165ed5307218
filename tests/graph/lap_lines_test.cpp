// The lap lines, their ticks on the scroll bar, and the cursor line.
#include "graph/channel_plot.h"
#include "tests/program_fixture.h"

namespace {

// A window 1000 x 400 with the cursor line at x = 500, one sample a pixel, no scroll bar.
struct LapLines : ProgramTest {
    void SetUp() override {
        OpenWindow(1000, 400);
        ReadClientSize();
        timeScale = 1.0;
        scrollBarOn = 0;
    }
    std::vector<std::string> Lines() { return Only(Recorded(DrawLapLines), "DrawLineF"); }
};

TEST_F(LapLines, StandAtEveryLapStartAndAtTheEnd) {
    FillSlot(0, 800);
    SetMarks(0, {100, 300});
    cursorPos[0] = 20000;
    const std::vector<std::string> expected = {"DrawLineF 300 14 300 400 #00C800 1", "DrawLineF 400 14 400 400 #00C800 1",
                                               "DrawLineF 600 14 600 400 #00C800 1", "DrawLineF 1100 14 1100 400 #00C800 1"};
    EXPECT_EQ(Lines(), expected);
}

TEST_F(LapLines, AtXUpToZeroAreNotDrawn) {
    FillSlot(0, 3000);
    SetMarks(0, {1500, 1501});
    cursorPos[0] = 200000;
    const std::vector<std::string> lines = Lines();  // sample 1500 lies at 0
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0], "DrawLineF 1 14 1 400 #00C800 1");
}

TEST_F(LapLines, FollowZoomAndTimeFactor) {
    FillSlot(1, 800);
    SetMarks(1, {100});
    cursorPos[1] = 5000;
    timeFactor[1] = 0.5;
    timeScale = 5;
    viewZoom = 2;
    EXPECT_EQ(Lines()[3], "DrawLineF 540 14 540 400 #D20000 1");
}

TEST_F(LapLines, AreAddedInTheDarkSchemeAndOpaqueInTheLightOne) {
    EXPECT_EQ(Only(Recorded(DrawLapLines), "SetBlend"), (std::vector<std::string>{"SetBlend 2 220", "SetBlend 0 255"}));
    colortype = 1;
    EXPECT_EQ(Only(Recorded(DrawLapLines), "SetBlend"), (std::vector<std::string>{"SetBlend 0 200", "SetBlend 0 255"}));
}

TEST_F(LapLines, EndAboveTheScrollBar) {
    scrollBarOn = 1;
    scrollBarGrow = 32;
    EXPECT_EQ(LineBottom(), 400 - 23);
    FillSlot(0, 800);
    cursorPos[0] = 100;
    EXPECT_TRUE(Contains(Lines(), "DrawLineF 499 14 499 377 #00C800 1"));
    scrollBarOn = 0;
    EXPECT_EQ(LineBottom(), 400);
}

TEST_F(LapLines, TicksOfFile1StandOnItsLength) {
    scrollBarOn = 1;
    FillSlot(0, 800);
    SetMarks(0, {200});
    cursorPos[0] = 79900;
    const std::vector<std::string> lines = Lines();
    EXPECT_TRUE(Contains(lines, "DrawLineF 0 387 0 400 #B4FFB4 1"));
    EXPECT_TRUE(Contains(lines, "DrawLineF 250 387 250 400 #B4FFB4 1"));
    EXPECT_TRUE(Contains(lines, "DrawLineF 1000 387 1000 400 #B4FFB4 1"));
}

TEST_F(LapLines, TicksOfOtherFilesStandOnFile1sScaleShiftedByTheOffset) {
    scrollBarOn = 1;
    scrollBarGrow = 31;
    FillSlot(0, 800);
    FillSlot(1, 400);
    SetMarks(1, {200});
    cursorPos[0] = 15099;  // samples 150 and 50: whole numbers first
    cursorPos[1] = 5000;
    const std::vector<std::string> lines = Lines();
    EXPECT_TRUE(Contains(lines, "DrawLineF 125 377 125 400 #FFC8C8 4")) << "first";
    EXPECT_TRUE(Contains(lines, "DrawLineF 375 377 375 400 #FFC8C8 1"));
    EXPECT_TRUE(Contains(lines, "DrawLineF 625 377 625 400 #FFC8C8 4")) << "last";
}

TEST_F(LapLines, FilesNotInUseHaveNone) {
    FillSlot(2, 800);
    slotInUse[2] = 0;
    cursorPos[0] = 70000;
    EXPECT_TRUE(Lines().empty());
}

TEST_F(LapLines, AFullLapTableIsWalkedToItsEnd) {
    FillSlot(0, 6000);
    std::vector<uint32_t> marks;
    for (uint32_t k = 1; k <= 510; k++) marks.push_back(k * 10);
    SetMarks(0, marks);
    ASSERT_EQ(lapCount[0], 511);
    EXPECT_EQ(Lines().size(), 512u);
}

TEST_F(LapLines, CursorLineStandsAtTheBaseLine) {
    BaseLinePos = -37;
    fontSize = 15;
    EXPECT_EQ(Recorded(DrawCursorLine), (std::vector<std::string>{"SetBlend 0 255", "DrawLineF 463 18 463 400 #FFFFFF 1"}));
    scrollBarOn = 1;
    EXPECT_TRUE(Contains(Recorded(DrawCursorLine), "DrawLineF 463 18 463 387 #FFFFFF 1"));
}

}  // namespace
