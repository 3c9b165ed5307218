#include "run_data/sample_loops.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace {

// Counts around the widths of the vector loops, and a whole block.
constexpr int counts[] = {0, 1, 3, 4, 5, 7, 8, 9, 15, 16, 17, 31, 33, 100, 511, meansBlock};
constexpr int halves[] = {0, 1, 2, 3, 4, 5, 8, 15, 16, 100, 999, meansHalfLimit};

template <class T>
std::vector<T> RandomSamples(std::mt19937& random, int count, int64_t low, int64_t high) {
    std::uniform_int_distribution<int64_t> value(low, high);
    std::vector<T> samples(count);
    for (T& sample : samples) sample = static_cast<T>(value(random));
    return samples;
}

template <class T>
void ExpectEqualMeans(int64_t low, int64_t high) {
    std::mt19937 random(1);
    for (int half : halves)
        for (int count : counts) {
            SCOPED_TRACE(testing::Message() << "half " << half << " count " << count << " high " << high);
            std::vector<T> around = RandomSamples<T>(random, count + 2 * half, low, high);
            std::vector<T> means(count + 1, T{77}), plain = means;
            Means(around.data(), half, means.data(), count);
            MeansPlain(around.data(), half, plain.data(), count);
            ASSERT_EQ(means, plain);
            EXPECT_EQ(means[count], T{77});
        }
}

template <class T>
std::vector<T> AllMeans(const std::vector<T>& around, int half) {
    std::vector<T> means(around.size() - 2 * half);
    Means(around.data(), half, means.data(), static_cast<int>(means.size()));
    return means;
}

TEST(SampleLoops, MeansOf16BitSamplesEqualThePlainOnes) {
    ExpectEqualMeans<uint16_t>(0, 65535);
    ExpectEqualMeans<uint16_t>(65530, 65535);
    ExpectEqualMeans<int16_t>(-32768, 32767);
    ExpectEqualMeans<int16_t>(-32768, -32760);
    ExpectEqualMeans<int16_t>(-3, 3);
}

TEST(SampleLoops, MeansOf32BitSamplesEqualThePlainOnes) {
    ExpectEqualMeans<int32_t>(-5, 5);
    ExpectEqualMeans<int32_t>(-131072, 131071);  // the last sums that are divided in float
    ExpectEqualMeans<int32_t>(-131073, 131072);
    ExpectEqualMeans<int32_t>(-2147483647 - 1, 2147483647);
    ExpectEqualMeans<int32_t>(2147483000, 2147483647);
}

TEST(SampleLoops, EverySumOfANarrowWindowIsDividedExactly) {
    for (int half = 1; half <= 4; half++) {
        const int window = 2 * half + 1, largest = 131071 * window;
        std::vector<int32_t> around(meansBlock + 2 * half), means(meansBlock);
        for (int start = -largest; start < largest; start += meansBlock) {
            // Neighbours floor(m / window), floor((m + 1) / window), ... add up to m.
            for (int i = 0; i < static_cast<int>(around.size()); i++) {
                const int m = start + i;
                around[i] = m >= 0 ? m / window : (m + 1) / window - 1;
            }
            Means(around.data(), half, means.data(), meansBlock);
            for (int i = 0; i < meansBlock; i++) ASSERT_EQ(means[i], (start + i) / window);
        }
    }
}

TEST(SampleLoops, MeansTruncateTowardZero) {
    EXPECT_EQ(AllMeans<int16_t>({-1, -1, -2}, 1), (std::vector<int16_t>{-1}));
    EXPECT_EQ(AllMeans<int16_t>({-1, -1, 0}, 1), (std::vector<int16_t>{0}));
    EXPECT_EQ(AllMeans<int32_t>(std::vector<int32_t>(12, -7), 2), std::vector<int32_t>(8, -7));
    EXPECT_EQ(AllMeans<uint16_t>({65535, 65535, 65534}, 1), (std::vector<uint16_t>{65534}));
}

TEST(SampleLoops, DifferencesAreDoubledAndKeptTo16Bits) {
    const std::vector<int16_t> from = {0, 10, 5, 32767, -32768, 0, 0, 1, 2, 4, 8};
    std::vector<int16_t> to(10), plain(10);
    DoubledDifferences(from.data(), to.data(), 10);
    DoubledDifferencesPlain(from.data(), plain.data(), 10);
    EXPECT_EQ(to, plain);
    EXPECT_EQ(to[0], 20);
    EXPECT_EQ(to[1], -10);
    EXPECT_EQ(to[2], static_cast<int16_t>(65524));   // 32762 x 2
    EXPECT_EQ(to[3], static_cast<int16_t>(-131070));
}

