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

// Whether texels need no preparation.
static bool AreReady(const Texels& texels) { return !texels.keyed && texels.opaqueBits == 0; }

static void NearestRow(uint32_t* out, int count, const Walk& walk, const Texels& texels) {
    int64_t u = walk.u, v = walk.v;
    for (int x = 0; x < count; ++x, u += walk.uStep, v += walk.vStep)
        sse2::ReadTexels(out + x, TexelRow(texels, v >> 32) + std::clamp<int64_t>(u >> 32, 0, texels.width - 1), 1, texels);
}

constexpr int downRoom = chunk + 5;  // texels that a chunk's samples look at, chunk + 2, in whole fours

// Texels first to last of the row that an unturned walk crosses, filtered down.
static void ReadFilteredDown(uint32_t* out, int first, int last, int64_t v, const Texels& texels) {
    const int64_t shifted = v - oneTexel / 2;
    const int weight = static_cast<int>(shifted >> 24 & 255), count = last - first + 1;
    const uint32_t* top    = TexelRow(texels, shifted >> 32) + first;
    const uint32_t* bottom = TexelRow(texels, (shifted >> 32) + 1) + first;
    if (weight != 0 && AreReady(texels)) return sse2::LerpRows(out, top, bottom, count, weight);
    sse2::ReadTexels(out, top, count, texels);
    if (weight == 0) return;
    uint32_t below[downRoom];
    sse2::ReadTexels(below, bottom, count, texels);
    sse2::LerpRows(out, out, below, count, weight);
}

// Samples along a row, up to three more than asked. An unturned walk that stretches filters down once per texel, not once
// per pixel.
static void SmoothRow(uint32_t* out, int count, const Walk& walk, const Texels& texels) {
    const int last = texels.width - 1;
    count = (count + 3) / 4 * 4;  // fours are quicker than a rest
    const int64_t end = walk.u + walk.uStep * (count - 1);
    const auto texel = [&](int64_t u, int offset) {
        return std::clamp(static_cast<int>((u - oneTexel / 2) >> 32) + offset, 0, last);
    };
    const int first = texel(std::min(walk.u, end), 0), final = texel(std::max(walk.u, end), 1);
    if (walk.vStep != 0 || final - first + 1 > chunk + 2) return sse2::LerpTexels(out, count, walk, texels);
    uint32_t down[downRoom];
    const int whole = std::min((final - first + 4) / 4 * 4, last - first + 1);
    ReadFilteredDown(down, first, first + whole - 1, walk.v, texels);
    sse2::LerpAlong(out, down, count, walk, first, last);
}

static bool IsPlainCopy(const MappedImage& image) {
    return image.walk.uStep == oneTexel && image.walk.vStep == 0 && image.uDown == 0 && image.vDown == oneTexel &&
           static_cast<uint32_t>(image.walk.u) == oneTexel / 2 && static_cast<uint32_t>(image.walk.v) == oneTexel / 2;
}

// At most a chunk of columns.
static void MixChunk(uint32_t* row, int count, const Walk& walk, const MappedImage& image, bool plainCopy) {
    const Texels& texels = image.texels;
    uint32_t samples[chunk];
    const uint32_t* source = samples;
    if (plainCopy) {
        const uint32_t* found = TexelRow(texels, walk.v >> 32) + (walk.u >> 32);
        if (AreReady(texels))
            source = found;
        else
            sse2::ReadTexels(samples, found, count, texels);
    } else if (image.smooth) {
        SmoothRow(samples, count, walk, texels);
    } else {
        NearestRow(samples, count, walk, texels);
    }
    sse2::MixRow(row, source, count, image.mix);
}

