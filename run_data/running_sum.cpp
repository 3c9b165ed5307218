#include "run_data/running_sum.h"

void RunningSumPlain(const uint16_t* values, uint32_t* sums, int count) {
    uint32_t sum = sums[-1];
    for (int i = 0; i < count; i++) sums[i] = sum += values[i];
}

#ifdef __SSE2__
#include <emmintrin.h>

// The sums of four numbers up to each one.
static __m128i SumFour(__m128i numbers) {
    numbers = _mm_add_epi32(numbers, _mm_slli_si128(numbers, 4));
    return _mm_add_epi32(numbers, _mm_slli_si128(numbers, 8));
}
static __m128i LastOf(__m128i numbers) { return _mm_shuffle_epi32(numbers, 0xFF); }

void RunningSum(const uint16_t* values, uint32_t* sums, int count) {
    const __m128i zero = _mm_setzero_si128();
    __m128i before = _mm_set1_epi32(static_cast<int>(sums[-1]));
    for (int i = 0; i < count; i += 8) {
        const __m128i eight = _mm_load_si128(reinterpret_cast<const __m128i*>(values + i));
        const __m128i low = SumFour(_mm_unpacklo_epi16(eight, zero)), high = SumFour(_mm_unpackhi_epi16(eight, zero));
        const __m128i middle = LastOf(low);
        __m128i* out = reinterpret_cast<__m128i*>(sums + i);
        _mm_store_si128(out, _mm_add_epi32(low, before));
        _mm_store_si128(out + 1, _mm_add_epi32(_mm_add_epi32(high, middle), before));
        before = _mm_add_epi32(before, _mm_add_epi32(middle, LastOf(high)));  // one addition from turn to turn
    }
}
#else
void RunningSum(const uint16_t* values, uint32_t* sums, int count) { RunningSumPlain(values, sums, count); }
#endif
