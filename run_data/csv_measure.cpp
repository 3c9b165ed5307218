#include "run_data/csv_measure.h"

#include <algorithm>
#include <cstdio>

#include "platform/boxes.h"
#include "platform/window.h"
#include "run_data/csv_columns.h"
#include "run_data/csv_number.h"
#include "run_data/run_store.h"
#include "run_data/typed_number.h"

constexpr int settlingLines   = 5;     // after so many lines the step may change no more
constexpr int progressBytes   = 8192;
constexpr int servedLines     = 2000;
constexpr int shortestAnyStep = 10;    // 0.01 ms
constexpr int shortestStep    = 50;
constexpr int longestStep     = 100000;
constexpr double longestTime  = 2000000;  // s

namespace {
struct FixedTimeBase { int step; double timeFactor; };
}
static constexpr FixedTimeBase timeBases[fixedTimeBases] = {{500, 1.0},  {1000, 0.5},   {2500, 0.2},
                                                           {5000, 0.1}, {10000, 0.05}, {30000, 0.0166667}};

// Whole milliseconds of a time as its decimal digits say, in 0.01 ms.
static int64_t LineTime(CsvField field, CsvShape& shape) {
    return int64_t{CutProduct(std::clamp(FieldNumber(field, shape), -longestTime, longestTime), 1000)} * 100;
}

// Takes in the time of one more line. Kept: the first line counts with what its title reads as, mostly 0.
static void FollowTime(CsvMeasure& measure, int64_t& before, int64_t time) {
    const int64_t step = time - before;
    before = time;
    if (step <= 0) return;
    if (step != measure.step && measure.step != 0 && measure.lines > settlingLines) measure.irregular = true;
    measure.step = step;
}

CsvMeasure MeasureCsv(CsvText text, const CsvWindow& window) {
    CsvMeasure measure = {};
    const int timeColumn = CsvColumnOf(rowTime), auxColumn[2] = {CsvColumnOf(rowAUX1), CsvColumnOf(rowAUX2)};
    const int most = 1 + std::max({timeColumn, auxColumn[0], auxColumn[1]});
    int64_t before = 0;
    CsvLine line;
    CsvShape timeShape, auxShape[2];
    while (ReadLine(text, line, most)) {
        if (timeColumn >= 0) FollowTime(measure, before, LineTime(FieldAt(line, timeColumn), timeShape));
        for (int k = 0; k < 2; k++)
            if (auxColumn[k] >= 0)
                measure.auxMax[k] = std::max(measure.auxMax[k], FieldProduct(FieldAt(line, auxColumn[k]), auxShape[k], 100));
        measure.lines++;
        // Kept: the bar moves only where a line happens to end on such a byte.
        if (text.cursor % progressBytes == 0) ShowCsvProgress(window, static_cast<int>(100 * text.cursor / text.length));
        if (measure.lines % servedLines == 0) PumpMessages();
    }
    return measure;
}

static int RefuseTimeBase(const char* text) {
    ShowBox(text, "File Error!!", BoxOwner::activeDialog);
    return 1;
}

int ChooseTimeBase(int slot, const CsvMeasure& measure, const CsvWindow& window) {
    const int item = csvRow[rowTime];
    const bool unusable = measure.step < shortestAnyStep || measure.irregular;
    if (measure.lines < 2 || (unusable && item >= fixedTimeBases))
        return RefuseTimeBase("There was a problem with BaseTime data.\r\nManually setting the BaseTime.");
    if (item >= 0 && item < fixedTimeBases) {
        timeFactor[slot] = timeBases[item].timeFactor;
        return 0;
    }
    // Kept: a row without a selection comes here too.
    if (measure.step < shortestStep || measure.step > longestStep) return RefuseTimeBase("The BaseTime that is not compatible.");
    const int step = static_cast<int>(measure.step);
    timeFactor[slot] = 500.0f / static_cast<float>(step);
    char note[64];
    std::snprintf(note, sizeof note, "Detected Timebase %dms(%dHz)\r\n", step / 100, 100000 / step);
    AddCsvNote(window, note);
    return 0;
}
