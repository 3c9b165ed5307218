#include "run_data/secondary_stream.h"

#include <array>
#include <bit>

static constexpr int longBits = 31, onesOfMedium = 7, onesOfAbsolute = 15, onesOfFiller = 30;

// A change is twice its size above the least of its length, and 1 more when negative.
static constexpr int Change(int u, int least) { return u % 2 == 0 ? u / 2 + least : -(u / 2) - least; }

// Codes of up to 8 bits by their first 8 bits; no bits for longer ones.
struct ShortCode {
    int8_t value;
    int8_t bits;
};
static constexpr std::array<ShortCode, 256> MakeShortCodes() {
    std::array<ShortCode, 256> codes{};
    for (int first = 0; first < 256; first++) {
        const int ones = std::countl_one(static_cast<uint8_t>(first));
        if (ones == 0) codes[first] = {0, 1};
        else if (ones <= 2) codes[first] = {static_cast<int8_t>(Change(first >> 4 & 7, 1)), 4};
        else if (ones < onesOfMedium) codes[first] = {static_cast<int8_t>(Change(first & 31, 4)), 8};
    }
    return codes;
}
static constexpr std::array<ShortCode, 256> shortCodes = MakeShortCodes();

// The 57 bits or more from `bit` on, at the top.
static uint64_t Window(const uint8_t* bytes, int64_t bit) {
    const uint8_t* at = bytes + (bit >> 3);
    uint64_t window = 0;
    for (int k = 0; k < 8; k++) window = window << 8 | at[k];
    return window << (bit & 7);
}

bool NextCode(CodeStream& stream, StreamCode& code) {
    while (stream.bit < stream.end) {
        const uint64_t window = Window(stream.bytes, stream.bit);
        const ShortCode brief = shortCodes[window >> 56];
        if (brief.bits > 0) {
            stream.bit += brief.bits;
            code = {brief.value, false};
            return true;
        }
        const int ones = std::countl_one(window);
        if (ones < onesOfAbsolute) {
            stream.bit += 16;
            code = {Change(static_cast<int>(window >> 48 & 511), 19), false};
            return true;
        }
        stream.bit += longBits;
        code = {static_cast<int>(window >> (64 - longBits) & 0xffff), true};
        if (ones < onesOfFiller) return true;
    }
    return false;
}
