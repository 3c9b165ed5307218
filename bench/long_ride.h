// long_ride.h -- File 1 filled with 8 hours of made-up channels, without a log.
#pragma once
#include <cstdint>

// The next of a row of numbers that look random.
inline uint32_t NextNumber(uint32_t& state) { return state = state * 1664525 + 1013904223; }

// All channels of File 1 with sampleLimit samples of slowly moving values with noise, as sensors give them, after
// LoadDefaults. It has no lap marks and no distances.
void FillLongRide();
