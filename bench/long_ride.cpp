#include "bench/long_ride.h"

#include <algorithm>

#include "app/frame_loop.h"
#include "run_data/run_store.h"

template <class T>
static void FillChannel(SampleArray<T>& array, int low, int high, uint32_t seed) {
    int value = (low + high) / 2;
    for (T& sample : array) {
        const int step = static_cast<int>(NextNumber(seed) >> 16) % 41 - 20;
        value = std::clamp(value + step, low, high);
        sample = static_cast<T>(value);
    }
}

void FillLongRide() {
    LoadDefaults();
    EnsureChannels(0, sampleLimit + 16);
    ClearChannels(0, sampleLimit + 16);
    slotInUse[0] = 1;
    sampleCount[0] = sampleLimit;
    fileKind[0] = 1;
    formatVersion[0] = 4;
    FillChannel(Ne[0], 1500, 17000, 1);
    FillChannel(TH[0], 0, 1000, 2);
    FillChannel(VFW[0], 0, 3200, 3);
    FillChannel(VRW[0], 0, 3300, 4);
    FillChannel(FSUS[0], 0, 12000, 5);
    FillChannel(RSUS[0], 0, 6000, 6);
    FillChannel(LAF1[0], 900, 1800, 7);
    FillChannel(LAF2[0], 900, 1800, 8);
    FillChannel(VB[0], 850, 1450, 9);
    FillChannel(AUX1[0], -5000, 5000, 10);
    FillChannel(AUX2[0], 0, 500, 11);
    FillChannel(VFSus[0], -2000, 2000, 12);
    FillChannel(VRSus[0], -2000, 2000, 13);
}
