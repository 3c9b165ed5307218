// The command `laps`: what each lap of a file reached, as numbers or as the lap table shows it.
#include <algorithm>
#include <cstdio>
#include <iterator>

#include "analysis/lap_order.h"
#include "analysis/lap_stats.h"
#include "analysis/lap_table.h"
#include "cli/commands.h"
#include "cli/console.h"
#include "cli/session.h"
#include "graph/view_state.h"
#include "platform/files.h"
#include "run_data/run_store.h"
#include "settings/settings.h"
#include "views/course_file.h"

constexpr int highestSortKey = lapColumns;
constexpr int highestRow     = 511;  // of the check flags

static constexpr const char* tableNames[] = {"page1", "page2", "sectors"};

struct LapsRequest {
    int table = -1;  // of tableNames, -1 for numbers
    int file = 1, sort = 0;
    int first = -1;           // table position, -1: where the table opens
    bool checksGiven = false;
    std::vector<int> checked;
};

// --- arguments -----------------------------------------------------------------------------------------------------------

static int ReadTable(const Invocation& invocation, LapsRequest& request) {
    const std::string* text = GivenValue(invocation, "--table");
    if (!text) return exitDone;
    const auto found = std::find(std::begin(tableNames), std::end(tableNames), *text);
    if (found == std::end(tableNames)) return Refuse("--table %s: a table is page1, page2 or sectors", text->c_str());
    request.table = static_cast<int>(found - std::begin(tableNames));
    return exitDone;
}

static int ReadRows(const Invocation& invocation, LapsRequest& request) {
    const std::string* text = GivenValue(invocation, "--check");
    request.checksGiven = text != nullptr;
    for (size_t at = 0; text && at <= text->size();) {
        const size_t comma = std::min(text->find(',', at), text->size());
        int row = 0;
        if (!ReadNumber(text->substr(at, comma - at), 0, highestRow, row))
            return Refuse("--check %s: rows are numbers from 0 to %d with commas between, as in 1,2,5", text->c_str(), highestRow);
        request.checked.push_back(row);
        at = comma + 1;
    }
    return exitDone;
}

static int ReadRequest(const Invocation& invocation, LapsRequest& request) {
    struct NumberOption { const char *name, *meaning; int low, high, *number; };
    const NumberOption numbers[] = {
        {"--file", "a file", 1, fileSlots, &request.file},
        {"--sort", "a key", 0, highestSortKey, &request.sort},
        {"--first", "a first row", 0, highestRow, &request.first},
    };
    for (const NumberOption& option : numbers)
        if (const std::string* text = GivenValue(invocation, option.name); text && !ReadNumber(*text, option.low, option.high, *option.number))
            return Refuse("%s %s: %s is a number from %d to %d", option.name, text->c_str(), option.meaning, option.low, option.high);
    if (const int status = ReadTable(invocation, request); status != exitDone) return status;
    if (const int status = ReadRows(invocation, request); status != exitDone) return status;
    if (request.first >= 0 && request.table < 0) return Refuse("--first: belongs to --table, numbers are always told whole");
    const int files = static_cast<int>(invocation.operands.size());
    if (request.file > files) return Refuse("--file %d: only %d files are given", request.file, files);
    return exitDone;
}

// --- the table as the window has it ----------------------------------------------------------------------------------------

static void CheckRows(int slot, const std::vector<int>& rows) {
    std::fill(std::begin(lapChecked[slot]), std::end(lapChecked[slot]), 0);
    for (const int row : rows) lapChecked[slot][row] = 1;
}

// The sector times are taken by the course. Kept silent: a folder without one has nothing to tell about laps.
static void LoadCourseAtHand() {
    if (FileExists((std::string(ProgramFolder()) + CourseFile_name).c_str())) LoadCourse();
}

// Opens the table as its dialog does and presses what the request asks for.
static void OpenTable(const LapsRequest& request) {
    const int slot = request.file - 1, table = slot > 0;
    if (request.checksGiven) CheckRows(slot, request.checked);
    keepOn = request.checksGiven;
    OpenLapTable();
    if (slot > 0) lowerFile = slot;
    if (request.table == 1) ClickPage();
    if (request.table == 2) ClickSectorTimes();
    if (request.sort > 0) ClickHeader(table, request.sort - 1);
    if (request.first >= 0) firstRow[slot] = request.first;
    std::fill_n(&lapCells[table][0][0], lapLines * lapColumns, LapCell{});  // no line of what the table showed on the way here
    ShowLapTable(table);
}

static void AppendTable(std::string& text, int table) {
    for (const auto& line : lapCells[table])
        for (int column = 0; column < lapColumns; column++) {
            text += line[column].text;
            if (line[column].best) text += '*';
            text += column + 1 < lapColumns ? '\t' : '\n';
        }
}

// --- numbers ---------------------------------------------------------------------------------------------------------------

static void AppendHeader(std::string& text) {
    text += "row,checked,lapTime";
    for (const StatColumn& column : statColumns) {
        text += std::string(",") + column.name;
        if (column.at) text += std::string(",") + column.name + "_at";
    }
    for (int sector = 0; sector < sectorTotal; sector++) text += ",sectorTime" + std::to_string(sector);
    text += '\n';
}

static void AppendRow(std::string& text, int slot, int row) {
    const LapStats& stats = lapStats[slot];
    char number[40];
    text += std::to_string(row) + ',' + std::to_string(lapChecked[slot][row]) + ',' + std::to_string(stats.lapTime[row]);
    for (int column = 0; column < statTotal; column++) {
        std::snprintf(number, sizeof number, ",%.17g", StatValue(slot, column, row));
        text += number;
        if (statColumns[column].at) text += ',' + std::to_string((stats.*statColumns[column].at)[row]);
    }
    for (const int samples : stats.sectorTime[row]) text += ',' + std::to_string(samples);
    text += '\n';
}

static void AppendNumbers(std::string& text, int slot) {
    const int marks = HeldMarksPerLap(slot);
    AppendHeader(text);
    for (int position = 0; position < lapCount[slot]; position += marks) {
        const int row = lapOrder[slot][position];
        if (row <= lapCount[slot] - marks) AppendRow(text, slot, row);  // what is left behind the last whole lap is none
    }
    AppendRow(text, slot, lapCount[slot]);
}

int RunLaps(const Invocation& invocation) {
    LapsRequest request;
    if (const int status = ReadRequest(invocation, request); status != exitDone) return status;
    const std::vector<std::string> paths = OperandPaths(invocation);
    if (const int status = BeginSession(invocation); status != exitDone) return status;
    LoadCourseAtHand();
    const int loaded = LoadLogs(invocation, paths);
    OpenTable(request);
    std::string text;
    if (request.table < 0)
        AppendNumbers(text, request.file - 1);
    else
        AppendTable(text, request.file > 1);
    Print(text);
    EndSession(invocation);
    return loaded;
}
