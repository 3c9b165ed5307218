// look_up.h -- a block of table values into memory, several with one store: single stores would be what takes the time.
#pragma once
#include <cstdint>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

#include "run_data/native_block.h"

// cells[c] = value(c) for all cells of a block. cells are those of a SampleBlock.
template <class Value>
inline void FillCells(int32_t* cells, Value value) {
#ifdef __SSE2__
#pragma GCC unroll 2
    for (int c = lead; c < blockCells; c += 4)
        _mm_store_si128(reinterpret_cast<__m128i*>(cells + c), _mm_set_epi32(value(c + 3), value(c + 2), value(c + 1), value(c)));
#else
    for (int c = lead; c < blockCells; c++) cells[c] = value(c);
#endif
}

// The same for values of 16 bits, signed or not.
template <class Cell, class Value>
inline void FillCells16(Cell* cells, Value value) {
    static_assert(sizeof(Cell) == 2);
#ifdef __SSE2__
    for (int c = lead; c < blockCells; c += 8) {
        auto at = [&](int i) { return static_cast<short>(value(c + i)); };
        _mm_store_si128(reinterpret_cast<__m128i*>(cells + c), _mm_set_epi16(at(7), at(6), at(5), at(4), at(3), at(2), at(1), at(0)));
    }
#else
    for (int c = lead; c < blockCells; c++) cells[c] = static_cast<Cell>(value(c));
#endif
}
