// course_file.h -- the course: a closed chain of points from a ".crs" file, with sector boundaries from "Sector.ini".
//
// ".crs"        lines "x,y" in the order of the track, image pixels centred on 0, 3000 at most. A pair with x or y of 1024
//               or more is no point but a sector boundary at the point that follows it.
// "Sector.ini"  a section per course file: "Sec1" to "Sec7", point indices, and "Offset", the point of the finish line.
// Written       by LoadCourse, ApplyCourseOffset and the sector tools; there is one course for the whole program.
// Input         any bytes: coordinates are held to +-1023, indices to the table.
#pragma once
#include <cstdint>

#include "run_data/channels.h"

constexpr int coursePointLimit = 3000;
constexpr int courseArraySize  = 3004;
constexpr int noSectorMark     = 5000;  // no further boundary
constexpr int sectorMarkSize   = 9;

// The chain as it is driven: point 0 is the file's point courseOffset, point coursePointCount closes the polygon.
extern float courseX[courseArraySize], courseY[courseArraySize];  // image pixels, -1023..1023
extern float courseLen[courseArraySize];                          // length from point 0, pixels
extern int   coursePointCount;                                    // index of the closing point, 1 or more
// Sector boundaries as point indices, a row per file. Entry 0 is 0; the list ends at noSectorMark. The sector times of a
// file with two or three marks per lap overwrite its row.
extern int sectorMark[fileSlots][sectorMarkSize];

// Reads the course named by CourseFile_name from the program's folder. 1; or 0 when there is no such file: the user was
// told and CourseLayout_on is cleared.
int LoadCourse();
// Boundaries and offset of the course at hand, into all rows.
void LoadSectorIni();
// Writes row 0, unless File 1 has two or three marks per lap or its row was overwritten. Failures are silent.
void SaveSectorIni();
// Builds the chain from courseOffset on and redraws the course image. Kept: an offset past either end only wraps. 0.
int ApplyCourseOffset();
// Marks a row as overwritten by lap marks; the next use with one mark per lap calls the other, which reads the row anew.
void OverwriteSectorRow(int slot, int marks);
void RestoreSectorRow(int slot);
void DefaultCourse();
