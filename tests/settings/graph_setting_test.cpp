#include "settings/graph_setting.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

#include "app/frame_loop.h"
#include "graph/color_scheme.h"
#include "run_data/run_store.h"
#include "run_data/typed_number.h"
#include "tests/program_fixture.h"

struct GraphSettingDialog : testing::Test {
    GraphSettingDialog() { LoadDefaults(); }

    static int& Stored(int channel, GridField field) {
        return field == GridField::min ? GraphGrid_min[channel] : field == GridField::max ? GraphGrid_max[channel] : GraphGrid_step[channel];
    }
    static std::string ShownText(int channel, GridField field) {
        char text[gridTextSize];
        ShowGridField(channel, field, text);
        return text;
    }
    // What leaving the field with this text stores.
    static int Typed(int channel, GridField field, const char* text) {
        LeaveGridField(channel, field, text);
        return Stored(channel, field);
    }
};

struct ShownRow { int channel, stored; const char* text; };

TEST_F(GraphSettingDialog, StoredValuesAreShownInTheChannelsUnits) {
    const ShownRow rows[] = {
        {chNe, 12345, "12345"},   {chTH, 25, "25"},          {chVFW, 3005, "300"},     {chVFW, -19, "-1"},
        {chVRW, 9, "0"},          {chFSUS, 12099, "120"},    {chFSUS, -150, "-1"},     {chRSUS, 3500, "35"},
        {chLAF1, 1150, "11.5"},   {chLAF2, 1344, "13.4"},    {chVB, 90, "0.9"},        {chVB, 1320, "13.2"},
        {chAUX1, 2545, "25.45"},  {chAUX2, -5, "-0.05"},     {chSlip, -505, "-50"},    {chSlip, 200, "20"},
        {chVFSus, -2000, "-2000"}, {chVRSus, 1000, "1000"},  {chNe, INT32_MIN, "-2147483648"},
        {chAUX1, INT32_MAX, "21474836.47"},
    };
    for (const ShownRow& row : rows) {
        SCOPED_TRACE(row.text);
        for (GridField field : {GridField::min, GridField::max, GridField::step}) {
            Stored(row.channel, field) = row.stored;
            EXPECT_EQ(ShownText(row.channel, field), row.text);
        }
    }
}

struct TypedRow { int channel; const char* text; int stored; };

TEST_F(GraphSettingDialog, TypedMinIsLimitedCutAndScaledByChannel) {
    const TypedRow rows[] = {
        {chNe, "-1", 0},          {chNe, "500.9", 500},      {chNe, "20001", 20000},
        {chTH, "-0.5", 0},        {chTH, "50", 50},          {chTH, "30000", 20000},
        {chVFW, "-3", 0},         {chVFW, "12.9", 120},      {chVFW, "20000.5", 200000},
        {chVRW, "12.9", 120},     {chVRW, "-1", 0},          {chVRW, "99999", 200000},
        {chFSUS, "-101", -10000}, {chFSUS, "-2.9", -200},    {chFSUS, "20001", 2000000},
        {chRSUS, "-100.5", -10000}, {chRSUS, "2.9", 200},    {chRSUS, "0", 0},
        {chLAF1, "-1", 0},        {chLAF1, "11.55", 1155},   {chLAF1, "20001", 2000000},
        {chLAF2, "2.3", 230},     {chLAF2, "0.29", 29},      {chLAF2, "-9", 0},
        {chVB, "9.99", 999},      {chVB, "-1", 0},           {chVB, "20001", 2000000},
        {chAUX1, "2.3", 230},     {chAUX1, "-1", 0},         {chAUX1, "20001", 2000000},
        {chAUX2, "2.3", 230},     {chAUX2, "-0.01", 0},
        {chSlip, "-501", -5000},  {chSlip, "-12.59", -125},  {chSlip, "20001", 200000},
        {chVFSus, "-501", -500},  {chVFSus, "-12.5", -12},   {chVFSus, "20001", 20000},
        {chVRSus, "-501", -500},  {chVRSus, "499.9", 499},
    };
    for (const TypedRow& row : rows) {
        SCOPED_TRACE(std::to_string(row.channel) + ": " + row.text);
        EXPECT_EQ(Typed(row.channel, GridField::min, row.text), row.stored);
    }
}

