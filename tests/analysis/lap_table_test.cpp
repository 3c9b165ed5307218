#include "analysis/lap_table.h"

#include <gtest/gtest.h>

#include <cstring>
#include <set>

#include "analysis/lap_order.h"
#include "analysis/lap_stats.h"
#include "app/frame_loop.h"
#include "graph/view_state.h"
#include "settings/settings.h"
#include "tests/analysis/random_log.h"
#include "views/course_file.h"

namespace {

class LapTable : public testing::Test {
  protected:
    void SetUp() override { LoadDefaults(); }
};

std::vector<uint32_t> EvenMarks(int marks, uint32_t apart) {
    std::vector<uint32_t> starts;
    for (int k = 1; k <= marks; k++) starts.push_back(k * apart);
    return starts;
}

std::string Cell(int table, int line, int column) { return lapCells[table][line][column].text; }

}  // namespace

TEST_F(LapTable, ALogWithoutMarksShowsTheWholeRunAndTheAverages) {
    MakeRandomLog(0, 3000, {});
    OpenLapTable();
    EXPECT_EQ(Cell(0, 0, 0), "00'15.00");
    EXPECT_EQ(lineChecked[0][0], 1);
    EXPECT_EQ(Cell(0, averageLine, 0), "Avr.");
}

TEST_F(LapTable, WithoutDataAllRowsAreBlankButTheAverages) {
    MakeRandomLog(1, 5000, EvenMarks(4, 1000));
    ExpertMode = 2;
    OpenLapTable();
    ASSERT_NE(Cell(1, 0, 0), "");
    ClickLowerFile();  // File 3 is empty as File 1 is
    for (int table : {0, 1}) {
        for (int line = 0; line < averageLine; line++) {
            for (int column = 0; column < lapColumns; column++) EXPECT_EQ(Cell(table, line, column), "") << line;
            EXPECT_EQ(lineChecked[table][line], 0);
            EXPECT_EQ(ClickCell(table, line, 0), 0);
        }
        EXPECT_EQ(Cell(table, averageLine, 0), "Avr.");
        EXPECT_EQ(Cell(table, averageLine, 1), "0");
    }
}

TEST_F(LapTable, WithTwoOrThreeMarksAndAnOddCountTheMarksLeftOverAreNoLap) {
    for (int marks : {2, 3}) {
        SCOPED_TRACE(marks);
        MakeRandomLog(0, 9000, EvenMarks(6, 1000));  // 7 stretches: the last is left over
        MarksPerLap[0] = marks;
        std::fill(std::begin(lapChecked[0]), std::end(lapChecked[0]), 1);
        keepOn = 1;
        OpenLapTable();
        for (int line = 0; line < 7 / marks; line++) {
            const uint32_t samples = lapStart[0][(line + 1) * marks] - lapStart[0][line * marks];
            char text[16];
            std::snprintf(text, sizeof text, "00'%05.2f", samples / 200.0);
            EXPECT_EQ(Cell(0, line, 0), text);
            EXPECT_NE(Cell(0, line, 2), "0");
        }
        EXPECT_EQ(lapStats[0].lapTime[6], noLapTime);
        EXPECT_EQ(lapStats[0].maxNe[6], 0);
        for (int key = 1; key <= lapColumns; key++) {
            ClickHeader(0, key - 1);
            std::set<int> rows;
            for (int position = 0; position < 7; position += marks) rows.insert(lapOrder[0][position]);
            EXPECT_EQ(rows.size(), static_cast<size_t>(6 / marks + 1)) << "sorting loses no row";
        }
    }
}

TEST_F(LapTable, LogsWith510And511MarksAreShownToTheirLastLap) {
    for (int marks : {509, 510}) {
        SCOPED_TRACE(marks);
        MakeRandomLog(0, 6000, EvenMarks(marks, 10));
        OpenLapTable();
        ScrollTable(0, ScrollAction::thumb, marks - 1);
        EXPECT_EQ(Cell(0, 0, 0), "00'00.05");
        char text[16];
        std::snprintf(text, sizeof text, "00'%05.2f", (6000 - marks * 10) / 200.0);
        EXPECT_EQ(Cell(0, 1, 0), text) << "the last lap";
        EXPECT_EQ(Cell(0, averageLine, 0), "Avr.");
        ClickSectorTimes();
        EXPECT_EQ(Cell(0, 1, 0), text);
        ClickSelect(0);
        ClickHeader(0, 2);
        for (int line = 0; line < averageLine; line++) EXPECT_NE(Cell(0, line, 0), "");
    }
}

