// Boxes and circles: from the call to rectangles inside the target.
#include <algorithm>
#include <climits>
#include <cmath>

#include "draw/raster.h"
#include "draw/recording.h"

static void FillArea(const PixelRect& rect, uint32_t source) {
    const PixelRect area = ClipToTarget(rect);
    if (Empty(area)) return;
    const int width = area.right - area.left, height = area.bottom - area.top;
    if (width < wideArea) return backEnd->fill(area.left, area.top, width, height, source);
    backEnd->fillWide(area.left, area.top, width, height, source);
}

// The same in 64 bits, since what lies outside may lie far outside.
static void FillFar(int64_t left, int64_t top, int64_t right, int64_t bottom, uint32_t source) {
    const auto held = [](int64_t place) { return static_cast<int>(std::clamp<int64_t>(place, INT_MIN, INT_MAX)); };
    FillArea({held(left), held(top), held(right), held(bottom)}, source);
}

// --- boxes ---------------------------------------------------------------------------------------------------------

void FillRect(int left, int top, int right, int bottom, Color color) {
    Record("FillRect", left, top, right, bottom, color);
    if (PaintsNothing()) return;
    const uint32_t source = SourceOf(color);
    FillArea({std::min(left, right), std::min(top, bottom), std::max(left, right), std::max(top, bottom)}, source);
}

void DrawBoxOutline(int x1, int y1, int x2, int y2, Color color) {
    Record("DrawBoxOutline", x1, y1, x2, y2, color);
    const uint32_t source = SourceOf(color);
    const int64_t left = std::min(x1, x2), top = std::min(y1, y2), right = std::max(x1, x2), bottom = std::max(y1, y2);
    if (PaintsNothing() || left == right || top == bottom) return;
    FillFar(left, top, right, top + 1, source);
    if (bottom - top > 1) FillFar(left, bottom - 1, right, bottom, source);
    FillFar(left, top + 1, left + 1, bottom - 1, source);
    if (right - left > 1) FillFar(right - 1, top + 1, right, bottom - 1, source);
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
    const uint32_t source = SourceOf(color);
    if (radius < 0 || PaintsNothing()) return;
    const int64_t inner = fill == 1 ? -1 : int64_t{radius} - std::max(thickness, 1);  // radius of what stays free
    const int64_t top = std::max<int64_t>(int64_t{y} - radius, 0);
    const int64_t bottom = std::min<int64_t>(int64_t{y} + radius + 1, drawState.target.surface.height);
    for (int64_t row = top; row < bottom; ++row) {
        const int64_t outside = HalfWidth(radius, row - y), inside = HalfWidth(inner, row - y);
        if (inside < 0) {
            FillFar(x - outside, row, x + outside + 1, row + 1, source);
        } else {
            FillFar(x - outside, row, x - inside, row + 1, source);
            FillFar(x + inside + 1, row, x + outside + 1, row + 1, source);
        }
    }
}