TEST_F(GraphSettingDialog, TypedMaxIsCutToAWholeNumberButForVB) {
    const TypedRow rows[] = {
        {chNe, "500.9", 500},   {chTH, "99.9", 99},     {chVFW, "12.9", 120},   {chVRW, "12.9", 120},  {chFSUS, "12.9", 1200},
        {chRSUS, "12.9", 1200}, {chLAF1, "13.5", 1300}, {chLAF2, "13.5", 1300}, {chVB, "13.5", 1350},  {chVB, "13.57", 1357},
        {chAUX1, "12.9", 1200}, {chAUX2, "12.9", 1200}, {chSlip, "12.9", 120},  {chVFSus, "12.9", 12}, {chVRSus, "12.9", 12},
    };
    for (const TypedRow& row : rows) {
        SCOPED_TRACE(std::to_string(row.channel) + ": " + row.text);
        EXPECT_EQ(Typed(row.channel, GridField::max, row.text), row.stored);
    }
}

// Stored units of 1, as typed.
static constexpr int scales[layoutChannels] = {1, 1, 10, 10, 100, 100, 100, 100, 100, 100, 100, 10, 1, 1};

TEST_F(GraphSettingDialog, MaxIsLimitedFrom0To20000AsTyped) {
    for (int channel = 0; channel < layoutChannels; channel++) {
        SCOPED_TRACE(channel);
        EXPECT_EQ(Typed(channel, GridField::max, "-1"), 0);
        EXPECT_EQ(Typed(channel, GridField::max, "0"), 0);
        EXPECT_EQ(Typed(channel, GridField::max, "20000"), 20000 * scales[channel]);
        EXPECT_EQ(Typed(channel, GridField::max, "20001"), 20000 * scales[channel]);
    }
}

TEST_F(GraphSettingDialog, StepIsLimitedFromItsChannelsLowestTo20000AsTyped) {
    static constexpr int lowest[layoutChannels] = {1, 1, 1, 1, 10, 10, 10, 10, 10, 10, 10, 1, 10, 10};  // stored
    for (int channel = 0; channel < layoutChannels; channel++) {
        SCOPED_TRACE(channel);
        EXPECT_EQ(Typed(channel, GridField::step, "-5"), lowest[channel]);
        EXPECT_EQ(Typed(channel, GridField::step, "0"), lowest[channel]);
        EXPECT_EQ(Typed(channel, GridField::step, ""), lowest[channel]);
        EXPECT_EQ(Typed(channel, GridField::step, "20001"), 20000 * scales[channel]);
    }
}

TEST_F(GraphSettingDialog, StepKeepsItsFraction) {
    const TypedRow rows[] = {{chNe, "1.9", 1},      {chVFW, "12.9", 129},  {chFSUS, "0.29", 29},  {chLAF1, "0.57", 57}, {chVB, "0.29", 29},
                             {chAUX2, "1.15", 115}, {chSlip, "0.35", 3},   {chVFSus, "10.9", 10}, {chVRSus, "9.9", 10}, {chTH, "0.9", 1}};
    for (const TypedRow& row : rows) {
        SCOPED_TRACE(std::to_string(row.channel) + ": " + row.text);
        EXPECT_EQ(Typed(row.channel, GridField::step, row.text), row.stored);
    }
}

TEST_F(GraphSettingDialog, Step0TypedForVfwStores1) { EXPECT_EQ(Typed(chVFW, GridField::step, "0"), 1); }

TEST_F(GraphSettingDialog, LeavingMinLiftsTheStartValuesOfTheSuspensionSpeedsTo500Below) {
    for (int channel : {chVFSus, chVRSus}) {
        SCOPED_TRACE(channel);
        LeaveGridField(channel, GridField::min, ShownText(channel, GridField::min).c_str());
        EXPECT_EQ(GraphGrid_min[channel], -500);
        EXPECT_EQ(ShownText(channel, GridField::min), "-500");
    }
}

TEST_F(GraphSettingDialog, OnlyTheMinimumOfAnAuxChannelIsDivided) {
    auxDivider[0][0] = 10;
    auxDivider[0][1] = 100;
    auxDivider[1][0] = 1;
    EXPECT_EQ(Typed(chAUX1, GridField::min, "50"), 500);
    EXPECT_EQ(ShownText(chAUX1, GridField::min), "50.00");
    EXPECT_EQ(Typed(chAUX1, GridField::max, "50"), 5000);
    EXPECT_EQ(ShownText(chAUX1, GridField::max), "500.00");
    EXPECT_EQ(Typed(chAUX1, GridField::step, "5"), 500);
    EXPECT_EQ(ShownText(chAUX1, GridField::step), "50.00");
    EXPECT_EQ(Typed(chAUX2, GridField::min, "50"), 50);
    EXPECT_EQ(Typed(chLAF1, GridField::min, "50"), 5000) << "the divider is that of the AUX inputs";
}

