#include "run_data/csv_measure.h"

#include "tests/run_data/csv_fixture.h"

namespace {

// ---- time base ----

struct CsvTimeBase : CsvTest {};

TEST_F(CsvTimeBase, StepOfATimeColumnIsDetectedAndTold) {
    ImportText(0, LinesAt({5, 10, 15}));
    EXPECT_EQ(timeFactor[0], 1.0);
    EXPECT_EQ(csvUser.notes, "Detected Timebase 5ms(200Hz)\r\n");
    EXPECT_EQ(sampleCount[0], 5);
    EXPECT_EQ(shown.size(), 1u);  // the dialog alone
}

TEST_F(CsvTimeBase, FactorOfATimeColumnIsASinglePrecisionQuotient) {
    ImportText(0, LinesAt({30, 60, 90}));
    EXPECT_EQ(timeFactor[0], static_cast<double>(500.0f / 3000.0f));
    EXPECT_NE(timeFactor[0], 500.0 / 3000.0);
    EXPECT_EQ(csvUser.notes, "Detected Timebase 30ms(33Hz)\r\n");
}

TEST_F(CsvTimeBase, FixedItemsGiveTheirFactorWhateverTheTimesSay) {
    const double factors[fixedTimeBases] = {1.0, 0.5, 0.2, 0.1, 0.05, 0.0166667};
    for (int item = 0; item < fixedTimeBases; item++) {
        csvUser = {true, {{rowTime, item}}, -1, "", {}};
        ImportText(0, LinesAt({5, 10, 900, 2, 3, 4, 9, 10}));
        EXPECT_EQ(timeFactor[0], factors[item]);
        EXPECT_EQ(csvUser.notes, "");
        EXPECT_EQ(sampleCount[0], 10);
    }
}

TEST_F(CsvTimeBase, DistanceOfALogAt10MsIsItsSumOver3600) {
    ImportText(0, EqualLines("VFW", 720, "36.0", 10));  // 10 m/s
    EXPECT_EQ(timeFactor[0], 0.5);
    // 7.2 s are 72 m; sample 0 and 1 are the first two of the sum.
    EXPECT_EQ(distFront[0][721] / 3600.0, 72.0);
}

TEST_F(CsvTimeBase, OneDataRowFailsWithoutATimeAboveZeroUnlessAFixedItemIsSelected) {
    ImportText(0, LinesAt({0}));
    ExpectBox(baseTimeProblem);
    ExpectReset(0);
    shown.clear();
    csvUser.choices[rowTime] = 0;
    ImportText(0, LinesAt({0}));
    EXPECT_EQ(shown.size(), 1u);
    EXPECT_EQ(sampleCount[0], 3);
}

TEST_F(CsvTimeBase, OneDataRowHasTheStepFromTheTitlesTimeZero) {
    ImportText(0, LinesAt({20}));
    EXPECT_EQ(csvUser.notes, "Detected Timebase 20ms(50Hz)\r\n");
    EXPECT_EQ(sampleCount[0], 3);
}

TEST_F(CsvTimeBase, TitlesAloneFailEvenWithAFixedItem) {
    csvUser.choices[rowTime] = 1;
    ImportText(1, "Time,Ne\n");
    ExpectBox(baseTimeProblem);
    ExpectReset(1);
}

TEST_F(CsvTimeBase, JumpAfterTheSixthLineIsRefusedWithATimeColumn) {
    ImportText(1, LinesAt({10, 20, 30, 40, 50, 70}));
    ExpectBox(baseTimeProblem);
    ExpectReset(1);
}

TEST_F(CsvTimeBase, JumpAfterTheSixthLineIsAcceptedWithAFixedItem) {
    csvUser.choices[rowTime] = 1;
    ImportText(1, LinesAt({10, 20, 30, 40, 50, 70}));
    EXPECT_EQ(timeFactor[1], 0.5);
    EXPECT_EQ(sampleCount[1], 8);
}

TEST_F(CsvTimeBase, JumpAmongTheFirstSixLinesIsForgiven) {
    ImportText(0, LinesAt({700, 710, 720, 740, 760, 780, 800}));
    EXPECT_EQ(csvUser.notes, "Detected Timebase 20ms(50Hz)\r\n");
}

TEST_F(CsvTimeBase, TimeThatStandsOrGoesBackIsNoStep) {
    ImportText(0, LinesAt({10, 20, 30, 40, 50, 60, 60, 60, 70, 20, 30, 40}));
    EXPECT_EQ(csvUser.notes, "Detected Timebase 10ms(100Hz)\r\n");
    EXPECT_EQ(sampleCount[0], 14);
}

TEST_F(CsvTimeBase, TimesAreTruncatedToWholeMillisecondsAsTheirDigitsSay) {
    ImportText(0, "Time,Ne\n1.000,1\n1.005,1\n1.010,1\n1.015,1\n1.020,1\n1.025,1\n1.030,1\n1.0358,1\n");  // 1.005 x 1000 lies below 1005
    EXPECT_EQ(csvUser.notes, "Detected Timebase 5ms(200Hz)\r\n");
    csvUser.notes = "";
    ImportText(0, "Time,Ne\n-0.015,1\n-0.010,1\n-0.005,1\n0.000,1\n0.005,1\n0.010,1\n0.015,1\n");
    EXPECT_EQ(csvUser.notes, "Detected Timebase 5ms(200Hz)\r\n");
}

TEST_F(CsvTimeBase, StepsUnder1MsAreNone) {
    ImportText(0, "Time,Ne\n0.0001,1\n0.0002,1\n0.0003,1\n");
    ExpectBox(baseTimeProblem);
}

TEST_F(CsvTimeBase, StepsFrom1MsTo1SecondAreCompatible) {
    for (int step : {1, 1000}) {
        ImportText(0, LinesAt({step, 2 * step, 3 * step}));
        EXPECT_EQ(timeFactor[0], static_cast<double>(500.0f / static_cast<float>(step * 100)));
    }
    EXPECT_EQ(csvUser.notes, "Detected Timebase 1ms(1000Hz)\r\nDetected Timebase 1000ms(1Hz)\r\n");
    ImportText(0, LinesAt({1001, 2002, 3003}));
    ExpectBox(baseTimeIncompatible);
    ExpectReset(0);
}

TEST_F(CsvTimeBase, EmptySelectionInRowZeroIsNotCompatible) {
    ImportText(1, "A,Ne\n0.005,1\n0.010,2\n0.015,3\n");
    ExpectBox(baseTimeIncompatible);
    ExpectReset(1);
}

TEST_F(CsvTimeBase, TimesBeyondAllMeasureAreHeld) {
    ImportText(0, "Time,Ne\n1e300,1\ninf,2\n-inf,2\nnan,3\n");
    ExpectBox(baseTimeIncompatible);
}

// ---- AUX ranges ----

struct CsvAuxRange : CsvTest {
    void Import(int slot, const char* aux1, const char* aux2) {
        csvUser.notes = "";
        ImportText(slot, EqualLines("AUX1,AUX2", 30, (std::string(aux1) + "," + aux2).c_str()));
        csvUser.notes.erase(0, csvUser.notes.find('\n') + 1);  // the time base
    }
};

TEST_F(CsvAuxRange, LargestValueChoosesTheDivider) {
    struct { const char* value; int divider, stored; } cases[] = {
        {"327.67", 1, 32767}, {"327.68", 10, 3276}, {"400.00", 10, 4000}, {"3276.70", 10, 32767}, {"3276.71", 100, 3276}, {"-9999", 1, -999900}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.value);
        Import(2, c.value, "1");
        EXPECT_EQ(auxDivider[2][0], c.divider);
        EXPECT_EQ(auxDivider[2][1], 1);
        EXPECT_EQ(AUX1[2][1], c.stored);
        EXPECT_EQ(AUX2[2][1], 100);
    }
}

TEST_F(CsvAuxRange, OtherRangeThanTheOtherFilesIsNoted) {
    Import(1, "1", "1");
    EXPECT_EQ(csvUser.notes, "");
    Import(0, "400", "1");
    EXPECT_EQ(csvUser.notes, "AUX1 Range miss mach...\r\n");
    Import(1, "4000", "400");
    EXPECT_EQ(csvUser.notes, "AUX1 Range miss mach...\r\nAUX2 Range miss mach...\r\n");
    Import(2, "1", "1");  // File 3 is compared with none
    EXPECT_EQ(csvUser.notes, "");
}

TEST_F(CsvAuxRange, FileTwoOnlyCountsWhenItIsInUse) {
    Import(0, "400", "1");
    EXPECT_EQ(csvUser.notes, "");
}

TEST_F(CsvAuxRange, RowOnNoDataIsNotCompared) {
    Import(1, "400", "400");
    csvUser.choices = {{rowAUX1, 3}, {rowAUX2, 3}};
    Import(0, "1", "1");
    EXPECT_EQ(csvUser.notes, "");
}

}  // namespace
