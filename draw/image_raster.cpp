// From a mapped image to pixels: rows of samples are made in a small buffer and mixed into the target.
#include <algorithm>
#include <bit>

#include "draw/fill_sse2.h"
#include "draw/raster.h"

constexpr int chunk = 256;       // pixels sampled at a time
constexpr int narrowRow = 64;    // texels; a row this short is looked at whole for equal texels

// First step i of 0 to count at which start + i x step is at or above `limit`, for a rising walk.
static int64_t StepsTo(int64_t start, int64_t step, int64_t limit) {
    return start >= limit ? 0 : (limit - start + step - 1) / step;
}

// Narrows the columns [first, last) to those where start + i x step lies in [low, high).
static void LimitColumns(int64_t start, int64_t step, int64_t low, int64_t high, int64_t* first, int64_t* last) {
    if (step < 0) {  // the mirrored walk rises
        start = -start, step = -step;
        std::swap(low, high);
        low = 1 - low, high = 1 - high;
    }
    if (step == 0) {
        if (start < low || start >= high) *last = *first;
        return;
    }
    *first = std::max(*first, StepsTo(start, step, low));
    *last  = std::min(*last, StepsTo(start, step, high));
}

static const uint32_t* TexelRow(const Texels& texels, int64_t row) {
    return texels.pixels + ptrdiff_t{texels.pitch} * std::clamp<int64_t>(row, 0, texels.height - 1);
}

static void NearestRow(uint32_t* out, int count, const Walk& walk, const Texels& texels) {
    int64_t u = walk.u, v = walk.v;
    for (int x = 0; x < count; ++x, u += walk.uStep, v += walk.vStep)
        sse2::ReadTexels(out + x, TexelRow(texels, v >> 32) + std::clamp<int64_t>(u >> 32, 0, texels.width - 1), 1, texels);
}

// Texels first to last of the row that an unturned walk crosses, filtered down.
static void ReadFilteredDown(uint32_t* out, int first, int last, int64_t v, const Texels& texels) {
    const int64_t shifted = v - oneTexel / 2;
    const int weight = static_cast<int>(shifted >> 24 & 255), count = last - first + 1;
    uint32_t below[chunk + 2];
    sse2::ReadTexels(out, TexelRow(texels, shifted >> 32) + first, count, texels);
    if (weight == 0) return;
    sse2::ReadTexels(below, TexelRow(texels, (shifted >> 32) + 1) + first, count, texels);
    sse2::LerpRows(out, out, below, count, weight);
}

// Samples along a row. An unturned walk that stretches filters down once per texel, not once per pixel.
static void SmoothRow(uint32_t* out, int count, const Walk& walk, const Texels& texels) {
    const int last = texels.width - 1;
    const int64_t end = walk.u + walk.uStep * (count - 1);
    const auto texel = [&](int64_t u, int offset) {
        return std::clamp(static_cast<int>((u - oneTexel / 2) >> 32) + offset, 0, last);
    };
    const int first = texel(std::min(walk.u, end), 0), final = texel(std::max(walk.u, end), 1);
    if (walk.vStep != 0 || final - first + 1 > chunk + 2) return sse2::LerpTexels(out, count, walk, texels);
    uint32_t down[chunk + 2];
    ReadFilteredDown(down, first, final, walk.v, texels);
    sse2::LerpAlong(out, down, count, walk, first, last);
}

static bool IsPlainCopy(const MappedImage& image) {
    return image.walk.uStep == oneTexel && image.walk.vStep == 0 && image.uDown == 0 && image.vDown == oneTexel &&
           static_cast<uint32_t>(image.walk.u) == oneTexel / 2 && static_cast<uint32_t>(image.walk.v) == oneTexel / 2;
}

