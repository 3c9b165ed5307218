#include "analysis/distribution.h"

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <type_traits>
#include <vector>

#include "analysis/band_counts.h"
#include "analysis/lap_stats.h"
#include "graph/view_state.h"
#include "run_data/fixed_point.h"
#include "run_data/run_store.h"
#include "run_data/typed_number.h"

const char* const distChannelNames[distChannels] = {"Ne", "Th", "FrSUS", "RrSUS"};
const char* const distLapNames[distLapChoices] = {"All Lap", "Checked Lap Only"};

int         distMin[distChannels], distMax[distChannels], distStep[distChannels];
int         distChannel, distLaps;
DistBands   distBands;
std::string distTexts[distFiles];

// --- the fields ------------------------------------------------------------------------------------------------------------

struct DistLimits {
    int highest, stepLow, stepHigh;  // highest: of min and max, either side of 0
    int min, max, step;              // at start
    const char* header;              // of the results
};
static constexpr DistLimits distLimits[distChannels] = {
    {20000, 10, 10000, 6000, 16000, 500, "- rpm - \t - % - \r\n"},
    {200, 1, 200, 0, 100, 5, "- Th% - \t - % - \r\n"},
    {200, 1, 200, 0, 125, 5, "- mm - \t - % - \r\n"},
    {200, 1, 200, 0, 50, 5, "- mm - \t - % - \r\n"},
};

static void LimitBands() {
    const DistLimits& limits = distLimits[distChannel];
    auto& [min, max, step] = distBands;
    min = std::max(min, -limits.highest);
    max = std::min(std::max(max, min), limits.highest);
    min = std::min(min, limits.highest);
    step = std::clamp(step, limits.stepLow, limits.stepHigh);
}

static void ReadBands(const char* const typed[distFields]) {
    for (int field = 0; field < distFields; field++) distBands[field] = TruncToInt(TypedNumber(typed[field]));
}

static void LoadBands() {
    distBands[distFieldMin] = distMin[distChannel];
    distBands[distFieldMax] = distMax[distChannel];
    distBands[distFieldStep] = distStep[distChannel];
    LimitBands();
}

void OpenDistribution() {
    distChannel = distNe;
    distLaps = 0;
    for (std::string& text : distTexts) text.clear();
    LoadBands();
}

int LeaveDistField(DistField field, const char* typed) {
    distBands[field] = TruncToInt(TypedNumber(typed));
    if (field == distFieldMax) distBands[field] = std::max(distBands[field], 0);
    LimitBands();
    return distBands[field];
}

void ChooseDistChannel(int channel, const char* const typed[distFields]) {
    ReadBands(typed);
    distMin[distChannel] = distBands[distFieldMin];
    distMax[distChannel] = distBands[distFieldMax];
    distStep[distChannel] = distBands[distFieldStep];
    distChannel = std::clamp(channel, 0, distChannels - 1);
    LoadBands();
}

// --- counting --------------------------------------------------------------------------------------------------------------

struct Bands {
    int   min, step, bins;
    float factor;  // of Ne
};

// The bin of a stored value.
static int BinOf(const Bands& bands, bool below, int band) { return below ? 0 : std::clamp(band + 1, 1, bands.bins - 1); }

static int NeBin(const Bands& bands, int stored) {
    const float shown = static_cast<float>(stored) * bands.factor;
    const float band = (shown - static_cast<float>(bands.min)) / static_cast<float>(bands.step);
    return BinOf(bands, TruncToInt(shown) < bands.min, std::min(TruncToInt(band), bands.bins));
}

static int ThBin(const Bands& bands, int stored) {
    const int64_t above = int64_t{stored} - bands.min * 10;
    return BinOf(bands, above < 0, static_cast<int>(above / 10 / bands.step));
}

// Kept: below is tested against 0.1 mm, although strokes are in 0.01 mm; what lies between counts in bin 1.
static int StrokeBin(const Bands& bands, int stored) {
    return BinOf(bands, stored < bands.min * 10, (stored - bands.min * 100) / 100 / bands.step);
}

struct FileBins {
    std::vector<uint64_t> bins;
    uint64_t total = 0;
};

// Calls visit(first, end) for the samples of each lap that counts.
template <class Visit>
static void ForEachLap(int slot, Visit visit) {
    // Kept: single marks, whatever MarksPerLap says, so that the checks of entries that are no rows count as well.
    for (int mark = 0; mark < lapCount[slot]; mark++) {
        if (distLaps != 0 && !lapChecked[slot][mark]) continue;
        const uint32_t end = std::min(lapStart[slot][mark + 1], static_cast<uint32_t>(sampleCount[slot]));
        if (lapStart[slot][mark] < end) visit(lapStart[slot][mark], end);
    }
}

// The stored value that Narrow made of it; of 32 bit values those at hand.
template <class T>
static int Widened(int narrow) { return std::is_same_v<T, uint16_t> ? narrow + 32768 : narrow; }

template <class T>
static void CountBins(FileBins& file, int slot, const Bands& bands, const SampleArray<T>& samples, int (*binOf)(const Bands&, int)) {
    const BandTable table = MakeBandTable(bands.bins, [&](int narrow) { return binOf(bands, Widened<T>(narrow)); });
    BandCounts counts = MakeBandCounts(bands.bins);
    ForEachLap(slot, [&](uint32_t first, uint32_t end) {
        file.total += end - first;
        CountBands(counts, table, samples.data() + first, samples.data() + end);
    });
    file.bins = counts.counts;
}

static FileBins CountFile(int slot) {
    const auto& [min, max, step] = distBands;
    const Bands bands = {min, step, (max - min) / step + 2, neFactor[slot]};
    FileBins file;
    file.bins.resize(static_cast<size_t>(bands.bins));
    if (slotInUse[slot]) switch (distChannel) {
            case distNe: CountBins(file, slot, bands, Ne[slot], NeBin); break;
            case distTh: CountBins(file, slot, bands, TH[slot], ThBin); break;
            case distFrSUS: CountBins(file, slot, bands, FSUS[slot], StrokeBin); break;
            default: CountBins(file, slot, bands, RSUS[slot], StrokeBin); break;
        }
    file.total = std::max<uint64_t>(file.total, 1);
    return file;
}

// --- results ---------------------------------------------------------------------------------------------------------------

static void AppendLine(std::string& text, const char* format, int value, const FileBins& file, size_t bin) {
    char line[48];
    const float percent = static_cast<float>(file.bins[bin] * 100) / static_cast<float>(file.total);
    std::snprintf(line, sizeof line, format, value, static_cast<double>(percent));
    text += line;
}

static std::string ResultText(const FileBins& file) {
    const auto& [min, max, step] = distBands;
    std::string text = distLimits[distChannel].header;
    if (min > 0) AppendLine(text, "- %d \t %.3f \r\n", min, file, 0);
    size_t bin = 1;
    for (int value = min; value <= max; value += step) AppendLine(text, " %d -\t %.3f \r\n", value, file, bin++);
    return text;
}

void AnalyzeBands() {
    LimitBands();
    for (int slot = 0; slot < distFiles; slot++) distTexts[slot] = ResultText(CountFile(slot));
}

void Analyze(const char* const typed[distFields]) {
    ReadBands(typed);
    AnalyzeBands();
}

void DefaultDistribution() {
    for (int channel = 0; channel < distChannels; channel++) {
        distMin[channel] = distLimits[channel].min;
        distMax[channel] = distLimits[channel].max;
        distStep[channel] = distLimits[channel].step;
    }
    OpenDistribution();
}
