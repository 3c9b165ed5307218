// numbers.h -- rounding, printing and storing of whole numbers, alike everywhere.
#pragma once
#include <cstdint>
#include <string>
#include <vector>

// The quotient rounded to the nearest whole number, halves upward; the divisor is above 0.
constexpr int64_t Nearest(int64_t dividend, int64_t divisor) {
    const int64_t twice = 2 * dividend + divisor;
    return twice >= 0 ? twice / (2 * divisor) : -((2 * divisor - 1 - twice) / (2 * divisor));
}

// Appends value / 10^decimals as text. Printing a double would leave its last digit to the library.
inline void AppendDecimal(std::string& text, int64_t value, int decimals) {
    char digits[24];
    char* p = digits + sizeof digits;
    uint64_t rest = value < 0 ? 0 - static_cast<uint64_t>(value) : static_cast<uint64_t>(value);
    for (int k = 0; k <= decimals || rest != 0; k++, rest /= 10) {
        if (k == decimals && k != 0) *--p = '.';
        *--p = static_cast<char>('0' + rest % 10);
    }
    if (value < 0) *--p = '-';
    text.append(p, digits + sizeof digits);
}

// Stores two bytes, the high one first.
inline void Put16(std::vector<uint8_t>& bytes, int at, int value) {
    bytes[at] = static_cast<uint8_t>(value >> 8);
    bytes[at + 1] = static_cast<uint8_t>(value);
}
