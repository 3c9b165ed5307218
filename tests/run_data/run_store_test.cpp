#include "run_data/run_store.h"

#include <cstring>
#include <map>
#include <numeric>

#include "graph/rest_panels.h"
#include "tests/program_fixture.h"
#include "tests/run_data/sample_memory.h"

namespace {

constexpr const char* memoryMessage = "Memory Ensure Error.(Data Main buffers)";
constexpr const char* memoryTitle = "Memory Error!!";

struct RunStore : ProgramTest {
    RunStore() { shown.clear(); }
};

std::vector<size_t> ArraySizes(int slot) {
    std::vector<size_t> sizes;
    ForEachSampleArray(slot, [&](auto& array, bool) { sizes.push_back(array.size()); });
    return sizes;
}
std::vector<size_t> All(size_t size) { return std::vector<size_t>(17, size); }

template <class Value>
void FillArrays(int slot, Value value) {
    ForEachSampleArray(slot, [&](auto& array, bool) { std::fill(array.begin(), array.end(), value); });
}
// Elements from `from` on that are not this value, in all arrays.
int ElementsOtherThan(int slot, int value, size_t from = 0) {
    int others = 0;
    ForEachSampleArray(slot, [&](auto& array, bool) {
        for (size_t i = from; i < array.size(); i++) others += array[i] != static_cast<decltype(+array[i])>(value);
    });
    return others;
}

// A log of 100 samples with two marks, all values 7.
void FillWithSevens(int slot) {
    FillSlot(slot, 100);
    FillArrays(slot, 7);
    SetMarks(slot, {30, 60});
    cursorPos[slot] = 4200;
    currentLap[slot] = 2;
    lapViewOffset[slot] = 1;
    lapLength[slot][0] = lapLength[slot][2] = 77;
}
void ExpectSevens(int slot) {
    SCOPED_TRACE(slot);
    EXPECT_EQ(slotInUse[slot], 1);
    EXPECT_EQ(sampleCount[slot], 100);
    EXPECT_EQ(lapCount[slot], 3);
    EXPECT_EQ(lapStart[slot][2], 60u);
    EXPECT_EQ(lapLength[slot][2], 77u);
    EXPECT_EQ(cursorPos[slot], 4200);
    EXPECT_EQ(ArraySizes(slot), All(101));
    EXPECT_EQ(ElementsOtherThan(slot, 7), 0);
}

// -- start --

TEST_F(RunStore, StartsWithArraysOf512ZerosInEverySlot) {
    for (int slot = 0; slot < fileSlots; slot++) {
        EXPECT_EQ(ArraySizes(slot), All(512));
        EXPECT_EQ(ElementsOtherThan(slot, 0), 0);
    }
}

TEST_F(RunStore, WithoutALogHasOneSampleAndOneLapAndTheFirstMarkAt0) {
    for (int slot = 0; slot < fileSlots; slot++) {
        EXPECT_EQ(sampleCount[slot], 1);
        EXPECT_EQ(lapCount[slot], 1);
        for (int k = 0; k < lapTableSize; k++) {
            EXPECT_EQ(lapStart[slot][k], 0u);
            EXPECT_EQ(lapLength[slot][k], 0u);
        }
    }
}

TEST_F(RunStore, StartsWithFile1InUseAndAnEndBehindFile3) {
    EXPECT_EQ(std::vector<int>(slotInUse, slotInUse + 4), (std::vector<int>{1, 0, 0, 0}));
}

TEST_F(RunStore, StartsWithTheStandardSensorParameters) {
    const struct { const char* name; const int* perSlot; int start; } rows[] = {
        {"neDivider", neDivider, 2},         {"neRange", neRange, 0},
        {"frontPulses", frontPulses, 20},    {"frontTyreMm", frontTyreMm, 1920},
        {"rearPulses", rearPulses, 4},       {"rearTyreMm", rearTyreMm, 2010},
        {"rearOnGearbox", rearOnGearbox, 1}, {"gearboxPulses", gearboxPulses, 29},
        {"frontSprocket", frontSprocket, 15}, {"rearSprocket", rearSprocket, 43},
        {"MarksPerLap", MarksPerLap, 1},     {"tpsClosedRaw", tpsClosedRaw, 0},
        {"tpsOpenRaw", tpsOpenRaw, 0},       {"tpsSpan", tpsSpan, 0},
        {"fsusType", fsusType, 0},           {"rsusType", rsusType, 0},
        {"fsusZeroRaw", fsusZeroRaw, 0},     {"rsusZeroRaw", rsusZeroRaw, 0},
        {"fsusStroke", fsusStroke, 0},       {"rsusStroke", rsusStroke, 0},
        {"primaryMain", primaryMain, 76},    {"primaryCounter", primaryCounter, 36},
        {"primaryRatio", primaryRatio, 0},   {"fsusMaxSeen", fsusMaxSeen, 0},
        {"rsusMaxSeen", rsusMaxSeen, 0},
    };
    for (const auto& row : rows)
        for (int slot = 0; slot < fileSlots; slot++) EXPECT_EQ(row.perSlot[slot], row.start) << row.name << " of slot " << slot;
    constexpr int mainTeeth[6] = {33, 32, 30, 26, 30, 29}, counterTeeth[6] = {12, 16, 18, 18, 23, 24};
    constexpr int types[4] = {0, 0, 1, 1};
    for (int slot = 0; slot < fileSlots; slot++) {
        for (int gear = 0; gear < 6; gear++) {
            EXPECT_EQ(gearMain[slot][gear], mainTeeth[gear]);
            EXPECT_EQ(gearCounter[slot][gear], counterTeeth[gear]);
            EXPECT_EQ(gearLimit[slot][gear], 0);
        }
        for (int input = 0; input < 4; input++)
            for (const auto* set : {&analog[slot][input], &analogAsLogged[slot][input]}) {
                EXPECT_EQ(set->type, types[input]);
                EXPECT_EQ(set->slope, 0);
                EXPECT_EQ(set->offset, 0);
                for (int point = 0; point < 16; point++) EXPECT_EQ(set->curveX[point] | set->curveY[point], 0);
            }
        for (int input = 0; input < 2; input++) {
            EXPECT_EQ(auxDivider[slot][input], 1);
            EXPECT_EQ(lafDivider[slot][input], 0);
        }
    }
}

TEST_F(RunStore, StartsWithTheViewAtTheBeginningAndNothingNamed) {
    for (int slot = 0; slot < fileSlots; slot++) {
        EXPECT_EQ(cursorPos[slot], 0);
        EXPECT_EQ(currentLap[slot], 1);
        EXPECT_EQ(lapViewOffset[slot], 0);
        EXPECT_EQ(jumpTarget[slot], -1);
        EXPECT_EQ(timeFactor[slot], 1.0);
        EXPECT_EQ(formatVersion[slot], 0);
        EXPECT_EQ(fileKind[slot], 0);
        EXPECT_STREQ(memoText[slot], "");
        EXPECT_STREQ(fileTitle[slot], "");
        EXPECT_STREQ(filePath[slot], "");
    }
    EXPECT_STREQ(firmwareText, "");
}

TEST_F(RunStore, StartsWithTheLastThreeItemsHidden) {
    DefaultRunStore();
    for (int slot = 0; slot < fileSlots; slot++)
        for (int channel = 0; channel < channelTotal; channel++)
            EXPECT_EQ(showChannel[slot][channel], channel < 11 ? 1 : 0) << "channel " << channel;
}

// -- arrays --

TEST_F(RunStore, ASampleTakes49Bytes) {
    size_t bytes = 0;
    ForEachSampleArray(0, [&](auto& array, bool) { bytes += sizeof array[0]; });
    EXPECT_EQ(bytes, 49u);
}

TEST_F(RunStore, ArraysAreSizedExactlyToTheLog) {
    for (int samples : {1, 16, 511, 512, 513, 100000, 16}) {
        EXPECT_EQ(EnsureChannels(1, samples), 0);
        EXPECT_EQ(ArraySizes(1), All(samples));
    }
    EXPECT_TRUE(shown.empty());
}

TEST_F(RunStore, ElementsStayWhereTheNewSizeFits) {
    EnsureChannels(1, 1000);
    FillArrays(1, 9);
    EXPECT_EQ(EnsureChannels(1, 600), 0);
    EXPECT_EQ(ElementsOtherThan(1, 9), 0);
}

TEST_F(RunStore, ResizingOneSlotLeavesTheOthers) {
    for (int slot = 0; slot < fileSlots; slot++) FillWithSevens(slot);
    EnsureChannels(1, 100000);
    ExpectSevens(0);
    ExpectSevens(2);
}

TEST_F(RunStore, NoSamplesAreAFailureOfMemory) {
    for (int samples : {0, -1, INT32_MIN}) {
        SCOPED_TRACE(samples);
        shown.clear();
        EXPECT_EQ(EnsureChannels(1, samples), 1);
        ASSERT_EQ(shown.size(), 1u);
        EXPECT_EQ(shown[0].kind, "box");
        EXPECT_EQ(shown[0].text, memoryMessage);
        EXPECT_EQ(shown[0].title, memoryTitle);
        EXPECT_EQ(ArraySizes(1), All(0));
    }
}

TEST_F(RunStore, AMissingArrayIsAFailureUnlessItIsOneOfTheThreeUntested) {
    // In the order in which they are asked for.
    const struct { const char* name; int result; } arrays[] = {
        {"Ne", 1}, {"TH", 1}, {"VFW", 1}, {"VRW", 1}, {"FSUS", 1}, {"RSUS", 1}, {"LAF1", 1}, {"LAF2", 1}, {"VB", 0},
        {"AUX1", 1}, {"AUX2", 1}, {"lapDistance", 1}, {"distFront", 1}, {"distRear", 1}, {"sampleFlag", 1}, {"VFSus", 0}, {"VRSus", 0}};
    for (int k = 0; k < 17; k++) {
        SCOPED_TRACE(arrays[k].name);
        LoadDefaults();
        shown.clear();
        CountedMemory memory;
        memory.failAt = k + 1;
        EXPECT_EQ(EnsureChannels(1, 100000), arrays[k].result);
        EXPECT_EQ(shown.size(), arrays[k].result ? 1u : 0u);
        std::vector<size_t> sizes = All(100000);
        sizes[k] = 512;
        EXPECT_EQ(ArraySizes(1), sizes) << "what cannot grow stays as it was";
    }
}

TEST_F(RunStore, ClearingReachesAsFarAsItIsAsked) {
    EnsureChannels(1, 300);
    FillArrays(1, 5);
    ClearChannels(1, 200);
    EXPECT_EQ(ElementsOtherThan(1, 5, 200), 0);
    EXPECT_EQ(ElementsOtherThan(1, 0), 17 * 100);
}

TEST_F(RunStore, ClearingStopsAtTheEndOfAnArrayThatCouldNotGrow) {
    CountedMemory memory;
    memory.failAt = 9;
    EnsureChannels(1, 100000);
    ASSERT_EQ(VB[1].size(), 512u);
    FillArrays(1, 5);
    ClearChannels(1, 100000);
    EXPECT_EQ(ElementsOtherThan(1, 0), 0);
}

// -- reset --

TEST_F(RunStore, ResetOfFile1LeavesItInUseWith16ZerosPerArray) {
    FillWithSevens(0);
    ResetSlot(0);
    EXPECT_EQ(slotInUse[0], 1);
    EXPECT_EQ(sampleCount[0], 1);
    EXPECT_EQ(lapCount[0], 1);
    EXPECT_EQ(ArraySizes(0), All(16));
    EXPECT_EQ(ElementsOtherThan(0, 0), 0);
    EXPECT_TRUE(shown.empty());
}

TEST_F(RunStore, ResetOfFile3EndsItsUseAndFile1And2KeepTheirData) {
    for (int slot = 0; slot < fileSlots; slot++) FillWithSevens(slot);
    ResetSlot(2);
    EXPECT_EQ(slotInUse[2], 0);
    EXPECT_EQ(ArraySizes(2), All(16));
    ExpectSevens(0);
    ExpectSevens(1);
}

TEST_F(RunStore, ResetClearsLapsAndViewOfTheSlotAndKeepsItsNames) {
    FillWithSevens(1);
    std::strcpy(fileTitle[1], "run.zrk");
    std::strcpy(filePath[1], "logs/run.zrk");
    ResetSlot(1);
    for (int k = 0; k < lapTableSize; k++) {
        EXPECT_EQ(lapStart[1][k], 0u) << k;
        EXPECT_EQ(lapLength[1][k], 0u) << k;
    }
    EXPECT_EQ(cursorPos[1], 0);
    EXPECT_EQ(currentLap[1], 1);
    EXPECT_EQ(lapViewOffset[1], 0);
    EXPECT_STREQ(fileTitle[1], "run.zrk");
    EXPECT_STREQ(filePath[1], "logs/run.zrk");
}

TEST_F(RunStore, ResetClearsTheExtremeMarksOfAllSlots) {
    for (auto& slot : extremeMarkValid) std::fill(std::begin(slot), std::end(slot), 1);
    ResetSlot(1);
    for (auto& slot : extremeMarkValid) EXPECT_EQ(std::accumulate(std::begin(slot), std::end(slot), 0u), 0u);
    EXPECT_EQ(sizeof extremeMarkValid, 79872u);
}

TEST_F(RunStore, ResetRebuildsTheStatisticsTextAndFadesTheAfMap) {
    OpenWindow(1024, 768);
    FillWithSevens(1);
    afFade = 0;
    const std::vector<std::string> lines = Recorded([] { ResetSlot(1); });
    EXPECT_EQ(afFade, 128);
    EXPECT_EQ(lines, Recorded(DrawSummaryImage));
    EXPECT_FALSE(lines.empty());
}

TEST_F(RunStore, ResetWorksWithoutMemory) {
    FillWithSevens(1);
    EnsureChannels(1, 100000);
    CountedMemory memory;
    memory.failAt = CountedMemory::always;
    ResetSlot(1);
    EXPECT_EQ(ArraySizes(1), All(16));
    EXPECT_EQ(ElementsOtherThan(1, 0), 0);
    EXPECT_EQ(slotInUse[1], 0);
}

// -- memory --

TEST_F(RunStore, AnEmptiedSlotGivesItsMemoryBack) {
    CountedMemory memory;
    LoadDefaults();
    const int64_t before = memory.inUse;
    EnsureChannels(1, 1000000);
    EXPECT_EQ(memory.inUse - before, 49 * (1000000 - 512));
    ResetSlot(1);
    EXPECT_LE(memory.inUse, before);
}

TEST_F(RunStore, ALogOfNearlyTheSameLengthTakesTheMemoryOfTheLast) {
    EnsureChannels(1, 1000000);
    CountedMemory memory;
    for (int samples : {999999, 1000000, 500000, 900000}) EXPECT_EQ(EnsureChannels(1, samples), 0);
    EXPECT_EQ(memory.calls, 0);
}

TEST_F(RunStore, AMuchShorterLogGivesTheRestBack) {
    EnsureChannels(1, 1000000);
    CountedMemory memory;
    EnsureChannels(1, 400000);
    EXPECT_EQ(memory.inUse, -49 * 600000);
}

TEST_F(RunStore, GrowingHoldsAtMostOneArrayTwice) {
    CountedMemory memory;
    EnsureChannels(1, 1000000);
    memory.peak = memory.inUse;
    EnsureChannels(1, 1100000);
    EXPECT_LE(memory.peak - memory.inUse, 4 * 1100000);
}

TEST_F(RunStore, ExitReleasesEveryArray) {
    CountedMemory memory;
    EnsureChannels(1, 1000000);
    ReleaseRunStore();
    for (int slot = 0; slot < fileSlots; slot++) EXPECT_EQ(ArraySizes(slot), All(0));
    EXPECT_LT(memory.inUse, 0) << "what the start took went too";
}

// -- laps and distances --

TEST_F(RunStore, EntriesFromTheLastLapOnHoldTheSampleCountWithTheMostMarksToo) {
    sampleCount[1] = 200000;
    for (int laps : {1, 2, 510, 511}) {
        lapCount[1] = laps;
        std::fill(std::begin(lapStart[1]), std::end(lapStart[1]), 3u);
        FillLapEnd(1);
        EXPECT_EQ(lapStart[1][laps - 1], 3u);
        for (int k = laps; k < lapTableSize; k++) ASSERT_EQ(lapStart[1][k], 200000u) << k;
        EXPECT_EQ(lapStart[1][laps + 2], 200000u);
    }
}

TEST_F(RunStore, MarksPerLapOutsideOneToThreeCountAsOne) {
    const std::map<int, int> used = {{-1, 1}, {0, 1}, {1, 1}, {2, 2}, {3, 3}, {4, 1}, {255, 1}};
    for (auto [stored, held] : used) {
        MarksPerLap[2] = stored;
        EXPECT_EQ(HeldMarksPerLap(2), held) << stored;
    }
}

TEST_F(RunStore, AStaleLapIsHeldInsideTheLog) {
    lapCount[1] = 5;
    for (auto [stale, held] : std::map<int, int>{{-3, 1}, {0, 1}, {1, 1}, {5, 5}, {6, 5}, {510, 5}}) {
        currentLap[1] = stale;
        EXPECT_EQ(HeldLap(1), held) << stale;
    }
}

TEST_F(RunStore, ALogOf10MsCounts3600ToTheMetre) {
    OpenWindow(1024, 768);
    FillSlot(0, 6000);
    timeFactor[0] = 0.5;
    lapLength[0][1] = 3600 * 1500;
    EXPECT_NE(RecordedText(DrawSummaryImage).find("\"1.50 km\""), std::string::npos);
}

}  // namespace
