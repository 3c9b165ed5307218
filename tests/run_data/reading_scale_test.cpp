// Scales by floats, doubles and tables against whole numbers, for every reading.
#include "run_data/reading_scale.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace {

std::vector<int> Readings(int highest) {
    std::vector<int> readings(highest + 1);
    for (int i = 0; i <= highest; i++) readings[i] = i;
    return readings;
}

// Scales blocks of readings one after the other into cells and compares each with Scaled.
template <class Reading, class Cell>
void ExpectScaled(const ReadingScale& scale, const CellScale& ready, const std::vector<int>& readings) {
    alignas(16) static Reading block[blockCells];
    alignas(16) static Cell cells[blockCells];
    for (size_t from = 0; from < readings.size(); from += blockSize) {
        const int count = static_cast<int>(std::min<size_t>(blockSize, readings.size() - from));
        for (int i = 0; i < count; i++) block[lead + i] = static_cast<Reading>(readings[from + i]);
        ScaleCells(ready, block, cells);
        for (int i = 0; i < count; i++)
            ASSERT_EQ(cells[lead + i], static_cast<Cell>(Scaled(scale, readings[from + i])))
                << "(" << readings[from + i] << " x " << scale.factor << " + " << scale.addend << ") / " << scale.divisor << " + " << scale.base;
    }
}

// The same straight into memory.
void ExpectStreamed(const ReadingScale& scale, const CellScale& ready, const std::vector<int>& readings) {
    alignas(16) static uint16_t block[blockCells];
    alignas(16) static int32_t array[blockSize];
    for (size_t from = 0; from + blockSize <= readings.size(); from += blockSize) {
        for (int i = 0; i < blockSize; i++) block[lead + i] = static_cast<uint16_t>(readings[from + i]);
        StreamScaled(ready, block, array);
        for (int i = 0; i < blockSize; i++)
            ASSERT_EQ(array[i], Scaled(scale, readings[from + i])) << readings[from + i] << " x " << scale.factor << " / " << scale.divisor;
    }
}

void ExpectExact(const ReadingScale& scale, int highest) {
    static CellScale ready;
    MakeReady(ready, scale, highest);
    const std::vector<int> readings = Readings(highest);
    ExpectScaled<uint16_t, int32_t>(scale, ready, readings);
    ExpectStreamed(scale, ready, readings);
    if (scale.hundredths) return;
    ExpectScaled<uint16_t, int16_t>(scale, ready, readings);
    ExpectScaled<uint16_t, uint16_t>(scale, ready, readings);
}

TEST(ReadingScale, TakesFloatsTablesAndDoublesWhereEachIsExact) {
    static CellScale ready;
    MakeReady(ready, {1000, -28000, 200}, 255);
    EXPECT_EQ(ready.way, CellScale::floats);
    MakeReady(ready, {-18768, -18768 * 900, 1023, 18768}, 1023);
    EXPECT_EQ(ready.way, CellScale::table);
    EXPECT_EQ(ready.whole, -18);  // cells of 16 bits take 18 1/3 times each reading in two parts
    MakeReady(ready, {5000, 127, 255}, 255);  // not a whole multiple of the factor
    EXPECT_EQ(ready.way, CellScale::table);
    MakeReady(ready, {2000, 0, 65535}, 65535);
    EXPECT_EQ(ready.way, CellScale::doubles);
}

TEST(ReadingScale, IsExactForEveryDivisorOfAByte) {
    for (int divisor = 1; divisor <= 255; divisor++) {
        ExpectExact({1000, -1000 * (divisor % 100), divisor}, 255);
        ExpectExact({1000, -1000 * (divisor % 100), -divisor}, 255);
        ExpectExact({1, 0, divisor}, 65535);
        if (HasFatalFailure()) return;
    }
}

TEST(ReadingScale, IsExactAtTheLimitOfFloats) {
    for (int divisor : {1, 2, 3, 7, 255, 283, 1023, 8223}) {
        ExpectExact({8223, 0, divisor}, 255);       // 2,096,865: below 2^21
        ExpectExact({-8223, 8223 * 100, divisor}, 155);
        ExpectExact({8225, 0, divisor}, 255);       // above
    }
}

TEST(ReadingScale, IsExactInTwoPartsForEveryStroke) {
    for (int zero = 0; zero <= 1023; zero += 31)
        for (int span : {18768, 12500, 10, -10, 1530, -1530, 10230, 10231, 327670, -327680}) {
            const int64_t addend = int64_t{span} * (1023 - zero);
            ExpectExact({-span, -addend, 1023, span}, 1023);
            ExpectExact({span, addend, 1023}, 1023);
            ExpectExact({-span, 0, 1024, span - 25 * zero}, 1023);
            if (HasFatalFailure()) return;
        }
}

TEST(ReadingScale, IsExactForReadingsOf16Bits) {
    for (int zero : {0, 1, 27, 511, 1023}) {
        ExpectExact({-18768, -int64_t{18768} * (65535 - 64 * zero), 65535, 18768}, 65535);
        ExpectExact({-327680, -int64_t{327680} * (65535 - 64 * zero), 65535, 327680}, 65535);
        if (HasFatalFailure()) return;
    }
    for (int span : {1, 2, 100, 200, 255}) ExpectExact({1000, -int64_t{1000} * 28 * 256, span * 256}, 65535);
    ExpectExact({2000, 0, 65535}, 65535);
    ExpectExact({5000, 32767, 65535}, 65535);
    ExpectExact({1000, 0, 283 * 256, 900}, 65535);
    ExpectExact({0}, 65535);
}

TEST(ReadingScale, HundredthsAreDividedAgainTowardZero) {
    std::mt19937 random(3);
    for (int turn = 0; turn < 60; turn++) {
        const int slope = static_cast<int16_t>(random()), offset = static_cast<int16_t>(random());
        ExpectExact({slope * 500, 127, 255, offset * 100, true}, 255);
        ExpectExact({slope * 500, 32767, 65535, turn % 2 ? offset : offset * 100, true}, 65535);
        if (HasFatalFailure()) return;
    }
}

TEST(ReadingScale, SignedReadingsAreTruncatedTowardZero) {
    static CellScale ready;
    for (int divisor : {1, 2, 3, 4, 255}) {
        const ReadingScale scale = {1, 0, divisor};
        MakeReady(ready, scale, 65535);
        std::vector<int> readings;
        for (int i = -32768; i < 32768; i++) readings.push_back(i);
        ExpectScaled<int16_t, uint16_t>(scale, ready, readings);
        if (HasFatalFailure()) return;
    }
}

}  // namespace
