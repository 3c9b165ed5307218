// csv_export.h -- the thinking of dialog 1028, "The selection of items and range": File 1 as a text table (csv_rows.h).
//
// Two ways lead to a file: all checked laps, or a stretch that is chosen on the graph. For the latter the dialog closes with
// csvRangePending set (graph/view_state.h); cursor and mouse mark the two ends, and the next left press on the graph opens the
// dialog once more, which then writes the stretch at once.
#pragma once
#include "analysis/csv_rows.h"

// How many of the 200 samples a second are written: the dialog's list.
struct CsvRate {
    const char* caption;
    int perSecond, step;
};
constexpr int csvRateTotal = 5;
extern const CsvRate csvRates[csvRateTotal];
extern int csvDecimation;  // index into csvRates, kept while the program runs

// Opening. 1: a stretch waits to be written; 0: the dialog is for the user, and the channel flags are noted, to come back
// when an export of a stretch ends.
int OpenCsvExport();
// A check box: the column's flag, which for a channel shows it on the graph, too.
void CheckCsvColumn(int column, int on);
// "Range Select".
void AwaitCsvRange();
// "Cancel" and the close box.
void CancelCsvExport();

// Both ask for a file name, write and tell how it went: 0 done, 1 not saved, and a file of that name is what it was.
int ExportCheckedLaps(const CsvProgress& progress);
// Samples of File 1, both inclusive.
struct CsvStretch {
    int first, last;
};
int ExportStretch(const CsvProgress& progress, CsvStretch stretch);
// The stretch between cursor and mouse.
CsvStretch StretchOnGraph();
// What the dialog does when a stretch waits.
int ExportAwaitedRange(const CsvProgress& progress);

void DefaultCsvExport();
