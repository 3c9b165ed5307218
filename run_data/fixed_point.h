// fixed_point.h -- helpers that say an integer's width where it matters.
#pragma once
#include <cmath>
#include <cstdint>

// Low 16 bits, signed or unsigned.
constexpr int16_t  Wrap16(int64_t value) { return static_cast<int16_t>(static_cast<uint64_t>(value)); }
constexpr uint16_t WrapU16(int64_t value) { return static_cast<uint16_t>(static_cast<uint64_t>(value)); }
// Low 32 bits, signed.
constexpr int32_t Wrap32(int64_t value) { return static_cast<int32_t>(static_cast<uint64_t>(value)); }
// Held inside 32 bits.
constexpr int32_t Saturate32(int64_t value) {
    return value > INT32_MAX ? INT32_MAX : value < INT32_MIN ? INT32_MIN : static_cast<int32_t>(value);
}
// a x b / c with a 64 bit product, truncated toward zero.
constexpr int MulDiv64(int a, int b, int c) { return static_cast<int>(int64_t{a} * b / c); }

// The one way a floating value becomes an integer, pixels above all: truncated toward zero, held inside 32 bits,
// NaN is 0.
constexpr int TruncToInt(double value) {
    if (!(value == value)) return 0;
    if (value >= 2147483647.0) return 2147483647;
    if (value <= -2147483648.0) return -2147483647 - 1;
    return static_cast<int>(value);
}
