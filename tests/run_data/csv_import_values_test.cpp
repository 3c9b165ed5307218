// The second and the third pass of the import: values, marks and distances.
#include <climits>
#include <cstdio>
#include <random>

#include "bench/plain_csv_import.h"
#include "run_data/csv_import.h"
#include "settings/settings.h"
#include "tests/run_data/csv_fixture.h"

namespace {

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

}  // namespace
