#include "run_data/secondary_log.h"

#include <gtest/gtest.h>

#include <cstring>
#include <random>

#include "app/frame_loop.h"
#include "platform/headless/script.h"
#include "run_data/byte_order.h"
#include "run_data/run_store.h"
#include "run_data/secondary_header.h"
#include "run_data/secondary_stream.h"
#include "run_data/setup_values.h"
#include "settings/settings.h"
#include "tests/run_data/sample_memory.h"
#include "tools/sample_log/bike.h"
#include "tools/sample_log/ride.h"
#include "tools/sample_log/sample_log.h"

using namespace secondaryHeader;

namespace {

constexpr int margin = 1024;

// A log under construction: a header and single bits behind it.
struct LogBytes {
    std::vector<uint8_t> bytes = std::vector<uint8_t>(streamAt, 0);
    int bitsHeld = 0;

    void Put16(int at, int value) {
        bytes[at] = static_cast<uint8_t>(value >> 8);
        bytes[at + 1] = static_cast<uint8_t>(value);
    }
    void PutSeconds(int seconds) {
        bytes[secondsAt] = static_cast<uint8_t>(seconds >> 16);
        Put16(secondsAt + 1, seconds);
    }
    void PutBits(const std::string& bits) {
        for (char bit : bits) {
            if (bitsHeld == 0) bytes.push_back(0);
            if (bit == '1') bytes.back() |= static_cast<uint8_t>(0x80 >> bitsHeld);
            bitsHeld = (bitsHeld + 1) % 8;
        }
    }
    static std::string Binary(uint32_t value, int bits) {
        std::string text;
        for (int k = bits - 1; k >= 0; k--) text += value >> k & 1 ? '1' : '0';
        return text;
    }
    void PutChange(int change) {
        const int size = std::abs(change), sign = change < 0;
        if (size == 0) PutBits("0");
        else if (size <= 3) PutBits("1" + Binary(2 * (size - 1) + sign, 3));
        else if (size <= 18) PutBits("111" + Binary(2 * (size - 4) + sign, 5));
        else PutBits("1111111" + Binary(2 * (size - 19) + sign, 9));
    }
    void PutAbsolute(int value) { PutBits(std::string(15, '1') + Binary(value, 16)); }
    void PutFiller() { PutBits(std::string(31, '1')); }

    void Read(int slot) {
        std::vector<uint8_t> padded = bytes;
        padded.resize(bytes.size() + margin, 0);
        fileKind[slot] = 2;
        ReadSecondaryLog(slot, padded.data(), static_cast<int>(bytes.size()));
    }
};

// A log of `seconds` whose header names one channel's interval in ms.
LogBytes OneChannel(int intervalAt, int intervalMs, int seconds = 1) {
    LogBytes log;
    log.bytes[flagsAt] = 3;
    log.Put16(intervalAt, intervalMs);
    log.PutSeconds(seconds);
    return log;
}

// The decoding as it is told, one code and one bit at a time, without smoothing and statistics.
struct PlainDecoder {
    enum { fNe, fVFW, fVRW, fTH, fVB, fFSUS, fRSUS, fLAF1, fLAF2, fSpare1, fSpare2, fLap, fieldTotal };
    const std::vector<uint8_t>& log;
    size_t at = streamAt;
    int bit = 7;
    int64_t i = 1, n = 0;
    std::vector<int64_t> column[fSpare1] = {};
    std::vector<int64_t> marks = {0};
    int period[fieldTotal] = {};

