// native_scaling.h -- from raw readings of a native log to stored values, one scale per channel and version.
//
// A scale follows from the version and the slot's sensor parameters. Its numbers are those of the formulas beside it; the
// element's width decides what wraps.
#pragma once
#include <cstdint>

#include "run_data/channels.h"
#include "run_data/native_block.h"
#include "run_data/native_header.h"
#include "run_data/reading_scale.h"

// Highest reading of an analog input, throttle or battery; of a stroke.
constexpr int FullReading(int version) { return version == 4 ? 65535 : 255; }
constexpr int FullStroke(int version) { return version == 4 ? 65535 : 1023; }

// From this battery voltage on (0.01 V) throttle and strokes are believed.
constexpr int trustedVoltage = 901;

// Battery voltage, 0.01 V: raw x 2000 / full.
constexpr ReadingScale VoltageScale(int version) { return {2000, 0, FullReading(version)}; }
// Engine speed: raw count / divider; 0 doubles the count. Deltas are scaled the same way.
constexpr ReadingScale EngineSpeedScale(int divider) { return divider == 0 ? ReadingScale{2} : ReadingScale{1, 0, divider}; }
// Throttle, 0.1 %.
ReadingScale ThrottleScale(int slot, int version);

// A stroke sensor as the header describes it.
struct StrokeSensor {
    int fixedSpan;  // 0.01 mm, of the fixed sensor
    int type;       // 0 fixed, 1 linear, else none
    int zero;       // 10 bits
    int stroke;     // 0.1 mm, signed, of the linear sensor
};
StrokeSensor FrontSensor(int slot);
StrokeSensor RearSensor(int slot);
// Versions 0 and 32 take every sensor as the fixed one.
constexpr bool IsFixedSensor(const StrokeSensor& sensor, int version) { return IsFirstUnitVersion(version) || sensor.type == 0; }
// Stroke, 0.01 mm.
ReadingScale StrokeScale(const StrokeSensor& sensor, int version);

// Analog inputs, 0.01 of the unit. One with a curve is scaled to millivolts first, which the curve is looked up by.
bool HasCurve(int slot, int input, int version);
ReadingScale InputScale(int slot, int input, int version);

// All scales of a log whose header has been read.
void BuildScales(int slot, int version);
// Stored values of the block's readings: ne from its words, th, strokes, inputs and vb from fields, of all cells. Meanwhile the
// stretch of the log that is read next comes near, which may lie behind its end.
void ScaleReadings(SampleBlock& block, int version, const uint8_t* next, int64_t nextBytes);
