// raster.h -- the seam to the last stage: shapes in whole pixels, already inside the target, become pixels.
//
// Everything above has turned a call into these; another back-end is another row of functions.
#pragma once
#include <memory>

#include "draw/blend.h"
#include "draw/draw_state.h"

struct PixelRect {
    int left, top, right, bottom;  // right and bottom exclusive
};
inline bool Empty(const PixelRect& rect) { return rect.left >= rect.right || rect.top >= rect.bottom; }
// The part of a rectangle that lies in the target.
inline PixelRect ClipToTarget(const PixelRect& rect) {
    const Surface& surface = drawState.target.surface;
    return {rect.left > 0 ? rect.left : 0, rect.top > 0 ? rect.top : 0, rect.right < surface.width ? rect.right : surface.width,
            rect.bottom < surface.height ? rect.bottom : surface.height};
}

// A filtered picture at one scale, kept from frame to frame: the samples of its visible runs, one run after another. The
// memory is there from the image's start. Written by the last stage, which fills it when the same scale is asked for again.
struct SampleRun {
    int x, y, count;  // place from the top left of the whole picture
};
enum class KeptState : uint8_t { none, asked, filled, noRoom };
struct KeptSamples {
    std::unique_ptr<uint32_t[]> samples;  // nullptr in an image that keeps none
    std::unique_ptr<SampleRun[]> runs;
    int sampleRoom, runRoom;  // how many there may be
    int runCount;
    KeptState state;
    Walk walk;                // at the centre of the picture's first pixel
    int64_t vDown;            // texels to the next row
};

// An image with an integer map: the pixel (x, y) shows the image at
// (start.u + (x - area.left) x across.uStep + (y - area.top) x downU, likewise v), where that lies in [low, high).
struct MappedImage {
    Texels texels;
    PixelRect area;
    Walk walk;              // at the centre of the area's first pixel; its steps are those to the next column
    int64_t uDown, vDown;   // steps to the next row
    int64_t uLow, uHigh, vLow, vHigh;
    const uint64_t* visibleBits;  // of each row, maskWords for the texels that show; nullptr: all
    int maskWords;
    bool smooth;            // linear filter, else the texel at hand
    PixelRect whole;        // the area before it was clipped
    KeptSamples* kept;      // for the whole area; nullptr: to be filtered now
    Mix mix;
};

constexpr int wideArea = 128;  // pixels; a width from which on some preparation pays
struct BackEnd {
    // `source` is that of a colour under the rule at hand.
    void (*fill)(int left, int top, int width, int height, uint32_t source);
    void (*fillWide)(int left, int top, int width, int height, uint32_t source);  // the same from wideArea pixels on
    void (*cover)(const PixelRect& area, const uint8_t* coverage, int coveragePitch, uint32_t source);
    void (*image)(const MappedImage& image);
};
extern const BackEnd* backEnd;  // set by SelectBackEnd

// The first pixel of a rectangle in the target.
inline uint32_t* TargetPixel(int x, int y) {
    const Surface& surface = drawState.target.surface;
    return surface.pixels + static_cast<ptrdiff_t>(surface.pitch) * y + x;
}
// Draws a mapped image with the software rasteriser (image_raster.cpp).
void RasterImage(const MappedImage& image);
