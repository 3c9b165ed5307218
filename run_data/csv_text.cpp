#include "run_data/csv_text.h"

#include <algorithm>
#include <bit>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

constexpr int blockBytes = 64;

namespace {
struct BlockBits { uint64_t separators, ends; };
}

#ifdef __SSE2__
static BlockBits SortOut(const char* bytes) {
    const __m128i comma = _mm_set1_epi8(','), quote = _mm_set1_epi8('"'), lf = _mm_set1_epi8('\n'), cr = _mm_set1_epi8('\r');
    BlockBits bits = {0, 0};
    for (int at = 0; at < blockBytes; at += 16) {
        const __m128i some = _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes + at));
        const __m128i ends = _mm_or_si128(_mm_or_si128(_mm_cmpeq_epi8(some, lf), _mm_cmpeq_epi8(some, cr)),
                                          _mm_cmpeq_epi8(some, _mm_setzero_si128()));
        const __m128i all = _mm_or_si128(_mm_or_si128(_mm_cmpeq_epi8(some, comma), _mm_cmpeq_epi8(some, quote)), ends);
        bits.separators |= static_cast<uint64_t>(_mm_movemask_epi8(all)) << at;
        bits.ends |= static_cast<uint64_t>(_mm_movemask_epi8(ends)) << at;
    }
    return bits;
}
#else
static BlockBits SortOut(const char* bytes) {
    BlockBits bits = {0, 0};
    for (int at = 0; at < blockBytes; at++) {
        const char c = bytes[at];
        const bool end = c == '\n' || c == '\r' || c == 0;
        bits.ends |= uint64_t{end} << at;
        bits.separators |= uint64_t{end || c == ',' || c == '"'} << at;
    }
    return bits;
}
#endif

static void EnterBlock(CsvText& text, int64_t block) {
    const BlockBits bits = SortOut(text.bytes + block);
    text.block = block;
    text.separators = bits.separators;
    text.ends = bits.ends;
}

CsvText StartCsv(const uint8_t* bytes, int length) {
    CsvText text = {reinterpret_cast<const char*>(bytes), length, 0, 0, 0, 0};
    EnterBlock(text, 0);
    return text;
}

// Puts the cursor behind a line's end, and behind the other half of a double one.
static void PassLineEnd(CsvText& text, int64_t end) {
    const char first = text.bytes[end], second = text.bytes[end + 1];
    text.cursor = end + 1;
    if (!((first == '\r' && second == '\n') || (first == '\n' && second == '\r'))) return;
    text.cursor++;
    if (end + 1 == text.block + blockBytes) EnterBlock(text, end + 1);
    text.separators &= text.separators - 1;
}

bool ReadLine(CsvText& text, CsvLine& line, int most) {
    if (text.cursor > text.length) {
        text.cursor = 0;
        return false;
    }
    if (text.bytes[text.cursor] == 0) return false;
    const int64_t start = text.cursor;
    const char* const bytes = text.bytes;
    BlockBits bits = {text.separators, text.ends};  // at hand, as every field asks for them
    int64_t block = text.block, begin = start, at = 0;
    int fields = 0;
    for (bool over = false; !over;) {
        while (bits.separators == 0) {
            if (block - start > csvLineLimit) return false;
            block += blockBytes;
            bits = SortOut(bytes + block);
        }
        const int bit = std::countr_zero(bits.separators);
        bits.separators &= bits.separators - 1;
        over = bits.ends >> bit & 1;
        at = block + bit;
        if (at > begin && fields < most)
            line.field[fields++] = {bytes + begin, static_cast<int>(std::min<int64_t>(at - begin, csvFieldLimit))};
        begin = at + 1;
    }
    if (at - start >= csvLineLimit) return false;
    text.block = block;
    text.separators = bits.separators;
    text.ends = bits.ends;
    line.fields = fields;
    PassLineEnd(text, at);
    return true;
}
