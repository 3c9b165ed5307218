#include "run_data/sample_loops.h"

#include <algorithm>
#include <iterator>
#include <type_traits>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

template <class T>
static void RunningMeans(const T* around, int half, T* to, int count) {
    int window = 2 * half + 1;
    int64_t sum = 0;
    for (int i = 0; i < window - 1; i++) sum += around[i];
    for (int i = 0; i < count; i++) {
        sum += around[i + window - 1];
        to[i] = static_cast<T>(sum / window);
        sum -= around[i];
    }
}
void MeansPlain(const uint16_t* around, int half, uint16_t* to, int count) { RunningMeans(around, half, to, count); }
void MeansPlain(const int16_t* around, int half, int16_t* to, int count) { RunningMeans(around, half, to, count); }
void MeansPlain(const int32_t* around, int half, int32_t* to, int count) { RunningMeans(around, half, to, count); }

void DoubledDifferencesPlain(const int16_t* from, int16_t* to, int count) {
    for (int i = 0; i < count; i++) to[i] = static_cast<int16_t>((from[i + 1] - from[i]) * 2);
}

static void TakeExtreme(int value, Extremes& extremes) {
    extremes.low = std::min(extremes.low, value);
    extremes.high = std::max(extremes.high, value);
}

template <class T>
static void TakeEach(const T* samples, int count, Extremes& extremes) {
    for (int i = 0; i < count; i++) TakeExtreme(samples[i], extremes);
}
void TakeExtremesPlain(const uint16_t* samples, int count, Extremes& extremes) { TakeEach(samples, count, extremes); }
void TakeExtremesPlain(const int16_t* samples, int count, Extremes& extremes) { TakeEach(samples, count, extremes); }
void TakeExtremesPlain(const int32_t* samples, int count, Extremes& extremes) { TakeEach(samples, count, extremes); }

void TakeGatedExtremesPlain(const int16_t* samples, const uint16_t* gate, int open, int count, Extremes& extremes) {
    for (int i = 0; i < count; i++)
        if (gate[i] >= open) TakeExtreme(samples[i], extremes);
}

static constexpr int slowestFront = 50;  // 0.1 km/h; slip is defined above it

void TakeSlipExtremesPlain(const uint16_t* front, const uint16_t* rear, int count, Extremes& extremes) {
    for (int i = 0; i < count; i++)
        if (front[i] > slowestFront) TakeExtreme((rear[i] - front[i]) * 1000 / front[i], extremes);
}

#ifdef __SSE2__

static __m128i Load(const void* from) { return _mm_loadu_si128(static_cast<const __m128i*>(from)); }
static void Store(void* to, __m128i value) { _mm_storeu_si128(static_cast<__m128i*>(to), value); }
// A hint that doubles the speed of a pass over memory: the processor's own look-ahead stops at every page.
constexpr int lookAhead = 2048;
static void FetchAhead(const void* at, int bytes) { _mm_prefetch(static_cast<const char*>(at) + bytes, _MM_HINT_T0); }
// Each lane from `yes` where the mask has ones, from `no` where it has zeros.
static __m128i Choose(__m128i mask, __m128i yes, __m128i no) {
    return _mm_or_si128(_mm_and_si128(mask, yes), _mm_andnot_si128(mask, no));
}

// Division by a window's width is a product that is truncated. The factor is a little above the inverse, so that multiples
// come out whole; other quotients are at least 1 / width away from the next whole number, which keeps them below it while
// the sum is within 2^21 in float, and within 2^48 in double.
static float NarrowInverse(int window) { return (1.0f + 0x1p-22f) / static_cast<float>(window); }
static double WideInverse(int window) { return (1.0 + 0x1p-50) / window; }

static __m128i Divide(__m128i sums, __m128 inverse) {
    return _mm_cvttps_epi32(_mm_mul_ps(_mm_cvtepi32_ps(sums), inverse));
}
static __m128i Divide(__m128i sums, __m128d inverse) {
    __m128i low = _mm_cvttpd_epi32(_mm_mul_pd(_mm_cvtepi32_pd(sums), inverse));
    __m128i high = _mm_cvttpd_epi32(_mm_mul_pd(_mm_cvtepi32_pd(_mm_unpackhi_epi64(sums, sums)), inverse));
    return _mm_unpacklo_epi64(low, high);
}
// Two 64 bit sums within 2^51, divided into the low half.
static __m128i DivideTwo(__m128i sums, __m128d inverse) {
    const __m128d bias = _mm_set1_pd(0x1.8p52);  // its bits plus a whole number are those of the double with that sum
    __m128d biased = _mm_castsi128_pd(_mm_add_epi64(sums, _mm_castpd_si128(bias)));
    return _mm_cvttpd_epi32(_mm_mul_pd(_mm_sub_pd(biased, bias), inverse));
}

