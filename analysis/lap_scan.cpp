#include "analysis/lap_scan.h"

#include <algorithm>

#include "run_data/fixed_point.h"
#include "run_data/run_store.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

// Samples looked at together. A slow channel sets a new extreme in many blocks of a lap, and naming its sample costs a
// second look at the block: measured, 128 beats 512 by a quarter.
constexpr int blockSize = 128;

template <class T>
struct Range {
    T low, high;
};

template <class T>
static Range<T> RangeOver(const T* values, int count) {
    T low = values[0], high = values[0];
    for (int i = 0; i < count; i++) {
        const T value = values[i];
        low = value < low ? value : low;
        high = value > high ? value : high;
    }
    return {low, high};
}

// A full block has a length that the compiler knows and becomes a few vector instructions; the ends go sample by sample.
template <class T>
static Range<T> RangeOf(const T* values, int count) {
    return count == blockSize ? RangeOver(values, blockSize) : RangeOver(values, count);
}

static int SumOf(const int16_t* values, int count) {
    int sum = 0;
    if (count == blockSize)
        for (int i = 0; i < blockSize; i++) sum += values[i];
    else
        for (int i = 0; i < count; i++) sum += values[i];
    return sum;
}

// Takes the extremes of a block in; `start` is the block's first sample.
template <class T>
static void TakeIn(const T* values, int count, uint32_t start, Extreme<int>& lowest, Extreme<int>& highest) {
    const Range<T> range = RangeOf(values, count);
    if (range.low < lowest.value)
        lowest = {range.low, start + static_cast<uint32_t>(std::find(values, values + count, range.low) - values)};
    if (range.high > highest.value)
        highest = {range.high, start + static_cast<uint32_t>(std::find(values, values + count, range.high) - values)};
}

SlipRange SlipRangePlain(const uint16_t* vfw, const uint16_t* vrw, int count) {
    SlipRange range{SlipPercent(vfw[0], vrw[0]), SlipPercent(vfw[0], vrw[0])};
    for (int i = 1; i < count; i++) {
        const float slip = SlipPercent(vfw[i], vrw[i]);
        range = {std::min(range.low, slip), std::max(range.high, slip)};
    }
    return range;
}

#if defined(__SSE2__)
// Four slips. Where VFW is 50 or less the difference counts as 0 and the divisor is odd: a slip of 0, nothing over 0.
static __m128 FourSlips(__m128i vfw, __m128i vrw) {
    const __m128i moving = _mm_cmpgt_epi32(vfw, _mm_set1_epi32(50));
    const __m128i difference = _mm_and_si128(_mm_sub_epi32(vrw, vfw), moving);
    const __m128i divisor = _mm_or_si128(vfw, _mm_andnot_si128(moving, _mm_set1_epi32(1)));
    return _mm_div_ps(_mm_mul_ps(_mm_cvtepi32_ps(difference), _mm_set1_ps(100.0f)), _mm_cvtepi32_ps(divisor));
}

SlipRange SlipRangeFast(const uint16_t* vfw, const uint16_t* vrw, int count) {
    const int vectored = count / 8 * 8;
    if (vectored == 0) return SlipRangePlain(vfw, vrw, count);
    const __m128i zero = _mm_setzero_si128();
    __m128 low = _mm_set1_ps(SlipPercent(vfw[0], vrw[0])), high = low;
    for (int i = 0; i < vectored; i += 8) {
        const __m128i front = _mm_loadu_si128(reinterpret_cast<const __m128i*>(vfw + i));
        const __m128i rear = _mm_loadu_si128(reinterpret_cast<const __m128i*>(vrw + i));
        const __m128  a = FourSlips(_mm_unpacklo_epi16(front, zero), _mm_unpacklo_epi16(rear, zero));
        const __m128  b = FourSlips(_mm_unpackhi_epi16(front, zero), _mm_unpackhi_epi16(rear, zero));
        low = _mm_min_ps(low, _mm_min_ps(a, b));
        high = _mm_max_ps(high, _mm_max_ps(a, b));
    }
    alignas(16) float lows[4], highs[4];
    _mm_store_ps(lows, low);
    _mm_store_ps(highs, high);
    const SlipRange range{*std::min_element(lows, lows + 4), *std::max_element(highs, highs + 4)};
    if (vectored == count) return range;
    const SlipRange rest = SlipRangePlain(vfw + vectored, vrw + vectored, count - vectored);
    return {std::min(range.low, rest.low), std::max(range.high, rest.high)};
}
#else
SlipRange SlipRangeFast(const uint16_t* vfw, const uint16_t* vrw, int count) { return SlipRangePlain(vfw, vrw, count); }
#endif

