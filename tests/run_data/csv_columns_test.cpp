#include "run_data/csv_columns.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "app/frame_loop.h"

namespace {

struct CsvRows : testing::Test {
    CsvRows() { LoadDefaults(); }
    ~CsvRows() override { LoadDefaults(); }

    // The titles of a first line, and what the rows choose.
    void Open(const std::string& titles) {
        std::string bytes = titles + std::string(1024, '\0');
        CsvText text = StartCsv(reinterpret_cast<const uint8_t*>(bytes.data()), static_cast<int>(titles.size()));
        CsvLine line;
        ASSERT_TRUE(ReadLine(text, line));
        TakeCsvTitles(line);
        OpenCsvRows();
    }
    void Label(int row, int key, const char* title) { std::strcpy(csvLabel[row][key], title); }
};

TEST_F(CsvRows, RowWithoutAMatchSelectsNoDataAndRowZeroNothing) {
    Open("a,b,c");
    EXPECT_EQ(csvRow[rowTime], -1);
    for (int row = 1; row < csvRows; row++) {
        EXPECT_EQ(csvRow[row], 3) << row;
        EXPECT_STREQ(CsvItemText(row, csvRow[row]), " - No data - ");
        EXPECT_EQ(CsvColumnOf(row), -1);
    }
    EXPECT_EQ(CsvColumnOf(rowTime), -1);
}

TEST_F(CsvRows, EachOfTheFirstThirteenRowsMatchesItsOwnSection) {
    for (int row = 0; row < csvLabelSections; row++) Label(row, 5, ("title " + std::to_string(row)).c_str());
    Open("x,title 12,title 11,title 10,title 9,title 8,title 7,title 6,title 5,title 4,title 3,title 2,title 1,title 0");
    for (int row = 0; row < csvLabelSections; row++) EXPECT_EQ(CsvColumnOf(row), 13 - row) << row;
    EXPECT_EQ(csvRow[rowTime], 13 + fixedTimeBases);
    for (int row = csvShownRows; row < csvRows; row++) EXPECT_EQ(CsvColumnOf(row), -1);
}

TEST_F(CsvRows, LowerKeyWinsWhereverItsColumnStands) {
    Label(rowNe, 3, "late");
    Label(rowNe, 1, "early");
    Open("late,early");
    EXPECT_EQ(CsvColumnOf(rowNe), 1);
    Open("early,late");
    EXPECT_EQ(CsvColumnOf(rowNe), 0);
}

TEST_F(CsvRows, OfTwoColumnsWithTheSameKeyTheLaterWins) {
    Label(rowTH, 2, "TPS");
    Open("TPS,a,TPS,b");
    EXPECT_EQ(CsvColumnOf(rowTH), 2);
}

TEST_F(CsvRows, FirstKeyOfATitleThatStandsTwiceCounts) {
    Label(rowTH, 2, "TPS");
    Label(rowTH, 9, "TPS");
    Label(rowTH, 5, "Throttle");
    Open("Throttle,TPS");
    EXPECT_EQ(CsvColumnOf(rowTH), 1);
}

TEST_F(CsvRows, LettersMustBeTheSameAndTheTitleWhole) {
    Label(rowNe, 0, "RPM");
    for (const char* titles : {"rpm", "RPM ", " RPM", "RPM (1/min)", "RP"}) {
        Open(titles);
        EXPECT_EQ(CsvColumnOf(rowNe), -1) << titles;
    }
    Open("\"RPM\"");
    EXPECT_EQ(CsvColumnOf(rowNe), 0);
}

TEST_F(CsvRows, TitlesOf63BytesCanMatchAndLongerOnesCannot) {
    const std::string longest(63, 'x');
    Label(rowNe, 0, longest.c_str());
    Open(longest);
    EXPECT_EQ(CsvColumnOf(rowNe), 0);
    Open(longest + "x");
    EXPECT_EQ(CsvColumnOf(rowNe), -1);
}

TEST_F(CsvRows, AbsentKeyMatchesAColumnNamedNoData) {  // their default is that very title
    Open("No data");
    EXPECT_EQ(CsvColumnOf(rowNe), 0);
}

TEST_F(CsvRows, KeyOfTheLapColumnSaysWhatItHolds) {
    Label(rowLap, 0, "LAP");
    Label(rowLap, 1, "Distance");
    Label(rowLap, 4, "Lap No");
    Label(rowLap, 7, "Metres");
    struct { const char* titles; int byNumber, column; } cases[] = {
        {"x", 0, -1}, {"LAP", 1, 0}, {"Distance", 0, 0}, {"Lap No", 1, 0}, {"Metres", 0, 0},
        {"LAP,Distance", 1, 0}, {"Distance,LAP", 1, 1}, {"Lap No,Distance", 0, 1}, {"Metres,Lap No", 1, 1}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.titles);
        lapByNumber = 1 - c.byNumber;
        Open(c.titles);
        EXPECT_EQ(lapByNumber, c.byNumber);
        EXPECT_EQ(CsvColumnOf(rowLap), c.column);
        EXPECT_STREQ(LapTypeText(), c.byNumber ? "LAP Number Type" : "LAP Distance Type");
    }
}

