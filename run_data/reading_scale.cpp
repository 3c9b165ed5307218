// A division by a constant is a multiplication with its reciprocal, a little too large, and a truncation. With n / d a whole
// number the product is that or above it by far less than 1; with none, n / d keeps away from the next number by 1 / d at
// least, and the product is too large by n / d x 2^-21 at most (doubles: 2^-46), which is less while n is below 2^21 (2^46).
// For floats n has to be a whole multiple of the factor, so that nothing is rounded before the multiplication.
#include "run_data/reading_scale.h"

#include <cmath>
#include <cstdlib>

#include "run_data/look_up.h"

static bool FitsFloats(const ReadingScale& scale, int highest) {
    if (scale.factor == 0) return scale.addend == 0;
    return scale.addend % scale.factor == 0 && std::abs(scale.factor) * highest + std::abs(scale.addend) < 1 << 21;
}

void MakeReady(CellScale& ready, const ReadingScale& scale, int highest) {
    ready.way = FitsFloats(scale, highest) ? CellScale::floats : highest < tableReadings ? CellScale::table : CellScale::doubles;
    ready.shift = scale.factor == 0 ? 0 : static_cast<double>(scale.addend) / static_cast<double>(scale.factor);
    ready.slope = static_cast<double>(scale.factor) / scale.divisor * (1 + (ready.way == CellScale::floats ? 0x1p-22 : 0x1p-47));
    ready.base = scale.base;
    ready.hundredths = scale.hundredths;
    if (ready.way != CellScale::table) return;
    for (int reading = 0; reading < tableReadings; reading++) ready.values[reading] = Scaled(scale, reading);
}

template <class Real, class Reading, class Cell>
static void ScaleLoop(const CellScale& scale, const Reading* __restrict readings, Cell* __restrict cells) {
    const Real shift = static_cast<Real>(scale.shift), slope = static_cast<Real>(scale.slope);
    const int base = scale.base;
    for (int c = lead; c < blockCells; c++)
        cells[c] = static_cast<Cell>(static_cast<int>((static_cast<int>(readings[c]) + shift) * slope) + base);
}

static void DivideBy100(int32_t* cells) {
    for (int c = lead; c < blockCells; c++) cells[c] = static_cast<int>(cells[c] * (0.01 * (1 + 0x1p-47)));
}

void ScaleCells(const CellScale& scale, const uint16_t* readings, int32_t* cells) {
    switch (scale.way) {
        case CellScale::floats: ScaleLoop<float>(scale, readings, cells); break;
        case CellScale::doubles: ScaleLoop<double>(scale, readings, cells); break;
        case CellScale::table: return LookUp(readings, scale.values, cells);
    }
    if (scale.hundredths) DivideBy100(cells);
}

template <class Cell>
static void ScaleTo16Bits(const CellScale& scale, const uint16_t* readings, Cell* cells) {
    switch (scale.way) {
        case CellScale::floats: return ScaleLoop<float>(scale, readings, cells);
        case CellScale::doubles: return ScaleLoop<double>(scale, readings, cells);
        case CellScale::table: return LookUpLow16(readings, scale.values, cells);
    }
}
void ScaleCells(const CellScale& scale, const uint16_t* readings, int16_t* cells) { ScaleTo16Bits(scale, readings, cells); }
void ScaleCells(const CellScale& scale, const uint16_t* readings, uint16_t* cells) { ScaleTo16Bits(scale, readings, cells); }

void ScaleCells(const CellScale& scale, const int16_t* readings, uint16_t* cells) {
    if (scale.way == CellScale::floats) ScaleLoop<float>(scale, readings, cells);
    else ScaleLoop<double>(scale, readings, cells);
}
