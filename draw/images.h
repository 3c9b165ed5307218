// images.h -- the images behind the handles.
//
// Owns     their pixels, from creation to DeleteImage.  Written by drawing with an image as target, by nothing else.
#pragma once
#include <memory>

#include "draw/draw_layer.h"
#include "draw/raster.h"
#include "draw/surface.h"

constexpr int imageSideLimit = 16384;  // pixels

// Texels left, top (inclusive) to right, bottom (exclusive).
struct TexelBox {
    int left, top, right, bottom;
};
struct Image {
    std::unique_ptr<uint32_t[]> memory;
    Surface surface;      // pixels is nullptr in a free entry
    ImageOptions options;
    bool keyed;           // has a transparent colour of its own, else that of the layer counts
    bool keyable;         // has a transparent colour at all
    Color key;
    // Box of the texels that a transparent draw shows; found anew when the image has changed or the colour is another.
    TexelBox visible;
    std::unique_ptr<uint64_t[]> visibleBits;  // MaskWords a row, a bit for each texel; short gaps count as visible
    Color visibleKey;
    bool visibleKnown;
    KeptSamples kept;     // of an image with an alpha channel; void when the visible texels are found anew
};

void DefaultImages();
// nullptr for a bad handle.
Image* FindImage(int handle);
// Words of the mask of a row's visible texels; the bits behind the last texel are 0.
inline int MaskWords(const Surface& surface) { return (surface.width + 63) / 64; }
// Makes a black image, or a clear one with alpha; -1 when there is no memory for it or a side is out of range.
int AddImage(int width, int height, const ImageOptions& options);
// The colour that a transparent draw leaves out; meaningless in an image with an alpha channel.
Color TransparentColorOf(const Image& image);
// The box, and with it the bits.
const TexelBox& VisibleTexels(Image& image);
// Makes the surface of the window the target again after it was made anew.
void TargetBackBuffer();
