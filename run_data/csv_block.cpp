#include "run_data/csv_block.h"

#include <algorithm>
#include <array>
#include <bit>

void StartBlocks(CsvBlock& block, const CsvText& text, int columns) {
    block.text = text;
    block.columns = columns;
    block.step = (columns + csvPlacesAtOnce - 1) / csvPlacesAtOnce * csvPlacesAtOnce;
    block.lines = 0;
    block.piece.nextEnd = block.piece.endsEnd = block.piece.perLine = 0;
}

static bool TakeLinePlain(CsvBlock& block) {
    CsvLine line;
    const int64_t start = block.text.cursor;
    if (!CsvLineBegins(block.text) || !ReadLine(block.text, line, block.columns)) return false;
    CsvSpan* const span = block.span + block.lines * block.step;
    std::fill_n(span, block.columns, CsvSpan{0, 0});
    for (int k = 0; k < line.fields; k++) {
        const int64_t end = line.field[k].text + line.field[k].length - (block.text.bytes + start);
        span[k] = {static_cast<uint16_t>(end), static_cast<uint16_t>(line.field[k].length)};
    }
    return true;
}

template <class TakeLine>
static void ReadLines(CsvBlock& block, int wanted, TakeLine takeLine) {
    block.start[0] = block.text.cursor;
    for (block.lines = 0; block.lines < wanted && takeLine(block);) block.start[++block.lines] = block.text.cursor;
}

void ReadBlockPlain(CsvBlock& block, int wanted) { ReadLines(block, wanted, TakeLinePlain); }

#ifdef __SSE2__
#include <emmintrin.h>

constexpr int wordBytes = 64;  // one bit for each of so many bytes

namespace {
struct WordBits { uint64_t separators, ends; };
// The places of the bits of a byte.
struct BytePlaces {
    alignas(16) uint16_t place[256][csvPlacesAtOnce];
    uint8_t count[256];
};
}  // namespace

static constexpr BytePlaces bytePlaces = [] {
    BytePlaces places = {};
    for (int byte = 0; byte < 256; byte++)
        for (int bit = 0; bit < 8; bit++)
            if (byte >> bit & 1) places.place[byte][places.count[byte]++] = static_cast<uint16_t>(bit);
    return places;
}();

static WordBits SortOut(const char* bytes) {
    const __m128i comma = _mm_set1_epi8(','), quote = _mm_set1_epi8('"'), lf = _mm_set1_epi8('\n'), cr = _mm_set1_epi8('\r');
    WordBits bits = {0, 0};
#pragma GCC unroll 4
    for (int at = 0; at < wordBytes; at += 16) {
        const __m128i some = _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes + at));
        const __m128i ends = _mm_or_si128(_mm_or_si128(_mm_cmpeq_epi8(some, lf), _mm_cmpeq_epi8(some, cr)),
                                          _mm_cmpeq_epi8(some, _mm_setzero_si128()));
        const __m128i all = _mm_or_si128(_mm_or_si128(_mm_cmpeq_epi8(some, comma), _mm_cmpeq_epi8(some, quote)), ends);
        bits.separators |= static_cast<uint64_t>(_mm_movemask_epi8(all)) << at;
        bits.ends |= static_cast<uint64_t>(_mm_movemask_epi8(ends)) << at;
    }
    return bits;
}

// Adds the places of the bits to the list that ends at `place`; returns its new end. Eight places are written for each byte
// of bits, however many there are.
static uint16_t* NotePlaces(uint64_t bits, int first, uint16_t* place) {
    __m128i base = _mm_set1_epi16(static_cast<int16_t>(first));
#pragma GCC unroll 8
    for (int k = 0; k < 8; k++) {
        const int byte = static_cast<int>(bits >> 8 * k & 0xFF);
        const __m128i places = _mm_load_si128(reinterpret_cast<const __m128i*>(bytePlaces.place[byte]));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(place), _mm_add_epi16(places, base));
        place += bytePlaces.count[byte];
        base = _mm_add_epi16(base, _mm_set1_epi16(8));
    }
    return place;
}

// The same for a few bits: two are written, and mostly there are no more.
static uint16_t* NoteFewPlaces(uint64_t bits, int first, uint16_t* place) {
    constexpr uint64_t stop = uint64_t{1} << 63;  // there is always a bit to be found
    for (int k = 0; k < 2; k++) {
        *place = static_cast<uint16_t>(first + std::countr_zero(bits | stop));
        place += bits != 0;
        bits &= bits - 1;
    }
    for (; bits != 0; bits &= bits - 1) *place++ = static_cast<uint16_t>(first + std::countr_zero(bits));
    return place;
}