static void MixSamples(uint32_t* row, int count, const Walk& walk, const MappedImage& image, bool plainCopy) {
    if (count <= chunk) return MixChunk(row, count, walk, image, plainCopy);
    for (int done = 0; done < count; done += chunk) {
        const Walk part{walk.u + walk.uStep * done, walk.v + walk.vStep * done, walk.uStep, walk.vStep};
        MixChunk(row + done, std::min(count - done, chunk), part, image, plainCopy);
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

// The first texel from `from` on that shows in one of two rows, or that shows in neither with `flip` all ones.
static int NextTexel(const uint64_t* top, const uint64_t* bottom, int words, int from, uint64_t flip) {
    int word = from / 64;
    if (word >= words) return words * 64;
    uint64_t bits = ((top[word] | bottom[word]) ^ flip) & ~uint64_t{0} << from % 64;
    while (bits == 0) {
        if (++word == words) return words * 64;
        bits = (top[word] | bottom[word]) ^ flip;
    }
    return word * 64 + std::countr_zero(bits);
}

// Calls visit(from, to) for the columns of a row under which something shows: a picture of a thin line is mostly clear.
template <class Visit>
static void ForVisibleRuns(const Walk& walk, int count, const MappedImage& image, Visit visit) {
    const int64_t texelRow = (walk.v - oneTexel / 2) >> 32;  // the filter's first one; a plain copy takes it or the next
    const auto bitsOf = [&](int64_t y) {
        return image.visibleBits + ptrdiff_t{image.maskWords} * std::clamp<int64_t>(y, 0, image.texels.height - 1);
    };
    const uint64_t *top = bitsOf(texelRow), *bottom = bitsOf(texelRow + 1);
    int64_t done = 0;
    int first = 0, end = 0;
    while ((first = NextTexel(top, bottom, image.maskWords, end, 0)) < image.texels.width) {
        end = NextTexel(top, bottom, image.maskWords, first, ~uint64_t{0});
        int64_t from = done, to = count;
        // The filter reaches half a texel further.
        LimitColumns(walk.u, walk.uStep, oneTexel * first - oneTexel / 2, oneTexel * end + oneTexel / 2, &from, &to);
        if (from >= to) continue;
        visit(static_cast<int>(from), static_cast<int>(to));
        done = to;
    }
}

static void FetchTarget(int from, int to, int y) {
    for (int x = from; x < to; x += sse2::cacheLine) sse2::Fetch(TargetPixel(x, y));
}

// --- kept samples ------------------------------------------------------------------------------------------------------------

// Filters the whole picture, also what lies outside the target. Returns whether there was room for it.
static bool FillKeptSamples(const MappedImage& image) {
    KeptSamples& kept = *image.kept;
    const int width = image.whole.right - image.whole.left, height = image.whole.bottom - image.whole.top;
    int used = 0;
    kept.runCount = 0;
    kept.state    = KeptState::filled;
    Walk walk = kept.walk;
    for (int y = 0; y < height && kept.state == KeptState::filled; ++y, walk.v += kept.vDown)
        ForVisibleRuns(walk, width, image, [&](int from, int to) {
            for (int part; from < to; from += part) {
                part = std::min(to - from, chunk);
                if (kept.runCount == kept.runRoom || kept.sampleRoom - used < part + 3) {  // SmoothRow may write three more
                    kept.state = KeptState::noRoom;
                    return;
                }
                SmoothRow(&kept.samples[used], part, {walk.u + walk.uStep * from, walk.v, walk.uStep, 0}, image.texels);
                kept.runs[kept.runCount++] = {from, y, part};
                used += part;
            }
        });
    return kept.state == KeptState::filled;
}

// Filters them when they were asked for.
static bool KeptSamplesReady(const MappedImage& image) {
    return image.kept->state == KeptState::filled || (image.kept->state == KeptState::asked && FillKeptSamples(image));
}

// Where a run lies in the target, without what is clipped.
static PixelRect RunArea(const MappedImage& image, const SampleRun& run) {
    const int left = image.whole.left + run.x, top = image.whole.top + run.y;
    return {std::max(left, image.area.left), std::max(top, image.area.top), std::min(left + run.count, image.area.right),
            std::min(top + 1, image.area.bottom)};
}

static void MixKeptSamples(const MappedImage& image) {
    constexpr int runsAhead = 8;
    const KeptSamples& kept = *image.kept;
    const uint32_t* samples = kept.samples.get();
    for (int i = 0; i < kept.runCount; ++i) {
        const SampleRun& run = kept.runs[i];
        const PixelRect to = RunArea(image, run), later = RunArea(image, kept.runs[std::min(i + runsAhead, kept.runCount - 1)]);
        if (!Empty(later)) FetchTarget(later.left, later.right, later.top);
        if (!Empty(to))
            sse2::MixRow(TargetPixel(to.left, to.top), samples + (to.left - image.whole.left - run.x), to.right - to.left,
                         image.mix);
        samples += run.count;
    }
}

// --- whole images ------------------------------------------------------------------------------------------------------------

void RasterImage(const MappedImage& image) {
    if (image.kept && KeptSamplesReady(image)) return MixKeptSamples(image);
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
        if (!image.visibleBits) {
            MixSamples(row, count, start, image, plainCopy);
            continue;
        }
        const int x = area.left + static_cast<int>(first), below = std::min(y + sse2::rowsAhead, area.bottom - 1);
        ForVisibleRuns(start, count, image, [&](int from, int to) {
            FetchTarget(x + from, x + to, below);
            MixSamples(row + from, to - from, {start.u + start.uStep * from, start.v, start.uStep, 0}, image, plainCopy);
        });
    }
}
