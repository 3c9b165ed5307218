#include "run_data/spread_frames.h"

#include <algorithm>
#include <cstring>

#include "run_data/byte_order.h"

constexpr int flagBit = 3;      // of the mask
constexpr int spreadWords = 3;  // Ne, VFW, VRW

static bool Has(int mask, int bit) { return mask >> bit & 1; }

static const uint8_t* TakeWord(const uint8_t* p, bool absolute, bool adds, uint16_t& word) {
    int value = absolute ? ReadU16Be(p) : static_cast<int8_t>(*p);
    word = static_cast<uint16_t>(absolute || !adds ? value : word + value);
    return p + (absolute ? 2 : 1);
}

// Cells without a frame hold what the block before had there, which may have been changed since.
static void ClearFields(SampleBlock& block) {
    for (uint16_t* cells : block.fields) {
        std::fill(cells + lead, cells + block.first, 0);
        std::fill(cells + block.end, cells + blockCells, 0);
    }
}

void SpreadFramesPlain(const uint8_t* frames, const uint8_t* steps, int version, FrameBefore& before, SampleBlock& block) {
    ClearFields(block);
    for (int c = block.first; c < block.end; c++) {
        const uint8_t* p = frames;
        int mask = before.words[maskWord] = ReadU16Be(p);
        p += 2;
        for (int k = 0; k < spreadWords; k++) p = TakeWord(p, Has(mask, WordBit(k)), k != neWord, before.words[k]);
        for (int k = 0; k < fieldTotal; k++) {
            if (!Has(mask, FieldBit(k))) continue;
            before.fields[k] = version == 4 ? ReadU16Be(p) : *p;
            p += version == 4 ? 2 : 1;
        }
        if (Has(mask, flagBit)) before.flag = *p >> 7;
        for (int k = 0; k <= maskWord; k++) block.words[k][c] = before.words[k];
        for (int k = 0; k < fieldTotal; k++) block.fields[k][c] = before.fields[k];
        block.flag[c] = before.flag;
        frames += *steps++;
    }
}

#ifdef __SSE2__
#include <tmmintrin.h>

#include "run_data/deal_words.h"

constexpr uint8_t none = 0x80;  // as an index of a shuffle: 0

// Shuffles by the mask's bits 14 to 12, and by 11 to 4.
struct SpreadTables {
    alignas(16) uint8_t  words[8][16];   // a frame's first bytes to Ne, VFW, VRW, mask; in the upper half deltas, in high bytes
    alignas(16) uint16_t keep[8][8];     // all bits of the words that a delta is added to
    alignas(16) uint8_t  fields[256][16];
    uint8_t wordBytes[8];    // and the mask's two: where the fields begin
    uint8_t fieldBytes[256];
};

static constexpr void PlanWords(SpreadTables& t, int bits) {
    for (uint8_t& index : t.words[bits]) index = none;
    uint8_t at = 2;
    for (int k = 0; k < spreadWords; k++) {
        bool absolute = bits >> (2 - k) & 1;
        if (absolute) {
            t.words[bits][2 * k] = at + 1;
            t.words[bits][2 * k + 1] = at;
        } else {
            t.words[bits][8 + 2 * k + 1] = at;
        }
        t.keep[bits][k] = absolute || k == neWord ? 0 : 0xFFFF;
        at += absolute ? 2 : 1;
    }
    t.words[bits][2 * maskWord] = 1;
    t.words[bits][2 * maskWord + 1] = 0;
    t.wordBytes[bits] = at;
}

static constexpr void PlanFields(SpreadTables& t, int bits, bool wide) {
    uint8_t at = 0;
    for (int k = 0; k < fieldTotal; k++) {
        bool present = bits >> (7 - k) & 1;
        t.fields[bits][2 * k] = !present ? none : wide ? at + 1 : at;
        t.fields[bits][2 * k + 1] = present && wide ? at : none;
        at += !present ? 0 : wide ? 2 : 1;
    }
    t.fieldBytes[bits] = at;
}

static constexpr SpreadTables PlanSpread(bool wide) {
    SpreadTables t{};
    for (int bits = 0; bits < 8; bits++) PlanWords(t, bits);
    for (int bits = 0; bits < 256; bits++) PlanFields(t, bits, wide);
    return t;
}
static constexpr SpreadTables byteTables = PlanSpread(false), wideTables = PlanSpread(true);

