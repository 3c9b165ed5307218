#include <algorithm>

#include "draw/fill_sse2.h"

namespace sse2 {

// --- one colour over long rows -------------------------------------------------------------------------------------------

constexpr int rowGap = 512;  // pixels; rows closer together are one stream, which the machine fetches by itself

// A cache line at a time: each is fetched once, and a loop of a few instructions would run at half its speed where it lies badly.
template <class Blend>
static void FillLines(uint32_t* pixels, ptrdiff_t pitch, int width, int height, const Blend& blend) {
    const bool apart = pitch - width >= rowGap;
    for (; height > 0; --height, pixels += pitch) {
        const uint32_t* ahead = apart && height > rowsAhead ? pixels + rowsAhead * pitch : nullptr;
        int x = 0;
        for (; x + cacheLine <= width; x += cacheLine) {
            if (ahead) Fetch(ahead + x);
            uint32_t* p = pixels + x;
            Store4(p, blend.All(Load4(p)));
            Store4(p + 4, blend.All(Load4(p + 4)));
            Store4(p + 8, blend.All(Load4(p + 8)));
            Store4(p + 12, blend.All(Load4(p + 12)));
        }
        FillWith(pixels + x, pitch, width - x, 1, blend);
    }
}

void FillLongRows(uint32_t* pixels, ptrdiff_t pitch, int width, int height, const Paint& paint) {
    switch (paint.kind) {
        case BlendKind::alpha: return FillLines(pixels, pitch, width, height, AlphaOf(paint));
        case BlendKind::add: return FillLines(pixels, pitch, width, height, Add{Four(paint.source)});
        case BlendKind::subtract: return FillLines(pixels, pitch, width, height, Subtract{Four(paint.source)});
        case BlendKind::multiply: return FillLines(pixels, pitch, width, height, Multiply{Low(Four(paint.source))});
        default: return FillPixels(pixels, pitch, width, height, paint);
    }
}

// --- one colour through a mask -----------------------------------------------------------------------------------------
// One pixel at a time, as words: most of a glyph's box is empty.

static inline Pixels WeighWords(Pixels d, Pixels s, Pixels weight) {
    const Pixels rest = _mm_sub_epi16(Words(255), weight);
    return Div255Words(_mm_add_epi16(_mm_mullo_epi16(s, weight), _mm_mullo_epi16(d, rest)));
}

template <class Blend>
static void CoverWith(uint32_t* row, const uint8_t* coverage, int count, Blend blend) {
    for (int x = 0; x < count; ++x) {
        if (coverage[x] == 0) continue;
        const Pixels result = blend(Low(Load1(row + x)), Words(coverage[x]));
        Store1(row + x, _mm_packus_epi16(result, result));
    }
}

void CoverRow(uint32_t* row, const uint8_t* coverage, int count, const Paint& paint) {
    const Pixels source = Low(Four(paint.source)), weight = Low(Four(paint.weight));
    switch (paint.kind) {
        case BlendKind::nothing: return;
        case BlendKind::copy: return CoverWith(row, coverage, count, [=](Pixels d, Pixels c) { return WeighWords(d, source, c); });
        case BlendKind::alpha:
            return CoverWith(row, coverage, count, [=](Pixels d, Pixels c) { return WeighWords(d, source, Scale(weight, c)); });
        case BlendKind::add:  // packing saturates
            return CoverWith(row, coverage, count, [=](Pixels d, Pixels c) { return _mm_add_epi16(d, Scale(source, c)); });
        case BlendKind::subtract:
            return CoverWith(row, coverage, count, [=](Pixels d, Pixels c) { return _mm_subs_epu16(d, Scale(source, c)); });
        case BlendKind::multiply:
            return CoverWith(row, coverage, count,
                             [=](Pixels d, Pixels c) { return Scale(d, WeighWords(Words(255), source, c)); });
    }
}

// --- rows of pixels ----------------------------------------------------------------------------------------------------

// The coverage of each of two pixels, as words, in all four channels.
static inline Pixels CoverageWords(Pixels words) {
    return _mm_shufflehi_epi16(_mm_shufflelo_epi16(words, _MM_SHUFFLE(3, 3, 3, 3)), _MM_SHUFFLE(3, 3, 3, 3));
}
// All bits of the pixels whose coverage is at least one half.
static inline Pixels MostlyCovered(Pixels s) { return _mm_srai_epi32(s, 31); }

struct MixCopy {
    Pixels operator()(Pixels, Pixels s) const {
        if (_mm_movemask_epi8(_mm_cmpeq_epi32(_mm_srli_epi32(s, 24), Four(255))) == 0xFFFF) return s;
        alignas(16) uint32_t pixel[4];
        _mm_store_si128(reinterpret_cast<Pixels*>(pixel), s);
        for (uint32_t& p : pixel) {
            const uint32_t coverage = p >> 24;
            if (coverage < 128 || coverage == 255) continue;
            uint32_t colour = 0;
            for (int shift = 0; shift < 32; shift += 8)
                colour |= std::min((p >> shift & 255) * 255 / coverage, 255u) << shift;
            p = colour;
        }
        return _mm_load_si128(reinterpret_cast<const Pixels*>(pixel));
    }
};
struct MixAlpha {
    Pixels parameter;
    Pixels Half(Pixels d, Pixels s) const {
        const Pixels rest = _mm_sub_epi16(Words(255), Scale(CoverageWords(s), parameter));
        return Div255Words(_mm_adds_epu16(_mm_mullo_epi16(s, parameter), _mm_mullo_epi16(d, rest)));
    }
    Pixels operator()(Pixels d, Pixels s) const { return _mm_packus_epi16(Half(Low(d), Low(s)), Half(High(d), High(s))); }
};
// Alpha with the full parameter: (s x 255 + d x rest) / 255 is s + d x rest / 255.
struct MixOver {
    Pixels operator()(Pixels d, Pixels s) const {
        const Pixels uncovered = _mm_srli_epi32(_mm_xor_si128(s, Four(0xFFFFFFFF)), 24);
        const Pixels rest = _mm_or_si128(uncovered, _mm_slli_epi32(uncovered, 16));
        const Pixels low = Scale(Low(d), _mm_unpacklo_epi32(rest, rest)), high = Scale(High(d), _mm_unpackhi_epi32(rest, rest));
        return _mm_adds_epu8(s, _mm_packus_epi16(low, high));
    }
};
// source x factor / 255, four pixels.
static inline Pixels ScalePixels(Pixels s, Pixels factor) {
    return _mm_packus_epi16(Scale(Low(s), factor), Scale(High(s), factor));
}
struct MixAdd {
    Pixels parameter;
    Pixels operator()(Pixels d, Pixels s) const { return _mm_adds_epu8(d, ScalePixels(s, parameter)); }
};
struct MixSubtract {
    Pixels parameter;
    Pixels operator()(Pixels d, Pixels s) const { return _mm_subs_epu8(d, ScalePixels(s, parameter)); }
};
struct MixMultiply {
    static Pixels Half(Pixels d, Pixels s) {
        const Pixels uncovered = _mm_sub_epi16(Words(255), CoverageWords(s));
        return Scale(d, _mm_min_epi16(_mm_add_epi16(s, uncovered), Words(255)));
    }
    Pixels operator()(Pixels d, Pixels s) const { return _mm_packus_epi16(Half(Low(d), Low(s)), Half(High(d), High(s))); }
};

template <class Blend>
static void MixWith(uint32_t* row, const uint32_t* source, int count, const Mix& mix, Blend blend) {
    const Pixels kept = Four(mix.keptBits), set = Four(mix.setBits);
    const Pixels brightness = Low(Four(mix.brightness));
    const bool neutral = mix.brightness == 0xFFFFFFFF, copies = mix.kind == BlendKind::copy;
    const auto mixFour = [=](Pixels d, Pixels s) {
        if (!neutral) s = ScalePixels(s, brightness);
        Pixels drawn = _mm_or_si128(_mm_and_si128(kept, d), _mm_andnot_si128(kept, blend(d, s)));
        drawn = _mm_or_si128(drawn, set);
        if (!copies) return drawn;
        const Pixels covered = MostlyCovered(s);
        return _mm_or_si128(_mm_and_si128(covered, drawn), _mm_andnot_si128(covered, d));
    };
    int x = 0;
    for (; x + 4 <= count; x += 4) Store4(row + x, mixFour(Load4(row + x), Load4(source + x)));
    if (count & 2) {
        Store2(row + x, mixFour(Load2(row + x), Load2(source + x)));
        x += 2;
    }
    if (count & 1) Store1(row + x, mixFour(Load1(row + x), Load1(source + x)));
}

void MixRow(uint32_t* row, const uint32_t* source, int count, const Mix& mix) {
    const Pixels parameter = Words(static_cast<int>(mix.parameter));
    switch (mix.kind) {
        case BlendKind::nothing: return;
        case BlendKind::copy: return MixWith(row, source, count, mix, MixCopy{});
        case BlendKind::alpha:
            if (mix.parameter == 255) return MixWith(row, source, count, mix, MixOver{});
            return MixWith(row, source, count, mix, MixAlpha{parameter});
        case BlendKind::add: return MixWith(row, source, count, mix, MixAdd{parameter});
        case BlendKind::subtract: return MixWith(row, source, count, mix, MixSubtract{parameter});
        case BlendKind::multiply: return MixWith(row, source, count, mix, MixMultiply{});
    }
}

// --- texels and linear filter ---------------------------------------------------------------------------------------------

static inline Pixels Prepare(Pixels p, const Texels& texels) {
    const Pixels opaque = _mm_or_si128(p, Four(texels.opaqueBits));
    return texels.keyed ? _mm_andnot_si128(_mm_cmpeq_epi32(p, Four(texels.key)), opaque) : opaque;
}

void ReadTexels(uint32_t* out, const uint32_t* row, int count, const Texels& texels) {
    int x = 0;
    for (; x + 4 <= count; x += 4) Store4(out + x, Prepare(Load4(row + x), texels));
    for (; x < count; ++x) Store1(out + x, Prepare(Load1(row + x), texels));
}

// Words of the lower or upper half: (a x (256 - weight) + b x weight + 128) / 256, as a x 256 + 128 + (b - a) x weight, which
// wraps on the way and ends at 65408 at most.
static inline Pixels LerpLow(Pixels a, Pixels b, Pixels weight) {
    const Pixels start = _mm_unpacklo_epi8(_mm_set1_epi8(-128), a);
    return _mm_srli_epi16(_mm_add_epi16(start, _mm_mullo_epi16(_mm_sub_epi16(Low(b), Low(a)), weight)), 8);
}
static inline Pixels LerpHigh(Pixels a, Pixels b, Pixels weight) {
    const Pixels start = _mm_unpackhi_epi8(_mm_set1_epi8(-128), a);
    return _mm_srli_epi16(_mm_add_epi16(start, _mm_mullo_epi16(_mm_sub_epi16(High(b), High(a)), weight)), 8);
}

void LerpRows(uint32_t* out, const uint32_t* top, const uint32_t* bottom, int count, int weight) {
    const Pixels w = Words(weight);
    int x = 0;
    for (; x + 4 <= count; x += 4) {
        const Pixels a = Load4(top + x), b = Load4(bottom + x);
        Store4(out + x, _mm_packus_epi16(LerpLow(a, b, w), LerpHigh(a, b, w)));
    }
    for (; x < count; ++x) {
        const Pixels value = LerpLow(Load1(top + x), Load1(bottom + x), w);
        Store1(out + x, _mm_packus_epi16(value, value));
    }
}

// Number of the first of two taps, not yet held inside the image, and the weight of the second.
static inline int FirstTap(int64_t position) { return static_cast<int>((position - oneTexel / 2) >> 32); }
static inline int TapWeight(int64_t position) { return static_cast<int>((position - oneTexel / 2) >> 24 & 255); }
// Two pixels to one between them.
static inline Pixels LerpPair(Pixels leftRight, int weight) {
    const Pixels value = LerpLow(leftRight, _mm_srli_si128(leftRight, 4), Words(weight));
    return _mm_packus_epi16(value, value);
}
// Two neighbouring pixels of a row that begins with number `base`, the taps held inside 0 to last.
static inline Pixels LoadPair(const uint32_t* row, int first, int last, int base = 0) {
    if (static_cast<unsigned>(first) < static_cast<unsigned>(last)) return Load2(row + (first - base));
    return Four(row[std::clamp(first, 0, last) - base]);
}

// Four pixels whose taps all lie inside the row, from position `at` on, which is that of a first tap.
static inline Pixels LerpFour(const uint32_t* row, int64_t at, int64_t step, Pixels laneSteps) {
    Pixels weight = _mm_srli_epi32(_mm_add_epi32(Four(static_cast<uint32_t>(at)), laneSteps), 24);
    weight = _mm_or_si128(weight, _mm_slli_epi32(weight, 16));
    const auto pairs = [row](int64_t first, int64_t second) {  // left, left, right, right
        return _mm_unpacklo_epi32(Load2(row + (first >> 32)), Load2(row + (second >> 32)));
    };
    const Pixels low = pairs(at, at + step), high = pairs(at + 2 * step, at + 3 * step);
    return _mm_packus_epi16(LerpLow(low, _mm_unpackhi_epi64(low, low), _mm_unpacklo_epi32(weight, weight)),
                            LerpLow(high, _mm_unpackhi_epi64(high, high), _mm_unpackhi_epi32(weight, weight)));
}

void LerpAlong(uint32_t* out, const uint32_t* row, int count, const Walk& walk, int base, int last) {
    const int64_t step = walk.uStep;
    const uint64_t inside = static_cast<uint64_t>(last) << 32;  // first taps from 0 to here have a neighbour
    const auto lane = [step](int number) { return static_cast<int>(static_cast<uint32_t>(number * step)); };
    const Pixels laneSteps = _mm_setr_epi32(0, lane(1), lane(2), lane(3));
    int64_t u = walk.u;
    const auto one = [&](uint32_t* p) {
        Store1(p, LerpPair(LoadPair(row, FirstTap(u), last, base), TapWeight(u)));
        u += step;
    };
    int x = 0;
    for (; x + 4 <= count; x += 4) {
        const int64_t at = u - oneTexel / 2;
        if (static_cast<uint64_t>(at) < inside && static_cast<uint64_t>(at + 3 * step) < inside) {
            Store4(out + x, LerpFour(row - base, at, step, laneSteps));
            u += 4 * step;
        } else {
            for (int i = 0; i < 4; ++i) one(out + x + i);
        }
    }
    for (; x < count; ++x) one(out + x);
}

void LerpTexels(uint32_t* out, int count, const Walk& walk, const Texels& texels) {
    int64_t u = walk.u, v = walk.v;
    const int right = texels.width - 1, lowest = texels.height - 1;
    for (int x = 0; x < count; ++x, u += walk.uStep, v += walk.vStep) {
        const int row = FirstTap(v), column = FirstTap(u);
        const uint32_t* top    = texels.pixels + ptrdiff_t{texels.pitch} * std::clamp(row, 0, lowest);
        const uint32_t* bottom = texels.pixels + ptrdiff_t{texels.pitch} * std::clamp(row + 1, 0, lowest);
        const Pixels upper = Prepare(LoadPair(top, column, right), texels);
        const Pixels lower = Prepare(LoadPair(bottom, column, right), texels);
        const Pixels down = LerpLow(upper, lower, Words(TapWeight(v)));
        Store1(out + x, LerpPair(_mm_packus_epi16(down, down), TapWeight(u)));
    }
}

}  // namespace sse2
