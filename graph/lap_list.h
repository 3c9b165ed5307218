// lap_list.h -- file names, times and distances at the top, and the list of laps.
//
// Written here  currentLap, lapViewOffset and LapTimeCentis of each file, by the walk of its list, in normal mode.
#pragma once

void DrawLapList();