// Finds the separators from the cursor on, where a line begins. False when the line does not end in the piece. Behind the text
// stands a zero byte, so that its last line has an end too.
static bool ReadPiece(const CsvText& text, CsvPiece& piece) {
    const int bytes = static_cast<int>(std::min<int64_t>(csvPieceBytes, text.length + int64_t{1} - text.cursor));
    uint16_t *place = piece.place + csvPlacesAtOnce, *end = piece.end;
    place[-1] = UINT16_MAX;  // the separator in front of the first line
    for (int at = 0; at < bytes; at += wordBytes) {
        const WordBits bits = SortOut(text.bytes + text.cursor + at);
        place = NotePlaces(bits.separators, at, place);
        end = NoteFewPlaces(bits.ends, at, end);
    }
    piece.start = text.cursor;
    piece.next = csvPlacesAtOnce;
    piece.nextEnd = 0;
    piece.placesEnd = static_cast<int>(place - piece.place);
    piece.endsEnd = static_cast<int>(end - piece.end);
    return piece.endsEnd > 0;
}

// A line that has as many separators as the one before and no field that is empty or too long. False for others.
static bool TakeRegularLine(CsvBlock& block, const uint16_t* place, int start, int end, CsvSpan* span) {
    const CsvPiece& piece = block.piece;
    const bool sameNumber = piece.next + piece.perLine <= piece.placesEnd && place[piece.perLine - 1] == end;
    if (!sameNumber || piece.perLine < block.columns) return false;
    const __m128i starts = _mm_set1_epi16(static_cast<int16_t>(start)), counting = _mm_setr_epi16(0, 1, 2, 3, 4, 5, 6, 7);
    __m128i bad = _mm_setzero_si128();
    for (int k = 0; k < block.columns; k += csvPlacesAtOnce) {
        const __m128i here = _mm_loadu_si128(reinterpret_cast<const __m128i*>(place + k));
        const __m128i before = _mm_loadu_si128(reinterpret_cast<const __m128i*>(place + k - 1));
        const __m128i ends = _mm_sub_epi16(here, starts);
        const __m128i lengths = _mm_sub_epi16(_mm_sub_epi16(here, before), _mm_set1_epi16(1));
        const __m128i used = _mm_cmpgt_epi16(_mm_set1_epi16(static_cast<int16_t>(block.columns - k)), counting);
        const __m128i wrong = _mm_or_si128(_mm_cmpgt_epi16(_mm_set1_epi16(1), lengths),
                                           _mm_cmpgt_epi16(lengths, _mm_set1_epi16(csvFieldLimit)));
        bad = _mm_or_si128(bad, _mm_and_si128(wrong, used));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(span + k), _mm_unpacklo_epi16(ends, lengths));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(span + k + 4), _mm_unpackhi_epi16(ends, lengths));
    }
    return _mm_movemask_epi8(bad) == 0;
}

// Any line. Returns how many separators it has.
static int TakeOddLine(const CsvBlock& block, const uint16_t* place, int start, int end, CsvSpan* span) {
    CsvSpan* const behind = span + block.columns;
    int begin = start, separators = 0;
    for (int at = -1; at != end; begin = at + 1) {
        at = place[separators++];
        if (at == begin || span == behind) continue;
        const int length = std::min(at - begin, csvFieldLimit);
        *span++ = {static_cast<uint16_t>(begin + length - start), static_cast<uint16_t>(length)};
    }
    std::fill(span, behind, CsvSpan{0, 0});
    return separators;
}

static bool TakeLine(CsvBlock& block) {
    CsvText& text = block.text;
    CsvPiece& piece = block.piece;
    if (!CsvLineBegins(text)) return false;
    if (piece.nextEnd >= piece.endsEnd && !ReadPiece(text, piece)) return false;
    const int start = static_cast<int>(text.cursor - piece.start), end = piece.end[piece.nextEnd];
    if (end - start >= csvLineLimit) return false;
    const uint16_t* const place = piece.place + piece.next;
    CsvSpan* const span = block.span + block.lines * block.step;
    if (!TakeRegularLine(block, place, start, end, span)) piece.perLine = TakeOddLine(block, place, start, end, span);
    // A double end has two separators. When the second one is behind the piece, the next line is too.
    const int endBytes = CsvLineEndBytes(text.bytes + piece.start + end);
    piece.next += piece.perLine + endBytes - 1;
    piece.nextEnd += endBytes;
    text.cursor = piece.start + end + endBytes;
    return true;
}

void ReadBlock(CsvBlock& block, int wanted) { ReadLines(block, wanted, TakeLine); }
#else
void ReadBlock(CsvBlock& block, int wanted) { ReadBlockPlain(block, wanted); }
#endif