TEST_F(LapTable, ALapOfZeroLengthShowsNoTimeAndItsStartValues) {
    MakeRandomLog(0, 4000, {1000, 1000, 2000, 3000});
    OpenLapTable();
    EXPECT_EQ(Cell(0, 1, 0), "00'00.00");
    EXPECT_EQ(Cell(0, 1, 6), "  0.0");
    EXPECT_FALSE(lapCells[0][1][0].best);
    ClickSectorTimes();
    EXPECT_EQ(Cell(0, 1, 2), "-");
    EXPECT_EQ(ClickCell(0, 1, 0), 1);
    EXPECT_EQ(jumpTarget[0], 1000);
}

TEST_F(LapTable, FormatsAndHeadersOfEveryColumnAreThoseOfTheirPage) {
    struct Column { const char* header; double value; const char* format; };
    MakeRandomLog(0, 6000, EvenMarks(5, 1000), 3);
    for (int input = 0; input < 2; input++) {
        lafDivider[0][input] = 1 + input;
        auxDivider[0][input] = 3 + input;
        analog[0][input].type = analog[0][2 + input].type = input;  // type 1 has two decimals
    }
    const LapStats& s = lapStats[0];
    const auto at = [](const auto& channel, const int* samples) { return static_cast<double>(channel[0][samples[1]]); };
    OpenLapTable();
    const Column pages[2][12] = {
        {{"   min     Ne", at(Ne, s.minNeAt), "%.0f"},         {"   max    Ne", at(Ne, s.maxNeAt), "%.0f"},
         {" max  VFW", at(VFW, s.maxVFWAt) * 0.1, "%5.1f"},    {" max  VRW", at(VRW, s.maxVRWAt) * 0.1, "%5.1f"},
         {" max  FSUS", at(FSUS, s.maxFSUSAt) * 0.01, "%5.1f"}, {" avr  FSUS", s.avrFSUS[1] * 0.01, "%5.1f"},
         {" max  RSUS", at(RSUS, s.maxRSUSAt) * 0.01, "%5.1f"}, {" avr  RSUS", s.avrRSUS[1] * 0.01, "%5.1f"},
         {" min  SLIP", s.minSlip[1], "%5.1f"},                 {" max  SLIP", s.maxSlip[1], "%5.1f"},
         {" min  AUX1", at(AUX1, s.minAUX1At) * 3 * 0.01, "%5.1f"}, {" max  AUX1", at(AUX1, s.maxAUX1At) * 3 * 0.01, "%5.1f"}},
        {{" min  LAF1", at(LAF1, s.minLAF1At) * 0.01, "%5.1f"}, {" max  LAF1", at(LAF1, s.maxLAF1At) * 0.01, "%5.1f"},
         {" min  LAF2", at(LAF2, s.minLAF2At) * 2 * 0.01, "%5.2f"}, {" max  LAF2", at(LAF2, s.maxLAF2At) * 2 * 0.01, "%5.2f"},
         {" max VFSUS", at(VFSus, s.maxVFSusAt), "%5.0f"},      {" min VFSUS", at(VFSus, s.minVFSusAt), "%5.0f"},
         {" max VRSUS", at(VRSus, s.maxVRSusAt), "%5.0f"},      {" min VRSUS", at(VRSus, s.minVRSusAt), "%5.0f"},
         {"", 0, nullptr},                                      {"", 0, nullptr},
         {" min  AUX2", at(AUX2, s.minAUX2At) * 4 * 0.01, "%5.2f"}, {" max  AUX2", at(AUX2, s.maxAUX2At) * 4 * 0.01, "%5.2f"}}};
    for (const auto& page : pages) {
        for (int column = 1; column <= 12; column++) {
            const Column& wanted = page[column - 1];
            SCOPED_TRACE(wanted.header);
            char text[32] = "";
            if (wanted.format) std::snprintf(text, sizeof text, wanted.format, wanted.value);
            EXPECT_STREQ(lapHeaders[0][column], wanted.header);
            EXPECT_EQ(Cell(0, 1, column), text);
        }
        ClickPage();
    }
}

