// number_text.h -- numbers as decimal text: byte for byte what printf writes, many times faster.
//
// Each function writes at `to`, which has room for longestNumber bytes, and returns what follows the last byte. No zero is
// written behind it.
#pragma once
#include <cstdint>

constexpr int longestNumber = 24;

char* PutInt(char* to, int64_t value);              // "%d"
char* PutTenths(char* to, int32_t count);           // "%.1f" of count * 0.1
char* PutHundredths(char* to, int32_t count);       // "%.1f" of count * 0.01: rounded as that double is
char* PutThousandths(char* to, int64_t count);      // "%.3f" of count * 0.001, up to 2^40
char* PutOneDecimal(char* to, float value);         // "%.1f", up to +-1e8
