#include "run_data/derived_channels.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "app/frame_loop.h"
#include "platform/headless/script.h"
#include "run_data/run_store.h"
#include "settings/settings.h"

namespace {

// A slot's channels as plain numbers, one element more than there are samples.
using Column = std::vector<int64_t>;
using Columns = std::array<Column, channelTotal>;

template <class Visit>
void ForEachColumn(int slot, Visit visit) {
    visit(chNe, Ne[slot]);
    visit(chTH, TH[slot]);
    visit(chVFW, VFW[slot]);
    visit(chVRW, VRW[slot]);
    visit(chFSUS, FSUS[slot]);
    visit(chRSUS, RSUS[slot]);
    visit(chLAF1, LAF1[slot]);
    visit(chLAF2, LAF2[slot]);
    visit(chVB, VB[slot]);
    visit(chAUX1, AUX1[slot]);
    visit(chAUX2, AUX2[slot]);
    visit(chVFSus, VFSus[slot]);
    visit(chVRSus, VRSus[slot]);
}

Columns Snapshot(int slot) {
    Columns columns;
    ForEachColumn(slot, [&](int channel, auto& array) {
        columns[channel].assign(array.begin(), array.begin() + sampleCount[slot] + 1);
    });
    return columns;
}

void ExpectChannels(int slot, const Columns& expected) {
    const Columns found = Snapshot(slot);
    for (int channel = 0; channel < channelTotal; channel++) {
        SCOPED_TRACE(testing::Message() << "channel " << channel);
        ASSERT_EQ(found[channel], expected[channel]);
    }
}

// Channels of `samples` random samples, as wide as their elements or near what sensors give, and a zero behind them.
void FillSlot(int slot, int samples, unsigned seed, bool wide) {
    std::mt19937 random(seed);
    EnsureChannels(slot, samples + 16);
    ClearChannels(slot, samples + 16);
    sampleCount[slot] = samples;
    ForEachColumn(slot, [&](int, auto& array) {
        using Element = std::remove_reference_t<decltype(array[0])>;
        for (int i = 1; i < samples; i++) array[i] = static_cast<Element>(wide ? random() : random() % 2000);
    });
}

// The definitions, sample by sample.
void PlainSpeed(int slot, Columns& c) {
    const int n = sampleCount[slot], last = n - SusVSampleNum;
    for (int i = 0; i < n; i++) {
        int a = i, b = i + 1;
        if (b >= last) a = b = last;
        if (a < 1) a = b = 1;
        auto speed = [&](int stroke) {
            const double value = static_cast<double>(c[stroke][b] - c[stroke][a]) * 2 * timeFactor[slot];
            return int64_t{static_cast<int16_t>(static_cast<int64_t>(value))};
        };
        c[chVFSus][i] = a == b ? 0 : speed(chFSUS);
        c[chVRSus][i] = a == b ? 0 : speed(chRSUS);
    }
}

void PlainMeans(Column& column, int first, int end, int half, int n) {
    const Column copy = column;
    for (int i = first; i < end; i++) {
        int64_t sum = 0;
        for (int j = i - half; j <= i + half; j++) sum += j >= 0 && j < n ? copy[j] : 0;
        column[i] = sum / (2 * half + 1);
    }
}

void PlainSmoothing(int slot, bool ctrl, Columns& c) {
    const int n = sampleCount[slot], h = std::clamp(SmoothingSample, 0, 8);
    const int w = fileKind[slot] == 1 && !ctrl ? SmoothingSTD : 0;
    if (smoothingNE) PlainMeans(c[chNe], h + 2, n - h - 2, h, n);
    if (smoothingVW) PlainMeans(c[chVFW], h + 2, n - h - 2, h, n);
    if (smoothingVW) PlainMeans(c[chVRW], h + 2, n - h - 2, h, n);
    if (SmoothingSTD != 0) {
        for (int channel : {chTH, chFSUS, chRSUS, chLAF1, chLAF2, chAUX1, chAUX2, chVB}) PlainMeans(c[channel], 1, n, w, n);
        for (int channel : {chVFSus, chVRSus}) PlainMeans(c[channel], 1, n, 2, n);
    }
    if (VFWCopyVRW) std::copy_n(c[chVFW].begin(), n - 1, c[chVRW].begin());
}

struct PlainExtremes {
    int64_t low[channelTotal] = {}, high[channelTotal] = {};
};

void PlainStatistics(int slot, const Columns& c, PlainExtremes& e) {
    const int n = sampleCount[slot], s = std::min(n, 200), version = formatVersion[slot];
    for (int channel = 0; channel < chSlip; channel++) e.low[channel] = e.high[channel] = c[channel][s];
    auto take = [&](int channel, int64_t value) {
        e.low[channel] = std::min(e.low[channel], value);
        e.high[channel] = std::max(e.high[channel], value);
    };
    for (int i = 200; n > 200 && i + 16 < n; i++)
        for (int channel = 0; channel < channelTotal; channel++) {
            const bool stroke = channel == chFSUS || channel == chRSUS;
            if (stroke && fileKind[slot] == 1 && c[chVB][i] < 901 && version != 0 && version != 1 && version != 32) continue;
            if (channel != chSlip) take(channel, c[channel][i]);
            else if (c[chVFW][i] > 50) take(chSlip, (c[chVRW][i] - c[chVFW][i]) * 1000 / c[chVFW][i]);
        }
}

class DerivedChannels : public testing::Test {
  protected:
    void SetUp() override {
        LoadDefaults();
        DefaultScript();
        fileKind[0] = 1;
        formatVersion[0] = 2;
    }
    void TearDown() override { DefaultScript(); }

