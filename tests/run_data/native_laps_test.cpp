// Distances and laps of native logs.
#include "run_data/native_laps.h"

#include <gtest/gtest.h>

#include <numeric>

#include "app/frame_loop.h"
#include "run_data/run_store.h"
#include "settings/settings.h"
#include "tests/run_data/log_builder.h"

namespace {

class NativeLaps : public testing::Test {
  protected:
    void SetUp() override { LoadDefaults(); }
    void TearDown() override { LoadDefaults(); }
};

// A log of any version that stands still for `samples` samples but for marks at these.
LogBytes StillLog(int version, int samples, const std::vector<int>& marks) {
    if (version != 3 && version != 4) {
        LogBytes log = QuietLog(version, samples);
        for (int mark : marks) SetMark(log, mark);
        return log;
    }
    LogBytes log = HeaderOf(version);
    for (int i = 1; i <= samples; i++) {
        MaskFrame f;
        f.vfw = std::count(marks.begin(), marks.end(), i) ? 0x8000 : 0;
        f.vb = version == 4 ? 43690 : 170;
        AddFrame(log, f);
    }
    return log;
}
// Marks of File 2, lapStart[1] to lapStart[lapCount - 1].
std::vector<uint32_t> Marks() { return {lapStart[1] + 1, lapStart[1] + lapCount[1]}; }
using List = std::vector<uint32_t>;

constexpr int ordinary[] = {1, 2, 3, 4};
constexpr int firstUnits[] = {0, 32};

// -- when a mark counts --

TEST_F(NativeLaps, AMark600SamplesAfterTheLastIsIgnoredAnd601Counts) {
    for (int version : ordinary)
        for (int distance : {1, 599, 600, 601}) {
            SCOPED_TRACE("version " + std::to_string(version) + " distance " + std::to_string(distance));
            ReadIntoSlot(1, StillLog(version, 2600, {1001, 1001 + distance}));
            const uint32_t second = 1001 + static_cast<uint32_t>(distance);
            EXPECT_EQ(Marks(), distance > 600 ? (List{1001, second}) : (List{1001}));
        }
}

TEST_F(NativeLaps, TheFirstMarkNeeds601SamplesFromTheStart) {
    for (int version : ordinary) {
        ReadIntoSlot(1, StillLog(version, 1300, {600}));
        EXPECT_EQ(Marks(), List());
        ReadIntoSlot(1, StillLog(version, 1300, {601}));
        EXPECT_EQ(Marks(), List{601});
    }
}

TEST_F(NativeLaps, WithDebugEveryMarkCounts) {
    Debug = 1;
    for (int version : ordinary) {
        ReadIntoSlot(1, StillLog(version, 2600, {1, 2, 1001, 1600}));
        EXPECT_EQ(Marks(), (List{1, 2, 1001, 1600}));
    }
}

TEST_F(NativeLaps, AnIgnoredMarkDoesNotDelayTheNext) {
    ReadIntoSlot(1, StillLog(2, 2600, {700, 1200, 1301}));
    EXPECT_EQ(Marks(), (List{700, 1301}));
}

TEST_F(NativeLaps, AMarkNeedsMoreThanTheHeadersVoltage) {
    const struct { int code, battery; bool counts; } rows[] = {
        {121, 121, false}, {121, 122, true}, {0, 0, false}, {0, 1, true}, {255, 255, false}, {254, 255, true}};
    for (int version : {1, 2, 3})
        for (const auto& row : rows) {
            LogBytes log = StillLog(version, 1300, {});
            log[47] = static_cast<uint8_t>(row.code);
            if (version == 3) {
                log.resize(1024);
                MaskFrame f;
                f.vb = row.battery;
                AddFrames(log, 799, f);
                f.vfw = 0x8000;
                AddFrame(log, f);
                f.vfw = 0;
                AddFrames(log, 500, f);
            } else {
                for (int i = 1; i <= 1300; i++) FrameOf(log, i)[13] = static_cast<uint8_t>(row.battery);
                SetMark(log, 800);
            }
            ReadIntoSlot(1, log);
            EXPECT_EQ(Marks(), row.counts ? List{800} : List()) << "version " << version << " code " << row.code;
        }
}

TEST_F(NativeLaps, TheVoltageOfAMarkIsThatOfItsOwnFrame) {
    for (int version : {3, 4}) {
        const int unit = version == 4 ? 256 : 1;
        LogBytes log = StillLog(version, 799, {});
        MaskFrame mark;
        mark.vfw = 0x8000;
        mark.vb = 100 * unit;
        AddFrame(log, mark);  // 800: too low, though the frame before is not
        mark.vb = 170 * unit;
        AddFrame(log, mark);  // 801
        AddFrames(log, 500, MaskFrame());
        ReadIntoSlot(1, log);
        EXPECT_EQ(Marks()[0], 801u);
    }
}

TEST_F(NativeLaps, MarksOfVersion4CompareWithTheVoltageOfTheByteCode) {
    // Code 121 is 9.49 V; 31129 of 65535 is 9.49 too, 31130 is 9.50.
    for (auto [battery, counts] : {std::pair{31129, false}, {31130, true}}) {
        LogBytes log = HeaderOf(4);
        MaskFrame f;
        f.vb = battery;
        AddFrames(log, 799, f);
        f.vfw = 0x8000;
        AddFrame(log, f);
        f.vfw = 0;
        AddFrames(log, 500, f);
        ReadIntoSlot(1, log);
        EXPECT_EQ(Marks(), counts ? List{800} : List());
    }
}

TEST_F(NativeLaps, MarksOfVersions0And32NeedNoVoltage) {
    for (int version : firstUnits) {
        LogBytes log = HeaderOf(version);
        log.resize(512 + 16 * 1300, 0);
        log[47] = 255;
        SetMark(log, 800);
        ReadIntoSlot(1, log);
        EXPECT_EQ(Marks(), (List{0, 800}));
    }
}

TEST_F(NativeLaps, DeltaFramesKeepTheMarkOfTheWordAndThe600SamplesSwallowIt) {
    for (int version : {3, 4}) {
        LogBytes log = StillLog(version, 800, {800});
        MaskFrame delta;
        delta.vfwDelta = 1;
        AddFrames(log, 50, delta);  // 801 to 850: still marked
        MaskFrame cleared;
        cleared.vfw = 50;
        AddFrames(log, 700, cleared);
        ReadIntoSlot(1, log);
        EXPECT_EQ(Marks(), List{800});
        EXPECT_EQ(VFW[1][850], 50);
        Debug = 1;
        ReadIntoSlot(1, log);
        EXPECT_EQ(lapCount[1], 52) << "with Debug each of them counts";
        EXPECT_EQ(Marks().back(), 850u);
        Debug = 0;
    }
}

TEST_F(NativeLaps, DeltaFramesThatStayMarkedCountAgainAfter601Samples) {
    LogBytes log = StillLog(3, 800, {800});
    AddFrames(log, 700, MaskFrame());
    ReadIntoSlot(1, log);
    EXPECT_EQ(Marks(), (List{800, 1401}));
}

TEST_F(NativeLaps, ALogHoldsAtMost509MarksAndTheEntriesBehindAreItsEnd) {
    Debug = 1;
    std::vector<int> marks(600);
    std::iota(marks.begin(), marks.end(), 10);
    for (int version : {2, 4}) {
        ReadIntoSlot(1, StillLog(version, 1000, marks));
        EXPECT_EQ(lapCount[1], 510);
        EXPECT_EQ(lapStart[1][1], 10u);
        EXPECT_EQ(lapStart[1][509], 518u);
        for (int k = 510; k < lapTableSize; k++) EXPECT_EQ(lapStart[1][k], 1001u) << k;
        EXPECT_EQ(lapStart[1][lapCount[1] + 2], 1001u);
    }
}

// -- versions 0 and 32 --

TEST_F(NativeLaps, Versions0And32HaveTwoLapsWithoutAMark) {
    for (int version : firstUnits) {
        ReadIntoSlot(1, StillLog(version, 1300, {}));
        EXPECT_EQ(lapCount[1], 2);
        EXPECT_EQ(lapStart[1][1], 0u);
        EXPECT_EQ(lapStart[1][2], 1301u);
    }
}

TEST_F(NativeLaps, MarksOfVersions0And32BeginAtIndex2) {
    for (int version : firstUnits) {
        ReadIntoSlot(1, StillLog(version, 2600, {600, 601, 1201, 1202}));
        EXPECT_EQ(lapCount[1], 4);
        EXPECT_EQ(Marks(), (List{0, 601, 1202}));
    }
}

TEST_F(NativeLaps, AVeryShortLogOfVersion0HasOneLap) {
    ReadIntoSlot(1, StillLog(0, 48, {}));
    EXPECT_EQ(lapCount[1], 1);
    ReadIntoSlot(1, StillLog(0, 49, {}));
    EXPECT_EQ(lapCount[1], 2);
}

// -- distances --

// 3 km/h in front, 2 behind, on all samples.
LogBytes RollingLog(int samples, const std::vector<int>& marks) {
    LogBytes log = QuietLog(2, samples);
    for (int i = 1; i <= samples; i++) {
        FrameOf(log, i)[3] = 30;
        FrameOf(log, i)[5] = 20;
    }
    for (int mark : marks) SetMark(log, mark);
    return log;
}

TEST_F(NativeLaps, DistancesAreSumsOfTheSpeeds) {
    ReadIntoSlot(1, RollingLog(2000, {}));
    for (int i : {0, 1, 2, 255, 256, 257, 1000, 2000}) {
        EXPECT_EQ(distFront[1][i], 30u * i);
        EXPECT_EQ(distRear[1][i], 20u * i);
        EXPECT_EQ(lapDistance[1][i], 30u * i);
    }
    EXPECT_EQ(distFront[1][2001], 60000u) << "the element behind repeats the last";
    EXPECT_EQ(distRear[1][2001], 40000u);
    EXPECT_EQ(lapDistance[1][2001], 60000u);
    EXPECT_EQ(distFront[1][2002], 0u);
    EXPECT_EQ(lapLength[1][1], 60000u);
}

TEST_F(NativeLaps, LapDistanceFollowsTheWheelOfTheCoursePosition) {
    const struct { int source; uint32_t speed; } rows[] = {{0, 30}, {1, 20}, {2, 30}};
    for (const auto& row : rows) {
        CoursePosSource = row.source;
        ReadIntoSlot(1, RollingLog(2000, {1000}));
        EXPECT_EQ(lapDistance[1][999], row.speed * 999);
        EXPECT_EQ(lapDistance[1][2000], row.speed * 1000);
        EXPECT_EQ(lapLength[1][1], row.speed * 1000);
        EXPECT_EQ(lapLength[1][2], row.speed * 1000);
        EXPECT_EQ(distFront[1][2000], 60000u);
    }
}

TEST_F(NativeLaps, AMarkEndsItsLapWithItsOwnSampleAndStartsAt0) {
    ReadIntoSlot(1, RollingLog(3000, {1000, 1700}));
    EXPECT_EQ(lapLength[1][0], 0u);
    EXPECT_EQ(lapLength[1][1], 30000u);
    EXPECT_EQ(lapLength[1][2], 21000u);
    EXPECT_EQ(lapLength[1][3], 39000u);
    EXPECT_EQ(lapDistance[1][999], 29970u);
    EXPECT_EQ(lapDistance[1][1000], 0u);
    EXPECT_EQ(lapDistance[1][1001], 30u);
    EXPECT_EQ(lapDistance[1][1699], 20970u);
    EXPECT_EQ(lapDistance[1][1700], 0u);
    EXPECT_EQ(distFront[1][3000], 90000u) << "runs on";
}

TEST_F(NativeLaps, WithTwoMarksPerLapEverySecondMarkZeroesTheDistance) {
    LogBytes log = RollingLog(4000, {700, 1400, 2100, 2800});
    log[27] = 2;
    ReadIntoSlot(1, log);
    EXPECT_EQ(Marks(), (List{700, 1400, 2100, 2800}));
    EXPECT_EQ(lapDistance[1][700], 21000u) << "marks 1 and 3 leave it running";
    EXPECT_EQ(lapDistance[1][1399], 41970u);
    EXPECT_EQ(lapDistance[1][1400], 0u);
    EXPECT_EQ(lapDistance[1][2100], 21000u);
    EXPECT_EQ(lapDistance[1][2800], 0u);
    EXPECT_EQ(lapDistance[1][4000], 36000u);
    for (int lap : {1, 2, 3, 4}) EXPECT_EQ(lapLength[1][lap], 21000u) << lap;
    EXPECT_EQ(lapLength[1][5], 36000u);
}

TEST_F(NativeLaps, WithThreeMarksPerLapEveryThirdMarkZeroesTheDistance) {
    LogBytes log = RollingLog(4000, {700, 1400, 2100, 2800});
    log[27] = 3;
    ReadIntoSlot(1, log);
    EXPECT_EQ(lapDistance[1][1400], 42000u);
    EXPECT_EQ(lapDistance[1][2100], 0u);
    EXPECT_EQ(lapDistance[1][2800], 21000u);
}

TEST_F(NativeLaps, MarksPerLapOf0CountsAs1) {
    LogBytes log = RollingLog(2000, {700});
    log[27] = 0;
    MarksPerLap[1] = 0;
    ReadIntoSlot(1, log);
    EXPECT_EQ(MarksPerLap[1], 0);
    EXPECT_EQ(lapDistance[1][700], 0u);
}

TEST_F(NativeLaps, TheExtraMarkOfVersions0And32CountsForTheMarksPerLap) {
    LogBytes log = QuietLog(0, 2000);
    for (int i = 1; i <= 2000; i++) FrameOf(log, i)[3] = 30;
    SetMark(log, 700);
    SetMark(log, 1400);
    log[27] = 2;
    ReadIntoSlot(1, log);
    EXPECT_EQ(lapDistance[1][700], 0u) << "its index is 2";
    EXPECT_EQ(lapDistance[1][1400], 21000u);
    EXPECT_EQ(lapLength[1][1], 0u);
    EXPECT_EQ(lapLength[1][2], 21000u);
}

// -- the end --

TEST_F(NativeLaps, AMarkInTheLastQuarterSecondIsNoLap) {
    const struct { int samples, laps; } rows[] = {{1001, 2}, {1040, 2}, {1048, 2}, {1049, 3}, {1300, 3}};
    for (int version : ordinary)
        for (const auto& row : rows) {
            Debug = 1;
            SCOPED_TRACE("version " + std::to_string(version) + " samples " + std::to_string(row.samples));
            ReadIntoSlot(1, StillLog(version, row.samples, {300, 1000}));
            EXPECT_EQ(lapCount[1], row.laps);
            EXPECT_EQ(lapStart[1][row.laps - 1], row.laps == 3 ? 1000u : 300u);
            for (int k = row.laps; k < lapTableSize; k++)
                ASSERT_EQ(lapStart[1][k], static_cast<uint32_t>(row.samples) + 1) << k;
        }
}

TEST_F(NativeLaps, OnlyOneMarkIsTakenBackAtTheEnd) {
    Debug = 1;
    ReadIntoSlot(1, StillLog(2, 1000, {990, 995}));
    EXPECT_EQ(lapCount[1], 2);
    EXPECT_EQ(Marks(), List{990});
}

TEST_F(NativeLaps, ANewLogForgetsTheLapsOfTheLast) {
    ReadIntoSlot(1, RollingLog(3000, {700, 1400, 2100}));
    ReadIntoSlot(1, RollingLog(500, {}));
    EXPECT_EQ(lapCount[1], 1);
    EXPECT_EQ(lapStart[1][0], 0u);
    for (int k = 1; k < lapTableSize; k++) EXPECT_EQ(lapStart[1][k], 501u) << k;
    EXPECT_EQ(lapLength[1][1], 15000u);
    for (int k = 2; k < lapTableSize; k++) EXPECT_EQ(lapLength[1][k], 0u) << k;
}

TEST_F(NativeLaps, AReloadGoesBackToTheStartOfItsLogAndStopsAllGlides) {
    for (int slot = 0; slot < fileSlots; slot++) {
        cursorPos[slot] = 1234;
        currentLap[slot] = 3;
        lapViewOffset[slot] = 2;
        jumpTarget[slot] = 99;
    }
    ReadIntoSlot(1, RollingLog(500, {}));
    EXPECT_EQ(std::vector<int>(cursorPos, cursorPos + 3), (std::vector<int>{1234, 0, 1234}));
    EXPECT_EQ(std::vector<int>(currentLap, currentLap + 3), (std::vector<int>{3, 1, 3}));
    EXPECT_EQ(std::vector<int>(lapViewOffset, lapViewOffset + 3), (std::vector<int>{2, 0, 2}));
    EXPECT_EQ(std::vector<int>(jumpTarget, jumpTarget + 3), (std::vector<int>{-1, -1, -1}));
}

}  // namespace
