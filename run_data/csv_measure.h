// csv_measure.h -- the first pass over a CSV text: how many lines, at which step of time, how large its AUX values.
//
// Written  nothing of the store but timeFactor, by ChooseTimeBase. Reads the selection of csv_columns.h.
#pragma once
#include "run_data/csv_text.h"
#include "run_data/csv_window.h"

struct CsvMeasure {
    int lines;        // the title line counts
    int64_t step;     // 0.01 ms, between the last two lines whose time rose; 0 for none
    bool irregular;   // the step changed after the start
    int auxMax[2];    // largest value x 100 of AUX1 and AUX2, 0 or more
};

// Reads all lines. The bar goes to 100 of 300.
CsvMeasure MeasureCsv(CsvText text, const CsvWindow& window);
// Sets the slot's timeFactor from the fixed time base of row 0 or from the step. 0 done; 1 after the user was told why not.
int ChooseTimeBase(int slot, const CsvMeasure& measure, const CsvWindow& window);
