// native_scaling.h -- from raw readings of a native log to stored values, one formula per channel and version.
//
// Pure functions of the reading and of the slot's sensor parameters; products are 64 bits wide, and the element's width
// decides what wraps. The decoder builds its tables from these.
#pragma once
#include <cstdint>

#include "run_data/fixed_point.h"

// Full scale of a reading: 255 counts in 8 bits, 65535 in version 4.
constexpr int FullScale(int version) { return version == 4 ? 65535 : 255; }
// Readings of an 8 bit input, and of a 10 bit stroke.
constexpr int byteReadings = 256;
constexpr int strokeReadings = 1024;
// The battery voltage from which on throttle and strokes are believed, and above which their extremes are; 0.01 V.
constexpr int trustedVoltage = 901;

// Spans of the fixed stroke sensors, 0.01 mm.
constexpr int frontFixedSpan = 18768;
constexpr int rearFixedSpan = 12500;

// Battery voltage, 0.01 V.
constexpr uint16_t ScaleVoltage(int raw, int version) { return static_cast<uint16_t>(raw * 2000LL / FullScale(version)); }

// Engine speed: raw count / divider, 0 doubles the count. Deltas of change-mask frames are scaled the same way.
constexpr int ScaleEngineSpeed(int raw, int divider) { return divider == 0 ? raw * 2 : raw / divider; }

// Throttle, 0.1 %, of any version.
int32_t ScaleThrottle(int slot, int raw, int version);

// A stroke sensor as the header describes it.
struct StrokeSensor {
    int fixedSpan;  // 0.01 mm
    int type;       // 0 fixed, 1 linear, else none
    int zero;       // 10 bit
    int stroke;     // 0.1 mm, signed
};
StrokeSensor FrontSensor(int slot);
StrokeSensor RearSensor(int slot);
// Stroke in 0.01 mm from a 10 bit reading, or a 16 bit one of version 4.
int16_t ScaleStroke(const StrokeSensor& sensor, int raw, int version);

// Analog input 0 to 3 (LAF1, LAF2, AUX1, AUX2) from an 8 bit reading, or a 16 bit one of version 4.
int32_t ScaleAnalog(int slot, int input, int raw, int version);
