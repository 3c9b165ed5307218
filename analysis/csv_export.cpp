#include "analysis/csv_export.h"

#include <algorithm>
#include <iterator>

#include "analysis/lap_stats.h"
#include "graph/grid.h"
#include "graph/view_state.h"
#include "platform/boxes.h"
#include "platform/clock.h"
#include "platform/file_dialogs.h"
#include "run_data/fixed_point.h"
#include "run_data/run_store.h"
#include "settings/settings.h"

const CsvRate csvRates[csvRateTotal] = {
    {"200Hz (5ms)", 200, 1}, {"100Hz(10ms)", 100, 2}, {"50Hz (20ms)", 50, 4}, {"10Hz(100ms)", 10, 20}, {"1Hz(1000ms)", 1, 200},
};
int csvDecimation;

static int shownBefore[channelTotal];  // the channel flags of File 1 when the dialog was opened

static void ShowChange() {
    BuildGrid();
    activityCount = 150;
}

int OpenCsvExport() {
    if (csvRangePending) return 1;
    std::copy(std::begin(showChannel[0]), std::end(showChannel[0]), shownBefore);
    return 0;
}

void CheckCsvColumn(int column, int on) {
    *csvColumns[column].on = on;
    ShowChange();
}

void AwaitCsvRange() {
    csvRangePending = 1;
    activityCount = 150;
}

void CancelCsvExport() {
    csvRangePending = 0;
    ClearExtremeMarks();
    activityCount = 150;
}

static int TellNotSaved(BoxOwner owner) {
    ShowBox("Not Saved !!", "Error !!", owner);
    return 1;
}

static void SetRange(const CsvProgress& progress, int low, int high) {
    if (progress.range) progress.range(progress.window, low, high);
}
static void SetPosition(const CsvProgress& progress, int at) {
    if (progress.position) progress.position(progress.window, at);
}

// Asks for the file, fills it by `writeRows` and puts it in place. The progress runs from low to high.
template <class WriteRows>
static int WriteCsv(const CsvProgress& progress, int low, int high, WriteRows writeRows) {
    constexpr int waitMs = 1000;  // for the full bar to be seen
    static constexpr FileFilter filters[] = {{"CSV(*.csv)", "*.csv"}};
    char path[pathSize];
    CsvFile csv;
    if (!AskSaveFile({filters, std::size(filters), "CSV", dataFolder, ".csv", true}, path)) return TellNotSaved(BoxOwner::activeDialog);
    if (BeginCsv(csv, path, csvRates[csvDecimation].step, progress) != 0) return TellNotSaved(BoxOwner::toolbar);
    SetRange(progress, low, high);
    writeRows(csv);
    if (FinishCsv(csv) != 0) return TellNotSaved(BoxOwner::activeDialog);
    SetPosition(progress, high);
    SleepMs(waitMs);
    ShowBox("Done.", "Saved", BoxOwner::activeDialog);
    return 0;
}

int ExportCheckedLaps(const CsvProgress& progress) {
    return WriteCsv(progress, 0, lapCount[0], [&](CsvFile& csv) {
        for (int mark = 0; mark < lapCount[0] && !csv.failed; mark++) {
            SetPosition(progress, mark);
            // Kept: with 2 or 3 marks a lap, the check of entry mark / marks counts, and not that of the lap's own row.
            if (lapChecked[0][mark / HeldMarksPerLap(0)])
                WriteCsvRows(csv, int64_t{lapStart[0][mark]} + 1, lapStart[0][mark + 1], false);
        }
    });
}

int ExportStretch(const CsvProgress& progress, CsvStretch stretch) {
    return WriteCsv(progress, stretch.first, stretch.last,
                    [&](CsvFile& csv) { WriteCsvRows(csv, stretch.first, stretch.last, true); });
}

CsvStretch StretchOnGraph() {
    const int64_t offset = TruncToInt((mouseX - BaseLineX()) * 100 * timeFactor[0] / viewZoom * timeScale);
    const int mouse = static_cast<int>(std::clamp<int64_t>((offset + cursorPos[0] + 50) / 100, 0, sampleCount[0]));
    const int cursor = cursorPos[0] / 100;
    return {std::max(std::min(mouse, cursor), 0), std::max(mouse, cursor)};
}

int ExportAwaitedRange(const CsvProgress& progress) {
    csvRangePending = 0;
    const int result = ExportStretch(progress, StretchOnGraph());
    std::copy(std::begin(shownBefore), std::end(shownBefore), showChannel[0]);
    ShowChange();
    return result;
}

void DefaultCsvExport() {
    csvDistanceOn = csvLapOn = csvDecimation = 0;
    std::fill(std::begin(shownBefore), std::end(shownBefore), 0);
}
