// sample_loops.h -- the inner loops over samples that a load runs: means of windows, differences, extremes.
//
// Each loop exists twice: `...Plain` is the formula as it reads, the name without it takes SSE2 where the processor has
// it. Both give the same values in every bit, which a test compares.
#pragma once
#include <cstdint>

constexpr int meansBlock     = 4096;  // most means of one call
constexpr int meansHalfLimit = 1000;  // half width of the widest window

// to[i] = the sum of around[i] to around[i + 2 * half], divided by 2 * half + 1 and truncated toward zero.
void MeansPlain(const uint16_t* around, int half, uint16_t* to, int count);
void MeansPlain(const int16_t* around, int half, int16_t* to, int count);
void MeansPlain(const int32_t* around, int half, int32_t* to, int count);
void Means(const uint16_t* around, int half, uint16_t* to, int count);
void Means(const int16_t* around, int half, int16_t* to, int count);
void Means(const int32_t* around, int half, int32_t* to, int count);

// to[i] = (from[i + 1] - from[i]) x 2, kept to 16 bits.
void DoubledDifferencesPlain(const int16_t* from, int16_t* to, int count);
void DoubledDifferences(const int16_t* from, int16_t* to, int count);

// Smallest and largest of what was looked at so far.
struct Extremes {
    int low, high;
};
void TakeExtremesPlain(const uint16_t* samples, int count, Extremes& extremes);
void TakeExtremesPlain(const int16_t* samples, int count, Extremes& extremes);
void TakeExtremesPlain(const int32_t* samples, int count, Extremes& extremes);
void TakeExtremes(const uint16_t* samples, int count, Extremes& extremes);
void TakeExtremes(const int16_t* samples, int count, Extremes& extremes);
void TakeExtremes(const int32_t* samples, int count, Extremes& extremes);
// Of the samples whose gate is at least `open`, 1 to 65535.
void TakeGatedExtremesPlain(const int16_t* samples, const uint16_t* gate, int open, int count, Extremes& extremes);
void TakeGatedExtremes(const int16_t* samples, const uint16_t* gate, int open, int count, Extremes& extremes);
// Of (rear - front) x 1000 / front, truncated toward zero, where front is above 50.
void TakeSlipExtremesPlain(const uint16_t* front, const uint16_t* rear, int count, Extremes& extremes);
void TakeSlipExtremes(const uint16_t* front, const uint16_t* rear, int count, Extremes& extremes);
