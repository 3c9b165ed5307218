// typed_number.h -- numbers as a user types them into a field of a dialog.
#pragma once
#include <cmath>
#include <cstdlib>

#include "run_data/fixed_point.h"

// Decimal with an optional sign and fraction, whatever the system's own decimal sign; what follows is ignored; without
// digits 0.
inline double TypedNumber(const char* text) {
    while (*text == ' ' || *text == '\t') text++;
    const bool negative = *text == '-';
    if (*text == '-' || *text == '+') text++;
    double digits = 0, unit = 1;  // exact for the 15 digits that a number of the program never has
    for (; *text >= '0' && *text <= '9'; text++) digits = digits * 10 + (*text - '0');
    if (*text == '.')
        for (text++; *text >= '0' && *text <= '9' && unit < 1e9; text++, unit *= 10) digits = digits * 10 + (*text - '0');
    const double number = digits / unit;
    return negative ? -number : number;
}

// typed x scale, cut to a whole number as its decimal digits say: 2.3 x 100 is 230, though the product of the two doubles
// lies just below.
inline int CutProduct(double typed, double scale) { return TruncToInt(typed * scale + std::copysign(1e-6, typed)); }
