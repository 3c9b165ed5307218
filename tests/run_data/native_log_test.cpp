// Native logs as a whole: what a failure leaves, the sensors' extremes, the size estimate, the steps that follow.
#include "run_data/native_log.h"

#include <gtest/gtest.h>

#include <random>

#include "app/frame_loop.h"
#include "platform/headless/script.h"
#include "run_data/run_store.h"
#include "settings/settings.h"
#include "tests/run_data/log_builder.h"
#include "tests/run_data/sample_memory.h"

namespace {

class NativeLog : public testing::Test {
  protected:
    void SetUp() override {
        LoadDefaults();
        SmoothingSTD = 0;
        shown.clear();
    }
    void TearDown() override { LoadDefaults(); }
};

// -- failures --

void ExpectReset(int slot) {
    EXPECT_EQ(sampleCount[slot], 1);
    EXPECT_EQ(lapCount[slot], 1);
    EXPECT_EQ(lapStart[slot][1], 0u);
    EXPECT_EQ(slotInUse[slot], slot == 0 ? 1 : 0);
    EXPECT_EQ(Ne[slot].size(), 16u);
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].text, "Memory Ensure Error.(Data Main buffers)");
    EXPECT_EQ(shown[0].title, "Memory Error!!");
}

TEST_F(NativeLog, AVersionThatIsNoneFailsAsMemoryDoesAndTheSlotIsReset) {
    for (int version = 5; version < 256; version++) {
        if (version == 32) continue;
        SCOPED_TRACE(version);
        for (int slot : {0, 1}) {
            ReadIntoSlot(slot, QuietLog(2, 700));
            LogBytes log = QuietLog(2, 700);
            log[15] = static_cast<uint8_t>(version);
            shown.clear();
            ReadIntoSlot(slot, log);
            ExpectReset(slot);
            EXPECT_EQ(formatVersion[slot], version);
        }
    }
}

TEST_F(NativeLog, WithoutMemoryTheSlotIsResetAndTheOthersKeepTheirData) {
    for (int slot : {0, 2}) ReadIntoSlot(slot, QuietLog(2, 700));
    ReadIntoSlot(1, QuietLog(2, 700));
    {
        CountedMemory memory;
        memory.failAt = 3;
        ReadIntoSlot(1, QuietLog(2, 100000));
    }
    ExpectReset(1);
    for (int slot : {0, 2}) {
        EXPECT_EQ(sampleCount[slot], 701);
        EXPECT_EQ(slotInUse[slot], 1);
        EXPECT_EQ(VB[slot][700], 1333);
    }
}

TEST_F(NativeLog, WithoutMemoryForTheBatteryAloneTheRestIsReadWithoutAMessage) {
    CountedMemory memory;
    memory.failAt = 9;
    LogBytes log = QuietLog(2, 5000);
    FrameOf(log, 5000)[3] = 77;
    ReadIntoSlot(1, log);
    EXPECT_TRUE(shown.empty());
    EXPECT_EQ(sampleCount[1], 5001);
    EXPECT_EQ(VFW[1][5000], 77);
    EXPECT_EQ(VB[1].size(), 512u);
    EXPECT_EQ(VB[1][511], 1333);
}

TEST_F(NativeLog, ReadingFile1TouchesFile2And3InNoWay) {
    for (int slot : {1, 2}) {
        LogBytes log = QuietLog(2, 700 + slot);
        log[27] = 3;
        PutText(log, 320, "memo");
        ReadIntoSlot(slot, log);
    }
    ReadIntoSlot(0, QuietLog(1, 20000));
    LogBytes broken = QuietLog(2, 700);
    broken[15] = 77;
    ReadIntoSlot(0, broken);
    for (int slot : {1, 2}) {
        EXPECT_EQ(sampleCount[slot], 701 + slot);
        EXPECT_EQ(formatVersion[slot], 2);
        EXPECT_EQ(MarksPerLap[slot], 3);
        EXPECT_STREQ(memoText[slot], "memo");
        EXPECT_EQ(VB[slot][700], 1333);
    }
}

// -- memory --