TEST_F(GraphSettingDialog, DividerOutOfRangeCountsAs1) {
    auxDivider[0][0] = 0;
    EXPECT_EQ(Typed(chAUX1, GridField::min, "2"), 200);
    EXPECT_EQ(ShownText(chAUX1, GridField::min), "2.00");
}

TEST_F(GraphSettingDialog, FieldOfOneChannelLeavesTheOthersAlone) {
    for (int channel = 0; channel < layoutChannels; channel++) {
        SCOPED_TRACE(channel);
        DefaultSettings();
        const auto others = [&] {
            std::vector<std::tuple<int, int, int>> values;
            for (int c = 0; c < layoutChannels; c++)
                if (c != channel) values.emplace_back(GraphGrid_min[c], GraphGrid_max[c], GraphGrid_step[c]);
            return values;
        };
        const auto before = others();
        for (GridField field : {GridField::min, GridField::max, GridField::step}) LeaveGridField(channel, field, "77");
        EXPECT_EQ(others(), before);
    }
}

TEST_F(GraphSettingDialog, MaxBelowMinStandsUntilTheDialogCloses) {
    LeaveGridField(chNe, GridField::min, "9000");
    LeaveGridField(chNe, GridField::max, "100");
    EXPECT_EQ(GraphGrid_max[chNe], 100);
    CloseGraphSetting(chNe, GraphSettingEnd::button);
    EXPECT_EQ(GraphGrid_max[chNe], 9000);
    GraphGrid_max[chNe] = 100;
    CloseGraphSetting(chNe, GraphSettingEnd::window);
    EXPECT_EQ(GraphGrid_max[chNe], 9000);
}

TEST_F(GraphSettingDialog, MaxAboveMinStaysAtClosing) {
    LeaveGridField(chNe, GridField::max, "15000");
    CloseGraphSetting(chNe, GraphSettingEnd::button);
    EXPECT_EQ(GraphGrid_max[chNe], 15000);
    EXPECT_EQ(GraphGrid_min[chNe], 5000);
}

TEST_F(GraphSettingDialog, EachColumnsRadiosTakeEffectAtOnceInTheirTable) {
    const struct { ColorColumn column; int* table; } columns[] = {{ColorColumn::file1, colorCurrent},
                                                                  {ColorColumn::file2, Color_Red},
                                                                  {ColorColumn::file3, Color_White},
                                                                  {ColorColumn::onlyFile1, colorStored[1]}};
    for (const auto& column : columns)
        for (int channel = 0; channel < layoutChannels; channel++)
            for (int index = 0; index < colorChoices; index++) {
                DefaultSettings();
                SetColorChoice(channel, column.column, index);
                EXPECT_EQ(column.table[channel], index);
                for (const auto& other : columns) {
                    const int standard = other.column == ColorColumn::file1 ? colorStored[0][channel] : other.table[channel];
                    EXPECT_EQ(ColorChoice(channel, other.column), &other == &column ? index : standard);
                }
            }
}

TEST_F(GraphSettingDialog, CloseKeepsTheColourOfFile1AndTheWindowsButtonUndoesIt) {
    SetColorChoice(chTH, ColorColumn::file1, 6);
    CloseGraphSetting(chTH, GraphSettingEnd::window);
    EXPECT_EQ(ColorChoice(chTH, ColorColumn::file1), 0);
    EXPECT_EQ(channelColor[chTH][0], PaletteColor(0));
    SetColorChoice(chTH, ColorColumn::file1, 6);
    CloseGraphSetting(chTH, GraphSettingEnd::button);
    EXPECT_EQ(ColorChoice(chTH, ColorColumn::file1), 6);
    EXPECT_EQ(colorStored[0][chTH], 6);
    EXPECT_EQ(channelColor[chTH][0], PaletteColor(6));
}

TEST_F(GraphSettingDialog, BothWaysOfClosingKeepTheColoursOfTheOtherColumns) {
    for (GraphSettingEnd end : {GraphSettingEnd::button, GraphSettingEnd::window}) {
        LoadDefaults();
        SetColorChoice(chTH, ColorColumn::file2, 5);
        SetColorChoice(chTH, ColorColumn::file3, 6);
        SetColorChoice(chTH, ColorColumn::onlyFile1, 7);
        CloseGraphSetting(chTH, end);
        EXPECT_EQ(Color_Red[chTH], 5);
        EXPECT_EQ(Color_White[chTH], 6);
        EXPECT_EQ(colorStored[1][chTH], 7);
        EXPECT_EQ(channelColor[chTH][1], PaletteColor(5));
        EXPECT_EQ(channelColor[chTH][2], PaletteColor(6));
    }
}

