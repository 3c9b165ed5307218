#include <algorithm>

#include "draw/blend.h"

namespace plain {

// f(a, b) for each of the four channels.
template <class F>
static uint32_t PerChannel(uint32_t a, uint32_t b, F f) {
    uint32_t result = 0;
    for (int shift = 0; shift < 32; shift += 8) result |= f(a >> shift & 255, b >> shift & 255) << shift;
    return result;
}
static uint32_t Add(uint32_t d, uint32_t s) {
    return PerChannel(d, s, [](uint32_t a, uint32_t b) { return std::min(a + b, 255u); });
}
static uint32_t Subtract(uint32_t d, uint32_t s) {
    return PerChannel(d, s, [](uint32_t a, uint32_t b) { return a > b ? a - b : 0; });
}
// (s x w + d x (255 - w)) / 255 with a weight per channel.
static uint32_t Weigh(uint32_t d, uint32_t s, uint32_t weight) {
    uint32_t result = 0;
    for (int shift = 0; shift < 32; shift += 8) {
        const uint32_t w = weight >> shift & 255;
        result |= Div255((s >> shift & 255) * w + (d >> shift & 255) * (255 - w)) << shift;
    }
    return result;
}

static uint32_t PaintPixel(uint32_t d, const Paint& paint) {
    switch (paint.kind) {
        case BlendKind::nothing: return d;
        case BlendKind::copy: return paint.source;
        case BlendKind::alpha: return Weigh(d, paint.source, paint.weight);
        case BlendKind::add: return Add(d, paint.source);
        case BlendKind::subtract: return Subtract(d, paint.source);
        case BlendKind::multiply: return MultiplyChannels(d, paint.source);
    }
    return d;
}

void FillPixels(uint32_t* pixels, ptrdiff_t pitch, int width, int height, const Paint& paint) {
    for (int y = 0; y < height; ++y, pixels += pitch)
        for (int x = 0; x < width; ++x) pixels[x] = PaintPixel(pixels[x], paint);
}

static uint32_t CoverPixel(uint32_t d, uint32_t covered, const Paint& paint) {
    const uint32_t coverage = covered * 0x01010101u;
    switch (paint.kind) {
        case BlendKind::nothing: return d;
        case BlendKind::copy: return Weigh(d, paint.source, coverage);
        case BlendKind::alpha: return Weigh(d, paint.source, MultiplyChannels(paint.weight, coverage));
        case BlendKind::add: return Add(d, MultiplyChannels(paint.source, coverage));
        case BlendKind::subtract: return Subtract(d, MultiplyChannels(paint.source, coverage));
        case BlendKind::multiply: return MultiplyChannels(d, Weigh(0xFFFFFFFF, paint.source, coverage));
    }
    return d;
}

void CoverRow(uint32_t* row, const uint8_t* coverage, int count, const Paint& paint) {
    for (int x = 0; x < count; ++x) row[x] = CoverPixel(row[x], coverage[x], paint);
}

// The colour of a premultiplied pixel, coverage 1 to 255.
static uint32_t Unmultiply(uint32_t pixel) {
    const uint32_t coverage = pixel >> 24;
    return PerChannel(pixel, 0, [coverage](uint32_t s, uint32_t) { return std::min(s * 255 / coverage, 255u); });
}

static uint32_t MixPixel(uint32_t d, uint32_t s, const Mix& mix) {
    const uint32_t parameter = mix.parameter * 0x01010101u;
    const uint32_t uncovered = 0xFFFFFFFF - (s >> 24) * 0x01010101u;
    switch (mix.kind) {
        case BlendKind::nothing: return d;
        case BlendKind::copy: return s >> 24 >= 128 ? Unmultiply(s) : d;
        case BlendKind::alpha: {
            const uint32_t weight = 255 - Div255((s >> 24) * mix.parameter);
            return PerChannel(d, s, [&](uint32_t a, uint32_t b) {  // light added to a clear image may pass its coverage
                return std::min(Div255(std::min(b * mix.parameter + a * weight, 65535u)), 255u);
            });
        }
        case BlendKind::add: return Add(d, MultiplyChannels(s, parameter));
        case BlendKind::subtract: return Subtract(d, MultiplyChannels(s, parameter));
        case BlendKind::multiply: return MultiplyChannels(d, Add(s, uncovered));
    }
    return d;
}

void MixRow(uint32_t* row, const uint32_t* source, int count, const Mix& mix) {
    for (int x = 0; x < count; ++x) {
        const uint32_t s = MultiplyChannels(source[x], mix.brightness);
        const bool drawn = mix.kind != BlendKind::nothing && (mix.kind != BlendKind::copy || s >> 24 >= 128);
        if (drawn) row[x] = (MixPixel(row[x], s, mix) & ~mix.keptBits) | (row[x] & mix.keptBits) | mix.setBits;
    }
}

static uint32_t Texel(uint32_t pixel, const Texels& texels) {
    return texels.keyed && pixel == texels.key ? 0 : pixel | texels.opaqueBits;
}

void ReadTexels(uint32_t* out, const uint32_t* row, int count, const Texels& texels) {
    for (int x = 0; x < count; ++x) out[x] = Texel(row[x], texels);
}

static uint32_t Lerp(uint32_t a, uint32_t b, uint32_t weight) {
    return PerChannel(a, b, [weight](uint32_t p, uint32_t q) { return (p * (256 - weight) + q * weight + 128) >> 8; });
}

void LerpRows(uint32_t* out, const uint32_t* top, const uint32_t* bottom, int count, int weight) {
    for (int x = 0; x < count; ++x) out[x] = Lerp(top[x], bottom[x], weight);
}

// A tap's place and weight at a position in the image.
struct Tap {
    int first, second;
    uint32_t weight;
};
static Tap TapAt(int64_t position, int last) {
    const int64_t shifted = position - oneTexel / 2;
    const int at = static_cast<int>(shifted >> 32);
    return {std::clamp(at, 0, last), std::clamp(at + 1, 0, last), static_cast<uint32_t>(shifted >> 24 & 255)};
}

void LerpAlong(uint32_t* out, const uint32_t* row, int count, const Walk& walk, int base, int last) {
    int64_t u = walk.u;
    for (int x = 0; x < count; ++x, u += walk.uStep) {
        const Tap across = TapAt(u, last);
        out[x] = Lerp(row[across.first - base], row[across.second - base], across.weight);
    }
}

void LerpTexels(uint32_t* out, int count, const Walk& walk, const Texels& texels) {
    int64_t u = walk.u, v = walk.v;
    for (int x = 0; x < count; ++x, u += walk.uStep, v += walk.vStep) {
        const Tap across = TapAt(u, texels.width - 1), down = TapAt(v, texels.height - 1);
        const uint32_t* top    = texels.pixels + ptrdiff_t{texels.pitch} * down.first;
        const uint32_t* bottom = texels.pixels + ptrdiff_t{texels.pitch} * down.second;
        const uint32_t left  = Lerp(Texel(top[across.first], texels), Texel(bottom[across.first], texels), down.weight);
        const uint32_t right = Lerp(Texel(top[across.second], texels), Texel(bottom[across.second], texels), down.weight);
        out[x] = Lerp(left, right, across.weight);
    }
}

}  // namespace plain
