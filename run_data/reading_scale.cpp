// A division by a constant is a multiplication with its reciprocal, a little too large, and a truncation. With n / d a whole
// number the product is that or above it by far less than 1; with none, n / d keeps away from the next number by 1 / d at
// least, and the product is too large by n / d x 2^-21 at most (doubles: 2^-46), which is less while n is below 2^21 (2^46).
// For floats n has to be a whole multiple of the factor, so that nothing is rounded before the multiplication. For doubles it
// may have a rounding term besides: what reading and shift together lose, 2^-53 of a shift below divisor / factor, is less than
// the 2^-47 that the product is too large by, wherever the quotient is not 0 anyway.
#include "run_data/reading_scale.h"

#include <algorithm>
#include <cstdlib>
#include <vector>

#include "run_data/fixed_point.h"
#include "run_data/look_up.h"
#include "run_data/stream_copy.h"

static bool FitsFloats(const ReadingScale& scale, int highest) {
    if (scale.factor == 0) return scale.addend == 0;
    return scale.addend % scale.factor == 0 && std::abs(scale.factor) * highest + std::abs(scale.addend) < 1 << 21;
}

// The same quotient of a scale in two parts: each reading a whole number of times, and a remainder that is smaller.
struct SplitScale {
    int64_t whole;
    ReadingScale rest;
};
static SplitScale Split(const ReadingScale& scale) {
    const int64_t whole = scale.factor / scale.divisor, shift = scale.factor == 0 ? 0 : scale.addend / scale.factor;
    const int64_t factor = scale.factor % scale.divisor;
    return {whole, {factor, shift * factor, scale.divisor, static_cast<int>(scale.base + shift * whole)}};
}

void FindDistinct(CellScale& ready, int highest) {
    std::vector<int32_t> values(ready.values, ready.values + highest + 1);
    std::sort(values.begin(), values.end());
    ready.distinct = std::adjacent_find(values.begin(), values.end()) == values.end();
}

static void SetSlope(CellScale& ready, const ReadingScale& scale, double tooLarge) {
    ready.shift = scale.factor == 0 ? 0 : static_cast<double>(scale.addend) / static_cast<double>(scale.factor);
    ready.slope = static_cast<double>(scale.factor) / scale.divisor * (1 + tooLarge);
    ready.base = scale.base;
}

static void MakeTable(CellScale& ready, const ReadingScale& scale, int highest) {
    for (int reading = 0; reading < tableReadings; reading++) ready.values[reading] = Scaled(scale, reading);
    FindDistinct(ready, highest);
}

void MakeReady(CellScale& ready, const ReadingScale& scale, int highest) {
    constexpr double aboveFloats = 0x1p-22, aboveDoubles = 0x1p-47;
    const bool hasTable = highest < tableReadings;
    ready.hundredths = scale.hundredths;
    ready.distinct = false;
    ready.whole = 0;
    if (hasTable) MakeTable(ready, scale, highest);
    if (FitsFloats(scale, highest)) {
        ready.way = CellScale::floats;
        return SetSlope(ready, scale, aboveFloats);
    }
    ready.way = hasTable ? CellScale::table : CellScale::doubles;
    SetSlope(ready, scale, aboveDoubles);
    if (!hasTable || scale.factor == 0 || scale.addend % scale.factor != 0) return;
    const SplitScale split = Split(scale);
    if (!FitsFloats(split.rest, highest) || split.whole != Wrap16(split.whole)) return;
    ready.whole = Wrap16(split.whole);
    SetSlope(ready, split.rest, aboveFloats);
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
static void ScaleSplit(const CellScale& scale, const uint16_t* __restrict readings, Cell* __restrict cells) {
    const float shift = static_cast<float>(scale.shift), slope = static_cast<float>(scale.slope);
    const uint16_t base = static_cast<uint16_t>(scale.base), whole = static_cast<uint16_t>(scale.whole);
    for (int c = lead; c < blockCells; c++) {
        const uint16_t rest = static_cast<uint16_t>(static_cast<int>((static_cast<int>(readings[c]) + shift) * slope));
        const uint16_t wholes = static_cast<uint16_t>(unsigned{readings[c]} * whole);
        cells[c] = static_cast<Cell>(static_cast<uint16_t>(rest + wholes + base));
    }
}

template <class Cell>
static void ScaleTo16Bits(const CellScale& scale, const uint16_t* readings, Cell* cells) {
    switch (scale.way) {
        case CellScale::floats: return ScaleLoop<float>(scale, readings, cells);
        case CellScale::doubles: return ScaleLoop<double>(scale, readings, cells);
        case CellScale::table:
            if (scale.whole != 0) return ScaleSplit(scale, readings, cells);
            return LookUpLow16(readings, scale.values, cells);
    }
}
void ScaleCells(const CellScale& scale, const uint16_t* readings, int16_t* cells) { ScaleTo16Bits(scale, readings, cells); }
void ScaleCells(const CellScale& scale, const uint16_t* readings, uint16_t* cells) { ScaleTo16Bits(scale, readings, cells); }

void ScaleCells(const CellScale& scale, const int16_t* readings, uint16_t* cells) {
    if (scale.way == CellScale::floats) ScaleLoop<float>(scale, readings, cells);
    else ScaleLoop<double>(scale, readings, cells);
}

#ifdef __SSE2__
// Values of four readings as ScaleLoop has them.
static __m128i ScaleFour(__m128i readings, __m128 shift, __m128 slope, __m128i base) {
    const __m128 value = _mm_mul_ps(_mm_add_ps(_mm_cvtepi32_ps(readings), shift), slope);
    return _mm_add_epi32(_mm_cvttps_epi32(value), base);
}

static void StreamFloats(const CellScale& scale, const uint16_t* readings, int32_t* array) {
    const __m128 shift = _mm_set1_ps(static_cast<float>(scale.shift)), slope = _mm_set1_ps(static_cast<float>(scale.slope));
    const __m128i base = _mm_set1_epi32(scale.base), zero = _mm_setzero_si128();
    __m128i* out = reinterpret_cast<__m128i*>(array);
    for (int c = lead; c < blockCells; c += 8, out += 2) {
        const __m128i eight = _mm_load_si128(reinterpret_cast<const __m128i*>(readings + c));
        _mm_stream_si128(out, ScaleFour(_mm_unpacklo_epi16(eight, zero), shift, slope, base));
        _mm_stream_si128(out + 1, ScaleFour(_mm_unpackhi_epi16(eight, zero), shift, slope, base));
    }
}

static void StreamTable(const int32_t* table, const uint16_t* readings, int32_t* array) {
    ForEachFourValues(readings, table, [=](int c, __m128i four) {
        _mm_stream_si128(reinterpret_cast<__m128i*>(array + c - lead), four);
    });
}
#endif

void StreamScaled(const CellScale& scale, const uint16_t* readings, int32_t* array) {
#ifdef __SSE2__
    if (scale.way == CellScale::floats && !scale.hundredths) return StreamFloats(scale, readings, array);
    if (scale.way == CellScale::table) return StreamTable(scale.values, readings, array);
#endif
    alignas(16) int32_t cells[blockCells];
    ScaleCells(scale, readings, cells);
    StreamCopy(array, cells + lead, blockSize * sizeof cells[0]);
}
