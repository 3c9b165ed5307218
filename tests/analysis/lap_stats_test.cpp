#include "analysis/lap_stats.h"

#include <gtest/gtest.h>

#include <random>

#include "analysis/lap_order.h"
#include "analysis/lap_scan.h"
#include "analysis/sector_times.h"
#include "app/frame_loop.h"
#include "graph/view_state.h"
#include "run_data/fixed_point.h"
#include "run_data/run_events.h"
#include "tests/analysis/random_log.h"
#include "views/course_file.h"

namespace {

class LapStatistics : public testing::Test {
  protected:
    void SetUp() override { LoadDefaults(); }
};

struct PlainRow {
    double value[statTotal];
    int    at[statTotal];
};

// The definition, sample by sample: strict comparison, so that the first sample reaching an extreme names it.
PlainRow PlainLap(int slot, int row, int marks) {
    PlainRow plain{};
    for (int column = 0; column < statTotal; column++) plain.value[column] = statColumns[column].start;
    int64_t front = 0, rear = 0, count = 0;
    const uint32_t first = std::max<uint32_t>(lapStart[slot][row], 1);
    for (uint32_t s = first; s < lapStart[slot][row + marks] && s < static_cast<uint32_t>(sampleCount[slot]); s++) {
        for (int column = 0; column < statTotal; column++) {
            const StatColumn& c = statColumns[column];
            if (!c.at) continue;
            double value = c.slip ? SlipAt(s, slot) : StoredValue(slot, c.channel, s);
            if (c.channel == chNe) value = TruncToInt(static_cast<float>(Ne[slot][s]) * neFactor[slot]);
            if (c.sign * value > c.sign * plain.value[column]) {
                plain.value[column] = value;
                plain.at[column] = static_cast<int>(s);
            }
        }
        front += FSUS[slot][s];
        rear += RSUS[slot][s];
        count++;
    }
    plain.value[statAvrFSUS] = count ? static_cast<double>(front / count) : 0;
    plain.value[statAvrRSUS] = count ? static_cast<double>(rear / count) : 0;
    return plain;
}

void ExpectPlainRows(int slot, int marks) {
    for (int row = 0; row <= lapCount[slot] - marks; row += marks) {
        SCOPED_TRACE(row);
        const PlainRow plain = PlainLap(slot, row, marks);
        for (int column = 0; column < statTotal; column++) {
            SCOPED_TRACE(statColumns[column].name);
            EXPECT_EQ(StatValue(slot, column, row), plain.value[column]);
            if (statColumns[column].at) {
                EXPECT_EQ((lapStats[slot].*statColumns[column].at)[row], plain.at[column]);
            }
        }
    }
}

}  // namespace

TEST_F(LapStatistics, EqualTheDefinitionSampleBySampleInEveryColumn) {
    MakeRandomLog(0, 9000, {700, 1301, 1302, 3000, 5123, 8000});
    ComputeLapStats();
    ExpectPlainRows(0, 1);
}

TEST_F(LapStatistics, EqualTheDefinitionWithAFactorThatMergesEngineSpeeds) {
    MakeRandomLog(0, 6000, {700, 2500, 4100}, 2);
    neFactor[0] = 0.3f;
    ComputeLapStats();
    ExpectPlainRows(0, 1);
}

TEST_F(LapStatistics, EqualTheDefinitionWithTwoAndThreeMarksPerLap) {
    for (int marks : {2, 3}) {
        SCOPED_TRACE(marks);
        MakeRandomLog(1, 9000, {700, 1400, 2100, 2900, 4000, 5000, 6100, 7777}, 3);
        MarksPerLap[1] = marks;
        ComputeLapStats();
        ExpectPlainRows(1, marks);
    }
}

TEST_F(LapStatistics, VectorSlipsAreThePlainSlipsBitForBit) {
    std::mt19937 random(5);
    for (int count = 1; count < 600; count += 7) {
        std::vector<uint16_t> front(count), rear(count);
        for (int i = 0; i < count; i++) {
            front[i] = static_cast<uint16_t>(i % 5 ? random() % 120 : random());
            rear[i] = static_cast<uint16_t>(random());
        }
        const SlipRange fast = SlipRangeFast(front.data(), rear.data(), count);
        const SlipRange plain = SlipRangePlain(front.data(), rear.data(), count);
        EXPECT_EQ(fast.low, plain.low) << count;
        EXPECT_EQ(fast.high, plain.high) << count;
    }
}