// Sums of `window` neighbours, from at[0], at[2], at[4] and at[6] on. `flip` makes unsigned samples signed.
template <int window>
static __m128i EverySecondSum(const void* samples, __m128i flip) {
    const int16_t* at = static_cast<const int16_t*>(samples);
    __m128i sum = _mm_madd_epi16(_mm_xor_si128(Load(at + window - 1), flip), _mm_set1_epi32(1));
    for (int k = 0; k < window - 1; k += 2)
        sum = _mm_add_epi32(sum, _mm_madd_epi16(_mm_xor_si128(Load(at + k), flip), _mm_set1_epi16(1)));
    return sum;
}

// The means go to where the samples of the next call follow, with what its windows reach beyond them.
template <class T> constexpr int nextBlock = meansBlock * sizeof(T) + lookAhead / 2;

template <int half, class T>
static int NarrowMeans16(const T* around, T* to, int count) {
    constexpr int window = 2 * half + 1;
    constexpr int middle = std::is_signed_v<T> ? 0 : 32768;  // taken off before the sums, put back after
    const __m128i flip = _mm_set1_epi16(static_cast<int16_t>(middle)), back = _mm_set1_epi32(middle * window);
    const __m128i lowHalf = _mm_set1_epi32(0xffff);
    const __m128 inverse = _mm_set1_ps(NarrowInverse(window));
    int i = 0;
    for (; i + 8 < count; i += 8) {  // the odd sums read one sample more than they use
        FetchAhead(to + i, nextBlock<T>);
        __m128i even = Divide(_mm_add_epi32(EverySecondSum<window>(around + i, flip), back), inverse);
        __m128i odd = Divide(_mm_add_epi32(EverySecondSum<window>(around + i + 1, flip), back), inverse);
        Store(to + i, _mm_or_si128(_mm_and_si128(even, lowHalf), _mm_slli_epi32(odd, 16)));
    }
    return i;
}
template <int half>
static int NarrowMeans(const uint16_t* around, uint16_t* to, int count) { return NarrowMeans16<half>(around, to, count); }
template <int half>
static int NarrowMeans(const int16_t* around, int16_t* to, int count) { return NarrowMeans16<half>(around, to, count); }

// True when sums of up to 16 of these samples stay within 2^21.
static bool AllSmall(const int32_t* samples, int count) {
    __m128i bits = _mm_setzero_si128();
    int i = 0, rest = 0;
    for (; i + 4 <= count; i += 4) {
        __m128i part = Load(samples + i);
        bits = _mm_or_si128(bits, _mm_xor_si128(part, _mm_srai_epi32(part, 31)));
    }
    for (; i < count; i++) rest |= samples[i] ^ samples[i] >> 31;
    bits = _mm_srli_epi32(_mm_or_si128(bits, _mm_set1_epi32(rest)), 17);
    return _mm_movemask_epi8(_mm_cmpeq_epi32(bits, _mm_setzero_si128())) == 0xffff;
}

template <int half>
static int NarrowMeans(const int32_t* around, int32_t* to, int count) {
    constexpr int window = 2 * half + 1;
    if (!AllSmall(around, count + window - 1)) return 0;
    const __m128 inverse = _mm_set1_ps(NarrowInverse(window));
    int i = 0;
    for (; i + 4 <= count; i += 4) {
        FetchAhead(to + i, nextBlock<int32_t>);
        __m128i sum = Load(around + i);
        for (int k = 1; k < window; k++) sum = _mm_add_epi32(sum, Load(around + i + k));
        Store(to + i, Divide(sum, inverse));
    }
    return i;
}

// The means of wide windows are differences of running sums. Those of 16 bit samples wrap at 32 bits, which the
// difference undoes.
template <class T, class Sum>
static void RunSums(const T* around, int count, Sum* sums) {
    sums[0] = 0;
    for (int i = 0; i < count; i++) sums[i + 1] = sums[i] + static_cast<Sum>(around[i]);
}

template <class T>
static int WideMeans16(const T* around, int half, T* to, int count) {
    uint32_t sums[meansBlock + 2 * meansHalfLimit + 1];
    int window = 2 * half + 1;
    RunSums(around, count + window - 1, sums);
    auto four = [&](int i) { return _mm_sub_epi32(Load(sums + i + window), Load(sums + i)); };
    auto kept = [](__m128i means) { return _mm_srai_epi32(_mm_slli_epi32(means, 16), 16); };  // low 16 bits
    const __m128d inverse = _mm_set1_pd(WideInverse(window));
    int i = 0;
    for (; i + 8 <= count; i += 8) {
        FetchAhead(to + i, nextBlock<T>);
        Store(to + i, _mm_packs_epi32(kept(Divide(four(i), inverse)), kept(Divide(four(i + 4), inverse))));
    }
    return i;
}
static int WideMeans(const uint16_t* around, int half, uint16_t* to, int count) {
    return WideMeans16(around, half, to, count);
}
static int WideMeans(const int16_t* around, int half, int16_t* to, int count) {
    return WideMeans16(around, half, to, count);
}

