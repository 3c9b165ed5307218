// fetch_ahead.h -- brings a stretch of the log near while other work is done: asked for all at once, it would be waited for.
#pragma once
#include <cstdint>

struct FetchAhead {
    const uint8_t* at;     // anything behind the log may be asked for too
    int            lines;  // of 64 bytes, in each step
    FetchAhead(const uint8_t* from, int64_t bytes, int steps) : at(from), lines(static_cast<int>(bytes / (64 * steps) + 1)) {}
    void Step() {
        for (int i = 0; i < lines; i++, at += 64) __builtin_prefetch(at);
    }
};
