#include "run_data/csv_import.h"

#include <climits>
#include <cstdio>
#include <random>

#include "bench/plain_csv_import.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "run_data/load_pipeline.h"
#include "run_data/setup_values.h"
#include "settings/settings.h"
#include "settings/settings_file.h"
#include "tests/run_data/csv_fixture.h"
#include "tests/source_folder.h"
#include "tests/test_folder.h"
#include "tools/sample_log/bike.h"
#include "tools/sample_log/ride.h"

namespace {

constexpr const char* baseTimeProblem = "There was a problem with BaseTime data.\r\nManually setting the BaseTime.";
constexpr const char* baseTimeIncompatible = "The BaseTime that is not compatible.";

std::string Same(int, const char* fields) { return fields; }
// `lines` lines with the same fields.
std::string EqualLines(const std::string& titles, int lines, const char* fields, int stepMs = 5) {
    return TimedLines(titles, lines, [fields](int i) { return Same(i, fields); }, stepMs);
}
// Lines with these times in ms.
std::string LinesAt(const std::vector<int>& times) {
    std::string text = "Time,Ne\n";
    for (int time : times) text += std::to_string(time / 1000.0) + ",1000\n";
    return text;
}
// Numbers in one column.
std::string Column(const std::string& title, const std::vector<int>& values) {
    return TimedLines(title, static_cast<int>(values.size()), [&](int i) { return std::to_string(values[i]); });
}

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

// ---- values ----

struct CsvValues : CsvTest {};

TEST_F(CsvValues, EveryChannelIsStoredInItsUnit) {
    ImportText(1, EqualLines("Ne,TH,VFW,VRW,FrSUS,RrSUS,LAF1,LAF2,VB,AUX1,AUX2", 30,
                             "11234,45.67,123.49,130.5,-12.345,67.899,12.349,-1.5,13.2,4.999,-0.25"));
    EXPECT_EQ(Ne[1][1], 11234);
    EXPECT_EQ(TH[1][1], 456);
    EXPECT_EQ(VFW[1][1], 1234);
    EXPECT_EQ(VRW[1][1], 1305);
    EXPECT_EQ(FSUS[1][1], -1234);
    EXPECT_EQ(RSUS[1][1], 6789);
    EXPECT_EQ(LAF1[1][1], 1234);
    EXPECT_EQ(LAF2[1][1], -150);
    EXPECT_EQ(VB[1][1], 1320);
    EXPECT_EQ(AUX1[1][1], 499);
    EXPECT_EQ(AUX2[1][1], -25);
    EXPECT_EQ(slotInUse[1], 1);
}

TEST_F(CsvValues, ValuesAreKeptToTheWidthOfTheirArray) {
    ImportText(0, EqualLines("Ne,VFW,FrSUS,VB,TH", 30, "70000,6553.7,327.68,-0.01,1e30"));
    EXPECT_EQ(Ne[0][1], 70000 - 65536);
    EXPECT_EQ(VFW[0][1], 1);
    EXPECT_EQ(FSUS[0][1], -32768);
    EXPECT_EQ(VB[0][1], 65535);
    EXPECT_EQ(TH[0][1], INT_MAX);
}

TEST_F(CsvValues, EngineSpeedIsTheIntegerThatItsFieldBeginsWith) {
    ImportText(0, EqualLines("Ne", 30, "1e3"));
    EXPECT_EQ(Ne[0][1], 1);
}

TEST_F(CsvValues, LastRowCountsTwiceAndSampleZeroIsNone) {
    ImportText(0, Column("Ne", {100, 200, 300}));
    EXPECT_EQ(sampleCount[0], 5);
    EXPECT_EQ(Ne[0][0], 0);
    EXPECT_EQ(Ne[0][1], 100);
    EXPECT_EQ(Ne[0][3], 300);
    EXPECT_EQ(Ne[0][4], 300);
    EXPECT_EQ(Ne[0][5], 0);  // behind the last sample
}

TEST_F(CsvValues, EmptyFieldMovesTheFieldsAfterItOneColumnToTheLeft) {
    ImportText(0, "Time,Ne,TH,VFW\n0.005,100,2.0,3.0\n0.010,,2.0,3.0\n0.015,100,2.0,3.0\n");
    EXPECT_EQ(Ne[0][2], 2);
    EXPECT_EQ(TH[0][2], 30);
    EXPECT_EQ(VFW[0][2], 0);  // absent
    EXPECT_EQ(VFW[0][3], 30);
}

TEST_F(CsvValues, RowOnNoDataReadsZero) {
    csvUser.choices[rowNe] = 2;  // " - No data - "
    ImportText(0, EqualLines("Ne", 30, "100"));
    EXPECT_EQ(Ne[0][1], 0);
    EXPECT_EQ(TH[0][1], 0);
}

TEST_F(CsvValues, TwoRowsMayReadTheSameColumn) {
    csvUser.choices[rowVRW] = 1;
    ImportText(0, EqualLines("VFW", 30, "50.0"));
    EXPECT_EQ(VFW[0][1], 500);
    EXPECT_EQ(VRW[0][1], 500);
}

TEST_F(CsvValues, HiddenRowsAreNeverUsed) {
    for (int row = csvShownRows; row < csvRows; row++) csvUser.choices[row] = 1;
    ImportText(0, EqualLines("a", 30, "50.0"));
    for (int j = 0; j < sampleCount[0]; j++) EXPECT_EQ(lapDistance[0][j] + distFront[0][j] + distRear[0][j], 0u);
}

// Every field form in every column, at many lengths of a line, against the three passes in the plainest way.
TEST_F(CsvValues, AnyLogIsReadAsThePlainPassesReadIt) {
    std::mt19937 random(3);
    const char* const titles = "Ne,TH,VFW,VRW,FrSUS,RrSUS,LAF1,LAF2,VB,AUX1,AUX2,LAP\r\n";
    for (int round = 0; round < 40; round++) {
        std::string text = titles;
        const int lines = 1 + static_cast<int>(random() % 1200);
        const int lapEvery = 1 + static_cast<int>(random() % 60);
        for (int i = 0; i < lines; i++) {
            for (int k = 0; k < 11; k++) {
                char field[64];
                const double value = (static_cast<int>(random() % 2000001) - 1000000) / 100.0;
                const char* const forms[] = {"%.2f,", "%.0f,", "%g,", "%.6f,", " %.3f,", "%+.1f,", "\"%.1f\",", "%.3e,", "%.12f,", ",%.1f,"};
                std::snprintf(field, sizeof field, forms[random() % 30 < 28 ? random() % 2 : random() % std::size(forms)], value);
                text += field;
            }
            text += std::to_string(round % 2 ? i / lapEvery : i % lapEvery) + (random() % 50 ? "\r\n" : "\n");
        }
        csvUser = {true, {{rowTime, 0}}, round % 2, "", {}};
        SmoothingSTD = 0;
        ImportText(0, text);

        PlainCsv plain;
        for (int row = 1; row < csvShownRows; row++) plain.column[row] = row - 1;
        plain.columns = 12;
        plain.byNumber = round % 2 != 0;
        const std::string padded = text + std::string(1024, '\0');
        PlainImport(padded.data(), static_cast<int>(text.size()), plain);
        ASSERT_EQ(sampleCount[0], plain.lines + 1);
        ASSERT_EQ(auxDivider[0][0], plain.auxDivider[0]);
        const auto expectSame = [&](const auto& array, const auto& wanted, const char* name) {
            for (int i = 0; i < sampleCount[0]; i++) ASSERT_EQ(array[i], wanted[i]) << name << i << " in round " << round;
        };
        expectSame(Ne[0], plain.ne, "Ne");
        expectSame(TH[0], plain.th, "TH");
        expectSame(VFW[0], plain.vfw, "VFW");
        expectSame(VRW[0], plain.vrw, "VRW");
        expectSame(FSUS[0], plain.fsus, "FSUS");
        expectSame(RSUS[0], plain.rsus, "RSUS");
        expectSame(LAF1[0], plain.laf1, "LAF1");
        expectSame(LAF2[0], plain.laf2, "LAF2");
        expectSame(VB[0], plain.vb, "VB");
        expectSame(AUX1[0], plain.aux1, "AUX1");
        expectSame(AUX2[0], plain.aux2, "AUX2");
        ASSERT_EQ(lapCount[0] + 1, static_cast<int>(plain.lapStart.size()));
        if (sampleCount[0] < 20) continue;
        expectSame(lapDistance[0], plain.lapDistance, "lapDistance");
        expectSame(distFront[0], plain.distFront, "distFront");
        expectSame(distRear[0], plain.distRear, "distRear");
        for (size_t k = 0; k < plain.lapStart.size(); k++) {
            ASSERT_EQ(lapStart[0][k], plain.lapStart[k]);
            ASSERT_EQ(lapLength[0][k], plain.lapLength[k]);
        }
    }
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

// ---- laps and distances ----

struct CsvLaps : CsvTest {
    std::vector<uint32_t> Marks(int slot = 0) const { return {lapStart[slot] + 1, lapStart[slot] + lapCount[slot]}; }
};
using Samples = std::vector<uint32_t>;

TEST_F(CsvLaps, LapNumberColumnMarksEveryChange) {
    ImportText(0, Column("LAP", {1, 1, 2, 2, 3}));
    EXPECT_EQ(Marks(), (Samples{3, 5}));
    EXPECT_EQ(lapCount[0], 3);
    EXPECT_EQ(lapStart[0][0], 0u);
    for (int k = 3; k < lapTableSize; k++) EXPECT_EQ(lapStart[0][k], 7u);
}

TEST_F(CsvLaps, LapNumberThatFallsIsAMarkToo) {
    ImportText(0, Column("LAP", {5, 5, 4, 0, 0}));
    EXPECT_EQ(Marks(), (Samples{3, 4}));
}

TEST_F(CsvLaps, DistanceColumnMarksWhereItFallsBackToZero) {
    ImportText(0, Column("Distance", {100, 200, 0, 100}));
    EXPECT_EQ(Marks(), (Samples{3}));
}

TEST_F(CsvLaps, DistanceThatStaysZeroOrComesFromBelowIsNoMark) {
    ImportText(0, Column("Distance", {0, 0, -5, 0, 7, 3, 0}));
    EXPECT_EQ(Marks(), (Samples{7}));
    ImportText(0, "Time,Distance\n0.005,0.9\n0.010,0\n0.015,1.1\n0.020,0.9\n");  // whole metres count
    EXPECT_EQ(Marks(), (Samples{4}));
}

TEST_F(CsvLaps, CheckBoxDecidesWhatTheColumnHolds) {
    csvUser.lapType = 0;
    ImportText(0, Column("LAP", {1, 1, 2, 0, 3}));
    EXPECT_EQ(Marks(), (Samples{4}));
    csvUser.lapType = 1;
    ImportText(0, Column("Distance", {1, 1, 2, 2, 0}));
    EXPECT_EQ(Marks(), (Samples{3, 5}));
}

TEST_F(CsvLaps, MarksEndAt509) {
    std::vector<int> laps;
    for (int i = 0; i < 600; i++) laps.push_back(i);
    ImportText(0, Column("LAP", laps));
    EXPECT_EQ(lapCount[0], 510);
    EXPECT_EQ(lapStart[0][509], 510u);
    EXPECT_EQ(lapStart[0][510], 602u);
    EXPECT_EQ(lapStart[0][512], 602u);
}

TEST_F(CsvLaps, EveryMarkRestartsTheDistanceAndKeepsTheLapsLength) {
    MarksPerLap[0] = 3;
    ImportText(0, TimedLines("VFW,VRW,LAP", 30, [](int i) { return "36.0,72.0," + std::to_string(i / 10); }));
    EXPECT_EQ(Marks(), (Samples{11, 21}));
    EXPECT_EQ(lapLength[0][0], 0u);
    EXPECT_EQ(lapLength[0][1], 3600u);  // samples 0 to 10, the first one empty
    EXPECT_EQ(lapLength[0][2], 3600u);
    EXPECT_EQ(lapLength[0][3], 11u * 360);
    EXPECT_EQ(lapDistance[0][10], 9u * 360);
    EXPECT_EQ(lapDistance[0][11], 0u);
    EXPECT_EQ(lapDistance[0][12], 360u);
    EXPECT_EQ(distFront[0][32], 31u * 360);
    EXPECT_EQ(distRear[0][32], 31u * 720);
    EXPECT_EQ(MarksPerLap[0], 3);
}

TEST_F(CsvLaps, RearWheelCountsOnlyWhereThereIsNoFrontWheel) {
    CoursePosSource = 1;
    ImportText(0, EqualLines("VFW,VRW", 30, "36.0,72.0"));
    EXPECT_EQ(lapDistance[0][10], 9u * 360);
    ImportText(0, EqualLines("VRW", 30, "72.0"));
    EXPECT_EQ(lapDistance[0][10], 9u * 720);
    EXPECT_EQ(distFront[0][10], 0u);
    EXPECT_EQ(distRear[0][10], 9u * 720);
}

TEST_F(CsvLaps, LogUnder20SamplesHasNoDistancesAndNoDerivedChannels) {
    ImportText(0, EqualLines("VFW,FrSUS", 17, "36.0,20.0"));  // 19 samples
    EXPECT_EQ(sampleCount[0], 19);
    EXPECT_EQ(distFront[0][18], 0u);
    EXPECT_EQ(lapStart[0][1], 19u);
    EXPECT_EQ(channelMin[0][chVFW], INT_MAX);
    EXPECT_EQ(channelMax[0][chVFW], 0);
    EXPECT_EQ(csvUser.progress.back(), 0);
    ImportText(0, EqualLines("VFW,FrSUS", 18, "36.0,20.0"));
    EXPECT_EQ(sampleCount[0], 20);
    EXPECT_EQ(distFront[0][19], 18u * 360);
    EXPECT_EQ(channelMax[0][chVFW], 0);  // that of sample 20, behind the end
    EXPECT_EQ(channelMin[0][chVFW], 0);
    EXPECT_EQ(csvUser.progress.back(), 300);
}

// ---- the slot ----

struct CsvSlot : CsvTest {};

TEST_F(CsvSlot, ParametersAreThoseOfALogThatTellsNone) {
    std::strcpy(memoText[0], "memo");
    std::strcpy(firmwareText, "3ZrvetV9.01.10");
    formatVersion[0] = 4;
    frontTyreMm[0] = 1905;
    neDivider[0] = 7;
    lafDivider[0][0] = 1;
    jumpTarget[0] = 55;
    cursorPos[0] = currentLap[0] = lapViewOffset[0] = 9;
    fsusType[0] = rsusType[0] = 5;
    fsusZeroRaw[0] = rsusZeroRaw[0] = tpsClosedRaw[0] = 5;
    tpsOpenRaw[0] = 77;
    indicatorRpm[2] = 5;
    ImportText(0, EqualLines("Ne", 30, "100"));
    EXPECT_STREQ(memoText[0], "");
    EXPECT_STREQ(firmwareText, "");
    EXPECT_EQ(rearOnGearbox[0] + gearboxPulses[0] + fsusType[0] + rsusType[0], 0);
    EXPECT_EQ(fsusZeroRaw[0] + rsusZeroRaw[0] + tpsClosedRaw[0], 0);
    EXPECT_EQ(tpsSpan[0], 255);
    for (int one : {frontSprocket[0], rearSprocket[0], rearTyreMm[0], primaryMain[0], primaryCounter[0], gearMain[0][0], gearCounter[0][5]})
        EXPECT_EQ(one, 1);
    EXPECT_EQ(neutralRpm, 30000);
    for (int rpm : indicatorRpm) EXPECT_EQ(rpm, 0);
    for (int k = 0; k < analogInputs; k++)
        for (const AnalogCalibration& calibration : {analog[0][k], analogAsLogged[0][k]}) {
            EXPECT_EQ(calibration.type, k < 2 ? 0 : 2);
            EXPECT_EQ(calibration.slope, 1);
            EXPECT_EQ(calibration.offset, 0);
            for (int point = 0; point < curvePoints; point++) EXPECT_EQ(calibration.curveX[point] + calibration.curveY[point], 0);
        }
    EXPECT_EQ(cursorPos[0], 0);
    EXPECT_EQ(currentLap[0], 1);
    EXPECT_EQ(lapViewOffset[0], 0);
    // What stays.
    EXPECT_EQ(formatVersion[0], 4);
    EXPECT_EQ(frontTyreMm[0], 1905);
    EXPECT_EQ(neDivider[0], 7);
    EXPECT_EQ(tpsOpenRaw[0], 77);
    EXPECT_EQ(lafDivider[0][0], 1);
    EXPECT_EQ(jumpTarget[0], 55);
}

TEST_F(CsvSlot, OtherFilesThanTheFirstLeaveFirmwareTextAndRevValues) {
    std::strcpy(firmwareText, "3ZrvetV9.01.10");
    neutralRpm = 4321;
    ImportText(1, EqualLines("Ne", 30, "100"));
    EXPECT_STREQ(firmwareText, "3ZrvetV9.01.10");
    EXPECT_EQ(neutralRpm, 4321);
}

TEST_F(CsvSlot, ClosingWithoutOkLeavesTheSlotAsItWas) {
    ImportText(1, Column("Ne", {1, 2, 3}));
    csvUser.pressesOk = false;
    std::strcpy(memoText[1], "memo");
    ImportText(1, Column("Ne", {7, 8, 9, 10}));
    EXPECT_EQ(sampleCount[1], 5);
    EXPECT_EQ(Ne[1][1], 1);
    EXPECT_STREQ(memoText[1], "memo");
}

TEST_F(CsvSlot, SelectionDoesNotSurviveTheImport) {
    csvUser.choices = {{rowNe, 0}, {rowTime, 1}};
    csvUser.lapType = 1;
    ImportText(0, Column("Ne", {1, 2, 3}));
    csvUser.choices.clear();
    csvUser.lapType = -1;
    ImportText(0, Column("Ne", {1, 2, 3}));
    EXPECT_EQ(csvRow[rowTime], fixedTimeBases);
    EXPECT_EQ(csvRow[rowNe], 1);
    EXPECT_EQ(lapByNumber, 0);
}

TEST_F(CsvSlot, OkOutsideAnImportDoesNothing) {
    ImportText(0, Column("Ne", {1, 2, 3}));
    AcceptCsvImport({nullptr, nullptr});
    EXPECT_EQ(sampleCount[0], 5);
    EXPECT_EQ(Ne[0][1], 1);
}

TEST_F(CsvSlot, LoadNeverTouchesTheOtherSlots) {
    ImportText(0, Column("Ne", {1, 2, 3}));
    ImportText(2, Column("Ne", {4, 5, 6, 7}));
    const auto expectOthers = [] {
        EXPECT_EQ(sampleCount[0], 5);
        EXPECT_EQ(sampleCount[2], 6);
        EXPECT_EQ(Ne[0][3], 3);
        EXPECT_EQ(Ne[2][4], 7);
        EXPECT_EQ(lapStart[0][1], 5u);
        EXPECT_EQ(lapStart[2][1], 6u);
        EXPECT_EQ(slotInUse[0] + slotInUse[2], 2);
    };
    ImportText(1, Column("Ne", std::vector<int>(3000, 9)));
    EXPECT_EQ(sampleCount[1], 3002);
    expectOthers();
    ImportText(1, "");
    ExpectReset(1);
    expectOthers();
    ImportText(1, LinesAt({0, 0, 0}));
    expectOthers();
}

TEST_F(CsvSlot, SmoothingComesBeforeTheSuspensionSpeed) {  // so that VFSus is never smoothed
    SmoothingSTD = 2;
    SusVSampleNum = 0;
    std::vector<int> strokes(60, 0);
    strokes[30] = 100;
    ImportText(0, Column("FrSUS", strokes));
    EXPECT_EQ(VFSus[0][30], 20000);
    EXPECT_EQ(VFSus[0][31], -20000);
    EXPECT_EQ(VFSus[0][29], 0);
}

TEST_F(CsvSlot, StatisticsFollowTheData) {
    std::vector<int> speeds(2100, 50);
    speeds[1000] = 90;
    ImportText(0, Column("VFW", speeds));
    EXPECT_EQ(channelMax[0][chVFW], 900);
    EXPECT_EQ(channelMin[0][chVFW], 500);
    EXPECT_EQ(showChannel[0][chVFW], 1);
    EXPECT_EQ(showChannel[0][chNe], 0);
}

TEST_F(CsvSlot, ImportWaitsHalfASecondSoThatTheNotesCanBeRead) {
    const int64_t before = SteadyMs();
    ImportText(0, EqualLines("Ne", 30, "100"));
    EXPECT_EQ(SteadyMs() - before, 500);
}

TEST_F(CsvSlot, ProgressGoesThroughThreeHundreds) {
    // Lines of 16 bytes from the second on, so that every 512th ends on a multiple of 8192.
    std::string text = "Time,Ne,VFW,abc\n";
    for (int i = 0; i < 20000; i++) {
        char line[32];
        std::snprintf(line, sizeof line, "%07.3f,1000,10\n", i * 0.005);
        text += line;
    }
    ASSERT_EQ(text.size(), 20001u * 16);
    ImportText(0, text);
    const int lines = 20001;
    std::vector<int> wanted = {0};
    for (int64_t at = 8192; at <= static_cast<int64_t>(text.size()); at += 8192) wanted.push_back(static_cast<int>(100 * at / static_cast<int64_t>(text.size())));
    for (int base : {100, 200})
        for (int i = 8192; i <= lines; i += 8192) wanted.push_back(base + 100 * i / lines);
    wanted.push_back(300);
    EXPECT_EQ(csvUser.progress, wanted);
}

// ---- failures and odd texts ----

struct CsvFailure : CsvTest {};

TEST_F(CsvFailure, UnreadableFirstLineResetsTheSlotWithoutADialog) {
    for (const std::string& text : {std::string(), std::string("\0Time,Ne\n", 9), std::string(2045, 'x') + "\n1\n"}) {
        ImportText(1, Column("Ne", {1, 2, 3}));
        shown.clear();
        ImportText(1, text);
        ASSERT_EQ(shown.size(), 1u);
        ExpectBox("File Error.");
        ExpectReset(1);
        EXPECT_EQ(csvTitles, 0);
        EXPECT_STREQ(csvTitle[0], "");
    }
}

TEST_F(CsvFailure, MoreThan5760000LinesAreCorrupted) {
    std::string text = "Ne\n";
    text.resize(3 + 5760000, '\n');
    csvUser.choices[rowTime] = 0;
    ImportText(1, text);
    ExpectBox("Data file is corrupted. 5760001");
    ExpectReset(1);
}

TEST_F(CsvFailure, Of5760000LinesAreRead) {
    std::string text = "Ne\n";
    text.resize(3 + 5759999, '\n');
    csvUser.choices[rowTime] = 0;
    ImportText(1, text);
    EXPECT_EQ(sampleCount[1], 5760001);
    EXPECT_EQ(shown.size(), 1u);
    ResetSlot(1);
}

TEST_F(CsvFailure, LineOf2045BytesEndsTheLogBeforeIt) {
    const std::string head = Column("Ne", {1, 2, 3});
    ImportText(0, head + "0.015,4," + std::string(2044 - 8, 'x') + "\n0.020,5\n");
    EXPECT_EQ(sampleCount[0], 7);
    EXPECT_EQ(Ne[0][4], 4);
    ImportText(0, head + "0.015,4," + std::string(2045 - 8, 'x') + "\n0.020,5\n");
    EXPECT_EQ(sampleCount[0], 5);
    EXPECT_EQ(Ne[0][3], 3);
    EXPECT_EQ(Ne[0][4], 3);  // the last row, not the long line
}

TEST_F(CsvFailure, TextWithoutALineEndAtItsEndIsReadWhole) {
    std::string text = Column("Ne", {1, 2, 3});
    text.pop_back();
    ImportText(0, text);
    EXPECT_EQ(sampleCount[0], 5);
    EXPECT_EQ(Ne[0][3], 3);
}

TEST_F(CsvFailure, QuotedFieldsAreReadWithoutTheirQuotes) {
    ImportText(0, "\"Time\",\"Ne\"\r\n\"0.005\",\"100\"\r\n\"0.010\",\"200\"\r\n");
    EXPECT_EQ(Ne[0][2], 200);
}

TEST_F(CsvFailure, ZeroBytesEndLinesAndTwoEndTheLog) {
    ImportText(0, std::string("Time,Ne\0000.005,1\0000.010,2\n0.015,3\n\0\0000.020,4\n", 42));
    EXPECT_EQ(sampleCount[0], 5);
    EXPECT_EQ(Ne[0][3], 3);
}

TEST_F(CsvFailure, MissingColumnsReadZero) {
    csvUser.choices[rowTime] = 0;
    ImportText(0, "Time,Ne,TH\n0.005,1,1\n0.010\n\n0.015,3\n");
    EXPECT_EQ(sampleCount[0], 6);
    EXPECT_EQ(Ne[0][2] + Ne[0][3], 0);
    EXPECT_EQ(Ne[0][4], 3);
    EXPECT_EQ(TH[0][4], 0);
}

TEST_F(CsvFailure, Of101ColumnsTheLastIsLeftOut) {
    std::string titles = "Time,", fields = "0.005,", second = "0.010,";
    for (int k = 1; k <= 98; k++) titles += "c,", fields += "5,", second += "6,";
    ImportText(0, titles + "Ne,TH\n" + fields + "100,200\n" + second + "300,400\n");
    EXPECT_EQ(csvTitles, 100);
    EXPECT_EQ(Ne[0][2], 300);
    EXPECT_EQ(TH[0][2], 0);
}

TEST_F(CsvFailure, ExponentsAndHexadecimalNumbersAreReadAndJunkIsZero) {
    ImportText(0, "Time,TH,VFW,LAF1\n5e-3,1.5e1,0x20,abc\n10e-3,1e1,-,+2\n");
    EXPECT_EQ(csvUser.notes, "Detected Timebase 5ms(200Hz)\r\n");
    EXPECT_EQ(TH[0][1], 150);
    EXPECT_EQ(VFW[0][1], 320);
    EXPECT_EQ(LAF1[0][1], 0);
    EXPECT_EQ(VFW[0][2], 0);
    EXPECT_EQ(LAF1[0][2], 200);
}

TEST_F(CsvFailure, DecimalCommasSplitTheirNumbers) {
    ImportText(0, "Time;Ne\n0,005;100\n0,010;200\n");
    ExpectBox(baseTimeIncompatible);  // one title that no label knows
    shown.clear();
    csvUser.choices = {{rowTime, 0}, {rowNe, 0}};
    ImportText(0, "Time;Ne\n0,005;100\n1,010;200\n");
    EXPECT_EQ(sampleCount[0], 4);
    EXPECT_EQ(Ne[0][2], 1);
}

// ---- through the load pipeline, and the sample logs ----

struct CsvFile : CsvTest {
    TestFolder folder;
};

TEST_F(CsvFile, ClosedDialogLeavesTheDataButTakesKindAndTitle) {
    LoadFile(folder.Write("first.csv", Column("Ne", std::vector<int>(100, 7))).c_str(), 1);
    ASSERT_EQ(sampleCount[1], 102);
    fileKind[1] = 1;
    csvUser.pressesOk = false;
    const std::string second = folder.Write("second.csv", Column("Ne", std::vector<int>(110, 8)));
    LoadFile(second.c_str(), 1);
    EXPECT_EQ(sampleCount[1], 102);
    EXPECT_EQ(Ne[1][1], 7);
    EXPECT_EQ(fileKind[1], 3);
    EXPECT_STREQ(fileTitle[1], "second.csv");
    EXPECT_EQ(filePath[1], second);
}

TEST_F(CsvFile, FailedImportResetsTheSlotButTakesTheTitle) {
    LoadFile(folder.Write("first.csv", Column("Ne", std::vector<int>(100, 7))).c_str(), 1);
    shown.clear();
    LoadFile(folder.Write("second.CSV", "A,B\n" + std::string(600, '\n')).c_str(), 1);
    ExpectBox(baseTimeIncompatible);
    ExpectReset(1);
    EXPECT_STREQ(fileTitle[1], "second.CSV");
}

TEST_F(CsvFile, LogWhoseFirstByteIs3IsImported) {
    std::strcpy(csvLabel[rowTime][0], "3 Time");
    LoadFile(folder.Write("a.csv", "3 " + Column("Ne", std::vector<int>(100, 7))).c_str(), 0);
    EXPECT_EQ(sampleCount[0], 102);
    EXPECT_EQ(fileKind[0], 3);
}

TEST_F(CsvFile, KeysPressedMeanwhileOpenNothing) {
    static std::string other;
    other = folder.Write("other.csv", Column("Ne", std::vector<int>(120, 9)));
    SetDialogHandler([](int id, int argument) {
        LoadFile(other.c_str(), 1);
        return AnswerCsvDialog(id, argument);
    });
    LoadFile(folder.Write("a.csv", Column("Ne", std::vector<int>(100, 7))).c_str(), 0);
    EXPECT_EQ(sampleCount[0], 102);
    EXPECT_EQ(sampleCount[1], 1);
}

// The program's own labels know all titles of the sample logs; what is read is the ride.
TEST_F(CsvFile, SampleLogMapsItselfAndIsTheRideItWasMadeFrom) {
    SetProgramFolder((SourceFolder() + "/resources/data/").c_str());
    LoadSettings();
    SmoothingSTD = 0;
    for (int step : {5, 10, 20, 100})
        for (int style = 0; style < 3; style++) {
            SCOPED_TRACE(std::to_string(step) + " ms, titles " + std::to_string(style));
            SampleLogOptions options;
            options.laps = 2;
            options.stepMs = step;
            options.titleStyle = style;
            options.lapDistance = (step / 5 + style) % 2 != 0;
            const std::vector<uint8_t> bytes = MakeCsvLog(options);
            const std::vector<BikeSample> ride = SimulateRide(options);
            shown.clear();
            LoadFile(folder.Write("a.csv", {reinterpret_cast<const char*>(bytes.data()), bytes.size()}).c_str(), 1);
            EXPECT_EQ(shown.size(), 1u);
            EXPECT_EQ(CsvColumnOf(rowTime), 0);
            for (int row = 1; row < csvShownRows; row++) EXPECT_EQ(CsvColumnOf(row), row);
            EXPECT_EQ(lapByNumber, options.lapDistance ? 0 : 1);
            EXPECT_EQ(timeFactor[1], static_cast<double>(5.0f / static_cast<float>(step)));
            const int ticks = step / 5, rows = static_cast<int>((ride.size() + ticks - 1) / ticks);
            ASSERT_EQ(sampleCount[1], rows + 2);
            // A decimal times its scale may fall one short of the whole number that it was written from.
            const auto near = [](int read, int written) { return read == written || (written > 0 ? read == written - 1 : read == written + 1); };
            int wrong = 0, marks = 0;
            for (int i = 0; i < rows; i++) {
                const BikeSample& bike = ride[static_cast<size_t>(i) * ticks];
                wrong += Ne[1][i + 1] != bike.ne || !near(TH[1][i + 1], bike.th) || !near(VFW[1][i + 1], bike.vfw) || !near(VRW[1][i + 1], bike.vrw);
                wrong += !near(FSUS[1][i + 1], bike.fsus) || !near(RSUS[1][i + 1], bike.rsus) || !near(LAF1[1][i + 1], bike.laf1);
                wrong += !near(LAF2[1][i + 1], bike.laf2) || !near(VB[1][i + 1], bike.vb) || !near(AUX1[1][i + 1], bike.aux1) || !near(AUX2[1][i + 1], bike.aux2);
            }
            for (size_t k = 1; k < ride.size(); k++) marks += ride[k].mark && !ride[k - 1].mark;
            EXPECT_EQ(wrong, 0);
            EXPECT_EQ(lapCount[1], marks + 1);
        }
}

}  // namespace
