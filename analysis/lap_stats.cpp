#include "analysis/lap_stats.h"

#include <algorithm>
#include <cstring>

#include "analysis/lap_marks.h"
#include "analysis/lap_order.h"
#include "analysis/lap_scan.h"
#include "analysis/sector_times.h"
#include "graph/view_state.h"
#include "run_data/fixed_point.h"
#include "views/course_file.h"

LapStats lapStats[fileSlots];
int bestRow[fileSlots][statTotal];
int bestLap[fileSlots], secondLap[fileSlots];
int bestSector[fileSlots][sectorTotal], secondSector[fileSlots][sectorTotal];
int lapChecked[fileSlots][lapTableSize];
int lapScanCount;

#define EXTREME(name) &LapStats::name, nullptr, &LapStats::name##At
#define SLIP(name) nullptr, &LapStats::name, &LapStats::name##At
#define MEAN(name) &LapStats::name, nullptr, nullptr
const StatColumn statColumns[statTotal] = {
    {"minNe", EXTREME(minNe), chNe, 65535, -1},        {"maxNe", EXTREME(maxNe), chNe, 0, 1},
    {"maxVFW", EXTREME(maxVFW), chVFW, 0, 1},          {"maxVRW", EXTREME(maxVRW), chVRW, 0, 1},
    {"maxFSUS", EXTREME(maxFSUS), chFSUS, 0, 1},       {"maxRSUS", EXTREME(maxRSUS), chRSUS, 0, 1},
    {"avrFSUS", MEAN(avrFSUS), chFSUS, 0, 1},          {"avrRSUS", MEAN(avrRSUS), chRSUS, 0, 1},
    {"minSlip", SLIP(minSlip), chSlip, 0, -1},         {"maxSlip", SLIP(maxSlip), chSlip, 0, 1},
    {"minAUX1", EXTREME(minAUX1), chAUX1, 65535, -1},  {"maxAUX1", EXTREME(maxAUX1), chAUX1, 0, 1},
    {"minAUX2", EXTREME(minAUX2), chAUX2, 65535, -1},  {"maxAUX2", EXTREME(maxAUX2), chAUX2, 0, 1},
    {"minLAF1", EXTREME(minLAF1), chLAF1, 65535, -1},  {"maxLAF1", EXTREME(maxLAF1), chLAF1, 0, 1},
    {"minLAF2", EXTREME(minLAF2), chLAF2, 65535, -1},  {"maxLAF2", EXTREME(maxLAF2), chLAF2, 0, 1},
    {"maxVFSus", EXTREME(maxVFSus), chVFSus, 0, 1},    {"minVFSus", EXTREME(minVFSus), chVFSus, 0, -1},
    {"maxVRSus", EXTREME(maxVRSus), chVRSus, 0, 1},    {"minVRSus", EXTREME(minVRSus), chVRSus, 0, -1},
};
#undef EXTREME
#undef SLIP
#undef MEAN

// Which scanned channel a column's channel is.
static constexpr int scanOf[channelTotal] = {scanNe,   -1, scanVFW,  scanVRW,  scanFSUS, scanRSUS,  scanLAF1,
                                             scanLAF2, -1, scanAUX1, scanAUX2, -1,       scanVFSus, scanVRSus};

// What the per-lap results of a slot depend on. While it stays, the samples need not be read again.
struct ScanKey {
    uint32_t dataVersion, lapStart[lapTableSize];
    int      sampleCount, lapCount, marks;
    float    factor;
};
static ScanKey scannedFor[fileSlots];

static ScanKey KeyAtHand(int slot) {
    ScanKey key{};
    key.dataVersion = dataVersion[slot];
    std::copy(std::begin(lapStart[slot]), std::end(lapStart[slot]), key.lapStart);
    key.sampleCount = sampleCount[slot];
    key.lapCount = lapCount[slot];
    key.marks = HeldMarksPerLap(slot);
    key.factor = neFactor[slot];
    return key;
}

double StatValue(int slot, int column, int row) {
    const StatColumn& c = statColumns[column];
    return c.slip ? static_cast<double>((lapStats[slot].*c.slip)[row]) : (lapStats[slot].*c.value)[row];
}

double BestValue(int slot, int column) {
    const int row = bestRow[slot][column];
    return row == emptyRow ? statColumns[column].start : StatValue(slot, column, row);
}

int LapTimeAt(int slot, int pointer) { return pointer == emptyRow ? noLapTime : lapStats[slot].lapTime[pointer]; }

int SectorTimeAt(int slot, int pointer, int sector) {
    return pointer == emptyRow ? noLapTime : lapStats[slot].sectorTime[pointer][sector];
}

int StoredValue(int slot, int channel, uint32_t sample) {
    switch (channel) {
        case chNe: return Ne[slot][sample];
        case chVFW: return VFW[slot][sample];
        case chVRW: return VRW[slot][sample];
        case chFSUS: return FSUS[slot][sample];
        case chRSUS: return RSUS[slot][sample];
        case chLAF1: return LAF1[slot][sample];
        case chLAF2: return LAF2[slot][sample];
        case chAUX1: return AUX1[slot][sample];
        case chAUX2: return AUX2[slot][sample];
        case chSlip: return TruncToInt(SlipAt(sample, slot) * 100);
        case chVFSus: return VFSus[slot][sample];
        case chVRSus: return VRSus[slot][sample];
        default: return 0;
    }
}

static void ClearStats(int slot) {
    LapStats& stats = lapStats[slot];
    for (const StatColumn& c : statColumns) {
        if (c.value) std::fill(std::begin(stats.*c.value), std::end(stats.*c.value), c.start);
        if (c.slip) std::fill(std::begin(stats.*c.slip), std::end(stats.*c.slip), 0.0f);
        if (c.at) std::fill(std::begin(stats.*c.at), std::end(stats.*c.at), 0);
    }
    std::fill(std::begin(stats.lapTime), std::end(stats.lapTime), noLapTime);
}

