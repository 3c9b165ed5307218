#include "graph/grid.h"

#include <cstdio>

#include "draw/surface.h"
#include "graph/color_scheme.h"
#include "tests/program_fixture.h"

namespace {

// A window whose grid shows nothing until a test asks for it: value v of a channel lies at row 200 - v.
struct Grid : ProgramTest {
    void SetUp() override {
        OpenWindow(640, 400);
        for (int channel = 0; channel < channelTotal; channel++) {
            GraphGrid_disp[channel] = 0;
            channelPosition[channel] = 200;
            channelZoom[channel] = 1.0;
            showChannel[0][channel] = 1;
            showChannel[1][channel] = showChannel[2][channel] = 0;
        }
        GridFill = 0;
    }
    void ShowGrid(int channel, int min, int max, int step) {
        GraphGrid_disp[channel] = 1;
        GraphGrid_min[channel] = min;
        GraphGrid_max[channel] = max;
        GraphGrid_step[channel] = step;
    }
    std::vector<std::string> Lines() { return Only(Recorded(BuildGrid), "DrawLineF"); }
    std::vector<std::string> Bands() { return Only(Recorded(BuildGrid), "DrawImageStretched"); }
    std::vector<std::string> Numbers() { return Only(Recorded(BuildGrid), "DrawTextF"); }
};

std::string Line(const char* y, const char* color) { return std::string("DrawLineF 0 ") + y + " 8 " + y + " " + color + " 1"; }

TEST_F(Grid, WithoutFillAndGridsTheStripIsPlainBackground) {
    colortype = 1;
    BuildColors();
    BuildGrid();
    const Surface strip = ImageSurface(gridStrip);
    ASSERT_EQ(strip.width, 8);
    ASSERT_EQ(strip.height, 400);
    for (int y = 0; y < strip.height; y++)
        for (int x = 0; x < strip.width; x++) ASSERT_EQ(strip.pixels[y * strip.pitch + x] & 0xFFFFFF, backColor) << x << ", " << y;
}

TEST_F(Grid, LinesAreMajorAtMajorValuesAndAtBothEnds) {
    ShowGrid(chTH, 10, 110, 20);  // 10 30 50 70 90 110
    const std::vector<std::string> expected = {Line("190", "#0000C8"), Line("170", "#00005C"), Line("150", "#0000C8"),
                                               Line("130", "#00005C"), Line("110", "#00005C"), Line("90", "#0000C8")};
    EXPECT_EQ(Lines(), expected);
}

TEST_F(Grid, MinorLinesCutTheBandWhenItIsFilled) {
    GridFill = 1;
    ShowGrid(chTH, 0, 50, 25);
    EXPECT_EQ(Lines()[1], Line("175", "#000000"));
    GridFill = 2;
    EXPECT_EQ(Lines()[1], Line("175", "#00005C")) << "only 1 fills";
    EXPECT_TRUE(Bands().empty());
}

TEST_F(Grid, LinesStandAtFractionsOfAPixel) {
    channelZoom[chNe] = 8;
    ShowGrid(chNe, 12, 12, 1);
    EXPECT_EQ(Lines(), std::vector<std::string>{Line("198.5", "#0000C8")});
}

TEST_F(Grid, BandRunsFromMinUpToMaxAndIsTransparent) {
    GridFill = 1;
    channelZoom[chVB] = 3;
    ShowGrid(chVB, 10, 100, 10);
    const std::vector<std::string> bands = Bands();
    ASSERT_EQ(bands.size(), 1u);
    EXPECT_EQ(bands[0].rfind("DrawImageStretched 0 196 8 166 ", 0), 0u) << bands[0];
    EXPECT_EQ(bands[0].substr(bands[0].size() - 2), " 1");
}

TEST_F(Grid, LaterChannelsOverlayEarlierOnes) {
    GridFill = 1;
    ShowGrid(chVB, 0, 10, 10);
    ShowGrid(chNe, 0, 20, 10);
    const std::vector<std::string> bands = Bands();
    ASSERT_EQ(bands.size(), 2u);
    EXPECT_EQ(bands[0].rfind("DrawImageStretched 0 200 8 180 ", 0), 0u);
    EXPECT_EQ(bands[1].rfind("DrawImageStretched 0 200 8 190 ", 0), 0u);
}

TEST_F(Grid, BandFadesFromItsMinInBothSchemes) {
    GridFill = 1;
    ShowGrid(chNe, 0, 128, 128);
    for (int scheme : {0, 1}) {
        SCOPED_TRACE(scheme);
        colortype = scheme;
        BuildColors();
        BuildGrid();
        const Surface strip = ImageSurface(gridStrip);
        const uint32_t nearMin = strip.pixels[195 * strip.pitch] & 0xFFFFFF, nearMax = strip.pixels[75 * strip.pitch] & 0xFFFFFF;
        if (scheme == 0) {
            EXPECT_GT(nearMin, nearMax);
            EXPECT_LE(nearMin, MakeColor(0, 0, 96));
            EXPECT_GT(nearMin, MakeColor(0, 0, 90));
        } else {
            EXPECT_LT(nearMin, nearMax);
            EXPECT_GE(nearMin, MakeColor(212, 212, 212));
            EXPECT_LT(nearMin, MakeColor(218, 218, 218));
        }
    }
}

TEST_F(Grid, HiddenInFile1ButShownInALoadedFile2KeepsItsGrid) {
    ShowGrid(chNe, 0, 5000, 5000);
    showChannel[0][chNe] = 0;
    showChannel[1][chNe] = 1;
    EXPECT_TRUE(Lines().empty()) << "File 2 is not loaded";
    slotInUse[1] = 1;
    EXPECT_EQ(Lines().size(), 2u);
}

TEST_F(Grid, ShownOnlyInFile3LosesItsGrid) {
    ShowGrid(chNe, 0, 5000, 5000);
    showChannel[0][chNe] = 0;
    showChannel[2][chNe] = slotInUse[2] = 1;
    EXPECT_TRUE(Lines().empty());
}

TEST_F(Grid, SlipNeedsTheExpertLevelEverywhere) {
    GridFill = 1;
    ShowGrid(chSlip, 0, 500, 500);
    ExpertMode = 1;
    EXPECT_TRUE(Lines().empty());
    EXPECT_TRUE(Bands().empty());
    EXPECT_TRUE(Numbers().empty());
    ExpertMode = 2;
    EXPECT_EQ(Lines().size(), 2u);
    EXPECT_EQ(Bands().size(), 1u);
}

TEST_F(Grid, SuspensionSpeedsNeedTheExpertLevelForTheirBandsOnly) {
    GridFill = 1;
    for (int channel : {chVFSus, chVRSus}) ShowGrid(channel, 0, 50, 50);
    ExpertMode = 1;
    EXPECT_EQ(Lines().size(), 4u);
    EXPECT_TRUE(Bands().empty());
    ExpertMode = 2;
    EXPECT_EQ(Bands().size(), 2u);
}

TEST_F(Grid, StepBelowOneLeavesTheTwoEnds) {
    for (int step : {0, -5}) {
        ShowGrid(chNe, 10, 40, step);
        EXPECT_EQ(Lines(), (std::vector<std::string>{Line("190", "#0000C8"), Line("160", "#0000C8")})) << step;
    }
    ShowGrid(chNe, 10, 10, 0);
    EXPECT_EQ(Lines().size(), 1u);
}

TEST_F(Grid, MinAboveMaxYieldsNoLines) {
    ShowGrid(chNe, 11, 10, 1);
    EXPECT_TRUE(Lines().empty());
}

TEST_F(Grid, AtMost4096LinesAChannelAndNoOverflow) {
    ShowGrid(chNe, INT32_MIN, INT32_MAX, 1);
    EXPECT_EQ(Lines().size(), 4096u);
    ShowGrid(chNe, INT32_MAX - 1, INT32_MAX, INT32_MAX);
    EXPECT_EQ(Lines().size(), 1u);
}

TEST_F(Grid, NumbersFollowEachChannelsFormat) {
    struct Row {
        int channel, value;
        const char* text;
    };
    auxDivider[0][0] = 10;
    auxDivider[0][1] = 100;
    const Row rows[] = {{chNe, 5000, "5000"},   {chTH, 50, "50"},      {chVFW, 1000, "100"},  {chVRW, 2000, "200"},
                        {chFSUS, 5000, "50"},   {chRSUS, 3000, "30"},  {chLAF1, 1300, "13.0"}, {chLAF2, 1300, "13.0"},
                        {chVB, 1200, "12.0"},   {chAUX1, 2500, "250"}, {chAUX2, 2500, "2500"}, {chSlip, -500, "-50"},
                        {chVFSus, 150, "150"},  {chVRSus, -50, "-50"}};
    ExpertMode = 2;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        std::fill(std::begin(GraphGrid_disp), std::end(GraphGrid_disp), 0);
        channelPosition[row.channel] = row.value + 100;
        ShowGrid(row.channel, row.value, row.value, 1);
        EXPECT_EQ(Numbers(), std::vector<std::string>{"DrawTextF 0 95 #D2D2FF smallFont \"" + std::string(row.text) + "\""});
    }
}

