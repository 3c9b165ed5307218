// The frames of native logs: where each bit goes, what absent fields repeat, when the battery blanks a value, how a log ends.
#include "run_data/native_frames.h"

#include <gtest/gtest.h>

#include "app/frame_loop.h"
#include "platform/headless/script.h"
#include "run_data/run_store.h"
#include "settings/settings.h"
#include "tests/run_data/log_builder.h"

namespace {

class NativeFrames : public testing::Test {
  protected:
    void SetUp() override {
        LoadDefaults();
        SmoothingSTD = 0;  // the samples stay as decoded
        shown.clear();
    }
    void TearDown() override { LoadDefaults(); }
};

using Bytes = std::vector<uint8_t>;

// A header whose throttle reads as ten times the raw value, and strokes as 0 with the sensor's zero at 0.
LogBytes PlainHeader(int version) {
    LogBytes log = HeaderOf(version);
    log[33] = 100;
    Put16(log, 34, 100);
    log[39] = log[40] = log[41] = log[42] = 0;
    for (int input = 0; input < 4; input++) log[108 + input] = 9;  // raw
    return log;
}
void Append(LogBytes& log, const Bytes& bytes) { log.insert(log.end(), bytes.begin(), bytes.end()); }

// A fixed frame of zeros but for these bytes.
Bytes Frame16(std::initializer_list<std::pair<int, int>> bytes) {
    Bytes frame(16, 0);
    for (auto [at, value] : bytes) frame[at] = static_cast<uint8_t>(value);
    return frame;
}
void ReadFrames16(int version, const std::vector<Bytes>& frames) {
    LogBytes log = PlainHeader(version);
    for (const Bytes& frame : frames) Append(log, frame);
    ReadIntoSlot(1, log);
    ASSERT_EQ(sampleCount[1], static_cast<int>(frames.size()) + 1);
}

// -- fixed frames --

TEST_F(NativeFrames, FixedFramesOfVersions1And2HaveTheirBitsInPlace) {
    for (int version : {1, 2}) {
        SCOPED_TRACE(version);
        ReadFrames16(version, {Frame16({{0, 0x12}, {1, 0x34}, {2, 0x8A}, {3, 0xBC}, {4, 0x0D}, {5, 0xEF}, {6, 7}, {9, 9}, {10, 10},
                                        {11, 11}, {12, 12}, {13, 170}})});
        EXPECT_EQ(Ne[1][1], 0x1234);
        EXPECT_EQ(VFW[1][1], 0xABC);
        EXPECT_EQ(VRW[1][1], 0xDEF);
        EXPECT_EQ(TH[1][1], 70);
        EXPECT_EQ(LAF1[1][1], 9);
        EXPECT_EQ(LAF2[1][1], 10);
        EXPECT_EQ(AUX1[1][1], 11);
        EXPECT_EQ(AUX2[1][1], 12);
        EXPECT_EQ(VB[1][1], 1333);
    }
}

TEST_F(NativeFrames, SpeedsOfVersions1And2Have12Bits) {
    for (int version : {1, 2}) {
        ReadFrames16(version, {Frame16({{2, 0x7F}, {3, 0xFF}, {4, 0xFF}, {5, 0xFF}})});
        EXPECT_EQ(VFW[1][1], 4095);
        EXPECT_EQ(VRW[1][1], 4095);
    }
}

TEST_F(NativeFrames, StrokesOfVersions1And2HaveTheirLowBitsInByte4) {
    // Raw x with the zero at 0 stores F - (x + 1023) F / 1023, that is -x F / 1023 towards zero from above.
    const struct { int byte4, byte7, byte8, front, rear; } rows[] = {
        {0x00, 0, 0, 0, 0},
        {0x40, 0, 0, -18, 0},      // 1: 18768 / 1023 is 18.3
        {0xC0, 0, 0, -55, 0},      // 3: 55.04
        {0x10, 0, 0, 0, -12},      // 1: 12500 / 1023 is 12.2
        {0x30, 0, 0, 0, -36},      // 3: 36.7
        {0x00, 1, 0, -73, 0},      // 4: 73.4
        {0x00, 0, 1, 0, -48},      // 4: 48.9
        {0xF0, 255, 255, -18768, -12500}};
    for (int version : {1, 2})
        for (const auto& row : rows) {
            ReadFrames16(version, {Frame16({{4, row.byte4}, {7, row.byte7}, {8, row.byte8}, {13, 170}})});
            EXPECT_EQ(FSUS[1][1], row.front) << row.byte4 << " " << row.byte7;
            EXPECT_EQ(RSUS[1][1], row.rear) << row.byte4 << " " << row.byte8;
        }
}

TEST_F(NativeFrames, FixedFramesOfVersions0And32HaveTheirBitsInPlace) {
    for (int version : {0, 32}) {
        SCOPED_TRACE(version);
        Bytes frame = Frame16({{0, 0x12}, {1, 0x34}, {2, 0xFA}, {3, 0xBC}, {4, 0xFD}, {5, 0xEF}, {6, 7}, {9, 100}, {10, 1}});
        std::fill(frame.begin() + 11, frame.end(), 255);  // unused
        ReadFrames16(version, {frame});
        EXPECT_EQ(Ne[1][1], 0x1234);
        EXPECT_EQ(VFW[1][1], 0x7ABC);
        EXPECT_EQ(VRW[1][1], 0x7DEF);
        EXPECT_EQ(TH[1][1], 70);
        EXPECT_EQ(LAF1[1][1], 1250);
        EXPECT_EQ(LAF2[1][1], 903);
        EXPECT_EQ(AUX1[1][1], 0);
        EXPECT_EQ(AUX2[1][1], 0);
        EXPECT_EQ(VB[1][1], 0);
        EXPECT_EQ(sampleFlag[1][1], 0);
    }
    for (int version : {0, 32}) {
        ReadFrames16(version, {Frame16({{7, 1}, {8, 2}})});
        EXPECT_EQ(FSUS[1][1], version == 0 ? -73 : 18768 - 73) << "4 x 18768 / 1023, or from the top without a zero";
        EXPECT_EQ(RSUS[1][1], version == 0 ? -97 : 12500 - 97) << "8 x 12500 / 1023 or 1024";
    }
}

TEST_F(NativeFrames, TheFlagIsBit7OfByte14InVersion2Alone) {
    for (int version : {0, 1, 2, 32}) {
        ReadFrames16(version, {Frame16({{14, 0x80}}), Frame16({{14, 0x7F}}), Frame16({{14, 0xFF}}), Frame16({{15, 0xFF}})});
        const Bytes flags(sampleFlag[1].begin() + 1, sampleFlag[1].begin() + 5);
        EXPECT_EQ(flags, version == 2 ? (Bytes{1, 0, 1, 0}) : (Bytes{0, 0, 0, 0})) << "version " << version;
    }
}

// -- change-mask frames --

// Bytes of each mask bit's field.
struct MaskBit { int bit, set3, set4, clear; };
const MaskBit maskBits[] = {{15, 0, 0, 0}, {14, 2, 2, 1}, {13, 2, 2, 1}, {12, 2, 2, 1}, {11, 1, 2, 0}, {10, 1, 2, 0},
                            {9, 1, 2, 0},  {8, 1, 2, 0},  {7, 1, 2, 0},  {6, 1, 2, 0},  {5, 1, 2, 0},  {4, 1, 2, 0},
                            {3, 1, 1, 0},  {2, 1, 1, 0},  {1, 2, 2, 0},  {0, 4, 4, 0}};

int BytesOf(int mask, int version) {
    int bytes = 2;
    for (const MaskBit& b : maskBits) bytes += mask >> b.bit & 1 ? (version == 4 ? b.set4 : b.set3) : b.clear;
    return bytes;
}
// A frame of this mask with zeros in its fields.
void AddZeros(LogBytes& log, int mask, int version) {
    size_t at = log.size();
    log.resize(at + BytesOf(mask, version), 0);
    Put16(log, static_cast<int>(at), mask);
}

TEST_F(NativeFrames, EachMaskBitHasAFieldOfItsSize) {
    for (int version : {3, 4})
        for (const MaskBit& b : maskBits) {
            SCOPED_TRACE("version " + std::to_string(version) + " bit " + std::to_string(b.bit));
            LogBytes log = PlainHeader(version);
            AddZeros(log, 1 << b.bit, version);
            size_t next = log.size();
            AddZeros(log, 1 << 14, version);
            Put16(log, static_cast<int>(next) + 2, 4660);
            ReadIntoSlot(1, log);
            EXPECT_EQ(sampleCount[1], 3);
            EXPECT_EQ(Ne[1][2], 4660) << "the frame behind stands in its place";
        }
}

TEST_F(NativeFrames, TheSizeOfEveryMaskIsTheSumOfItsFields) {
    for (int version : {3, 4})
        for (int mask = 0; mask < 65536; mask++) {
            const uint8_t bytes[2] = {static_cast<uint8_t>(mask >> 8), static_cast<uint8_t>(mask)};
            ASSERT_EQ(ChangeMaskFrameSize(bytes, version), BytesOf(mask, version)) << mask;
        }
    const uint8_t none[2] = {0, 0}, all[2] = {255, 255};
    EXPECT_EQ(ChangeMaskFrameSize(none, 3), 5);
    EXPECT_EQ(ChangeMaskFrameSize(all, 4), 32);
}

TEST_F(NativeFrames, TheSmallestFramesAreFiveBytesOfDeltas) {
    for (int version : {3, 4}) {
        LogBytes log = PlainHeader(version);
        Append(log, {0, 0, 3, 4, 5});
        Append(log, {0x80, 0, 0xFF, 0xFE, 1});  // bit 15 means nothing
        ReadIntoSlot(1, log);
        EXPECT_EQ(sampleCount[1], 3);
        EXPECT_EQ(std::vector<int>(Ne[1].begin() + 1, Ne[1].begin() + 3), (std::vector<int>{3, 2}));
        EXPECT_EQ(std::vector<int>(VFW[1].begin() + 1, VFW[1].begin() + 3), (std::vector<int>{4, 2}));
        EXPECT_EQ(std::vector<int>(VRW[1].begin() + 1, VRW[1].begin() + 3), (std::vector<int>{5, 6}));
    }
}

TEST_F(NativeFrames, FieldsFollowInTheOrderOfTheMask) {
    const Bytes frames[2] = {
        {0x7F, 0xFF, 0, 1, 0, 2, 0, 3, 4, 0, 0, 7, 8, 9, 10, 170, 0x80, 99, 99, 99, 99, 99, 99, 99},
        {0x7F, 0xFF, 0, 1, 0, 2, 0, 3, 4, 0, 0, 0, 0, 0, 1, 7, 1, 8, 1, 9, 1, 10, 170, 170, 0x80, 99, 99, 99, 99, 99, 99, 99}};
    for (int version : {3, 4}) {
        SCOPED_TRACE(version);
        LogBytes log = PlainHeader(version);
        Append(log, frames[version - 3]);
        ReadIntoSlot(1, log);
        const int high = version == 4 ? 256 : 0;
        EXPECT_EQ(sampleCount[1], 2);
        EXPECT_EQ(Ne[1][1], 1);
        EXPECT_EQ(VFW[1][1], 2);
        EXPECT_EQ(VRW[1][1], 3);
        EXPECT_EQ(TH[1][1], 40);
        EXPECT_EQ(LAF1[1][1], high + 7);
        EXPECT_EQ(LAF2[1][1], high + 8);
        EXPECT_EQ(AUX1[1][1], high + 9);
        EXPECT_EQ(AUX2[1][1], high + 10);
        EXPECT_EQ(VB[1][1], 1333);
        EXPECT_EQ(sampleFlag[1][1], 1);
    }
}

TEST_F(NativeFrames, AbsentFieldsRepeatTheSampleBefore) {
    for (int version : {3, 4}) {
        SCOPED_TRACE(version);
        LogBytes log = PlainHeader(version);
        const int unit = version == 4 ? 256 : 1, stroke = version == 4 ? 64 : 1;
        MaskFrame f;
        f.th = 20 * unit;
        f.fsus = 10 * stroke, f.rsus = 20 * stroke;
        f.laf1 = 31, f.laf2 = 32, f.aux1 = 33, f.aux2 = 34;
        f.vb = 170 * unit;
        f.flag = 0x80;
        AddFrame(log, MaskFrame());
        AddFrame(log, f);
        AddFrames(log, 3, MaskFrame());
        ReadIntoSlot(1, log);
        EXPECT_EQ(TH[1][1] | LAF1[1][1] | LAF2[1][1] | AUX1[1][1] | AUX2[1][1] | VB[1][1] | sampleFlag[1][1], 0) << "all start at 0";
        for (int i = 3; i <= 5; i++) {
            EXPECT_EQ(TH[1][i], 200);
            EXPECT_EQ(FSUS[1][i], FSUS[1][2]);
            EXPECT_EQ(RSUS[1][i], RSUS[1][2]);
            EXPECT_EQ(LAF1[1][i], 31);
            EXPECT_EQ(LAF2[1][i], 32);
            EXPECT_EQ(AUX1[1][i], 33);
            EXPECT_EQ(AUX2[1][i], 34);
            EXPECT_EQ(VB[1][i], VB[1][2]);
            EXPECT_EQ(sampleFlag[1][i], 1);
        }
        EXPECT_NE(FSUS[1][2], 0);
        EXPECT_NE(VB[1][2], 0);
    }
}

TEST_F(NativeFrames, SpeedWordsWrapAt16Bits) {
    for (int version : {3, 4}) {
        LogBytes log = PlainHeader(version);
        MaskFrame f;
        f.vfwDelta = f.vrwDelta = -1;
        AddFrame(log, f);  // both words become 65535
        f.vfwDelta = f.vrwDelta = 3;
        AddFrame(log, f);  // 2
        ReadIntoSlot(1, log);
        EXPECT_EQ(VFW[1][1], 32767);
        EXPECT_EQ(VRW[1][1], 4095);
        EXPECT_EQ(VFW[1][2], 2);
        EXPECT_EQ(VRW[1][2], 2);
    }
}

TEST_F(NativeFrames, StrokesOfVersion3TakeTheirLowBitsFromEachVrwWord) {
    LogBytes log = PlainHeader(3);
    MaskFrame f;
    f.fsus = f.rsus = 1;
    f.vrw = 0x4000 | 0x2000 | 77;  // front 1, rear 2
    f.vb = 170;
    AddFrame(log, f);
    MaskFrame wordOnly;
    wordOnly.vrw = 0xC000 | 78;  // front 3, rear 0, without mask bits 10 and 9
    AddFrame(log, wordOnly);
    MaskFrame delta;
    delta.vrwDelta = 127;
    AddFrame(log, delta);
    ReadIntoSlot(1, log);
    // Raw 5, 7, 7 and 6, 4, 4 of 1023: F - (x + 1023) F / 1023.
    EXPECT_EQ(std::vector<int>(FSUS[1].begin() + 1, FSUS[1].begin() + 4), (std::vector<int>{-91, -128, -128}));
    EXPECT_EQ(std::vector<int>(RSUS[1].begin() + 1, RSUS[1].begin() + 4), (std::vector<int>{-73, -48, -48}));
    EXPECT_EQ(std::vector<int>(VRW[1].begin() + 1, VRW[1].begin() + 4), (std::vector<int>{77, 78, 205}));
}

TEST_F(NativeFrames, ADeltaThatCarriesMovesTheLowBitsOfTheRearStroke) {
    LogBytes log = PlainHeader(3);
    MaskFrame f;
    f.vrw = 0x0FFF;
    f.vb = 170;
    AddFrame(log, f);
    MaskFrame delta;
    delta.vrwDelta = 1;  // 0x1000: speed 0, raw rear stroke 1
    AddFrame(log, delta);
    ReadIntoSlot(1, log);
    EXPECT_EQ(VRW[1][2], 0);
    EXPECT_EQ(RSUS[1][1], 0);
    EXPECT_EQ(RSUS[1][2], -12);
}

TEST_F(NativeFrames, StrokesOfVersion4HaveNothingToDoWithTheVrwWord) {
    LogBytes log = PlainHeader(4);
    MaskFrame f;
    f.fsus = f.rsus = 640;
    f.vb = 43690;
    f.vrw = 0;
    AddFrame(log, f);
    f.vrw = 0xF123;
    AddFrame(log, f);
    ReadIntoSlot(1, log);
    EXPECT_EQ(VRW[1][2], 0x123);
    EXPECT_EQ(FSUS[1][2], -183);  // 640 x 18768 / 65535 is 183.3
    EXPECT_EQ(FSUS[1][1], -183);
    EXPECT_EQ(RSUS[1][1], -122);
    EXPECT_EQ(RSUS[1][2], -122);
}

// -- battery --

// Readings that store 100 throttle and strokes other than 0, at this raw battery voltage.
Bytes LiveFrame16(int vb) { return Frame16({{1, 50}, {3, 60}, {5, 70}, {6, 10}, {7, 20}, {8, 30}, {9, 40}, {13, vb}}); }

TEST_F(NativeFrames, LowVoltageBlanksThrottleAndStrokesOfVersions1And2UnlessItIsShown) {
    for (int version : {1, 2})
        for (int shownToo : {0, 1}) {
            VBerrexp = shownToo;
            ReadFrames16(version, {LiveFrame16(115), LiveFrame16(114), LiveFrame16(0)});  // 9.01, 8.94, 0 V
            for (int i = 1; i <= 3; i++) {
                SCOPED_TRACE("version " + std::to_string(version) + " sample " + std::to_string(i));
                const bool live = i == 1 || shownToo;
                EXPECT_EQ(TH[1][i], live ? 100 : 0);
                EXPECT_EQ(FSUS[1][i], live ? -1467 : 0);  // 80 x 18768 / 1023 is 1467.7
                EXPECT_EQ(RSUS[1][i], live ? -1466 : 0);  // 120 x 12500 / 1023 is 1466.3
                EXPECT_EQ(Ne[1][i], 50);
                EXPECT_EQ(VFW[1][i], 60);
                EXPECT_EQ(VRW[1][i], 70);
                EXPECT_EQ(LAF1[1][i], 40);
            }
        }
}

TEST_F(NativeFrames, LowVoltageMeansNothingInVersions0And32) {
    for (int version : {0, 32}) {
        ReadFrames16(version, {LiveFrame16(0)});
        EXPECT_EQ(TH[1][1], 100);
        EXPECT_NE(FSUS[1][1], 0);
        EXPECT_NE(RSUS[1][1], 0);
    }
}

// Frames of version 3 or 4 with throttle 10 and strokes, all at raw battery 170.
MaskFrame LiveFrame(int version, int vb = 170) {
    const int unit = version == 4 ? 256 : 1, stroke = version == 4 ? 64 : 1;
    MaskFrame f;
    f.th = 10 * unit;
    f.fsus = f.rsus = 20 * stroke;
    f.vb = vb * unit;
    return f;
}

TEST_F(NativeFrames, ThrottleOfVersions3And4IsJudgedByTheVoltageOfTheFrameBefore) {
    for (int version : {3, 4}) {
        SCOPED_TRACE(version);
        LogBytes log = PlainHeader(version);
        AddFrames(log, 250, LiveFrame(version));
        AddFrame(log, LiveFrame(version, 100));  // 251
        AddFrame(log, LiveFrame(version, 170));  // 252
        AddFrame(log, LiveFrame(version, 170));  // 253
        ReadIntoSlot(1, log);
        EXPECT_EQ(std::vector<int>(TH[1].begin() + 250, TH[1].begin() + 254), (std::vector<int>{100, 100, 0, 100}));
        EXPECT_NE(FSUS[1][250], 0);
        EXPECT_EQ(FSUS[1][251], 0) << "strokes are judged by their own frame";
        EXPECT_EQ(RSUS[1][251], 0);
        EXPECT_EQ(FSUS[1][252], FSUS[1][250]);
    }
}

TEST_F(NativeFrames, ThrottleOfVersions3And4IsBelievedInTheFirstSecond) {
    for (int version : {3, 4})
        for (int shownToo : {0, 1}) {
            VBerrexp = shownToo;
            LogBytes log = PlainHeader(version);
            AddFrames(log, 300, LiveFrame(version, 0));
            ReadIntoSlot(1, log);
            EXPECT_EQ(TH[1][1], 100);
            EXPECT_EQ(TH[1][199], 100);
            EXPECT_EQ(TH[1][200], shownToo ? 100 : 0);
            EXPECT_EQ(FSUS[1][1] != 0, shownToo != 0);
        }
}

TEST_F(NativeFrames, AnAbsentThrottleIsRepeatedWithoutANewJudgement) {
    for (int version : {3, 4}) {
        LogBytes log = PlainHeader(version);
        AddFrames(log, 250, LiveFrame(version));
        MaskFrame lowOnly;
        lowOnly.vb = 0;
        AddFrames(log, 3, lowOnly);  // 251 to 253
        AddFrame(log, LiveFrame(version));  // 254: blanked, and repeated so
        AddFrames(log, 2, MaskFrame());
        ReadIntoSlot(1, log);
        EXPECT_EQ(std::vector<int>(TH[1].begin() + 251, TH[1].begin() + 257), (std::vector<int>{100, 100, 100, 0, 0, 0}));
        EXPECT_EQ(FSUS[1][253], 0) << "strokes are worked out in every frame";
        EXPECT_NE(FSUS[1][256], 0);
    }
}

TEST_F(NativeFrames, VoltageIsCarriedOneSampleOnInVersions3And4) {
    for (int version : {3, 4}) {
        LogBytes log = PlainHeader(version);
        AddFrames(log, 5, LiveFrame(version));
        ReadIntoSlot(1, log);
        EXPECT_EQ(VB[1][6], version == 4 ? 1328 : 1333);
        EXPECT_EQ(VB[1][7], 0);
    }
    ReadFrames16(2, {LiveFrame16(170)});
    EXPECT_EQ(VB[1][2], 0);
}

// -- the end of a log --

TEST_F(NativeFrames, AHeaderWithoutFramesIsALogOfOneSampleAndOneLap) {
    for (int version : {0, 1, 2, 3, 4, 32}) {
        SCOPED_TRACE(version);
        ReadIntoSlot(1, HeaderOf(version));
        EXPECT_EQ(sampleCount[1], 1);
        EXPECT_EQ(lapCount[1], 1);
        EXPECT_EQ(slotInUse[1], 1);
        EXPECT_TRUE(shown.empty());
        ForEachSampleArray(1, [](auto& array, bool) {
            for (auto value : array) EXPECT_EQ(value, 0);
        });
    }
}

TEST_F(NativeFrames, VersionsOf1024BytesOfHeaderEndEarlierWithoutFrames) {
    for (int version : {3, 4})
        for (int bytes : {512, 700, 1023, 1024}) {
            LogBytes log = HeaderOf(version);
            log.resize(bytes);
            ReadIntoSlot(1, log);
            EXPECT_EQ(sampleCount[1], 1);
            EXPECT_EQ(Ne[1].size(), bytes < 1024 ? 16u : 17u) << "the walk counts a frame that begins at the end";
        }
}

TEST_F(NativeFrames, ATruncatedFixedFrameIsDecodedWithZeros) {
    for (int version : {0, 1, 2, 32})
        for (int bytes : {1, 2, 4, 15}) {
            SCOPED_TRACE("version " + std::to_string(version) + " bytes " + std::to_string(bytes));
            LogBytes log = PlainHeader(version);
            Append(log, Frame16({{0, 1}, {1, 2}, {3, 3}}));
            Append(log, Frame16({{0, 4}, {1, 5}, {3, 6}}));
            log.resize(512 + 16 + bytes);
            ReadIntoSlot(1, log);
            EXPECT_EQ(sampleCount[1], 3);
            EXPECT_EQ(Ne[1][2], bytes == 1 ? 0x400 : 0x405);
            EXPECT_EQ(VFW[1][2], bytes < 4 ? 0 : 6);
            EXPECT_EQ(VFW[1][3], 0);
            EXPECT_TRUE(shown.empty());
        }
}

TEST_F(NativeFrames, ATruncatedChangeMaskFrameIsDecodedWithZeros) {
    for (int version : {3, 4}) {
        LogBytes log = PlainHeader(version);
        MaskFrame f;
        f.ne = 0x1122, f.vfw = 0x0344, f.laf1 = 0x55, f.vb = 99;
        AddFrame(log, f);
        size_t second = log.size();
        AddFrame(log, f);
        log.resize(second + 5);  // the mask, Ne, and half of VFW
        ReadIntoSlot(1, log);
        EXPECT_EQ(sampleCount[1], 3);
        EXPECT_EQ(Ne[1][2], 0x1122);
        EXPECT_EQ(VFW[1][2], 0x0300);
        EXPECT_EQ(LAF1[1][1], 0x55);
        EXPECT_EQ(LAF1[1][2], 0);
        EXPECT_EQ(VB[1][2], 0);
        EXPECT_TRUE(shown.empty());
    }
}

TEST_F(NativeFrames, ArraysHoldTheFramesAnd16More) {
    ReadFrames16(2, std::vector<Bytes>(100, Frame16({})));
    EXPECT_EQ(Ne[1].size(), 116u);
    LogBytes log = PlainHeader(3);
    AddFrames(log, 100, MaskFrame());
    ReadIntoSlot(1, log);
    EXPECT_EQ(Ne[1].size(), 117u) << "the walk counts a frame that begins at the end";
    log.push_back(0);
    ReadIntoSlot(1, log);
    EXPECT_EQ(Ne[1].size(), 117u) << "begun, it is that frame";
    EXPECT_EQ(sampleCount[1], 102);
}

TEST_F(NativeFrames, FramesAreCountedUpToALimit) {
    EXPECT_EQ(CountFixedFrames(512 + 16 * 1000 + 15, 5000), 1000);
    EXPECT_EQ(CountFixedFrames(512 + 16 * 1000, 999), 999);
    EXPECT_EQ(CountFixedFrames(400, 999), 0);
    LogBytes log = PlainHeader(3);
    AddFrames(log, 1000, MaskFrame());
    const int length = static_cast<int>(log.size());
    log.resize(length + 1024, 0);
    FrameSteps steps;
    EXPECT_EQ(WalkChangeMaskFrames(log.data(), length, 3, 5000, steps), 1001);
    EXPECT_EQ(WalkChangeMaskFrames(log.data(), length, 3, 1000, steps), 1000);
    EXPECT_EQ(WalkChangeMaskFrames(log.data(), length, 3, 7, steps), 7);
    EXPECT_EQ(WalkChangeMaskFrames(log.data(), 1023, 3, 7, steps), 0);
}

TEST_F(NativeFrames, SampleZeroAndWhatLiesBehindTheLogAreZero) {
    // The arrays hold another log before.
    LogBytes before = PlainHeader(2);
    for (int i = 0; i < 40; i++) Append(before, LiveFrame16(170));
    ReadIntoSlot(1, before);
    ReadFrames16(2, std::vector<Bytes>(30, LiveFrame16(170)));
    ForEachSampleArray(1, [](auto& array, bool) {
        EXPECT_EQ(array[0], 0);
        for (size_t i = 32; i < array.size(); i++) EXPECT_EQ(array[i], 0) << i;
    });
    EXPECT_EQ(Ne[1][31], 0);
    EXPECT_EQ(distFront[1][31], 30u * 60) << "distances repeat their last value";
}

}  // namespace