TEST_F(LapStatistics, ALogWithoutMarksIsOneCheckedRow) {
    MakeRandomLog(0, 3000, {});
    ComputeLapStats();
    EXPECT_EQ(lapCount[0], 1);
    EXPECT_EQ(lapChecked[0][0], 1);
    EXPECT_EQ(lapStats[0].lapTime[0], 3000);
    EXPECT_EQ(bestLap[0], 0);
}

TEST_F(LapStatistics, AnEmptyLapKeepsItsStartTimeHasNoMeansAndIsNeverBest) {
    MakeRandomLog(0, 3000, {1000, 1000, 2000});
    ComputeLapStats();
    EXPECT_EQ(lapStats[0].lapTime[1], noLapTime);
    EXPECT_EQ(lapStats[0].avrFSUS[1], 0);
    EXPECT_EQ(lapStats[0].avrRSUS[1], 0);
    EXPECT_EQ(bestLap[0], 2);
    lapChecked[0][2] = 0;
    ComputeLapStats();
    EXPECT_EQ(bestLap[0], emptyRow);
}

TEST_F(LapStatistics, LeastSlipOfALapWithoutWheelSpinIsZeroAndMostStrokeOfNegativeStrokesIsZero) {
    MakeRandomLog(0, 2000, {});
    for (int i = 0; i < 2000; i++) {
        VFW[0][i] = 1000;
        VRW[0][i] = 1100;
        FSUS[0][i] = -40;
    }
    ComputeLapStats();
    EXPECT_EQ(lapStats[0].minSlip[0], 0.0f);
    EXPECT_EQ(lapStats[0].maxSlip[0], 10.0f);
    EXPECT_EQ(lapStats[0].maxFSUS[0], 0);
    EXPECT_EQ(lapStats[0].maxFSUSAt[0], 0);
    EXPECT_EQ(lapStats[0].avrFSUS[0], -40);
}

TEST_F(LapStatistics, OnEqualTimesTheLaterLapIsBestAndTheEarlierSecond) {
    MakeRandomLog(0, 5000, {1000, 2000, 3000, 4000});
    ComputeLapStats();
    EXPECT_EQ(bestLap[0], 3);
    EXPECT_EQ(secondLap[0], 2);
}

TEST_F(LapStatistics, AverageRowHoldsMeansOverTheCheckedLapsWithoutTheFactor) {
    MakeRandomLog(0, 5000, {1000, 2000, 3000, 4000}, 7);
    neFactor[0] = 0.5f;
    ComputeLapStats();
    const LapStats& stats = lapStats[0];
    int64_t ne = 0, slip = 0, stroke = 0, speed = 0;
    for (int row = 1; row <= 3; row++) {
        ne += Ne[0][stats.maxNeAt[row]];
        slip += TruncToInt(SlipAt(stats.maxSlipAt[row], 0) * 100);
        stroke += stats.avrFSUS[row];
        speed += stats.maxVFSus[row];
    }
    EXPECT_EQ(stats.maxNeAt[5], ne / 3);
    EXPECT_EQ(stats.maxSlipAt[5], slip / 3);
    EXPECT_EQ(stats.avrFSUS[5], stroke / 3);
    EXPECT_EQ(stats.maxVFSus[5], speed / 3);
}

TEST_F(LapStatistics, ACheckBoxCostsNothingInSamples) {
    MakeRandomLog(0, 5000, {1000, 2000, 3000, 4000});
    ComputeLapStats();
    const int scans = lapScanCount, sectorScans = sectorScanCount;
    lapChecked[0][2] = 0;
    ComputeLapStats();
    EXPECT_EQ(lapScanCount, scans);
    EXPECT_EQ(sectorScanCount, sectorScans);
    sectorMark[0][1] = 40;
    ComputeLapStats();
    EXPECT_EQ(lapScanCount, scans);
    EXPECT_EQ(sectorScanCount, sectorScans + 1);
    neFactor[0] = 0.9f;
    ComputeLapStats();
    EXPECT_EQ(lapScanCount, scans + 1);
    lapStart[0][2] = 2100;
    ComputeLapStats();
    EXPECT_EQ(lapScanCount, scans + 2);
    dataVersion[0]++;
    ComputeLapStats();
    EXPECT_EQ(lapScanCount, scans + 3);
}