    int U16(int offset) const { return log[offset] * 256 + log[offset + 1]; }
    int Bit() {
        const int value = at < log.size() ? log[at] >> bit & 1 : 0;
        if (--bit < 0) bit = 7, at++;
        return value;
    }
    // False for filler.
    bool Code(int& value, bool& absolute) {
        uint32_t code = 0;
        int c = 0;
        for (int last = 1; last == 1 && c < 31; c++) code = code << 1 | static_cast<uint32_t>(last = Bit());
        const int bits = c == 1 ? 1 : c <= 3 ? 4 : c <= 7 ? 8 : c <= 15 ? 16 : 31;
        if (c == 31) return false;
        for (int k = c; k < bits; k++) code = code << 1 | static_cast<uint32_t>(Bit());
        absolute = bits == 31;
        const int mask = bits == 4 ? 7 : bits == 8 ? 31 : 511, least = bits == 4 ? 1 : bits == 8 ? 4 : 19;
        const int u = static_cast<int>(code) & mask;
        if (bits == 1) value = 0;
        else if (absolute) value = static_cast<int>(code & 65535);
        else value = u % 2 == 0 ? u / 2 + least : -(u / 2) - least;
        return true;
    }
    static int64_t Wrapped(int field, int64_t value) {
        if (field == fTH || field == fLAF1 || field == fLAF2) return static_cast<int32_t>(value);
        if (field == fFSUS || field == fRSUS) return static_cast<int16_t>(value);
        return static_cast<uint16_t>(value);
    }
    static bool IsRaw(int field) { return field == fTH || (field >= fFSUS && field <= fLAF2); }
    int64_t Converted(int field, int64_t raw) const {
        const int low = U16(throttleMinAt), high = U16(throttleMaxAt);
        if (field == fTH) return high == low ? 0 : (raw * 4 - low) * 1000 / (high - low);
        if (field == fFSUS && (log[flagsAt] & 1)) return 18769 - (raw + 1024 - U16(fsusZeroAt)) * 18769 / 1024;
        if (field == fRSUS && (log[flagsAt] & 2)) return 12500 - (raw + 1023 - U16(rsusZeroAt)) * 12500 / 1023;
        if ((field == fLAF1 && (log[analogFlagsAt] & 1)) || (field == fLAF2 && (log[analogFlagsAt] & 2)))
            return raw * 1000 / 1140 + 900;
        return raw * 500 / 1023;
    }
    void Keep(int field) { column[field][i + 1] = column[field][i]; }
    void Convert(int field) {
        if (IsRaw(field)) column[field][i] = Wrapped(field, Converted(field, column[field][i]));
    }
    void Store(int field, int value, bool absolute) {
        const int unit = field == fNe ? 20 : IsRaw(field) ? 1 : 10;
        column[field][i + 1] = Wrapped(field, (absolute ? 0 : column[field][i]) + int64_t{value} * unit);
    }
    void Run() {
        const int offsets[fLap] = {neIntervalAt,   vfwIntervalAt,  vrwIntervalAt,  thIntervalAt,
                                   vbIntervalAt,   fsusIntervalAt, rsusIntervalAt, laf1IntervalAt,
                                   laf2IntervalAt, spare1IntervalAt, spare2IntervalAt};
        for (int f = 0; f < fLap; f++) period[f] = U16(offsets[f]) / 5;
        period[fLap] = log[flagsAt] & 16 ? 60 : 0;
        n = (log[secondsAt] * 65536 + U16(secondsAt + 1)) * 200;
        for (auto& c : column) c.assign(n + 16, 0);
        int f = 0;
        while (i < n && at < log.size()) {
            int value;
            bool absolute;
            if (!Code(value, absolute)) continue;
            for (bool used = false; !used && i < n;) {
                const bool due = period[f] != 0 && i % period[f] == 0;
                if (f == fLap) {
                    if (due && value > 0 && marks.size() < 510) marks.push_back(std::max<int64_t>(0, i - value));
                    used = due;
                    i++;
                } else if (f < fSpare1 && period[f] != 0) {
                    due ? Store(f, value, absolute) : Keep(f);
                    Convert(f);
                    used = due;
                } else {
                    used = due;
                }
                f = (f + 1) % fieldTotal;
            }
        }
        for (auto& c : column) c.resize(i), c[0] = 0;
    }
};

template <class T>
std::vector<int64_t> Samples(const SampleArray<T>& array, int slot) {
    return {array.begin(), array.begin() + sampleCount[slot]};
}

void ExpectPlain(const LogBytes& log, int slot) {
    PlainDecoder plain{log.bytes};
    plain.Run();
    ASSERT_EQ(sampleCount[slot], plain.i);
    EXPECT_EQ(Samples(Ne[slot], slot), plain.column[PlainDecoder::fNe]);
    EXPECT_EQ(Samples(VFW[slot], slot), plain.column[PlainDecoder::fVFW]);
    EXPECT_EQ(Samples(VRW[slot], slot), plain.column[PlainDecoder::fVRW]);
    EXPECT_EQ(Samples(TH[slot], slot), plain.column[PlainDecoder::fTH]);
    EXPECT_EQ(Samples(VB[slot], slot), plain.column[PlainDecoder::fVB]);
    EXPECT_EQ(Samples(FSUS[slot], slot), plain.column[PlainDecoder::fFSUS]);
    EXPECT_EQ(Samples(RSUS[slot], slot), plain.column[PlainDecoder::fRSUS]);
    EXPECT_EQ(Samples(LAF1[slot], slot), plain.column[PlainDecoder::fLAF1]);
    EXPECT_EQ(Samples(LAF2[slot], slot), plain.column[PlainDecoder::fLAF2]);
    ASSERT_EQ(lapCount[slot], static_cast<int>(plain.marks.size()));
    for (int k = 0; k < lapCount[slot]; k++) EXPECT_EQ(lapStart[slot][k], plain.marks[k]) << k;
}

class SecondaryLog : public testing::Test {
  protected:
    void SetUp() override {
        LoadDefaults();
        DefaultScript();
        shown.clear();
        SmoothingSTD = 0;
    }
    void TearDown() override { DefaultScript(); }
};

TEST_F(SecondaryLog, EachLengthOfCodeGivesItsValues) {
    struct Row { const char* bits; int value; bool absolute; };
    constexpr Row rows[] = {{"0", 0, false},
                            {"1000", 1, false},
                            {"1001", -1, false},
                            {"1011", -2, false},
                            {"1101", -3, false},
                            {"1100", 3, false},
                            {"11100000", 4, false},
                            {"11111101", -18, false},
                            {"1111111000000000", 19, false},
                            {"1111111111111100", 273, false},
                            {"1111111111111101", -273, false},
                            {"1111111111111110000000000000101", 5, true},
                            {"1111111111111111111111111111101", 65533, true}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.bits);
        LogBytes log;
        log.PutBits("101");  // not at the start of a byte
        log.PutBits(row.bits);
        const int64_t end = streamAt * 8 + 3 + static_cast<int64_t>(std::strlen(row.bits));
        log.bytes.resize(log.bytes.size() + margin, 0);
        CodeStream stream = StartStream(log.bytes.data(), streamAt * 8 + 3, end);
        StreamCode code;
        ASSERT_TRUE(NextCode(stream, code));
        EXPECT_EQ(code.value, row.value);
        EXPECT_EQ(code.absolute, row.absolute);
        EXPECT_EQ(stream.left, 0);
        EXPECT_FALSE(NextCode(stream, code));
    }
}

