// lap_scan.h -- the extremes and means of one lap in a single pass over its samples.
#pragma once
#include <cstdint>

#include "run_data/channels.h"

// A value and the sample at which it first stood; the sample says nothing while the value is its start value.
template <class Value>
struct Extreme {
    Value    value;
    uint32_t at;
};

// Channels whose extremes a lap keeps, in stored units.
enum ScanChannel : int {
    scanNe, scanVFW, scanVRW, scanFSUS, scanRSUS, scanAUX1, scanAUX2, scanLAF1, scanLAF2, scanVFSus, scanVRSus,
    scanTotal
};

struct LapScan {
    Extreme<int>   lowest[scanTotal], highest[scanTotal];  // by strict comparison: the first sample names an extreme
    Extreme<float> lowestSlip, highestSlip;                // percent
    int64_t        sumFSUS, sumRSUS;                       // 0.01 mm
    int64_t        samples;                                // read
};

// Reads samples first to last - 1 of a slot. `scan` comes with its start values, 0 samples and 0 sums.
// Ne goes in as trunc(float(Ne) * factor).
void ScanLap(int slot, uint32_t first, uint32_t last, float factor, LapScan& scan);

// (VRW - VFW) * 100 / VFW in float for VFW above 50 (5.0 km/h), else 0. Percent.
inline float SlipPercent(int vfw, int vrw) {
    return vfw > 50 ? static_cast<float>((vrw - vfw) * 100) / static_cast<float>(vfw) : 0.0f;
}
float SlipAt(uint32_t sample, int slot);

// Lowest and highest slip of `count` samples, 1 or more: the plain form and the vector form give the same bits.
struct SlipRange { float low, high; };
SlipRange SlipRangePlain(const uint16_t* vfw, const uint16_t* vrw, int count);
SlipRange SlipRangeFast(const uint16_t* vfw, const uint16_t* vrw, int count);
