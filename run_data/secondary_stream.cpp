#include "run_data/secondary_stream.h"

static constexpr int longBits = 31, onesOfMedium = 7, onesOfAbsolute = 15, onesOfFiller = 30;

// A change is twice its size above the least of its length, and 1 more when negative.
static constexpr int Change(int u, int least) { return u % 2 == 0 ? u / 2 + least : -(u / 2) - least; }

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
constinit const std::array<ShortCode, 256> shortCodes = MakeShortCodes();

CodeStream StartStream(const uint8_t* bytes, int64_t bit, int64_t end) {
    CodeStream stream = {bytes + (bit >> 3), 0, 0, end - bit};
    const int inside = static_cast<int>(bit & 7);
    if (inside == 0) return stream;
    stream.window = uint64_t{*stream.next++} << (56 + inside);
    stream.held = 8 - inside;
    return stream;
}

LongCode ReadLongCode(uint64_t window) {
    const int ones = std::countl_one(window);
    if (ones < onesOfAbsolute) return {{Change(static_cast<int>(window >> 48 & 511), 19), false}, 16, false};
    return {{static_cast<int>(window >> (64 - longBits) & 0xffff), true}, longBits, ones >= onesOfFiller};
}