TEST_F(LapTable, TheLineOfTheAveragesShowsTheMeansInTheSameFormats) {
    MakeRandomLog(0, 5000, EvenMarks(4, 1000), 8);
    neFactor[0] = 0.5f;
    auxDivider[0][0] = 2;
    analog[0][2].type = 0;
    OpenLapTable();
    const LapStats& s = lapStats[0];
    const int row = lapCount[0];
    const auto expect = [&](int column, const char* format, double value) {
        char text[32];
        std::snprintf(text, sizeof text, format, value);
        EXPECT_EQ(Cell(0, averageLine, column), text) << column;
    };
    expect(2, "%.0f", static_cast<int>(s.maxNeAt[row] * 0.5f));
    expect(3, "%5.1f", s.maxVFWAt[row] * 0.1);
    expect(5, "%5.1f", s.maxFSUSAt[row] * 0.01);
    expect(6, "%5.1f", s.avrFSUS[row] * 0.01);
    expect(10, "%5.1f", s.maxSlipAt[row] * 0.01);
    expect(12, "%5.1f", s.maxAUX1At[row] * 2 * 0.01);
    ClickPage();
    expect(5, "%5.0f", s.maxVFSusAt[row]);
}

TEST_F(LapTable, DashesAreRedWhereNoCheckedLapHasASectorTime) {
    MakeRandomLog(0, 5000, EvenMarks(4, 1000));
    coursePointCount = 100;
    sectorMark[0][1] = 50;
    OpenLapTable();
    ClickSectorTimes();
    EXPECT_FALSE(lapCells[0][0][2].best && lapCells[0][1][2].best && lapCells[0][2][2].best);
    EXPECT_EQ(Cell(0, 1, 3), "-");
    EXPECT_TRUE(lapCells[0][1][3].best);
    EXPECT_FALSE(lapCells[0][averageLine][3].best);
}

TEST_F(LapTable, ColumnsNineAndTenOfPageTwoAndDashesBehindTheSectorsAreNeverRed) {
    MakeRandomLog(0, 5000, EvenMarks(4, 1000));
    OpenLapTable();
    ClickPage();
    for (int line = 0; line < lapLines; line++)
        for (int column : {9, 10}) EXPECT_FALSE(lapCells[0][line][column].best);
    ClickSectorTimes();
    for (int line = 0; line < lapLines; line++)
        for (int column = 8; column < lapColumns; column++) EXPECT_FALSE(lapCells[0][line][column].best);
}

TEST_F(LapTable, AnOpenedTableStartsOnPageOneUnsortedWithFileTwoBelow) {
    MakeRandomLog(0, 5000, EvenMarks(4, 1000));
    MakeRandomLog(2, 5000, EvenMarks(4, 1000));
    ExpertMode = 2;
    OpenLapTable();
    ClickLowerFile();
    ClickPage();
    ClickHeader(0, 5);
    ClickSelect(0);
    ClickSectorTimes();
    OpenLapTable();
    EXPECT_EQ(lowerFile, 1);
    EXPECT_EQ(statPage, 0);
    EXPECT_EQ(sectorView, 0);
    EXPECT_EQ(sortKey[0], 0);
    EXPECT_STREQ(SelectText(0), "Select");
}

TEST_F(LapTable, TheExportLeavesToTheNormalGraphs) {
    graphPositionOn = afMapOn = 1;
    LeaveForCsvOutput();
    EXPECT_EQ(graphPositionOn, 0);
    EXPECT_EQ(afMapOn, 0);
}

TEST_F(LapTable, EveryCellOfPageOneIsTheValueAtTheSampleOfTheExtreme) {
    MakeRandomLog(0, 6000, EvenMarks(5, 1000), 3);
    neFactor[0] = 0.9f;
    auxDivider[0][0] = 10;
    analog[0][2].type = 1;
    OpenLapTable();
    char text[32];
    const LapStats& s = lapStats[0];
    const auto expect = [&](int column, const char* format, double value) {
        SCOPED_TRACE(column);
        std::snprintf(text, sizeof text, format, value);
        EXPECT_EQ(Cell(0, 1, column), text);
    };
    expect(1, "%.0f", static_cast<int>(Ne[0][s.minNeAt[1]] * 0.9f));
    expect(2, "%.0f", static_cast<int>(Ne[0][s.maxNeAt[1]] * 0.9f));
    expect(3, "%5.1f", VFW[0][s.maxVFWAt[1]] * 0.1);
    expect(4, "%5.1f", VRW[0][s.maxVRWAt[1]] * 0.1);
    expect(5, "%5.1f", FSUS[0][s.maxFSUSAt[1]] * 0.01);
    expect(6, "%5.1f", s.avrFSUS[1] * 0.01);
    expect(7, "%5.1f", RSUS[0][s.maxRSUSAt[1]] * 0.01);
    expect(8, "%5.1f", s.avrRSUS[1] * 0.01);
    expect(9, "%5.1f", s.minSlip[1]);
    expect(10, "%5.1f", s.maxSlip[1]);
    expect(11, "%5.2f", AUX1[0][s.minAUX1At[1]] * 10 * 0.01);
    expect(12, "%5.2f", AUX1[0][s.maxAUX1At[1]] * 10 * 0.01);
}