TEST_F(SecondaryLog, RandomBytesDecodeAsTheFormatTells) {
    std::mt19937 random(5);
    for (int round = 0; round < 300; round++) {
        SCOPED_TRACE(round);
        LogBytes log;
        for (int at = neIntervalAt; at <= laf2IntervalAt; at += 2)
            log.Put16(at, static_cast<int>(random() % 3 == 0 ? 0 : random() % (round % 2 ? 60 : 8)));
        for (int at : {flagsAt, analogFlagsAt}) log.bytes[at] = static_cast<uint8_t>(random());
        for (int at = throttleMinAt; at <= rsusZeroAt; at += 2) log.Put16(at, static_cast<int>(random() % 1024));
        log.PutSeconds(1 + static_cast<int>(random() % 5));
        const int length = static_cast<int>(random() % 12000);
        for (int k = 0; k < length; k++)
            log.bytes.push_back(static_cast<uint8_t>(round % 3 ? random() : random() & random()));
        log.Read(round % 3);
        ExpectPlain(log, round % 3);
    }
}

TEST_F(SecondaryLog, ABytePositionPastTheEndStopsTheDecodingAndTheSamplesReachedCount) {
    LogBytes log = OneChannel(neIntervalAt, 5);
    for (int k = 0; k < 16; k++) log.PutBits("0");  // two whole bytes
    log.Read(0);
    EXPECT_EQ(sampleCount[0], 16);  // the sample of the last code has no end
    EXPECT_EQ(lapCount[0], 1);
    EXPECT_EQ(lapStart[0][3], 16u);
    EXPECT_TRUE(shown.empty());
}

TEST_F(SecondaryLog, FillerChangesNothing) {
    LogBytes log = OneChannel(neIntervalAt, 5), filled = log;
    for (int k = 0; k < 40; k++) {
        log.PutChange(k % 7);
        filled.PutChange(k % 7);
        filled.PutFiller();
    }
    log.Read(0);
    filled.Read(1);
    const int both = std::min(sampleCount[0], sampleCount[1]);
    ASSERT_GE(both, 40);
    EXPECT_TRUE(std::equal(Ne[0].begin(), Ne[0].begin() + 40, Ne[1].begin()));
    EXPECT_EQ(Ne[1][4], (0 + 1 + 2) * 20);
}

