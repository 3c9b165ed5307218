// Lines, boxes and circles: from the call to rectangles inside the target.
#include <emmintrin.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "draw/lines.h"
#include "draw/raster.h"
#include "draw/recording.h"

// A rectangle given in 64 bits, since what lies outside may lie far outside.
static void FillClipped(int64_t left, int64_t top, int64_t right, int64_t bottom, const Paint& paint) {
    const Surface& surface = drawState.target.surface;
    const PixelRect area{static_cast<int>(std::max<int64_t>(left, 0)), static_cast<int>(std::max<int64_t>(top, 0)),
                         static_cast<int>(std::min<int64_t>(right, surface.width)),
                         static_cast<int>(std::min<int64_t>(bottom, surface.height))};
    if (!Empty(area)) backEnd->fill(area, paint);
}

// --- lines ---------------------------------------------------------------------------------------------------------

static void FillRun(bool steep, int first, int last, int64_t minor, int thickness, const Paint& paint) {
    const int64_t low = minor - (thickness - 1) / 2, high = low + thickness;
    if (steep)
        FillClipped(low, first, high, last, paint);
    else
        FillClipped(first, low, last, high, paint);
}

static void FillWalk(const LineWalk& walk, int thickness, const Paint& paint) {
    ForEachRun(walk, [&](int first, int last, int64_t minor) { FillRun(walk.steep, first, last, minor, thickness, paint); });
}

// Ends in 1/256 pixel. Held to +-4 million pixels; NaN is 0.
struct SnappedLine {
    int x1, y1, x2, y2;
};
static SnappedLine SnapLine(float x1, float y1, float x2, float y2) {
    constexpr float limit = 4194304.0f;
    __m128 ends = _mm_setr_ps(x1, y1, x2, y2);
    ends = _mm_and_ps(ends, _mm_cmpord_ps(ends, ends));
    ends = _mm_max_ps(_mm_min_ps(ends, _mm_set1_ps(limit)), _mm_set1_ps(-limit));
    alignas(16) int snapped[4];
    _mm_store_si128(reinterpret_cast<__m128i*>(snapped), _mm_cvtps_epi32(_mm_mul_ps(ends, _mm_set1_ps(256.0f))));
    return {snapped[0], snapped[1], snapped[2], snapped[3]};
}
// The first pixel whose centre is at or above a place.
static int FirstCentre(int place) { return (place + 127) >> 8; }

void DrawLineF(float x1, float y1, float x2, float y2, Color color, int thickness) {
    Record("DrawLineF", x1, y1, x2, y2, color, thickness);
    const Paint paint = PreparePaint(color);
    if (paint.kind == BlendKind::nothing) return;
    thickness = std::max(thickness, 1);
    SnappedLine line = SnapLine(x1, y1, x2, y2);
    const bool steep = std::abs(int64_t{line.x2} - line.x1) <= std::abs(int64_t{line.y2} - line.y1);
    if (steep) line = {line.y1, line.x1, line.y2, line.x2};  // from here x is the major axis
    if (line.x1 > line.x2) line = {line.x2, line.y2, line.x1, line.y1};

    const Surface& surface = drawState.target.surface;
    const int first = std::max(FirstCentre(line.x1), 0);
    const int last  = std::min(FirstCentre(line.x2), steep ? surface.height : surface.width);
    if (first >= last) return;

    // Most lines of a plot stay in one column, which can be seen without a division: the far end belongs to no pixel, nor
    // does the near one unless a centre lies on it.
    const int near = line.y1 > line.y2 && first * 256 + 128 > line.x1 ? line.y1 - 1 : line.y1;
    const int far  = line.y1 < line.y2 ? line.y2 - 1 : line.y2;
    if (near >> 8 == far >> 8) return FillRun(steep, first, last, near >> 8, thickness, paint);

    const int64_t length = int64_t{line.x2} - line.x1, rise = int64_t{line.y2} - line.y1;
    FillWalk({steep, first, last, line.y1 * length + (128 - int64_t{line.x1}) * rise, 256 * rise, 256 * length}, thickness,
             paint);
}

