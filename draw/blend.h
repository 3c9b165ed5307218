// blend.h -- exact integer blending: one colour, a coverage mask or a row of pixels over pixels of the target.
//
// Every operation stands twice: in plain C++, which says what it does, and in SSE2, which the program runs. Random tests
// compare the two byte for byte. Pixels are 0xAARRGGBB. A target without an alpha channel keeps 0 in the top byte.
#pragma once
#include <cstddef>
#include <cstdint>

enum class BlendKind : uint8_t { nothing, copy, alpha, add, subtract, multiply };

constexpr uint32_t alphaBits = 0xFF000000;

// x / 255, exact for 0 to 65535.
constexpr uint32_t Div255(uint32_t x) { return (x * 0x8081u) >> 23; }
// a x b / 255 in each of the four channels, truncated.
constexpr uint32_t MultiplyChannels(uint32_t a, uint32_t b) {
    uint32_t product = 0;
    for (int shift = 0; shift < 32; shift += 8) product |= Div255((a >> shift & 255) * (b >> shift & 255)) << shift;
    return product;
}

// One colour made ready for the blend at hand, once per call and never per pixel.
struct Paint {
    BlendKind kind;
    uint32_t source;  // after brightness; with add and subtract also after the parameter
    uint32_t weight;  // alpha: the parameter in every channel that changes, 0 in one that stays
};

// What is done with a row of source pixels, which are premultiplied and carry their coverage in the top byte.
struct Mix {
    BlendKind kind;
    uint32_t parameter;   // 0 to 255
    uint32_t brightness;  // per channel, 255 for the coverage
    uint32_t keptBits;    // bits of the target that stay
    uint32_t setBits;     // bits that are set in what was drawn
};

// Texels of an image as they are sampled.
struct Texels {
    const uint32_t* pixels;
    int width, height, pitch;
    bool keyed;           // texels equal to `key` are clear
    uint32_t key;
    uint32_t opaqueBits;  // OR-ed to every other texel: alphaBits where the image's own alpha channel does not count
};
// A place in an image that moves by a constant step, in texels with 32 fraction bits.
struct Walk {
    int64_t u, v, uStep, vStep;
};
constexpr int64_t oneTexel = int64_t{1} << 32;

namespace plain {
// A rectangle of one colour.
void FillPixels(uint32_t* pixels, ptrdiff_t pitch, int width, int height, const Paint& paint);
// A row of one colour through a mask of 0 to 255. A copy blends at the edges as alpha does.
void CoverRow(uint32_t* row, const uint8_t* coverage, int count, const Paint& paint);
// A row of pixels. A copy draws where at least half is covered, in the colour without its coverage.
void MixRow(uint32_t* row, const uint32_t* source, int count, const Mix& mix);
// Texels with coverage, from a row of the image.
void ReadTexels(uint32_t* out, const uint32_t* row, int count, const Texels& texels);
// (top x (256 - weight) + bottom x weight + 128) / 256 per channel; weight 0 to 255.
void LerpRows(uint32_t* out, const uint32_t* top, const uint32_t* bottom, int count, int weight);
// Linear filter along one row, `base` being its first texel's number and `last` the image's last one; v is not used.
void LerpAlong(uint32_t* out, const uint32_t* row, int count, const Walk& walk, int base, int last);
// Linear filter over four texels, first down, then across; clamped at the image's edge.
void LerpTexels(uint32_t* out, int count, const Walk& walk, const Texels& texels);
}  // namespace plain

namespace sse2 {  // FillPixels stands in fill_sse2.h
// FillPixels for wide rectangles. Where rows lie apart it fetches some of them ahead.
void FillLongRows(uint32_t* pixels, ptrdiff_t pitch, int width, int height, const Paint& paint);
void CoverRow(uint32_t* row, const uint8_t* coverage, int count, const Paint& paint);
void MixRow(uint32_t* row, const uint32_t* source, int count, const Mix& mix);
void ReadTexels(uint32_t* out, const uint32_t* row, int count, const Texels& texels);
void LerpRows(uint32_t* out, const uint32_t* top, const uint32_t* bottom, int count, int weight);
void LerpAlong(uint32_t* out, const uint32_t* row, int count, const Walk& walk, int base, int last);
void LerpTexels(uint32_t* out, int count, const Walk& walk, const Texels& texels);
}  // namespace sse2
