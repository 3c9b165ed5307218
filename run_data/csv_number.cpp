#include "run_data/csv_number.h"

#include <charconv>
#include <limits>

#include "run_data/fixed_point.h"

const double exactPowerOfTen[23] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                    1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

static bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// Cuts blanks and a sign off the front.
static bool TakeSign(const char*& at, const char* end) {
    while (at < end && (*at == ' ' || *at == '\t' || *at == '\v' || *at == '\f')) at++;
    const bool negative = at < end && *at == '-';
    if (at < end && (*at == '-' || *at == '+')) at++;
    return negative;
}

// Digits and a point whose digits are an integer below 2^53, with at most 22 decimals, and no exponent. False for others.
static bool ReadExactDecimal(const char* at, const char* end, double& value) {
    constexpr uint64_t exactLimit = uint64_t{1} << 53;
    uint64_t digits = 0;
    int decimals = 0, seen = 0;
    bool point = false;
    for (; at < end; at++) {
        if (*at == '.' && !point) {
            point = true;
            continue;
        }
        if (!IsDigit(*at)) break;
        digits = digits * 10 + static_cast<uint64_t>(*at - '0');
        seen++;
        decimals += point;
        if (digits >= exactLimit || decimals > 22) return false;
    }
    const bool more = at < end && ((*at | 32) == 'e' || (*at | 32) == 'x');  // an exponent, or a hexadecimal number
    if (seen == 0 || more) return false;
    value = static_cast<double>(digits) / exactPowerOfTen[decimals];
    return true;
}

// Where a hexadecimal number ends: an exponent without digits behind its sign is none. The library reads on at a second sign.
static const char* EndOfHexadecimal(const char* at, const char* end) {
    while (at < end && (*at | 32) != 'p') at++;
    if (at == end) return end;
    const char* digits = at + 1;
    if (digits < end && (*digits == '-' || *digits == '+')) digits++;
    return digits < end && IsDigit(*digits) ? end : at;
}

// Behind blanks and sign: whatever the library reads.
static double ReadByLibrary(const char* at, const char* end) {
    const bool hexadecimal = end - at > 2 && at[0] == '0' && (at[1] | 32) == 'x';
    if (hexadecimal) at += 2;
    if (hexadecimal && ((*at | 32) == 'i' || (*at | 32) == 'n')) return 0;  // "0xinf" and "0xnan" are the 0 alone
    if (hexadecimal) end = EndOfHexadecimal(at, end);
    if (at < end && (*at == '-' || *at == '+')) return 0;  // a second sign
    double value = 0;
    const auto result = std::from_chars(at, end, value, hexadecimal ? std::chars_format::hex : std::chars_format::general);
    if (result.ec == std::errc::invalid_argument) return 0;
    if (result.ec != std::errc::result_out_of_range) return value;
    // Too large, or too close to 0: the exponent tells, or the digits do where there is none.
    const char* exponent = at;
    while (exponent < result.ptr && (*exponent | 32) != (hexadecimal ? 'p' : 'e')) exponent++;
    const bool small = exponent + 1 < result.ptr && exponent[1] == '-';
    return small ? 0 : std::numeric_limits<double>::infinity();
}

double ReadAnyNumber(CsvField field) {
    const char *at = field.text, *end = at + field.length;
    const bool negative = TakeSign(at, end);
    double value;
    if (!ReadExactDecimal(at, end, value)) value = ReadByLibrary(at, end);
    return negative ? -value : value;
}

int ReadAnyInteger(CsvField field) {
    const char *at = field.text, *end = at + field.length;
    const bool negative = TakeSign(at, end);
    int64_t value = 0;
    for (; at < end && IsDigit(*at) && value <= INT32_MAX; at++) value = value * 10 + (*at - '0');
    return Saturate32(negative ? -value : value);
}