TEST_F(Grid, EndsAreNumberedButForThreeChannels) {
    ExpertMode = 2;
    for (int channel = 0; channel < channelTotal; channel++) {
        SCOPED_TRACE(channel);
        std::fill(std::begin(GraphGrid_disp), std::end(GraphGrid_disp), 0);
        ShowGrid(channel, 7, 11, 2);  // no multiple of any major value
        const bool onlyMultiples = channel == chVFW || channel == chLAF1 || channel == chVFSus;
        EXPECT_EQ(Numbers().size(), onlyMultiples ? 0u : 2u);
        ShowGrid(channel, 7, 7, 2);
        EXPECT_EQ(Numbers().size(), 1u) << "min and max at once";
    }
}

TEST_F(Grid, NumbersStandHalfALineAboveTheirValue) {
    ShowGrid(chTH, 50, 50, 1);
    fontSize = 15;
    EXPECT_EQ(Numbers()[0].rfind("DrawTextF 0 143 ", 0), 0u);
}

TEST_F(Grid, PositionsBeyondTheScreenAreLost) {
    channelPosition[chNe] = 5000;
    ShowGrid(chNe, 0, 100, 100);
    GridFill = 1;
    BuildGrid();
    const Surface strip = ImageSurface(gridStrip);
    for (int y = 0; y < strip.height; y++) ASSERT_EQ(strip.pixels[y * strip.pitch] & 0xFFFFFF, 0u);
}