// Bytes that a load may take: 49 for each sample and a tenth more.
TEST_F(NativeLog, ALoadTakesLittleMoreThanTheSamplesNeed) {
    for (int version : {2, 3, 4})
        for (int before : {0, 190000, 200000 - 1, 400000}) {
            SCOPED_TRACE("version " + std::to_string(version) + " before " + std::to_string(before));
            ReleaseRunStore();
            CountedMemory memory;
            LogBytes log = HeaderOf(version);
            if (version == 2) log = QuietLog(2, 200000);
            else AddFrames(log, 200000, MaskFrame());
            if (before) {
                ReadIntoSlot(1, QuietLog(2, before));
                memory.peak = 0;  // of this load, beside what the last log left
            }
            const int64_t left = memory.inUse;
            ReadIntoSlot(1, log);
            EXPECT_LE(memory.peak, std::max<int64_t>(left, 200000 * 49 * 11 / 10));
            EXPECT_LE(memory.inUse, std::max<int64_t>(left, 200017 * 49));
        }
}

// -- extremes of the raw readings --

// Fixed frames with the same readings, low bits of the strokes 0.
void SetReadings(LogBytes& log, int from, int to, int throttle, int front, int rear, int battery = goodBattery) {
    for (int i = from; i <= to; i++) {
        uint8_t* frame = FrameOf(log, i);
        frame[6] = static_cast<uint8_t>(throttle);
        frame[7] = static_cast<uint8_t>(front);
        frame[8] = static_cast<uint8_t>(rear);
        frame[13] = static_cast<uint8_t>(battery);
    }
}

TEST_F(NativeLog, ThrottleExtremesStartAt120And128) {
    for (int version : {0, 1, 2, 3, 4, 32}) {
        tpsMinSeen[1] = 3;
        tpsMaxSeen[1] = 250;
        ReadIntoSlot(1, HeaderOf(version));
        EXPECT_EQ(tpsMinSeen[1], 120);
        EXPECT_EQ(tpsMaxSeen[1], 128);
    }
}

TEST_F(NativeLog, ThrottleExtremesLeaveOutTheFirstAndTheLastSecond) {
    // 1000 frames: the capacity is 1016, so that samples 201 to 815 count.
    const struct { int sample, least; } rows[] = {{1, 120}, {200, 120}, {201, 50}, {500, 50}, {815, 50}, {816, 120}, {1000, 120}};
    for (int version : {1, 2})
        for (const auto& row : rows) {
            LogBytes log = QuietLog(version, 1000);
            SetReadings(log, 1, 1000, 124, 0, 0);
            SetReadings(log, row.sample, row.sample, 50, 0, 0);
            ReadIntoSlot(1, log);
            EXPECT_EQ(tpsMinSeen[1], row.least) << "sample " << row.sample;
            EXPECT_EQ(tpsMaxSeen[1], 128);
            SetReadings(log, row.sample, row.sample, 200, 0, 0);
            ReadIntoSlot(1, log);
            EXPECT_EQ(tpsMaxSeen[1], row.least == 50 ? 200 : 128) << "sample " << row.sample;
        }
}

TEST_F(NativeLog, ThrottleExtremesNeedMoreThan900OfVoltage) {
    for (int shownToo : {0, 1})
        for (auto [battery, least] : {std::pair{114, 120}, {115, 50}}) {
            VBerrexp = shownToo;
            LogBytes log = QuietLog(2, 1000);
            SetReadings(log, 1, 1000, 124, 0, 0);
            SetReadings(log, 500, 500, 50, 0, 0, battery);
            ReadIntoSlot(1, log);
            EXPECT_EQ(tpsMinSeen[1], least);
        }
}

TEST_F(NativeLog, ThrottleExtremesOfVersions3And4AskTheVoltageOfTheFrameBefore) {
    for (int version : {3, 4}) {
        const int unit = version == 4 ? 256 : 1;
        for (int lowFrame : {499, 500}) {
            LogBytes log = HeaderOf(version);
            for (int i = 1; i <= 1000; i++) {
                MaskFrame f;
                f.vb = (i == lowFrame ? 100 : 170) * unit;
                if (i == 500) f.th = 50 * unit + (version == 4 ? 255 : 0);
                AddFrame(log, f);
            }
            ReadIntoSlot(1, log);
            EXPECT_EQ(tpsMinSeen[1], lowFrame == 499 ? 120 : 50);
        }
    }
}

