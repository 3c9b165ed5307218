#include "run_data/running_sum.h"

#include <gtest/gtest.h>

#include <random>

namespace {

struct Sums {
    alignas(16) uint16_t values[64];
    alignas(16) uint32_t before[4], sums[64], beforePlain[4], plain[64];
};

TEST(RunningSum, GoesOnFromTheSumBeforeAndWraps) {
    Sums s = {};
    s.values[0] = 5;
    s.values[1] = 65535;
    s.before[3] = 0xFFFFFFFE;
    RunningSum(s.values, s.sums, 64);
    EXPECT_EQ(s.sums[0], 3u);
    EXPECT_EQ(s.sums[1], 65538u);
    EXPECT_EQ(s.sums[63], 65538u);
}

TEST(RunningSum, IsThePlainSumOfAnyValues) {
    std::mt19937 random(7);
    for (int turn = 0; turn < 100; turn++) {
        Sums s = {};
        for (uint16_t& value : s.values) value = static_cast<uint16_t>(turn % 2 ? random() : 65535);
        s.before[3] = s.beforePlain[3] = static_cast<uint32_t>(random());
        RunningSum(s.values, s.sums, 64);
        RunningSumPlain(s.values, s.plain, 64);
        for (int i = 0; i < 64; i++) ASSERT_EQ(s.sums[i], s.plain[i]) << "turn " << turn << ", value " << i;
    }
}

}  // namespace
