// Which pixels a straight line covers, in integers alone, so that every machine draws the same.
//
// Ends are snapped to 1/256 pixel. If |dx| > |dy| the line covers the columns whose centre lies in [min x, max x), each in
// the row floor(y at the centre); else the rows whose centre lies in [min y, max y), each in the column floor(x at the
// centre). So a flat trace of many short lines draws each column once, and a line at x = 100 fills column 100.
//
// A frame of the plot draws some hundred thousand of these, most of them one pixel wide and one or two long. What such a
// line costs is the number of instructions, so that the common cases leave early.
#include <emmintrin.h>

#include <algorithm>
#include <cstdlib>

#include "draw/images.h"
#include "draw/raster.h"
#include "draw/recording.h"

// How the major axis, the longer one, lies, and how far the target reaches along both.
template <bool isSteep>
struct Axes {
    static constexpr bool steep = isSteep;
    static int MajorSize() { return steep ? drawState.target.surface.height : drawState.target.surface.width; }
    static int MinorSize() { return steep ? drawState.target.surface.width : drawState.target.surface.height; }
};

// Major pixels first to last (exclusive), minor pixels from low on. Only the minor axis is still to be clipped.
template <class Axis>
static inline void FillRun(int first, int last, int minor, int thickness, uint32_t source) {
    const int from = std::max(minor - (thickness - 1) / 2, 0);
    const int to   = std::min(minor - (thickness - 1) / 2 + thickness, Axis::MinorSize());
    if (from >= to) return;
    if (Axis::steep)
        backEnd->fill(from, first, to - from, last - first, source);
    else
        backEnd->fill(first, from, last - first, to - from, source);
}

static int64_t FloorDiv(int64_t a, int64_t b) { return a / b - (a % b < 0); }  // b above 0

// The pixel at major m has minor floor((start + m x step) / scale); scale above 0, |step| at most scale.
template <class Axis>
[[gnu::noinline]] static void FillRuns(int first, int last, int64_t start, int64_t step, int64_t scale, int thickness,
                                       uint32_t source) {
    int64_t minor = FloorDiv(start + first * step, scale);
    int64_t rest  = start + first * step - minor * scale;  // 0 to scale - 1
    int runStart  = first;
    for (int m = first + 1; m < last; ++m) {
        rest += step;
        if (rest >= 0 && rest < scale) continue;
        FillRun<Axis>(runStart, m, static_cast<int>(minor), thickness, source);
        runStart = m;
        minor += rest < 0 ? -1 : 1;
        rest  += rest < 0 ? scale : -scale;
    }
    FillRun<Axis>(runStart, last, static_cast<int>(minor), thickness, source);
}

// --- float ends ----------------------------------------------------------------------------------------------------------

// An end in 1/256 pixel.
struct End {
    int major, minor;
};

// The minor at the centre of major pixel m of a line less than two pixels long: one of three, so that neither a division
// nor a branch is needed.
static inline int MinorOfOne(End from, End to, int m) {
    const int length = to.major - from.major, rise = to.minor - from.minor;
    const int low = std::min(from.minor, to.minor) >> 8;
    const int place = (from.minor - low * 256) * length + (m * 256 + 128 - from.major) * rise;  // 1/256 pixel x length
    return low + (place >= 256 * length) + (place >= 512 * length);
}

// The first pixel whose centre is at or above a place.
static inline int FirstCentre(int place) { return (place + 127) >> 8; }

template <class Axis>
static inline void DrawAlong(End from, End to, int thickness, uint32_t source) {
    if (from.major > to.major) std::swap(from, to);
    const int first = std::max(FirstCentre(from.major), 0), last = std::min(FirstCentre(to.major), Axis::MajorSize());
    if (first >= last) return;
    if (to.major - from.major < 512 && last - first == 1)
        return FillRun<Axis>(first, last, MinorOfOne(from, to, first), thickness, source);
    // What runs along one minor shows in its ends: the far one belongs to no pixel, nor does the near one unless a centre
    // lies on it.
    const int64_t length = int64_t{to.major} - from.major, rise = int64_t{to.minor} - from.minor;
    const int near = from.minor - (rise < 0 && first * 256 + 128 > from.major), far = to.minor - (rise > 0);
    if (near >> 8 == far >> 8) return FillRun<Axis>(first, last, near >> 8, thickness, source);
    FillRuns<Axis>(first, last, from.minor * length + (128 - from.major) * rise, 256 * rise, 256 * length, thickness, source);
}

void DrawLineF(float x1, float y1, float x2, float y2, Color color, int thickness) {
    Record("DrawLineF", x1, y1, x2, y2, color, thickness);
    if (PaintsNothing()) return;
    const uint32_t source = SourceOf(color);
    // Ends are held to +-2 million pixels; NaN is 0.
    constexpr float limit = 2097152.0f;
    __m128 ends = _mm_setr_ps(x1, y1, x2, y2);
    ends = _mm_and_ps(ends, _mm_cmpord_ps(ends, ends));
    ends = _mm_max_ps(_mm_min_ps(ends, _mm_set1_ps(limit)), _mm_set1_ps(-limit));
    alignas(16) int at[4];
    _mm_store_si128(reinterpret_cast<__m128i*>(at), _mm_cvtps_epi32(_mm_mul_ps(ends, _mm_set1_ps(256.0f))));

    thickness = std::clamp(thickness, 1, 4 * imageSideLimit);
    if (std::abs(at[2] - at[0]) <= std::abs(at[3] - at[1]))
        DrawAlong<Axes<true>>({at[1], at[0]}, {at[3], at[2]}, thickness, source);
    else
        DrawAlong<Axes<false>>({at[0], at[1]}, {at[2], at[3]}, thickness, source);
}

// --- integer ends ----------------------------------------------------------------------------------------------------------

template <class Axis>
static void DrawPixelsAlong(End from, End to, uint32_t source) {
    if (from.major > to.major) std::swap(from, to);
    const int first = std::max(from.major, 0), last = std::min(to.major + 1, Axis::MajorSize());
    if (first >= last) return;
    const int64_t length = to.major - from.major, rise = to.minor - from.minor;
    if (rise == 0) return FillRun<Axis>(first, last, from.minor, 1, source);
    FillRuns<Axis>(first, last, (2 * int64_t{from.minor} + 1) * length - 2 * from.major * rise, 2 * rise, 2 * length, 1, source);
}

void DrawLineI(int x1, int y1, int x2, int y2, Color color) {
    Record("DrawLineI", x1, y1, x2, y2, color);
    if (PaintsNothing()) return;
    const uint32_t source = SourceOf(color);
    constexpr int limit = 1 << 28;  // pixels; products stay in 64 bits
    for (int* end : {&x1, &y1, &x2, &y2}) *end = std::clamp(*end, -limit, limit);
    if (std::abs(x2 - x1) <= std::abs(y2 - y1))
        DrawPixelsAlong<Axes<true>>({y1, x1}, {y2, x2}, source);
    else
        DrawPixelsAlong<Axes<false>>({x1, y1}, {x2, y2}, source);
}