// The strip is drawn at magnification 1 and stretched: a line at a value stays on the row of a trace at that value.
TEST_F(Grid, ChangingTheMagnificationKeepsLinesInStepWithTheTraces) {
    constexpr int value = 120;  // row 80
    FillSlot(0, 8000);
    std::fill(VB[0].begin(), VB[0].end(), uint16_t{value});
    ShowOnly(0, chVB);
    cursorPos[0] = 400000;
    ShowGrid(chVB, value, value, 1);
    BuildGrid();
    for (const double zoom : {1.0, 1.5, 2.0, 3.0, 4.5}) {
        SCOPED_TRACE(zoom);
        viewZoom = zoom;
        const std::vector<std::string> traces = Beginning(Recorded(DrawFrame), "DrawLineF");
        const int row = static_cast<int>((200 - value) * zoom);
        EXPECT_TRUE(std::any_of(traces.begin(), traces.end(), [row](const std::string& line) {
            float y1 = 0, y2 = 0;
            std::sscanf(line.c_str(), "DrawLineF %*f %f %*f %f", &y1, &y2);
            return y1 == static_cast<float>(row) && y2 == y1;
        }));
        slotInUse[0] = 0;  // the grid alone
        DrawFrame();
        slotInUse[0] = 1;
        const Surface& screen = BackBufferSurface();
        const auto blue = [&](int y) { return screen.pixels[y * screen.pitch + 500] & 255; };
        EXPECT_GT(blue(row), 64u);
        EXPECT_EQ(blue(row - static_cast<int>(2 * zoom)), 0u);
        EXPECT_EQ(blue(row + static_cast<int>(3 * zoom)), 0u);
    }
}

TEST_F(Grid, WithoutMemoryForTheGradientTheStripsHoldLinesWithoutBandsAndDebugReportsIt) {
    ShowGrid(chNe, 0, 100, 50);
    GridFill = 1;
    for (int debug : {0, 1}) {
        SCOPED_TRACE(debug);
        Debug = debug;
        shown.clear();
        AllowImages(false);
        BuildGrid();
        AllowImages(true);
        const Surface strip = ImageSurface(gridStrip);
        EXPECT_EQ(strip.pixels[100 * strip.pitch] & 0xFFFFFF, gridMajorColor);
        EXPECT_EQ(strip.pixels[200 * strip.pitch] & 0xFFFFFF, gridMajorColor);
        EXPECT_EQ(strip.pixels[180 * strip.pitch] & 0xFFFFFF, backColor) << "no band";
        ASSERT_EQ(shown.size(), debug ? 1u : 0u);
        if (debug) {
            EXPECT_EQ(shown[0].text, "Memory err i04");
            EXPECT_EQ(shown[0].title, "ZRKA");
        }
    }
}

TEST_F(Grid, LeavesTheBackBufferAsTargetAndTheRestingBlend) {
    ShowGrid(chNe, 0, 5000, 1000);
    GridFill = 1;
    const std::vector<std::string> lines = Recorded(BuildGrid);
    EXPECT_EQ(Only(lines, "SetDrawTarget").back(), "SetDrawTarget -2");
    EXPECT_EQ(Only(lines, "SetBlend").back(), "SetBlend 0 255");
    EXPECT_EQ(Only(lines, "DeleteImage").size(), 1u);
}

TEST_F(Grid, WithoutStripsNothingIsDrawnIntoTheWindow) {
    gridStrip = labelStrip = noHandle;
    ShowGrid(chNe, 0, 5000, 1000);
    EXPECT_TRUE(Lines().empty());
    EXPECT_TRUE(Numbers().empty());
}

}  // namespace
