// Numbers as text: the bytes of printf.
#include "analysis/number_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <random>
#include <string>

namespace {

template <class Put, class Value>
std::string Text(Put put, Value value) {
    char text[longestNumber];
    return {text, put(text, value)};
}
template <class Value>
std::string Printed(const char* format, Value value) {
    char text[64];
    return {text, static_cast<size_t>(std::snprintf(text, sizeof text, format, value))};
}

// Every count near 0, those around the limits, and random ones of all magnitudes.
template <class Check>
void ForCounts(Check check) {
    for (int count = -70000; count <= 70000; count++) check(count);
    for (const int count : {INT32_MAX, INT32_MAX - 2, INT32_MIN, INT32_MIN + 3}) check(count);
    std::mt19937 random(1);
    for (int i = 0; i < 300000; i++) check(static_cast<int32_t>(random()) >> random() % 30);
}

TEST(NumberText, WholeNumbersAreThoseOfPrintf) {
    ForCounts([](int count) { ASSERT_EQ(Text(PutInt, count), Printed("%d", count)); });
}

TEST(NumberText, TenthsAreThoseOfPrintf) {
    ForCounts([](int count) { ASSERT_EQ(Text(PutTenths, count), Printed("%.1f", count * 0.1)) << count; });
}

TEST(NumberText, HundredthsAreRoundedAsTheirDoubleIs) {
    ForCounts([](int count) { ASSERT_EQ(Text(PutHundredths, count), Printed("%.1f", count * 0.01)) << count; });
    // The middle between two tenths goes wherever the double lies, or to the even neighbour.
    EXPECT_EQ(Text(PutHundredths, 5), "0.1");
    EXPECT_EQ(Text(PutHundredths, 25), "0.2");
    EXPECT_EQ(Text(PutHundredths, 35), "0.4");
    EXPECT_EQ(Text(PutHundredths, -4), "-0.0");
}

TEST(NumberText, MiddleHundredthsOfEverySizeAreThoseOfPrintf) {
    std::mt19937 random(2);
    for (int i = 0; i < 1000000; i++) {
        const int count = static_cast<int>(random() % 214748364) * 10 + 5;
        ASSERT_EQ(Text(PutHundredths, count), Printed("%.1f", count * 0.01)) << count;
    }
}

TEST(NumberText, TimesAreThoseOfPrintf) {
    for (int counter = 0; counter < 200000; counter++)
        ASSERT_EQ(Text(PutThousandths, int64_t{counter} * 5), Printed("%.3f", counter * 0.005));
    for (int counter = 1; counter > 0 && counter < 2000000000; counter += 7919333)
        ASSERT_EQ(Text(PutThousandths, int64_t{counter} * 5), Printed("%.3f", counter * 0.005));
    EXPECT_EQ(Text(PutThousandths, -5), "-0.005");
}

TEST(NumberText, FloatsAreThoseOfPrintf) {
    std::mt19937 random(3);
    for (int i = 0; i < 500000; i++) {
        const int front = 51 + static_cast<int>(random() % 65000), rear = static_cast<int>(random() % 65536);
        const float slip = static_cast<float>((rear - front) * 1000) / static_cast<float>(front);
        ASSERT_EQ(Text(static_cast<char* (*)(char*, float)>(PutOneDecimal), slip), Printed("%.1f", slip)) << front << " " << rear;
    }
    const auto put = static_cast<char* (*)(char*, float)>(PutOneDecimal);
    for (const float value : {0.0f, -0.0f, 0.25f, 0.75f, -0.25f, -0.04f, 0.05f, 99999.95f, 12345678.0f})
        EXPECT_EQ(Text(put, value), Printed("%.1f", value)) << value;
}

}  // namespace
