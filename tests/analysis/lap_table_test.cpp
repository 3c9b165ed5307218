#include "analysis/lap_table.h"

#include <gtest/gtest.h>

#include <cstring>

#include "analysis/lap_order.h"
#include "analysis/lap_stats.h"
#include "app/frame_loop.h"
#include "graph/view_state.h"
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

TEST_F(LapTable, WithoutDataAllRowsButTheAveragesAreBlankAfterTheFirst) {
    OpenLapTable();
    for (int line = 1; line < averageLine; line++) EXPECT_EQ(Cell(0, line, 1), "");
    EXPECT_EQ(Cell(0, averageLine, 0), "Avr.");
    EXPECT_EQ(Cell(0, averageLine, 1), "0");
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