TEST_F(SecondaryLog, AnAbsoluteCodeReplacesTheRunningThrottle) {
    LogBytes log = OneChannel(thIntervalAt, 5);
    log.Put16(throttleMinAt, 100);
    log.Put16(throttleMaxAt, 1100);
    log.PutChange(30);
    log.PutAbsolute(200);
    log.PutChange(1);
    for (int k = 0; k < 40; k++) log.PutChange(0);
    log.Read(0);
    EXPECT_EQ(TH[0][1], -100);  // raw 0
    EXPECT_EQ(TH[0][2], 30 * 4 - 100);
    EXPECT_EQ(TH[0][3], 200 * 4 - 100);
    EXPECT_EQ(TH[0][4], 201 * 4 - 100);
}

TEST_F(SecondaryLog, WithoutAnIntervalAChannelStaysZeroAndTheNextFieldTakesTheCode) {
    LogBytes log = OneChannel(vfwIntervalAt, 5);
    log.Put16(neIntervalAt, 4);  // below one sample
    for (int k = 0; k < 24; k++) log.PutChange(2);
    log.Read(0);
    EXPECT_EQ(Ne[0][10], 0);
    EXPECT_EQ(VFW[0][1], 0);
    EXPECT_EQ(VFW[0][2], 20);
    EXPECT_EQ(VFW[0][3], 40);
}

TEST_F(SecondaryLog, AChannelRepeatsItsValueBetweenItsSamples) {
    LogBytes log = OneChannel(neIntervalAt, 15);
    for (int k = 0; k < 8; k++) log.PutChange(1);
    log.Read(0);
    const std::vector<int> first = {0, 0, 0, 0, 20, 20, 20, 40, 40, 40, 60};
    EXPECT_TRUE(std::equal(first.begin(), first.end(), Ne[0].begin()));
}

TEST_F(SecondaryLog, WithTwoMarksALapEveryMarkRestartsTheLapLength) {
    MarksPerLap[0] = 2;
    CoursePosSource = 1;
    LogBytes log = OneChannel(vfwIntervalAt, 5, 2);
    log.bytes[flagsAt] |= 16;
    log.PutAbsolute(10);  // 10.0 km/h
    for (int i = 2; i < 400; i++) {
        log.PutChange(0);
        if (i % 60 == 0) log.PutChange(i == 120 || i == 240 || i == 300 ? 10 : 0);
    }
    log.Read(0);
    ASSERT_EQ(lapCount[0], 4);
    EXPECT_EQ(lapStart[0][1], 110u);
    EXPECT_EQ(lapStart[0][2], 230u);
    EXPECT_EQ(lapStart[0][3], 290u);
    EXPECT_EQ(lapLength[0][1], 100u * 108);  // samples 2 to 109
    EXPECT_EQ(lapLength[0][2], 100u * 120);
    EXPECT_EQ(lapLength[0][3], 100u * 60);
    EXPECT_EQ(lapLength[0][4], 100u * (sampleCount[0] - 290));
    EXPECT_EQ(lapDistance[0][110], 0u);
    EXPECT_EQ(lapDistance[0][111], 100u);
    EXPECT_EQ(distFront[0][300], 100u * 298);
    EXPECT_EQ(distRear[0][300], 0u);
}

TEST_F(SecondaryLog, ALapCodeLargerThanTheSampleIsAMarkAtZero) {
    LogBytes log = OneChannel(spare1IntervalAt, 0);
    log.bytes[flagsAt] |= 16;
    log.PutChange(200);
    log.PutChange(-5);  // no mark
    log.Read(0);
    EXPECT_EQ(lapCount[0], 2);
    EXPECT_EQ(lapStart[0][1], 0u);
    EXPECT_EQ(lapLength[0][1], 0u);
}

TEST_F(SecondaryLog, MarksNeedNotRise) {
    LogBytes log = OneChannel(spare1IntervalAt, 0, 2);
    log.bytes[flagsAt] |= 16;
    for (int ago : {1, 100, 30}) log.PutChange(ago);
    log.Read(0);
    EXPECT_EQ(lapStart[0][1], 59u);
    EXPECT_EQ(lapStart[0][2], 20u);
    EXPECT_EQ(lapStart[0][3], 150u);
}

