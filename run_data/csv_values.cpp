#include "run_data/csv_values.h"

#include <algorithm>
#include <array>

#include "run_data/csv_number.h"
#include "run_data/fixed_point.h"

static double ReadOne(CsvField field, CsvColumn& column) {
    ShortDecimal number;
    if (!ReadShortDecimal(field, number)) return column.integers ? ReadAnyInteger(field) : ReadAnyNumber(field);
    column.decimals = number.decimals;
    return NumberOf(number);
}

// From line `first` on, up to line `end`.
static void ReadSome(const CsvBlock& block, int first, int end, CsvColumn& column, double* numbers) {
    for (int k = first; k < end; k++) numbers[k] = ReadOne(FieldOf(block, k, column.column), column);
}

void ReadNumbersPlain(const CsvBlock& block, CsvColumn& column, double* numbers) {
    ReadSome(block, 0, block.lines, column, numbers);
}

void CutProductsPlain(const double* numbers, int count, double scale, double divider, int32_t* products) {
    for (int k = 0; k < count; k++) products[k] = TruncToInt(numbers[k] * scale / divider);
}

#ifdef __SSE2__
#include <emmintrin.h>

constexpr int wordBytes = 8;  // what is read of a field: its last eight bytes, the last one on top

// Which bytes of the word belong to a field of this length; none when it is longer.
static constexpr std::array<uint64_t, csvFieldLimit + 1> ownBytes = [] {
    std::array<uint64_t, csvFieldLimit + 1> own = {};
    for (int length = 1; length <= wordBytes; length++) own[length] = ~uint64_t{0} << 8 * (wordBytes - length);
    return own;
}();

// Numbers with so many decimals. A number is weighed in two steps: its digits, then the sums of its four pairs of bytes.
struct DecimalForm {
    alignas(16) uint64_t zeros[2];        // digits 0 and the point
    alignas(16) uint64_t most[2];         // what a byte may differ from them
    alignas(16) uint64_t needed[2];       // the byte that a field must have: the point, or a digit
    alignas(16) uint64_t signPlaces[2];   // where a sign may stand
    alignas(16) int16_t digitWeight[8], pairWeight[8];
    alignas(16) double power[2];
};

static constexpr DecimalForm MakeForm(int decimals) {
    const int point = wordBytes - 1 - decimals;  // the byte; with no decimals there is none, and the last digit is there
    const uint64_t pointByte = uint64_t{0xFF} << 8 * point, digitPlaces = decimals > 0 ? ~pointByte : ~uint64_t{0};
    const uint64_t signPlaces = decimals > 0 ? digitPlaces : digitPlaces >> 8;  // a sign alone is no number
    const uint64_t zeros = (0x3030303030303030 & digitPlaces) | (0x2E2E2E2E2E2E2E2E & ~digitPlaces);
    const uint64_t most = 0x0909090909090909 & digitPlaces;
    DecimalForm form = {{zeros, zeros}, {most, most}, {pointByte, pointByte}, {signPlaces, signPlaces}, {}, {}, {}};
    int weight = 1, upper = 1;  // upper: of the lowest digit in the upper four bytes
    for (int k = wordBytes - 1; k >= 0; k--) {
        if (k == 3) upper = weight, weight = 1;
        if (decimals > 0 && k == point) continue;
        form.digitWeight[k] = static_cast<int16_t>(weight);
        weight *= 10;
    }
    for (int k = 0; k < 8; k++) form.pairWeight[k] = static_cast<int16_t>(k % 4 < 2 ? upper : 1);
    double power = 1;
    for (int k = 0; k < decimals; k++) power *= 10;
    form.power[0] = form.power[1] = power;
    return form;
}
static constexpr DecimalForm forms[wordBytes] = {MakeForm(0), MakeForm(1), MakeForm(2), MakeForm(3),
                                                 MakeForm(4), MakeForm(5), MakeForm(6), MakeForm(7)};

static __m128i Load(const void* from) { return _mm_load_si128(static_cast<const __m128i*>(from)); }
static __m128i LoadTwo(const void* first, const void* second) {
    return _mm_unpacklo_epi64(_mm_loadl_epi64(static_cast<const __m128i*>(first)),
                              _mm_loadl_epi64(static_cast<const __m128i*>(second)));
}

// Two fields as eight digits each, and a sign. Other bytes of the word are 0.
struct TwoDecimals {
    __m128i digits, sign;
    bool fit;
};