    // File 1 with all samples of each channel 0.
    static void QuietSlot(int samples) {
        EnsureChannels(0, samples + 16);
        ClearChannels(0, samples + 16);
        sampleCount[0] = samples;
    }
};
using SuspensionSpeed = DerivedChannels;
using Smoothing = DerivedChannels;
using Statistics = DerivedChannels;

TEST_F(SuspensionSpeed, IsTheStepToTheNextSampleTimesTwo) {
    QuietSlot(30);
    FSUS[0][5] = 100;
    RSUS[0][7] = -40;
    ComputeSuspensionSpeed(0);
    EXPECT_EQ(VFSus[0][4], 200);
    EXPECT_EQ(VFSus[0][5], -200);
    EXPECT_EQ(VRSus[0][6], -80);
    EXPECT_EQ(VRSus[0][7], 80);
}

TEST_F(SuspensionSpeed, OfSampleZeroIsZero) {
    QuietSlot(30);
    FSUS[0][1] = 100;
    ComputeSuspensionSpeed(0);
    EXPECT_EQ(VFSus[0][0], 0);
    EXPECT_EQ(VFSus[0][1], -200);
}

TEST_F(SuspensionSpeed, OfTheLastSusVSampleNumSamplesIsZero) {
    for (int held : {0, 1, 3, 20}) {
        SCOPED_TRACE(held);
        QuietSlot(60);
        for (int i = 1; i <= 60; i++) FSUS[0][i] = static_cast<int16_t>(i * i);
        VFSus[0][59] = 1234;
        SusVSampleNum = held;
        ComputeSuspensionSpeed(0);
        for (int i = 60 - held - 1; i < 60; i++) EXPECT_EQ(VFSus[0][i], 0) << i;
        EXPECT_NE(VFSus[0][60 - held - 2], 0);
    }
}

TEST_F(SuspensionSpeed, FollowsTheTimeFactorAndIsTruncated) {
    QuietSlot(30);
    timeFactor[0] = 0.25;
    FSUS[0][5] = 3;
    FSUS[0][10] = -3;
    ComputeSuspensionSpeed(0);
    EXPECT_EQ(VFSus[0][4], 1);
    EXPECT_EQ(VFSus[0][9], -1);
}

TEST_F(SuspensionSpeed, EqualsTheDefinitionForAllLengthsAndSettings) {
    for (double factor : {1.0, 0.5, 5.0, 0.05})
        for (int samples : {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20, 21, 22, 23, 100, 1000})
            for (SusVSampleNum = 0; SusVSampleNum <= 20; SusVSampleNum++) {
                SCOPED_TRACE(testing::Message() << samples << " samples, " << SusVSampleNum << " held, factor " << factor);
                FillSlot(0, samples, samples, factor == 1.0);
                timeFactor[0] = factor;
                Columns expected = Snapshot(0);
                PlainSpeed(0, expected);
                ComputeSuspensionSpeed(0);
                ExpectChannels(0, expected);
            }
}

TEST_F(SuspensionSpeed, WithShiftIsTheGearRatioWhereTheRearWheelTurns) {
    QuietSlot(30);
    primaryRatio[0] = 2111;
    frontSprocket[0] = 16;
    rearSprocket[0] = 42;
    rearTyreMm[0] = 2010;
    Ne[0][5] = 12000;
    VRW[0][5] = 2000;
    FSUS[0][7] = 50;
    ScriptHold(true, false);
    ComputeSuspensionSpeed(0);
    EXPECT_EQ(VFSus[0][5], 12000 * 16 * 2010 / (2000 * 2111 * 42 / 600));
    EXPECT_EQ(VFSus[0][6], 100);  // the rear wheel stands: the speed stays
    EXPECT_EQ(VRSus[0][5], 0);
}

TEST_F(SuspensionSpeed, WithShiftWrapsItsProductsAt32Bits) {
    QuietSlot(30);
    primaryRatio[0] = 255000;
    frontSprocket[0] = 255;
    rearSprocket[0] = 255;
    rearTyreMm[0] = 65535;
    Ne[0][5] = 65535;
    VRW[0][5] = 4095;
    ScriptHold(true, false);
    ComputeSuspensionSpeed(0);
    const uint32_t drive = 4095u * 255000u * 255u / 600u, engine = 65535u * 255u * 65535u;
    EXPECT_EQ(VFSus[0][5], static_cast<int16_t>(engine / drive));
    EXPECT_NE(uint64_t{engine}, uint64_t{65535} * 255 * 65535);
}

TEST_F(Smoothing, EqualsTheDefinitionForAllLengthsKindsAndKeys) {
    for (int samples : {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20, 200, 5000})
        for (int half : {0, 1, 2, 3, 4, 5, 9, 50, 1000})
            for (int round = 0; round < 4; round++) {
                SCOPED_TRACE(testing::Message() << samples << " samples, half " << half << ", round " << round);
                const bool ctrl = round == 2;
                FillSlot(0, samples, samples * 10 + round, round % 2 == 0);
                SmoothingSTD = half;
                SmoothingSample = half;
                smoothingNE = round != 1;
                smoothingVW = round != 3;
                VFWCopyVRW = round == 3;
                fileKind[0] = round == 1 ? 2 : 1;
                ScriptHold(false, ctrl);
                Columns expected = Snapshot(0);
                PlainSmoothing(0, ctrl, expected);
                SmoothChannels(0);
                ExpectChannels(0, expected);
            }
}

TEST_F(Smoothing, OfALogLongerThanManyBlocksEqualsTheDefinition) {
    for (int half : {2, 7, 1000}) {
        FillSlot(0, 20011, half, half == 7);
        SmoothingSTD = half;
        smoothingNE = smoothingVW = 1;
        Columns expected = Snapshot(0);
        PlainSmoothing(0, false, expected);
        SmoothChannels(0);
        ExpectChannels(0, expected);
    }
}

TEST_F(Smoothing, SampleOfTwelveIsTakenAsEight) {
    FillSlot(0, 300, 1, true);
    const Columns raw = Snapshot(0);
    smoothingNE = 1;
    SmoothingSample = 12;
    SmoothChannels(0);
    int64_t sum = 0;
    for (int j = 100 - 8; j <= 100 + 8; j++) sum += raw[chNe][j];
    EXPECT_EQ(Ne[0][100], sum / 17);
    EXPECT_EQ(Ne[0][9], raw[chNe][9]);    // 8 + 2 is the first smoothed one
    EXPECT_NE(Ne[0][10], raw[chNe][10]);
    EXPECT_NE(Ne[0][289], raw[chNe][289]);
    EXPECT_EQ(Ne[0][290], raw[chNe][290]);
}

TEST_F(Smoothing, StdOfZeroLeavesSensorsAndSuspensionSpeedsRaw) {
    FillSlot(0, 300, 1, true);
    const Columns raw = Snapshot(0);
    SmoothingSTD = 0;
    SmoothChannels(0);
    ExpectChannels(0, raw);
}

TEST_F(Smoothing, WithCtrlAveragesOnlyTheSuspensionSpeeds) {
    FillSlot(0, 300, 1, true);
    Columns expected = Snapshot(0);
    PlainMeans(expected[chVFSus], 1, 300, 2, 300);
    PlainMeans(expected[chVRSus], 1, 300, 2, 300);
    ScriptHold(false, true);
    SmoothChannels(0);
    ExpectChannels(0, expected);
}

TEST_F(Smoothing, TapersTowardZeroAtTheEndOfTheLog) {
    QuietSlot(50);
    for (int i = 1; i < 50; i++) TH[0][i] = 1000;
    SmoothingSTD = 2;
    SmoothChannels(0);
    EXPECT_EQ(TH[0][47], 1000);
    EXPECT_EQ(TH[0][48], 800);
    EXPECT_EQ(TH[0][49], 600);
    EXPECT_EQ(TH[0][50], 0);
    EXPECT_EQ(TH[0][1], 600);  // sample 0 is never a logged value
    EXPECT_EQ(TH[0][0], 0);
}

TEST_F(Smoothing, CopiesTheFrontWheelOverTheRearButForTheLastSample) {
    FillSlot(0, 100, 1, true);
    const Columns raw = Snapshot(0);
    VFWCopyVRW = 1;
    SmoothingSTD = 0;
    SmoothChannels(0);
    EXPECT_EQ(VRW[0][98], raw[chVFW][98]);
    EXPECT_EQ(VRW[0][99], raw[chVRW][99]);
}

TEST_F(Smoothing, OfLargeAnalogValuesDoesNotOverflow) {
    QuietSlot(100);
    for (int i = 1; i < 100; i++) AUX1[0][i] = 2147483647;
    SmoothingSTD = 1000;
    SmoothChannels(0);
    EXPECT_EQ(AUX1[0][50], int64_t{2147483647} * 99 / 2001);
}

// Extremes and show flags of File 1, one row.
std::vector<int> FoundStatistics() {
    std::vector<int> found;
    for (const auto* table : {&channelMin[0], &channelMax[0], &showChannel[0]})
        found.insert(found.end(), std::begin(*table), std::end(*table));
    return found;
}

TEST_F(DerivedChannels, AllStepsAtOnceEqualTheStepsOneByOne) {
    struct Round { int kind, version, std, smoothing, copies; bool ctrl, shift; };
    constexpr Round rounds[] = {{1, 2, 2, 0, 0, false, false}, {1, 1, 2, 1, 0, false, false},  {1, 4, 0, 0, 0, false, false},
                                {1, 3, 7, 1, 1, false, false}, {1, 4, 2, 0, 0, true, false},   {2, 4, 2, 0, 1, false, false},
                                {3, 0, 2, 1, 0, false, false}, {1, 32, 2, 0, 0, false, true}, {1, 2, 1000, 1, 0, false, false}};
    for (const Round& round : rounds)
        for (int samples : {1, 16, 199, 200, 201, 216, 217, 218, 2000, 2001, 4097, 9000, 13000}) {
            SCOPED_TRACE(testing::Message() << samples << " samples, round " << &round - rounds);
            fileKind[0] = round.kind;
            formatVersion[0] = round.version;
            SmoothingSTD = round.std;
            smoothingNE = smoothingVW = round.smoothing;
            VFWCopyVRW = round.copies;
            primaryRatio[0] = 2111;
            ScriptHold(round.shift, round.ctrl);
            auto start = [&] {
                FillSlot(0, samples, samples, round.kind == 1);
                for (int channel = 0; channel < channelTotal; channel++) {
                    channelMin[0][channel] = 40, channelMax[0][channel] = 50;
                    showChannel[0][channel] = 1;
                }
            };
            start();
            ComputeSuspensionSpeed(0);
            SmoothChannels(0);
            ComputeStatistics(0);
            const Columns expected = Snapshot(0);
            const std::vector<int> statistics = FoundStatistics();
            start();
            FinishChannels(0);
            ExpectChannels(0, expected);
            ASSERT_EQ(FoundStatistics(), statistics);
        }
}

TEST_F(DerivedChannels, NothingIsReadOrWrittenPastArraysThatCouldNotGrow) {
    FillSlot(0, 5000, 1, true);
    for (auto* array : {&VFSus[0], &VRSus[0]}) {
        array->resize(300);
        array->shrink_to_fit();
    }
    VB[0].resize(10);
    VB[0].shrink_to_fit();
    channelMax[0][chVB] = 33;
    ComputeSuspensionSpeed(0);
    SmoothChannels(0);
    ComputeStatistics(0);
    FinishChannels(0);
    EXPECT_EQ(channelMax[0][chVB], 33);  // there is nothing to take
    EXPECT_EQ(VFSus[0].size(), 300u);
    EXPECT_EQ(VB[0].size(), 10u);
}

TEST_F(Statistics, EqualTheDefinitionForAllVersionsAndLengths) {
    PlainExtremes expected;
    for (int samples : {1, 5, 20, 199, 200, 201, 216, 217, 218, 300, 1000, 2000, 2001, 9000})
        for (int version : {0, 1, 2, 3, 4, 32})
            for (int kind : {1, 2, 3}) {
                SCOPED_TRACE(testing::Message() << samples << " samples, version " << version << ", kind " << kind);
                FillSlot(0, samples, samples + version, kind == 2);
                fileKind[0] = kind;
                formatVersion[0] = version;
                PlainStatistics(0, Snapshot(0), expected);
                ComputeStatistics(0);
                for (int channel = 0; channel < channelTotal; channel++) {
                    ASSERT_EQ(channelMin[0][channel], expected.low[channel]) << channel;
                    ASSERT_EQ(channelMax[0][channel], expected.high[channel]) << channel;
                }
            }
}

TEST_F(Statistics, OfALogUnder200SamplesAreTheElementBehindTheLast) {
    QuietSlot(150);
    for (int i = 1; i < 150; i++) Ne[0][i] = 5000;
    VB[0][150] = 1250;  // versions 3 and 4 carry the voltage on
    ComputeStatistics(0);
    EXPECT_EQ(channelMax[0][chNe], 0);
    EXPECT_EQ(channelMin[0][chNe], 0);
    EXPECT_EQ(channelMax[0][chVB], 1250);
}

TEST_F(Statistics, LeaveOutTheFirst200AndTheLast16Samples) {
    QuietSlot(1000);
    for (int i = 0; i < 1000; i++) Ne[0][i] = 100;
    Ne[0][199] = 9000;
    Ne[0][984] = 8000;
    Ne[0][200] = 110;
    Ne[0][983] = 120;
    ComputeStatistics(0);
    EXPECT_EQ(channelMax[0][chNe], 120);
    EXPECT_EQ(channelMin[0][chNe], 100);
}

TEST_F(Statistics, OfStrokesNeedNineVoltsInNativeLogsThatHaveABattery) {
    struct Row { int kind, version, high; };
    constexpr Row rows[] = {{1, 2, 50},  {1, 3, 50},   {1, 4, 50},  {1, 0, 900},
                            {1, 1, 900}, {1, 32, 900}, {2, 2, 900}, {3, 4, 900}};
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::Message() << "kind " << row.kind << " version " << row.version);
        QuietSlot(1000);
        fileKind[0] = row.kind;
        formatVersion[0] = row.version;
        for (int i = 0; i < 1000; i++) VB[0][i] = 901;
        FSUS[0][300] = RSUS[0][300] = 900;
        VB[0][300] = 900;
        FSUS[0][400] = RSUS[0][400] = 50;
        ComputeStatistics(0);
        EXPECT_EQ(channelMax[0][chFSUS], row.high);
        EXPECT_EQ(channelMax[0][chRSUS], row.high);
    }
}

