#include "analysis/lap_table.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "analysis/lap_marks.h"
#include "analysis/lap_order.h"
#include "analysis/lap_stats.h"
#include "analysis/sector_times.h"
#include "graph/view_state.h"
#include "run_data/fixed_point.h"
#include "settings/settings.h"

LapCell     lapCells[lapTables][lapLines][lapColumns];
int         lineChecked[lapTables][lapLines];
char        lapHeaders[lapTables][lapColumns][16];
int         firstRow[fileSlots];
int         lowerFile;
int         selectState[fileSlots];
ScrollState lapScroll[lapTables];

constexpr int sectorColumns = 7;   // columns 1 to 7 of the sector view
constexpr int idealColumn = 11;    // of the sector view, on the first line only
constexpr int meanColumn = 12;
constexpr int tablePositions = 512;

// Text of a value: how the stored count at the extreme's sample becomes one.
enum class CellForm { empty, rpm, tenths, hundredths, percent, input, speed };
struct PageCell {
    const char* header;
    CellForm    form;
};
static constexpr PageCell pageCells[2][lapColumns] = {
    {{"  LAP   TIME", CellForm::empty},
     {"   min     Ne", CellForm::rpm},
     {"   max    Ne", CellForm::rpm},
     {" max  VFW", CellForm::tenths},
     {" max  VRW", CellForm::tenths},
     {" max  FSUS", CellForm::hundredths},
     {" avr  FSUS", CellForm::hundredths},
     {" max  RSUS", CellForm::hundredths},
     {" avr  RSUS", CellForm::hundredths},
     {" min  SLIP", CellForm::percent},
     {" max  SLIP", CellForm::percent},
     {" min  AUX1", CellForm::input},
     {" max  AUX1", CellForm::input}},
    {{"  LAP   TIME", CellForm::empty},
     {" min  LAF1", CellForm::input},
     {" max  LAF1", CellForm::input},
     {" min  LAF2", CellForm::input},
     {" max  LAF2", CellForm::input},
     {" max VFSUS", CellForm::speed},
     {" min VFSUS", CellForm::speed},
     {" max VRSUS", CellForm::speed},
     {" min VRSUS", CellForm::speed},
     {"", CellForm::empty},
     {"", CellForm::empty},
     {" min  AUX2", CellForm::input},
     {" max  AUX2", CellForm::input}},
};

int TableSlot(int table) { return table == 0 ? 0 : lowerFile; }
static int TableOf(int slot) { return slot == 0 ? 0 : 1; }

const char* SelectText(int table) {
    static constexpr const char* texts[] = {"Select", "ALL off", "ALL on"};
    return texts[selectState[TableSlot(table)]];
}
const char* LowerFileText() { return lowerFile == 2 ? "File3" : "File2"; }
const char* PageText() { return statPage ? "Page 2" : "Page 1"; }

// Sample 0 is no logged value.
static bool HasData(int slot) { return sampleCount[slot] > 1; }

// The row at a table position; positions past the table, and all without data, count as lapCount.
static int RowAt(int slot, int line) {
    if (!HasData(slot)) return lapCount[slot];
    const int position = firstRow[slot] + line * HeldMarksPerLap(slot);
    return position >= tablePositions ? lapCount[slot] : lapOrder[slot][position];
}

static void WriteTime(char* text, size_t size, const char* format, int centis) {
    std::snprintf(text, size, format, centis / 6000, centis % 6000 * 0.01);
}

static int LapCentis(int slot, int row) {
    const int64_t samples = int64_t{lapStart[slot][row + HeldMarksPerLap(slot)]} - lapStart[slot][row];
    return TruncToInt(static_cast<double>(samples) / timeFactor[slot] * 0.5);
}

// Index of an analog input's type and divider.
static int InputOf(int channel) {
    return channel == chLAF1 ? 0 : channel == chLAF2 ? 1 : channel == chAUX1 ? 2 : 3;
}

static int DividerOf(int slot, int input) {
    return input < 2 ? lafDivider[slot][input] : auxDivider[slot][input - 2];
}