TEST_F(LapStatistics, ABestRowOf510NamesTheStartValuesAlsoInALogOfThatManyLaps) {
    std::vector<uint32_t> marks;
    for (uint32_t k = 1; k < 511; k++) marks.push_back(k * 10);
    MakeRandomLog(0, 6000, marks);
    ASSERT_EQ(lapCount[0], 511);
    std::fill(std::begin(lapChecked[0]), std::end(lapChecked[0]), 0);
    ComputeLapStats();
    EXPECT_EQ(bestRow[0][statMaxNe], emptyRow);
    EXPECT_EQ(BestValue(0, statMaxNe), 0);
    EXPECT_EQ(BestValue(0, statMinNe), 65535);
    EXPECT_EQ(LapTimeAt(0, bestLap[0]), noLapTime);
}

TEST_F(LapStatistics, ALapInRow510HasItsOwnValuesThoughNoPointerNamesIt) {
    std::vector<uint32_t> marks;
    for (uint32_t k = 1; k < 511; k++) marks.push_back(k * 10);
    MakeRandomLog(0, 6000, marks);
    std::fill(std::begin(lapChecked[0]), std::end(lapChecked[0]), 1);
    sortKey[0] = 1;
    ComputeLapStats();
    EXPECT_EQ(lapStats[0].lapTime[510], 900);
    EXPECT_EQ(StatValue(0, statMaxNe, 510), lapStats[0].maxNe[510]);
    EXPECT_GT(StatValue(0, statMaxNe, 510), 0);
    EXPECT_EQ(lapOrder[0][510], 510) << "the longest lap comes last";
}

TEST_F(LapStatistics, SuspensionSpeedsThatFoundNoMemoryAreNotRead) {
    MakeRandomLog(0, 3000, {1000, 2000});
    VFSus[0].resize(16);
    VFSus[0].shrink_to_fit();
    ComputeLapStats();
    EXPECT_EQ(lapStats[0].maxVFSus[1], 0);
    EXPECT_GT(lapStats[0].maxVRSus[1], 0);
}

TEST_F(LapStatistics, MarksThatDoNotRiseAndMarksPastTheEndDoNoHarm) {
    MakeRandomLog(0, 5000, {1000, 2000, 3000, 4999});
    lapStart[0][1] = 3000;
    lapStart[0][2] = 1000;
    lapStart[0][3] = 4000000000u;
    coursePointCount = 1;
    sectorMark[0][1] = 1;
    ComputeLapStats();
    EXPECT_EQ(lapStats[0].lapTime[1], noLapTime) << "from 3000 to 1000";
    EXPECT_EQ(lapStats[0].sectorTime[1][0], noLapTime);
    EXPECT_EQ(lapStats[0].sectorTime[3][0], noLapTime) << "starts behind the log";
}

TEST_F(LapStatistics, ANewLogsLapsAreCheckedButTheFirstAndTheLast) {
    MakeRandomLog(1, 5000, {1000, 2000, 3000});
    std::fill(std::begin(lapChecked[1]), std::end(lapChecked[1]), 0);
    lapChecked[0][0] = 0;
    AfterLoad(1, LoadResult::loaded);
    EXPECT_EQ(std::vector<int>(lapChecked[1], lapChecked[1] + 5), (std::vector<int>{0, 1, 1, 0, 0}));
    EXPECT_EQ(lapChecked[0][0], 0) << "the other files keep theirs";
}

TEST_F(LapStatistics, SortingIsStableAndALafColumnOfPageTwoKeepsTheLapOrder) {
    MakeRandomLog(0, 6000, {1000, 2000, 3000, 4500, 5000});
    sortKey[0] = 1;
    ComputeLapStats();
    EXPECT_EQ(std::vector<int>(lapOrder[0], lapOrder[0] + 6), (std::vector<int>{4, 0, 1, 2, 5, 3}))
        << "500, then four of 1000 in lap order, then 1500";
    sortKey[0] = 2;
    statPage = 1;
    ComputeLapStats();
    EXPECT_EQ(std::vector<int>(lapOrder[0], lapOrder[0] + 6), (std::vector<int>{0, 1, 2, 3, 4, 5}));
}

TEST_F(LapStatistics, EveryColumnOfPageOneSortsTheBetterValueFirst) {
    MakeRandomLog(0, 6000, {1000, 2000, 3000, 4500, 5000}, 11);
    for (int key = 2; key <= 13; key++) {
        SCOPED_TRACE(key);
        sortKey[0] = key;
        ComputeLapStats();
        const int column = PageColumn(0, key - 1), sign = statColumns[column].sign;
        for (int i = 1; i < 6; i++)
            EXPECT_GE(sign * StatValue(0, column, lapOrder[0][i - 1]), sign * StatValue(0, column, lapOrder[0][i]));
    }
}