TEST_F(LapTable, PageTwoShowsInputsAndSuspensionSpeedsAndBothTablesCarryTheSameHeadersFromThenOn) {
    MakeRandomLog(0, 6000, EvenMarks(5, 1000), 3);
    lafDivider[0][0] = lafDivider[0][1] = 1;
    OpenLapTable();
    EXPECT_STREQ(lapHeaders[0][1], "   min     Ne");
    EXPECT_STREQ(lapHeaders[1][1], "  min   Ne");
    ClickPage();
    EXPECT_STREQ(PageText(), "Page 2");
    EXPECT_STREQ(lapHeaders[1][1], " min  LAF1");
    char text[32];
    std::snprintf(text, sizeof text, "%5.1f", LAF1[0][lapStats[0].maxLAF1At[2]] * 0.01);
    EXPECT_EQ(Cell(0, 2, 2), text);
    std::snprintf(text, sizeof text, "%5d", VRSus[0][lapStats[0].minVRSusAt[2]]);
    EXPECT_EQ(Cell(0, 2, 8), text);
    EXPECT_EQ(Cell(0, 2, 9), "");
    ClickPage();
    EXPECT_STREQ(lapHeaders[1][1], "   min     Ne");
}

TEST_F(LapTable, InputsWithoutADividerReadZero) {
    MakeRandomLog(0, 3000, EvenMarks(2, 1000));
    OpenLapTable();
    ClickPage();
    EXPECT_EQ(Cell(0, 1, 2), "  0.0");
}

TEST_F(LapTable, InputsBeyondAllReasonDoNotWrap) {
    MakeRandomLog(0, 3000, EvenMarks(2, 1000));
    AUX1[0][1500] = 2147483647;
    auxDivider[0][0] = 100;
    OpenLapTable();
    EXPECT_EQ(Cell(0, 1, 12), "2147483647.00");
}

TEST_F(LapTable, BestValuesAreRedByValueCheckedOrNot) {
    MakeRandomLog(0, 5000, EvenMarks(4, 1000));
    lapChecked[0][1] = 0;
    OpenLapTable();
    EXPECT_TRUE(lapCells[0][0][0].best) << "the out lap is as long as the best";
    EXPECT_TRUE(lapCells[0][3][0].best);
    int red = 0;
    for (int line = 0; line < averageLine; line++) red += lapCells[0][line][2].best;
    EXPECT_GE(red, 1);
    EXPECT_FALSE(lapCells[0][averageLine][2].best);
}

TEST_F(LapTable, LinesBetweenAShorterLogAndTheAveragesKeepWhatTheyShowed) {
    MakeRandomLog(1, 9000, EvenMarks(8, 1000));
    MakeRandomLog(2, 3000, EvenMarks(2, 1000));
    ExpertMode = 2;
    OpenLapTable();
    const std::string before = Cell(1, 5, 1);
    ASSERT_NE(before, "");
    ClickLowerFile();
    EXPECT_STREQ(LowerFileText(), "File3");
    EXPECT_EQ(Cell(1, 5, 1), before);
    EXPECT_EQ(Cell(1, averageLine, 0), "Avr.");
}

TEST_F(LapTable, TheLowerFileStaysFileTwoBelowExpert) {
    ExpertMode = 1;
    OpenLapTable();
    ClickLowerFile();
    EXPECT_EQ(lowerFile, 1);
}

TEST_F(LapTable, AfterAChangeOfTheLowerFileItsScrollBarHasAnotherRange) {
    MakeRandomLog(1, 20000, EvenMarks(19, 1000));
    OpenLapTable();
    EXPECT_EQ(lapScroll[1].high, 20 - 6 - 1);
    EXPECT_EQ(lapScroll[1].page, 1);
    ClickLowerFile();
    EXPECT_EQ(lapScroll[1].high, 20 - 1 + 1);
    EXPECT_EQ(lapScroll[1].page, 8);
}

