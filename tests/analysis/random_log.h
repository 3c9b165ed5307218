// random_log.h -- fills a slot as a load would, with random channels within believable bounds and marks as given. A lap's
// length counts the samples behind its first mark up to the next mark's own.
#pragma once
#include <random>
#include <vector>

#include "analysis/lap_stats.h"
#include "run_data/run_store.h"

inline void MakeRandomLog(int slot, int samples, const std::vector<uint32_t>& marks, unsigned seed = 1) {
    std::mt19937 random(seed);
    EnsureChannels(slot, samples + 16);
    ClearChannels(slot, samples + 16);
    slotInUse[slot] = 1;
    for (int i = 1; i < samples; i++) {
        Ne[slot][i] = static_cast<uint16_t>(1000 + random() % 15000);
        VFW[slot][i] = static_cast<uint16_t>(random() % 3000);
        VRW[slot][i] = static_cast<uint16_t>(random() % 3000);
        FSUS[slot][i] = static_cast<int16_t>(static_cast<int>(random() % 12000) - 500);
        RSUS[slot][i] = static_cast<int16_t>(static_cast<int>(random() % 7000) - 500);
        for (auto* input : {&LAF1[slot], &LAF2[slot], &AUX1[slot], &AUX2[slot]})
            (*input)[i] = static_cast<int32_t>(random() % 80000) - 2000;
        VFSus[slot][i] = static_cast<int16_t>(static_cast<int>(random() % 4000) - 2000);
        VRSus[slot][i] = static_cast<int16_t>(static_cast<int>(random() % 4000) - 2000);
        distFront[slot][i] = distFront[slot][i - 1] + VFW[slot][i];
    }
    lapCount[slot] = static_cast<int>(marks.size()) + 1;
    sampleCount[slot] = samples;
    lapStart[slot][0] = 0;
    for (size_t k = 0; k < marks.size(); k++) lapStart[slot][k + 1] = marks[k];
    FillLapEnd(slot);
    for (int lap = 1; lap <= lapCount[slot]; lap++) {
        lapLength[slot][lap] = 0;
        for (uint32_t i = lapStart[slot][lap - 1] + 1; i <= lapStart[slot][lap]; i++) lapLength[slot][lap] += VFW[slot][i];
    }
    ResetLapChecks(slot);
}
