// shift_jis_table.h -- the double-byte characters of code page 932, made by tools/shift_jis_table.py.
#pragma once
#include <cstdint>

constexpr int shiftJisTrails = 188;  // trail bytes 0x40 to 0x7E and 0x80 to 0xFC

struct ShiftJisRow {
    uint8_t lead;
    char16_t characters[shiftJisTrails + 1];  // U+30FB where there is none
};
extern const ShiftJisRow shiftJisRows[];  // rising by lead byte
extern const int shiftJisRowCount;
