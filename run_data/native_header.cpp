#include "run_data/native_header.h"

#include <algorithm>
#include <cstring>

#include "run_data/byte_order.h"
#include "run_data/fixed_point.h"
#include "run_data/log_header.h"
#include "run_data/run_store.h"
#include "run_data/setup_values.h"

static bool BeginsWith(const uint8_t* header, const char* text) { return std::memcmp(header, text, std::strlen(text)) == 0; }

int NativeVersion(const uint8_t* header) {
    int version = header[versionAt];
    if (version <= 2) return version;
    // Firmware before V9.01.10 writes fixed frames whatever byte 15 says.
    if (BeginsWith(header, "3ZrvetV9.01.0") || BeginsWith(header, "3ZrvetV9.001.")) return 2;
    // Kept: the four bytes behind the V count as plain values, so the digits "0020" are far above the limit.
    int revision = ((header[11] * 16 + header[12]) * 16 + header[13]) * 16 + header[14];
    if (BeginsWith(header, "3Zrvetger V") && revision < 32) return 2;
    return version;
}

// An unsigned number of one or two bytes.
static int ReadNumber(const uint8_t* header, int at, int bytes) { return bytes == 2 ? ReadU16Be(header + at) : header[at]; }

// Numbers that are stored per slot as they are, raised to a lowest value.
struct SensorField {
    int  at, bytes;
    int* perSlot;
    int  low;
};
static const SensorField sensorFields[] = {
    {neDividerAt,     1, neDivider,     0},
    {frontPulsesAt,   1, frontPulses,   1},
    {frontTyreAt,     2, frontTyreMm,   100},
    {rearOnGearboxAt, 1, rearOnGearbox, 0},
    {rearPulsesAt,    1, rearPulses,    1},
    {rearTyreAt,      2, rearTyreMm,    100},
    {gearboxPulsesAt, 1, gearboxPulses, 0},
    {frontSprocketAt, 1, frontSprocket, 0},
    {rearSprocketAt,  1, rearSprocket,  0},
    {tpsClosedAt,     1, tpsClosedRaw,  0},
    {tpsOpenAt,       1, tpsOpenRaw,    0},
    {tpsSpanAt,       2, tpsSpan,       0},
    {fsusTypeAt,      1, fsusType,      0},
    {rsusTypeAt,      1, rsusType,      0},
};

// 10 bit reading at stroke zero. The first units log 8 bits and leave the low two alone.
static int ReadZero(const uint8_t* header, int highAt, int lowAt, int version) {
    return header[highAt] * 4 + (IsFirstUnitVersion(version) ? 0 : header[lowAt] >> 6);
}

static void ReadSensors(int slot, const uint8_t* header) {
    for (const SensorField& f : sensorFields) f.perSlot[slot] = std::max(ReadNumber(header, f.at, f.bytes), f.low);
    neRange[slot] = header[neRangeAt] >= 3 ? header[neRangeAt] : 0;
    if (header[marksPerLapAt] >= 1 && header[marksPerLapAt] <= 3) MarksPerLap[slot] = header[marksPerLapAt];
    fsusZeroRaw[slot] = ReadZero(header, fsusZeroHighAt, fsusZeroLowAt, formatVersion[slot]);
    rsusZeroRaw[slot] = ReadZero(header, rsusZeroHighAt, rsusZeroLowAt, formatVersion[slot]);
    fsusStroke[slot] = ReadI16Be(header + fsusStrokeAt);
    rsusStroke[slot] = ReadI16Be(header + rsusStrokeAt);
}

// Gear ratios x 1000, and the speeds between which each gear is recognised.
static void ComputeGearLimits(int slot) {
    primaryRatio[slot] = primaryMain[slot] * 1000 / primaryCounter[slot];
    int previous = 0;
    for (int gear = 0; gear < gearTotal; gear++) {
        int ratio = gearMain[slot][gear] * 1000 / gearCounter[slot][gear];
        gearLimit[slot][gear] = gear == 0 ? ratio * 2 : (ratio + previous) / 2;
        previous = ratio;
    }
}

static void ReadTeeth(int slot, const uint8_t* header) {
    const uint8_t* pair = header + teethAt;
    bool complete = true;
    for (int i = 0; i <= gearTotal; i++) complete = complete && pair[2 * i + 1] != 0;
    primaryMain[slot] = pair[0];
    primaryCounter[slot] = pair[1];
    for (int gear = 0; gear < gearTotal; gear++) {
        gearMain[slot][gear] = pair[2 * gear + 2];
        gearCounter[slot][gear] = pair[2 * gear + 3];
    }
    if (!complete) DefaultTeeth(slot);
    ComputeGearLimits(slot);
}