TEST_F(Statistics, OfSlipAndSuspensionSpeedsKeepWhatEarlierLoadsLeft) {
    QuietSlot(1000);
    for (int i = 0; i < 1000; i++) VFW[0][i] = VRW[0][i] = 1000;
    VRW[0][500] = 1250;
    VFSus[0][500] = 77;
    ComputeStatistics(0);
    EXPECT_EQ(channelMax[0][chSlip], 250);
    QuietSlot(1000);
    ComputeStatistics(0);
    EXPECT_EQ(channelMax[0][chSlip], 250);
    EXPECT_EQ(channelMax[0][chVFSus], 77);
    EXPECT_EQ(channelMin[0][chSlip], 0);
    EXPECT_EQ(channelMax[0][chVFW], 0);
}

class ShowFlags : public DerivedChannels {
  protected:
    void SetUp() override {
        DerivedChannels::SetUp();
        for (int channel = 0; channel < channelTotal; channel++) showChannel[0][channel] = 1;
    }
    static std::vector<int> Shown() { return {showChannel[0], showChannel[0] + channelTotal}; }
};

TEST_F(ShowFlags, FollowTheDataAfterALongLoad) {
    QuietSlot(2001);
    for (int channel : {chNe, chAUX2}) showChannel[0][channel] = 0;
    Ne[0][500] = 3000;
    AUX2[0][500] = -5;
    ComputeStatistics(0);
    //                                Ne TH VFW VRW FSUS RSUS LAF1 LAF2 VB AUX1 AUX2 Slip VFSus VRSus
    EXPECT_EQ(Shown(), (std::vector<int>{1, 0, 0, 0, 0, 0, 0, 0, 1, 0, 1, 0, 0, 0}));
}