TEST_F(NativeLog, OnlyAThrottleThatIsThereMovesItsExtremes) {
    for (int version : {3, 4}) {
        LogBytes log = HeaderOf(version);
        MaskFrame f;
        f.vb = version == 4 ? 43690 : 170;
        f.th = 0;
        AddFrame(log, f);
        AddFrames(log, 999, MaskFrame());  // repeats 0 all along
        ReadIntoSlot(1, log);
        EXPECT_EQ(tpsMinSeen[1], 120);
    }
}

TEST_F(NativeLog, ThrottleExtremesOfVersion4CompareAtEightBits) {
    const struct { int raw, least, most; } rows[] = {
        {120 * 256, 120, 128}, {120 * 256 - 1, 119, 128}, {128 * 256 + 255, 120, 128}, {129 * 256, 120, 129}, {65535, 120, 255}, {0, 0, 128}};
    for (const auto& row : rows) {
        LogBytes log = HeaderOf(4);
        for (int i = 1; i <= 1000; i++) {
            MaskFrame f;
            f.vb = 43690;
            if (i == 500) f.th = row.raw;
            AddFrame(log, f);
        }
        ReadIntoSlot(1, log);
        EXPECT_EQ(tpsMinSeen[1], row.least) << row.raw;
        EXPECT_EQ(tpsMaxSeen[1], row.most) << row.raw;
    }
}

TEST_F(NativeLog, ThrottleExtremesOfVersions0And32AreNotTracked) {
    for (int version : {0, 32}) {
        LogBytes log = QuietLog(version, 1000);
        ReadIntoSlot(1, log);
        EXPECT_EQ(tpsMinSeen[1], 120);
    }
}

TEST_F(NativeLog, StrokeExtremesFollowTheFirstSecondAndRiseFromThere) {
    for (int version : {1, 2}) {
        LogBytes log = QuietLog(version, 1000);
        SetReadings(log, 1, 198, 0, 200, 210);
        SetReadings(log, 199, 199, 0, 50, 60, 0);     // the last that is followed, even without voltage
        SetReadings(log, 200, 600, 0, 40, 61);
        SetReadings(log, 601, 601, 0, 90, 91, 114);   // too low
        SetReadings(log, 602, 602, 0, 70, 71, 115);
        SetReadings(log, 603, 1000, 0, 10, 10);
        FrameOf(log, 602)[4] = 0xC0 | 0x10;
        ReadIntoSlot(1, log);
        EXPECT_EQ(fsusMaxSeen[1], 283);  // 4 x 70 + 3
        EXPECT_EQ(rsusMaxSeen[1], 285);  // 4 x 71 + 1
    }
}

TEST_F(NativeLog, ANegativeLinearStrokeTurnsTheExtremesRound) {
    LogBytes log = QuietLog(2, 1000);
    SetReadings(log, 1, 1000, 0, 100, 100);
    SetReadings(log, 500, 500, 0, 90, 90);
    SetReadings(log, 501, 501, 0, 110, 110);
    const struct { int type, stroke, seen; } rows[] = {{1, -100, 360}, {1, 100, 440}, {1, 0, 440}, {0, -100, 440}, {2, -100, 440}};
    for (const auto& row : rows) {
        log[36] = log[37] = static_cast<uint8_t>(row.type);
        Put16(log, 43, row.stroke);
        Put16(log, 45, row.stroke);
        ReadIntoSlot(1, log);
        EXPECT_EQ(fsusMaxSeen[1], row.seen) << "type " << row.type << " stroke " << row.stroke;
        EXPECT_EQ(rsusMaxSeen[1], row.seen) << "type " << row.type << " stroke " << row.stroke;
    }
}

TEST_F(NativeLog, StrokeExtremesOfVersion0AskNoVoltageAndVersion32HasNone) {
    for (int version : {0, 32}) {
        LogBytes log = QuietLog(version, 1000);
        SetReadings(log, 1, 1000, 0, 100, 101, 0);
        SetReadings(log, 500, 500, 0, 110, 111, 0);
        ReadIntoSlot(1, log);
        EXPECT_EQ(fsusMaxSeen[1], version == 0 ? 440 : 0);
        EXPECT_EQ(rsusMaxSeen[1], version == 0 ? 444 : 0);
    }
}