// The stored count behind a cell: at the sample of a lap's extreme, or the mean of those in the row of the averages.
static int CountOf(int slot, const StatColumn& column, int row) {
    if (!column.at) return (lapStats[slot].*column.value)[row];
    const int at = (lapStats[slot].*column.at)[row];
    return row >= lapCount[slot] ? at : StoredValue(slot, column.channel, static_cast<uint32_t>(at));
}

static void WriteValue(char* text, size_t size, int slot, CellForm form, const StatColumn& column, int row) {
    const int count = CountOf(slot, column, row);
    const int input = InputOf(column.channel);
    switch (form) {
        case CellForm::empty: text[0] = 0; break;
        case CellForm::rpm: std::snprintf(text, size, "%d", TruncToInt(static_cast<float>(count) * neFactor[slot])); break;
        case CellForm::tenths: std::snprintf(text, size, "%5.1f", count * 0.1); break;
        case CellForm::hundredths: std::snprintf(text, size, "%5.1f", count * 0.01); break;
        case CellForm::percent:
            std::snprintf(text, size, "%5.1f",
                          row >= lapCount[slot] ? count * 0.01 : StatValue(slot, static_cast<int>(&column - statColumns), row));
            break;
        case CellForm::input:
            std::snprintf(text, size, analog[slot][input].type == 1 ? "%5.2f" : "%5.1f", 1.0 * count * DividerOf(slot, input) * 0.01);
            break;
        case CellForm::speed: std::snprintf(text, size, "%5d", count); break;
    }
}

static void WriteSector(char* text, size_t size, int slot, int row, int line, int column) {
    text[0] = 0;
    if (column <= sectorColumns) {
        const int samples = lapStats[slot].sectorTime[row][column - 1];
        if (samples == noLapTime)
            std::snprintf(text, size, "-");
        else
            std::snprintf(text, size, "%5.2f", static_cast<float>(samples) / timeFactor[slot] * 0.005);
    } else if (line == 0 && column >= idealColumn) {
        WriteTime(text, size, "%2d'%05.2f", column == idealColumn ? IdealTimeCentis(slot) : MeanLapCentis(slot));
    }
}

static void WriteLapTime(char* text, size_t size, int slot, int row) {
    const int marks = HeldMarksPerLap(slot);
    if (!sectorView && row >= lapCount[slot])
        std::snprintf(text, size, "Avr.");
    else if (!sectorView && marks != 1 && row % marks)
        std::snprintf(text, size, "- -");
    else
        WriteTime(text, size, "%02d'%05.2f", LapCentis(slot, row));
}

// Red by value, so that all equal laps are red, checked or not. The averages are never best.
// Kept: where no checked lap has a sector time, the start value is the best one, so that the dashes are red.
static bool IsBest(int slot, int row, int column) {
    if (row >= lapCount[slot]) return false;
    if (column == 0) return lapStats[slot].lapTime[row] == LapTimeAt(slot, bestLap[slot]);
    if (sectorView)
        return column <= sectorColumns &&
               lapStats[slot].sectorTime[row][column - 1] == SectorTimeAt(slot, bestSector[slot][column - 1], column - 1);
    const int stat = PageColumn(statPage, column);
    return stat >= 0 && StatValue(slot, stat, row) == BestValue(slot, stat);
}

static void WriteCell(LapCell& cell, int slot, int row, int line, int column) {
    const int stat = PageColumn(statPage, column);
    cell.text[0] = 0;
    if (column == 0)
        WriteLapTime(cell.text, sizeof cell.text, slot, row);
    else if (sectorView)
        WriteSector(cell.text, sizeof cell.text, slot, row, line, column);
    else if (stat >= 0)
        WriteValue(cell.text, sizeof cell.text, slot, pageCells[statPage][column].form, statColumns[stat], row);
    cell.best = IsBest(slot, row, column);
}

static void BlankLines(int table) {
    std::fill_n(&lapCells[table][0][0], averageLine * lapColumns, LapCell{});
    std::fill_n(lineChecked[table], averageLine, 0);
}

