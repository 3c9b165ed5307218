// deal_words.h -- rows of 16 bit words in vectors to columns. Only where there is SSE2.
#pragma once
#include <emmintrin.h>

// Deals the upper half of the rows in between the lower half, word by word.
template <int rows>
inline void Interleave(const __m128i (&in)[rows], __m128i (&out)[rows]) {
#pragma GCC unroll 4
    for (int i = 0; i < rows / 2; i++) {
        out[2 * i] = _mm_unpacklo_epi16(in[i], in[i + rows / 2]);
        out[2 * i + 1] = _mm_unpackhi_epi16(in[i], in[i + rows / 2]);
    }
}

// Eight rows of `columns` words, one after the other in memory, become `columns` vectors of eight: three times interleaved, rows have
// become columns.
template <int columns>
inline void DealWords(__m128i (&words)[columns]) {
    __m128i dealt[columns];
    Interleave(words, dealt);
    Interleave(dealt, words);
    Interleave(words, dealt);
#pragma GCC unroll 8
    for (int k = 0; k < columns; k++) words[k] = dealt[k];
}
