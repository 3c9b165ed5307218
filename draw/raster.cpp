#include "draw/raster.h"

static void Fill(const PixelRect& area, const Paint& paint) {
    sse2::FillPixels(TargetPixel(area.left, area.top), drawState.target.surface.pitch, area.right - area.left,
                     area.bottom - area.top, paint);
}

static void Cover(const PixelRect& area, const uint8_t* coverage, int coveragePitch, const Paint& paint) {
    for (int y = area.top; y < area.bottom; ++y, coverage += coveragePitch)
        sse2::CoverRow(TargetPixel(area.left, y), coverage, area.right - area.left, paint);
}

static constexpr BackEnd softwareBackEnd{Fill, Cover, RasterImage};
static constexpr BackEnd noBackEnd{[](const PixelRect&, const Paint&) {},
                                   [](const PixelRect&, const uint8_t*, int, const Paint&) {}, [](const MappedImage&) {}};

const BackEnd* backEnd = &softwareBackEnd;

void SelectBackEnd(DrawBackEnd chosen) { backEnd = chosen == DrawBackEnd::software ? &softwareBackEnd : &noBackEnd; }