TEST_F(SecondaryLog, MarksEndAtTheLimitOfTheTable) {
    LogBytes log = OneChannel(spare1IntervalAt, 0, 200);
    log.bytes[flagsAt] |= 16;
    for (int k = 0; k < 600; k++) log.PutChange(1);
    log.Read(0);
    EXPECT_EQ(lapCount[0], lapMarkLimit);
    EXPECT_EQ(lapStart[0][lapCount[0] - 1], 509u * 60 - 1);
    for (int k = 0; k < 3; k++) EXPECT_EQ(lapStart[0][lapCount[0] + k], static_cast<uint32_t>(sampleCount[0]));
}

TEST_F(SecondaryLog, TheRearWheelCountsForTheLapsOfALogWithoutAFrontWheel) {
    LogBytes log = OneChannel(vrwIntervalAt, 5);
    log.PutAbsolute(20);
    for (int k = 0; k < 100; k++) log.PutChange(0);
    log.Read(0);
    EXPECT_EQ(lapDistance[0][50], 200u * 48);
    EXPECT_EQ(distRear[0][50], 200u * 48);
    EXPECT_EQ(distFront[0][50], 0u);
}

TEST_F(SecondaryLog, EqualThrottleLimitsGiveZeroWithoutAMessage) {
    LogBytes log = OneChannel(thIntervalAt, 5);
    log.Put16(throttleMinAt, 500);
    log.Put16(throttleMaxAt, 500);
    for (int k = 0; k < 40; k++) log.PutAbsolute(700);
    log.Read(0);
    EXPECT_EQ(TH[0][10], 0);
    EXPECT_TRUE(shown.empty());
}

TEST_F(SecondaryLog, WithoutAnyPeriodEndsAtTheLoggedTime) {
    LogBytes log = OneChannel(neIntervalAt, 0, 28800);
    log.PutBits("0000");
    log.Read(0);
    EXPECT_EQ(sampleCount[0], sampleLimit);
    EXPECT_EQ(lapCount[0], 1);
    EXPECT_TRUE(shown.empty());
}

TEST_F(SecondaryLog, OfMoreThanEightHoursIsRefusedAndLeavesTheArrays) {
    LogBytes first = OneChannel(neIntervalAt, 5);
    for (int k = 0; k < 80; k++) first.PutChange(1);
    first.Read(1);
    cursorPos[1] = 500;
    lapViewOffset[1] = 1;
    const size_t elements = Ne[1].size();
    LogBytes log = OneChannel(neIntervalAt, 5, 28801);
    log.Read(1);
    ASSERT_EQ(shown.size(), 2u);
    EXPECT_EQ(shown[0].text, "Data file is corrupted.");
    EXPECT_EQ(shown[0].title, "File Error!!");
    EXPECT_EQ(shown[1].text, "5760200");
    EXPECT_EQ(shown[1].title, "File Error!!");
    EXPECT_EQ(Ne[1].size(), elements);
    EXPECT_EQ(slotInUse[1], 1);
    EXPECT_EQ(sampleCount[1], 1);
    EXPECT_EQ(lapCount[1], 1);
    EXPECT_EQ(lapStart[1][1], 0u);
    EXPECT_EQ(cursorPos[1], 0);
    EXPECT_EQ(lapViewOffset[1], 0);
}

TEST_F(SecondaryLog, TheLongestTimeOfTheHeaderIsRefusedByItsNumber) {
    LogBytes log = OneChannel(neIntervalAt, 5, 0xffffff);
    log.Read(0);
    ASSERT_EQ(shown.size(), 2u);
    EXPECT_EQ(shown[1].text, "3355443000");
}

TEST_F(SecondaryLog, OfAHeaderThatIsCutShortHasOneSample) {
    for (int length : {512, 600, 1151, 1152}) {
        LogBytes log = OneChannel(neIntervalAt, 5, 10);
        log.bytes.resize(length);
        log.Read(0);
        EXPECT_EQ(sampleCount[0], 1) << length;
        EXPECT_EQ(lapCount[0], 1) << length;
    }
}

