// clock.h -- time. In `play` it is virtual: a wait advances it at once.
#pragma once
#include <cstdint>

// Milliseconds of a steady clock.
int64_t SteadyMs();
// Blocks, serving nothing.
void SleepMs(int milliseconds);
// Blocks until SteadyMs() has reached `steadyMs`, without giving up the processor: exact where SleepMs is not.
void SpinUntil(int64_t steadyMs);
struct LocalTime { int year, month, day, hour, minute, second; };
LocalTime NowLocal();