TEST_F(ShowFlags, OfEachFlatChannelGoOffAlone) {
    for (int flat = 0; flat < chSlip; flat++) {
        SCOPED_TRACE(flat);
        QuietSlot(3000);
        ForEachColumn(0, [&](int channel, auto& array) {
            if (channel != flat) array[1000] = 60;
        });
        VB[0][1000] = 1000;
        if (flat == chVB) VB[0][1000] = 0, formatVersion[0] = 1;
        for (int channel = 0; channel < channelTotal; channel++) showChannel[0][channel] = 1;
        ComputeStatistics(0);
        for (int channel = 0; channel < chSlip; channel++)
            EXPECT_EQ(showChannel[0][channel], channel != flat || flat == chVB);
        EXPECT_EQ(showChannel[0][chVFSus], flat != chFSUS);
        EXPECT_EQ(showChannel[0][chVRSus], flat != chRSUS);
        EXPECT_EQ(showChannel[0][chSlip], 1);
    }
}

TEST_F(ShowFlags, OfSuspensionSpeedsStayOffWhereTheStrokeMoves) {
    QuietSlot(3000);
    showChannel[0][chVFSus] = 0;
    FSUS[0][1000] = 5;
    VB[0][1000] = 1200;
    ComputeStatistics(0);
    EXPECT_EQ(showChannel[0][chFSUS], 1);
    EXPECT_EQ(showChannel[0][chVFSus], 0);
}