TEST_F(NativeLog, StrokeExtremesOfVersions3And4HaveTenBits) {
    for (int version : {3, 4}) {
        const int unit = version == 4 ? 64 : 1;
        LogBytes log = HeaderOf(version);
        for (int i = 1; i <= 1000; i++) {
            MaskFrame f;
            f.vb = version == 4 ? 43690 : 170;
            const int raw = i == 500 ? 443 : 400;
            f.fsus = f.rsus = version == 4 ? raw * unit + 63 : raw >> 2;
            f.vrw = version == 4 ? 0 : (raw & 3) << 14 | (raw & 3) << 12;
            AddFrame(log, f);
        }
        ReadIntoSlot(1, log);
        EXPECT_EQ(fsusMaxSeen[1], 443) << "version " << version;
        EXPECT_EQ(rsusMaxSeen[1], 443) << "version " << version;
    }
}

// -- size estimate --

TEST_F(NativeLog, TheSizeEstimateCountsWhatChanges) {
    // A quiet sample takes the mask and three deltas; the first also tells the battery.
    const int quiet = 100 * 5 + 1;
    const struct { const char* what; int at, value, more; } rows[] = {
        {"nothing", 15, 255, 0},          // unused
        {"Ne by 126", 1, 126, 0},         {"Ne by 127", 1, 127, 2},  // there and back
        {"VFW by 126", 3, 126, 0},        {"VFW by 128", 3, 128, 2},
        {"VRW by 126", 5, 126, 0},        {"VRW by 127", 5, 127, 2},
        {"TH", 6, 9, 2},                  {"FSUS", 7, 9, 2},         {"RSUS", 8, 9, 2},
        {"LAF1", 9, 9, 2},                {"LAF2", 10, 9, 2},        {"AUX1", 11, 9, 2},        {"AUX2", 12, 9, 2},
        {"VB", 13, 180, 2}};
    for (int version : {1, 2})
        for (const auto& row : rows) {
            LogBytes log = QuietLog(version, 100);
            FrameOf(log, 50)[row.at] = static_cast<uint8_t>(row.value);
            ReadIntoSlot(1, log);
            // Strokes of 0 are raw 0 with the zero at the top, 187.68 and 125 mm, and so change at the first sample too.
            EXPECT_EQ(nativeSizeEstimate, quiet + 2 + row.more) << "version " << version << " " << row.what;
        }
}

TEST_F(NativeLog, TheSizeEstimateStartsAnewAndIsOfVersions1And2Alone) {
    for (int version : {0, 3, 4, 32}) {
        ReadIntoSlot(1, QuietLog(2, 100));
        EXPECT_GT(nativeSizeEstimate, 500);
        LogBytes log = HeaderOf(version);
        log.resize(log.size() + 1600, 0);
        ReadIntoSlot(2, log);
        EXPECT_EQ(nativeSizeEstimate, 0) << "version " << version;
    }
}

// -- the steps that follow --

TEST_F(NativeLog, SuspensionSpeedIsTakenBeforeTheSmoothingAndStatisticsAfterIt) {
    LogBytes log = QuietLog(2, 1000);
    log[39] = log[40] = 0;  // strokes of 0 in raw 0
    log[41] = log[42] = 0;
    for (int i = 501; i <= 1000; i++) FrameOf(log, i)[7] = 25;  // raw 100: -18.34 mm at once
    FrameOf(log, 300)[9] = 255;                                 // LAF1: 5.00 V for one sample
    SmoothingSTD = 2;
    fileKind[1] = 1;
    ReadIntoSlot(1, log);
    std::vector<int> moving;
    for (int i = 1; i < sampleCount[1]; i++)
        if (VFSus[1][i] != 0) moving.push_back(VFSus[1][i]);
    EXPECT_EQ(moving, std::vector<int>(5, -1834 * 2 / 5)) << "one step's speed over five samples; of a smoothed stroke it would be nine";
    EXPECT_EQ(LAF1[1][300], 100) << "smoothed over five samples";
    EXPECT_EQ(channelMax[1][chLAF1], 100);
}

}  // namespace