TEST_F(SecondaryLog, TheHeaderFillsTheSensorParameters) {
    LogBytes log = OneChannel(neIntervalAt, 5);
    log.bytes[flagsAt] = 2;
    log.bytes[frontPulsesAt] = 0;  // no lowest value
    log.bytes[rearPulsesAt] = 6;
    log.Put16(frontTyreAt, 192);
    log.Put16(rearTyreAt, 5);
    log.Put16(fsusZeroAt, 900);
    log.Put16(rsusZeroAt, 940);
    log.bytes[analogFlagsAt] = 1;
    std::memcpy(&log.bytes[115], "Q 1.04", 6);
    std::memset(&log.bytes[memoAt], 'm', 250);
    formatVersion[0] = 4;
    gearLimit[0][0] = 77;
    lafDivider[0][1] = 9;
    timeFactor[0] = 0.5;
    log.Read(0);
    EXPECT_EQ(fsusType[0], 16);
    EXPECT_EQ(rsusType[0], 0);
    EXPECT_EQ(frontPulses[0], 0);
    EXPECT_EQ(rearPulses[0], 6);
    EXPECT_EQ(frontTyreMm[0], 1920);
    EXPECT_EQ(rearTyreMm[0], 50);
    EXPECT_EQ(fsusZeroRaw[0], 900);
    EXPECT_EQ(rsusZeroRaw[0], 940);
    const int types[] = {0, 1, 1, 1};
    for (int k = 0; k < analogInputs; k++) EXPECT_EQ(analog[0][k].type, types[k]);
    for (int k = 0; k < analogInputs; k++) EXPECT_EQ(analogAsLogged[0][k].type, types[k]);
    EXPECT_EQ(rearOnGearbox[0], 0);
    EXPECT_EQ(gearboxPulses[0], 0);
    for (int teeth : {frontSprocket[0], rearSprocket[0], primaryMain[0], primaryCounter[0], gearMain[0][5]})
        EXPECT_EQ(teeth, 1);
    EXPECT_EQ(gearLimit[0][0], 77);
    EXPECT_EQ(lafDivider[0][1], 1);
    EXPECT_EQ(timeFactor[0], 1.0);
    EXPECT_EQ(formatVersion[0], 4);
    EXPECT_EQ(neutralRpm, 30000);
    EXPECT_EQ(indicatorRpm[3], 0);
    EXPECT_STREQ(firmwareText, "Q 1.04");
    EXPECT_EQ(std::string(memoText[0]), std::string(189, 'm'));
}

TEST_F(SecondaryLog, InAnotherSlotLeavesTheSetUpOfTheUnit) {
    LogBytes log = OneChannel(neIntervalAt, 5);
    std::memcpy(&log.bytes[115], "Q 1.04", 6);
    log.Read(2);
    EXPECT_EQ(neutralRpm, 15000);
    EXPECT_STREQ(firmwareText, "");
    EXPECT_EQ(slotInUse[2], 1);
}

TEST_F(SecondaryLog, WithDebugTheHeaderStandsOverTheMemo) {
    Debug = 1;
    LogBytes log = OneChannel(neIntervalAt, 1005);
    std::memcpy(&log.bytes[89], " A  unit", 8);
    std::memcpy(&log.bytes[115], "Q 1.04", 6);
    std::memcpy(&log.bytes[151], "11-06-18 14:20  ", 16);
    log.bytes[173] = 7;
    log.Put16(laf2IntervalAt, 50);
    log.Put16(vbIntervalAt, 2000);
    std::memset(&log.bytes[memoAt], 'm', 120);
    log.Read(0);
    const std::string start = "Aunit\r\nQ1.04\r\n11-06-1814:20\r\n\r\n7\r\n005 000 000 000\r\n000 000 000 050\r\n000\r\n";
    EXPECT_EQ(std::string(memoText[0]), start + std::string(120 - start.size(), 'm'));
}

TEST_F(SecondaryLog, WithDebugAndCtrlTheAirFuelSensorsReadAsVolts) {
    LogBytes log = OneChannel(laf1IntervalAt, 5);
    log.bytes[analogFlagsAt] = 3;
    log.PutAbsolute(570);
    for (int k = 0; k < 40; k++) log.PutChange(0);
    log.Read(0);
    EXPECT_EQ(LAF1[0][10], 570 * 1000 / 1140 + 900);
    ScriptHold(false, true);
    log.Read(0);
    EXPECT_EQ(LAF1[0][10], 570 * 1000 / 1140 + 900);
    Debug = 1;
    log.Read(0);
    EXPECT_EQ(LAF1[0][10], 570 * 500 / 1023);
}

TEST_F(SecondaryLog, TheElementBehindTheLastSampleIsZero) {
    LogBytes log = OneChannel(fsusIntervalAt, 5);
    for (int k = 0; k < 300; k++) log.PutChange(3);
    log.Read(0);
    EXPECT_EQ(sampleCount[0], 200);
    EXPECT_EQ(FSUS[0][200], 0);
    EXPECT_NE(FSUS[0][199], 0);
    EXPECT_EQ(FSUS[0][0], 0);
}

