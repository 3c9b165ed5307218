// lines.h -- which pixels a straight line covers, in integers alone, so that every machine draws the same.
//
// Ends are snapped to 1/256 pixel. If |dx| > |dy| the line covers the columns whose centre lies in [min x, max x), each in
// the row floor(y at the centre); else the rows whose centre lies in [min y, max y), each in the column floor(x at the
// centre). So a flat trace of many short lines draws each column once, and a line at x = 100 fills column 100.
#pragma once
#include <cstdint>
#include <utility>

// The longer axis is `major`; the pixel at major m has minor floor((start + m x step) / scale).
struct LineWalk {
    bool steep;         // major is y
    int first, last;    // major pixels, last exclusive, inside the target
    int64_t start, step, scale;  // scale above 0, |step| at most scale
};
constexpr int64_t FloorDiv(int64_t a, int64_t b) { return a / b - (a % b < 0); }  // b above 0

// Calls emit(first, last, minor) for every stretch of pixels with one minor, in order.
template <class Emit>
void ForEachRun(const LineWalk& walk, Emit emit) {
    int64_t minor = FloorDiv(walk.start + walk.first * walk.step, walk.scale);
    int64_t rest  = walk.start + walk.first * walk.step - minor * walk.scale;  // 0 to scale - 1
    int runStart  = walk.first;
    for (int m = walk.first + 1; m < walk.last; ++m) {
        rest += walk.step;
        if (rest >= 0 && rest < walk.scale) continue;
        emit(runStart, m, minor);
        runStart = m;
        minor += rest < 0 ? -1 : 1;
        rest  += rest < 0 ? walk.scale : -walk.scale;
    }
    if (walk.first < walk.last) emit(runStart, walk.last, minor);
}