void DrawLineI(int x1, int y1, int x2, int y2, Color color) {
    Record("DrawLineI", x1, y1, x2, y2, color);
    const Paint paint = PreparePaint(color);
    if (paint.kind == BlendKind::nothing) return;
    constexpr int limit = 1 << 28;  // pixels; products stay in 64 bits
    for (int* end : {&x1, &y1, &x2, &y2}) *end = std::clamp(*end, -limit, limit);
    const bool steep = std::abs(x2 - x1) <= std::abs(y2 - y1);
    if (steep) {
        std::swap(x1, y1);
        std::swap(x2, y2);
    }
    if (x1 > x2) {
        std::swap(x1, x2);
        std::swap(y1, y2);
    }
    const Surface& surface = drawState.target.surface;
    const int first = std::max(x1, 0), last = std::min(x2 + 1, steep ? surface.height : surface.width);
    if (first >= last) return;
    const int64_t length = x2 - x1, rise = y2 - y1;
    if (rise == 0) return FillRun(steep, first, last, y1, 1, paint);
    FillWalk({steep, first, last, (2 * int64_t{y1} + 1) * length - 2 * x1 * rise, 2 * rise, 2 * length}, 1, paint);
}

// --- boxes ---------------------------------------------------------------------------------------------------------

void FillRect(int left, int top, int right, int bottom, Color color) {
    Record("FillRect", left, top, right, bottom, color);
    const Paint paint = PreparePaint(color);
    if (paint.kind == BlendKind::nothing) return;
    FillClipped(std::min(left, right), std::min(top, bottom), std::max(left, right), std::max(top, bottom), paint);
}

void DrawBoxOutline(int x1, int y1, int x2, int y2, Color color) {
    Record("DrawBoxOutline", x1, y1, x2, y2, color);
    const Paint paint = PreparePaint(color);
    const int64_t left = std::min(x1, x2), top = std::min(y1, y2), right = std::max(x1, x2), bottom = std::max(y1, y2);
    if (paint.kind == BlendKind::nothing || left == right || top == bottom) return;
    FillClipped(left, top, right, top + 1, paint);
    if (bottom - top > 1) FillClipped(left, bottom - 1, right, bottom, paint);
    FillClipped(left, top + 1, left + 1, bottom - 1, paint);
    if (right - left > 1) FillClipped(right - 1, top + 1, right, bottom - 1, paint);
}

// --- circles -------------------------------------------------------------------------------------------------------

// Half width of a disc in the row dy from its centre: the largest w with w^2 + dy^2 <= r^2 + r; -1 outside.
static int64_t HalfWidth(int64_t radius, int64_t dy) {
    const int64_t square = radius * radius + radius - dy * dy;
    if (radius < 0 || square < 0) return -1;
    int64_t w = static_cast<int64_t>(std::sqrt(static_cast<double>(square)));
    while (w * w > square) --w;
    while ((w + 1) * (w + 1) <= square) ++w;
    return w;
}

void DrawCircle(int x, int y, int radius, Color color, int fill, int thickness) {
    Record("DrawCircle", x, y, radius, color, fill, thickness);
    const Paint paint = PreparePaint(color);
    if (radius < 0 || paint.kind == BlendKind::nothing) return;
    const int64_t inner = fill == 1 ? -1 : int64_t{radius} - std::max(thickness, 1);  // radius of what stays free
    const int64_t top = std::max<int64_t>(int64_t{y} - radius, 0);
    const int64_t bottom = std::min<int64_t>(int64_t{y} + radius + 1, drawState.target.surface.height);
    for (int64_t row = top; row < bottom; ++row) {
        const int64_t outside = HalfWidth(radius, row - y), inside = HalfWidth(inner, row - y);
        if (inside < 0) {
            FillClipped(x - outside, row, x + outside + 1, row + 1, paint);
        } else {
            FillClipped(x - outside, row, x - inside, row + 1, paint);
            FillClipped(x + inside + 1, row, x + outside + 1, row + 1, paint);
        }
    }
}