TEST_F(SecondaryLog, LeavesTheOtherSlots) {
    LogBytes log = OneChannel(neIntervalAt, 5);
    for (int k = 0; k < 80; k++) log.PutChange(1);
    log.Read(0);
    const std::vector<int64_t> before = Samples(Ne[0], 0);
    OneChannel(neIntervalAt, 5, 28801).Read(1);
    OneChannel(vfwIntervalAt, 5).Read(2);
    EXPECT_EQ(Samples(Ne[0], 0), before);
    EXPECT_EQ(slotInUse[1], 0);
}

TEST_F(SecondaryLog, WithoutMemoryTheSlotIsResetAndTheOthersKeepTheirData) {
    LogBytes log = OneChannel(neIntervalAt, 5, 100);
    for (int k = 0; k < 800; k++) log.PutChange(1);
    log.Read(0);
    log.Read(1);
    const std::vector<int64_t> before = Samples(Ne[0], 0);
    CountedMemory memory;
    memory.failAt = 1;
    OneChannel(neIntervalAt, 5, 1000).Read(1);
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].text, "Memory Ensure Error.(Data Main buffers)");
    EXPECT_EQ(shown[0].title, "Memory Error!!");
    EXPECT_EQ(sampleCount[1], 1);
    EXPECT_EQ(lapCount[1], 1);
    EXPECT_EQ(slotInUse[1], 0);
    EXPECT_EQ(Samples(Ne[0], 0), before);
}

TEST_F(SecondaryLog, WithoutMemoryForAnUntestedArrayTheRestIsReadWithoutAMessage) {
    for (int array : {9, 16, 17}) {  // VB, VFSus, VRSus in the order in which they are asked for
        SCOPED_TRACE(array);
        ReleaseRunStore();
        LoadDefaults();
        LogBytes log = OneChannel(neIntervalAt, 5, 100);
        for (int at : {vbIntervalAt, fsusIntervalAt, rsusIntervalAt}) log.Put16(at, 5);
        for (int k = 0; k < 20000 * 4; k++) log.PutChange(k < 4 ? 1 : 0);
        SmoothingSTD = 2;
        CountedMemory memory;
        memory.failAt = array;
        log.Read(0);
        EXPECT_TRUE(shown.empty());
        EXPECT_EQ(sampleCount[0], 20000);
        EXPECT_EQ(Ne[0][19999], 20);
        EXPECT_EQ(VB[0].size(), array == 9 ? 512u : 20016u);
        EXPECT_EQ(VFSus[0].size(), array == 16 ? 512u : 20016u);
    }
}

TEST_F(SecondaryLog, LeavesJumpsAndMarksPerLapAndStartsTheView) {
    jumpTarget[0] = 50;
    MarksPerLap[0] = 3;
    cursorPos[0] = 700;
    currentLap[0] = 4;
    lapViewOffset[0] = 2;
    OneChannel(neIntervalAt, 5).Read(0);
    EXPECT_EQ(jumpTarget[0], 50);
    EXPECT_EQ(MarksPerLap[0], 3);
    EXPECT_EQ(cursorPos[0], 0);
    EXPECT_EQ(currentLap[0], 1);
    EXPECT_EQ(lapViewOffset[0], 0);
}

TEST_F(SecondaryLog, OnlyTheSuspensionSpeedsAreAveraged) {
    SmoothingSTD = 4;
    LogBytes log = OneChannel(fsusIntervalAt, 5);
    log.bytes[flagsAt] = 0;  // volts
    for (int k = 0; k < 300; k++) log.PutChange(k == 50 ? 250 : k == 51 ? -250 : 0);
    log.Read(0);
    EXPECT_EQ(FSUS[0][52], 250 * 500 / 1023);
    EXPECT_EQ(FSUS[0][51], 0);
    EXPECT_EQ(FSUS[0][53], 0);
    EXPECT_EQ(VFSus[0][49], 250 * 500 / 1023 * 2 / 5);
    EXPECT_EQ(VFSus[0][52], 0);  // up and down again
}

