#include "analysis/sector_times.h"

#include <algorithm>

#include "analysis/lap_stats.h"
#include "run_data/fixed_point.h"
#include "views/course_file.h"

// First n in 1..limit whose front wheel distance from the lap's start reaches `distance`; 0 when none does. Signed, as the
// running sum wraps in logs of many hours.
static int SamplesToDistance(int slot, uint32_t start, uint32_t limit, uint32_t distance) {
    const uint32_t* sum = distFront[slot].data() + start;
    const uint32_t base = sum[0];
    const auto reached = [&](uint32_t n) { return static_cast<int32_t>(sum[n] - base) >= static_cast<int32_t>(distance); };
    for (uint32_t n = 1; n <= limit; n++)
        if (reached(n)) return static_cast<int>(n);
    return 0;
}

static void TakeSector(int slot, int row, int sector, int samples) {
    lapStats[slot].sectorTime[row][sector] = samples;
    if (!lapChecked[slot][row]) return;
    int &best = bestSector[slot][sector], &second = secondSector[slot][sector];
    TakeAsBest(samples, row, SectorTimeOf(slot, best, sector), SectorTimeOf(slot, second, sector), best, second);
}

// Kept: the lap's length follows CoursePosSource, the distance walked is always the front wheel's.
static void EstimateLap(int slot, int row) {
    const uint32_t start = lapStart[slot][row], length = lapLength[slot][row + 1];
    const uint32_t limit = lapStart[slot][row + 1] - start + 1;
    const uint32_t readable = static_cast<uint32_t>(distFront[slot].size()) - 1 - start;
    int previous = 0;
    for (int sector = 0; sector < sectorTotal; sector++) {
        const int from = sectorMark[slot][sector], to = sectorMark[slot][sector + 1];
        if (from >= noSectorMark) continue;
        const uint32_t distance =
            to >= noSectorMark ? length : length / static_cast<uint32_t>(coursePointCount) * static_cast<uint32_t>(to);
        const int samples = SamplesToDistance(slot, start, std::min(limit, readable), distance);
        if (samples == 0) continue;
        TakeSector(slot, row, sector, samples - previous);
        previous = samples;
    }
}

static void MarksAsSectors(int slot, int row, int marks) {
    for (int sector = 0; sector < marks; sector++) {
        const int64_t samples = int64_t{lapStart[slot][row + sector + 1]} - lapStart[slot][row + sector];
        if (samples > 0) TakeSector(slot, row, sector, static_cast<int>(samples));
    }
}

void ComputeSectorTimes(int slot) {
    const int marks = HeldMarksPerLap(slot);
    for (auto& row : lapStats[slot].sectorTime) std::fill(std::begin(row), std::end(row), noLapTime);
    std::fill(std::begin(bestSector[slot]), std::end(bestSector[slot]), emptyRow);
    std::fill(std::begin(secondSector[slot]), std::end(secondSector[slot]), emptyRow);
    if (marks > 1)
        OverwriteSectorRow(slot, marks);
    else
        RestoreSectorRow(slot);
    if (!slotInUse[slot]) return;
    for (int row = 0; row <= lapCount[slot] - marks; row += marks) {
        if (marks == 1)
            EstimateLap(slot, row);
        else
            MarksAsSectors(slot, row, marks);
    }
}

// Samples as hundredths of a second of a slot's time, through float as the table has always shown them.
static int Centis(int slot, int64_t samples) {
    return TruncToInt(static_cast<float>(samples) / timeFactor[slot] * 0.5);
}

int IdealTimeCentis(int slot) {
    int64_t sum = 0;
    for (int sector = 0; sector < sectorTotal && sectorMark[slot][sector] < noSectorMark; sector++) {
        const int samples = SectorTimeOf(slot, bestSector[slot][sector], sector);
        if (samples != noLapTime) sum += samples;
    }
    return Centis(slot, sum);
}

int MeanLapCentis(int slot) {
    const int marks = HeldMarksPerLap(slot);
    int64_t sum = 0, laps = 0;
    for (int row = 0; row < lapCount[slot]; row += marks) {
        if (!lapChecked[slot][row]) continue;
        sum += int64_t{lapStart[slot][row + marks]} - lapStart[slot][row];
        laps++;
    }
    return Centis(slot, sum / std::max<int64_t>(laps, 1));
}
