#include "run_data/csv_import.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <iterator>
#include <string>

#include "platform/boxes.h"
#include "platform/clock.h"
#include "platform/window.h"
#include "run_data/csv_columns.h"
#include "run_data/csv_measure.h"
#include "run_data/csv_values.h"
#include "run_data/derived_channels.h"
#include "run_data/run_store.h"
#include "run_data/setup_values.h"

constexpr int spareSamples      = 32;             // elements of every array behind the last line
constexpr int shortestLog       = 20;             // samples with distances and derived channels
constexpr int progressSamples   = 8192;           // between two moves of the bar
constexpr int servedValues      = 2000;           // samples between two looks at the messages
constexpr int servedDistances   = 5000;
constexpr int blockSamples      = csvBlockLines;  // values that are at hand at a time
constexpr int readingPauseMs    = 500;

// --- the slot before ---------------------------------------------------------------------------------------------------

static void ClearSensors(int slot) {
    fsusType[slot] = rsusType[slot] = 0;
    fsusZeroRaw[slot] = rsusZeroRaw[slot] = 0;
    tpsClosedRaw[slot] = 0;
    tpsSpan[slot] = 255;
    rearTyreMm[slot] = 1;
    SetUnknownGearing(slot);
    if (slot == 0) SetUnknownRevs();
}

static void PrepareSlot(int slot) {
    std::memset(memoText[slot], 0, sizeof memoText[slot]);
    if (slot == 0) std::memset(firmwareText, 0, sizeof firmwareText);
    std::fill(std::begin(lapStart[slot]), std::end(lapStart[slot]), 0);
    std::fill(std::begin(lapLength[slot]), std::end(lapLength[slot]), 0);
    timeFactor[slot] = 1.0;
    ClearSensors(slot);
    ClearChannels(slot, 5);
    for (int channel = 0; channel < chSlip; channel++) {
        channelMin[slot][channel] = INT_MAX;
        channelMax[slot][channel] = 0;
    }
}

// --- AUX ranges --------------------------------------------------------------------------------------------------------

// Makes the largest value fit 16 bits.
static int AuxDivider(int most) { return most > 327670 ? 100 : most <= 32767 ? 1 : 10; }

// Kept: File 1 and File 2 are compared with each other, File 3 with none.
static void TakeAuxRanges(int slot, const CsvMeasure& measure, const CsvWindow& window) {
    static constexpr const char* notes[2] = {"AUX1 Range miss mach...\r\n", "AUX2 Range miss mach...\r\n"};
    const int other = slot == 0 ? 1 : 0;
    for (int k = 0; k < 2; k++) {
        auxDivider[slot][k] = AuxDivider(measure.auxMax[k]);
        const bool compared = slot < 2 && slotInUse[other] && csvRow[rowAUX1 + k] != csvTitles;
        if (compared && auxDivider[slot][k] != auxDivider[other][k]) AddCsvNote(window, notes[k]);
    }
}

// --- values ------------------------------------------------------------------------------------------------------------

static void SetCalibration(int slot) {
    for (int input = 0; input < analogInputs; input++) {
        AnalogCalibration straight = {};
        straight.type = input < 2 ? 0 : 2;
        straight.slope = 1;
        analog[slot][input] = analogAsLogged[slot][input] = straight;
    }
}

// What one row of the dialog makes of its field: the number x scale. The engine speed is the integer that its field begins
// with.
struct RowRule {
    int row;
    double scale;
};
static constexpr RowRule rowRules[] = {
    {rowNe, 1},     {rowTH, 10},    {rowVFW, 10}, {rowVRW, 10},   {rowFSUS, 100}, {rowRSUS, 100},
    {rowLAF1, 100}, {rowLAF2, 100}, {rowVB, 100}, {rowAUX1, 100}, {rowAUX2, 100}, {rowLap, 1},
};

// A row that has a column.
struct ActiveRow {
    int row;
    CsvColumn column;
    double scale, divider;
    int32_t last;  // value of the last line
};
struct RowValues {
    ActiveRow active[csvRows];
    int rows;                              // active ones
    int32_t value[csvRows][blockSamples];  // by row of the dialog
};