static inline TwoDecimals SortOut(const char* const lines[2], CsvSpan first, CsvSpan second, const DecimalForm& form) {
    const __m128i text = LoadTwo(lines[0] + first.end - wordBytes, lines[1] + second.end - wordBytes);
    const __m128i own = LoadTwo(&ownBytes[first.length], &ownBytes[second.length]);
    const __m128i signPlaces = _mm_and_si128(_mm_andnot_si128(_mm_slli_epi64(own, 8), own), Load(form.signPlaces));
    const __m128i minus = _mm_and_si128(_mm_cmpeq_epi8(text, _mm_set1_epi8('-')), signPlaces);
    const __m128i digits = _mm_and_si128(_mm_xor_si128(text, Load(form.zeros)), _mm_andnot_si128(minus, own));
    const __m128i bad = _mm_or_si128(_mm_subs_epu8(digits, Load(form.most)), _mm_andnot_si128(own, Load(form.needed)));
    const bool fit = _mm_movemask_epi8(_mm_cmpeq_epi8(bad, _mm_setzero_si128())) == 0xFFFF;
    const __m128i sign = _mm_slli_epi64(_mm_srli_epi64(_mm_sub_epi64(_mm_setzero_si128(), minus), 63), 63);
    return {digits, sign, fit};
}

static inline __m128d NumbersOf(const TwoDecimals& two, const DecimalForm& form) {
    const __m128i zero = _mm_setzero_si128(), weight = Load(form.digitWeight);
    const __m128i first = _mm_madd_epi16(_mm_unpacklo_epi8(two.digits, zero), weight);
    const __m128i second = _mm_madd_epi16(_mm_unpackhi_epi8(two.digits, zero), weight);
    const __m128i halves = _mm_madd_epi16(_mm_packs_epi32(first, second), Load(form.pairWeight));
    const __m128i sorted = _mm_shuffle_epi32(halves, _MM_SHUFFLE(3, 1, 2, 0));
    const __m128i whole = _mm_add_epi32(sorted, _mm_srli_si128(sorted, 8));
    return _mm_xor_pd(_mm_div_pd(_mm_cvtepi32_pd(whole), _mm_load_pd(form.power)), _mm_castsi128_pd(two.sign));
}

// Reads from line k on, two lines at a time, as long as their fields are of the form. Returns the first line that is left.
static int ReadWhileFit(const CsvBlock& block, int k, int column, const DecimalForm& form, double* numbers) {
    const char* const bytes = block.text.bytes;
    const int64_t* const start = block.start;
    const int pairsEnd = block.lines - 1, step = block.step;
    const CsvSpan* span = block.span + k * step + column;
    for (; k < pairsEnd; k += 2, span += 2 * step) {
        const char* const lines[2] = {bytes + start[k], bytes + start[k + 1]};
        const TwoDecimals two = SortOut(lines, span[0], span[step], form);
        if (!two.fit) break;
        _mm_storeu_pd(numbers + k, NumbersOf(two, form));
    }
    return k;
}

void ReadNumbers(const CsvBlock& block, CsvColumn& column, double* numbers) {
    if (block.start[0] < wordBytes) return ReadNumbersPlain(block, column, numbers);  // nothing to read before the text
    for (int k = 0; k < block.lines; k += 2) {
        k = ReadWhileFit(block, k, column.column, forms[column.decimals], numbers);
        ReadSome(block, k, std::min(k + 2, block.lines), column, numbers);
    }
}

void CutProducts(const double* numbers, int count, double scale, double divider, int32_t* products) {
    const __m128d scales = _mm_set1_pd(scale), dividers = _mm_set1_pd(divider);
    const __m128d least = _mm_set1_pd(INT32_MIN), most = _mm_set1_pd(INT32_MAX);
    int k = 0;
    for (; k + 2 <= count; k += 2) {
        __m128d value = _mm_mul_pd(_mm_loadu_pd(numbers + k), scales);
        if (divider != 1) value = _mm_div_pd(value, dividers);
        value = _mm_and_pd(value, _mm_cmpord_pd(value, value));
        value = _mm_max_pd(_mm_min_pd(value, most), least);
        _mm_storel_epi64(reinterpret_cast<__m128i*>(products + k), _mm_cvttpd_epi32(value));
    }
    CutProductsPlain(numbers + k, count - k, scale, divider, products + k);
}
#else
void ReadNumbers(const CsvBlock& block, CsvColumn& column, double* numbers) { ReadNumbersPlain(block, column, numbers); }
void CutProducts(const double* numbers, int count, double scale, double divider, int32_t* products) {
    CutProductsPlain(numbers, count, scale, divider, products);
}
#endif
