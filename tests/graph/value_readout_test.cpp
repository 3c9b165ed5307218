// Every row of the value panel's and the tags' tables.
#include "graph/value_readout.h"

#include <map>
#include <sstream>

#include "run_data/derived_channels.h"
#include "tests/graph/readouts_fixture.h"

namespace {

constexpr int rowPitch = 15;
constexpr int panelTop = 80;
int RowY(int channel) { return panelTop + rowPitch * channel; }

struct ValueReadout : ReadOuts {
    // Tags, panel texts and backdrop of File 1 alone, as the panel rests.
    void SetUp() override {
        ReadOuts::SetUp();
        nameFade = 32;
        CursolValueMode = 0;
    }
    static int Sample() { return MouseSample(0); }
};

TEST_F(ValueReadout, PlainDifferenceAndTagTextsOfEveryChannel) {
    VFW[0][1234] = 1000, VRW[0][1234] = 1100;  // 10 % of slip
    VFW[0][1000] = 50, VRW[0][1000] = 90;      // too slow for any
    VFSus[0][1234] = -345, VFSus[0][1000] = 100;
    VRSus[0][1234] = 12345, VRSus[0][1000] = 12345;
    neFactor[0] = 1.5f;
    const struct { int channel; const char *plain, *difference, *tag, *tagDifference; } rows[] = {
        {chNe, "  1851rpm", "  +351rpm", "  1851rpm", "  +351rpm"},
        {chTH, " 123%", " +23%", " 123%", " +23%"},
        {chVFW, " 100.0km/h", " +95.0km/h", " 100.0km/h:F", " +95.0km/h:F"},
        {chVRW, " 110.0km/h", "+101.0km/h", " 110.0km/h:R", "+101.0km/h:R"},
        {chFSUS, "  12.3mm", "  +2.3mm", "  12.3mm:F", "  +2.3mm:F"},
        {chRSUS, "  12.3mm", "  +2.3mm", "  12.3mm:R", "  +2.3mm:R"},
        {chLAF1, "  12.34A/F", "  +2.34A/F", "  12.34A/F", "  +2.34A/F"},
        {chLAF2, "  12.34A/F", "  +2.34A/F", "  12.34A/F", "  +2.34A/F"},
        {chVB, "  12.34V", "  +2.34V", "  12.34V", "  +2.34V"},
        {chAUX1, "  12.34V", "  +2.34V", "  12.34V", "  +2.34V"},
        {chAUX2, "  12.34V", "  +2.34V", "  12.34V", "  +2.34V"},
        {chSlip, "+10.00%", "+10.00P", "+10.00%", "+10.00P"},
        {chVFSus, " -345mm/s", " -445mm/s", " -345mm/s:F", " -445mm/s:F"},
        {chVRSus, "+12345mm/s", "   +0mm/s", "+12345mm/s:R", "   +0mm/s:R"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.channel);
        shiftDown = 0;
        EXPECT_STREQ(Texts(row.channel, 1234, 1000).panel, row.plain);
        EXPECT_STREQ(Texts(row.channel, 1234, 1000).tag, row.tag);
        shiftDown = 1;
        EXPECT_STREQ(Texts(row.channel, 1234, 1000).panel, row.difference);
        EXPECT_STREQ(Texts(row.channel, 1234, 1000).tag, row.tagDifference);
    }
}

TEST_F(ValueReadout, ThrottleTagsShowTenthsOfADifferenceWithDebugToo) {
    Debug = shiftDown = 1;
    EXPECT_STREQ(Texts(chTH, 1234, 1000).tag, "+23.4%");
    EXPECT_STREQ(Texts(chTH, 1234, 1000).panel, " +23%");
}

TEST_F(ValueReadout, TextsOfEveryTypeOfAnalogInput) {
    const struct { int type, divider; const char *laf, *lafDifference, *aux, *auxDifference; } rows[] = {
        {0, 1, "  12.34A/F", "  +2.34A/F", "  12.34A/F", "  +2.34A/F"},
        {1, 10, "  12.34V", "  +2.34V", "  12.34V", "  +2.34V"},
        {2, 1, "  12.34", "  +2.34", "  12.34", "   2.34"},
        {2, 10, "  12.34", "  +2.34", "  123.4", "   23.4"},
        {2, 100, "  12.34", "  +2.34", "   1234", "    234"},
        {3, 100, "  12.34", "  +2.34", "  12.34", "   2.34"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.type * 1000 + row.divider);
        for (int input = 0; input < 4; input++) {
            analog[0][input].type = row.type;
            if (input >= 2) auxDivider[0][input - 2] = row.divider;
            const int channel = input < 2 ? chLAF1 + input : chAUX1 + input - 2;
            shiftDown = 0;
            EXPECT_STREQ(Texts(channel, 1234, 1000).panel, input < 2 ? row.laf : row.aux);
            EXPECT_STREQ(Texts(channel, 1234, 1000).tag, input < 2 ? row.laf : row.aux);
            shiftDown = 1;
            EXPECT_STREQ(Texts(channel, 1234, 1000).panel, input < 2 ? row.lafDifference : row.auxDifference);
        }
    }
}

TEST_F(ValueReadout, ADifferenceOfAnInputNeedsItsBaseInsideTheFileAndAboveItsFirstSample) {
    shiftDown = 1;
    LAF1[0][0] = 700;
    EXPECT_STREQ(Texts(chLAF1, 1234, 0).panel, " +12.34A/F") << "plain, though the first sample is 7.00";
    EXPECT_STREQ(Texts(chLAF1, 1234, 1).panel, " +12.33A/F");
    EXPECT_STREQ(Texts(chLAF1, 1234, 5999).panel, " -47.65A/F");
    EXPECT_STREQ(Texts(chLAF1, 1234, 6000).panel, " +12.34A/F");
    lafDelay = 100;
    EXPECT_STREQ(Texts(chLAF1, 1234, 0).panel, " +12.34A/F") << "13.34 less 1.00";
    EXPECT_STREQ(Texts(chLAF1, 1234, 5900).panel, " +13.34A/F") << "the base and its delay reach the end";
    Ne[0][0] = 100;
    EXPECT_STREQ(Texts(chNe, 1234, 0).panel, " +1134rpm") << "other channels take any base";
}

TEST_F(ValueReadout, CtrlSmoothsTheStrokesAndWithDebugTheSpeedsAndTheSlip) {
    SusFilter_n = 2;
    for (int i = 990; i < 1010; i++) FSUS[0][i] = RSUS[0][i] = 0, VFW[0][i] = VRW[0][i] = 0;
    FSUS[0][1000] = RSUS[0][1000] = 5000;
    VFW[0][1000] = 1000, VRW[0][1000] = 1500;
    const auto shows = [](int channel, const char* text) { EXPECT_STREQ(Texts(channel, 1001).panel, text) << channel; };
    shows(chFSUS, "   0.0mm");
    ctrlDown = 1;
    shows(chFSUS, "  10.0mm");
    shows(chRSUS, "  10.0mm");
    shows(chVFW, "   0.0km/h");
    shows(chSlip, " +0.00%");
    Debug = 1;
    shows(chVFW, "  20.0km/h");
    shows(chVRW, "  30.0km/h");
    shows(chSlip, "+10.00%");
    shows(chNe, "  1001rpm");
    shiftDown = 1;
    EXPECT_STREQ(Texts(chFSUS, 1001, 1005).panel, " +10.0mm") << "both ends are smoothed";
}

TEST_F(ValueReadout, TheMousesSampleFollowsScaleFactorAndMagnification) {
    timeScale = 3.0;
    timeFactor[0] = 0.5;
    viewZoom = 2.0;
    cursorPos[0] = 100049;
    mouseX = BaseLineX() + 101;
    EXPECT_EQ(MouseSample(0), (7575 + 50 + 100049) / 100);
    EXPECT_EQ(BaseSample(0), 1000);
    cursorPos[0] = 100050;
    EXPECT_EQ(BaseSample(0), 1001);
    mouseX = 0;
    cursorPos[0] = 0;
    EXPECT_EQ(MouseSample(0), 0);
}

// --- panel ---------------------------------------------------------------------------------------------------------------

TEST_F(ValueReadout, ABackdropStandsBehindEachLoadedFile) {
    MakeLog(2, 100);
    ExpertMode = 1;
    EXPECT_TRUE(Draws(Record(DrawValueReadout), Blend(3, 220) + Box(5, 80, 101, 83 + 15 * 11, whiteColor) +
                                                    Box(215, 80, 311, 83 + 15 * 11, whiteColor) + Blend(1, 255)));
    ExpertMode = 2;
    slotInUse[2] = 0;
    MakeLog(1, 100);
    EXPECT_TRUE(Draws(Record(DrawValueReadout), Box(5, 80, 101, 83 + 15 * 14, whiteColor) + Box(110, 80, 206, 83 + 15 * 14, whiteColor)));
}

TEST_F(ValueReadout, EveryRowHasItsNameAtItsPlace) {
    const struct { const char* name; int x; const char* delayed; } rows[channelTotal] = {
        {"Ne", 48, ""},      {"TH", 48, ""},      {"VFW", 44, ""},   {"VRW", 44, ""},           {"SUS Fr", 32, ""},
        {"SUS Rr", 32, ""},  {"LAF 1", 36, "LAF1 0.12"}, {"LAF 2", 36, "LAF2 0.12"}, {"VB", 48, ""}, {"AUX 1", 36, "AUX1 0.12"},
        {"AUX 2", 36, "AUX2 0.12"}, {"Slip %", 32, ""},  {"VFSus", 32, ""},   {"VRSus", 32, ""}};
    MakeLog(1, 6000);
    for (auto& input : analog[0]) input.type = 0;
    lafDelay = 25;  // 0.125 s
    panelHover = 1;
    for (int level : {1, 2}) {
        SCOPED_TRACE(level);
        ExpertMode = level;
        nameFade = 1;
        const std::string lines = Record(DrawValueReadout);
        EXPECT_TRUE(Draws(lines, Blend(1, 256)));
        for (int channel = 0; channel < (level == 2 ? channelTotal : 11); channel++) {
            const auto& row = rows[channel];
            const bool delayed = level == 2 && *row.delayed;
            for (int slot : {0, 1})
                EXPECT_TRUE(Draws(lines, TextAt(105 * slot + (delayed ? 20 : row.x), RowY(channel), delayed ? row.delayed : row.name,
                                                panelMask[slot] | channelColor[channel][slot], "bigFont")));
        }
        EXPECT_EQ(Has(lines, "Slip"), level == 2);
    }
}

TEST_F(ValueReadout, TheLongNamesFollowTheTypesOfFile1) {
    panelHover = nameFade = 1;
    MakeLog(1, 100);
    analog[0][0].type = 1;
    analog[1][0].type = 0;
    const std::string lines = Record(DrawValueReadout);
    EXPECT_EQ(Count(lines, "\"LAF 1\""), 2);
    EXPECT_FALSE(Has(lines, "\"LAF1 "));
}

TEST_F(ValueReadout, EveryRowHasItsValueAtItsPlace) {
    const int valueX[channelTotal] = {10, 26, 10, 10, 10, 10, 10, 10, 10, 10, 10, 18, 10, 10};
    MakeLog(1, 6000);
    const std::string lines = Record(DrawValueReadout);
    EXPECT_TRUE(Draws(lines, Blend(1, 255)));
    for (int slot : {0, 1})
        for (int channel = 0; channel < channelTotal; channel++)
            EXPECT_TRUE(Draws(lines, TextAt(105 * slot + valueX[channel], RowY(channel), Texts(channel, MouseSample(slot), 0, slot).panel,
                                            panelMask[slot] | channelColor[channel][slot], "bigFont")));
}

TEST_F(ValueReadout, WithShiftThePanelShowsTheDifferenceToTheCursorLine) {
    shiftDown = 1;
    cursorPos[0] = 100000;
    EXPECT_EQ(Sample(), 1500);
    EXPECT_TRUE(Draws(Record(DrawValueReadout), TextAt(10, RowY(chNe), "  +500rpm", panelMask[0] | channelColor[chNe][0], "bigFont")));
}

TEST_F(ValueReadout, AChannelThatIsNotShownHasNeitherValueNorNameNorTag) {
    CursolValueMode = 1;
    nameFade = 16;
    panelHover = 1;
    for (int& shows : showChannel[0]) shows = 0;
    showChannel[0][chVB] = 1;
    const std::string lines = Record(DrawValueReadout);
    EXPECT_EQ(Count(lines, "DrawTextAt"), 3) << lines;
    EXPECT_TRUE(Draws(lines, TextAt(48, RowY(chVB), "VB", panelMask[0] | channelColor[chVB][0], "bigFont")));
    showChannel[0][chSlip] = 1;
    ExpertMode = 1;
    EXPECT_EQ(Count(Record(DrawValueReadout), "DrawTextAt"), 3) << "the slip is the expert's";
}

TEST_F(ValueReadout, ValuesFadeIntoNamesAndBack) {
    panelHover = 1;
    for (int fade = 31; fade >= 0; fade--) {
        const std::string lines = Record(DrawValueReadout);
        EXPECT_EQ(nameFade, fade);
        EXPECT_TRUE(Draws(lines, Blend(1, (32 - fade) * 8)));
        EXPECT_TRUE(Draws(lines, Blend(1, fade * 8 - 1)));
    }
    panelHover = 0;
    for (int fade = 1; fade <= 32; fade++) DrawValueReadout();
    EXPECT_EQ(nameFade, 32);
    EXPECT_FALSE(Has(Record(DrawValueReadout), "\"SUS Fr\"")) << "skipped at 32";
}

TEST_F(ValueReadout, TheDebugColumnShowsTheGearOnTheSlipsRow) {
    const auto gear = [](int slot, const char* text) { return TextF(105 * slot + 16, RowY(chSlip), channelColor[chVB][slot], "bigFont", text); };
    MakeLog(1, 100);
    EXPECT_FALSE(Has(Record(DrawValueReadout), "DrawTextF"));
    Debug = 1;
    const std::string lines = Record(DrawValueReadout);
    EXPECT_TRUE(Draws(lines, Blend(0, 255) + gear(0, std::to_string(GearPosition(0, Sample())).c_str())));
    EXPECT_TRUE(Draws(lines, gear(1, std::to_string(GearPosition(1, MouseSample(1))).c_str())));
    CursolValueMode = 2;
    EXPECT_FALSE(Has(Record(DrawValueReadout), "DrawTextF"));
}

// --- tags ------------------------------------------------------------------------------------------------------------------

TEST_F(ValueReadout, TagsStandInAColumnPerFileAtTheirDistanceFromTheMouse) {
    CursolValueMode = 3;
    for (int slot : {1, 2}) MakeLog(slot, 6000);
    CslValWidth = 80;
    for (int slot = 0; slot < fileSlots; slot++) {
        for (int& shows : showChannel[slot]) shows = 0;
        showChannel[slot][chNe] = 1;
        tagValue[chNe][slot] = Sample() * 10;
    }
    channelPosition[chNe] = 300;
    channelZoom[chNe] = 10;
    viewZoom = 1.0;
    scrollY = 20;
    for (int spread : {16, 28, 38, 46}) {
        const std::string lines = Record(DrawValueReadout);
        EXPECT_EQ(tagSpread, spread);
        const int y = 300 - Sample() / 10 - 20, columns[] = {mouseX - spread - 125, spread + 75 + mouseX, spread + 155 + mouseX};
        for (int slot = 0; slot < fileSlots; slot++) {
            const std::string text = Texts(chNe, Sample(), 0, slot).tag;
            const int width = TextWidth(text.c_str(), static_cast<int>(text.size()), smallFont);
            EXPECT_TRUE(Draws(lines, Box(columns[slot] - 2, y, columns[slot] + width + 2, y + fontSize + 1, backColor) +
                                         TextAt(columns[slot], y, text, tagMask[slot] | channelColor[chNe][slot], "smallFont")));
        }
    }
    tagSpread = 79;
    DrawValueReadout();
    EXPECT_EQ(tagSpread, 80) << "at once when less than 2 away";
    CslValWidth = 0;
    DrawValueReadout();
    EXPECT_EQ(tagSpread, 64);
}

TEST_F(ValueReadout, TheTagsDistanceEasesUnseenToo) {
    CursolValueMode = 2;
    CslValWidth = 80;
    DrawValueReadout();
    EXPECT_EQ(tagSpread, 16);
    EXPECT_NE(tagValue[chNe][0], 0);
}

// Where the tags stand, with every value 0 and every position far from the others' but those named.
struct TagPlace { int channel, y; };
std::map<int, int> PlacedTags(std::initializer_list<TagPlace> moved) {
    mouseX = BaseLineX();  // sample 0
    for (int channel = 0; channel < channelTotal; channel++) {
        channelPosition[channel] = 1000 * (channel + 1);
        channelZoom[channel] = 1e9;
    }
    for (const TagPlace& place : moved) channelPosition[place.channel] = place.y;
    std::map<int, int> placed;
    for (int channel = 0; channel < channelTotal; channel++) {
        for (int& shows : showChannel[0]) shows = 0;
        showChannel[0][channel] = 1;
        std::istringstream lines(Record(DrawValueReadout));
        int x, y;
        for (std::string line; std::getline(lines, line);)
            if (std::sscanf(line.c_str(), "DrawTextAt %d %d", &x, &y) == 2) placed[channel] = y;
    }
    return placed;
}

TEST_F(ValueReadout, EachTagGivesWayToTheOneBeforeItInTheChain) {
    CursolValueMode = 3;
    const struct { int tag, before; } chain[] = {{chTH, chNe},     {chVFW, chTH},    {chVRW, chVFW},   {chFSUS, chVRW}, {chRSUS, chFSUS},
                                                 {chLAF1, chRSUS}, {chLAF2, chLAF1}, {chLAF2, chTH},   {chSlip, chAUX2}, {chVFSus, chSlip},
                                                 {chVRSus, chVFSus}, {chVRSus, chRSUS}};
    for (const auto& link : chain) {
        SCOPED_TRACE(link.tag * 100 + link.before);
        for (int distance : {-15, 0, 15}) {
            auto placed = PlacedTags({{link.before, 50000}, {link.tag, 50000 + distance}});
            EXPECT_EQ(placed[link.before], 50000);
            EXPECT_EQ(placed[link.tag], 50000 + fontSize);
        }
        for (int distance : {-16, 16}) EXPECT_EQ(PlacedTags({{link.before, 50000}, {link.tag, 50000 + distance}})[link.tag], 50000 + distance);
    }
    for (int free : {chVB, chAUX1, chAUX2, chNe})
        for (int other = 0; other < channelTotal; other++) {
            if (other == free) continue;
            EXPECT_EQ(PlacedTags({{other, 50000}, {free, 50000}})[free], 50000) << free << " beside " << other;
        }
}

TEST_F(ValueReadout, TheSecondLinkCountsOnlyWhereTheFirstDidNotApply) {
    CursolValueMode = 3;
    auto placed = PlacedTags({{chTH, 50000}, {chLAF1, 50005}, {chLAF2, 50001}});
    EXPECT_EQ(placed[chLAF2], 50005 + fontSize);
    placed = PlacedTags({{chVFSus, 50005}, {chRSUS, 50000}, {chVRSus, 50001}});
    EXPECT_EQ(placed[chVRSus], 50005 + fontSize);
}

TEST_F(ValueReadout, VRSusMeasuresFromWhereRSUSWouldStandUnpushed) {
    CursolValueMode = 3;
    const auto placed = PlacedTags({{chFSUS, 50000}, {chRSUS, 50000}, {chVRSus, 49990}});
    EXPECT_EQ(placed.at(chRSUS), 50000 + fontSize);
    EXPECT_EQ(placed.at(chVRSus), 50000 + fontSize) << "10 from the value's own place, 21 from the pushed tag";
}

TEST_F(ValueReadout, TheChainRunsThroughChannelsThatAreNotShown) {
    CursolValueMode = 3;
    const auto placed = PlacedTags({{chNe, 50000}, {chTH, 50000}, {chVFW, 50000}});
    EXPECT_EQ(placed.at(chVFW), 50000 + 2 * fontSize) << "each was drawn alone";
}

TEST_F(ValueReadout, ATagsHeightRestsWhereItIsLessThanAUnitOff) {
    tagValue[chNe][0] = Sample() * 10 - 9;
    animationPending = 0;
    for (int& shows : showChannel[0]) shows = 0;
    DrawValueReadout();
    EXPECT_EQ(tagValue[chNe][0], Sample() * 10 - 9);
}

TEST_F(ValueReadout, TheDelayTextFadesBesideTheMouse) {
    lafDelayShow = 100;
    lafDelay = 25;
    const auto text = [](int alpha) {
        return Blend(1, alpha) + TextF(mouseX - 125, mouseY, tagMask[0] | fileTextColor[0], "smallFont", "LAF Delay 0.12 sec") + Blend(0, 255);
    };
    EXPECT_TRUE(Draws(Record(DrawValueReadout), text(99 * 2 + 55)));
    EXPECT_TRUE(Draws(Record(DrawValueReadout), text(98 * 2 + 55)));
    EXPECT_EQ(lafDelayShow, 98);
}

TEST_F(ValueReadout, AStartAnewShowsValuesAndForgetsTheTags) {
    nameFade = 3;
    tagSpread = 80;
    tagValue[chNe][1] = 5;
    DefaultValueReadout();
    EXPECT_EQ(nameFade, 32);
    EXPECT_EQ(tagSpread, 0);
    EXPECT_EQ(tagValue[chNe][1], 0);
}

}  // namespace