TEST_F(ShowFlags, OfSlipGoesOffWithBothWheels) {
    QuietSlot(3000);
    VRW[0][1000] = 5;
    ComputeStatistics(0);
    EXPECT_EQ(showChannel[0][chSlip], 1);
    VRW[0][1000] = 0;
    ComputeStatistics(0);
    EXPECT_EQ(showChannel[0][chSlip], 0);
}

TEST_F(ShowFlags, StayAsTheyAreAfterAShortLoad) {
    for (int samples : {1500, 2000}) {
        QuietSlot(samples);
        ComputeStatistics(0);
        EXPECT_EQ(Shown(), std::vector<int>(channelTotal, 1)) << samples;
    }
}

TEST_F(ShowFlags, StayAsTheyAreWithoutAutoDisplay) {
    QuietSlot(5000);
    AutoOnOffLoad = 0;
    ComputeStatistics(0);
    EXPECT_EQ(Shown(), std::vector<int>(channelTotal, 1));
}

TEST_F(DerivedChannels, SlipRatioIsDefinedAboveFiveKilometresAnHour) {
    QuietSlot(10);
    VFW[0][1] = 50, VRW[0][1] = 100;
    VFW[0][2] = 51, VRW[0][2] = 102;
    VFW[0][3] = 1000, VRW[0][3] = 1001;
    VFW[0][4] = 3000, VRW[0][4] = 2999;
    EXPECT_EQ(SlipRatio(0, 1), 0.0);
    EXPECT_EQ(SlipRatio(0, 2), 1000.0);
    EXPECT_EQ(SlipRatio(0, 3), 1.0);
    EXPECT_DOUBLE_EQ(SlipRatio(0, 4), -1.0 / 3);
}

