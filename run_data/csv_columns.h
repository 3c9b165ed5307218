// csv_columns.h -- which column of a CSV log is which channel: the thinking of dialog 1027, "[CSV] Load data selection".
//
// Owns     the title line of the log at hand, the selection of the dialog's rows, and the labels of "csvlabel.ini".
// Written  titles by OpenCsvImport, the selection by OpenCsvRows and then by the dialog. Nothing outlives the import: the
//          next one starts from the labels again.
// Read     by the import, while the dialog that asked for it is open.
#pragma once
#include "run_data/csv_text.h"

constexpr int csvLabelSections = 13;  // Time, Ne, TH, VFW, VRW, FRSUS, RRSUS, LAF1, LAF2, VB, AUX1, AUX2, LAP
constexpr int csvLabelKeys     = 16;
constexpr int csvLabelSize     = 64;
extern char csvLabel[csvLabelSections][csvLabelKeys][csvLabelSize];  // column titles a CSV file may carry, default "No data"

extern char csvTitle[csvColumnLimit][csvFieldLimit + 1];  // as in the file, code page unknown; empty where there is none
extern int csvTitles;                                    // titles of the log at hand, 0 to csvColumnLimit

// Rows of the dialog: one for the time, one for each channel, one for the laps, three that nobody sees and nothing reads.
enum CsvDialogRow : int {
    rowTime = 0,
    rowNe, rowTH, rowVFW, rowVRW, rowFSUS, rowRSUS, rowLAF1, rowLAF2, rowVB, rowAUX1, rowAUX2,
    rowLap = 12,
    csvShownRows = 13,
    csvRows = 16
};
// Items of the list of row 0 in front of the column titles: the fixed time bases.
constexpr int fixedTimeBases = 6;
// Selected item of each row, -1 none. Row 0: a fixed time base, then the columns; the others: the columns, then
// " - No data - ". csvNoChoice before the dialog opens.
extern int csvRow[csvRows];
constexpr int csvNoChoice = 98;
extern int lapByNumber;  // the column of row 12 holds: 1 lap numbers, 0 distances since the line

// Takes the titles from the first line.
void TakeCsvTitles(const CsvLine& line);
// To be called as the dialog opens: selects for each row the column that the labels know.
void OpenCsvRows();
// Text of an item of a row's list; nullptr behind the last.
const char* CsvItemText(int row, int item);
// An item was selected. One that the list lacks leaves it without a selection.
void ChooseCsvItem(int row, int item);
// The check box's caption.
const char* LapTypeText();
// The column that a row reads, -1 for none.
int CsvColumnOf(int row);

void DefaultCsvColumns();
