#include "draw/raster.h"

#include "draw/fill_sse2.h"

static inline Paint PaintAtHand(uint32_t source) { return {paintRule.kind, source, paintRule.weight}; }

static void Fill(int left, int top, int width, int height, uint32_t source) {
    sse2::FillPixels(TargetPixel(left, top), drawState.target.surface.pitch, width, height, PaintAtHand(source));
}

static void FillWide(int left, int top, int width, int height, uint32_t source) {
    sse2::FillLongRows(TargetPixel(left, top), drawState.target.surface.pitch, width, height, PaintAtHand(source));
}

static void Cover(const PixelRect& area, const uint8_t* coverage, int coveragePitch, uint32_t source) {
    for (int y = area.top; y < area.bottom; ++y, coverage += coveragePitch)
        sse2::CoverRow(TargetPixel(area.left, y), coverage, area.right - area.left, PaintAtHand(source));
}

static constexpr BackEnd softwareBackEnd{Fill, FillWide, Cover, RasterImage};
static constexpr BackEnd noBackEnd{[](int, int, int, int, uint32_t) {}, [](int, int, int, int, uint32_t) {},
                                   [](const PixelRect&, const uint8_t*, int, uint32_t) {}, [](const MappedImage&) {}};

const BackEnd* backEnd = &softwareBackEnd;

void SelectBackEnd(DrawBackEnd chosen) { backEnd = chosen == DrawBackEnd::software ? &softwareBackEnd : &noBackEnd; }