// Frames with their fields in place, one after the other.
struct SpreadRows {
    alignas(16) uint16_t words[blockCells][maskWord + 1];
    alignas(16) uint16_t fields[blockCells][fieldTotal];
};

template <class T>
static const __m128i* Sixteen(const T* p) { return reinterpret_cast<const __m128i*>(p); }
template <class T>
static __m128i* Sixteen(T* p) { return reinterpret_cast<__m128i*>(p); }

__attribute__((target("ssse3"))) static void SpreadIntoRows(const uint8_t* frame, const uint8_t* steps, const SpreadTables& t,
                                                            FrameBefore& before, SampleBlock& block, SpreadRows& rows) {
    __m128i words = _mm_load_si128(Sixteen(before.words)), fields = _mm_load_si128(Sixteen(before.fields));
    uint8_t flag = before.flag;
    for (int c = block.first, end = block.end; c < end; c++) {
        const unsigned mask = ReadU16Be(frame), wordBits = mask >> 12 & 7, fieldBits = mask >> 4 & 0xFF;
        // Words, or deltas made as wide; a delta is added to the word before.
        const __m128i taken = _mm_shuffle_epi8(_mm_loadl_epi64(Sixteen(frame)), _mm_load_si128(Sixteen(t.words[wordBits])));
        const __m128i added = _mm_add_epi16(taken, _mm_srli_si128(_mm_srai_epi16(taken, 8), 8));
        words = _mm_add_epi16(_mm_and_si128(words, _mm_load_si128(Sixteen(t.keep[wordBits]))), added);
        _mm_storel_epi64(Sixteen(rows.words[c]), words);
        const uint8_t* behindWords = frame + t.wordBytes[wordBits];
        const __m128i shuffle = _mm_load_si128(Sixteen(t.fields[fieldBits]));
        const __m128i absent = _mm_cmplt_epi8(shuffle, _mm_setzero_si128());
        fields = _mm_or_si128(_mm_and_si128(fields, absent), _mm_shuffle_epi8(_mm_loadu_si128(Sixteen(behindWords)), shuffle));
        _mm_store_si128(Sixteen(rows.fields[c]), fields);
        const uint8_t flagHere = behindWords[t.fieldBytes[fieldBits]] >> 7;
        flag = mask & 1 << flagBit ? flagHere : flag;
        block.flag[c] = flag;
        frame += *steps++;
    }
    _mm_store_si128(Sixteen(before.words), words);
    _mm_store_si128(Sixteen(before.fields), fields);
    before.flag = flag;
}

static void DealRows(const SpreadRows& rows, SampleBlock& block) {
    for (int c = lead; c < blockCells; c += 8) {
        __m128i fields[8], words[4];
        for (int i = 0; i < 8; i++) fields[i] = _mm_load_si128(Sixteen(rows.fields[c + i]));
        for (int i = 0; i < 4; i++) words[i] = _mm_load_si128(Sixteen(rows.words[c + 2 * i]));
        DealWords(fields);
        DealWords(words);
        for (int k = 0; k < fieldTotal; k++) _mm_store_si128(Sixteen(block.fields[k] + c), fields[k]);
        for (int k = 0; k <= maskWord; k++) _mm_store_si128(Sixteen(block.words[k] + c), words[k]);
    }
}

void SpreadFrames(const uint8_t* frames, const uint8_t* steps, int version, FrameBefore& before, SampleBlock& block) {
    static const bool canShuffle = __builtin_cpu_supports("ssse3");
    if (!canShuffle) return SpreadFramesPlain(frames, steps, version, before, block);
    static SpreadRows rows;
    if (!IsFullBlock(block)) std::memset(&rows, 0, sizeof rows);
    SpreadIntoRows(frames, steps, version == 4 ? wideTables : byteTables, before, block, rows);
    DealRows(rows, block);
}
#else
void SpreadFrames(const uint8_t* frames, const uint8_t* steps, int version, FrameBefore& before, SampleBlock& block) {
    SpreadFramesPlain(frames, steps, version, before, block);
}
#endif