// Returns how many fields of a line are looked at.
static int ChooseRows(int slot, RowValues& values) {
    int fields = values.rows = 0;
    std::memset(values.value, 0, sizeof values.value);
    for (const RowRule& rule : rowRules) {
        const int column = CsvColumnOf(rule.row), aux = rule.row - rowAUX1;
        if (column < 0) continue;
        const double divider = aux == 0 || aux == 1 ? auxDivider[slot][aux] : 1;
        values.active[values.rows++] = {rule.row, {column, rule.row == rowNe}, rule.scale, divider, 0};
        fields = std::max(fields, column + 1);
    }
    return fields;
}

// The values of `samples` samples, 1 or more. Kept: with the titles there are as many lines as samples, so the last sample
// has no line and the last line counts twice.
static void ReadValues(RowValues& values, const CsvBlock& block, int samples) {
    double numbers[csvBlockLines];
    for (int k = 0; k < values.rows; k++) {
        ActiveRow& active = values.active[k];
        int32_t* const value = values.value[active.row];
        ReadNumbers(block, active.column, numbers);
        CutProducts(numbers, block.lines, active.scale, active.divider, value);
        if (block.lines > 0) active.last = value[block.lines - 1];
        if (block.lines < samples) value[block.lines] = active.last;
    }
}

// The array that may not have grown keeps what it has.
template <class T>
static void Deliver(SampleArray<T>& array, const int32_t* values, int first, int count) {
    const int room = std::min<int>(count, static_cast<int>(array.size()) - first);
    if (room > 0) std::copy_n(values, room, array.begin() + first);
}

static void DeliverAll(int slot, const RowValues& values, int first, int count) {
    const auto* value = values.value;
    Deliver(Ne[slot], value[rowNe], first, count);
    Deliver(TH[slot], value[rowTH], first, count);
    Deliver(VFW[slot], value[rowVFW], first, count);
    Deliver(VRW[slot], value[rowVRW], first, count);
    Deliver(FSUS[slot], value[rowFSUS], first, count);
    Deliver(RSUS[slot], value[rowRSUS], first, count);
    Deliver(LAF1[slot], value[rowLAF1], first, count);
    Deliver(LAF2[slot], value[rowLAF2], first, count);
    Deliver(VB[slot], value[rowVB], first, count);
    Deliver(AUX1[slot], value[rowAUX1], first, count);
    Deliver(AUX2[slot], value[rowAUX2], first, count);
}

// Marks where the lap number changes, or where the distance falls back to zero.
static void FindMarks(int slot, const int32_t* laps, int first, int count, int& before) {
    for (int k = 0; k < count; k++) {
        if (first + k == 1) before = laps[k];
        const bool mark = lapByNumber ? laps[k] != before : before > 0 && laps[k] == 0;
        if (mark && lapCount[slot] < lapMarkLimit) lapStart[slot][lapCount[slot]++] = static_cast<uint32_t>(first + k);
        before = laps[k];
    }
}

// Calls work(first, last) for pieces of 1..samples that end wherever the bar moves or messages are served.
template <class Work>
static void InPieces(const CsvWindow& window, int samples, int lines, int barStart, int served, Work work) {
    for (int first = 1; first <= samples;) {
        const auto nextMultiple = [first](int of) { return (first + of - 1) / of * of; };
        const int last = std::min({samples, first + blockSamples - 1, nextMultiple(progressSamples), nextMultiple(served)});
        work(first, last);
        if (last % progressSamples == 0) ShowCsvProgress(window, barStart + static_cast<int>(int64_t{100} * last / lines));
        if (last % served == 0) PumpMessages();
        first = last + 1;
    }
}

static void ReadAllValues(int slot, CsvText text, int lines, const CsvWindow& window) {
    static RowValues values;
    static CsvBlock block;
    CsvLine titles;
    ReadLine(text, titles);
    StartBlocks(block, text, ChooseRows(slot, values));
    int lapBefore = 0;
    lapCount[slot] = 1;
    InPieces(window, lines, lines, 100, servedValues, [&](int first, int last) {
        const int count = last - first + 1;
        ReadBlock(block, count);
        ReadValues(values, block, count);
        DeliverAll(slot, values, first, count);
        FindMarks(slot, values.value[rowLap], first, count, lapBefore);
    });
    sampleCount[slot] = lines + 1;
}

