// sector_times.h -- how long each lap took from one sector boundary to the next.
//
// With one mark per lap a boundary is a point of the course map, taken as its share of the lap's distance, and the time is
// an estimate: the samples until the front wheel has run that far. With two or three marks per lap the marks are the
// boundaries and the times are exact.
#pragma once

// Fills sectorTime, bestSector and secondSector of a slot; a slot not in use has no times. With two or three marks per lap
// the slot's row of sectorMark is overwritten. The samples are read once per load, set of marks and course.
void ComputeSectorTimes(int slot);
// 0.01 s: the best sectors of checked laps joined together.
int IdealTimeCentis(int slot);
// 0.01 s: mean time of the checked laps.
int MeanLapCentis(int slot);
// Times the samples were read for sector times since start, for the tests that count them.
extern int sectorScanCount;
// A slot without sector times.
void DefaultSectorTimes(int slot);
