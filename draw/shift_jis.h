// shift_jis.h -- characters of code page 932 as UTF-16, one at a time.
#pragma once
#include <cstdint>

// Reads one character of `bytes` (count at hand, 1 or more): how many bytes it takes, 1 or 2, and its code unit. An
// invalid or cut-off lead byte takes 1 and gives U+30FB. 0x5C stays a backslash.
int DecodeShiftJis(const char* bytes, int count, char16_t* unicode);
