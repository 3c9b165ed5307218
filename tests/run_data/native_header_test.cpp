// The header of native logs: version forms, fields row by row, calibrations, teeth, memo. Offsets are written as numbers, so
// that the names of log_header.h are checked as well.
#include "run_data/native_header.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "app/frame_loop.h"
#include "platform/headless/script.h"
#include "run_data/run_store.h"
#include "run_data/setup_values.h"
#include "settings/settings.h"
#include "tests/run_data/log_builder.h"

namespace {

constexpr int everyVersion[] = {0, 1, 2, 3, 4, 32};

class NativeHeader : public testing::Test {
  protected:
    void SetUp() override {
        LoadDefaults();
        shown.clear();
    }
    void TearDown() override { LoadDefaults(); }
};

// A header of this firmware text and byte 15, long enough for either form.
LogBytes HeaderSaying(const std::string& firmware, int rawVersion, int bytes = 1024) {
    LogBytes log = HeaderOf(2);
    log.resize(bytes, 0);
    std::copy(firmware.begin(), firmware.end(), log.begin() + 1);
    log[15] = static_cast<uint8_t>(rawVersion);
    return log;
}
int VersionOf(const std::string& firmware, int rawVersion) { return NativeVersion(HeaderSaying(firmware, rawVersion).data()); }

// -- version --

TEST_F(NativeHeader, VersionIsByte15) {
    for (int raw = 0; raw < 256; raw++) EXPECT_EQ(VersionOf("ZrvetV9.01.10", raw), raw);
}

TEST_F(NativeHeader, FirmwareBefore90110IsVersion2WhateverByte15SaysAbove2) {
    for (const char* early : {"ZrvetV9.01.05", "ZrvetV9.01.0", "ZrvetV9.01.09", "ZrvetV9.001.", "ZrvetV9.001.99"})
        for (int raw : {3, 4, 5, 32, 255}) EXPECT_EQ(VersionOf(early, raw), 2) << early << " with " << raw;
}

TEST_F(NativeHeader, FirmwareTextsCountOnlyAboveByte15Of2) {
    for (int raw : {0, 1, 2}) {
        EXPECT_EQ(VersionOf("ZrvetV9.01.05", raw), raw);
        EXPECT_EQ(VersionOf(std::string("Zrvetger V\0\0\0\0", 14), raw), raw);
    }
}

TEST_F(NativeHeader, OtherFirmwareTextsKeepByte15) {
    for (const char* other : {"ZrvetV9.01.10", "ZrvetV9.01.1", "ZrvetV9.02.05", "ZrvetV9.011.", "zrvetV9.01.05", "ZrvetgerV0000"})
        EXPECT_EQ(VersionOf(other, 3), 3) << other;
    LogBytes log = HeaderSaying("ZrvetV9.01.05", 3);
    log[0] = '4';
    EXPECT_EQ(NativeVersion(log.data()), 3) << "the type mark is part of the text";
}

TEST_F(NativeHeader, TheFourBytesBehindTheVCountAsPlainValuesUnder32) {
    const struct { std::string bytes; int version; } rows[] = {
        {std::string("\0\0\0\0", 4), 2},
        {std::string("\0\0\0\37", 4), 2},   // 31
        {std::string("\0\0\0\40", 4), 3},   // 32
        {std::string("\0\0\1\17", 4), 2},   // 16 + 15
        {std::string("\0\0\2\0", 4), 3},    // 2 x 16
        {std::string("\0\1\0\0", 4), 3},    // 256
        {std::string("\1\0\0\0", 4), 3},    // 4096
        {"0020", 3},                        // Kept: digits are plain values, far above the limit
        {"0000", 3},
    };
    for (const auto& row : rows) EXPECT_EQ(VersionOf("Zrvetger V" + row.bytes, 3), row.version) << testing::PrintToString(row.bytes);
}

TEST_F(NativeHeader, EarlyFirmwareWithByte15Of3DecodesFixedFramesFrom512) {
    LogBytes log = HeaderSaying("ZrvetV9.01.05", 3, 512 + 2 * 16);
    Put16(log, 512, 1111);
    Put16(log, 528, 2222);
    ReadIntoSlot(1, log);
    EXPECT_EQ(formatVersion[1], 2);
    EXPECT_EQ(sampleCount[1], 3);
    EXPECT_EQ(Ne[1][1], 1111);
    EXPECT_EQ(Ne[1][2], 2222);
}

TEST_F(NativeHeader, Firmware90110WithByte15Of3DecodesChangeMaskFramesFrom1024) {
    LogBytes log = HeaderSaying("ZrvetV9.01.10", 3);
    MaskFrame frame;
    frame.ne = 1111;
    AddFrame(log, frame);
    ReadIntoSlot(1, log);
    EXPECT_EQ(formatVersion[1], 3);
    EXPECT_EQ(sampleCount[1], 2);
    EXPECT_EQ(Ne[1][1], 1111);
}

TEST_F(NativeHeader, ALoadSaysWhatALaterSetUpIsWrittenFor) {
    const struct { int version, compress, compressVersion; } rows[] = {{0, 0, 9}, {1, 0, 9}, {2, 0, 9},   {3, 1, 3},
                                                                       {4, 1, 4}, {32, 1, 3}, {5, 1, 3}, {255, 1, 3}};
    for (const auto& row : rows) {
        CompressFile = 7;
        CompressFileVer = 9;
        ReadIntoSlot(1, HeaderSaying("ZrvetV9.01.10", row.version));
        EXPECT_EQ(CompressFile, row.compress) << "version " << row.version;
        EXPECT_EQ(CompressFileVer, row.compressVersion) << "version " << row.version;
    }
}

// -- fields --

struct FieldRow {
    const char* name;
    int         at, bytes, written;
    const int*  perSlot;
    int         read;
};
const FieldRow fieldRows[] = {
    {"neDivider", 16, 1, 0, neDivider, 0},
    {"neDivider", 16, 1, 255, neDivider, 255},
    {"frontPulses", 17, 1, 0, frontPulses, 1},
    {"frontPulses", 17, 1, 48, frontPulses, 48},
    {"frontTyreMm", 18, 2, 0, frontTyreMm, 100},
    {"frontTyreMm", 18, 2, 99, frontTyreMm, 100},
    {"frontTyreMm", 18, 2, 1987, frontTyreMm, 1987},
    {"frontTyreMm", 18, 2, 65535, frontTyreMm, 65535},
    {"rearOnGearbox", 20, 1, 0, rearOnGearbox, 0},
    {"rearOnGearbox", 20, 1, 1, rearOnGearbox, 1},
    {"rearPulses", 21, 1, 0, rearPulses, 1},
    {"rearPulses", 21, 1, 40, rearPulses, 40},
    {"rearTyreMm", 22, 2, 99, rearTyreMm, 100},
    {"rearTyreMm", 22, 2, 2011, rearTyreMm, 2011},
    {"gearboxPulses", 24, 1, 33, gearboxPulses, 33},
    {"frontSprocket", 25, 1, 17, frontSprocket, 17},
    {"rearSprocket", 26, 1, 44, rearSprocket, 44},
    {"neRange", 28, 1, 0, neRange, 0},
    {"neRange", 28, 1, 1, neRange, 0},
    {"neRange", 28, 1, 2, neRange, 0},
    {"neRange", 28, 1, 3, neRange, 3},
    {"neRange", 28, 1, 16, neRange, 16},
    {"tpsClosedRaw", 32, 1, 250, tpsClosedRaw, 250},
    {"tpsOpenRaw", 33, 1, 251, tpsOpenRaw, 251},
    {"tpsSpan", 34, 2, 0x1234, tpsSpan, 0x1234},
    {"fsusType", 36, 1, 1, fsusType, 1},
    {"rsusType", 37, 1, 2, rsusType, 2},
    {"fsusStroke", 43, 2, -1234, fsusStroke, -1234},
    {"rsusStroke", 45, 2, 1500, rsusStroke, 1500},
};

TEST_F(NativeHeader, EveryFieldIsReadIntoEverySlot) {
    for (const FieldRow& row : fieldRows)
        for (int slot = 0; slot < fileSlots; slot++) {
            SCOPED_TRACE(std::string(row.name) + " of slot " + std::to_string(slot));
            LogBytes log = HeaderOf(2);
            if (row.bytes == 2) Put16(log, row.at, row.written);
            else log[row.at] = static_cast<uint8_t>(row.written);
            ReadIntoSlot(slot, log);
            EXPECT_EQ(row.perSlot[slot], row.read);
        }
}

TEST_F(NativeHeader, MarksPerLapOutsideOneToThreeKeepTheSlotsValue) {
    for (int written : {1, 2, 3, 0, 4, 255}) {
        LogBytes log = HeaderOf(2);
        log[27] = static_cast<uint8_t>(written);
        MarksPerLap[1] = 2;
        ReadIntoSlot(1, log);
        EXPECT_EQ(MarksPerLap[1], written >= 1 && written <= 3 ? written : 2) << written;
    }
}

TEST_F(NativeHeader, StrokeZeroHasTenBitsButEightInVersions0And32) {
    for (int version : everyVersion) {
        LogBytes log = HeaderOf(version);
        log[39] = 0xA5;  // 165 x 4 = 660
        log[41] = 0xFF;  // top two bits 3; the others mean nothing
        log[40] = 0x01;
        log[42] = 0x7F;  // 1
        ReadIntoSlot(1, log);
        bool eightBits = version == 0 || version == 32;
        EXPECT_EQ(fsusZeroRaw[1], eightBits ? 660 : 663) << "version " << version;
        EXPECT_EQ(rsusZeroRaw[1], eightBits ? 4 : 5) << "version " << version;
    }
}

TEST_F(NativeHeader, ReservedBytesAndTheSetUpWritersDebugMeanNothing) {
    LogBytes log = HeaderOf(2);
    for (int at : {29, 30, 38, 78, 79, 107}) log[at] = 255;
    Debug = 0;
    ReadIntoSlot(0, log);
    EXPECT_EQ(Debug, 0);
    EXPECT_EQ(sampleCount[0], 1);
}

TEST_F(NativeHeader, DividersOfTheInputsAre1AfterALoad) {
    for (int input = 0; input < 2; input++) auxDivider[1][input] = lafDivider[1][input] = 100;
    timeFactor[1] = 0.5;
    ReadIntoSlot(1, HeaderOf(2));
    for (int input = 0; input < 2; input++) {
        EXPECT_EQ(auxDivider[1][input], 1);
        EXPECT_EQ(lafDivider[1][input], 1);
    }
    EXPECT_EQ(timeFactor[1], 1.0);
}

// -- teeth --

TEST_F(NativeHeader, TeethArePairsOfMainAndCounter) {
    LogBytes log = HeaderOf(2);
    for (int i = 0; i < 14; i++) log[64 + i] = static_cast<uint8_t>(40 - i);
    ReadIntoSlot(2, log);
    EXPECT_EQ(primaryMain[2], 40);
    EXPECT_EQ(primaryCounter[2], 39);
    for (int gear = 0; gear < 6; gear++) {
        EXPECT_EQ(gearMain[2][gear], 38 - 2 * gear);
        EXPECT_EQ(gearCounter[2][gear], 37 - 2 * gear);
    }
}

TEST_F(NativeHeader, AnyCounterWithoutTeethGivesAllTheirDefaults) {
    for (int at : {65, 67, 69, 71, 73, 75, 77}) {
        SCOPED_TRACE(at);
        LogBytes log = HeaderOf(2);
        log[at] = 0;
        ReadIntoSlot(1, log);
        EXPECT_EQ(primaryMain[1], 76);
        EXPECT_EQ(primaryCounter[1], 36);
        EXPECT_EQ(std::vector<int>(gearMain[1], gearMain[1] + 6), (std::vector<int>{33, 32, 30, 26, 30, 29}));
        EXPECT_EQ(std::vector<int>(gearCounter[1], gearCounter[1] + 6), (std::vector<int>{12, 16, 18, 18, 23, 24}));
        EXPECT_TRUE(shown.empty());
    }
}

TEST_F(NativeHeader, AMainWithoutTeethIsTakenAsItIs) {
    LogBytes log = HeaderOf(2);
    for (int at : {64, 66, 68, 70, 72, 74, 76}) log[at] = 0;
    ReadIntoSlot(1, log);
    EXPECT_EQ(primaryMain[1], 0);
    EXPECT_EQ(primaryRatio[1], 0);
    EXPECT_EQ(std::vector<int>(gearLimit[1], gearLimit[1] + 6), std::vector<int>(6, 0));
}

TEST_F(NativeHeader, GearLimitsLieBetweenTheRatiosOfNeighbours) {
    LogBytes log = HeaderOf(2);
    log[65] = 0;  // the defaults: 76/36; 33/12, 32/16, 30/18, 26/18, 30/23, 29/24
    for (int slot = 0; slot < fileSlots; slot++) {
        ReadIntoSlot(slot, log);
        EXPECT_EQ(primaryRatio[slot], 2111);
        // Ratios x 1000: 2750, 2000, 1666, 1444, 1304, 1208.
        EXPECT_EQ(std::vector<int>(gearLimit[slot], gearLimit[slot] + 6), (std::vector<int>{5500, 2375, 1833, 1555, 1374, 1256}));
    }
}

// -- calibration --

// Random bytes in part A and B of an input's block.
void FillBlock(LogBytes& log, int input) {
    for (int at = 112 + 48 * input; at < 160 + 48 * input; at++) log[at] = static_cast<uint8_t>(at * 37 + 11);
}
AnalogCalibration OldCalibration() {
    AnalogCalibration c{};
    c.slope = 11;
    c.offset = 12;
    std::fill(std::begin(c.curveX), std::end(c.curveX), int16_t{13});
    std::fill(std::begin(c.curveY), std::end(c.curveY), int16_t{14});
    return c;
}

TEST_F(NativeHeader, CalibrationsOfTypes0And1AreEmptied) {
    for (int type : {0, 1})
        for (int input = 0; input < 4; input++) {
            LogBytes log = HeaderOf(2);
            log[108 + input] = static_cast<uint8_t>(type);
            FillBlock(log, input);
            analog[1][input] = analogAsLogged[1][input] = OldCalibration();
            ReadIntoSlot(1, log);
            for (const auto* c : {&analog[1][input], &analogAsLogged[1][input]}) {
                EXPECT_EQ(c->type, type);
                EXPECT_EQ(c->slope, 0);
                EXPECT_EQ(c->offset, 0);
                for (int point = 0; point < 16; point++) EXPECT_EQ(c->curveX[point] | c->curveY[point], 0);
            }
        }
}

TEST_F(NativeHeader, CalibrationOfType2IsASlopeAndAnOffset) {
    for (int input = 0; input < 4; input++) {
        LogBytes log = HeaderOf(2);
        log[108 + input] = 2;
        FillBlock(log, input);
        Put16(log, 112 + 48 * input, -321);
        Put16(log, 128 + 48 * input, 1234 + input);
        analog[1][input] = analogAsLogged[1][input] = OldCalibration();
        ReadIntoSlot(1, log);
        for (const auto* c : {&analog[1][input], &analogAsLogged[1][input]}) {
            EXPECT_EQ(c->type, 2);
            EXPECT_EQ(c->slope, -321);
            EXPECT_EQ(c->offset, 1234 + input);
            for (int point = 0; point < 16; point++) EXPECT_EQ(c->curveX[point] | c->curveY[point], 0);
        }
    }
}

TEST_F(NativeHeader, CalibrationOfType3IsACurve) {
    for (int input = 0; input < 4; input++) {
        LogBytes log = HeaderOf(2);
        log[108 + input] = 3;
        constexpr uint8_t x[16] = {0, 1, 2, 51, 100, 101, 102, 127, 128, 150, 200, 201, 250, 253, 254, 255};
        constexpr int mV[16] = {0, 20, 39, 1000, 1961, 1980, 2000, 2490, 2510, 2941, 3922, 3941, 4902, 4961, 4980, 5000};
        for (int point = 0; point < 16; point++) {
            log[112 + 48 * input + point] = x[point];
            Put16(log, 128 + 48 * input + 2 * point, 100 * point - 700);
        }
        analog[1][input] = analogAsLogged[1][input] = OldCalibration();
        ReadIntoSlot(1, log);
        for (const auto* c : {&analog[1][input], &analogAsLogged[1][input]}) {
            EXPECT_EQ(c->type, 3);
            EXPECT_EQ(c->slope, 0);
            EXPECT_EQ(c->offset, 0);
            for (int point = 0; point < 16; point++) {
                EXPECT_EQ(c->curveX[point], mV[point]) << point;
                EXPECT_EQ(c->curveY[point], 100 * point - 700) << point;
            }
        }
    }
}

TEST_F(NativeHeader, AnyOtherTypeLeavesTheCalibrationAsItWas) {
    for (int type : {4, 255}) {
        LogBytes log = HeaderOf(2);
        log[110] = static_cast<uint8_t>(type);
        FillBlock(log, 2);
        analog[1][2] = analogAsLogged[1][2] = OldCalibration();
        ReadIntoSlot(1, log);
        for (const auto* c : {&analog[1][2], &analogAsLogged[1][2]}) {
            EXPECT_EQ(c->type, type);
            EXPECT_EQ(c->slope, 11);
            EXPECT_EQ(c->offset, 12);
            EXPECT_EQ(c->curveX[15], 13);
            EXPECT_EQ(c->curveY[0], 14);
        }
    }
}

// -- memo --

TEST_F(NativeHeader, MemoEndsAtItsZeroOrAfter189Bytes) {
    LogBytes log = HeaderOf(2);
    PutText(log, 320, "wet \x83\x65");
    std::fill(std::begin(memoText[1]), std::end(memoText[1]) - 1, 'z');
    ReadIntoSlot(1, log);
    EXPECT_STREQ(memoText[1], "wet \x83\x65");
    std::fill(log.begin() + 320, log.begin() + 512, 'm');
    ReadIntoSlot(1, log);
    EXPECT_EQ(std::string(memoText[1]), std::string(189, 'm'));
}

// -- what File 1 alone supplies --

struct SetupRow {
    const char* name;
    int         at, bytes;
    const int*  values;
    int         count, unit;
};
const SetupRow setupRows[] = {
    {"awcMode", 48, 1, &awcMode, 1, 1},
    {"shifterHysteresis", 49, 1, &shifterHysteresis, 1, 1},
    {"neutralRpm", 50, 2, &neutralRpm, 1, 1},
    {"awcSlipThreshold", 52, 2, &awcSlipThreshold, 1, 1},
    {"awcOffPulses", 54, 1, &awcOffPulses, 1, 1},
    {"awcOnPulses", 55, 1, &awcOnPulses, 1, 1},
    {"awcContinuousPulses", 56, 1, &awcContinuousPulses, 1, 1},
    {"awcRepeatPulses", 57, 1, &awcRepeatPulses, 1, 1},
    {"indicatorRpm", 58, 1, indicatorRpm, 6, 100},
    {"shifterDirection", 80, 1, &shifterDirection, 1, 1},
    {"shifterResetLevel", 81, 1, &shifterResetLevel, 1, 1},
    {"shifterTrigger", 82, 1, shifterTrigger, 5, 1},
    {"cutPulses 1", 87, 1, cutPulses[0], 5, 1},
    {"asMode", 92, 1, &asMode, 1, 1},
    {"cutRpm", 93, 1, cutRpm, 3, 250},
    {"cutPulses 2", 96, 1, cutPulses[1], 5, 1},
    {"cutPulses 3", 101, 1, cutPulses[2], 5, 1},
    {"lapInput", 106, 1, &lapInput, 1, 1},
};
const SetupRow extendRows[] = {
    {"lcOn", 512, 1, &lcOn, 1, 1},
    {"lcLockRpm", 513, 2, &lcLockRpm, 1, 1},
    {"lcReleaseRpm", 515, 2, &lcReleaseRpm, 1, 1},
    {"lcToleranceRpm", 517, 2, &lcToleranceRpm, 1, 1},
    {"awcCorrection", 519, 1, &awcCorrection, 1, 1},
    {"awcType3InUse", 528, 1, &awcType3InUse, 1, 1},
    {"awcType3", 529, 1, awcType3, 7, 1},
};

uint8_t SetupByte(int at) { return static_cast<uint8_t>(at * 7 + 3); }
LogBytes HeaderWithSetup(int version) {
    LogBytes log = HeaderOf(version);
    log.resize(1024, 0);
    for (int at = 48; at < 64; at++) log[at] = SetupByte(at);
    for (int at = 80; at < 107; at++) log[at] = SetupByte(at);
    for (int at = 512; at < 536; at++) log[at] = SetupByte(at);
    return log;
}
template <class Rows>
void ExpectSetup(const Rows& rows) {
    for (const SetupRow& row : rows)
        for (int i = 0; i < row.count; i++) {
            int at = row.at + i, raw = SetupByte(at);
            if (row.bytes == 2) raw = raw * 256 + SetupByte(at + 1);
            EXPECT_EQ(row.values[i], raw * row.unit) << row.name << " " << i;
        }
}
template <class Rows>
std::vector<int> SetupValues(const Rows& rows) {
    std::vector<int> values;
    for (const SetupRow& row : rows) values.insert(values.end(), row.values, row.values + row.count);
    return values;
}

TEST_F(NativeHeader, SetUpValuesComeFromFile1) {
    for (int version : everyVersion) {
        SCOPED_TRACE(version);
        DefaultSetupValues();
        ReadIntoSlot(0, HeaderWithSetup(version));
        ExpectSetup(setupRows);
    }
}

TEST_F(NativeHeader, SetUpValuesStayWhenAnotherFileIsRead) {
    const auto values = SetupValues(setupRows), extend = SetupValues(extendRows);
    for (int slot : {1, 2}) ReadIntoSlot(slot, HeaderWithSetup(4));
    EXPECT_EQ(SetupValues(setupRows), values);
    EXPECT_EQ(SetupValues(extendRows), extend);
}

TEST_F(NativeHeader, ExtendControlComesFromVersions3And4Alone) {
    for (int version : everyVersion) {
        SCOPED_TRACE(version);
        DefaultSetupValues();
        const auto before = SetupValues(extendRows);
        ReadIntoSlot(0, HeaderWithSetup(version));
        if (version == 3 || version == 4) ExpectSetup(extendRows);
        else EXPECT_EQ(SetupValues(extendRows), before);
    }
}

TEST_F(NativeHeader, FirmwareTextIsThatOfFile1WithAll14Bytes) {
    LogBytes log = HeaderSaying("Zrvetger V0020", 2);
    ReadIntoSlot(1, log);
    EXPECT_STREQ(firmwareText, "");
    ReadIntoSlot(0, log);
    EXPECT_STREQ(firmwareText, "Zrvetger V0020");
    log[5] = 0;
    ReadIntoSlot(0, log);
    EXPECT_EQ(std::string(firmwareText, 14), std::string("Zrve\0ger V0020", 14));
}

TEST_F(NativeHeader, LinkRatioIsTheCodeAnd150InFile1Alone) {
    const struct { int code, ratio; } rows[] = {{0, 229}, {1, 151}, {85, 235}, {255, 405}};
    for (const auto& row : rows) {
        LogBytes log = HeaderOf(2);
        log[31] = static_cast<uint8_t>(row.code);
        ReadIntoSlot(0, log);
        EXPECT_EQ(LinkRatio[0], row.ratio);
        ReadIntoSlot(1, log);
        EXPECT_EQ(LinkRatio[1], 233);
    }
}

TEST_F(NativeHeader, SprocketsUnder10Become1InFile1Alone) {
    const struct { int front, rear, frontRead, rearRead; } rows[] = {{9, 43, 1, 1}, {15, 9, 1, 1}, {10, 10, 10, 10}, {0, 0, 1, 1}};
    for (const auto& row : rows) {
        LogBytes log = HeaderOf(2);
        log[25] = static_cast<uint8_t>(row.front);
        log[26] = static_cast<uint8_t>(row.rear);
        ReadIntoSlot(0, log);
        EXPECT_EQ(frontSprocket[0], row.frontRead);
        EXPECT_EQ(rearSprocket[0], row.rearRead);
        ReadIntoSlot(1, log);
        EXPECT_EQ(frontSprocket[1], row.front);
        EXPECT_EQ(rearSprocket[1], row.rear);
    }
}

}  // namespace
