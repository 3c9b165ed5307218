// csv_number.h -- the fields of a CSV text as numbers.
//
// Form     blanks (space, tab, vertical tab, form feed), a sign, digits with or without a point, an exponent: as many bytes
//          of it as there are; what follows is ignored. "12 km/h" is 12, "-.5" is -0.5, "1e3" is 1000. Also "0x1A" and
//          "0x1.8p2", "inf", "infinity" and "nan" in small or capital letters. Anything else, and an empty field, is 0.
//          The decimal sign is a point whatever the system's settings say.
// Value    the double next to the number, as atof gives it. Most fields are up to eight bytes of digits and a point: they
//          are turned into one integer at once, and one division by a power of ten, which is exact, rounds correctly.
#pragma once
#include <bit>
#include <cstring>

#include "run_data/csv_text.h"

// 10^0 to 10^22: the powers of ten that a double holds exactly.
extern const double exactPowerOfTen[23];

// A decimal of up to eight bytes. `digits` stand for digits / 10^decimals.
struct ShortDecimal {
    uint32_t digits;
    int decimals;  // 0 to 7
    bool negative;
};

// The number of eight digits, values 0 to 9, the first one in the lowest byte.
inline uint32_t EightDigits(uint64_t digits) {
    digits = digits * 10 + (digits >> 8);  // pairs, in every second byte
    const uint64_t pairs = 0x000000FF000000FF;
    return static_cast<uint32_t>(((digits & pairs) * 0x000F424000000064 + (digits >> 16 & pairs) * 0x0000271000000001) >> 32);
}

inline bool AllDigits(uint64_t text) {
    const uint64_t high = 0xF0F0F0F0F0F0F0F0;
    return ((text & high) | ((text + 0x0606060606060606) & high) >> 4) == 0x3333333333333333;
}

// False for any other form.
inline bool ReadShortDecimal(CsvField field, ShortDecimal& number) {
    static constexpr uint64_t zeros[9] = {0, 0x30303030303030, 0x303030303030, 0x3030303030, 0x30303030, 0x303030, 0x3030, 0x30, 0};
    if constexpr (std::endian::native != std::endian::little) return false;
    number.negative = field.text[0] == '-';
    const int length = field.length - number.negative;
    if (length < 1 || length > 8) return false;
    uint64_t text;
    std::memcpy(&text, field.text + number.negative, 8);
    // The text's last byte goes to the top, zeros stand before its first.
    text = text << 8 * (8 - length) | zeros[length];
    const uint64_t difference = text ^ 0x2E2E2E2E2E2E2E2E;
    const uint64_t point = (difference - 0x0101010101010101) & ~difference & 0x8080808080808080;  // its lowest bit is the point's
    number.decimals = 0;
    if (point != 0) {
        const int at = std::countr_zero(point) - 7;  // bits before the point
        const uint64_t fromPoint = ~uint64_t{0} << at, behind = fromPoint << 8;
        number.decimals = 7 - at / 8;
        text = (text & behind) | (text & ~fromPoint) << 8 | '0';
    }
    if (!AllDigits(text)) return false;
    number.digits = EightDigits(text - 0x3030303030303030);
    return true;
}

// Any form.
double ReadAnyNumber(CsvField field);
// The whole number that the field begins with, as atoi reads it: blanks, sign, digits; held inside 32 bits.
int ReadAnyInteger(CsvField field);

inline double NumberOf(const ShortDecimal& number) {
    const double value = static_cast<double>(number.digits) / exactPowerOfTen[number.decimals];
    return number.negative ? -value : value;
}
// The number's value.
inline double FieldNumber(CsvField field) {
    ShortDecimal number;
    return ReadShortDecimal(field, number) ? NumberOf(number) : ReadAnyNumber(field);
}
