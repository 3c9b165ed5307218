// Any bytes as a native log: a decoded log, or the fixed message and an empty slot. The other slots keep their data, and no
// array grows beyond what the file can fill.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <vector>

#include "app/frame_loop.h"
#include "platform/headless/script.h"
#include "run_data/log_header.h"
#include "run_data/native_frames.h"
#include "run_data/native_header.h"
#include "run_data/native_log.h"
#include "run_data/run_store.h"
#include "settings/settings.h"

namespace {

constexpr int margin = 1024;         // zero bytes behind a log
constexpr int neighbourSamples = 9;  // of the slots that are not read into
constexpr int spareSamples = 16;     // elements behind the last frame

void Require(bool holds) {
    if (!holds) std::abort();
}

// A small log that nothing but its number distinguishes.
void FillNeighbour(int slot) {
    EnsureChannels(slot, neighbourSamples + 1);
    ForEachSampleArray(slot, [slot](auto& array, bool) { std::fill(array.begin(), array.end(), slot + 3); });
    slotInUse[slot] = 1;
    sampleCount[slot] = neighbourSamples;
    lapCount[slot] = 1;
    lapStart[slot][0] = 0;
    lapLength[slot][0] = static_cast<uint32_t>(slot) + 3;
    FillLapEnd(slot);
}

void RequireNeighbour(int slot) {
    Require(slotInUse[slot] == 1 && sampleCount[slot] == neighbourSamples && lapCount[slot] == 1);
    Require(lapStart[slot][0] == 0 && lapStart[slot][1] == neighbourSamples);
    Require(lapLength[slot][0] == static_cast<uint32_t>(slot) + 3);
    ForEachSampleArray(slot, [slot](auto& array, bool) {
        Require(array.size() == neighbourSamples + 1);
        for (int64_t value : array) Require(value == slot + 3);
    });
}

// Bytes that the header reserves choose slot and settings.
int TakeSettings(const std::vector<uint8_t>& log) {
    const int chosen = log[29];
    Debug = chosen & 1;
    VBerrexp = chosen >> 1 & 1;
    CoursePosSource = chosen >> 2 & 1;
    SmoothingSTD = chosen >> 3 & 3;
    return log[38] % fileSlots;
}

void RequireEmpty(int slot) {
    Require(shown.size() == 1 && shown[0].text == "Memory Ensure Error.(Data Main buffers)" && shown[0].title == "Memory Error!!");
    Require(sampleCount[slot] == 1 && lapCount[slot] == 1 && slotInUse[slot] == (slot == 0 ? 1 : 0));
    ForEachSampleArray(slot, [](auto& array, bool) { Require(array.size() == 16); });
}

void RequireDecoded(int slot, int version, int64_t size) {
    Require(shown.empty() && slotInUse[slot] == 1 && timeFactor[slot] == 1.0);
    const bool masks = IsChangeMaskVersion(version);
    const int64_t frames = masks ? std::max<int64_t>(size - extendedHeaderSize, 0) / smallestMaskFrame + 1
                                 : std::max<int64_t>(size - headerSize, 0) / frameSize;
    Require(sampleCount[slot] >= 1 && sampleCount[slot] <= frames + 2);
    ForEachSampleArray(slot, [&](auto& array, bool) {
        Require(static_cast<int64_t>(array.size()) > sampleCount[slot]);
        Require(static_cast<int64_t>(array.size()) <= frames + spareSamples);
        Require(array[0] == 0);
    });
    Require(lapCount[slot] >= 1 && lapCount[slot] <= lapMarkLimit && lapStart[slot][0] == 0);
    for (int lap = 1; lap < lapTableSize; lap++) Require(lapStart[slot][lap] >= lapStart[slot][lap - 1]);
    for (int lap = lapCount[slot]; lap < lapTableSize; lap++)
        Require(lapStart[slot][lap] == static_cast<uint32_t>(sampleCount[slot]));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const bool started = (LoadDefaults(), true);
    (void)started;
    std::vector<uint8_t> log(data, data + size);
    log.resize(size + margin, 0);
    const int slot = TakeSettings(log);
    for (int other = 0; other < fileSlots; other++)
        if (other != slot) FillNeighbour(other);
    shown.clear();
    ReadNativeLog(slot, log.data(), static_cast<int>(size));
    const int version = NativeVersion(log.data());
    Require(formatVersion[slot] == version);
    if (IsNativeVersion(version)) RequireDecoded(slot, version, static_cast<int64_t>(size));
    else RequireEmpty(slot);
    for (int other = 0; other < fileSlots; other++)
        if (other != slot) RequireNeighbour(other);
    return 0;
}
