// From raw readings to stored values: the formulas of each channel and version, row by row, through logs of a sample or two.
#include "run_data/native_scaling.h"

#include <gtest/gtest.h>

#include "app/frame_loop.h"
#include "run_data/run_store.h"
#include "settings/settings.h"
#include "tests/run_data/log_builder.h"

namespace {

class NativeScaling : public testing::Test {
  protected:
    void SetUp() override {
        LoadDefaults();
        SmoothingSTD = 0;  // the samples stay as decoded
    }
    void TearDown() override { LoadDefaults(); }
};

bool IsMasked(int version) { return version == 3 || version == 4; }
bool IsFirst(int version) { return version == 0 || version == 32; }

// The raw readings of a sample; strokes have 10 bits (versions 0 and 32: a multiple of 4) or 16.
struct Readings {
    int ne = 0, th = 0, front = 0, rear = 0;
    int inputs[4] = {0, 0, 0, 0};  // LAF1, LAF2, AUX1, AUX2
    int vb = -1;                   // a good battery
};

void AddFixed(LogBytes& log, const Readings& r) {
    bool first = IsFirst(log[15]);
    size_t at = log.size();
    log.resize(at + 16, 0);
    uint8_t* frame = log.data() + at;
    frame[0] = static_cast<uint8_t>(r.ne >> 8);
    frame[1] = static_cast<uint8_t>(r.ne);
    if (!first) frame[4] = static_cast<uint8_t>((r.front & 3) << 6 | (r.rear & 3) << 4);
    frame[6] = static_cast<uint8_t>(r.th);
    frame[7] = static_cast<uint8_t>(r.front >> 2);
    frame[8] = static_cast<uint8_t>(r.rear >> 2);
    for (int input = 0; input < (first ? 2 : 4); input++) frame[9 + input] = static_cast<uint8_t>(r.inputs[input]);
    if (!first) frame[13] = static_cast<uint8_t>(r.vb < 0 ? 170 : r.vb);
}
void AddMasked(LogBytes& log, const Readings& r) {
    bool wide = log[15] == 4;
    MaskFrame f;
    f.ne = r.ne;
    f.th = r.th;
    f.fsus = wide ? r.front : r.front >> 2;
    f.rsus = wide ? r.rear : r.rear >> 2;
    f.vrw = wide ? 0 : (r.front & 3) << 14 | (r.rear & 3) << 12;
    f.laf1 = r.inputs[0];
    f.laf2 = r.inputs[1];
    f.aux1 = r.inputs[2];
    f.aux2 = r.inputs[3];
    f.vb = r.vb < 0 ? (wide ? 43690 : 170) : r.vb;
    AddFrame(log, f);
}
void Add(LogBytes& log, const Readings& r) { IsMasked(log[15]) ? AddMasked(log, r) : AddFixed(log, r); }

// Reads a log of this header and one sample into File 2.
void ReadOne(LogBytes log, const Readings& r) {
    Add(log, r);
    ReadIntoSlot(1, log);
    ASSERT_EQ(sampleCount[1], 2);
}

// -- engine speed --

TEST_F(NativeScaling, EngineSpeedIsTheCountByTheDividerOrTwiceTheCount) {
    const struct { int divider, raw, stored; } rows[] = {
        {1, 12345, 12345}, {2, 12345, 6172}, {2, 1, 0},     {3, 65535, 21845}, {255, 65535, 257},
        {255, 254, 0},     {0, 100, 200},    {0, 40000, 14464}};  // 80000 wraps at 16 bits
    for (int version : {0, 1, 2, 3, 4, 32})
        for (const auto& row : rows) {
            LogBytes log = HeaderOf(version);
            log[16] = static_cast<uint8_t>(row.divider);
            ReadOne(log, {.ne = row.raw});
            EXPECT_EQ(Ne[1][1], row.stored) << "version " << version << " divider " << row.divider << " raw " << row.raw;
        }
}

TEST_F(NativeScaling, EngineSpeedDeltasAreScaledBeforeTheyAreAdded) {
    const struct { int divider, first, delta, stored; } rows[] = {
        {1, 1000, -3, 997}, {1, 1000, 127, 1127}, {1, 1000, -128, 872},
        {2, 1000, -3, 499},  // 500 - 1: -3 / 2 is -1
        {2, 1000, -1, 500},  {2, 1000, 1, 500},   {2, 1001, 3, 501},
        {0, 1000, -5, 1990}, {0, 1000, 5, 2010},
        {2, 0, -4, 65534},   {1, 65535, 1, 0}};  // wraps at 16 bits
    for (int version : {3, 4})
        for (const auto& row : rows) {
            LogBytes log = HeaderOf(version);
            log[16] = static_cast<uint8_t>(row.divider);
            MaskFrame absolute, delta;
            absolute.ne = row.first;
            delta.neDelta = row.delta;
            AddFrame(log, absolute);
            AddFrame(log, delta);
            ReadIntoSlot(1, log);
            EXPECT_EQ(Ne[1][2], row.stored) << "divider " << row.divider << " " << row.first << " and " << row.delta;
        }
}

// -- battery --

TEST_F(NativeScaling, BatteryVoltageIs20VoltsAtTheFullReading) {
    const struct { int raw, stored; } bytes[] = {{0, 0}, {1, 7}, {114, 894}, {115, 901}, {170, 1333}, {255, 2000}};
    const struct { int raw, stored; } words[] = {{0, 0}, {32, 0}, {33, 1}, {29523, 900}, {29524, 901}, {32768, 1000}, {65535, 2000}};
    for (int version : {1, 2, 3})
        for (const auto& row : bytes) {
            ReadOne(HeaderOf(version), {.vb = row.raw});
            EXPECT_EQ(VB[1][1], row.stored) << "version " << version << " raw " << row.raw;
        }
    for (const auto& row : words) {
        ReadOne(HeaderOf(4), {.vb = row.raw});
        EXPECT_EQ(VB[1][1], row.stored) << row.raw;
    }
    for (int version : {0, 32}) {
        LogBytes log = QuietLog(version, 3);  // byte 13 is set and means nothing
        ReadIntoSlot(1, log);
        EXPECT_EQ(VB[1][2], 0) << "version " << version;
    }
}

// -- throttle --

TEST_F(NativeScaling, ThrottleOfVersions0And32IsTheSpansTenthPerCount) {
    const struct { int closed, span, raw, stored; } rows[] = {
        {20, 50, 200, 900}, {20, 50, 10, -50}, {20, 1, 16, 0}, {20, 3, 16, -1}, {20, 3, 24, 1}, {0, 65535, 255, 1671142}};
    for (int version : {0, 32})
        for (const auto& row : rows) {
            LogBytes log = HeaderOf(version);
            log[32] = static_cast<uint8_t>(row.closed);
            log[33] = 255;
            Put16(log, 34, row.span);
            ReadOne(log, {.th = row.raw});
            EXPECT_EQ(TH[1][1], row.stored) << "closed " << row.closed << " span " << row.span << " raw " << row.raw;
        }
}

TEST_F(NativeScaling, ThrottleLiesBetweenClosedAndOpen) {
    const struct { int closed, open, raw, stored; } rows[] = {
        {20, 220, 20, 0},   {20, 220, 120, 500},  {20, 220, 220, 1000}, {20, 220, 10, -50},  {20, 220, 255, 1175},
        {220, 20, 120, 500}, {220, 20, 255, -175}, {20, 23, 21, 333},    {20, 23, 19, -333},  {20, 23, 255, 78333},
        {77, 77, 255, 0},   {0, 255, 1, 3},       {255, 0, 254, 3}};
    for (int version : {1, 2, 3})
        for (const auto& row : rows) {
            LogBytes log = HeaderOf(version);
            log[32] = static_cast<uint8_t>(row.closed);
            log[33] = static_cast<uint8_t>(row.open);
            ReadOne(log, {.th = row.raw});
            EXPECT_EQ(TH[1][1], row.stored) << "version " << version << " " << row.closed << ".." << row.open << " raw " << row.raw;
        }
}

TEST_F(NativeScaling, ThrottleOfVersion4Has16Bits) {
    const struct { int closed, open, raw, stored; } rows[] = {
        {20, 220, 5120, 0},   {20, 220, 30720, 500}, {20, 220, 30719, 499}, {20, 220, 0, -100}, {20, 220, 65535, 1179},
        {220, 20, 30720, 500}, {20, 220, 5171, 0},    {20, 220, 5172, 1},    {20, 21, 65535, 235996},
        {77, 77, 65535, 0}};
    for (const auto& row : rows) {
        LogBytes log = HeaderOf(4);
        log[32] = static_cast<uint8_t>(row.closed);
        log[33] = static_cast<uint8_t>(row.open);
        ReadOne(log, {.th = row.raw});
        EXPECT_EQ(TH[1][1], row.stored) << row.closed << ".." << row.open << " raw " << row.raw;
    }
}

// -- strokes --

struct StrokeRow {
    int type, stroke, zero, raw;
    int front, rear;  // stored
};
void ExpectStrokes(int version, const StrokeRow& row) {
    LogBytes log = HeaderOf(version);
    log[36] = log[37] = static_cast<uint8_t>(row.type);
    log[39] = log[40] = static_cast<uint8_t>(row.zero >> 2);
    log[41] = log[42] = static_cast<uint8_t>(row.zero << 6);
    Put16(log, 43, row.stroke);
    Put16(log, 45, row.stroke);
    ReadOne(log, {.front = row.raw, .rear = row.raw});
    SCOPED_TRACE("version " + std::to_string(version) + " type " + std::to_string(row.type) + " stroke " +
                 std::to_string(row.stroke) + " zero " + std::to_string(row.zero) + " raw " + std::to_string(row.raw));
    EXPECT_EQ(FSUS[1][1], row.front);
    EXPECT_EQ(RSUS[1][1], row.rear);
}

TEST_F(NativeScaling, StrokesOfVersion0AreThoseOfTheFixedSensorWhateverTheType) {
    const StrokeRow rows[] = {{0, 0, 1020, 0, 18713, 12464}, {0, 0, 1020, 200, 15044, 10020}, {0, 0, 1020, 1020, 0, 0},
                              {0, 0, 400, 0, 7339, 4888},    {0, 0, 400, 200, 3670, 2444},    {0, 0, 400, 1020, -11374, -7575}};
    for (StrokeRow row : rows)
        for (int type : {0, 1, 2, 255})
            for (int stroke : {1500, -1500}) {
                row.type = type;
                row.stroke = stroke;
                ExpectStrokes(0, row);
            }
}

TEST_F(NativeScaling, StrokesOfVersion32HaveTheirOwnFormulaAndWrap) {
    const StrokeRow rows[] = {{0, 0, 1020, 0, -6732, -13000}, {0, 0, 1020, 200, -10397, -15441}, {0, 0, 1020, 1020, -25426, -25451},
                              {0, 0, 400, 0, 8768, 2500},     {0, 0, 400, 200, 5103, 59},        {0, 0, 400, 1020, -9926, -9951}};
    for (StrokeRow row : rows)
        for (int type : {0, 1, 2, 255})
            for (int stroke : {1500, -1500}) {
                row.type = type;
                row.stroke = stroke;
                ExpectStrokes(32, row);
            }
}

TEST_F(NativeScaling, StrokesOfVersions1To3FollowTheType) {
    const StrokeRow rows[] = {
        // fixed: the stroke field means nothing
        {0, -1500, 1023, 0, 18768, 12500}, {0, 1500, 1023, 511, 9394, 6257}, {0, 0, 400, 401, -18, -12}, {0, 9, 0, 1023, -18768, -12500},
        // linear, stroke at or above 0
        {1, 0, 1023, 511, 0, 0}, {1, 1500, 1023, 0, 15000, 15000}, {1, 1500, 1023, 511, 7508, 7508}, {1, 1500, 400, 401, -14, -14},
        {1, 1500, 0, 1023, -15000, -15000}, {1, 32767, 1023, 511, -32612, -32612}, {1, 32767, 0, 1023, 10, 10},
        // none
        {2, 1500, 1023, 511, 0, 0}, {2, -1500, 0, 1023, 0, 0}, {255, 1500, 400, 401, 0, 0}};
    for (int version : {1, 2, 3})
        for (const StrokeRow& row : rows) ExpectStrokes(version, row);
}

TEST_F(NativeScaling, ANegativeStrokeLosesItsFirstTermInVersions1And2Alone) {
    const struct { StrokeRow early, later; } rows[] = {
        {{1, -1500, 1023, 0, 0, 0}, {1, -1500, 1023, 0, -15000, -15000}},
        {{1, -1500, 1023, 511, -7492, -7492}, {1, -1500, 1023, 511, -7508, -7508}},
        {{1, -1500, 400, 401, -15014, -15014}, {1, -1500, 400, 401, 14, 14}},
        {{1, -1500, 0, 1023, -30000, -30000}, {1, -1500, 0, 1023, 15000, 15000}},
        {{1, -32768, 1023, 511, -32607, -32607}, {1, -32768, 1023, 511, 32607, 32607}}};
    for (const auto& row : rows) {
        ExpectStrokes(1, row.early);
        ExpectStrokes(2, row.early);
        ExpectStrokes(3, row.later);
    }
}

TEST_F(NativeScaling, StrokesOfVersion4Have16Bits) {
    const StrokeRow rows[] = {
        {0, -1500, 1023, 0, 18750, 12488}, {0, 0, 1023, 32767, 9367, 6239}, {0, 0, 400, 25601, 0, 0}, {0, 0, 0, 65535, -18768, -12500},
        {1, 0, 1023, 32767, 0, 0}, {1, 1500, 1023, 0, 14986, 14986}, {1, 1500, 1023, 32767, 7486, 7486}, {1, 1500, 0, 65535, -15000, -15000},
        {1, -1500, 1023, 0, -14986, -14986}, {1, -1500, 1023, 32767, -7486, -7486}, {1, -1500, 0, 65535, 15000, 15000},
        // Exact products, of which the element takes 16 bits.
        {1, 32767, 1023, 32767, 32451, 32451}, {1, 32767, 400, 25601, -4, -4}, {1, -32768, 1023, 0, 315, 315}, {1, -32768, 1023, 32767, -32456, -32456},
        {2, 1500, 1023, 32767, 0, 0}, {255, -1500, 0, 65535, 0, 0}};
    for (const StrokeRow& row : rows) ExpectStrokes(4, row);
}

TEST_F(NativeScaling, FrontAndRearHaveTheirOwnSensors) {
    for (int version : {1, 2, 3}) {
        LogBytes log = HeaderOf(version);
        log[36] = 1;
        log[37] = 0;
        Put16(log, 43, 1500);
        log[40] = 100;  // rear zero 400
        log[42] = 0;
        ReadOne(log, {.front = 511, .rear = 401});
        EXPECT_EQ(FSUS[1][1], 7508);
        EXPECT_EQ(RSUS[1][1], -12);
    }
}

// -- analog inputs --

int32_t Input(int input) {
    const SampleArray<int32_t>* arrays[] = {&LAF1[1], &LAF2[1], &AUX1[1], &AUX2[1]};
    return (*arrays[input])[1];
}

struct InputRow { int type, raw, stored; };
void ExpectInputs(int version, const InputRow& row) {
    LogBytes log = HeaderOf(version);
    for (int input = 0; input < 4; input++) log[108 + input] = static_cast<uint8_t>(row.type);
    ReadOne(log, {.inputs = {row.raw, row.raw, row.raw, row.raw}});
    for (int input = 0; input < 4; input++)
        EXPECT_EQ(Input(input), row.stored) << "version " << version << " input " << input << " type " << row.type << " raw " << row.raw;
}

TEST_F(NativeScaling, InputsOfVersions0And32AreTwoAirFuelSensorsWhateverTheType) {
    const struct { int raw, stored; } rows[] = {{0, 900}, {1, 903}, {100, 1250}, {255, 1794}};
    for (int version : {0, 32})
        for (const auto& row : rows)
            for (int type : {0, 1, 2, 3, 9}) {
                LogBytes log = HeaderOf(version);
                for (int input = 0; input < 4; input++) log[108 + input] = static_cast<uint8_t>(type);
                ReadOne(log, {.inputs = {row.raw, row.raw, 0, 0}});
                EXPECT_EQ(LAF1[1][1], row.stored);
                EXPECT_EQ(LAF2[1][1], row.stored);
                EXPECT_EQ(AUX1[1][1], 0);
                EXPECT_EQ(AUX2[1][1], 0);
            }
}

TEST_F(NativeScaling, InputsOfByteReadingsFollowTheType) {
    const InputRow rows[] = {{0, 0, 900}, {0, 1, 903}, {0, 100, 1253}, {0, 255, 1801}, {1, 0, 0},  {1, 1, 1},
                             {1, 100, 196}, {1, 255, 500}, {4, 0, 0}, {4, 200, 200}, {255, 255, 255}};
    for (int version : {1, 2, 3})
        for (const InputRow& row : rows) ExpectInputs(version, row);
}

TEST_F(NativeScaling, InputsOfWordReadingsFollowTheType) {
    const InputRow rows[] = {{0, 0, 900},     {0, 130, 901},   {0, 72, 900},     {0, 73, 901},     {0, 32768, 1352},
                             {0, 65535, 1804}, {1, 131, 0},     {1, 132, 1},      {1, 32768, 250},  {1, 65535, 500},
                             {4, 200, 200},   {255, 65535, 65535}};
    for (const InputRow& row : rows) ExpectInputs(4, row);
}

struct LinearRow { int slope, offset, raw, stored, storedAux2; };
void ExpectLinear(int version, const LinearRow& row) {
    LogBytes log = HeaderOf(version);
    for (int input = 0; input < 4; input++) {
        log[108 + input] = 2;
        Put16(log, 112 + 48 * input, row.slope);
        Put16(log, 128 + 48 * input, row.offset);
    }
    ReadOne(log, {.inputs = {row.raw, row.raw, row.raw, row.raw}});
    for (int input = 0; input < 4; input++)
        EXPECT_EQ(Input(input), input == 3 ? row.storedAux2 : row.stored)
            << "version " << version << " input " << input << " slope " << row.slope << " offset " << row.offset << " raw " << row.raw;
}

TEST_F(NativeScaling, LinearInputsOfByteReadingsAddTheirOffsetTimes100ButAux2AddsItAsItIs) {
    const LinearRow rows[] = {
        {1, 0, 0, 0, 0},         {1, 0, 127, 2, 2},           {1, 0, 255, 5, 5},         {-1, 0, 127, -2, -2},     {-1, 0, 255, -4, -4},
        {200, -50, 0, -50, 0},   {200, -50, 1, -46, 3},       {200, -50, 127, 448, 497}, {200, -50, 255, 950, 999},
        {-200, 37, 1, 33, -3},   {-200, 37, 127, -461, -497}, {-200, 37, 255, -962, -999},
        {32767, 32767, 255, 196602, 164162}, {-32768, -32768, 255, -196607, -164167}, {-32768, -32768, 127, -114366, -81926}};
    for (int version : {1, 2, 3})
        for (const LinearRow& row : rows) ExpectLinear(version, row);
}

TEST_F(NativeScaling, LinearInputsOfWordReadingsAddTheirOffsetTimes100ButAux2AddsItAsItIs) {
    const LinearRow rows[] = {
        {1, 0, 1, 0, 0},         {1, 0, 32767, 2, 2},           {1, 0, 65535, 5, 5},         {-1, 0, 65535, -4, -4},
        {200, -50, 0, -50, 0},   {200, -50, 32767, 449, 499},   {200, -50, 65535, 950, 999}, {-200, 37, 1, 36, 0},
        {-200, 37, 32767, -462, -499}, {32767, 32767, 1, 32769, 330},
        {32767, 32767, 65535, 196602, 164162}, {-32768, -32768, 65535, -196607, -164167}};
    for (const LinearRow& row : rows) ExpectLinear(4, row);
}

// A curve with points at byte x, from (0 mV, 0) to (5000 mV, 1500), flat steps of 17 bytes.
void PutCurve(LogBytes& log, int input) {
    log[108 + input] = 3;
    for (int point = 0; point < 16; point++) {
        log[112 + 48 * input + point] = static_cast<uint8_t>(17 * point);
        Put16(log, 128 + 48 * input + 2 * point, point * 100 + input);
    }
}

TEST_F(NativeScaling, CurveInputsAreLookedUpInMillivolts) {
    // Points lie at 17 x 5000 / 255 = 333 mV, 667, 1000 ...
    const struct { int byte, word, stored; } rows[] = {
        {0, 0, 0},        // 0 mV
        {1, 257, 6},      // 20 mV: 100 x 20 / 333
        {17, 4369, 100},  // 333 mV
        {26, 6682, 152},  // 510 mV, rounded from 509.8; 100 x 177 / 334 is 52
        {51, 13107, 300}, // 1000 mV
        {255, 65535, 1500}};
    for (int version : {1, 2, 3, 4})
        for (const auto& row : rows) {
            LogBytes log = HeaderOf(version);
            for (int input = 0; input < 4; input++) PutCurve(log, input);
            int raw = version == 4 ? row.word : row.byte;
            ReadOne(log, {.inputs = {raw, raw, raw, raw}});
            for (int input = 0; input < 4; input++)
                EXPECT_EQ(Input(input), row.stored + input) << "version " << version << " input " << input << " raw " << raw;
        }
}

// -- curve look-up --

void SetCurve(int input, const int (&x)[16], const int (&y)[16]) {
    for (int point = 0; point < 16; point++) {
        analog[2][input].curveX[point] = static_cast<int16_t>(x[point]);
        analog[2][input].curveY[point] = static_cast<int16_t>(y[point]);
    }
}
constexpr int risingX[16] = {100, 200, 300, 400, 500, 600, 700, 800, 900, 1000, 1100, 1200, 1300, 1400, 1500, 1600};
constexpr int wavingY[16] = {5, 10, -10, 0, 32767, -32768, 1, 2, 3, 4, 5, 6, 7, 8, 9, 999};

TEST_F(NativeScaling, CurveLookUpGoesStraightBetweenPoints) {
    SetCurve(0, risingX, wavingY);
    const struct { int mV, value; } rows[] = {
        {1600, 999},  {30000, 999},                   // at the last point and above
        {1599, 989},                                  // 990 x 99 / 100 + 9
        {100, 5},     {150, 7},      {199, 9},        // 5 x 50 / 100 is 2
        {200, 10},    {250, 0},      {299, -9},       // falling: -20 x 99 / 100 is -19
        {500, 32767}, {550, 0},      {599, -32112},   // -65535 x 50 / 100 is -32767
        {99, 5},      {0, 5},        {-400, 5}};      // below the first point
    for (const auto& row : rows) EXPECT_EQ(LookupAnalogCurve(2, row.mV, 6), row.value) << row.mV;
}

TEST_F(NativeScaling, CurveLookUpTakesTheLastPointThatIsNotAbove) {
    // Out of order: a curve that the dialog or a damaged log may hold.
    constexpr int x[16] = {1000, 500, 2000, 0, 0, 0, 3000, 3000, 100, 4000, 50, 60, 70, 80, 90, 5000};
    constexpr int y[16] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16};
    SetCurve(1, x, y);
    EXPECT_EQ(LookupAnalogCurve(2, 4999, 7), 15);  // 90 .. 5000: 1 x 4909 / 4910 + 15
    EXPECT_EQ(LookupAnalogCurve(2, 55, 7), 11);    // 50 .. 60
    EXPECT_EQ(LookupAnalogCurve(2, 0, 7), 6);      // 0 .. 3000
    EXPECT_EQ(LookupAnalogCurve(2, -1, 7), 1);
}

TEST_F(NativeScaling, CurveLookUpKnowsFourChannels) {
    for (int input = 0; input < 4; input++) {
        int y[16];
        std::fill(std::begin(y), std::end(y), 100 + input);
        SetCurve(input, risingX, y);
    }
    const int values[16] = {0, 0, 0, 0, 0, 0, 100, 101, 0, 102, 103, 0, 0, 0, 0, 0};
    for (int channel = 0; channel < 16; channel++) EXPECT_EQ(LookupAnalogCurve(2, 750, channel), values[channel]) << channel;
    EXPECT_EQ(LookupAnalogCurve(2, 750, -1), 0);
}

}  // namespace