static void ReadCalibration(int slot, int input, const uint8_t* header) {
    const uint8_t* block = header + analogBlockAt + input * analogBlockSize;
    AnalogCalibration& c = analog[slot][input];
    AnalogCalibration& logged = analogAsLogged[slot][input];
    int type = header[analogTypeAt + input];
    if (type > 3) {
        // Kept: an unknown type leaves the calibration of the slot's last log in both sets.
        c.type = logged.type = type;
        return;
    }
    c = {};
    c.type = type;
    if (type == 2) {
        c.slope = ReadI16Be(block);
        c.offset = ReadI16Be(block + analogBlockB);
    }
    for (int point = 0; type == 3 && point < curvePoints; point++) {
        c.curveX[point] = static_cast<int16_t>((block[point] * 5000 + 127) / 255);
        c.curveY[point] = ReadI16Be(block + analogBlockB + 2 * point);
    }
    logged = c;
}

// Set-up values of the logger unit, File 1 only; stored as the number read times `unit`.
struct SetupField {
    int  at, bytes;
    int* value;
    int  count, unit;
};
static const SetupField setupFields[] = {
    {awcModeAt,          1, &awcMode,            1, 1},
    {hysteresisAt,       1, &shifterHysteresis,  1, 1},
    {neutralRpmAt,       2, &neutralRpm,         1, 1},
    {awcSlipAt,          2, &awcSlipThreshold,   1, 1},
    {awcOffPulsesAt,     1, &awcOffPulses,       1, 1},
    {awcOnPulsesAt,      1, &awcOnPulses,        1, 1},
    {awcContinuousAt,    1, &awcContinuousPulses, 1, 1},
    {awcRepeatAt,        1, &awcRepeatPulses,    1, 1},
    {indicatorRpmAt,     1, indicatorRpm,        indicatorGears, 100},
    {shifterDirectionAt, 1, &shifterDirection,   1, 1},
    {resetLevelAt,       1, &shifterResetLevel,  1, 1},
    {triggerLevelAt,     1, shifterTrigger,      shiftTotal, 1},
    {cutPulses1At,       1, cutPulses[0],        shiftTotal, 1},
    {asModeAt,           1, &asMode,             1, 1},
    {cutRpmAt,           1, cutRpm,              cutRows, 250},
    {cutPulses2At,       1, cutPulses[1],        shiftTotal, 1},
    {cutPulses3At,       1, cutPulses[2],        shiftTotal, 1},
    {lapInputAt,         1, &lapInput,           1, 1},
};
static const SetupField extendFields[] = {
    {lcOnAt,           1, &lcOn,          1, 1},
    {lcLockRpmAt,      2, &lcLockRpm,     1, 1},
    {lcReleaseRpmAt,   2, &lcReleaseRpm,  1, 1},
    {lcToleranceRpmAt, 2, &lcToleranceRpm, 1, 1},
    {awcCorrectionAt,  1, &awcCorrection, 1, 1},
    {awcType3InUseAt,  1, &awcType3InUse, 1, 1},
    {awcType3At,       1, awcType3,       7, 1},
};

static void ReadSetupField(const SetupField& f, const uint8_t* header) {
    for (int i = 0; i < f.count; i++) f.value[i] = ReadNumber(header, f.at + i * f.bytes, f.bytes) * f.unit;
}

// What only a log in File 1 sets: it becomes the base of the next set-up file.
static void ReadFileOneFields(const uint8_t* header) {
    std::memset(firmwareText, 0, sizeof firmwareText);
    std::memcpy(firmwareText, header + firmwareAt, firmwareSize);
    LinkRatio[0] = header[linkRatioAt] == 0 ? 229 : header[linkRatioAt] + 150;
    for (const SetupField& f : setupFields) ReadSetupField(f, header);
    if (IsChangeMaskVersion(formatVersion[0]))
        for (const SetupField& f : extendFields) ReadSetupField(f, header);
    if (frontSprocket[0] < 10 || rearSprocket[0] < 10) frontSprocket[0] = rearSprocket[0] = 1;
}

static void ReadMemo(int slot, const uint8_t* header) {
    std::memset(memoText[slot], 0, sizeof memoText[slot]);
    for (int i = 0; i < memoLimit && header[memoAt + i] != 0; i++) memoText[slot][i] = static_cast<char>(header[memoAt + i]);
}

void ReadNativeHeader(int slot, const uint8_t* header) {
    ReadSensors(slot, header);
    ReadTeeth(slot, header);
    for (int input = 0; input < analogInputs; input++) ReadCalibration(slot, input, header);
    if (slot == 0) ReadFileOneFields(header);
    ReadMemo(slot, header);
}
