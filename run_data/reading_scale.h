// reading_scale.h -- from a sensor's reading to its stored value: one division, many readings at a time.
#pragma once
#include <cstdint>

#include "run_data/native_block.h"

// (reading x factor + addend) / divisor + base; with `hundredths` all of that / 100. Divisions truncate toward zero.
// Readings have 16 bits, signed or not; |reading x factor + addend| stays below 2^45, the quotient below 2^31, divisor is not 0.
// addend is a whole multiple of factor, or a rounding term from 0 to divisor - 1; with factor 0 it is 0.
struct ReadingScale {
    int64_t factor = 1, addend = 0;
    int     divisor = 1;
    int     base = 0;
    bool    hundredths = false;
};

constexpr int32_t Scaled(const ReadingScale& scale, int reading) {
    int64_t value = (reading * scale.factor + scale.addend) / scale.divisor + scale.base;
    return static_cast<int32_t>(scale.hundredths ? value / 100 : value);
}

constexpr int tableReadings = 1024;

// A scale made ready: floats where they are exact, a table where readings are few, and doubles, which are exact for all scales. Cells of
// 16 bits can do without the table where floats are exact for what a whole number of times each reading leaves over.
struct CellScale {
    enum Way { floats, doubles, table } way;
    double  shift, slope;  // value: (reading + shift) x slope, truncated, + reading x whole + base
    int     base;
    int16_t whole;         // for cells of 16 bits only, beside a table
    bool    hundredths;
    bool    distinct;      // no two readings have the same value; of readings that have a table only
    int32_t values[tableReadings];
};
// For readings whose largest magnitude is `highest`.
void MakeReady(CellScale& ready, const ReadingScale& scale, int highest);
// Sets ready.distinct anew, for a table whose values were changed.
void FindDistinct(CellScale& ready, int highest);

// cells[c] = Scaled(scale, readings[c]) for all cells of a block, to the bit. No cell may have a reading above `highest`, in use
// or not. Values of 16 bits wrap, and have no hundredths.
void ScaleCells(const CellScale& scale, const uint16_t* readings, int32_t* cells);
void ScaleCells(const CellScale& scale, const uint16_t* readings, int16_t* cells);
void ScaleCells(const CellScale& scale, const uint16_t* readings, uint16_t* cells);
// Of signed readings; there is no table for them.
void ScaleCells(const CellScale& scale, const int16_t* readings, uint16_t* cells);
// The same straight into memory, past the caches: `array` is that of the first cell, and a multiple of 16.
void StreamScaled(const CellScale& scale, const uint16_t* readings, int32_t* array);
