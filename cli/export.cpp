// The command `export`: File 1 as the text table that the window's export writes.
#include <algorithm>
#include <iterator>

#include "analysis/csv_export.h"
#include "analysis/lap_stats.h"
#include "cli/commands.h"
#include "cli/console.h"
#include "cli/session.h"
#include "platform/clock.h"
#include "run_data/run_store.h"

constexpr int highestRow = 511;  // of the check flags

struct ExportRequest {
    int  rate = -1;  // index into csvRates
    bool columnsGiven = false, lapsGiven = false, stretchGiven = false;
    std::vector<int> columns, laps;
    CsvStretch stretch = {};
};

// --- arguments -----------------------------------------------------------------------------------------------------------

// The parts of a list with commas between.
static std::vector<std::string> Parts(const std::string& text) {
    std::vector<std::string> parts;
    for (size_t at = 0; at <= text.size();) {
        const size_t comma = std::min(text.find(',', at), text.size());
        parts.push_back(text.substr(at, comma - at));
        at = comma + 1;
    }
    return parts;
}

static int ReadRate(const Invocation& invocation, ExportRequest& request) {
    const std::string* text = GivenValue(invocation, "--rate");
    if (!text) return exitDone;
    for (int rate = 0; rate < csvRateTotal; rate++)
        if (*text == std::to_string(csvRates[rate].perSecond)) request.rate = rate;
    return request.rate >= 0 ? exitDone : Refuse("--rate %s: a rate is 200, 100, 50, 10 or 1", text->c_str());
}

static int ReadColumns(const Invocation& invocation, ExportRequest& request) {
    const std::string* text = GivenValue(invocation, "--columns");
    request.columnsGiven = text != nullptr;
    if (!text || text->empty()) return exitDone;
    std::string captions;
    for (const CsvColumn& column : csvColumns) captions += (captions.empty() ? "" : ", ") + std::string(column.caption);
    for (const std::string& part : Parts(*text)) {
        if (part == "Time") continue;  // always there
        const auto found = std::find_if(std::begin(csvColumns), std::end(csvColumns), [&](const CsvColumn& column) { return part == column.caption; });
        if (found == std::end(csvColumns))
            return Refuse("--columns %s: columns are %s, with commas between", text->c_str(), captions.c_str());
        request.columns.push_back(static_cast<int>(found - std::begin(csvColumns)));
    }
    return exitDone;
}

static int ReadLaps(const Invocation& invocation, ExportRequest& request) {
    const std::string* text = GivenValue(invocation, "--laps");
    request.lapsGiven = text != nullptr;
    if (!text) return exitDone;
    for (const std::string& part : Parts(*text)) {
        int row = 0;
        if (!ReadNumber(part, 0, highestRow, row))
            return Refuse("--laps %s: rows are numbers from 0 to %d with commas between, as in 1,2,5", text->c_str(), highestRow);
        request.laps.push_back(row);
    }
    return exitDone;
}

static int ReadStretch(const Invocation& invocation, ExportRequest& request) {
    const std::string* text = GivenValue(invocation, "--range");
    request.stretchGiven = text != nullptr;
    if (!text) return exitDone;
    const size_t dash = std::min(text->find('-'), text->size());
    CsvStretch& stretch = request.stretch;
    if (!ReadNumber(text->substr(0, dash), 0, INT32_MAX, stretch.first) || dash == text->size() ||
        !ReadNumber(text->substr(dash + 1), stretch.first, INT32_MAX, stretch.last))
        return Refuse("--range %s: a range is two samples with a dash between, the smaller first, as in 400-1200", text->c_str());
    if (request.lapsGiven) return Refuse("--range %s: either --laps or --range says what is exported", text->c_str());
    return exitDone;
}

static int ReadRequest(const Invocation& invocation, ExportRequest& request) {
    int (*const readers[])(const Invocation&, ExportRequest&) = {ReadRate, ReadColumns, ReadLaps, ReadStretch};
    for (const auto read : readers)
        if (const int status = read(invocation, request); status != exitDone) return status;
    return exitDone;
}

// --- the export as the window does it --------------------------------------------------------------------------------------

// Ticks what the request asks for. What it does not name is as the window finds it after a load.
static void Choose(const ExportRequest& request) {
    if (request.rate >= 0) csvDecimation = request.rate;
    if (request.columnsGiven) {
        for (const CsvColumn& column : csvColumns) *column.on = 0;
        for (const int column : request.columns) *csvColumns[column].on = 1;
    }
    if (request.lapsGiven) {
        std::fill(std::begin(lapChecked[0]), std::end(lapChecked[0]), 0);
        for (const int row : request.laps) lapChecked[0][row] = 1;
    }
}

static CsvStretch HeldStretch(CsvStretch stretch) {
    return {std::min(stretch.first, sampleCount[0]), std::min(stretch.last, sampleCount[0])};
}

int RunExport(const Invocation& invocation) {
    ExportRequest request;
    if (const int status = ReadRequest(invocation, request); status != exitDone) return status;
    const std::vector<std::string> paths = OperandPaths(invocation);
    if (const int status = BeginSession(invocation); status != exitDone) return status;
    int status = LoadLog(invocation, paths[1], 0);
    if (status == exitDone) {
        Choose(request);
        UseVirtualClock(true);  // no pause for a bar that nobody sees
        QueueAnswer(Answer::path, paths[0]);
        status = request.stretchGiven ? ExportStretch({}, HeldStretch(request.stretch)) : ExportCheckedLaps({});
    }
    EndSession(invocation);
    return status;
}
