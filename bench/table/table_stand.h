// table_stand.h -- the process of table_bench that measures: the whole program, which opens its lap table again and again.
#pragma once

// The figures of a process, in the order in which they are printed. What opening means stands in table_bench.cpp.
enum Figure : int {
    firstMs, openMs, againMs, statisticsMs,
    stepMs,                                                   // one scrolling step or refill, until all is painted
    // Per step; spare: paints of cells that stayed, or were painted before; missed: cells that changed and were not painted.
    changedCells, paintedCells, sparePaints, missedCells, dialogErasures,
    figureTotal
};
constexpr const char* figureNames[figureTotal] = {"first",   "open",    "again", "statistics", "step",
                                                  "changed", "painted", "spare", "missed", "erased"};
constexpr const char* figuresFile = "figures.txt";  // NAME NUMBER, a line each, in the program's folder

// Runs the program on the logs named, which lie in its folder, and leaves the figures there. 0 done; 1 when a log was not
// loaded, the program did not start, a dialog did not open or had an empty line of averages, or the file cannot be written.
// A dialog that was closed before it was painted has a negative number.
int MeasureTable(int turns, int logs, char** names);
