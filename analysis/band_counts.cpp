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

// Neighbours go to different counters: samples of one band in a row would otherwise wait for each other.
static void LookUp(BandCounts& counts, const BandTable& table, const int16_t* values, int count) {
    const uint16_t* const bandOf = table.bandOf.data() + 32768;
    uint32_t* const lanes[] = {counts.lookedUp[0].data(), counts.lookedUp[1].data(), counts.lookedUp[2].data(), counts.lookedUp[3].data()};
    int i = 0;
    for (; i + 4 <= count; i += 4)
        for (int lane = 0; lane < 4; lane++) lanes[lane][bandOf[values[i + lane]]]++;
    for (; i < count; i++) lanes[0][bandOf[values[i]]]++;
}

static void CountBlock(BandCounts& counts, const BandTable& table, const int16_t* values) {
    int16_t low = values[0], high = values[0];
    for (int i = 0; i < bandBlock; i++) {  // a length that the compiler knows: becomes a few vector instructions
        low = values[i] < low ? values[i] : low;
        high = values[i] > high ? values[i] : high;
    }
    const int first = table.bandOf[static_cast<size_t>(low + 32768)], last = table.bandOf[static_cast<size_t>(high + 32768)];
    if (last - first > fewBands) return LookUp(counts, table, values, bandBlock);
    int left = bandBlock;  // in the band at hand or above
    for (int band = first; band < last; band++) {
        const int above = AtLeastFast(values, table.begins[static_cast<size_t>(band) + 1]);
        counts.counts[static_cast<size_t>(band)] += static_cast<uint64_t>(left - above);
        left = above;
    }
    counts.counts[static_cast<size_t>(last)] += static_cast<uint64_t>(left);
}

static const int16_t* NarrowBlock(const int16_t* values, int16_t*, int) { return values; }
template <class T>
static const int16_t* NarrowBlock(const T* values, int16_t* narrow, int count) {
    for (int i = 0; i < count; i++) narrow[i] = Narrow(values[i]);
    return narrow;
}
#if defined(__SSE2__)
static const int16_t* NarrowFullBlock(const int32_t* values, int16_t* narrow) {
    for (int i = 0; i < bandBlock; i += 8) {
        const auto four = [&](int at) { return _mm_loadu_si128(reinterpret_cast<const __m128i*>(values + at)); };
        _mm_storeu_si128(reinterpret_cast<__m128i*>(narrow + i), _mm_packs_epi32(four(i), four(i + 4)));
    }
    return narrow;
}
#endif
template <class T>
static const int16_t* NarrowFullBlock(const T* values, int16_t* narrow) { return NarrowBlock(values, narrow, bandBlock); }

template <class T>
static void CountSamples(BandCounts& counts, const BandTable& table, const T* first, const T* end) {
    int16_t narrow[bandBlock];
    for (; end - first >= bandBlock; first += bandBlock) CountBlock(counts, table, NarrowFullBlock(first, narrow));
    const int rest = static_cast<int>(end - first);
    LookUp(counts, table, NarrowBlock(first, narrow, rest), rest);
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
