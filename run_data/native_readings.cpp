#include "run_data/native_readings.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <numeric>
#include <type_traits>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

#include "run_data/native_log.h"
#include "run_data/native_scaling.h"
#include "run_data/run_store.h"
#include "settings/settings.h"

// Calls step(first, end) for the cells with samples. For a full block these are constants, so that the step's loop
// becomes vector code.
template <class Step>
static auto OverSamples(const SampleBlock& b, Step step) {
    using First = std::integral_constant<int, lead>;
    using End = std::integral_constant<int, blockCells>;
    return IsFullBlock(b) ? step(First(), End()) : step(b.first, b.end);
}

// Lowest and highest of a full block's readings.
template <class T>
static T LeastOf(const T* cells) {
    T least = cells[lead];
    for (int c = lead; c < blockCells; c++) least = std::min(least, cells[c]);
    return least;
}
template <class T>
static T MostOf(const T* cells) {
    T most = cells[lead];
    for (int c = lead; c < blockCells; c++) most = std::max(most, cells[c]);
    return most;
}
// Of 15 bits at most, signed vectors are quicker.
static const int16_t* AsSigned(const uint16_t* cells) { return reinterpret_cast<const int16_t*>(cells); }

// Marks the samples whose throttle does not count, and blanks what is not to be believed.
static void BlankLowVoltage(SampleBlock& b, int version) {
    for (int c = b.first; c < b.end; c++) {
        if (b.vb[c] >= trustedVoltage) continue;
        // Change-mask versions judge the throttle by the voltage before, while they read it.
        if (!IsChangeMaskVersion(version)) b.throttleRaw[c] = throttleNotSeen;
        if (VBerrexp) continue;
        if (!IsChangeMaskVersion(version)) b.th[c] = 0;
        b.fsus[c] = b.rsus[c] = 0;
    }
}

void JudgeVoltage(SampleBlock& b, int version) {
    b.trusted = IsFirstUnitVersion(version) || LeastOf(AsSigned(b.vb)) >= trustedVoltage;
    if (!b.trusted) BlankLowVoltage(b, version);
}

// The throttle's extremes leave out the first and the last second.
static void TrackThrottle(const SampleBlock& b, int capacity) {
    int from = std::max(b.first, CellOf(b, 201)), to = std::min(b.end, CellOf(b, capacity - 200));
    uint8_t least = throttleNotSeen, most = throttleNotSeen;
    if (to - from == blockSize) {
        least = LeastOf(b.throttleRaw);
        most = MostOf(b.throttleRaw);
    }
    for (int c = from; c < to && to - from < blockSize; c++) {
        least = std::min(least, b.throttleRaw[c]);
        most = std::max(most, b.throttleRaw[c]);
    }
    tpsMinSeen[b.slot] = std::min<int>(tpsMinSeen[b.slot], least);
    tpsMaxSeen[b.slot] = std::max<int>(tpsMaxSeen[b.slot], most);
}

// A stroke's extreme follows the reading in the first second, and goes on from there.
static void TrackStroke(const SampleBlock& b, int version, const StrokeSensor& sensor, const uint16_t* raw, int& seen) {
    bool falls = !IsFixedSensor(sensor, version) && sensor.type == 1 && sensor.stroke < 0;
    int unit = version == 4 ? 64 : 1;
    auto follow = [&](int reading) { seen = falls ? std::min(seen, reading / unit) : std::max(seen, reading / unit); };
    if (IsFullBlock(b) && b.trusted && b.start >= 200) {
        if (version == 4) follow(falls ? LeastOf(raw) : MostOf(raw));
        else follow(falls ? LeastOf(AsSigned(raw)) : MostOf(AsSigned(raw)));
        return;
    }
    for (int c = b.first; c < b.end; c++) {
        if (SampleAt(b, c) < 200) seen = raw[c] / unit;
        else if (version == 0 || b.vb[c] >= trustedVoltage) follow(raw[c]);
    }
}

void TrackExtremes(const SampleBlock& b, int version, int capacity) {
    if (!IsFirstUnitVersion(version)) TrackThrottle(b, capacity);
    if (version == 32) return;
    TrackStroke(b, version, FrontSensor(b.slot), b.fields[frontField], fsusMaxSeen[b.slot]);
    TrackStroke(b, version, RearSensor(b.slot), b.fields[rearField], rsusMaxSeen[b.slot]);
}

// Samples that differ from the one before, in all columns together; in one loop, as each costs its turns.
template <class T, class... Columns>
static int CountChanges(const SampleBlock& b, const T* column, const Columns*... more) {
    return OverSamples(b, [=](auto first, auto end) {
        std::make_unsigned_t<T> changes = 0;  // as wide as the cells, for the vectors' sake
        auto change = [](const T* cells, int c) -> std::make_unsigned_t<T> { return cells[c] != cells[c - 1] ? 1 : 0; };
        for (int c = first; c < end; c++) changes += (change(column, c) + ... + change(more, c));
        return static_cast<int>(changes);
    });
}

constexpr int smallestLeap = 127;  // no delta of one byte reaches it

static int CountLeapsPlain(const uint16_t* cells, int first, int end) {
    int leaps = 0;
    for (int c = first; c < end; c++) leaps += std::abs(cells[c] - cells[c - 1]) >= smallestLeap;
    return leaps;
}

#ifdef __SSE2__
// Of a full block. Unsigned vectors of 16 bits know no comparison, but a subtraction that ends at 0.
static int CountLeapsOfAll(const uint16_t* cells) {
    const __m128i reach = _mm_set1_epi16(smallestLeap - 1);
    __m128i within = _mm_setzero_si128();  // less the samples that are no leap, eight counts
    for (int c = lead; c < blockCells; c += 8) {
        const __m128i now = _mm_load_si128(reinterpret_cast<const __m128i*>(cells + c));
        const __m128i before = _mm_loadu_si128(reinterpret_cast<const __m128i*>(cells + c - 1));
        const __m128i change = _mm_or_si128(_mm_subs_epu16(now, before), _mm_subs_epu16(before, now));
        within = _mm_add_epi16(within, _mm_cmpeq_epi16(_mm_subs_epu16(change, reach), _mm_setzero_si128()));
    }
    alignas(16) int16_t counts[8];
    _mm_store_si128(reinterpret_cast<__m128i*>(counts), within);
    return blockSize + std::accumulate(std::begin(counts), std::end(counts), 0);
}
#else
static int CountLeapsOfAll(const uint16_t* cells) { return CountLeapsPlain(cells, lead, blockCells); }
#endif

static int CountLeaps(const SampleBlock& b, const uint16_t* cells) {
    return IsFullBlock(b) ? CountLeapsOfAll(cells) : CountLeapsPlain(cells, b.first, b.end);
}

void EstimateSize(const SampleBlock& b) {
    int bytes = (2 + 3) * (b.end - b.first);  // the mask, and a byte for each of the words
    bytes += CountLeaps(b, b.ne) + CountLeaps(b, b.vfw) + CountLeaps(b, b.vrw);
    bytes += CountChanges(b, b.fsus, b.rsus, reinterpret_cast<const int16_t*>(b.vb));
    bytes += CountChanges(b, b.th);
    for (int input = 0; input < analogInputs; input++)
        bytes += b.delivered[input] ? CountChanges(b, b.fields[inputFields + input]) : CountChanges(b, b.inputs[input]);
    nativeSizeEstimate += bytes;
}