TEST_F(LapTable, OpeningStandsAtTheCurrentLapButKeepsTheTableFull) {
    MakeRandomLog(0, 20000, EvenMarks(19, 1000));
    currentLap[0] = 5;
    OpenLapTable();
    EXPECT_EQ(firstRow[0], 4);
    currentLap[0] = 19;
    OpenLapTable();
    EXPECT_EQ(firstRow[0], 20 - 6 - 1);
    MakeRandomLog(0, 3000, EvenMarks(2, 1000));
    OpenLapTable();
    EXPECT_EQ(firstRow[0], 0);
}

TEST_F(LapTable, ScrollingStopsAtBothEnds) {
    MakeRandomLog(0, 20000, EvenMarks(19, 1000));
    OpenLapTable();
    ScrollTable(0, ScrollAction::lineUp, 0);
    EXPECT_EQ(firstRow[0], 0);
    ScrollTable(0, ScrollAction::lineDown, 0);
    EXPECT_EQ(firstRow[0], 1);
    for (int i = 0; i < 10; i++) ScrollTable(0, ScrollAction::pageDown, 0);
    EXPECT_EQ(firstRow[0], 20 - 6 - 1);
    ScrollTable(0, ScrollAction::thumb, 7);
    EXPECT_EQ(firstRow[0], 7);
    ScrollTable(0, ScrollAction::bottom, 0);
    EXPECT_EQ(firstRow[0], 18);
    ScrollTable(0, ScrollAction::top, 0);
    EXPECT_EQ(firstRow[0], 0);
    WheelTable(0, -2);
    EXPECT_EQ(firstRow[0], 2);
}

TEST_F(LapTable, TheCheckBoxOfTheLastLineNeverActs) {
    MakeRandomLog(0, 5000, EvenMarks(4, 1000));
    OpenLapTable();
    std::vector<int> before(lapChecked[0], lapChecked[0] + lapTableSize);
    ToggleLine(0, averageLine);
    EXPECT_EQ(std::vector<int>(lapChecked[0], lapChecked[0] + lapTableSize), before);
    ToggleLine(0, 1);
    EXPECT_EQ(lapChecked[0][1], 0);
    EXPECT_EQ(lineChecked[0][1], 0);
}

TEST_F(LapTable, SelectCyclesAllOffAndAllOnAndACheckBoxResetsIt) {
    MakeRandomLog(0, 5000, EvenMarks(4, 1000));
    OpenLapTable();
    EXPECT_STREQ(SelectText(0), "Select");
    ClickSelect(0);
    EXPECT_STREQ(SelectText(0), "ALL off");
    EXPECT_EQ(lapChecked[0][2], 0);
    ClickSelect(0);
    EXPECT_STREQ(SelectText(0), "ALL on");
    EXPECT_EQ(lapChecked[0][0], 1);
    ToggleLine(0, 0);
    EXPECT_STREQ(SelectText(0), "Select");
}

TEST_F(LapTable, SelectWithTwoMarksTouchesEverySecondEntryPastTheLastLap) {
    MakeRandomLog(0, 7000, EvenMarks(6, 1000));
    MarksPerLap[0] = 2;
    OpenLapTable();
    ClickSelect(0);
    ClickSelect(0);
    for (int i = 0; i < 7; i++) EXPECT_EQ(lapChecked[0][2 * i], 1) << i;
    EXPECT_EQ(lapChecked[0][14], 0);
    std::vector<uint32_t> many = EvenMarks(509, 10);
    MakeRandomLog(0, 6000, many);
    OpenLapTable();
    ClickSelect(0);
    ClickSelect(0);
    EXPECT_EQ(lapChecked[0][510], 1);
    EXPECT_EQ(lapChecked[0][512], 0) << "the flags written end at entry 511";
}

TEST_F(LapTable, KeepHoldsTheChecksOverAnOpening) {
    MakeRandomLog(0, 5000, EvenMarks(4, 1000));
    OpenLapTable();
    ToggleLine(0, 2);
    CloseLapTable(1);
    OpenLapTable();
    EXPECT_EQ(lapChecked[0][2], 0);
    CloseLapTable(0);
    OpenLapTable();
    EXPECT_EQ(lapChecked[0][2], 1);
}

TEST_F(LapTable, AColumnThatDoesNotSortStillGoesToTheTop) {
    MakeRandomLog(0, 20000, EvenMarks(19, 1000));
    currentLap[0] = 6;
    OpenLapTable();
    ClickPage();
    ClickHeader(0, 1);
    EXPECT_EQ(firstRow[0], 0);
    for (int i = 0; i < 20; i++) EXPECT_EQ(lapOrder[0][i], i);
}

