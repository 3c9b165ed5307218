#include "run_data/native_laps.h"

#include "run_data/log_header.h"
#include "run_data/native_scaling.h"
#include "run_data/run_store.h"
#include "run_data/running_sum.h"
#include "settings/settings.h"

constexpr uint16_t markBit = 0x8000;
constexpr uint32_t shortestLap = 600;  // samples, 3 s: a receiver sees the same beacon more than once
constexpr uint32_t shortestRest = 50;  // samples behind the last mark of a log

LapSearch StartLaps(int slot, int version, const uint8_t* header) {
    // Kept: versions 0 and 32 begin at mark 2, so that a log without marks has two laps, the first of length 0.
    bool firstUnit = IsFirstUnitVersion(version);
    return {slot, firstUnit ? 2 : 1, !firstUnit, Scaled(VoltageScale(2), header[lapVoltageAt])};
}

static void AddDistances(SampleBlock& b) {
    RunningSum(b.vfw + lead, b.distFront + lead, blockSize);
    RunningSum(b.vrw + lead, b.distRear + lead, blockSize);
}

static bool IsMark(const LapSearch& search, const SampleBlock& b, int c) {
    if (!(b.words[vfwWord][c] & markBit) || search.lap >= lapMarkLimit) return false;
    if (search.needsPower && b.vb[c] <= search.markVoltage) return false;
    return Debug || lapStart[search.slot][search.lap - 1] + shortestLap < static_cast<uint32_t>(SampleAt(b, c));
}

// Distances of the cells from..to - 1, counted from another start. Nearly always these are all cells of a block, for which the
// loop's length is known.
static void Shift(const uint32_t* __restrict distance, uint32_t* __restrict shifted, uint32_t offset, int from, int to) {
    if (from == lead && to == blockCells) {
        for (int c = lead; c < blockCells; c++) shifted[c] = distance[c] + offset;
    } else {
        for (int c = from; c < to; c++) shifted[c] = distance[c] + offset;
    }
}

// Goes on from cell `from` with the lap under way: sums its length and its distances up to the cell `to`, exclusive.
static void AddToLap(const LapSearch& search, SampleBlock& b, const uint32_t* distance, int from, int to) {
    lapLength[search.slot][search.lap] += distance[to - 1] - distance[from - 1];
    uint32_t offset = b.lapDistance[from - 1] - distance[from - 1];
    Shift(distance, b.lapDistance, offset, from, to);
}

static bool HasMarkBit(const SampleBlock& b) {
    uint16_t all = 0;
    for (int c = lead; c < blockCells; c++) all |= b.words[vfwWord][c];
    return all & markBit;
}

void FindLaps(LapSearch& search, SampleBlock& b) {
    AddDistances(b);
    const uint32_t* distance = CoursePosSource == 1 ? b.distRear : b.distFront;
    int from = lead, end = HasMarkBit(b) ? b.end : b.first;
    for (int c = b.first; c < end; c++) {
        if (!IsMark(search, b, c)) continue;
        AddToLap(search, b, distance, from, c + 1);
        from = c + 1;
        lapStart[search.slot][search.lap] = SampleAt(b, c);
        if (search.lap % HeldMarksPerLap(search.slot) == 0) {
            lapLength[search.slot][search.lap + 1] = 0;
            b.lapDistance[c] = 0;
        }
        search.lap++;
    }
    AddToLap(search, b, distance, from, blockCells);
}

void EndLaps(LapSearch& search, int samples) {
    int slot = search.slot;
    // A mark at the very end is no lap.
    if (search.lap > 1 && samples - lapStart[slot][search.lap - 1] < shortestRest) search.lap--;
    lapCount[slot] = search.lap;
    sampleCount[slot] = samples;
    FillLapEnd(slot);
}