static int WideMeans(const int32_t* around, int half, int32_t* to, int count) {
    int64_t sums[meansBlock + 2 * meansHalfLimit + 1];
    int window = 2 * half + 1;
    RunSums(around, count + window - 1, sums);
    auto two = [&](int i) { return _mm_sub_epi64(Load(sums + i + window), Load(sums + i)); };
    const __m128d inverse = _mm_set1_pd(WideInverse(window));
    int i = 0;
    for (; i + 4 <= count; i += 4) {
        FetchAhead(to + i, nextBlock<int32_t>);
        Store(to + i, _mm_unpacklo_epi64(DivideTwo(two(i), inverse), DivideTwo(two(i + 2), inverse)));
    }
    return i;
}

// Each way returns how many means it made: all but the last few, or none.
template <class T>
static void MakeMeans(const T* around, int half, T* to, int count) {
    int done = 0;
    switch (half) {
        case 1: done = NarrowMeans<1>(around, to, count); break;
        case 2: done = NarrowMeans<2>(around, to, count); break;
        case 3: done = NarrowMeans<3>(around, to, count); break;
        case 4: done = NarrowMeans<4>(around, to, count); break;
    }
    if (done == 0) done = WideMeans(around, half, to, count);
    MeansPlain(around + done, half, to + done, count - done);
}
void Means(const uint16_t* around, int half, uint16_t* to, int count) { MakeMeans(around, half, to, count); }
void Means(const int16_t* around, int half, int16_t* to, int count) { MakeMeans(around, half, to, count); }
void Means(const int32_t* around, int half, int32_t* to, int count) { MakeMeans(around, half, to, count); }

void DoubledDifferences(const int16_t* from, int16_t* to, int count) {
    int i = 0;
    for (; i + 8 <= count; i += 8) {
        FetchAhead(from + i, lookAhead);
        __m128i difference = _mm_sub_epi16(Load(from + i + 1), Load(from + i));
        Store(to + i, _mm_add_epi16(difference, difference));
    }
    DoubledDifferencesPlain(from + i, to + i, count - i);
}

// Takes in the extremes of each lane. A lane that saw nothing has its high below its low.
template <class T>
static void TakeLanes(__m128i low, __m128i high, int flip, Extremes& extremes) {
    T lows[16 / sizeof(T)], highs[16 / sizeof(T)];
    Store(lows, low);
    Store(highs, high);
    for (size_t lane = 0; lane < std::size(lows); lane++) {
        if (highs[lane] < lows[lane]) continue;
        TakeExtreme(lows[lane] + flip, extremes);
        TakeExtreme(highs[lane] + flip, extremes);
    }
}

// flip turns the order of unsigned samples into that of signed ones.
template <class T>
static void TakeExtremes16(const T* samples, int count, int flip, Extremes& extremes) {
    const __m128i bias = _mm_set1_epi16(static_cast<int16_t>(flip));
    __m128i low = _mm_set1_epi16(32767), high = _mm_set1_epi16(-32768);
    int i = 0;
    for (; i + 16 <= count; i += 16) {
        FetchAhead(samples + i, lookAhead);
        __m128i first = _mm_xor_si128(Load(samples + i), bias), second = _mm_xor_si128(Load(samples + i + 8), bias);
        low = _mm_min_epi16(low, _mm_min_epi16(first, second));
        high = _mm_max_epi16(high, _mm_max_epi16(first, second));
    }
    TakeLanes<int16_t>(low, high, flip, extremes);
    TakeExtremesPlain(samples + i, count - i, extremes);
}
void TakeExtremes(const uint16_t* samples, int count, Extremes& extremes) {
    TakeExtremes16(samples, count, 32768, extremes);
}
void TakeExtremes(const int16_t* samples, int count, Extremes& extremes) {
    TakeExtremes16(samples, count, 0, extremes);
}

