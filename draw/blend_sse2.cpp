#include <algorithm>
#include <cstring>

#include "draw/fill_sse2.h"

namespace sse2 {

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
    const auto mixFour = [&](Pixels d, Pixels s) {
        if (!neutral) s = ScalePixels(s, brightness);
        Pixels drawn = _mm_or_si128(_mm_and_si128(kept, d), _mm_andnot_si128(kept, blend(d, s)));
        drawn = _mm_or_si128(drawn, set);
        if (!copies) return drawn;
        const Pixels covered = MostlyCovered(s);
        return _mm_or_si128(_mm_and_si128(covered, drawn), _mm_andnot_si128(covered, d));
    };
    int x = 0;
    for (; x + 4 <= count; x += 4) Store4(row + x, mixFour(Load4(row + x), Load4(source + x)));
    if (x == count) return;
    uint32_t d[4] = {}, s[4] = {};
    std::memcpy(d, row + x, (count - x) * sizeof d[0]);
    std::memcpy(s, source + x, (count - x) * sizeof s[0]);
    Store4(d, mixFour(Load4(d), Load4(s)));
    std::memcpy(row + x, d, (count - x) * sizeof d[0]);
}

void MixRow(uint32_t* row, const uint32_t* source, int count, const Mix& mix) {
    const Pixels parameter = Words(static_cast<int>(mix.parameter));
    switch (mix.kind) {
        case BlendKind::nothing: return;
        case BlendKind::copy: return MixWith(row, source, count, mix, MixCopy{});
        case BlendKind::alpha: return MixWith(row, source, count, mix, MixAlpha{parameter});
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

// Words: (a x (256 - weight) + b x weight + 128) / 256, at most 65408 on the way.
static inline Pixels LerpWords(Pixels a, Pixels b, Pixels weight) {
    const Pixels rest = _mm_sub_epi16(Words(256), weight);
    const Pixels sum = _mm_add_epi16(_mm_mullo_epi16(a, rest), _mm_mullo_epi16(b, weight));
    return _mm_srli_epi16(_mm_add_epi16(sum, Words(128)), 8);
}

void LerpRows(uint32_t* out, const uint32_t* top, const uint32_t* bottom, int count, int weight) {
    const Pixels w = Words(weight);
    int x = 0;
    for (; x + 4 <= count; x += 4) {
        const Pixels a = Load4(top + x), b = Load4(bottom + x);
        Store4(out + x, _mm_packus_epi16(LerpWords(Low(a), Low(b), w), LerpWords(High(a), High(b), w)));
    }
    for (; x < count; ++x) {
        const Pixels value = LerpWords(Low(Load1(top + x)), Low(Load1(bottom + x)), w);
        Store1(out + x, _mm_packus_epi16(value, value));
    }
}

// Number of the first of two taps, not yet held inside the image, and the weight of the second.
static inline int FirstTap(int64_t position) { return static_cast<int>((position - oneTexel / 2) >> 32); }
static inline int TapWeight(int64_t position) { return static_cast<int>((position - oneTexel / 2) >> 24 & 255); }
// Lower two words-pixels to one: left x (256 - weight) + right x weight.
static inline Pixels LerpPair(Pixels leftRight, int weight) {
    const Pixels value = LerpWords(leftRight, _mm_srli_si128(leftRight, 8), Words(weight));
    return _mm_packus_epi16(value, value);
}
// Two neighbouring pixels of a row that begins with number `base`, the taps held inside 0 to last.
static inline Pixels LoadPair(const uint32_t* row, int first, int last, int base = 0) {
    if (static_cast<unsigned>(first) < static_cast<unsigned>(last)) return Load2(row + (first - base));
    return Four(row[std::clamp(first, 0, last) - base]);
}

void LerpAlong(uint32_t* out, const uint32_t* row, int count, const Walk& walk, int base, int last) {
    int64_t u = walk.u;
    for (int x = 0; x < count; ++x, u += walk.uStep)
        Store1(out + x, LerpPair(Low(LoadPair(row, FirstTap(u), last, base)), TapWeight(u)));
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
        Store1(out + x, LerpPair(LerpWords(Low(upper), Low(lower), Words(TapWeight(v))), TapWeight(u)));
    }
}

}  // namespace sse2
