#include "analysis/number_text.h"

#include <charconv>
#include <cmath>

static char* PutDigits(char* to, uint64_t value) { return std::to_chars(to, to + longestNumber, value).ptr; }

char* PutInt(char* to, int64_t value) { return std::to_chars(to, to + longestNumber, value).ptr; }

// A sign stands also before a value that rounds to zero.
static char* PutOneDecimal(char* to, bool negative, uint64_t tenths) {
    if (negative) *to++ = '-';
    to = PutDigits(to, tenths / 10);
    *to++ = '.';
    *to++ = static_cast<char>('0' + tenths % 10);
    return to;
}

static uint64_t Magnitude(int64_t value) { return value < 0 ? -static_cast<uint64_t>(value) : static_cast<uint64_t>(value); }

// The double is nearer to count / 10 than to any other tenth.
char* PutTenths(char* to, int32_t count) { return PutOneDecimal(to, count < 0, Magnitude(count)); }

// Which way count * 0.01 rounds when count ends in 5: the double lies next to the middle between two tenths, and which side
// it is on depends on its last bit. 20 x the double is the sum of two exact products; what the sum loses is exact as well.
static bool RoundsUp(double value, uint64_t tenths) {
    const double large = value * 16, small = value * 4;
    const double sum = large + small, lost = small - (sum - large);
    const double above = sum - static_cast<double>(2 * tenths + 1);
    if (above != 0) return above > 0;
    if (lost != 0) return lost > 0;
    return tenths % 2 != 0;  // exactly in the middle: to the even neighbour
}

char* PutHundredths(char* to, int32_t count) {
    const uint64_t magnitude = Magnitude(count), rest = magnitude % 10;
    uint64_t tenths = magnitude / 10;
    if (rest > 5 || (rest == 5 && RoundsUp(static_cast<double>(magnitude) * 0.01, tenths))) tenths++;
    return PutOneDecimal(to, count < 0, tenths);
}

char* PutThousandths(char* to, int64_t count) {
    const uint64_t magnitude = Magnitude(count);
    if (count < 0) *to++ = '-';
    to = PutDigits(to, magnitude / 1000);
    *to++ = '.';
    *to++ = static_cast<char>('0' + magnitude / 100 % 10);
    *to++ = static_cast<char>('0' + magnitude / 10 % 10);
    *to++ = static_cast<char>('0' + magnitude % 10);
    return to;
}

// Ten times a float is exact in double, and lrint takes a middle to its even neighbour, as printf does.
char* PutOneDecimal(char* to, float value) {
    return PutOneDecimal(to, std::signbit(value), Magnitude(std::lrint(static_cast<double>(value) * 10)));
}