// --- distances ---------------------------------------------------------------------------------------------------------

static void AddUp(SampleArray<uint32_t>& distance, const SampleArray<uint16_t>& speed, int first, int last) {
    uint32_t sum = distance[first - 1];
    for (int j = first; j <= last; j++) distance[j] = sum += speed[j - 1];
}

// Kept: every mark restarts lapDistance, whatever MarksPerLap says.
static void AddUpLaps(int slot, const SampleArray<uint16_t>& speed, int first, int last, int& mark) {
    for (int from = first; from <= last;) {
        const int stop = static_cast<int>(lapStart[slot][mark]);
        const bool ends = mark <= lapCount[slot] && stop <= last;
        const int to = ends ? stop : last;
        AddUp(lapDistance[slot], speed, from, to);
        if (ends) {
            lapLength[slot][mark++] = lapDistance[slot][to];
            lapDistance[slot][to] = 0;
        }
        from = to + 1;
    }
}

// Kept: the rear wheel counts for the laps only where the log has no front wheel; CoursePosSource plays no part.
static void AddUpDistances(int slot, int lines, const CsvWindow& window) {
    const bool front = CsvColumnOf(rowVFW) >= 0, rear = CsvColumnOf(rowVRW) >= 0;
    int mark = 1;
    InPieces(window, sampleCount[slot], lines, 200, servedDistances, [&](int first, int last) {
        if (front) AddUp(distFront[slot], VFW[slot], first, last);
        if (rear) AddUp(distRear[slot], VRW[slot], first, last);
        if (front || rear) AddUpLaps(slot, front ? VFW[slot] : VRW[slot], first, last, mark);
    });
}

// --- the import --------------------------------------------------------------------------------------------------------

static void ShowFromStart(int slot) {
    FillLapEnd(slot);
    cursorPos[slot] = 0;
    currentLap[slot] = 1;
    lapViewOffset[slot] = 0;
}

static void PauseForReading() {
    const int64_t end = SteadyMs() + readingPauseMs;
    for (int64_t left; (left = end - SteadyMs()) > 0;) {
        PumpMessages();
        WaitForMessages(static_cast<int>(left));
    }
}

// Gives the slot room for the lines, all zero. 0 done; 1 after the user was told why not.
static int MakeRoom(int slot, int lines) {
    if (lines > sampleLimit) {
        ShowBox(("Data file is corrupted. " + std::to_string(lines)).c_str(), "File Error!!", BoxOwner::activeDialog);
        return 1;
    }
    if (EnsureChannels(slot, lines + spareSamples) != 0) return 1;
    ClearChannels(slot, lines + spareSamples);
    return 0;
}

int FillFromCsv(int slot, CsvText text, const CsvWindow& window) {
    PrepareSlot(slot);
    ShowCsvProgress(window, 0);
    const CsvMeasure measure = MeasureCsv(text, window);
    if (ChooseTimeBase(slot, measure, window) != 0) return 1;
    TakeAuxRanges(slot, measure, window);
    if (MakeRoom(slot, measure.lines) != 0) return 1;
    SetCalibration(slot);
    slotInUse[slot] = 1;
    ReadAllValues(slot, text, measure.lines, window);
    ShowFromStart(slot);
    if (sampleCount[slot] >= shortestLog) AddUpDistances(slot, measure.lines, window);
    return 0;
}

void ImportCsv(int slot, CsvText text, const CsvWindow& window) {
    if (FillFromCsv(slot, text, window) != 0) return ResetSlot(slot);
    if (sampleCount[slot] < shortestLog) return;
    ShowCsvProgress(window, csvProgressRange);
    PauseForReading();
    SmoothChannels(slot);
    ComputeSuspensionSpeed(slot);
    ComputeStatistics(slot);
}