static LapScan StartOfScan() {
    LapScan scan{};
    for (const StatColumn& c : statColumns)
        if (c.value && c.at) (c.sign < 0 ? scan.lowest : scan.highest)[scanOf[c.channel]].value = c.start;
    return scan;
}

// Reads the samples of one lap into its row. A lap without samples keeps the start values and no time.
static void ScanRow(int slot, int row, int marks) {
    LapStats& stats = lapStats[slot];
    const uint32_t start = lapStart[slot][row], end = lapStart[slot][row + marks];
    const uint32_t first = std::max<uint32_t>(start, 1);  // sample 0 is no logged value
    LapScan scan = StartOfScan();
    ScanLap(slot, first, std::min<uint32_t>(end, sampleCount[slot]), neFactor[slot], scan);
    if (scan.samples == 0) return;
    for (const StatColumn& c : statColumns) {
        if (!c.value || !c.at) continue;
        const Extreme<int>& extreme = (c.sign < 0 ? scan.lowest : scan.highest)[scanOf[c.channel]];
        (stats.*c.value)[row] = extreme.value;
        (stats.*c.at)[row] = static_cast<int>(extreme.at);
    }
    stats.minSlip[row] = scan.lowestSlip.value;
    stats.minSlipAt[row] = static_cast<int>(scan.lowestSlip.at);
    stats.maxSlip[row] = scan.highestSlip.value;
    stats.maxSlipAt[row] = static_cast<int>(scan.highestSlip.at);
    stats.avrFSUS[row] = static_cast<int>(scan.sumFSUS / scan.samples);
    stats.avrRSUS[row] = static_cast<int>(scan.sumRSUS / scan.samples);
    stats.lapTime[row] = static_cast<int>(end - start);
}

static void ScanSlot(int slot) {
    const ScanKey key = KeyAtHand(slot);
    if (std::memcmp(&key, &scannedFor[slot], sizeof key) == 0) return;
    ClearStats(slot);
    for (int row = 0; row <= key.lapCount - key.marks; row += key.marks) ScanRow(slot, row, key.marks);
    scannedFor[slot] = key;
    lapScanCount++;
}

void TakeAsBest(int candidate, int row, int valueOfBest, int valueOfSecond, int& best, int& second) {
    if (candidate == noLapTime) return;  // an empty lap never becomes best
    if (candidate <= valueOfBest) {
        second = best;
        best = row;
    } else if (candidate <= valueOfSecond) {
        second = row;
    }
}

static void FindBestRows(int slot) {
    const int marks = HeldMarksPerLap(slot);
    std::fill(std::begin(bestRow[slot]), std::end(bestRow[slot]), emptyRow);
    bestLap[slot] = secondLap[slot] = emptyRow;
    for (int row = 0; row <= lapCount[slot] - marks; row += marks) {
        if (!lapChecked[slot][row]) continue;
        TakeAsBest(lapStats[slot].lapTime[row], row, LapTimeAt(slot, bestLap[slot]), LapTimeAt(slot, secondLap[slot]),
                   bestLap[slot], secondLap[slot]);
        for (int column = 0; column < statTotal; column++) {
            const int sign = statColumns[column].sign;
            if (sign * StatValue(slot, column, row) > sign * BestValue(slot, column)) bestRow[slot][column] = row;
        }
    }
}

// Mean over the checked rows of what `valueOf` gives, truncated; 0 without a checked row.
template <class ValueOf>
static int MeanOfChecked(int slot, ValueOf valueOf) {
    const int marks = HeldMarksPerLap(slot);
    int64_t sum = 0, rows = 0;
    for (int row = 0; row <= lapCount[slot] - marks; row += marks) {
        if (!lapChecked[slot][row]) continue;
        sum += valueOf(row);
        rows++;
    }
    return rows ? static_cast<int>(sum / rows) : 0;
}

static void ComputeAverages(int slot) {
    LapStats& stats = lapStats[slot];
    const int marks = HeldMarksPerLap(slot), first = lapCount[slot];
    for (const StatColumn& c : statColumns) {
        const bool speed = c.channel == chVFSus || c.channel == chVRSus;
        if (c.at) {
            const int mean = MeanOfChecked(slot, [&](int row) { return StoredValue(slot, c.channel, (stats.*c.at)[row]); });
            std::fill_n(stats.*c.at + first, marks, mean);
        }
        if (!c.at || speed) {
            const int mean = MeanOfChecked(slot, [&](int row) { return (stats.*c.value)[row]; });
            std::fill_n(stats.*c.value + first, marks, mean);
        }
    }
}

void ComputeLapStats() {
    for (int slot = 0; slot < fileSlots; slot++) {
        ClearSlotMarks(slot);
        HoldMarks();
        ScanSlot(slot);
        FindBestRows(slot);
        ComputeSectorTimes(slot);
        SortLaps(slot, statPage, sectorView);
        ComputeAverages(slot);
    }
}

void ResetLapChecks(int slot) {
    const int marks = HeldMarksPerLap(slot);
    for (int row = 0; row < emptyRow; row++) lapChecked[slot][row] = row > 0 && row < lapCount[slot] - marks;
    if (lapCount[slot] < 2) lapChecked[slot][0] = 1;
}

void DefaultLapStats() {
    lapScanCount = 0;
    for (int slot = 0; slot < fileSlots; slot++) {
        scannedFor[slot] = {};
        ClearStats(slot);
        DefaultSectorTimes(slot);
        std::fill(std::begin(lapChecked[slot]), std::end(lapChecked[slot]), 0);
        ResetLapChecks(slot);
    }
}
