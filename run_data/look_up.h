// look_up.h -- a block of table values into memory, several with one store: single stores would be what takes the time.
#pragma once
#include <cstdint>
#include <cstring>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

#include "run_data/native_block.h"

#ifdef __SSE2__
// The number at p as the first of four, by one load.
inline __m128i FirstOfFour(const int32_t* p) {
    float bits;
    std::memcpy(&bits, p, sizeof bits);
    return _mm_castps_si128(_mm_set_ss(bits));
}
inline __m128i FourOf(const int32_t* a, const int32_t* b, const int32_t* c, const int32_t* d) {
    return _mm_unpacklo_epi64(_mm_unpacklo_epi32(FirstOfFour(a), FirstOfFour(b)), _mm_unpacklo_epi32(FirstOfFour(c), FirstOfFour(d)));
}
// Calls put(c, the values of indices c to c + 3) for all cells of a block.
template <class Index, class Put>
inline void ForEachFourValues(const Index* indices, const int32_t* table, Put put) {
#pragma GCC unroll 2
    for (int c = lead; c < blockCells; c += 4) {
        auto at = [&](int i) { return table + indices[c + i]; };
        put(c, FourOf(at(0), at(1), at(2), at(3)));
    }
}
#endif

// cells[c] = table[indices[c]] for all cells of a block. Both may be the same.
template <class Index>
inline void LookUp(const Index* indices, const int32_t* table, int32_t* cells) {
#ifdef __SSE2__
    ForEachFourValues(indices, table, [=](int c, __m128i four) { _mm_store_si128(reinterpret_cast<__m128i*>(cells + c), four); });
#else
    for (int c = lead; c < blockCells; c++) cells[c] = table[indices[c]];
#endif
}

// The same for cells of 16 bits, signed or not: they take the low ones.
template <class Cell>
inline void LookUpLow16(const uint16_t* indices, const int32_t* table, Cell* cells) {
    static_assert(sizeof(Cell) == 2);
#ifdef __SSE2__
    for (int c = lead; c < blockCells; c += 8) {
        auto at = [&](int i) { return static_cast<short>(table[indices[c + i]]); };
        _mm_store_si128(reinterpret_cast<__m128i*>(cells + c), _mm_set_epi16(at(7), at(6), at(5), at(4), at(3), at(2), at(1), at(0)));
    }
#else
    for (int c = lead; c < blockCells; c++) cells[c] = static_cast<Cell>(table[indices[c]]);
#endif
}
