// lap_table.h -- the thinking of the "Analysis tools" dialog: what every cell says, what every click means.
//
// The upper table shows File 1, the lower one File 2 or File 3, each eight lines of thirteen cells; the last line holds the
// averages. The dialog (lap_dialog.cpp) only moves texts between its controls and these functions.
#pragma once
#include "run_data/channels.h"

constexpr int lapTables = 2;  // upper, lower
constexpr int lapLines = 8;
constexpr int lapColumns = 13;
constexpr int averageLine = lapLines - 1;

struct LapCell {
    char text[20];
    bool best;  // red: equals the column's best value
};
// What the lines show. Lines between the last lap and the averages keep what they showed before.
extern LapCell lapCells[lapTables][lapLines][lapColumns];
extern int     lineChecked[lapTables][lapLines];
extern char    lapHeaders[lapTables][lapColumns][16];

extern int firstRow[fileSlots];     // table position of the first line
extern int lowerFile;               // slot of the lower table, 1 or 2
extern int selectState[fileSlots];  // of the "Select" label: 0, 1 or 2

int TableSlot(int table);
// "Select", "ALL off" or "ALL on"; "File2" or "File3"; "Page 1" or "Page 2".
const char* SelectText(int table);
const char* LowerFileText();
const char* PageText();

struct ScrollState {
    int low, high, page, position;
};
extern ScrollState lapScroll[lapTables];
enum class ScrollAction { lineUp, lineDown, pageUp, pageDown, thumb, top, bottom };

// Opening: start state, statistics, both tables.
void OpenLapTable();
// Fills a table from the statistics at hand, collects its file's extreme marks and shows them.
void ShowLapTable(int table);
// The clicks. Those that return 1 end the dialog.
void ToggleLine(int table, int line);
void ClickSelect(int table);
void ClickLowerFile();
void ClickPage();
void ClickSectorTimes();
void ClickHeader(int table, int column);
int  ClickCell(int table, int line, int column);
void ScrollTable(int table, ScrollAction action, int position);
// One row group per notch, upwards positive.
void WheelTable(int table, int notches);
void CloseLapTable(int keep);
// The export works on the normal graphs.
void LeaveForCsvOutput();
// Buttons of the expert level.
int  ExpertToolsShown();
// The statistics anew and both tables, after a tool changed what they depend on.
void RefreshLapTables();
void DefaultLapTable();
