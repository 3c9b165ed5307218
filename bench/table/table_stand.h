// table_stand.h -- the process of table_bench that measures: the whole program, which opens its lap table again and again.
#pragma once

// The figures of a process, in the order in which they are printed. What opening means stands in table_bench.cpp.
enum Figure : int {
    firstMs, openMs, againMs, statisticsMs,
    stepMs,                                                   // one scrolling step or refill, until all is painted
    changedCells, paintedCells, sparePaints, dialogErasures,  // per step; spare: cells that stayed, or were painted before
    figureTotal
};
constexpr const char* figureNames[figureTotal] = {"first",   "open",    "again", "statistics", "step",
                                                  "changed", "painted", "spare", "erased"};
constexpr const char* figuresFile = "figures.txt";  // NAME NUMBER, a line each, in the program's folder

// Runs the program on the logs named, which lie in its folder, and leaves the figures there. 0 done; 1 when a log was not
// loaded, the program did not start, or the dialog was closed before it was painted.
int MeasureTable(int turns, int logs, char** names);
