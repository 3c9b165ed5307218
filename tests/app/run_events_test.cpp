#include "run_data/run_events.h"

#include <cstring>

#include "analysis/lap_stats.h"
#include "app/toolbar.h"
#include "graph/color_scheme.h"
#include "resources/resource.h"
#include "tests/program_fixture.h"

namespace {

struct RunEvents : ProgramTest {
    void SetUp() override { OpenWindow(640, 400); }
    std::vector<int> Rect(int slot) { return {std::begin(titleRect[slot]), std::end(titleRect[slot])}; }
};

TEST_F(RunEvents, ALoadPlacesTheNameAndLetsTheLogFadeIn) {
    std::strcpy(fileTitle[1], "Run 12.zrk");
    fileBright[1] = 255;
    fileDim[1] = 1;
    neFactor[1] = 1.2f;
    histForce = activityCount = 0;
    AfterLoad(1, LoadResult::loaded);
    const int width = TextWidth("Run 12.zrk", 10, bigFont);
    EXPECT_GT(width, 0);
    EXPECT_EQ(Rect(1), (std::vector<int>{10, 31, width + 10, 61})) << "grows taller from file to file";
    EXPECT_EQ(fileBright[1], 0);
    EXPECT_EQ(fileDim[1], 0);
    EXPECT_EQ(neFactor[1], 1.0f);
    EXPECT_EQ(histForce, 1);
    EXPECT_EQ(activityCount, 150);
}

TEST_F(RunEvents, ALoadChecksTheLapsAnew) {
    FillSlot(1, 5000);
    SetMarks(1, {1000, 2000, 3000});
    std::fill(std::begin(lapChecked[1]), std::end(lapChecked[1]), 0);
    lapChecked[1][0] = lapChecked[1][3] = 1;
    AfterLoad(1, LoadResult::loaded);
    EXPECT_EQ(std::vector<int>(lapChecked[1], lapChecked[1] + 5), (std::vector<int>{0, 1, 1, 0, 0}));
}

TEST_F(RunEvents, NamesOfFile1And3StandInTheirRows) {
    std::strcpy(fileTitle[0], "a");
    std::strcpy(fileTitle[2], "a");
    AfterLoad(0, LoadResult::loaded);
    AfterLoad(2, LoadResult::loaded);
    EXPECT_EQ(titleRect[0][1], 16);
    EXPECT_EQ(titleRect[0][3], 31);
    EXPECT_EQ(titleRect[2][1], 46);
    EXPECT_EQ(titleRect[2][3], 91);
}

TEST_F(RunEvents, ARefusedFileHasAnEmptyNameRow) {
    fileBright[2] = 200;
    AfterLoad(2, LoadResult::refused);
    EXPECT_EQ(Rect(2), (std::vector<int>{10, 16, 10, 16}));
    EXPECT_EQ(fileBright[2], 200);
}

TEST_F(RunEvents, ACancelledLoadLeavesNamesButStillLeavesTheAfMap) {
    titleRect[0][2] = 77;
    fileBright[0] = 200;
    afMapOn = keepOn = 1;
    afFade = 90;
    activityCount = 0;
    CheckButton(buttonAfMap, true);
    AfterLoad(0, LoadResult::nothing);
    EXPECT_EQ(titleRect[0][2], 77);
    EXPECT_EQ(fileBright[0], 200);
    EXPECT_EQ(afMapOn, 0);
    EXPECT_EQ(keepOn, 0);
    EXPECT_EQ(afFade, 0);
    EXPECT_FALSE(ButtonChecked(buttonAfMap));
    EXPECT_EQ(activityCount, 150);
}

TEST_F(RunEvents, TheColourTableIsChosenAgainAfterALoad) {
    ExclusiveF1Color = 1;
    ExpertMode = 2;
    colorStored[1][chNe] = 3;
    AfterLoad(0, LoadResult::loaded);
    EXPECT_EQ(channelColor[chNe][0], MakeColor(255, 0, 192));
    slotInUse[1] = 1;
    AfterLoad(1, LoadResult::loaded);
    EXPECT_EQ(channelColor[chNe][0], MakeColor(0, 255, 0));
}

TEST_F(RunEvents, AReadRebuildsTheGrid) {
    EXPECT_TRUE(Contains(Recorded([] { AfterRead(0); }), "SetDrawTarget gridStrip"));
}

TEST_F(RunEvents, AResetStartsTheAfMapsFadeHalfWay) {
    AfterReset(1);
    EXPECT_EQ(afFade, 128);
}

TEST_F(RunEvents, UnloadingGivesALoneFile1ItsColours) {
    ExclusiveF1Color = 1;
    ExpertMode = 2;
    colorStored[1][chNe] = 3;
    AfterUnload();
    EXPECT_EQ(channelColor[chNe][0], MakeColor(255, 0, 192));
    EXPECT_EQ(afFade, 128);
}

}  // namespace
