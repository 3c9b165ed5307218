#include "run_data/native_scaling.h"

#include "run_data/fetch_ahead.h"
#include "run_data/look_up.h"
#include "run_data/native_log.h"
#include "run_data/run_store.h"
#include "run_data/spread_frames.h"

ReadingScale ThrottleScale(int slot, int version) {
    int closed = tpsClosedRaw[slot];
    if (IsFirstUnitVersion(version)) return {tpsSpan[slot], -int64_t{closed} * tpsSpan[slot], 10};  // (raw - closed) x span / 10
    int unit = version == 4 ? 256 : 1;
    int span = (tpsOpenRaw[slot] - closed) * unit;
    return span == 0 ? ReadingScale{0} : ReadingScale{1000, -1000 * closed * unit, span};  // (raw - closed) x 1000 / span
}

StrokeSensor FrontSensor(int slot) { return {18768, fsusType[slot], fsusZeroRaw[slot], fsusStroke[slot]}; }
StrokeSensor RearSensor(int slot) { return {12500, rsusType[slot], rsusZeroRaw[slot], rsusStroke[slot]}; }

// The sensor's zero lies at the top of the scale: counts are raw + full - zero.
static int CountsAtReadingZero(const StrokeSensor& sensor, int version) {
    return FullStroke(version) - sensor.zero * (version == 4 ? 64 : 1);
}

// span - counts x span / full
static ReadingScale FixedStrokeScale(const StrokeSensor& sensor, int version) {
    int span = sensor.fixedSpan;
    if (version == 32) return {-span, 0, 1024, span - 25 * sensor.zero};
    return {-span, -int64_t{span} * CountsAtReadingZero(sensor, version), FullStroke(version), span};
}

// stroke x 10 - stroke x counts x 10 / full
static ReadingScale LinearStrokeScale(const StrokeSensor& sensor, int version) {
    int span = sensor.stroke * 10;
    int64_t addend = int64_t{span} * CountsAtReadingZero(sensor, version);
    // Kept: versions 1 and 2 measure a negative stroke from the other end, versions 3 and 4 do not.
    if (version <= 2 && span < 0) return {span, addend, FullStroke(version)};
    return {-span, -addend, FullStroke(version), span};
}

ReadingScale StrokeScale(const StrokeSensor& sensor, int version) {
    if (IsFixedSensor(sensor, version)) return FixedStrokeScale(sensor, version);
    return sensor.type == 1 ? LinearStrokeScale(sensor, version) : ReadingScale{0};
}

// The built-in air/fuel sensor.
static ReadingScale AirFuelScale(int version) {
    if (IsFirstUnitVersion(version)) return {1000, 0, 285, 900};
    return {1000, 0, 283 * (version == 4 ? 256 : 1), 900};
}

// ((slope x raw x 500 + full / 2) / full + offset) / 100
static ReadingScale LinearInputScale(const AnalogCalibration& c, int input, int version) {
    int full = FullReading(version);
    // Kept: AUX2 adds its offset unscaled, the other inputs add theirs times 100.
    int offset = input == 3 ? c.offset : c.offset * 100;
    return {c.slope * 500, full / 2, full, offset, true};
}

bool HasCurve(int slot, int input, int version) { return !IsFirstUnitVersion(version) && analog[slot][input].type == 3; }

ReadingScale InputScale(int slot, int input, int version) {
    const AnalogCalibration& c = analog[slot][input];
    if (IsFirstUnitVersion(version) || c.type == 0) return AirFuelScale(version);
    switch (c.type) {
        case 1: return {500, 0, FullReading(version)};  // volts
        case 2: return LinearInputScale(c, input, version);
        case 3: return {5000, FullReading(version) / 2, FullReading(version)};
        default: return {};
    }
}

constexpr int inputChannels[analogInputs] = {chLAF1, chLAF2, chAUX1, chAUX2};
constexpr int highestMillivolts = 5000;

struct LogScales {
    CellScale engineSpeed, throttle, front, rear, voltage;
    CellScale inputs[analogInputs];
    bool    hasCurve[analogInputs];
    int32_t curves[analogInputs][highestMillivolts + 1];
};
static LogScales scales;  // of the log that is being read

// Readings that have a table find the curve's value in it.
static void BuildInput(int slot, int input, int version) {
    CellScale& scale = scales.inputs[input];
    MakeReady(scale, InputScale(slot, input, version), FullReading(version));
    scales.hasCurve[input] = HasCurve(slot, input, version);
    if (!scales.hasCurve[input]) return;
    int32_t* curve = scales.curves[input];
    for (int mv = 0; mv <= highestMillivolts; mv++) curve[mv] = LookupAnalogCurve(slot, mv, inputChannels[input]);
    if (scale.way != CellScale::table) return;
    for (int reading = 0; reading <= FullReading(version); reading++) scale.values[reading] = curve[scale.values[reading]];
    FindDistinct(scale, FullReading(version));
    scales.hasCurve[input] = false;
}