template <class T>
void ExpectEqualExtremes(int64_t low, int64_t high, Extremes start) {
    std::mt19937 random(2);
    for (int round = 0; round < 20; round++)
        for (int count : counts) {
            std::vector<T> samples = RandomSamples<T>(random, count, low, high);
            Extremes found = start, plain = start;
            TakeExtremes(samples.data(), count, found);
            TakeExtremesPlain(samples.data(), count, plain);
            ASSERT_EQ(found.low, plain.low) << count;
            ASSERT_EQ(found.high, plain.high) << count;
        }
}

TEST(SampleLoops, ExtremesEqualThePlainOnes) {
    for (Extremes start : {Extremes{0, 0}, Extremes{2147483647, -2147483647}, Extremes{-40000, 70000}}) {
        ExpectEqualExtremes<uint16_t>(0, 65535, start);
        ExpectEqualExtremes<uint16_t>(32760, 32775, start);
        ExpectEqualExtremes<int16_t>(-32768, 32767, start);
        ExpectEqualExtremes<int32_t>(-2147483647 - 1, 2147483647, start);
        ExpectEqualExtremes<int32_t>(-10, 10, start);
    }
}

TEST(SampleLoops, GatedExtremesTakeOnlySamplesWithAnOpenGate) {
    std::mt19937 random(3);
    for (int count : counts)
        for (int open : {1, 901, 65535}) {
            std::vector<int16_t> samples = RandomSamples<int16_t>(random, count, -32768, 32767);
            std::vector<uint16_t> gate =
                RandomSamples<uint16_t>(random, count, std::max(0, open - 2), std::min(65535, open + 1));
            Extremes found = {5, 5}, plain = {5, 5};
            TakeGatedExtremes(samples.data(), gate.data(), open, count, found);
            TakeGatedExtremesPlain(samples.data(), gate.data(), open, count, plain);
            ASSERT_EQ(found.low, plain.low) << count << " " << open;
            ASSERT_EQ(found.high, plain.high) << count << " " << open;
        }
}

TEST(SampleLoops, ExtremesBehindAClosedGateStay) {
    const std::vector<int16_t> samples(64, 1000);
    const std::vector<uint16_t> gate(64, 900);
    Extremes extremes = {7, 8};
    TakeGatedExtremes(samples.data(), gate.data(), 901, 64, extremes);
    EXPECT_EQ(extremes.low, 7);
    EXPECT_EQ(extremes.high, 8);
}

TEST(SampleLoops, SlipExtremesEqualThePlainOnes) {
    std::mt19937 random(4);
    for (int top : {60, 300, 3200, 65535})
        for (int round = 0; round < 40; round++)
            for (int count : counts) {
                std::vector<uint16_t> front = RandomSamples<uint16_t>(random, count, 45, top);
                std::vector<uint16_t> rear = RandomSamples<uint16_t>(random, count, 0, top);
                if (round % 2)  // close to each other, so that whole slips lie close as well
                    for (int i = 0; i < count; i++) rear[i] = static_cast<uint16_t>(front[i] + (front[i] + rear[i]) % 5 - 2);
                for (Extremes start : {Extremes{0, 0}, Extremes{3, 3}, Extremes{-3, -3}}) {
                    Extremes found = start, plain = start;
                    TakeSlipExtremes(front.data(), rear.data(), count, found);
                    TakeSlipExtremesPlain(front.data(), rear.data(), count, plain);
                    ASSERT_EQ(found.low, plain.low) << top << " " << count;
                    ASSERT_EQ(found.high, plain.high) << top << " " << count;
                }
            }
}

TEST(SampleLoops, SlipIsTakenAboveFiveKilometresAnHour) {
    const std::vector<uint16_t> front = {50, 51, 0, 50, 50, 50, 50, 50, 50}, rear = {500, 102, 9, 0, 0, 0, 0, 0, 0};
    Extremes extremes = {0, 0};
    TakeSlipExtremes(front.data(), rear.data(), 9, extremes);
    EXPECT_EQ(extremes.high, 1000);
    EXPECT_EQ(extremes.low, 0);
}

}  // namespace