// The first sample of a block that has a given slip; one has.
static uint32_t FirstSlip(const uint16_t* vfw, const uint16_t* vrw, uint32_t start, float slip) {
    uint32_t i = 0;
    while (SlipPercent(vfw[i], vrw[i]) != slip) i++;
    return start + i;
}

static void TakeInSlip(int slot, uint32_t start, int count, LapScan& scan) {
    const uint16_t *vfw = VFW[slot].data() + start, *vrw = VRW[slot].data() + start;
    const SlipRange range = SlipRangeFast(vfw, vrw, count);
    if (range.low < scan.lowestSlip.value) scan.lowestSlip = {range.low, FirstSlip(vfw, vrw, start, range.low)};
    if (range.high > scan.highestSlip.value) scan.highestSlip = {range.high, FirstSlip(vfw, vrw, start, range.high)};
}

static int ShownNe(uint16_t ne, float factor) { return TruncToInt(static_cast<float>(ne) * factor); }

// The first sample of a block that shows a given speed; one does.
static uint32_t FirstShown(const uint16_t* ne, uint32_t start, float factor, int shown) {
    uint32_t i = 0;
    while (ShownNe(ne[i], factor) != shown) i++;
    return start + i;
}

// A factor, never negative, keeps the order of the speeds, so that only the block's ends are multiplied. It can make
// neighbours equal: the sample is looked for by the speed shown.
static void TakeInNe(int slot, uint32_t start, int count, float factor, LapScan& scan) {
    const uint16_t* ne = Ne[slot].data() + start;
    const Range<uint16_t> range = RangeOf(ne, count);
    const int low = ShownNe(range.low, factor), high = ShownNe(range.high, factor);
    Extreme<int> &lowest = scan.lowest[scanNe], &highest = scan.highest[scanNe];
    if (low < lowest.value) lowest = {low, FirstShown(ne, start, factor, low)};
    if (high > highest.value) highest = {high, FirstShown(ne, start, factor, high)};
}

void ScanLap(int slot, uint32_t first, uint32_t last, float factor, LapScan& scan) {
    for (uint32_t start = first; start < last; start += blockSize) {
        const int count = static_cast<int>(std::min<uint32_t>(blockSize, last - start));
        const auto take = [&](const auto& array, ScanChannel channel) {
            if (array.size() < start + count) return;  // the suspension speeds of a log too long for the memory
            TakeIn(array.data() + start, count, start, scan.lowest[channel], scan.highest[channel]);
        };
        TakeInNe(slot, start, count, factor, scan);
        take(VFW[slot], scanVFW);
        take(VRW[slot], scanVRW);
        TakeInSlip(slot, start, count, scan);
        take(FSUS[slot], scanFSUS);
        take(RSUS[slot], scanRSUS);
        scan.sumFSUS += SumOf(FSUS[slot].data() + start, count);
        scan.sumRSUS += SumOf(RSUS[slot].data() + start, count);
        take(AUX1[slot], scanAUX1);
        take(AUX2[slot], scanAUX2);
        take(LAF1[slot], scanLAF1);
        take(LAF2[slot], scanLAF2);
        take(VFSus[slot], scanVFSus);
        take(VRSus[slot], scanVRSus);
        scan.samples += count;
    }
}

float SlipAt(uint32_t sample, int slot) { return SlipPercent(VFW[slot][sample], VRW[slot][sample]); }
