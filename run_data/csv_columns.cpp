#include "run_data/csv_columns.h"

#include <algorithm>
#include <cstring>
#include <iterator>

char csvLabel[csvLabelSections][csvLabelKeys][csvLabelSize];
char csvTitle[csvColumnLimit][csvFieldLimit + 1];
int  csvTitles;
int  csvRow[csvRows];
int  lapByNumber;

static constexpr const char* timeBaseText[fixedTimeBases] = {"5ms(200Hz)",  "10ms(100Hz)",  "25ms(40Hz)",
                                                             "50ms(20Hz)", "100ms(10Hz)", "300ms(3.33Hz)"};

void DefaultCsvColumns() {
    std::memset(csvTitle, 0, sizeof csvTitle);
    csvTitles = 0;
    std::fill(std::begin(csvRow), std::end(csvRow), csvNoChoice);
    lapByNumber = 0;
}

void TakeCsvTitles(const CsvLine& line) {
    std::memset(csvTitle, 0, sizeof csvTitle);
    csvTitles = line.fields;
    for (int column = 0; column < csvTitles; column++)
        std::memcpy(csvTitle[column], line.field[column].text, static_cast<size_t>(line.field[column].length));
}

// The first key of a row's labels that is the title, letter for letter; csvLabelKeys for none.
static int FindLabel(int row, const char* title) {
    int key = 0;
    while (key < csvLabelKeys && std::strncmp(title, csvLabel[row][key], csvLabelSize) != 0) key++;
    return key;
}

// The column with the lowest key, of equal ones the last; -1 for none. Kept: of the laps' keys even ones are lap numbers.
static int FindColumn(int row) {
    if (row >= csvLabelSections) return -1;
    int found = -1, best = csvLabelKeys - 1;
    for (int column = 0; column < csvTitles; column++) {
        const int key = FindLabel(row, csvTitle[column]);
        if (key > best) continue;
        found = column;
        best = key;
        if (row == rowLap) lapByNumber = key % 2 == 0;
    }
    return found;
}

void OpenCsvRows() {
    lapByNumber = 0;
    for (int row = 0; row < csvRows; row++) {
        const int column = FindColumn(row);
        if (row == rowTime) csvRow[row] = column < 0 ? -1 : column + fixedTimeBases;
        else csvRow[row] = column < 0 ? csvTitles : column;
    }
}

const char* CsvItemText(int row, int item) {
    if (item < 0) return nullptr;
    if (row == rowTime && item < fixedTimeBases) return timeBaseText[item];
    const int column = row == rowTime ? item - fixedTimeBases : item;
    if (column < csvTitles) return csvTitle[column];
    return row != rowTime && column == csvTitles ? " - No data - " : nullptr;
}

void ChooseCsvItem(int row, int item) { csvRow[row] = CsvItemText(row, item) ? item : -1; }

const char* LapTypeText() { return lapByNumber ? "LAP Number Type" : "LAP Distance Type"; }

int CsvColumnOf(int row) {
    const int column = row == rowTime ? csvRow[row] - fixedTimeBases : csvRow[row];
    return column >= 0 && column < csvTitles ? column : -1;
}
