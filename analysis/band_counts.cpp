#include "analysis/band_counts.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

// Bands that a block may touch before it is cheaper to look each sample up; measured.
constexpr int fewBands = 12;

BandCounts MakeBandCounts(int bands) {
    BandCounts counts{std::vector<uint64_t>(static_cast<size_t>(bands)), {}};
    for (auto& lane : counts.lookedUp) lane.resize(static_cast<size_t>(bands));
    return counts;
}

int AtLeastPlain(const int16_t* values, int begin) {
    int count = 0;
    for (int i = 0; i < bandBlock; i++) count += values[i] >= begin;
    return count;
}

#if defined(__SSE2__)
int AtLeastFast(const int16_t* values, int begin) {
    const __m128i below = _mm_set1_epi16(static_cast<short>(begin - 1));
    __m128i sums = _mm_setzero_si128();
#pragma GCC unroll 16
    for (int i = 0; i < bandBlock; i += 8) {
        const __m128i eight = _mm_loadu_si128(reinterpret_cast<const __m128i*>(values + i));
        sums = _mm_sub_epi16(sums, _mm_cmpgt_epi16(eight, below));
    }
    sums = _mm_madd_epi16(sums, _mm_set1_epi16(1));
    sums = _mm_add_epi32(sums, _mm_shuffle_epi32(sums, _MM_SHUFFLE(1, 0, 3, 2)));
    sums = _mm_add_epi32(sums, _mm_shuffle_epi32(sums, _MM_SHUFFLE(2, 3, 0, 1)));
    return _mm_cvtsi128_si32(sums);
}
#else
int AtLeastFast(const int16_t* values, int begin) { return AtLeastPlain(values, begin); }
#endif

// --- a block, narrowed -----------------------------------------------------------------------------------------------------

struct NarrowRange {
    int low, high;
};

#if defined(__SSE2__)
static __m128i Load(const void* at) { return _mm_loadu_si128(static_cast<const __m128i*>(at)); }
static __m128i NarrowEight(const uint16_t* at) { return _mm_xor_si128(Load(at), _mm_set1_epi16(-32768)); }
static __m128i NarrowEight(const int16_t* at) { return Load(at); }
static __m128i NarrowEight(const int32_t* at) { return _mm_packs_epi32(Load(at), Load(at + 4)); }

// The lowest of eight, by an operation that takes the lower of two each; or the highest.
template <class Pick>
static int PickOfEight(__m128i eight, Pick pick) {
    eight = pick(eight, _mm_shuffle_epi32(eight, _MM_SHUFFLE(1, 0, 3, 2)));
    eight = pick(eight, _mm_shuffle_epi32(eight, _MM_SHUFFLE(2, 3, 0, 1)));
    eight = pick(eight, _mm_shufflelo_epi16(eight, _MM_SHUFFLE(2, 3, 0, 1)));
    return static_cast<int16_t>(_mm_extract_epi16(eight, 0));
}

template <class T>
static NarrowRange NarrowBlock(const T* values, int16_t* narrow) {
    __m128i low = NarrowEight(values), high = low;
#pragma GCC unroll 4
    for (int i = 0; i < bandBlock; i += 8) {
        const __m128i eight = NarrowEight(values + i);
        _mm_storeu_si128(reinterpret_cast<__m128i*>(narrow + i), eight);
        low = _mm_min_epi16(low, eight);
        high = _mm_max_epi16(high, eight);
    }
    return {PickOfEight(low, [](__m128i a, __m128i b) { return _mm_min_epi16(a, b); }),
            PickOfEight(high, [](__m128i a, __m128i b) { return _mm_max_epi16(a, b); })};
}
#else
template <class T>
static NarrowRange NarrowBlock(const T* values, int16_t* narrow) {
    for (int i = 0; i < bandBlock; i++) narrow[i] = Narrow(values[i]);
    return {*std::min_element(narrow, narrow + bandBlock), *std::max_element(narrow, narrow + bandBlock)};
}
#endif

// Neighbours go to different counters: samples of one band in a row would otherwise wait for each other.
static void LookUp(BandCounts& counts, const BandTable& table, const int16_t* values, int count) {
    const uint16_t* const bandOf = table.bandOf.data() + 32768;
    uint32_t* const lanes[] = {counts.lookedUp[0].data(), counts.lookedUp[1].data(), counts.lookedUp[2].data(), counts.lookedUp[3].data()};
    int i = 0;
    for (; i + 4 <= count; i += 4)
        for (int lane = 0; lane < 4; lane++) lanes[lane][bandOf[values[i + lane]]]++;
    for (; i < count; i++) lanes[0][bandOf[values[i]]]++;
}

static void CountBlock(BandCounts& counts, const BandTable& table, const int16_t* narrow, NarrowRange range) {
    const int first = table.bandOf[static_cast<size_t>(range.low + 32768)];
    const int last  = table.bandOf[static_cast<size_t>(range.high + 32768)];
    if (last - first > fewBands) return LookUp(counts, table, narrow, bandBlock);
    int left = bandBlock;  // in the band at hand or above
    for (int band = first; band < last; band++) {
        const int above = AtLeastFast(narrow, table.begins[static_cast<size_t>(band) + 1]);
        counts.counts[static_cast<size_t>(band)] += static_cast<uint64_t>(left - above);
        left = above;
    }
    counts.counts[static_cast<size_t>(last)] += static_cast<uint64_t>(left);
}

template <class T>
static void CountSamples(BandCounts& counts, const BandTable& table, const T* first, const T* end) {
    int16_t narrow[bandBlock];
    for (; end - first >= bandBlock; first += bandBlock) {
        const NarrowRange range = NarrowBlock(first, narrow);
        CountBlock(counts, table, narrow, range);
    }
    const int rest = static_cast<int>(end - first);
    for (int i = 0; i < rest; i++) narrow[i] = Narrow(first[i]);
    LookUp(counts, table, narrow, rest);
    for (auto& lane : counts.lookedUp)
        for (size_t band = 0; band < lane.size(); band++) {
            counts.counts[band] += lane[band];
            lane[band] = 0;
        }
}

void CountBands(BandCounts& counts, const BandTable& table, const uint16_t* first, const uint16_t* end) {
    CountSamples(counts, table, first, end);
}
void CountBands(BandCounts& counts, const BandTable& table, const int16_t* first, const int16_t* end) {
    CountSamples(counts, table, first, end);
}
void CountBands(BandCounts& counts, const BandTable& table, const int32_t* first, const int32_t* end) {
    CountSamples(counts, table, first, end);
}