void ShowLapTable(int table) {
    const int slot = TableSlot(table);
    CollectMarks(slot);
    if (!HasData(slot)) BlankLines(table);
    for (int line = 0; line < lapLines; line++) {
        if (line < averageLine && RowAt(slot, line) >= lapCount[slot]) line = averageLine;
        const int row = line == averageLine ? lapCount[slot] : RowAt(slot, line);
        for (int column = 0; column < lapColumns; column++) WriteCell(lapCells[table][line][column], slot, row, line, column);
        lineChecked[table][line] = lapChecked[slot][row];
    }
    DrawExtremeMarks(MarkEvent::tableChanged);
}

void RefreshLapTables() {
    ComputeLapStats();
    for (int table = 0; table < lapTables; table++) ShowLapTable(table);
}

static void Refresh(int table) {
    ComputeLapStats();
    ShowLapTable(table);
}

// The lowest first row that still fills the table, and the scroll bars' high end.
static int LastFirstRow(int slot) {
    const int marks = HeldMarksPerLap(slot);
    return lapCount[slot] / marks * marks - 6 * marks - 1;
}

static void PlaceFirstRow(int slot) {
    const int marks = HeldMarksPerLap(slot);
    firstRow[slot] = (HeldLap(slot) - 1) / marks * marks;
    if (firstRow[slot] >= LastFirstRow(slot) + 1) firstRow[slot] = LastFirstRow(slot);
    firstRow[slot] = std::max(firstRow[slot], 0);
}

static void PlaceScroll(int slot) {
    const int marks = HeldMarksPerLap(slot);
    lapScroll[TableOf(slot)].position = firstRow[slot] / marks * marks;
}

static void WriteHeaders() {
    for (int table = 0; table < lapTables; table++)
        for (int column = 0; column < lapColumns; column++) {
            char* text = lapHeaders[table][column];
            const size_t size = sizeof lapHeaders[table][column];
            if (!sectorView || column == 0)
                std::snprintf(text, size, "%s", pageCells[statPage][column].header);
            else if (column <= sectorColumns)
                std::snprintf(text, size, "Sec%d", column);
            else
                std::snprintf(text, size, "%s", column == idealColumn ? "Ideal time" : column == meanColumn ? "Lap  Avr. " : "");
        }
}

void OpenLapTable() {
    lowerFile = 1;
    statPage = sectorView = 0;
    WriteHeaders();
    std::strcpy(lapHeaders[1][1], "  min   Ne");  // until a page change gives both tables the same
    std::strcpy(lapHeaders[1][2], "  max   Ne");
    std::memset(lapCells, 0, sizeof lapCells);
    std::memset(lineChecked, 0, sizeof lineChecked);
    for (int slot = 0; slot < fileSlots; slot++) {
        sortKey[slot] = selectState[slot] = 0;
        if (!keepOn) ResetLapChecks(slot);
        PlaceFirstRow(slot);
    }
    for (int table = 0; table < lapTables; table++) {
        lapScroll[table] = {0, LastFirstRow(TableSlot(table)), 1, 0};
        PlaceScroll(TableSlot(table));
    }
    RefreshLapTables();
}

void ToggleLine(int table, int line) {
    const int slot = TableSlot(table), row = RowAt(slot, line);
    if (line == averageLine || row >= lapCount[slot]) return;
    lapChecked[slot][row] = !lapChecked[slot][row];
    selectState[slot] = 0;
    Refresh(table);
}

void ClickSelect(int table) {
    const int slot = TableSlot(table), marks = HeldMarksPerLap(slot);
    selectState[slot] = selectState[slot] == 1 ? 2 : 1;
    // Kept: lapCount entries, marks apart, which runs past the last lap with 2 or 3 marks.
    for (int i = 0; i < lapCount[slot] && i * marks < tablePositions; i++) lapChecked[slot][i * marks] = selectState[slot] == 2;
    Refresh(table);
}

void ClickLowerFile() {
    lowerFile = ExpertMode >= 2 && lowerFile == 1 ? 2 : 1;
    PlaceFirstRow(lowerFile);
    // Kept: another range than at opening.
    lapScroll[1] = {0, lapCount[lowerFile] - HeldMarksPerLap(lowerFile) + 1, 8, 0};
    PlaceScroll(lowerFile);
    Refresh(1);
}

