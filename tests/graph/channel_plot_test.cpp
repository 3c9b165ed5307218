#include "graph/channel_plot.h"

#include <cstdio>

#include "graph/color_scheme.h"
#include "tests/program_fixture.h"

namespace {

// One line of the plot, as the recorder wrote it.
struct PlotLine {
    double x0, y0, x1, y1;
    std::string color;
};
PlotLine Parse(const std::string& text) {
    PlotLine line{};
    char color[16] = "";
    EXPECT_EQ(std::sscanf(text.c_str(), "DrawLineF %lf %lf %lf %lf %15s", &line.x0, &line.y0, &line.x1, &line.y1, color), 5) << text;
    line.color = color;
    return line;
}

std::string Hex(Color color) {
    char text[16];
    std::snprintf(text, sizeof text, "#%06X", color);
    return text;
}

// A window 40 x 200 with the cursor line at x = 20, one sample a pixel; value v of every channel lies at row 100 - v. Nothing
// is shown until a test asks for it.
struct ChannelPlot : ProgramTest {
    void SetUp() override {
        OpenWindow(40, 200);
        ReadClientSize();
        timeScale = 1.0;
        for (int slot = 0; slot < fileSlots; slot++) std::fill(std::begin(showChannel[slot]), std::end(showChannel[slot]), 0);
        for (int channel = 0; channel < channelTotal; channel++) {
            channelPosition[channel] = 100;
            channelZoom[channel] = 1.0;
        }
    }
    // A log of zeros whose sample `cursor` is under the cursor line.
    void Log(int slot, int samples, int cursor) {
        FillSlot(slot, samples);
        cursorPos[slot] = cursor * 100;
    }
    std::vector<PlotLine> Plot() {
        std::vector<PlotLine> lines;
        for (const std::string& text : Only(Recorded(DrawChannelPlot), "DrawLineF")) lines.push_back(Parse(text));
        return lines;
    }
    // The line of the column that begins at this sample.
    PlotLine Column(int sample, int slot = 0) {
        const double x = SampleToX(MapTime(slot), sample);
        for (const PlotLine& line : Plot())
            if (line.x0 == x) return line;
        ADD_FAILURE() << "no column begins at sample " << sample;
        return {};
    }
};

// --- mapping ---------------------------------------------------------------------------------------------------------------

TEST_F(ChannelPlot, MappingFollowsZoomScaleAndTimeFactor) {
    FillSlot(0, 1000);
    timeFactor[0] = 0.5;
    timeScale = 5.0;
    viewZoom = 2.0;
    cursorPos[0] = 10050;
    BaseLinePos = 7;
    const TimeMapping mapping = MapTime(0);
    EXPECT_DOUBLE_EQ(mapping.samplesPerPixel, 1.25);
    EXPECT_DOUBLE_EQ(mapping.pixelsPerSample, 0.8);
    EXPECT_FLOAT_EQ(SampleToX(mapping, 110), 27 + 9.5f * 0.8f);
    EXPECT_EQ(OffsetToSample(mapping, 0), 100);
    EXPECT_EQ(OffsetToSample(mapping, 4), 105);
    EXPECT_EQ(OffsetToSample(mapping, -81), 0) << "-0.75 is truncated toward zero";
}

TEST_F(ChannelPlot, FilesOverlayOnTheirCursorsInRealTime) {
    Log(0, 200, 50);
    Log(1, 200, 120);
    timeFactor[1] = 2.0;  // twice the samples a second
    showChannel[0][chVB] = showChannel[1][chVB] = 1;
    VB[0][51] = 9;
    VB[1][122] = 9;
    int found = 0;
    for (const PlotLine& line : Plot()) found += line.y1 == 91 && line.x1 == 21;
    EXPECT_EQ(found, 2);
}

// --- columns ---------------------------------------------------------------------------------------------------------------

TEST_F(ChannelPlot, TraceOfALogsStartBeginsRightOfItsStart) {
    Log(0, 500, 0);
    showChannel[0][chVB] = 1;
    const std::vector<PlotLine> lines = Plot();
    ASSERT_FALSE(lines.empty());
    EXPECT_EQ(lines.front().x0, 21) << "sample 1; sample 0 is at x = 20";
    EXPECT_EQ(lines.back().x0, 42) << "two columns past the right edge";
    EXPECT_EQ(lines.size(), 22u);
}

TEST_F(ChannelPlot, AShorterFileStopsAtItsLastSampleWhileTheOthersRunOn) {
    Log(0, 500, 100);
    Log(1, 110, 100);
    showChannel[0][chVB] = showChannel[1][chVB] = 1;
    double last[2] = {0, 0};
    for (const PlotLine& line : Plot()) last[line.color == Hex(channelColor[chVB][1])] = line.x1;
    EXPECT_EQ(last[0], 43);
    EXPECT_EQ(last[1], 29) << "sample 109";
}

TEST_F(ChannelPlot, CursorBeyondTheEndLeavesTheTraceOnTheLeft) {
    Log(0, 100, 105);
    showChannel[0][chVB] = 1;
    EXPECT_EQ(Plot().back().x1, 14) << "sample 99";
    cursorPos[0] = 2000000000;
    EXPECT_TRUE(Plot().empty());
}

TEST_F(ChannelPlot, FewerThanTwoSamplesDrawNothing) {
    for (int samples : {1, 2}) {
        Log(0, samples, 0);
        showChannel[0][chVB] = 1;
        EXPECT_TRUE(Plot().empty()) << samples;
    }
    Log(0, 3, 0);
    EXPECT_EQ(Plot().size(), 1u);
}

TEST_F(ChannelPlot, MagnifiedTimeDrawsOneExactLinePerSample) {
    Log(0, 500, 100);
    showChannel[0][chVB] = 1;
    timeScale = 0.25;
    for (int i = 0; i < 500; i++) VB[0][i] = static_cast<uint16_t>(i % 2 * 50);
    for (const PlotLine& line : Plot()) {
        EXPECT_EQ(line.x1 - line.x0, 4);
        EXPECT_EQ(std::max(line.y0, line.y1), 100);
        EXPECT_EQ(std::min(line.y0, line.y1), 50);
    }
    EXPECT_EQ(Plot().size(), 13u) << "from x = -2 to 50";
}

TEST_F(ChannelPlot, BaseLinePositionMovesCursorAndColumnsTogether) {
    Log(0, 500, 100);
    showChannel[0][chVB] = 1;
    BaseLinePos = 10;
    const std::vector<PlotLine> lines = Plot();
    EXPECT_EQ(lines.front().x0, -2);
    EXPECT_EQ(lines.back().x0, 42);
    BaseLinePos = 32767;
    EXPECT_LE(Plot().size(), 45u);
}

TEST_F(ChannelPlot, EqualValuesDrawAFlatPiece) {
    Log(0, 500, 100);
    showChannel[0][chVB] = 1;
    std::fill(VB[0].begin(), VB[0].end(), 40);
    for (const PlotLine& line : Plot()) {
        EXPECT_EQ(line.y0, 60);
        EXPECT_EQ(line.y1, 60);
        EXPECT_EQ(line.x1 - line.x0, 1);
    }
}

TEST_F(ChannelPlot, MagnificationAndScrollMoveTheRows) {
    Log(0, 500, 100);
    showChannel[0][chVB] = 1;
    channelZoom[chVB] = 8;
    VB[0][100] = 20;
    viewZoom = 3;
    timeScale = 3;
    scrollY = 11;
    EXPECT_EQ(Column(100).y0, (100 - 20 / 8.0) * 3 - 11);
}

TEST_F(ChannelPlot, PositionOffTheScreenIsDrawnThere) {
    Log(0, 500, 100);
    showChannel[0][chVB] = 1;
    channelPosition[chVB] = -9000;
    EXPECT_EQ(Column(100).y0, -9000);
}

// --- the samples between --------------------------------------------------------------------------------------------------------

TEST_F(ChannelPlot, SpikesBetweenTheEndsShowInTheDirectionOfTravel) {
    Log(0, 500, 100);
    showChannel[0][chRSUS] = 1;
    timeScale = 4;  // samples 100 to 104, all looked at
    RSUS[0][100] = 10;
    RSUS[0][101] = -30;
    RSUS[0][102] = 60;
    RSUS[0][104] = 20;
    PlotLine line = Column(100);
    EXPECT_EQ(line.y0, 130) << "rising: the lowest first";
    EXPECT_EQ(line.y1, 40);
    RSUS[0][104] = 5;
    line = Column(100);
    EXPECT_EQ(line.y0, 40) << "falling: the highest first";
    EXPECT_EQ(line.y1, 130);
}

TEST_F(ChannelPlot, OnlyTHCountsEqualEndsAsRising) {
    Log(0, 500, 100);
    timeScale = 4;
    for (int channel : {chTH, chLAF1}) {
        SCOPED_TRACE(channel);
        ShowOnly(0, channel);
        auto& samples = channel == chTH ? TH[0] : LAF1[0];
        samples[101] = 100;
        samples[102] = -100;
        const double size = channel == chTH ? 10 : 100;
        const PlotLine line = Column(100);
        EXPECT_EQ(line.y0, channel == chTH ? 100 + size : 100 - size);
        EXPECT_EQ(line.y1, channel == chTH ? 100 - size : 100 + size);
    }
}

TEST_F(ChannelPlot, AboutFiveSamplesOfAColumnAreLookedAt) {
    Log(0, 5000, 1000);
    showChannel[0][chVB] = 1;
    timeScale = 20;  // stride 5: samples 1001, 1006, 1011, 1016
    VB[0][1002] = 50;
    EXPECT_EQ(Column(1000).y1, 100);
    VB[0][1006] = 50;
    EXPECT_EQ(Column(1000).y0, 50);
}

TEST_F(ChannelPlot, DebugShowsExactExtremesOnceTheViewHasComeToRest) {
    Log(0, 5000, 1000);
    showChannel[0][chVB] = 1;
    timeScale = 20;
    VB[0][1002] = 50;
    struct Case { int debug, activity; double y; };
    for (const Case& c : {Case{1, 49, 50}, Case{1, 50, 100}, Case{0, 49, 100}}) {
        Debug = c.debug;
        activityCount = c.activity;
        EXPECT_EQ(Column(1000).y0, c.y) << c.debug << " " << c.activity;
    }
}

TEST_F(ChannelPlot, EndOfAColumnIsTheStartOfTheNext) {
    Log(0, 5000, 1000);
    showChannel[0][chVB] = 1;
    timeScale = 3.7;
    const std::vector<PlotLine> lines = Plot();
    for (size_t i = 1; i < lines.size(); i++) EXPECT_EQ(lines[i].x0, lines[i - 1].x1);
}

// --- channels -------------------------------------------------------------------------------------------------------------------

TEST_F(ChannelPlot, EveryChannelPlotsItsOwnSamples) {
    Log(0, 500, 100);
    ExpertMode = 2;
    Ne[0][100] = 11;
    TH[0][100] = -120;
    VFW[0][100] = 60;
    VRW[0][100] = 63;
    FSUS[0][100] = -15;
    RSUS[0][100] = 16;
    LAF1[0][100] = -17;
    LAF2[0][100] = 18;
    VB[0][100] = 19;
    AUX1[0][100] = 20;
    AUX2[0][100] = -21;
    VFSus[0][100] = -22;
    VRSus[0][100] = 23;
    const double plotted[channelTotal] = {11, -12, 60, 63, -15, 16, -17, 18, 19, 20, -21, 50, -22, 23};
    for (int channel = 0; channel < channelTotal; channel++) {
        SCOPED_TRACE(channel);
        ShowOnly(0, channel);
        channelPosition[channel] = 100 + channel;
        channelZoom[channel] = 0.5;
        const PlotLine line = Column(100);
        EXPECT_EQ(line.y0, 100 + channel - plotted[channel] * 2);
        EXPECT_EQ(line.color, Hex(channelColor[channel][0]));
    }
}

TEST_F(ChannelPlot, EngineSpeedIsMultipliedByTheFilesFactor) {
    Log(0, 500, 100);
    showChannel[0][chNe] = 1;
    neFactor[0] = 1.5f;
    Ne[0][100] = 10;
    EXPECT_EQ(Column(100).y0, 85);
}

TEST_F(ChannelPlot, HiddenChannelsAreNotDrawn) {
    Log(0, 500, 100);
    Log(1, 500, 100);
    showChannel[1][chVB] = 1;
    for (const PlotLine& line : Plot()) EXPECT_EQ(line.color, Hex(channelColor[chVB][1]));
}

TEST_F(ChannelPlot, SlipAndSuspensionSpeedsNeedTheExpertLevel) {
    Log(0, 500, 100);
    for (int channel : {chSlip, chVFSus, chVRSus}) {
        SCOPED_TRACE(channel);
        ShowOnly(0, channel);
        ExpertMode = 1;
        EXPECT_TRUE(Plot().empty());
        ExpertMode = 2;
        EXPECT_FALSE(Plot().empty());
    }
}

TEST_F(ChannelPlot, LinesOfAColumnComeInChannelOrder) {
    Log(0, 500, 100);
    showChannel[0][chAUX2] = showChannel[0][chNe] = showChannel[0][chVB] = 1;
    channelPosition[chNe] = 10;
    channelPosition[chVB] = 20;
    channelPosition[chAUX2] = 30;
    const std::vector<PlotLine> lines = Plot();
    ASSERT_GE(lines.size(), 6u);
    for (size_t i = 0; i < lines.size(); i++) {
        EXPECT_EQ(lines[i].y0, 10.0 * (1 + i % 3));
        EXPECT_EQ(lines[i].x0, lines[i / 3 * 3].x0);
    }
}

TEST_F(ChannelPlot, SlipIsZeroUpTo5KilometresAnHour) {
    Log(0, 500, 100);
    ExpertMode = 2;
    showChannel[0][chSlip] = 1;
    channelZoom[chSlip] = 10;
    VFW[0][100] = 50;
    VRW[0][100] = 80;
    EXPECT_EQ(Column(100).y0, 100);
    VFW[0][100] = 51;
    EXPECT_FLOAT_EQ(static_cast<float>(Column(100).y0), static_cast<float>(100 - 29000 / 51.0 / 10));
    VRW[0][100] = 48;
    EXPECT_GT(Column(100).y0, 100);
}

// --- brightness and order ---------------------------------------------------------------------------------------------------------

TEST_F(ChannelPlot, BrightnessRisesTo255AndFallsTo96BySteps) {
    fileBright[0] = 245;
    fileBright[1] = 105;
    fileDim[1] = 1;
    Plot();
    EXPECT_EQ(fileBright[0], 251);
    EXPECT_EQ(fileBright[1], 99);
    Plot();
    EXPECT_EQ(fileBright[0], 255);
    EXPECT_EQ(fileBright[1], 96);
}

TEST_F(ChannelPlot, ANewLogFadesInFromDark) {
    fileBright[0] = 0;
    Plot();
    EXPECT_EQ(fileBright[0], 6);
    fileDim[0] = 1;
    Plot();
    EXPECT_EQ(fileBright[0], 6) << "not lifted to 96";
}

TEST_F(ChannelPlot, EachFileIsDrawnAtItsBrightnessAndTheRestStateComesBack) {
    for (int slot = 0; slot < fileSlots; slot++) Log(slot, 500, 100);
    fileBright[0] = 60;
    fileBright[1] = 70;
    fileBright[2] = 80;
    const std::vector<std::string> expected = {"SetBrightness 86 86 86", "SetBrightness 76 76 76", "SetBrightness 66 66 66",
                                               "SetBrightness 255 255 255"};
    EXPECT_EQ(Only(Recorded(DrawChannelPlot), "SetBrightness"), expected) << "File 1 lies on top";
}

TEST_F(ChannelPlot, OrderFollowsOnlyFile1sFlagWhenAllAreDimmed) {
    for (int slot = 0; slot < fileSlots; slot++) {
        Log(slot, 500, 100);
        fileBright[slot] = 96;
        fileDim[slot] = 1;
        showChannel[slot][chVB] = 1;
    }
    EXPECT_EQ(Plot().front().color, Hex(channelColor[chVB][0]));
    fileDim[0] = 0;
    EXPECT_EQ(Plot().front().color, Hex(channelColor[chVB][2]));
}

TEST_F(ChannelPlot, FilesNotInUseAreSkippedAndGraphPositionShowsFile1Alone) {
    Log(0, 500, 100);
    Log(2, 500, 100);
    showChannel[0][chVB] = showChannel[1][chVB] = showChannel[2][chVB] = 1;
    EXPECT_EQ(Only(Recorded(DrawChannelPlot), "SetBrightness").size(), 3u);
    graphPositionOn = 1;
    for (const PlotLine& line : Plot()) EXPECT_EQ(line.color, Hex(channelColor[chVB][0]));
}

// --- smoothing ----------------------------------------------------------------------------------------------------------------

TEST_F(ChannelPlot, CtrlDrawsTheMeanAndJoinsItToTheColumnBefore) {
    Log(0, 500, 100);
    ctrlDown = 1;
    SusFilter_n = 2;
    showChannel[0][chFSUS] = 1;
    FSUS[0][103] = 50;
    FSUS[0][110] = -50;
    const std::vector<PlotLine> lines = Plot();
    EXPECT_EQ(lines.front().y0, 100) << "a file's first line starts from 0";
    for (size_t i = 1; i < lines.size(); i++) EXPECT_EQ(lines[i].y0, lines[i - 1].y1);
    EXPECT_EQ(Column(100).y1, 90) << "samples 99 to 103";
    EXPECT_EQ(Column(104).y1, 90) << "samples 103 to 107";
    EXPECT_EQ(Column(105).y1, 100);
    EXPECT_EQ(Column(109).y1, 110);
}

TEST_F(ChannelPlot, FirstSmoothedLineStartsFromZeroInEveryFrame) {
    Log(0, 500, 100);
    ctrlDown = 1;
    showChannel[0][chFSUS] = 1;
    std::fill(FSUS[0].begin(), FSUS[0].end(), 30);
    for (int frame = 0; frame < 2; frame++) {
        const std::vector<PlotLine> lines = Plot();
        EXPECT_EQ(lines[0].y0, 100);
        EXPECT_EQ(lines[0].y1, 70);
        EXPECT_EQ(lines[1].y0, 70);
    }
}

TEST_F(ChannelPlot, BothEndsOfALogSmoothTooLow) {
    Log(0, 30, 15);
    ctrlDown = 1;
    SusFilter_n = 3;
    showChannel[0][chFSUS] = 1;
    std::fill(FSUS[0].begin(), FSUS[0].begin() + 30, 70);
    EXPECT_EQ(Column(1).y1, 40) << "samples 0 to 5 of seven";
    EXPECT_EQ(Column(2).y1, 30) << "all seven";
    EXPECT_EQ(Column(25).y1, 30) << "samples 23 to 29";
    EXPECT_EQ(Column(26).y1, 100) << "sample 30 is outside, and comes last";
    EXPECT_EQ(Column(28).y1, 100);
}

TEST_F(ChannelPlot, OnlySomeChannelsAreSmoothedWithCtrl) {
    struct Row {
        int channel;
        bool plain, debug;  // smoothed without and with Debug
    };
    const Row rows[] = {{chNe, false, false},  {chTH, false, false},   {chVFW, false, true},   {chVRW, false, true},
                        {chFSUS, true, true},  {chRSUS, true, true},   {chLAF1, false, false}, {chLAF2, false, false},
                        {chVB, false, false},  {chAUX1, false, false}, {chAUX2, false, false}, {chSlip, false, true},
                        {chVFSus, false, false}, {chVRSus, false, false}};
    Log(0, 500, 100);
    ForEachSampleArray(0, [](auto& array, bool) { std::fill(array.begin(), array.end(), 60); });
    std::fill(VRW[0].begin(), VRW[0].end(), 66);
    std::fill(sampleFlag[0].begin(), sampleFlag[0].end(), 0);
    ExpertMode = 2;
    for (const Row& row : rows)
        for (int debug : {0, 1}) {
            SCOPED_TRACE(row.channel * 10 + debug);
            Debug = debug;
            ShowOnly(0, row.channel);
            ctrlDown = 1;
            const bool startsFromZero = Plot().front().y0 == 100;
            EXPECT_EQ(startsFromZero, debug ? row.debug : row.plain);
            ctrlDown = 0;
            EXPECT_NE(Plot().front().y0, 100);
        }
}

TEST_F(ChannelPlot, SmoothedSlipCountsFastSamplesButDividesByAll) {
    Log(0, 500, 100);
    Debug = ctrlDown = 1;
    ExpertMode = 2;
    SusFilter_n = 1;
    showChannel[0][chSlip] = 1;
    for (int i = 100; i <= 102; i++) VFW[0][i] = 100, VRW[0][i] = 103;  // 30
    VFW[0][101] = 50;
    EXPECT_EQ(Column(100).y1, 80) << "(30 + 0 + 30) / 3";
    sampleFlag[0][100] = 1;
    EXPECT_EQ(Column(100).y1, 100) << "a marker at the column's start makes it 0";
}

// --- LAF delay ----------------------------------------------------------------------------------------------------------------

TEST_F(ChannelPlot, DelayShiftsTheAnalogTracesLeft) {
    Log(0, 500, 100);
    ExpertMode = 2;
    lafDelay = 5;
    SampleArray<int32_t>* const inputs[] = {&LAF1[0], &LAF2[0], &AUX1[0], &AUX2[0]};
    const int channels[] = {chLAF1, chLAF2, chAUX1, chAUX2};
    for (int input = 0; input < analogInputs; input++) {
        SCOPED_TRACE(channels[input]);
        ShowOnly(0, channels[input]);
        (*inputs[input])[110] = 40;
        analog[0][input].type = 0;
        EXPECT_EQ(Column(105).y0, 60);
        EXPECT_EQ(Column(110).y0, 100);
        analog[0][input].type = 1;
        EXPECT_EQ(Column(110).y0, 60) << "no A/F sensor";
        analog[0][input].type = 0;
        ExpertMode = 1;
        EXPECT_EQ(Column(110).y0, 60) << "below the expert level";
        ExpertMode = 2;
    }
}

TEST_F(ChannelPlot, OtherChannelsAreNotDelayed) {
    Log(0, 500, 100);
    ExpertMode = 2;
    lafDelay = 5;
    showChannel[0][chVB] = 1;
    VB[0][110] = 40;
    EXPECT_EQ(Column(110).y0, 60);
}

TEST_F(ChannelPlot, DelayFallsAwayForTheLastSamples) {
    Log(0, 500, 290);
    ExpertMode = 2;
    lafDelay = 200;
    analog[0][0].type = 0;
    showChannel[0][chLAF1] = 1;
    for (int i = 0; i < 500; i++) LAF1[0][i] = i / 10;
    EXPECT_EQ(Column(298).y0, 100 - 49) << "sample 498; its end is 499";
    EXPECT_EQ(Column(299).y0, 100 - 29) << "the end would be 500: the trace jumps back";
}

TEST_F(ChannelPlot, AScanBehindADelayAboveTheColumnFindsNothing) {
    Log(0, 5000, 1000);
    ExpertMode = 2;
    timeScale = 4;
    analog[0][0].type = 0;
    showChannel[0][chLAF1] = 1;
    LAF1[0][1013] = 70;  // between the delayed ends 1012 and 1016
    lafDelay = 12;
    EXPECT_EQ(Column(1000).y0, 100);
    LAF1[0][1003] = 50;
    lafDelay = 2;
    EXPECT_EQ(Column(1000).y0, 50) << "1003 lies behind 1000 + 2 and before the undelayed end";
}

// --- markers --------------------------------------------------------------------------------------------------------------------

TEST_F(ChannelPlot, FlaggedColumnsOfFile1TakeFile2sColour) {
    struct Row {
        int channel;
        bool withShifter, withDebug;
    };
    const Row rows[] = {{chNe, true, true},    {chTH, false, false},  {chVFW, false, false}, {chVRW, false, true},
                        {chFSUS, false, false}, {chRSUS, false, false}, {chLAF1, false, false}, {chLAF2, false, false},
                        {chVB, false, false},  {chAUX1, false, false}, {chAUX2, true, true},  {chSlip, true, true},
                        {chVFSus, false, false}, {chVRSus, false, false}};
    ExpertMode = 2;
    for (int slot : {0, 1}) Log(slot, 500, 100);
    sampleFlag[0][100] = sampleFlag[1][100] = 1;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.channel);
        ShowOnly(0, row.channel);
        const std::string own = Hex(channelColor[row.channel][0]), marked = Hex(channelColor[row.channel][1]);
        ASSERT_NE(own, marked);
        std::fill(std::begin(showChannel[1]), std::end(showChannel[1]), 0);
        Shifter = Debug = 0;
        EXPECT_EQ(Column(100).color, own);
        Shifter = 1;
        EXPECT_EQ(Column(100).color, row.withShifter ? marked : own);
        Shifter = 0;
        Debug = 1;
        EXPECT_EQ(Column(100).color, row.withDebug ? marked : own);
        EXPECT_EQ(Column(101).color, own);
        EXPECT_EQ(Column(99).color, own) << "the flag counts at the column's start";
        // File 2 keeps its colour.
        std::fill(std::begin(showChannel[0]), std::end(showChannel[0]), 0);
        ShowOnly(1, row.channel);
        EXPECT_EQ(Column(100, 1).color, marked);
    }
}

TEST_F(ChannelPlot, CtrlCutsEngineSpeedDownAtTheFlagInEveryFile) {
    for (int slot : {0, 1}) {
        SCOPED_TRACE(slot);
        Log(slot, 500, 100);
        std::fill(Ne[slot].begin(), Ne[slot].end(), 70);
        sampleFlag[slot][100] = 1;
        std::fill(std::begin(showChannel[0]), std::end(showChannel[0]), 0);
        ShowOnly(slot, chNe);
        ctrlDown = 1;
        Shifter = 0;
        EXPECT_EQ(Column(100, slot).y1, 30);
        Shifter = 1;
        EXPECT_EQ(Column(100, slot).y0, 30);
        EXPECT_EQ(Column(100, slot).y1, 100);
        EXPECT_EQ(Column(101, slot).y1, 30);
        ctrlDown = 0;
        EXPECT_EQ(Column(100, slot).y1, 30);
    }
}

}  // namespace
