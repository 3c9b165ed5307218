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
#include <cstdint>

struct CodeStream {
    const uint8_t* bytes;  // 8 bytes behind the last bit are readable
    int64_t        bit;    // of the next code, from the first byte's highest one
    int64_t        end;    // codes begin before this bit
};
struct StreamCode {
    int  value;
    bool absolute;  // the value itself, not a change
};

// Takes the next code and skips filler. False at the end.
bool NextCode(CodeStream& stream, StreamCode& code);