TEST_F(CsvRows, ListsHoldTheTitlesBetweenFixedItems) {
    Open("a,b");
    const char* const times[] = {"5ms(200Hz)", "10ms(100Hz)", "25ms(40Hz)", "50ms(20Hz)", "100ms(10Hz)", "300ms(3.33Hz)", "a", "b"};
    for (int item = 0; item < 8; item++) EXPECT_STREQ(CsvItemText(rowTime, item), times[item]);
    EXPECT_EQ(CsvItemText(rowTime, 8), nullptr);
    for (int row = 1; row < csvRows; row++) {
        EXPECT_STREQ(CsvItemText(row, 0), "a");
        EXPECT_STREQ(CsvItemText(row, 1), "b");
        EXPECT_STREQ(CsvItemText(row, 2), " - No data - ");
        EXPECT_EQ(CsvItemText(row, 3), nullptr);
    }
    EXPECT_EQ(CsvItemText(rowTime, -1), nullptr);
}

TEST_F(CsvRows, ItemThatTheListLacksLeavesNoSelection) {
    Open("a,b");
    ChooseCsvItem(rowNe, 1);
    EXPECT_EQ(CsvColumnOf(rowNe), 1);
    ChooseCsvItem(rowNe, 3);
    EXPECT_EQ(csvRow[rowNe], -1);
    EXPECT_EQ(CsvColumnOf(rowNe), -1);
    ChooseCsvItem(rowTime, 7);
    EXPECT_EQ(CsvColumnOf(rowTime), 1);
    ChooseCsvItem(rowTime, 8);
    EXPECT_EQ(csvRow[rowTime], -1);
}

TEST_F(CsvRows, HundredColumnsAreTakenAndNoMatchIsStillNoData) {
    std::string titles;
    for (int k = 0; k < 101; k++) titles += "c" + std::to_string(k) + ",";
    Label(rowNe, 0, "c99");
    Label(rowTH, 0, "c100");
    Open(titles);
    EXPECT_EQ(csvTitles, 100);
    EXPECT_EQ(CsvColumnOf(rowNe), 99);
    EXPECT_EQ(csvRow[rowTH], 100);
    EXPECT_EQ(csvRow[rowTime], -1);
}

TEST_F(CsvRows, LineWithoutTitlesLeavesOnlyTheFixedItems) {
    Open(",,\n");
    EXPECT_EQ(csvTitles, 0);
    EXPECT_EQ(CsvItemText(rowTime, 6), nullptr);
    EXPECT_STREQ(CsvItemText(rowNe, 0), " - No data - ");
}

TEST_F(CsvRows, TitlesOfTheLastLogAreGone) {
    Open("a,bcd");
    Open("x");
    EXPECT_STREQ(csvTitle[0], "x");
    EXPECT_STREQ(csvTitle[1], "");
}

}  // namespace