// The wider loops look for groups that hold a new extreme, which are few, and take those sample by sample.
void TakeExtremes(const int32_t* samples, int count, Extremes& extremes) {
    constexpr int group = 16;
    int i = 0;
    for (; i + group <= count; i += group) {
        FetchAhead(samples + i, lookAhead);
        const __m128i low = _mm_set1_epi32(extremes.low), high = _mm_set1_epi32(extremes.high);
        __m128i outside = _mm_setzero_si128();
        for (int k = 0; k < group; k += 4) {
            __m128i part = Load(samples + i + k);
            outside = _mm_or_si128(outside, _mm_or_si128(_mm_cmplt_epi32(part, low), _mm_cmpgt_epi32(part, high)));
        }
        if (_mm_movemask_epi8(outside)) TakeExtremesPlain(samples + i, group, extremes);
    }
    TakeExtremesPlain(samples + i, count - i, extremes);
}

void TakeGatedExtremes(const int16_t* samples, const uint16_t* gate, int open, int count, Extremes& extremes) {
    const __m128i closed = _mm_set1_epi16(static_cast<int16_t>(open - 1)), zero = _mm_setzero_si128();
    const __m128i largest = _mm_set1_epi16(32767), smallest = _mm_set1_epi16(-32768);
    __m128i low = largest, high = smallest;
    int i = 0;
    for (; i + 8 <= count; i += 8) {
        FetchAhead(samples + i, lookAhead);
        __m128i shut = _mm_cmpeq_epi16(_mm_subs_epu16(Load(gate + i), closed), zero);
        __m128i part = Load(samples + i);
        low = _mm_min_epi16(low, Choose(shut, largest, part));
        high = _mm_max_epi16(high, Choose(shut, smallest, part));
    }
    TakeLanes<int16_t>(low, high, 0, extremes);
    TakeGatedExtremesPlain(samples + i, gate + i, open, count - i, extremes);
}

// Four unsigned 16 bit samples as 32 bit numbers.
static __m128i LoadFour(const uint16_t* from) {
    return _mm_unpacklo_epi16(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(from)), _mm_setzero_si128());
}

void TakeSlipExtremes(const uint16_t* front, const uint16_t* rear, int count, Extremes& extremes) {
    constexpr int group = 8;
    const __m128i slow = _mm_set1_epi32(slowestFront);
    int i = 0;
    for (; i + group <= count; i += group) {
        // Ratios of the speeds a little inside of those from which a whole slip lies outside.
        const double up = extremes.high < 0 ? extremes.high : extremes.high + 1.0;
        const double down = extremes.low > 0 ? extremes.low : extremes.low - 1.0;
        const __m128 above = _mm_set1_ps(static_cast<float>((1 + up / 1000) * (1 - 1e-6)));
        const __m128 below = _mm_set1_ps(static_cast<float>((1 + down / 1000) * (1 + 1e-6) + 1e-6));
        __m128i outside = _mm_setzero_si128();
        for (int k = 0; k < group; k += 4) {
            __m128i whole = LoadFour(front + i + k);
            __m128 a = _mm_cvtepi32_ps(whole), b = _mm_cvtepi32_ps(LoadFour(rear + i + k));
            __m128 far = _mm_or_ps(_mm_cmpgt_ps(b, _mm_mul_ps(a, above)), _mm_cmplt_ps(b, _mm_mul_ps(a, below)));
            outside = _mm_or_si128(outside, _mm_and_si128(_mm_castps_si128(far), _mm_cmpgt_epi32(whole, slow)));
        }
        if (_mm_movemask_epi8(outside)) TakeSlipExtremesPlain(front + i, rear + i, group, extremes);
    }
    TakeSlipExtremesPlain(front + i, rear + i, count - i, extremes);
}

#else

void Means(const uint16_t* around, int half, uint16_t* to, int count) { MeansPlain(around, half, to, count); }
void Means(const int16_t* around, int half, int16_t* to, int count) { MeansPlain(around, half, to, count); }
void Means(const int32_t* around, int half, int32_t* to, int count) { MeansPlain(around, half, to, count); }
void DoubledDifferences(const int16_t* from, int16_t* to, int count) { DoubledDifferencesPlain(from, to, count); }
void TakeExtremes(const uint16_t* samples, int count, Extremes& extremes) { TakeExtremesPlain(samples, count, extremes); }
void TakeExtremes(const int16_t* samples, int count, Extremes& extremes) { TakeExtremesPlain(samples, count, extremes); }
void TakeExtremes(const int32_t* samples, int count, Extremes& extremes) { TakeExtremesPlain(samples, count, extremes); }
void TakeGatedExtremes(const int16_t* samples, const uint16_t* gate, int open, int count, Extremes& extremes) {
    TakeGatedExtremesPlain(samples, gate, open, count, extremes);
}
void TakeSlipExtremes(const uint16_t* front, const uint16_t* rear, int count, Extremes& extremes) {
    TakeSlipExtremesPlain(front, rear, count, extremes);
}

#endif
