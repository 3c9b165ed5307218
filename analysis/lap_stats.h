// lap_stats.h -- what each lap of each file reached: extremes, means, best laps, averages.
//
// Rows     a row is the index of a lap's first mark; with MarksPerLap m only multiples of m are rows. Row 0 is the out lap.
//          Row lapCount holds the averages over the checked rows; rows up to lapCount + m - 1 repeat it.
// Written  by ComputeLapStats. The samples are read once per load, gearing factor and set of marks; a changed check box
//          only costs the averages and the best rows.
#pragma once
#include <cstdint>

#include "run_data/run_store.h"

constexpr int noLapTime = 0x7fffffff;
constexpr int emptyRow  = 510;  // as a best row: none, with the start values, also when a log has that many laps
constexpr int sectorTotal = 8;

// One lap's values by row. ...At is the sample at which the extreme first stood, 0 when none did; in the row of the
// averages it is the mean of the channel's own values at those samples, x 100 for the slips.
struct LapStats {
    int minNe[lapTableSize], minNeAt[lapTableSize];  // rpm, after neFactor
    int maxNe[lapTableSize], maxNeAt[lapTableSize];
    int maxVFW[lapTableSize], maxVFWAt[lapTableSize];  // 0.1 km/h
    int maxVRW[lapTableSize], maxVRWAt[lapTableSize];
    int maxFSUS[lapTableSize], maxFSUSAt[lapTableSize];  // 0.01 mm, never below 0
    int maxRSUS[lapTableSize], maxRSUSAt[lapTableSize];
    int avrFSUS[lapTableSize], avrRSUS[lapTableSize];          // 0.01 mm
    float minSlip[lapTableSize], maxSlip[lapTableSize];        // %, never above and never below 0
    int minSlipAt[lapTableSize], maxSlipAt[lapTableSize];
    int minAUX1[lapTableSize], minAUX1At[lapTableSize];  // stored units
    int maxAUX1[lapTableSize], maxAUX1At[lapTableSize];
    int minAUX2[lapTableSize], minAUX2At[lapTableSize];
    int maxAUX2[lapTableSize], maxAUX2At[lapTableSize];
    int minLAF1[lapTableSize], minLAF1At[lapTableSize];
    int maxLAF1[lapTableSize], maxLAF1At[lapTableSize];
    int minLAF2[lapTableSize], minLAF2At[lapTableSize];
    int maxLAF2[lapTableSize], maxLAF2At[lapTableSize];
    int maxVFSus[lapTableSize], maxVFSusAt[lapTableSize];  // mm/s, never below 0
    int minVFSus[lapTableSize], minVFSusAt[lapTableSize];  // never above 0
    int maxVRSus[lapTableSize], maxVRSusAt[lapTableSize];
    int minVRSus[lapTableSize], minVRSusAt[lapTableSize];
    int lapTime[lapTableSize];                   // samples; noLapTime for an empty lap
    int sectorTime[lapTableSize][sectorTotal];   // samples; noLapTime where there is none
};
extern LapStats lapStats[fileSlots];

// A column of the statistics.
enum StatIndex : int {
    statMinNe, statMaxNe, statMaxVFW, statMaxVRW, statMaxFSUS, statMaxRSUS, statAvrFSUS, statAvrRSUS, statMinSlip,
    statMaxSlip, statMinAUX1, statMaxAUX1, statMinAUX2, statMaxAUX2, statMinLAF1, statMaxLAF1, statMinLAF2, statMaxLAF2,
    statMaxVFSus, statMinVFSus, statMaxVRSus, statMinVRSus, statTotal
};
struct StatColumn {
    const char* name;
    int (LapStats::*value)[lapTableSize];   // nullptr for the slips
    float (LapStats::*slip)[lapTableSize];  // nullptr for all others
    int (LapStats::*at)[lapTableSize];      // nullptr for the means
    Channel channel;
    int start;  // a lap's value before its first sample
    int sign;   // -1: the smallest is best, +1: the largest
};
extern const StatColumn statColumns[statTotal];

// Best rows among the checked laps, emptyRow when none.
extern int bestRow[fileSlots][statTotal];
extern int bestLap[fileSlots], secondLap[fileSlots];
extern int bestSector[fileSlots][sectorTotal], secondSector[fileSlots][sectorTotal];
// Which rows count for averages, best values, maps and exports.
extern int lapChecked[fileSlots][lapTableSize];

// Takes a row into a best and a second best row when its time is as good or better: on ties the later row wins.
void TakeAsBest(int candidate, int row, int valueOfBest, int valueOfSecond, int& best, int& second);
// Fills everything above for all files and sorts them (lap_order.h).
void ComputeLapStats();
// The pattern of an opened table: all but the out lap and the last, unfinished lap.
void ResetLapChecks(int slot);
// Value of a column in a row.
double StatValue(int slot, int column, int row);
// Values at a best pointer; emptyRow has the start values, also when a lap stands in that row.
double BestValue(int slot, int column);
int LapTimeAt(int slot, int pointer);
int SectorTimeAt(int slot, int pointer, int sector);
// A channel's stored value at a sample, Slip x 100 truncated.
int StoredValue(int slot, int channel, uint32_t sample);
// Times the samples were read by ComputeLapStats since start, for the tests that count them.
extern int lapScanCount;
void DefaultLapStats();