static void MixSamples(uint32_t* row, int count, Walk walk, const MappedImage& image, bool plainCopy) {
    uint32_t samples[chunk];
    for (; count > 0; count -= chunk, row += chunk) {
        const int part = std::min(count, chunk);
        if (plainCopy)
            sse2::ReadTexels(samples, TexelRow(image.texels, walk.v >> 32) + (walk.u >> 32), part, image.texels);
        else if (image.smooth)
            SmoothRow(samples, part, walk, image.texels);
        else
            NearestRow(samples, part, walk, image.texels);
        sse2::MixRow(row, samples, part, image.mix);
        walk.u += walk.uStep * part;
        walk.v += walk.vStep * part;
    }
}

// When all texels of the row are equal, their sample is the only one; a strip of a few pixels across the whole window then
// costs about as much as a fill. Returns whether it did so.
static bool FillEqualRow(uint32_t* row, int count, const Walk& walk, const MappedImage& image) {
    const Texels& texels = image.texels;
    uint32_t samples[narrowRow];
    if (image.smooth)
        ReadFilteredDown(samples, 0, texels.width - 1, walk.v, texels);
    else
        sse2::ReadTexels(samples, TexelRow(texels, walk.v >> 32), texels.width, texels);
    for (int x = 1; x < texels.width; ++x)
        if (samples[x] != samples[0]) return false;
    if (image.mix.kind == BlendKind::copy) {
        uint32_t mixed = row[0];
        sse2::MixRow(&mixed, samples, 1, image.mix);
        if (samples[0] >> 24 >= 128) sse2::CopyRows(row, 0, count, 1, mixed);
        return true;
    }
    std::fill_n(samples, narrowRow, samples[0]);
    for (; count > 0; count -= narrowRow, row += narrowRow)
        sse2::MixRow(row, samples, std::min(count, narrowRow), image.mix);
    return true;
}

// Mixes the columns under which something shows: a picture of a thin line is mostly clear.
static void MixVisibleBlocks(uint32_t* row, int count, const Walk& walk, const MappedImage& image, bool plainCopy) {
    const int64_t texelRow = (walk.v - oneTexel / 2) >> 32;  // the filter's first one; a plain copy takes it or the next
    const auto blocksOf = [&](int64_t y) { return image.blocks[std::clamp<int64_t>(y, 0, image.texels.height - 1)]; };
    uint64_t blocks = blocksOf(texelRow) | blocksOf(texelRow + 1);
    int64_t done = 0;
    while (blocks) {
        const int first = std::countr_zero(blocks), end = first + std::countr_one(blocks >> first);
        int64_t from = done, to = count;
        // The filter reaches one texel further.
        LimitColumns(walk.u, walk.uStep, oneTexel * (int64_t{first} * image.blockTexels - 1),
                     oneTexel * (int64_t{end} * image.blockTexels + 1), &from, &to);
        if (from < to) {
            const Walk part{walk.u + walk.uStep * from, walk.v, walk.uStep, 0};
            MixSamples(row + from, static_cast<int>(to - from), part, image, plainCopy);
            done = to;
        }
        blocks = end < 64 ? blocks >> end << end : 0;
    }
}

void RasterImage(const MappedImage& image) {
    const PixelRect& area = image.area;
    const bool plainCopy = IsPlainCopy(image), turned = image.walk.vStep != 0 || image.uDown != 0;
    const bool narrow = !plainCopy && !turned && image.texels.width <= narrowRow && area.right - area.left > narrowRow;
    Walk walk = image.walk;
    for (int y = area.top; y < area.bottom; ++y, walk.u += image.uDown, walk.v += image.vDown) {
        int64_t first = 0, last = area.right - area.left;
        LimitColumns(walk.u, walk.uStep, image.uLow, image.uHigh, &first, &last);
        LimitColumns(walk.v, walk.vStep, image.vLow, image.vHigh, &first, &last);
        if (first >= last) continue;
        uint32_t* row = TargetPixel(area.left + static_cast<int>(first), y);
        const int count = static_cast<int>(last - first);
        const Walk start{walk.u + walk.uStep * first, walk.v + walk.vStep * first, walk.uStep, walk.vStep};
        if (narrow && FillEqualRow(row, count, start, image)) continue;
        if (image.blocks)
            MixVisibleBlocks(row, count, start, image, plainCopy);
        else
            MixSamples(row, count, start, image, plainCopy);
    }
}
