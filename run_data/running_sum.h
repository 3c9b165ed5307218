// running_sum.h -- sums of all values up to each one.
#pragma once
#include <cstdint>

// sums[i] = sums[-1] + values[0] + .. + values[i], modulo 2 to the 32nd. count is a multiple of 8, values and sums are
// aligned to 16 bytes, and sums[-1] is there.
void RunningSum(const uint16_t* values, uint32_t* sums, int count);
// The same without vectors: what RunningSum is on other machines.
void RunningSumPlain(const uint16_t* values, uint32_t* sums, int count);
