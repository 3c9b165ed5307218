#include "run_data/transpose_frames.h"

#include "run_data/byte_order.h"
#include "run_data/log_header.h"

void TransposeFramesPlain(const uint8_t* frames, uint16_t (&words)[frameWords][blockCells]) {
    for (int c = lead; c < blockCells; c++, frames += frameSize)
        for (int k = 0; k < frameWords; k++) words[k][c] = ReadU16Be(frames + 2 * k);
}

#ifdef __SSE2__
#include <emmintrin.h>

#include "run_data/deal_words.h"

static __m128i SwapBytes(__m128i words) { return _mm_or_si128(_mm_slli_epi16(words, 8), _mm_srli_epi16(words, 8)); }

static void TransposeEight(const __m128i* frames, uint16_t (&words)[frameWords][blockCells], int cell) {
    __m128i square[frameWords];
#pragma GCC unroll 8
    for (int i = 0; i < 8; i++) square[i] = _mm_loadu_si128(frames + i);
    DealWords(square);
#pragma GCC unroll 8
    for (int k = 0; k < frameWords; k++) _mm_store_si128(reinterpret_cast<__m128i*>(words[k] + cell), SwapBytes(square[k]));
}

void TransposeFrames(const uint8_t* frames, uint16_t (&words)[frameWords][blockCells]) {
    for (int c = lead; c < blockCells; c += 8, frames += 8 * frameSize) {
        TransposeEight(reinterpret_cast<const __m128i*>(frames), words, c);
    }
}
#else
void TransposeFrames(const uint8_t* frames, uint16_t (&words)[frameWords][blockCells]) { TransposeFramesPlain(frames, words); }
#endif