// What the reader makes of a log against the ride that it was written from. A value stands from the sample behind its code
// until the next one; the first code of a channel comes after one interval.
struct RideChannel {
    const char* name;
    int intervalAt;
    int BikeSample::*ridden;
    int64_t (*read)(int sample);
    int step;  // of a reading, in the channel's unit
};
const RideChannel rideChannels[] = {
    {"Ne", neIntervalAt, &BikeSample::ne, [](int i) { return int64_t{Ne[0][i]}; }, 20},
    {"TH", thIntervalAt, &BikeSample::th, [](int i) { return int64_t{TH[0][i]}; }, 6},
    {"VFW", vfwIntervalAt, &BikeSample::vfw, [](int i) { return int64_t{VFW[0][i]}; }, 10},
    {"VRW", vrwIntervalAt, &BikeSample::vrw, [](int i) { return int64_t{VRW[0][i]}; }, 10},
    {"VB", vbIntervalAt, &BikeSample::vb, [](int i) { return int64_t{VB[0][i]}; }, 10},
    {"FSUS", fsusIntervalAt, &BikeSample::fsus, [](int i) { return int64_t{FSUS[0][i]}; }, 19},
    {"RSUS", rsusIntervalAt, &BikeSample::rsus, [](int i) { return int64_t{RSUS[0][i]}; }, 13},
    {"LAF1", laf1IntervalAt, &BikeSample::laf1, [](int i) { return int64_t{LAF1[0][i]}; }, 2},
    {"LAF2", laf2IntervalAt, &BikeSample::laf2, [](int i) { return int64_t{LAF2[0][i]}; }, 2},
};

void ReadRide(const SampleLogOptions& options) {
    LogBytes log;
    log.bytes = MakeSecondaryLog(options);
    log.Read(0);
}

TEST_F(SecondaryLog, GivesTheRideThatItWasWrittenFrom) {
    for (int interval : {0, 5, 20}) {
        SampleLogOptions options;
        options.laps = 2;
        options.intervalMs = interval;
        const std::vector<BikeSample> ride = SimulateRide(options);
        ReadRide(options);
        const std::vector<uint8_t> header = MakeSecondaryLog(options);
        ASSERT_EQ(sampleCount[0], static_cast<int>(ride.size()) / 200 * 200);
        for (const RideChannel& channel : rideChannels) {
            SCOPED_TRACE(testing::Message() << channel.name << " at " << interval);
            const int every = ReadU16Be(&header[channel.intervalAt]) / 5;
            ASSERT_GE(every, 1);
            for (int i = every + 1; i < sampleCount[0]; i++)
                ASSERT_NEAR(channel.read(i), ride[(i - 1) / every * every].*channel.ridden, channel.step) << i;
        }
    }
}

TEST_F(SecondaryLog, GivesTheMarksOfTheRideThatItWasWrittenFrom) {
    for (int marksPerLap : {1, 3}) {
        SampleLogOptions options;
        options.laps = 3;
        options.marksPerLap = marksPerLap;
        const std::vector<BikeSample> ride = SimulateRide(options);
        ReadRide(options);
        std::vector<uint32_t> marks = {0};
        for (size_t k = 1; k < ride.size(); k++)
            if (ride[k].mark && !ride[k - 1].mark) marks.push_back(static_cast<uint32_t>(k) + 1);
        ASSERT_EQ(lapCount[0], static_cast<int>(marks.size()));
        EXPECT_TRUE(std::equal(marks.begin(), marks.end(), lapStart[0]));
        for (int k = 1; k < lapCount[0]; k++) {
            uint32_t metres = 0;
            for (uint32_t i = lapStart[0][k - 1]; i < lapStart[0][k]; i++) metres += VFW[0][i];
            EXPECT_EQ(lapLength[0][k], metres) << k;
        }
    }
}

TEST_F(SecondaryLog, OfVoltsAndOtherStrokeSensorsReadsTheirVolts) {
    SampleLogOptions options;
    options.laps = 0;
    options.seconds = 30;
    options.intervalMs = 5;
    options.linearSuspension = options.voltInputs = true;
    const std::vector<BikeSample> ride = SimulateRide(options);
    ReadRide(options);
    EXPECT_EQ(fsusType[0], 16);
    EXPECT_EQ(rsusType[0], 16);
    EXPECT_EQ(analog[0][0].type, 1);
    for (int i = 10; i < sampleCount[0]; i++) {
        // 10 bit readings of the curves' sensors, shown as 0.01 V of 5 V.
        ASSERT_NEAR(FSUS[0][i], (900 - ride[i - 1].fsus * 1024 / 18769) * 500 / 1023, 1) << i;
        ASSERT_NEAR(RSUS[0][i], (940 - ride[i - 1].rsus * 1023 / 12500) * 500 / 1023, 1) << i;
        ASSERT_NEAR(LAF1[0][i], (ride[i - 1].laf1 - 900) * 1140 / 1000 * 500 / 1023, 1) << i;
    }
}

}  // namespace
