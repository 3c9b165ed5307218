#include "analysis/harmonize.h"

#include <gtest/gtest.h>

#include "analysis/lap_stats.h"
#include "app/frame_loop.h"
#include "graph/view_state.h"
#include "platform/headless/script.h"
#include "tests/analysis/random_log.h"

namespace {

struct Harmonize : testing::Test {
    Harmonize() {
        DefaultScript();
        LoadDefaults();
        MakeRandomLog(0, 1000, {300, 600});
        MakeRandomLog(1, 10, {});
        Tyres(0, 1900, 2000);
        Tyres(1, 1950, 1980);
    }
    ~Harmonize() override {
        LoadDefaults();
        DefaultScript();
    }
    static void Tyres(int slot, int front, int rear) {
        frontTyreMm[slot] = front;
        rearTyreMm[slot] = rear;
    }
    static void ExpectTyres(int front, int rear) {
        EXPECT_EQ(frontTyreMm[0], front);
        EXPECT_EQ(rearTyreMm[0], rear);
    }
};

TEST_F(Harmonize, SpeedsBecomeThoseOfFile2sTyresAndItIsTold) {
    const auto front = VFW[0], rear = VRW[0];
    HarmonizeTyreLength();
    for (int i = 0; i < 1000; i++) {
        ASSERT_EQ(VFW[0][i], front[i] * 1950 / 1900);
        ASSERT_EQ(VRW[0][i], rear[i] * 1980 / 2000);
    }
    ExpectTyres(1950, 1980);
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].title, "arrange");
    EXPECT_EQ(shown[0].text, "arranged adjusted VFW & VRW to file 2");
    EXPECT_EQ(activityCount, 150);
}

TEST_F(Harmonize, ASecondPressChangesNothing) {
    HarmonizeTyreLength();
    const auto front = VFW[0], rear = VRW[0];
    HarmonizeTyreLength();
    EXPECT_EQ(VFW[0], front);
    EXPECT_EQ(VRW[0], rear);
}

TEST_F(Harmonize, NothingHappensWithoutFile2OrWithoutTyresOfFile1) {
    const auto front = VFW[0], rear = VRW[0];
    slotInUse[1] = 0;
    HarmonizeTyreLength();
    slotInUse[1] = 1;
    ExpectTyres(1900, 2000);
    for (const auto& [frontMm, rearMm] : {std::pair(99, 2000), {1900, 99}, {0, 0}, {-5, 2000}}) {
        Tyres(0, frontMm, rearMm);
        HarmonizeTyreLength();
        ExpectTyres(frontMm, rearMm);
    }
    EXPECT_EQ(VFW[0], front);
    EXPECT_EQ(VRW[0], rear);
    EXPECT_TRUE(shown.empty());
    Tyres(0, 100, 100);
    HarmonizeTyreLength();
    EXPECT_EQ(shown.size(), 1u);
}

TEST_F(Harmonize, ACircumferenceOfZeroInFile2MakesAllSpeedsZeroAndEndsIt) {
    Tyres(1, 0, 0);
    HarmonizeTyreLength();
    for (int i = 0; i < 1000; i++) ASSERT_EQ(VFW[0][i] + VRW[0][i], 0);
    ExpectTyres(0, 0);
    Tyres(1, 2000, 2000);
    HarmonizeTyreLength();
    ExpectTyres(0, 0);
}

TEST_F(Harmonize, LargestSpeedsAndTyresAreExactAndCutTo16Bits) {
    VFW[0][1] = 65535;
    VRW[0][1] = 4095;
    Tyres(0, 100, 655350);
    Tyres(1, 655350, 65535);
    HarmonizeTyreLength();
    EXPECT_EQ(VFW[0][1], static_cast<uint16_t>(uint64_t{65535} * 655350 / 100));
    EXPECT_EQ(VRW[0][1], 409);
}

TEST_F(Harmonize, TheLapTablesTopSpeedsChangeAtTheNextComputationAndItsTimesDoNot) {
    ComputeLapStats();
    const int speed = lapStats[0].maxVFW[1], time = lapStats[0].lapTime[1];
    const auto distance = distFront[0];
    const uint32_t length = lapLength[0][1];
    HarmonizeTyreLength();
    EXPECT_EQ(lapStats[0].maxVFW[1], speed);
    ComputeLapStats();
    EXPECT_EQ(lapStats[0].maxVFW[1], speed * 1950 / 1900);
    EXPECT_EQ(lapStats[0].lapTime[1], time);
    EXPECT_EQ(distFront[0], distance);
    EXPECT_EQ(lapLength[0][1], length);
}

TEST_F(Harmonize, Files2And3StayAsTheyAre) {
    MakeRandomLog(2, 10, {});
    const auto second = VFW[1], third = VRW[2];
    HarmonizeTyreLength();
    EXPECT_EQ(VFW[1], second);
    EXPECT_EQ(VRW[2], third);
}

}  // namespace
