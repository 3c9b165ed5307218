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
#include "run_data/fixed_point.h"

// 10^0 to 10^22: the powers of ten that a double holds exactly.
extern const double exactPowerOfTen[23];

// A decimal of up to eight bytes. `digits` stand for digits / 10^decimals.
struct ShortDecimal {
    uint32_t digits;
    int decimals;  // 0 to 7
    bool negative, point;
};

// The form of the short decimal before, in the same column: mostly the next one has the same length and its point in the same
// place, and takes half the work.
struct CsvShape {
    int length = -1;              // bytes, sign included; -1 is like no field
    int sign, shift, decimals;    // bytes of the sign; bits that bring the last byte to the top; as in ShortDecimal
    bool point;
    uint64_t expected;            // zero digits and the point
    uint64_t pointMask, before, behind;  // the point, and the digits on its two sides
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
    number.point = point != 0;
    if (number.point) {
        const int at = std::countr_zero(point) - 7;  // bits before the point
        const uint64_t fromPoint = ~uint64_t{0} << at, behind = fromPoint << 8;
        number.decimals = 7 - at / 8;
        text = (text & behind) | (text & ~fromPoint) << 8 | '0';
    }
    if (!AllDigits(text)) return false;
    number.digits = EightDigits(text - 0x3030303030303030);
    return true;
}

inline void RememberShape(CsvField field, const ShortDecimal& number, CsvShape& shape) {
    shape.length = field.length;
    shape.sign = number.negative;
    shape.decimals = number.decimals;
    shape.point = number.point;
    shape.shift = 8 * (8 - field.length + shape.sign);
    const int at = 8 * (7 - number.decimals);
    shape.pointMask = number.point ? uint64_t{0xFF} << at : 0;
    shape.behind = number.point ? ~uint64_t{0} << at << 8 : ~uint64_t{0};
    shape.before = ~(shape.behind | shape.pointMask);
    shape.expected = (0x3030303030303030 << shape.shift & ~shape.pointMask) | (0x2E2E2E2E2E2E2E2E & shape.pointMask);
}

// False for another shape.
inline bool ReadShaped(CsvField field, const CsvShape& shape, ShortDecimal& number) {
    if (field.length != shape.length || (shape.sign && field.text[0] != '-')) return false;
    uint64_t text;
    std::memcpy(&text, field.text + shape.sign, 8);
    text = text << shape.shift ^ shape.expected;
    const uint64_t others = ((text | (text + 0x7676767676767676)) & 0x8080808080808080) | (text & shape.pointMask);
    if (others != 0) return false;
    number = {EightDigits((text & shape.behind) | (text & shape.before) << 8), shape.decimals, shape.sign != 0, shape.point};
    return true;
}

inline bool ReadShortDecimal(CsvField field, CsvShape& shape, ShortDecimal& number) {
    if (ReadShaped(field, shape, number)) return true;
    if (!ReadShortDecimal(field, number)) return false;
    RememberShape(field, number, shape);
    return true;
}

// Any form.
double ReadAnyNumber(CsvField field);
int    ReadAnyInteger(CsvField field);

// The number's value. In a column, `shape` is that of the field before.
inline double FieldNumber(CsvField field, CsvShape& shape) {
    ShortDecimal number;
    if (!ReadShortDecimal(field, shape, number)) return ReadAnyNumber(field);
    const double value = static_cast<double>(number.digits) / exactPowerOfTen[number.decimals];
    return number.negative ? -value : value;
}

// The number x scale / divider, each in double, truncated and held inside 32 bits; NaN is 0. Scale is 1 to 1000.
inline int FieldProduct(CsvField field, CsvShape& shape, double scale, double divider = 1) {
    ShortDecimal number;
    if (!ReadShortDecimal(field, shape, number)) return TruncToInt(ReadAnyNumber(field) * scale / divider);
    double value = static_cast<double>(number.digits) / exactPowerOfTen[number.decimals] * scale;
    if (divider != 1) value /= divider;
    const int64_t cut = static_cast<int64_t>(value);
    return Saturate32(number.negative ? -cut : cut);
}

// The whole number that the field begins with, as atoi reads it: blanks, sign, digits; held inside 32 bits.
inline int FieldInteger(CsvField field, CsvShape& shape) {
    ShortDecimal number;
    if (!ReadShortDecimal(field, shape, number)) return ReadAnyInteger(field);
    const int value = static_cast<int>(static_cast<double>(number.digits) / exactPowerOfTen[number.decimals]);
    return number.negative ? -value : value;
}
