// lap_order.h -- in which order the lap table shows its rows.
#pragma once
#include "run_data/run_store.h"

extern int lapOrder[fileSlots][lapTableSize];  // table position -> row
extern int sortKey[fileSlots];                 // 0 by lap, else the clicked column + 1: 1 lap time, 2..13 the value columns
extern int statPage;                           // 0 Page 1, 1 Page 2
extern int sectorView;                         // 1: sector times stand in the value columns

// Puts lapOrder back to the lap order, then sorts by sortKey as the page shows its columns. Equal rows keep their order;
// a column that does not sort leaves the lap order.
void SortLaps(int slot, int page, int sectors);
// The column of the statistics that a value column (1..12) of a page shows, -1 for none.
int PageColumn(int page, int column);
void DefaultLapOrder();
