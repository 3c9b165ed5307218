// Samples counted by bands, several at a time: each sample lands where a look-up would put it.
#include "analysis/band_counts.h"

#include <gtest/gtest.h>

#include <random>

namespace {

template <class T>
std::vector<uint64_t> OneByOne(const BandTable& table, int bands, const std::vector<T>& samples) {
    std::vector<uint64_t> counts(static_cast<size_t>(bands));
    for (const T sample : samples) counts[table.bandOf[static_cast<size_t>(Narrow(sample) + 32768)]]++;
    return counts;
}

template <class T>
void ExpectEqualCounts(const BandTable& table, int bands, const std::vector<T>& samples) {
    BandCounts counts = MakeBandCounts(bands);
    CountBands(counts, table, samples.data(), samples.data() + samples.size());
    EXPECT_EQ(counts.counts, OneByOne(table, bands, samples));
}

int Band(int narrow, int width, int bands) { return std::clamp((narrow + 32768) / width, 0, bands - 1); }

TEST(BandCounts, TableKnowsTheBandOfEveryValueAndWhereBandsBegin) {
    const BandTable table = MakeBandTable(10, [](int narrow) { return narrow < -1000 ? 0 : std::min(2 + (narrow + 1000) / 500, 7); });
    for (int narrow = -32768; narrow <= 32767; narrow++)
        ASSERT_EQ(table.bandOf[static_cast<size_t>(narrow + 32768)], narrow < -1000 ? 0 : std::min(2 + (narrow + 1000) / 500, 7));
    EXPECT_EQ(table.begins, (std::vector<int>{-32768, -1000, -1000, -500, 0, 500, 1000, 1500, 32768, 32768}));
}

TEST(BandCounts, NarrowedValuesKeepTheirOrderAndAreHeldInside) {
    EXPECT_EQ(Narrow(uint16_t{0}), -32768);
    EXPECT_EQ(Narrow(uint16_t{65535}), 32767);
    EXPECT_EQ(Narrow(int16_t{-5}), -5);
    EXPECT_EQ(Narrow(int32_t{-40000}), -32768);
    EXPECT_EQ(Narrow(int32_t{2000000000}), 32767);
}

TEST(BandCounts, SlowAndWildSamplesAreCountedAsOneByOne) {
    std::mt19937 random(1);
    for (int round = 0; round < 200; round++) {
        SCOPED_TRACE(round);
        const int width = 1 + static_cast<int>(random() % (round % 2 ? 20000 : 300)), bands = std::min(65536 / width + 2, 4003);
        const BandTable table = MakeBandTable(bands, [&](int narrow) { return Band(narrow, width, bands); });
        const size_t samples = random() % 3000;
        std::vector<uint16_t> speeds(samples);
        std::vector<int16_t> strokes(samples);
        std::vector<int32_t> throttles(samples);
        int value = static_cast<int>(random() % 65536), step = 1 + static_cast<int>(random() % (round % 3 ? 50 : 60000));
        for (size_t i = 0; i < samples; i++) {
            value = std::clamp(value + static_cast<int>(random() % (2 * step + 1)) - step, 0, 65535);
            speeds[i] = static_cast<uint16_t>(value);
            strokes[i] = static_cast<int16_t>(value - 32768);
            throttles[i] = (value - 32768) * (round % 5 == 0 ? 3 : 1);
        }
        ExpectEqualCounts(table, bands, speeds);
        ExpectEqualCounts(table, bands, strokes);
        ExpectEqualCounts(table, bands, throttles);
    }
}

TEST(BandCounts, ALaterStretchAddsToTheCounts) {
    const BandTable table = MakeBandTable(3, [](int narrow) { return narrow < 0 ? 0 : narrow < 10 ? 1 : 2; });
    const std::vector<int16_t> samples(300, 5);
    BandCounts counts = MakeBandCounts(3);
    CountBands(counts, table, samples.data(), samples.data() + 300);
    CountBands(counts, table, samples.data(), samples.data() + 3);
    EXPECT_EQ(counts.counts, (std::vector<uint64_t>{0, 303, 0}));
}

TEST(BandCounts, VectorsCountAsThePlainLoopDoes) {
    std::mt19937 random(2);
    int16_t values[bandBlock];
    for (int round = 0; round < 2000; round++) {
        for (int16_t& value : values) value = static_cast<int16_t>(static_cast<int16_t>(random()) >> random() % 12);
        for (const int begin : {-32767, -1, 0, 1, 32767, 32768, std::max<int>(values[5], -32767)})
            ASSERT_EQ(AtLeastFast(values, begin), AtLeastPlain(values, begin));
    }
}

}  // namespace
