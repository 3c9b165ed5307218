// secondary_stream.h -- the variable-length codes of a .qtw log, from the highest bit of each byte down.
//
//   ONES IN FRONT  BITS  VALUE, with u the low bits named
//   0                 1  0
//   1, 2              4  u of 3 bits: u / 2 + 1, negative when u is odd
//   3 to 6            8  u of 5 bits: u / 2 + 4, likewise
//   7 to 14          16  u of 9 bits: u / 2 + 19, likewise
//   15 to 29         31  the low 16 bits, the value itself
//   30 or 31         31  filler, no code at all
// All but the 31 bit values are changes since the channel's last value.
#pragma once
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>

struct CodeStream {
    const uint8_t* next;    // first byte that is not yet wholly in the window
    uint64_t       window;  // the next bits at the top; below `held` of them there may be more
    int            held;    // bits that count
    int64_t        left;    // bits until the end; codes begin before it
};
struct StreamCode {
    int  value;
    bool absolute;  // the value itself, not a change
};

// Codes of up to 8 bits by their first 8 bits; no bits for longer ones.
struct ShortCode {
    int8_t value;
    int8_t bits;
};
extern const std::array<ShortCode, 256> shortCodes;

// From `bit` on, counted from the first byte's highest one, up to the bit `end`. 16 bytes behind the end are readable.
CodeStream StartStream(const uint8_t* bytes, int64_t bit, int64_t end);
// The code longer than 8 bits at the top of a window. `bits` is its length, `filler` that it is none.
struct LongCode {
    StreamCode code;
    int        bits;
    bool       filler;
};
LongCode ReadLongCode(uint64_t window);

inline uint64_t ReadU64Be(const uint8_t* bytes) {
    uint64_t value;
    std::memcpy(&value, bytes, sizeof value);
    return std::endian::native == std::endian::little ? __builtin_bswap64(value) : value;
}

inline void TakeBits(CodeStream& stream, int bits) {
    stream.window <<= bits;
    stream.held -= bits;
    stream.left -= bits;
}

// Takes the next code and skips filler. False at the end. Inline, so that a decoder's loop holds the stream in registers.
inline bool NextCode(CodeStream& stream, StreamCode& code) {
    while (stream.left > 0) {
        if (stream.held < 31) {  // the longest code
            stream.window |= ReadU64Be(stream.next) >> stream.held;
            const int bytes = (63 - stream.held) >> 3;
            stream.next += bytes;
            stream.held += 8 * bytes;
        }
        const ShortCode brief = shortCodes[stream.window >> 56];
        if (brief.bits > 0) [[likely]] {
            code = {brief.value, false};
            TakeBits(stream, brief.bits);
            return true;
        }
        const LongCode found = ReadLongCode(stream.window);
        code = found.code;
        TakeBits(stream, found.bits);
        if (!found.filler) return true;
    }
    return false;
}