TEST_F(GraphSettingDialog, CloseStoresTheColourThatALoneLogWearsAsTheNormalOne) {
    ExpertMode = 2;
    ExclusiveF1Color = 1;
    colorStored[1][chTH] = 4;
    ApplyColorSet(0);
    EXPECT_EQ(ColorChoice(chTH, ColorColumn::file1), 4);
    CloseGraphSetting(chTH, GraphSettingEnd::button);
    EXPECT_EQ(colorStored[0][chTH], 4);
}

TEST_F(GraphSettingDialog, BelowExpertTheTickIsAbsentAndTheSettingClearedOnEachOpening) {
    for (int level : {0, 1}) {
        SCOPED_TRACE(level);
        ExpertMode = level;
        ExclusiveF1Color = 1;
        OpenGraphSetting();
        EXPECT_EQ(ExclusiveF1Color, 0);
        EXPECT_FALSE(OnlyFile1Offered());
        EXPECT_FALSE(OnlyFile1Shown());
    }
}

TEST_F(GraphSettingDialog, AtExpertTheTickShowsAndHidesTheColumn) {
    ExpertMode = 2;
    for (int on : {0, 1}) {
        ExclusiveF1Color = on;
        OpenGraphSetting();
        EXPECT_EQ(ExclusiveF1Color, on);
        EXPECT_TRUE(OnlyFile1Offered());
        EXPECT_EQ(OnlyFile1Shown(), on == 1);
    }
}

TEST_F(ProgramTest, ClosingTheGraphSettingRebuildsTheGrid) {
    OpenWindow(320, 240);
    for (GraphSettingEnd end : {GraphSettingEnd::button, GraphSettingEnd::window})
        EXPECT_TRUE(Contains(Recorded([end] { CloseGraphSetting(chNe, end); }), "SetDrawTarget gridStrip"));
}

TEST_F(GraphSettingDialog, SamplesAreThoseOfTheDialogsOwnTable) {
    struct Rgb { int red, green, blue; };
    const Rgb dark[] = {{0, 255, 0}, {0, 255, 192}, {255, 0, 0}, {255, 0, 192}, {192, 168, 0}, {192, 255, 0}, {0, 150, 0}, {140, 140, 140}, {255, 255, 255}};
    const Rgb light[] = {{0, 0, 255}, {0, 192, 255}, {255, 0, 0}, {255, 0, 192}, {192, 168, 0}, {128, 128, 0}, {0, 150, 0}, {140, 140, 140}, {0, 0, 0}};
    for (int scheme : {0, 1, 7}) {
        colortype = scheme;
        for (int index = 0; index < colorChoices; index++) {
            SCOPED_TRACE(std::to_string(scheme) + "/" + std::to_string(index));
            const Rgb& wanted = scheme == 1 ? light[index] : dark[index];
            const SampleColor sample = ColorSample(index);
            EXPECT_EQ(std::tuple(sample.red, sample.green, sample.blue), std::tuple(wanted.red, wanted.green, wanted.blue));
        }
        EXPECT_EQ(SampleBackground().red, scheme == 1 ? 255 : 0);
        EXPECT_EQ(SampleBackground().green, scheme == 1 ? 255 : 0);
        EXPECT_EQ(SampleBackground().blue, scheme == 1 ? 255 : 0);
    }
}

TEST(TypedNumberText, IsReadAsADecimal) {
    const struct { const char* text; double number; } rows[] = {
        {"", 0},     {"12", 12},      {" \t12", 12}, {"-3.25", -3.25}, {"+4", 4},   {".5", 0.5},  {"5.", 5},     {"1,5", 1},
        {"1e3", 1},  {"0x10", 0},     {"abc", 0},    {"nan", 0},       {"inf", 0},  {"12 mm", 12}, {"--1", 0},   {"- 1", 0},
        {"-", 0},    {"1.2.3", 1.2},  {"0.123456789012", 0.123456789},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(TypedNumber(row.text), row.number);
    }
    EXPECT_GT(TypedNumber(std::string(400, '9').c_str()), 1e300);
}

TEST(TypedNumberText, ProductIsCutAsItsDigitsSay) {
    EXPECT_EQ(CutProduct(2.3, 100), 230);
    EXPECT_EQ(CutProduct(-2.3, 100), -230);
    EXPECT_EQ(CutProduct(0.29, 100), 29);
    EXPECT_EQ(CutProduct(0.299, 100), 29);
    EXPECT_EQ(CutProduct(-0.299, 100), -29);
    EXPECT_EQ(CutProduct(0, 100), 0);
    EXPECT_EQ(CutProduct(1e300, 100), INT32_MAX);
}
