#include "run_data/secondary_log.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <iterator>
#include <string>

#include "platform/boxes.h"
#include "run_data/byte_order.h"
#include "run_data/derived_channels.h"
#include "run_data/run_store.h"
#include "run_data/secondary_channels.h"
#include "run_data/secondary_header.h"
#include "run_data/setup_values.h"
#include "settings/settings.h"

using namespace secondaryHeader;

static int64_t LoggedSamples(const uint8_t* log) {
    const int64_t seconds = log[secondsAt] << 16 | ReadU16Be(log + secondsAt + 1);
    return seconds * 200;
}

static void ClearMarks(int slot) {
    std::fill(std::begin(lapStart[slot]), std::end(lapStart[slot]), 0);
    std::fill(std::begin(lapLength[slot]), std::end(lapLength[slot]), 0);
}

static void ResetView(int slot) {
    cursorPos[slot] = 0;
    currentLap[slot] = 1;
    lapViewOffset[slot] = 0;
}

// The samples of the slot's last log stay allocated, but nothing shows them.
static void RefuseLength(int slot, int64_t samples) {
    ClearMarks(slot);
    lapCount[slot] = 1;
    sampleCount[slot] = 1;
    ResetView(slot);
    ShowBox("Data file is corrupted.", "File Error!!");
    ShowBox(std::to_string(samples).c_str(), "File Error!!");
}

static void ReadTexts(int slot, const uint8_t* log) {
    std::memset(memoText[slot], 0, sizeof memoText[slot]);
    for (int i = 0; i < memoLimit && log[memoAt + i] != 0; i++) memoText[slot][i] = static_cast<char>(log[memoAt + i]);
    if (slot != 0) return;
    std::memset(firmwareText, 0, sizeof firmwareText);
    std::memcpy(firmwareText, log + textAt[firmwareBlock], textSize[firmwareBlock]);
}

// Kept: no lowest values for pulses and tyres.
static void ReadSensors(int slot, const uint8_t* log) {
    fsusType[slot] = log[flagsAt] & 1 ? 0 : 16;
    rsusType[slot] = log[flagsAt] & 2 ? 0 : 16;
    frontPulses[slot] = log[frontPulsesAt];
    rearPulses[slot] = log[rearPulsesAt];
    frontTyreMm[slot] = ReadU16Be(log + frontTyreAt) * 10;
    rearTyreMm[slot] = ReadU16Be(log + rearTyreAt) * 10;
    fsusZeroRaw[slot] = ReadU16Be(log + fsusZeroAt);
    rsusZeroRaw[slot] = ReadU16Be(log + rsusZeroAt);
    const int types[analogInputs] = {log[analogFlagsAt] & 1 ? 0 : 1, log[analogFlagsAt] & 2 ? 0 : 1, 1, 1};
    for (int k = 0; k < analogInputs; k++) analog[slot][k].type = analogAsLogged[slot][k].type = types[k];
    for (int k = 0; k < 2; k++) auxDivider[slot][k] = lafDivider[slot][k] = 1;
    SetUnknownGearing(slot);
    if (slot == 0) SetUnknownRevs();
}

// With Debug the rest of the header stands over the start of the memo.
static void WriteDiagnostic(int slot, const uint8_t* log) {
    std::string text;
    for (int block = 0; block < static_cast<int>(std::size(textAt)); block++) {
        const uint8_t* from = log + textAt[block];
        std::copy_if(from, from + textSize[block], std::back_inserter(text), [](uint8_t c) { return c > 32; });
        text += "\r\n";
    }
    text += static_cast<char>(log[smallNumberAt] + '0');
    text += "\r\n";
    auto addIntervals = [&](std::initializer_list<int> offsets) {
        for (int at : offsets) {
            char number[8];
            std::snprintf(number, sizeof number, "%03d ", ReadU16Be(log + at) % 1000);
            text += number;
        }
        text.replace(text.size() - 1, 1, "\r\n");
    };
    addIntervals({neIntervalAt, thIntervalAt, vfwIntervalAt, vrwIntervalAt});
    addIntervals({fsusIntervalAt, rsusIntervalAt, laf1IntervalAt, laf2IntervalAt});
    addIntervals({vbIntervalAt});
    std::memcpy(memoText[slot], text.data(), text.size());
}

// What the decoder left of the sample after the last is cleared, and of the one behind it.
static void ClearOutside(int slot) {
    ForEachSampleArray(slot, [&](auto& array, bool) {
        for (int i : {0, sampleCount[slot], sampleCount[slot] + 1})
            if (i < static_cast<int>(array.size())) array[i] = 0;
    });
}

static void AddUp(SampleArray<uint32_t>& distance, const SampleArray<uint16_t>& speed, int samples) {
    for (int j = 1; j <= samples; j++) distance[j] = distance[j - 1] + speed[j - 1];
}

// Kept: every mark restarts lapDistance, whatever MarksPerLap says. Marks need not rise; of equal ones only the first
// carries the lap's length.
static void AddUpLaps(int slot, const SampleArray<uint16_t>& speed) {
    struct Mark { uint32_t sample; int index; };
    Mark marks[lapTableSize];
    const int total = lapCount[slot] + 1;
    for (int k = 0; k < total; k++) marks[k] = {lapStart[slot][k], k};
    std::stable_sort(marks, marks + total, [](const Mark& a, const Mark& b) { return a.sample < b.sample; });
    const Mark* next = marks;
    while (next < marks + total && next->sample == 0) next++;
    uint32_t sum = 0;
    for (int j = 1; j <= sampleCount[slot]; j++) {
        sum += speed[j - 1];
        for (; next < marks + total && next->sample == static_cast<uint32_t>(j); next++) {
            lapLength[slot][next->index] = sum;
            sum = 0;
        }
        lapDistance[slot][j] = sum;
    }
}

// Kept: the rear wheel counts for the laps only where the log has no front wheel; CoursePosSource plays no part.
static void ComputeDistances(int slot, const uint8_t* log) {
    const bool front = ReadU16Be(log + vfwIntervalAt) >= 5, rear = ReadU16Be(log + vrwIntervalAt) >= 5;
    if (front) AddUp(distFront[slot], VFW[slot], sampleCount[slot]);
    if (rear) AddUp(distRear[slot], VRW[slot], sampleCount[slot]);
    if (front || rear) AddUpLaps(slot, front ? VFW[slot] : VRW[slot]);
}

static void Finish(int slot, const uint8_t* log) {
    FillLapEnd(slot);
    ResetView(slot);
    ClearOutside(slot);
    ComputeDistances(slot, log);
    FinishChannels(slot);
}

void ReadSecondaryLog(int slot, const uint8_t* buffer, int length) {
    const int64_t logged = LoggedSamples(buffer);
    if (logged > sampleLimit) return RefuseLength(slot, logged);
    const int samples = static_cast<int>(logged);
    ReadTexts(slot, buffer);
    if (EnsureChannels(slot, samples + 16) != 0) return ResetSlot(slot);
    ClearChannels(slot, samples + 16);
    ClearMarks(slot);
    timeFactor[slot] = 1.0;
    slotInUse[slot] = 1;
    ReadSensors(slot, buffer);
    if (Debug) WriteDiagnostic(slot, buffer);
    sampleCount[slot] = DecodeSecondaryStream(slot, buffer, length, samples, lapCount[slot]);
    Finish(slot, buffer);
}