TEST_F(LapStatistics, WithoutBoundariesTheFirstSectorIsTheWholeLapByTheFrontWheel) {
    MakeRandomLog(0, 5000, {1000, 2000, 3100, 4000});
    coursePointCount = 100;
    ComputeLapStats();
    EXPECT_EQ(lapStats[0].sectorTime[2][0], 1100);
    for (int sector = 1; sector < sectorTotal; sector++) EXPECT_EQ(lapStats[0].sectorTime[2][sector], noLapTime);
    EXPECT_EQ(IdealTimeCentis(0), SectorTimeAt(0, bestSector[0][0], 0) / 2);
}

TEST_F(LapStatistics, ABoundaryOutOfReachIsSkippedAndTheNextSectorCountsOn) {
    MakeRandomLog(0, 4000, {1000, 2000, 3000});
    coursePointCount = 1;  // no course: each boundary is a whole lap times the mark
    sectorMark[0][1] = 3;
    ComputeLapStats();
    EXPECT_EQ(lapStats[0].sectorTime[1][0], noLapTime);
    EXPECT_NE(lapStats[0].sectorTime[1][1], noLapTime);
}

TEST_F(LapStatistics, UncheckedLapsHaveSectorTimesButAreNoCandidates) {
    MakeRandomLog(0, 5000, {1000, 1700, 3000, 4000});
    lapChecked[0][1] = 0;
    ComputeLapStats();
    EXPECT_NE(lapStats[0].sectorTime[1][0], noLapTime);
    EXPECT_NE(bestSector[0][0], 1);
}

TEST_F(LapStatistics, TwoMarksPerLapAreTheSectorsAndOverwriteTheBoundaries) {
    MakeRandomLog(0, 6000, {1000, 1700, 3000, 4000, 4900});
    MarksPerLap[0] = 2;
    sectorMark[0][1] = 40;
    ComputeLapStats();
    EXPECT_EQ(sectorMark[0][0], 1);
    EXPECT_EQ(sectorMark[0][1], 2);
    EXPECT_EQ(sectorMark[0][2], noSectorMark);
    EXPECT_EQ(lapStats[0].sectorTime[2][0], 1300);
    EXPECT_EQ(lapStats[0].sectorTime[2][1], 1000);
}

TEST_F(LapStatistics, ThreeMarksPerLapAreThreeSectors) {
    MakeRandomLog(0, 6000, {1000, 1700, 3000, 4000, 4900});
    MarksPerLap[0] = 3;
    ComputeLapStats();
    EXPECT_EQ(std::vector<int>(sectorMark[0], sectorMark[0] + 4), (std::vector<int>{1, 2, 3, noSectorMark}));
    EXPECT_EQ(lapStats[0].sectorTime[3][0], 1000);
    EXPECT_EQ(lapStats[0].sectorTime[3][1], 900);
    EXPECT_EQ(lapStats[0].sectorTime[3][2], 1100);
}

// The definition of the estimate: each boundary looked for from the lap's first sample.
static int PlainSamplesTo(uint32_t start, uint32_t end, uint32_t distance) {
    for (uint32_t n = 1; n <= end - start + 1 && start + n <= static_cast<uint32_t>(sampleCount[0]); n++)
        if (static_cast<int32_t>(distFront[0][start + n] - distFront[0][start]) >= static_cast<int32_t>(distance))
            return static_cast<int>(n);
    return 0;
}

TEST_F(LapStatistics, EstimatedTimesEqualTheDefinitionAlsoWithBoundariesOutOfOrder) {
    MakeRandomLog(0, 9000, {700, 3300, 4100, 8000}, 9);
    coursePointCount = 100;
    const int boundaries[] = {0, 40, 20, 60, 130, 61, 99, noSectorMark};
    std::copy(std::begin(boundaries), std::end(boundaries), sectorMark[0]);
    ComputeLapStats();
    for (int row = 0; row < lapCount[0]; row++) {
        SCOPED_TRACE(row);
        const uint32_t length = lapLength[0][row + 1];
        int previous = 0;
        for (int sector = 0; sector < 7; sector++) {
            const int to = boundaries[sector + 1];
            const uint32_t distance = to == noSectorMark ? length : length / 100 * static_cast<uint32_t>(to);
            const int samples = PlainSamplesTo(lapStart[0][row], lapStart[0][row + 1], distance);
            EXPECT_EQ(lapStats[0].sectorTime[row][sector], samples ? samples - previous : noLapTime) << sector;
            if (samples) previous = samples;
        }
    }
}
