#include "analysis/lap_order.h"

#include <algorithm>
#include <numeric>

#include "analysis/lap_stats.h"

int lapOrder[fileSlots][lapTableSize];
int sortKey[fileSlots];
int statPage;
int sectorView;

constexpr int valueColumns = 12;
static constexpr int pageColumns[2][valueColumns] = {
    {statMinNe, statMaxNe, statMaxVFW, statMaxVRW, statMaxFSUS, statAvrFSUS, statMaxRSUS, statAvrRSUS, statMinSlip,
     statMaxSlip, statMinAUX1, statMaxAUX1},
    {statMinLAF1, statMaxLAF1, statMinLAF2, statMaxLAF2, statMaxVFSus, statMinVFSus, statMaxVRSus, statMinVRSus, -1, -1,
     statMinAUX2, statMaxAUX2},
};

int PageColumn(int page, int column) {
    return column >= 1 && column <= valueColumns ? pageColumns[page][column - 1] : -1;
}

// Kept: on Page 2 only the suspension speeds sort.
static bool Sorts(int page, int column) { return page == 0 || (column >= 5 && column <= 8); }

// What a row is compared by, smaller is better. 0 for all rows where the key does not sort.
static double SortValue(int slot, int page, int sectors, int row) {
    const int column = sortKey[slot] - 1;
    if (column == 0) return lapStats[slot].lapTime[row];
    if (sectors) return column <= 7 ? lapStats[slot].sectorTime[row][column - 1] : 0;
    const int stat = PageColumn(page, column);
    if (stat < 0 || !Sorts(page, column)) return 0;
    return -statColumns[stat].sign * StatValue(slot, stat, row);
}

void SortLaps(int slot, int page, int sectors) {
    std::iota(std::begin(lapOrder[slot]), std::end(lapOrder[slot]), 0);
    if (sortKey[slot] == 0) return;
    const int marks = HeldMarksPerLap(slot);
    int groups[lapTableSize];
    const int count = (lapCount[slot] - 1) / marks + 1;
    for (int i = 0; i < count; i++) groups[i] = i * marks;
    std::stable_sort(groups, groups + count, [&](int a, int b) {
        return SortValue(slot, page, sectors, a) < SortValue(slot, page, sectors, b);
    });
    for (int i = 0; i < count; i++) lapOrder[slot][i * marks] = groups[i];
}

void DefaultLapOrder() {
    statPage = sectorView = 0;
    for (int slot = 0; slot < fileSlots; slot++) {
        sortKey[slot] = 0;
        std::iota(std::begin(lapOrder[slot]), std::end(lapOrder[slot]), 0);
    }
}
