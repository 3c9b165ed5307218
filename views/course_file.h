// course_file.h -- the course: a closed chain of points from a ".crs" file, with sector boundaries from "Sector.ini".
//
// Layout   ".crs": lines "x,y" in the order of the track, image pixels centred on 0. A pair with x or y of 1024 or more is
//          no point but a sector marker in front of the next one. 3000 points at most.
// Written  by LoadCourse, ApplyCourseOffset and the sector tools; one course for the whole program.
#pragma once
#include <cstdint>

#include "run_data/channels.h"

constexpr int coursePointLimit = 3000;
constexpr int courseArraySize  = 3004;
constexpr int noSectorMark     = 5000;  // no further boundary
constexpr int sectorMarkSize   = 9;

// The chain as it is driven: point 0 is the raw point courseOffset, point coursePointCount closes the polygon.
extern float courseX[courseArraySize], courseY[courseArraySize];  // image pixels, -1023..1023
extern float courseLen[courseArraySize];                          // length from point 0, pixels
extern int   coursePointCount;                                    // index of the closing point, 1 or more
// Sector boundaries as point indices, a row per file. Entry 0 is 0; the list ends at noSectorMark.
extern int sectorMark[fileSlots][sectorMarkSize];

void DefaultCourse();