TEST_F(LapTable, AValueJumpsToItsSampleAndEndsTheDialog) {
    MakeRandomLog(0, 9000, EvenMarks(8, 1000));
    OpenLapTable();
    EXPECT_EQ(ClickCell(0, 2, 4), 1);
    EXPECT_EQ(jumpTarget[0], lapStats[0].maxVRWAt[2]);
    EXPECT_EQ(ClickCell(0, 3, 0), 1);
    EXPECT_EQ(jumpTarget[0], 3000);
}

TEST_F(LapTable, MeansAndEmptyColumnsAreNoPlaceToJumpTo) {
    MakeRandomLog(0, 9000, EvenMarks(8, 1000));
    OpenLapTable();
    EXPECT_EQ(ClickCell(0, 2, 6), 0);
    EXPECT_EQ(ClickCell(0, 2, 8), 0);
    ClickPage();
    EXPECT_EQ(ClickCell(0, 2, 0), 0);
    EXPECT_EQ(ClickCell(0, 2, 9), 0);
    EXPECT_EQ(jumpTarget[0], -1);
}

TEST_F(LapTable, AClickOnTheLastLineActsOnTheLapThatTheOrderHoldsThere) {
    MakeRandomLog(0, 20000, EvenMarks(19, 1000));
    OpenLapTable();
    EXPECT_EQ(ClickCell(0, averageLine, 0), 1);
    EXPECT_EQ(jumpTarget[0], 7000);
}

TEST_F(LapTable, ASectorCellJumpsToTheSectorsStart) {
    MakeRandomLog(0, 9000, EvenMarks(8, 1000));
    coursePointCount = 100;
    sectorMark[0][1] = 50;
    OpenLapTable();
    ClickSectorTimes();
    EXPECT_STREQ(lapHeaders[0][1], "Sec1");
    EXPECT_STREQ(lapHeaders[1][11], "Ideal time");
    EXPECT_EQ(ClickCell(0, 2, 1), 1);
    EXPECT_EQ(jumpTarget[0], 2000);
    EXPECT_EQ(ClickCell(0, 2, 2), 1);
    EXPECT_EQ(jumpTarget[0], 2000 + lapStats[0].sectorTime[2][0]);
    EXPECT_EQ(ClickCell(0, 2, 4), 1) << "a sector behind an empty one";
    EXPECT_EQ(jumpTarget[0], -1);
    EXPECT_EQ(ClickCell(0, 2, 8), 0);
}

TEST_F(LapTable, TheSectorViewShowsSecondsDashesAndOnTheFirstLineIdealAndMean) {
    MakeRandomLog(0, 9000, EvenMarks(8, 1000));
    coursePointCount = 100;
    OpenLapTable();
    ClickSectorTimes();
    EXPECT_EQ(Cell(0, 1, 1), " 5.00");
    EXPECT_EQ(Cell(0, 1, 2), "-");
    EXPECT_EQ(Cell(0, 0, 12), " 0'05.00");
    EXPECT_EQ(Cell(0, 1, 12), "");
    EXPECT_EQ(Cell(0, averageLine, 0), "00'00.00");
    ClickPage();
    EXPECT_EQ(sectorView, 0);
}

TEST_F(LapTable, RowsBetweenTheMarksOfALapHaveDashes) {
    MakeRandomLog(0, 9000, EvenMarks(8, 1000));
    MarksPerLap[0] = 2;
    OpenLapTable();
    firstRow[0] = 1;
    ShowLapTable(0);
    EXPECT_EQ(Cell(0, 0, 0), "- -");
}

TEST_F(LapTable, APositionAt512OrAboveCountsAsTheAverages) {
    MakeRandomLog(0, 6000, EvenMarks(510, 10));
    OpenLapTable();
    firstRow[0] = 510;
    ShowLapTable(0);
    EXPECT_EQ(ClickCell(0, 3, 0), 0);
}

TEST_F(LapTable, MarksStandWhereTheShownChannelsOfTheCheckedLapsHaveTheirExtremes) {
    MakeRandomLog(0, 5000, EvenMarks(4, 1000));
    for (int channel = 0; channel < channelTotal; channel++) showChannel[0][channel] = channel == chVFW;
    OpenLapTable();
    for (int lap = 1; lap <= 3; lap++) {
        EXPECT_EQ(extremeMarkValid[0][lap - 1], 1u);
        EXPECT_EQ(extremeMarkSample[0][lap - 1], static_cast<uint32_t>(lapStats[0].maxVFWAt[lap]));
    }
    EXPECT_EQ(extremeMarkValid[0][3], 0u);
}