void BuildScales(int slot, int version) {
    MakeReady(scales.engineSpeed, EngineSpeedScale(neDivider[slot]), 0xFFFF);
    MakeReady(scales.throttle, ThrottleScale(slot, version), FullReading(version));
    MakeReady(scales.front, StrokeScale(FrontSensor(slot), version), FullStroke(version));
    MakeReady(scales.rear, StrokeScale(RearSensor(slot), version), FullStroke(version));
    MakeReady(scales.voltage, VoltageScale(version), FullReading(version));
    for (int input = 0; input < analogInputs; input++) BuildInput(slot, input, version);
}

// Counts where the mask has them, deltas elsewhere; keep gets all bits where a delta is added to the value before, and none
// elsewhere.
static void ChooseCounts(const uint16_t* __restrict masks, const uint16_t* __restrict deltas, uint16_t* __restrict counts,
                         uint16_t* __restrict keep) {
    for (int c = lead; c < blockCells; c++) {
        const uint16_t adds = static_cast<uint16_t>((masks[c] >> WordBit(neWord) & 1) - 1);
        keep[c] = adds;
        counts[c] = static_cast<uint16_t>((counts[c] & ~adds) | (deltas[c] & adds));
    }
}

// Deltas of the engine speed are scaled by themselves and added to the stored value before.
static void ScaleEngineSpeed(SampleBlock& b, int version) {
    if (!IsChangeMaskVersion(version)) return ScaleCells(scales.engineSpeed, b.words[neWord], b.ne);
    alignas(16) static uint16_t counts[blockCells], deltas[blockCells], keep[blockCells];
    ScaleCells(scales.engineSpeed, b.words[neWord], counts);
    ScaleCells(scales.engineSpeed, reinterpret_cast<const int16_t*>(b.words[neWord]), deltas);
    ChooseCounts(b.words[maskWord], deltas, counts, keep);
    uint16_t before = b.ne[b.first - 1];
    for (int c = b.first; c < b.end; c++) b.ne[c] = before = static_cast<uint16_t>((before & keep[c]) + counts[c]);
}

// Whether later steps can do without the values of an input: those of fixed frames look at nothing but how often they change,
// and where all are distinct the readings tell that too.
static bool GoesStraight(const SampleBlock& b, int input, int version) {
    if (!IsFullBlock(b) || IsChangeMaskVersion(version)) return false;
    return IsFirstUnitVersion(version) || scales.inputs[input].distinct;
}

static SampleArray<int32_t>& InputArray(int slot, int input) {
    SampleArray<int32_t>* const arrays[analogInputs] = {LAF1, LAF2, AUX1, AUX2};
    return arrays[input][slot];
}

static void ScaleInput(SampleBlock& b, int input, int version) {
    const CellScale& scale = scales.inputs[input];
    const uint16_t* readings = b.fields[inputFields + input];
    int32_t* cells = b.inputs[input];
    b.delivered[input] = GoesStraight(b, input, version);
    if (b.delivered[input]) {
        StreamScaled(scale, readings, InputArray(b.slot, input).data() + b.start);
        cells[blockCells - 1] = scale.values[readings[blockCells - 1]];  // the next block may look at it
        return;
    }
    ScaleCells(scale, readings, cells);
    if (scales.hasCurve[input]) LookUp(cells, scales.curves[input], cells);
}

void ScaleReadings(SampleBlock& b, int version, const uint8_t* next, int64_t nextBytes) {
    const bool firstUnit = IsFirstUnitVersion(version);
    const int inputs = firstUnit ? 2 : analogInputs;
    FetchAhead ahead(next, nextBytes, 4 + inputs);
    ahead.Step();
    ScaleEngineSpeed(b, version);
    ahead.Step();
    ScaleCells(scales.throttle, b.fields[throttleField], b.th);
    ahead.Step();
    ScaleCells(scales.front, b.fields[frontField], b.fsus);
    ahead.Step();
    ScaleCells(scales.rear, b.fields[rearField], b.rsus);
    for (int input = 0; input < inputs; input++) {
        ahead.Step();
        ScaleInput(b, input, version);
    }
    if (!firstUnit) ScaleCells(scales.voltage, b.fields[voltageField], b.vb);
}

int LookupAnalogCurve(int slot, int millivolts, int channel) {
    int input = 0;
    while (input < analogInputs && inputChannels[input] != channel) input++;
    if (input == analogInputs) return 0;
    const int16_t* x = analog[slot][input].curveX;
    const int16_t* y = analog[slot][input].curveY;
    if (millivolts >= x[curvePoints - 1]) return y[curvePoints - 1];
    for (int i = curvePoints - 2; i >= 0; i--) {
        if (millivolts < x[i]) continue;
        // x[i + 1] is above millivolts and so above x[i], whatever the order of the points.
        return static_cast<int>(int64_t{y[i + 1] - y[i]} * (millivolts - x[i]) / (x[i + 1] - x[i])) + y[i];
    }
    return y[0];
}
