#include "analysis/csv_rows.h"

#include <algorithm>
#include <cstring>

#include "analysis/number_text.h"
#include "platform/clock.h"
#include "platform/window.h"
#include "run_data/fixed_point.h"
#include "run_data/run_store.h"
#include "settings/settings.h"

int csvDistanceOn, csvLapOn;

constexpr size_t bufferSize = 1 << 18;
constexpr size_t longestLine = (csvColumnTotal + 1) * (longestNumber + 1) + 2;
constexpr int serveEveryMs = 50;
constexpr int samplesBetweenLooks = 1024;  // at the clock
constexpr int msPerSample = 5;

static char* PutDistance(char* to, const CsvRow& row) {
    const SampleArray<uint32_t>& sum = CoursePosSource == 1 ? distRear[0] : distFront[0];
    const float counts = static_cast<float>(sum[row.sample] - sum[row.first]);
    return PutInt(to, TruncToInt(counts / (timeFactor[0] * 7200.0)));
}

static char* PutLap(char* to, const CsvRow& row) { return PutInt(to, row.lapNumber); }

template <auto& array, auto put, int divisor = 1>
static char* Put(char* to, const CsvRow& row) { return put(to, array[0][row.sample] / divisor); }

// Kept: 0.1 %, as the graph has it, and not the percent of the lap table.
static char* PutSlip(char* to, const CsvRow& row) {
    const int front = VFW[0][row.sample], rear = VRW[0][row.sample];
    return PutOneDecimal(to, front > 50 ? static_cast<float>((rear - front) * 1000) / static_cast<float>(front) : 0.0f);
}

const CsvColumn csvColumns[csvColumnTotal] = {
    {"Distance", ",Distance", &csvDistanceOn, false, PutDistance},
    {"Lap", ",LAP", &csvLapOn, false, PutLap},
    {"Ne", ",Ne", &showChannel[0][chNe], false, Put<Ne, PutInt>},
    {"TH", ",TH", &showChannel[0][chTH], false, Put<TH, PutInt, 10>},
    {"VFW", ",VFW", &showChannel[0][chVFW], false, Put<VFW, PutTenths>},
    {"VRW", ",VRW", &showChannel[0][chVRW], false, Put<VRW, PutTenths>},
    {"FrSUS", ",FRSUS", &showChannel[0][chFSUS], false, Put<FSUS, PutInt, 100>},
    {"RrSUS", ",RRSUS", &showChannel[0][chRSUS], false, Put<RSUS, PutInt, 100>},
    {"LAF1", ",LAF1", &showChannel[0][chLAF1], false, Put<LAF1, PutHundredths>},
    {"LAF2", ",LAF2", &showChannel[0][chLAF2], false, Put<LAF2, PutHundredths>},
    {"VB", ",VB", &showChannel[0][chVB], false, Put<VB, PutHundredths>},
    {"AUX1", ",AUX1", &showChannel[0][chAUX1], false, Put<AUX1, PutHundredths>},
    {"AUX2", ",AUX2", &showChannel[0][chAUX2], false, Put<AUX2, PutHundredths>},
    {"SlipRatio", ",Slip", &showChannel[0][chSlip], true, PutSlip},
    {"FrSusSpeed", ",vFSus", &showChannel[0][chVFSus], true, Put<VFSus, PutInt>},
    {"RrSusSpeed", ",vRSus", &showChannel[0][chVRSus], true, Put<VRSus, PutInt>},
};

static char* PutText(char* to, const char* text) {
    const size_t length = std::strlen(text);
    std::memcpy(to, text, length);
    return to + length;
}

static char* PutLineEnd(char* to) { return PutText(to, "\r\n"); }

static void Flush(CsvFile& csv) {
    if (!csv.failed && WritePiece(csv.file, csv.buffer.get(), csv.used) != 0) csv.failed = true;
    csv.used = 0;
}

int BeginCsv(CsvFile& csv, const char* path, int step, const CsvProgress& progress) {
    csv = {};
    csv.step = step;
    csv.progress = progress;
    if (BeginReplacement(csv.file, path) != 0) return 1;
    csv.buffer = std::make_unique_for_overwrite<char[]>(bufferSize);
    csv.marks.assign(lapStart[0] + 1, lapStart[0] + lapCount[0]);
    std::sort(csv.marks.begin(), csv.marks.end());  // marks of a secondary log need not rise
    char* to = PutText(csv.buffer.get(), "Time");
    for (const CsvColumn& column : csvColumns) {
        if (!*column.on || (column.expertOnly && ExpertMode != 2)) continue;
        csv.columns.push_back(&column);
        to = PutText(to, column.header);
    }
    csv.used = static_cast<size_t>(PutLineEnd(to) - csv.buffer.get());
    return 0;
}

static void ServeWindows(CsvFile& csv, int sample, bool showsSample) {
    const int64_t now = SteadyMs();
    if (now - csv.served <= serveEveryMs) return;
    csv.served = now;
    if (showsSample && csv.progress.position) csv.progress.position(csv.progress.window, sample);
    PumpMessages();  // a close that is asked for meanwhile takes place after the export
}

static void WriteRow(CsvFile& csv, const CsvRow& row) {
    if (csv.used + longestLine > bufferSize) Flush(csv);
    char* const start = csv.buffer.get() + csv.used;
    char* to = PutThousandths(start, int64_t{row.counter} * msPerSample);
    for (const CsvColumn* column : csv.columns) {
        *to++ = ',';
        to = column->put(to, row);
    }
    csv.used += static_cast<size_t>(PutLineEnd(to) - start);
}

void WriteCsvRows(CsvFile& csv, int64_t first, int64_t last, bool showsSample) {
    const int64_t end = std::min<int64_t>(last + 1, sampleCount[0] - 1);
    auto mark = std::lower_bound(csv.marks.begin(), csv.marks.end(), first);
    CsvRow row = {0, static_cast<int>(std::min(first, end)), 0, 0};
    for (int64_t sample = first; sample < end && !csv.failed; sample++) {
        if ((sample - first) % samplesBetweenLooks == 0) ServeWindows(csv, static_cast<int>(sample), showsSample);
        for (; mark != csv.marks.end() && *mark == sample; ++mark) csv.lapNumber++;
        row.sample = static_cast<int>(sample);
        row.counter = csv.counter++;
        row.lapNumber = csv.lapNumber;
        if (row.counter % csv.step == 0) WriteRow(csv, row);
    }
}

int FinishCsv(CsvFile& csv) {
    Flush(csv);
    if (!csv.failed) return CommitReplacement(csv.file);
    AbandonReplacement(csv.file);
    return 1;
}
