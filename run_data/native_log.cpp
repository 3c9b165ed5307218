#include "run_data/native_log.h"

#include <algorithm>

#include "run_data/derived_channels.h"
#include "run_data/native_block.h"
#include "run_data/native_frames.h"
#include "run_data/native_header.h"
#include "run_data/native_laps.h"
#include "run_data/native_readings.h"
#include "run_data/native_scaling.h"
#include "run_data/run_store.h"
#include "run_data/stream_copy.h"
#include "settings/settings.h"

int nativeSizeEstimate;

void DefaultNativeLog() { nativeSizeEstimate = 0; }

constexpr int decodedSampleLimit = 21400000;  // samples: cursorPos counts hundredths of a sample in 32 bits
constexpr int64_t mostKeptSteps  = 32 << 20;  // bytes: what 8 hours take
constexpr int spareSamples       = 16;        // elements of every array behind the last frame

// A load also sets what a later set-up file will be written for.
static void FollowFormat(int version) {
    CompressFile = version >= 3 ? 1 : 0;
    if (version >= 3) CompressFileVer = version == 4 ? 4 : 3;
}

static void PrepareSlot(int slot) {
    std::fill(std::begin(lapStart[slot]), std::end(lapStart[slot]), 0);
    std::fill(std::begin(lapLength[slot]), std::end(lapLength[slot]), 0);
    timeFactor[slot] = 1.0;
    slotInUse[slot] = 1;
    nativeSizeEstimate = 0;
    std::fill(std::begin(auxDivider[slot]), std::end(auxDivider[slot]), 1);
    std::fill(std::begin(lafDivider[slot]), std::end(lafDivider[slot]), 1);
    tpsMinSeen[slot] = 120;
    tpsMaxSeen[slot] = 128;
    fsusMaxSeen[slot] = rsusMaxSeen[slot] = 0;
}

// All frames into the slot's arrays, which hold `capacity` samples; what no frame fills is cleared.
static void DecodeFrames(int slot, const uint8_t* log, int length, int capacity, const FrameSteps& steps) {
    static SampleBlock block;
    int version = formatVersion[slot];
    FrameReader reader = StartFrames(log, length, version, std::min(capacity, decodedSampleLimit), steps);
    LapSearch laps = StartLaps(slot, version, log);
    for (StartBlocks(block, slot);; NextBlock(block)) {
        ReadFrames(reader, block);
        ClearUnusedCells(block);
        JudgeVoltage(block, version);
        TrackExtremes(block, version, capacity);
        if (version == 1 || version == 2) EstimateSize(block);
        FindLaps(laps, block);
        if (block.end < blockCells) break;
        DeliverBlock(block);
    }
    // Kept: change-mask versions carry the voltage one sample on.
    EndBlocks(block, IsChangeMaskVersion(version));
    EndLaps(laps, SampleAt(block, block.end));
}

static void ShowFromStart(int slot) {
    cursorPos[slot] = 0;
    currentLap[slot] = 1;
    lapViewOffset[slot] = 0;
    std::fill(std::begin(jumpTarget), std::end(jumpTarget), -1);
}

// Samples that the arrays of a log need; 0 for a version that is none, and without memory for the walk.
static int Capacity(const uint8_t* log, int length, int version, FrameSteps& steps) {
    if (!IsNativeVersion(version)) return 0;
    int frames = IsChangeMaskVersion(version) ? WalkChangeMaskFrames(log, length, version, decodedSampleLimit, steps)
                                              : CountFixedFrames(length, decodedSampleLimit);
    return frames < 0 ? 0 : frames + spareSamples;
}

int DecodeNativeLog(int slot, const uint8_t* buffer, int length) {
    int version = formatVersion[slot] = NativeVersion(buffer);
    FollowFormat(version);
    static FrameSteps steps;  // kept from log to log: fresh pages cost more than the walk
    int capacity = Capacity(buffer, length, version, steps);
    if (EnsureChannels(slot, capacity)) {
        ResetSlot(slot);
        return 1;
    }
    PrepareSlot(slot);
    ReadNativeHeader(slot, buffer);
    BuildScales(slot, version);
    DecodeFrames(slot, buffer, length, capacity, steps);
    if (steps.room > mostKeptSteps) steps = {};
    ShowFromStart(slot);
    return 0;
}

void ReadNativeLog(int slot, const uint8_t* buffer, int length) {
    if (DecodeNativeLog(slot, buffer, length)) return;
    FinishChannels(slot);
}
