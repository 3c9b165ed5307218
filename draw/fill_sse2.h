// fill_sse2.h -- rectangles of one colour in SSE2, inline for the sake of the many small ones.
#pragma once
#include <emmintrin.h>

#include "draw/blend.h"

namespace sse2 {

using Pixels = __m128i;  // four pixels, or two with 16 bits a channel

inline Pixels Zero() { return _mm_setzero_si128(); }
inline Pixels Words(int value) { return _mm_set1_epi16(static_cast<short>(value)); }
inline Pixels Four(uint32_t pixel) { return _mm_set1_epi32(static_cast<int>(pixel)); }
inline Pixels Low(Pixels p) { return _mm_unpacklo_epi8(p, Zero()); }
inline Pixels High(Pixels p) { return _mm_unpackhi_epi8(p, Zero()); }
inline Pixels Div255Words(Pixels p) { return _mm_srli_epi16(_mm_mulhi_epu16(p, Words(0x8081)), 7); }
inline Pixels Scale(Pixels words, Pixels factor) { return Div255Words(_mm_mullo_epi16(words, factor)); }

inline Pixels Load1(const uint32_t* p) { return _mm_cvtsi32_si128(static_cast<int>(*p)); }
inline Pixels Load2(const uint32_t* p) { return _mm_loadl_epi64(reinterpret_cast<const Pixels*>(p)); }
inline Pixels Load4(const uint32_t* p) { return _mm_loadu_si128(reinterpret_cast<const Pixels*>(p)); }
inline void Store1(uint32_t* p, Pixels value) { *p = static_cast<uint32_t>(_mm_cvtsi128_si32(value)); }
inline void Store2(uint32_t* p, Pixels value) { _mm_storel_epi64(reinterpret_cast<Pixels*>(p), value); }
inline void Store4(uint32_t* p, Pixels value) { _mm_storeu_si128(reinterpret_cast<Pixels*>(p), value); }

// Rows of a panel in the window lie apart. The processor looks ahead along one row, but has to be told where the next ones
// begin, else each begins with a wait for memory.
constexpr int cacheLine = 16;  // pixels
constexpr int rowsAhead = 3;
inline void Fetch(const uint32_t* pixels) { _mm_prefetch(reinterpret_cast<const char*>(pixels), _MM_HINT_T1); }

// --- one colour ----------------------------------------------------------------------------------------------------
// Each blend says what becomes of four pixels and, more cheaply, of the lower two.

struct Copy {
    Pixels source;
    Pixels All(Pixels) const { return source; }
    Pixels Lower(Pixels) const { return source; }
};
struct Alpha {
    Pixels weighted, rest;  // source x weight, 255 - weight, as words
    Pixels Weigh(Pixels d) const { return Div255Words(_mm_add_epi16(weighted, _mm_mullo_epi16(d, rest))); }
    Pixels All(Pixels d) const { return _mm_packus_epi16(Weigh(Low(d)), Weigh(High(d))); }
    Pixels Lower(Pixels d) const { return _mm_packus_epi16(Weigh(Low(d)), Zero()); }
};
struct Add {
    Pixels source;
    Pixels All(Pixels d) const { return _mm_adds_epu8(d, source); }
    Pixels Lower(Pixels d) const { return All(d); }
};
struct Subtract {
    Pixels source;
    Pixels All(Pixels d) const { return _mm_subs_epu8(d, source); }
    Pixels Lower(Pixels d) const { return All(d); }
};
struct Multiply {
    Pixels source;  // words
    Pixels All(Pixels d) const { return _mm_packus_epi16(Scale(Low(d), source), Scale(High(d), source)); }
    Pixels Lower(Pixels d) const { return _mm_packus_epi16(Scale(Low(d), source), Zero()); }
};

// A plot is made of columns one pixel wide, the A/F map of small squares: both have their own short way. The last three
// pixels of a row go as 8 + 4 bytes, since a wide load of what was just stored in parts waits for the stores.
template <class Blend>
inline void FillWith(uint32_t* pixels, ptrdiff_t pitch, int width, int height, const Blend& blend) {
    if (width == 1) {
        for (; height > 0; --height, pixels += pitch) Store1(pixels, blend.Lower(Load1(pixels)));
        return;
    }
    for (; height > 0; --height, pixels += pitch) {
        uint32_t* p = pixels;
        for (int left = width; left >= 4; left -= 4, p += 4) Store4(p, blend.All(Load4(p)));
        if (width & 2) {
            Store2(p, blend.Lower(Load2(p)));
            p += 2;
        }
        if (width & 1) Store1(p, blend.Lower(Load1(p)));
    }
}

// Rows of one colour. From some length on the processor's own string store is twice as fast as any row of SSE2 stores.
constexpr int longRow = 128;  // pixels
inline void CopyRows(uint32_t* pixels, ptrdiff_t pitch, int width, int height, uint32_t source) {
    if (width < longRow) return FillWith(pixels, pitch, width, height, Copy{Four(source)});
    for (; height > 0; --height, pixels += pitch) {
        uint32_t* p  = pixels;
        size_t count = static_cast<size_t>(width);
        asm volatile("rep stosl" : "+D"(p), "+c"(count) : "a"(source) : "memory");
    }
}

inline Alpha AlphaOf(const Paint& paint) {
    const Pixels weight = Low(Four(paint.weight));
    return {_mm_mullo_epi16(Low(Four(paint.source)), weight), _mm_sub_epi16(Words(255), weight)};
}

inline void FillPixels(uint32_t* pixels, ptrdiff_t pitch, int width, int height, const Paint& paint) {
    switch (paint.kind) {
        case BlendKind::nothing: return;
        case BlendKind::copy: return CopyRows(pixels, pitch, width, height, paint.source);
        case BlendKind::alpha: return FillWith(pixels, pitch, width, height, AlphaOf(paint));
        case BlendKind::add: return FillWith(pixels, pitch, width, height, Add{Four(paint.source)});
        case BlendKind::subtract: return FillWith(pixels, pitch, width, height, Subtract{Four(paint.source)});
        case BlendKind::multiply: return FillWith(pixels, pitch, width, height, Multiply{Low(Four(paint.source))});
    }
}

}  // namespace sse2
