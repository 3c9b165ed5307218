// band_counts.h -- how many samples of a stretch lie in each band of values, at little more than the cost of reading them.
//
// Bands rise with the value. A channel that moves slowly stays within a few of them for a block of samples: there the samples
// at or above each band's begin are counted, several at a time. Elsewhere each sample is looked up.
#pragma once
#include <algorithm>
#include <array>
#include <cstdint>
#include <vector>

constexpr int narrowValues = 65536;
// Samples are narrowed to 16 bits: speeds are shifted, 32 bit values held inside; no band begins outside.
constexpr int16_t Narrow(uint16_t value) { return static_cast<int16_t>(value - 32768); }
constexpr int16_t Narrow(int16_t value) { return value; }
constexpr int16_t Narrow(int32_t value) { return static_cast<int16_t>(value < -32768 ? -32768 : value > 32767 ? 32767 : value); }

struct BandTable {
    std::vector<uint16_t> bandOf;  // [narrowed value + 32768]
    std::vector<int> begins;       // the lowest narrowed value of a band and those above it; 32768 when there is none
};
// `band` says the band of a narrowed value; it never falls from one value to the next. `bands`: how many there are.
template <class Band>
BandTable MakeBandTable(int bands, Band band) {
    BandTable table{std::vector<uint16_t>(narrowValues), std::vector<int>(static_cast<size_t>(bands), 32768)};
    for (int begin = -32768, next = 0; begin <= 32767;) {
        const int at = band(begin);
        int low = begin, high = 32768;  // low is in the band, high is not
        while (high - low > 1) (band((low + high) / 2) == at ? low : high) = (low + high) / 2;
        std::fill(table.bandOf.begin() + (begin + 32768), table.bandOf.begin() + (high + 32768), static_cast<uint16_t>(at));
        for (; next <= at; next++) table.begins[static_cast<size_t>(next)] = begin;
        begin = high;
    }
    return table;
}

struct BandCounts {
    std::vector<uint64_t> counts;                 // [band]
    std::array<std::vector<uint32_t>, 4> lookedUp;  // of the same stretch, not yet added
};
BandCounts MakeBandCounts(int bands);
// Adds the samples of a stretch to counts.
void CountBands(BandCounts& counts, const BandTable& table, const uint16_t* first, const uint16_t* end);
void CountBands(BandCounts& counts, const BandTable& table, const int16_t* first, const int16_t* end);
void CountBands(BandCounts& counts, const BandTable& table, const int32_t* first, const int32_t* end);

// How many of a full block's samples are `begin` or more, begin above -32768: with and without vector instructions.
constexpr int bandBlock = 128;
int AtLeastPlain(const int16_t* values, int begin);
int AtLeastFast(const int16_t* values, int begin);