void ClickPage() {
    sectorView = 0;
    statPage = !statPage;
    WriteHeaders();
    RefreshLapTables();
}

void ClickSectorTimes() {
    sectorView = 1;
    WriteHeaders();
    for (int table = 0; table < lapTables; table++) ShowLapTable(table);
}

void ClickHeader(int table, int column) {
    const int slot = TableSlot(table);
    sortKey[slot] = column + 1;
    firstRow[slot] = 0;
    Refresh(table);
    PlaceScroll(slot);
}

// The sample that a cell stands for; -2 for cells that are no place in the log, -1 for a place past its end.
static int CellTarget(int slot, int row, int column) {
    if (sectorView) {
        if (column > sectorColumns) return -2;
        int64_t target = lapStart[slot][row];
        for (int sector = 0; sector + 2 <= column; sector++) target += lapStats[slot].sectorTime[row][sector];
        return target > sampleCount[slot] ? -1 : static_cast<int>(target);
    }
    if (column == 0) return statPage == 0 ? static_cast<int>(lapStart[slot][row]) : -2;
    const int stat = PageColumn(statPage, column);
    if (stat < 0 || !statColumns[stat].at) return -2;
    return (lapStats[slot].*statColumns[stat].at)[row];
}

// Kept: on the last line the click acts on the lap that the order holds there, although the line shows the averages.
int ClickCell(int table, int line, int column) {
    const int slot = TableSlot(table), row = RowAt(slot, line);
    if (row >= lapCount[slot]) return 0;
    const int target = CellTarget(slot, row, column);
    if (target == -2) return 0;
    jumpTarget[slot] = target;
    activityCount = 150;
    return 1;
}

static void HoldFirstRow(int slot, bool down) {
    const int marks = HeldMarksPerLap(slot);
    if (down && firstRow[slot] >= (lapCount[slot] / marks - 6) * marks) firstRow[slot] = LastFirstRow(slot);
    firstRow[slot] = std::max(firstRow[slot], 0);
}

static void ScrollBy(int table, int rows) {
    const int slot = TableSlot(table);
    firstRow[slot] += rows;
    HoldFirstRow(slot, rows > 0);
    PlaceScroll(slot);
    ShowLapTable(table);
}

void ScrollTable(int table, ScrollAction action, int position) {
    const int slot = TableSlot(table), marks = HeldMarksPerLap(slot);
    switch (action) {
        case ScrollAction::lineUp: return ScrollBy(table, -marks);
        case ScrollAction::lineDown: return ScrollBy(table, marks);
        case ScrollAction::pageUp: return ScrollBy(table, -4 * marks);
        case ScrollAction::pageDown: return ScrollBy(table, 4 * marks);
        case ScrollAction::thumb: firstRow[slot] = position / marks * marks; break;
        case ScrollAction::top: firstRow[slot] = 0; break;
        case ScrollAction::bottom: firstRow[slot] = (lapCount[slot] - 1) / marks * marks - 1; break;
    }
    HoldFirstRow(slot, false);
    PlaceScroll(slot);
    ShowLapTable(table);
}

void WheelTable(int table, int notches) { ScrollBy(table, -notches * HeldMarksPerLap(TableSlot(table))); }

void CloseLapTable(int keep) { keepOn = keep; }

void LeaveForCsvOutput() {
    graphPositionOn = afMapOn = realTimePlayOn = 0;
    rulerFade = 5;
    activityCount = 100;
}

int ExpertToolsShown() { return ExpertMode >= 2; }

void DefaultLapTable() {
    lowerFile = 1;
    for (int slot = 0; slot < fileSlots; slot++) firstRow[slot] = selectState[slot] = 0;
    std::memset(lapCells, 0, sizeof lapCells);
    std::memset(lineChecked, 0, sizeof lineChecked);
    std::memset(lapHeaders, 0, sizeof lapHeaders);
    std::memset(lapScroll, 0, sizeof lapScroll);
}