class GearOfAnEngine : public DerivedChannels {
  protected:
    void SetUp() override {
        DerivedChannels::SetUp();
        QuietSlot(10);
        primaryRatio[0] = 1000;
        frontSprocket[0] = 10;
        rearSprocket[0] = 10;
        rearTyreMm[0] = 1000;
        const int limits[gearTotal] = {5500, 2375, 1833, 1555, 1373, 1282};
        std::copy(limits, limits + gearTotal, gearLimit[0]);
    }
    // Gear at a rear wheel speed of 60.0 km/h; the ratio is the engine speed.
    static int GearAt(uint16_t engine) {
        Ne[0][3] = engine;
        VRW[0][3] = 600;
        return GearPosition(0, 3);
    }
};

TEST_F(GearOfAnEngine, CountsTheLimitsThatTheRatioIsBelow) {
    EXPECT_EQ(GearAt(5500), 0);
    EXPECT_EQ(GearAt(5499), 1);
    EXPECT_EQ(GearAt(2375), 1);
    EXPECT_EQ(GearAt(2374), 2);
    EXPECT_EQ(GearAt(1282), 5);
    EXPECT_EQ(GearAt(1281), 6);
    EXPECT_EQ(gearRatioSeen[0], 1281);
}

TEST_F(GearOfAnEngine, IsZeroWithoutEngineOrRearWheelSpeed) {
    EXPECT_EQ(GearAt(0), 0);
    Ne[0][3] = 1000;
    VRW[0][3] = 0;
    EXPECT_EQ(GearPosition(0, 3), 0);
}

TEST_F(GearOfAnEngine, IsNeutralWhenTheDriveSpeedComesOutAsZero) {
    primaryRatio[0] = 0;
    EXPECT_EQ(GearAt(1281), 0);
    EXPECT_EQ(gearRatioSeen[0], 100000);
}

TEST_F(GearOfAnEngine, ReadsALargeRatioAsNeutral) {
    VRW[0][3] = 1;
    Ne[0][3] = 65535;
    primaryRatio[0] = 60;
    rearTyreMm[0] = 6000;  // 65535 x 10 x 6000 is above 2^31
    EXPECT_EQ(GearPosition(0, 3), 0);
    EXPECT_EQ(gearRatioSeen[0], 2147483647);
}

}  // namespace
