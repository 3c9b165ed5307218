// Any bytes as a CSV log, with any selection in the dialog: an imported log or one of the fixed messages, and the other slots
// keep their data. Numbers and lines are those of the plain reader.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "app/frame_loop.h"
#include "bench/plain_csv_import.h"
#include "platform/headless/script.h"
#include "run_data/csv_columns.h"
#include "run_data/csv_log.h"
#include "run_data/csv_values.h"
#include "run_data/fixed_point.h"
#include "run_data/run_store.h"

namespace {

void Require(bool holds) {
    if (!holds) std::abort();
}

// The dialog is answered with the first bytes of the input: every second one keeps the preselection.
const uint8_t* answer;
constexpr size_t answerBytes = csvRows + 1;

int AnswerDialog(int, int) {
    OpenCsvRows();
    for (int row = 0; row < csvRows; row++)
        if (answer[row] & 1) ChooseCsvItem(row, (answer[row] >> 1) - 1);
    if (answer[csvRows] & 1) lapByNumber = answer[csvRows] >> 1 & 1;
    if (answer[csvRows] < 250) AcceptCsvImport({nullptr, nullptr});
    return 0;
}

// The slot is usable: counts and marks inside their arrays.
void CheckSlot(int slot) {
    const int samples = sampleCount[slot];
    Require(samples >= 1 && samples < static_cast<int>(Ne[slot].size()));
    Require(lapCount[slot] >= 1 && lapCount[slot] <= lapMarkLimit);
    Require(timeFactor[slot] > 0 && timeFactor[slot] <= 10);
    uint32_t before = 0;
    for (int k = 0; k < lapTableSize; k++) {
        Require(lapStart[slot][k] >= before && lapStart[slot][k] <= static_cast<uint32_t>(samples));
        before = lapStart[slot][k];
    }
}

bool SameNumber(double a, double b) { return a == b || (a != a && b != b); }

bool SameField(CsvField field, const char* wanted) {
    return std::strlen(wanted) == static_cast<size_t>(field.length) && std::memcmp(wanted, field.text, field.length) == 0;
}

// Lines one by one, as the titles are read.
void CheckLines(const std::vector<uint8_t>& log, int length) {
    CsvText text = StartCsv(log.data(), length);
    PlainCsvReader plain{reinterpret_cast<const char*>(log.data()), length};
    for (CsvLine line;;) {
        const bool found = ReadLine(text, line);
        Require(found == plain.ReadLine());
        if (!found) break;
        Require(plain.Split(csvColumnLimit) == line.fields);
        for (int k = 0; k < line.fields; k++) Require(SameField(line.field[k], plain.field[k]));
    }
}

// One column of the lines at hand, which `wanted` holds as text.
void CheckColumn(const CsvBlock& block, CsvColumn& column, const std::vector<std::string>& wanted) {
    double numbers[csvBlockLines];
    int32_t products[csvBlockLines];
    ReadNumbers(block, column, numbers);
    CutProducts(numbers, block.lines, 100, 1, products);
    for (int k = 0; k < block.lines; k++) {
        Require(SameField(FieldOf(block, k, column.column), wanted[k].c_str()));
        const double number = std::atof(wanted[k].c_str());
        Require(SameNumber(numbers[k], number));
        Require(products[k] == TruncToInt(number * 100));
    }
}

// Lines by blocks, and some columns as numbers, with as many columns as the first byte says.
void CheckBlocks(const std::vector<uint8_t>& log, int length) {
    static CsvBlock block;
    const int columns = length > 0 ? log[0] % 16 : 0;
    StartBlocks(block, StartCsv(log.data(), length), columns);
    PlainCsvReader plain{reinterpret_cast<const char*>(log.data()), length};
    std::vector<CsvColumn> readers;
    for (int k = 0; k < columns; k++) readers.push_back({k, false});
    for (int wanted = 1; wanted > 0; wanted = block.lines > 0 ? csvBlockLines : 0) {
        ReadBlock(block, wanted);
        std::vector<std::vector<std::string>> texts(static_cast<size_t>(columns));
        for (int k = 0; k < block.lines; k++) {
            Require(plain.ReadLine());
            plain.Split(columns);
            for (int column = 0; column < columns; column++) texts[column].push_back(plain.field[column]);
        }
        for (CsvColumn& reader : readers) CheckColumn(block, reader, texts[reader.column]);
    }
    Require(!plain.ReadLine());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const bool started = [] {
        LoadDefaults();
        static constexpr const char* titles[csvLabelSections] = {"Time", "Ne",   "TH", "VFW",  "VRW",  "FRSUS", "RRSUS",
                                                                 "LAF1", "LAF2", "VB", "AUX1", "AUX2", "LAP"};
        for (int row = 0; row < csvLabelSections; row++) std::strcpy(csvLabel[row][0], titles[row]);
        std::strcpy(csvLabel[rowLap][1], "Distance");
        return true;
    }();
    (void)started;
    // A text alone keeps the preselection; behind a zero byte stands the answer, in front of the text.
    static constexpr uint8_t preselection[answerBytes] = {};
    answer = preselection;
    if (size > answerBytes && data[0] == 0) {
        answer = data + 1;
        data += 1 + answerBytes;
        size -= 1 + answerBytes;
    }
    DefaultScript();
    SetDialogHandler(AnswerDialog);
    std::vector<uint8_t> log(data, data + size);
    log.resize(size + 1024, 0);
    log.shrink_to_fit();
    const int before = sampleCount[1], inUse = slotInUse[1];
    OpenCsvImport(0, log.data(), static_cast<int>(size));
    CheckSlot(0);
    Require(sampleCount[1] == before && slotInUse[1] == inUse);
    CheckLines(log, static_cast<int>(size));
    CheckBlocks(log, static_cast<int>(size));
    return 0;
}
