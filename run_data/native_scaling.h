// native_scaling.h -- from raw readings of a native log to stored values, one formula per channel and version.
//
// Functions of the reading and of the slot's sensor parameters. Products are 64 bits wide where 32 do not hold them, and
// the element's width decides what wraps. The decoder builds its tables from these, and calls them where a table would be
// too large; with a constant version each is a few instructions.
#pragma once
#include <cstdint>

#include "run_data/channels.h"
#include "run_data/fixed_point.h"
#include "run_data/native_header.h"
#include "run_data/native_log.h"
#include "run_data/run_store.h"

// Highest reading of an analog input, throttle or battery; of a stroke.
constexpr int FullReading(int version) { return version == 4 ? 65535 : 255; }
constexpr int FullStroke(int version) { return version == 4 ? 65535 : 1023; }

// From this battery voltage on (0.01 V) throttle and strokes are believed.
constexpr int trustedVoltage = 901;

// Battery voltage, 0.01 V.
constexpr int ScaleVoltage(int raw, int version) { return raw * 2000 / FullReading(version); }

// Engine speed: raw count / divider; 0 doubles the count. Deltas are scaled the same way.
constexpr int ScaleEngineSpeed(int raw, int divider) { return divider == 0 ? raw * 2 : raw / divider; }

// Throttle, 0.1 %.
inline int32_t ScaleThrottle(int slot, int raw, int version) {
    int closed = tpsClosedRaw[slot];
    if (IsFirstUnitVersion(version)) return (raw - closed) * tpsSpan[slot] / 10;
    int unit = version == 4 ? 256 : 1;
    int span = (tpsOpenRaw[slot] - closed) * unit;
    return span == 0 ? 0 : (raw - closed * unit) * 1000 / span;
}

// A stroke sensor as the header describes it.
struct StrokeSensor {
    int fixedSpan;  // 0.01 mm, of the fixed sensor
    int type;       // 0 fixed, 1 linear, else none
    int zero;       // 10 bits
    int stroke;     // 0.1 mm, signed, of the linear sensor
};
inline StrokeSensor FrontSensor(int slot) { return {18768, fsusType[slot], fsusZeroRaw[slot], fsusStroke[slot]}; }
inline StrokeSensor RearSensor(int slot) { return {12500, rsusType[slot], rsusZeroRaw[slot], rsusStroke[slot]}; }
// Versions 0 and 32 take every sensor as the fixed one.
constexpr bool IsFixedSensor(const StrokeSensor& sensor, int version) { return IsFirstUnitVersion(version) || sensor.type == 0; }

// Reading counted from the sensor's zero, which lies at the top of the scale.
constexpr int StrokeCounts(const StrokeSensor& sensor, int raw, int version) {
    return raw + FullStroke(version) - sensor.zero * (version == 4 ? 64 : 1);
}
constexpr int16_t ScaleFixedStroke(const StrokeSensor& sensor, int raw, int version) {
    if (version == 32) return Wrap16(sensor.fixedSpan - raw * sensor.fixedSpan / 1024 - 25 * sensor.zero);
    // Unsigned: the product of version 4 needs all 32 bits, and counts are never negative.
    uint32_t part = static_cast<uint32_t>(StrokeCounts(sensor, raw, version)) * static_cast<uint32_t>(sensor.fixedSpan);
    return Wrap16(sensor.fixedSpan - static_cast<int>(part / FullStroke(version)));
}
constexpr int16_t ScaleLinearStroke(const StrokeSensor& sensor, int raw, int version) {
    int64_t part = int64_t{sensor.stroke} * StrokeCounts(sensor, raw, version) * 10 / FullStroke(version);
    // Kept: versions 1 and 2 measure a negative stroke from the other end, versions 3 and 4 do not.
    return version <= 2 && sensor.stroke < 0 ? Wrap16(part) : Wrap16(sensor.stroke * 10 - part);
}
// Stroke, 0.01 mm.
constexpr int16_t ScaleStroke(const StrokeSensor& sensor, int raw, int version) {
    if (IsFixedSensor(sensor, version)) return ScaleFixedStroke(sensor, raw, version);
    return sensor.type == 1 ? ScaleLinearStroke(sensor, raw, version) : 0;
}

// Analog inputs, 0.01 of the unit, by type: the built-in air/fuel sensor, volts, linear, curve.
constexpr int ScaleAirFuel(int raw, int version) {
    if (IsFirstUnitVersion(version)) return raw * 1000 / 285 + 900;
    return raw * 1000 / 283 / (version == 4 ? 256 : 1) + 900;
}
constexpr int ScaleVolts(int raw, int version) { return raw * 500 / FullReading(version); }
constexpr int ScaleLinearInput(const AnalogCalibration& c, int input, int raw, int version) {
    int full = FullReading(version);
    // Kept: AUX2 adds its offset unscaled, the other inputs add theirs times 100.
    int offset = input == 3 ? c.offset : c.offset * 100;
    return static_cast<int>(((int64_t{c.slope} * raw * 500 + full / 2) / full + offset) / 100);
}
constexpr int Millivolts(int raw, int version) { return (raw * 5000 + FullReading(version) / 2) / FullReading(version); }
constexpr int inputChannels[analogInputs] = {chLAF1, chLAF2, chAUX1, chAUX2};
inline int32_t ScaleInput(int slot, int input, int raw, int version) {
    const AnalogCalibration& c = analog[slot][input];
    if (IsFirstUnitVersion(version) || c.type == 0) return ScaleAirFuel(raw, version);
    switch (c.type) {
        case 1: return ScaleVolts(raw, version);
        case 2: return ScaleLinearInput(c, input, raw, version);
        case 3: return LookupAnalogCurve(slot, Millivolts(raw, version), inputChannels[input]);
        default: return raw;
    }
}
