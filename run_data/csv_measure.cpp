#include "run_data/csv_measure.h"

#include <algorithm>
#include <cstdio>

#include "platform/boxes.h"
#include "platform/window.h"
#include "run_data/csv_columns.h"
#include "run_data/csv_values.h"
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
static int64_t LineTime(double seconds) {
    return int64_t{CutProduct(std::clamp(seconds, -longestTime, longestTime), 1000)} * 100;
}

// Takes in the time of one more line. Kept: the first line counts with what its title reads as, mostly 0.
static void FollowTime(CsvMeasure& measure, int line, int64_t& before, int64_t time) {
    const int64_t step = time - before;
    before = time;
    if (step <= 0) return;
    if (step != measure.step && measure.step != 0 && line > settlingLines) measure.irregular = true;
    measure.step = step;
}

static void FollowTimes(CsvMeasure& measure, const CsvBlock& block, CsvColumn& column, int64_t& before) {
    double seconds[csvBlockLines];
    ReadNumbers(block, column, seconds);
    for (int k = 0; k < block.lines; k++) FollowTime(measure, measure.lines + k, before, LineTime(seconds[k]));
}

static void RaiseMax(int& max, const CsvBlock& block, CsvColumn& column) {
    double numbers[csvBlockLines];
    int32_t products[csvBlockLines];
    ReadNumbers(block, column, numbers);
    CutProducts(numbers, block.lines, 100, 1, products);
    max = std::max(max, *std::max_element(products, products + block.lines));
}

// Kept: the bar moves only where a line happens to end on such a byte.
static void ShowLines(const CsvBlock& block, int linesBefore, const CsvWindow& window) {
    for (int k = 0; k < block.lines; k++) {
        const int64_t cursor = block.start[k + 1];
        if (cursor % progressBytes == 0) ShowCsvProgress(window, static_cast<int>(100 * cursor / block.text.length));
    }
    if ((linesBefore + block.lines) % servedLines == 0) PumpMessages();
}

CsvMeasure MeasureCsv(CsvText text, const CsvWindow& window) {
    CsvMeasure measure = {};
    static CsvBlock block;
    CsvColumn time = {CsvColumnOf(rowTime), false}, aux[2] = {{CsvColumnOf(rowAUX1), false}, {CsvColumnOf(rowAUX2), false}};
    StartBlocks(block, text, 1 + std::max({time.column, aux[0].column, aux[1].column}));
    int64_t before = 0;
    for (;;) {
        ReadBlock(block, std::min(csvBlockLines, servedLines - measure.lines % servedLines));
        if (block.lines == 0) return measure;
        if (time.column >= 0) FollowTimes(measure, block, time, before);
        for (int k = 0; k < 2; k++)
            if (aux[k].column >= 0) RaiseMax(measure.auxMax[k], block, aux[k]);
        ShowLines(block, measure.lines, window);
        measure.lines += block.lines;
    }
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
