#include "analysis/sector_times.h"

#include <algorithm>
#include <cstring>

#include "analysis/lap_stats.h"
#include "run_data/fixed_point.h"
#include "views/course_file.h"

int sectorScanCount;

// What the estimated times of a slot depend on. While it stays, the samples need not be read again.
struct SectorKey {
    uint32_t dataVersion, lapStart[lapTableSize], lapLength[lapTableSize];
    int      sampleCount, lapCount, inUse, points, boundaries[sectorMarkSize];
};
static SectorKey timedFor[fileSlots];

static SectorKey KeyAtHand(int slot) {
    SectorKey key{};
    key.dataVersion = dataVersion[slot];
    std::copy(std::begin(lapStart[slot]), std::end(lapStart[slot]), key.lapStart);
    std::copy(std::begin(lapLength[slot]), std::end(lapLength[slot]), key.lapLength);
    key.sampleCount = sampleCount[slot];
    key.lapCount = lapCount[slot];
    key.inUse = slotInUse[slot];
    key.points = coursePointCount;
    std::copy(std::begin(sectorMark[slot]), std::end(sectorMark[slot]), key.boundaries);
    return key;
}

// A walk along a lap's front wheel distance, which takes up the next boundary where the last one was found.
struct LapWalk {
    const uint32_t* sum;      // distFront from the lap's start on
    int64_t         limit;    // last sample, counted from there
    int64_t         at;       // first sample not yet known to lie before `distance`
    int32_t         distance; // of the last boundary
};

static LapWalk StartOfWalk(int slot, int row) {
    const int64_t start = lapStart[slot][row], samples = sampleCount[slot];
    const int64_t limit = int64_t{lapStart[slot][row + 1]} - start + 1;
    return {distFront[slot].data() + std::min(start, samples), std::min(limit, samples - start), 1, 0};
}

// First n in 1..limit whose distance from the lap's start reaches `distance`; 0 when none does. Signed, as the running sum
// wraps in logs of many hours.
static int SamplesToDistance(LapWalk& walk, uint32_t distance) {
    const int32_t wanted = static_cast<int32_t>(distance);
    if (wanted < walk.distance) walk.at = 1;
    walk.distance = wanted;
    while (walk.at <= walk.limit && static_cast<int32_t>(walk.sum[walk.at] - walk.sum[0]) < wanted) walk.at++;
    return walk.at <= walk.limit ? static_cast<int>(walk.at) : 0;
}

// Kept: the lap's length follows CoursePosSource, the distance walked is always the front wheel's.
static void EstimateLap(int slot, int row) {
    const uint32_t length = lapLength[slot][row + 1];
    LapWalk walk = StartOfWalk(slot, row);
    int previous = 0;
    for (int sector = 0; sector < sectorTotal; sector++) {
        const int from = sectorMark[slot][sector], to = sectorMark[slot][sector + 1];
        if (from >= noSectorMark) continue;
        const uint32_t distance =
            to >= noSectorMark ? length : length / static_cast<uint32_t>(coursePointCount) * static_cast<uint32_t>(to);
        const int samples = SamplesToDistance(walk, distance);
        if (samples == 0) continue;
        lapStats[slot].sectorTime[row][sector] = samples - previous;
        previous = samples;
    }
}

static void EstimateLaps(int slot) {
    RestoreSectorRow(slot);
    const SectorKey key = KeyAtHand(slot);
    if (std::memcmp(&key, &timedFor[slot], sizeof key) == 0) return;
    DefaultSectorTimes(slot);
    for (int row = 0; row < lapCount[slot] && slotInUse[slot]; row++) EstimateLap(slot, row);
    timedFor[slot] = key;
    sectorScanCount++;
}

static void TakeMarks(int slot, int row, int marks) {
    for (int sector = 0; sector < marks; sector++) {
        const int64_t samples = int64_t{lapStart[slot][row + sector + 1]} - lapStart[slot][row + sector];
        if (samples > 0) lapStats[slot].sectorTime[row][sector] = static_cast<int>(samples);
    }
}

static void TakeLapMarks(int slot, int marks) {
    DefaultSectorTimes(slot);
    OverwriteSectorRow(slot, marks);
    for (int row = 0; row <= lapCount[slot] - marks && slotInUse[slot]; row += marks) TakeMarks(slot, row, marks);
}

static void FindBestSectors(int slot, int marks) {
    std::fill(std::begin(bestSector[slot]), std::end(bestSector[slot]), emptyRow);
    std::fill(std::begin(secondSector[slot]), std::end(secondSector[slot]), emptyRow);
    for (int row = 0; row <= lapCount[slot] - marks; row += marks) {
        if (!lapChecked[slot][row]) continue;
        for (int sector = 0; sector < sectorTotal; sector++) {
            int &best = bestSector[slot][sector], &second = secondSector[slot][sector];
            TakeAsBest(lapStats[slot].sectorTime[row][sector], row, SectorTimeAt(slot, best, sector),
                       SectorTimeAt(slot, second, sector), best, second);
        }
    }
}

void ComputeSectorTimes(int slot) {
    const int marks = HeldMarksPerLap(slot);
    if (marks == 1)
        EstimateLaps(slot);
    else
        TakeLapMarks(slot, marks);
    FindBestSectors(slot, marks);
}

void DefaultSectorTimes(int slot) {
    timedFor[slot] = {};
    for (auto& row : lapStats[slot].sectorTime) std::fill(std::begin(row), std::end(row), noLapTime);
}

// Samples as hundredths of a second of a slot's time, through float as the table has always shown them.
static int Centis(int slot, int64_t samples) {
    return TruncToInt(static_cast<float>(samples) / timeFactor[slot] * 0.5);
}

int IdealTimeCentis(int slot) {
    int64_t sum = 0;
    for (int sector = 0; sector < sectorTotal && sectorMark[slot][sector] < noSectorMark; sector++) {
        const int samples = SectorTimeAt(slot, bestSector[slot][sector], sector);
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
