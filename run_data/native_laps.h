// native_laps.h -- distances and lap marks of a native log, found block by block.
#pragma once
#include <cstdint>

#include "run_data/native_block.h"

struct LapSearch {
    int  slot;
    int  lap;         // index of the next mark, and of the lap that lapLength now sums
    bool needsPower;  // a mark counts only while VB is above markVoltage
    int  markVoltage;  // 0.01 V
};

LapSearch StartLaps(int slot, int version, const uint8_t* header);
// Fills the block's distances, and lapStart and lapLength of the slot.
void FindLaps(LapSearch& search, SampleBlock& block);
// Ends the lap table of a log of `samples` samples, sample 0 included, and sets lapCount and sampleCount.
void EndLaps(LapSearch& search, int samples);
