#include "graph/channel_plot.h"

#include <algorithm>
#include <iterator>
#include <variant>

#include "draw/draw_layer.h"
#include "graph/color_scheme.h"
#include "graph/plotted_channels.h"
#include "graph/view_state.h"
#include "run_data/fixed_point.h"
#include "run_data/run_store.h"
#include "settings/settings.h"

// The columns of a file are worked on in blocks: the samples of one channel after the other, then the lines of one column
// after the other, which is the order in which they cover each other.
constexpr int blockColumns = 256;

// One column of pixels: its samples and where they stand.
struct Column {
    int   first, last;  // samples at both edges, 1 to sampleCount - 1
    int   stride;       // of the samples between them
    float x0, x1;
};
// What one channel draws in a column.
struct Segment {
    float y0, y1;
    Color color;
};
static Column  columns[blockColumns];
static Segment segments[blockColumns][channelTotal];  // in the order of the channels shown
static float   smoothedBefore[channelTotal];  // value of the column before

TimeMapping MapTime(int slot) {
    const double samplesPerPixel = timeFactor[slot] * timeScale / viewZoom;
    return {samplesPerPixel, 1.0 / samplesPerPixel, cursorPos[slot], BaseLineX()};
}

float SampleToX(const TimeMapping& mapping, int sample) {
    return static_cast<float>((sample * 100.0 - mapping.cursor) * mapping.pixelsPerSample * 0.01 + mapping.baseLineX);
}

int OffsetToSample(const TimeMapping& mapping, double offset) {
    return TruncToInt(offset * mapping.samplesPerPixel + mapping.cursor * 0.01);
}

// --- columns -----------------------------------------------------------------------------------------------------------

// Where the walk over a file's columns stands.
struct ColumnWalk {
    TimeMapping mapping;
    double offset, step, end;  // pixels from the cursor line
    int    samples;            // of the file
};

static ColumnWalk StartWalk(int slot) {
    const TimeMapping mapping = MapTime(slot);
    const double step = std::max(1.0, mapping.pixelsPerSample);
    return {mapping, -mapping.baseLineX - 2.0, step, halfWidth + 2 * step - BaseLinePos, sampleCount[slot]};
}

// At most about five samples of a column are looked at. Once the view has come to rest, Debug shows exact extremes.
static int Stride(int samples) { return Debug && activityCount < 50 ? 1 : samples / 5 + 1; }

// A mapping without a sensible step, as a time scale of 0 makes it, has no columns: the walk would not come to its end.
static bool HasColumns(const ColumnWalk& walk) { return walk.step < 1e9 && walk.end < 1e9; }

// Fills the next block and returns how many columns it has; 0 at the end of the screen or of the file.
static int NextColumns(ColumnWalk& walk) {
    int count = 0;
    for (; walk.offset <= walk.end && count < blockColumns; walk.offset += walk.step) {
        const int first = OffsetToSample(walk.mapping, walk.offset);
        const int last = OffsetToSample(walk.mapping, walk.offset + walk.step);
        if (first < 1 || last < 1) continue;
        if (first >= walk.samples || last >= walk.samples) {
            walk.offset = walk.end + 1;
            break;
        }
        columns[count++] = {first, last, Stride(last - first), SampleToX(walk.mapping, first), SampleToX(walk.mapping, last)};
    }
    return count;
}

// --- segments ------------------------------------------------------------------------------------------------------------

// A channel of a file, as the loops over a block need it.
struct Trace {
    int    samples;          // of the file
    int    delay;            // lafDelay where it applies, else 0
    double scale;            // plotted value of a stored one
    double position, zoom;   // of the layout
    double magnification, scroll;
    bool   risesWhenEqual;
    const uint8_t* cut;      // flags at which the value falls to 0, or nullptr
    const uint8_t* marked;   // flags at which the colour changes, or nullptr
    Color  color, markedColor;
    float* smoothedBefore;
};

// Reads a stored number by sample.
template <class T>
struct StoredReader {
    const T* samples;
    int operator()(int i) const { return samples[i]; }
};
struct SlipReader {
    const uint16_t *front, *rear;
    float operator()(int i) const { return front[i] > 50 ? static_cast<float>((rear[i] - front[i]) * 1000.0 / front[i]) : 0; }
};

static inline Segment MakeSegment(const Trace& trace, const Column& column, float a, float b) {
    const auto y = [&](float value) { return static_cast<float>((trace.position - value / trace.zoom) * trace.magnification - trace.scroll); };
    return {y(a), y(b), trace.marked && trace.marked[column.first] ? trace.markedColor : trace.color};
}

// From the lowest to the highest value in the column's direction of travel, so that spikes between the ends show. Stored
// numbers are compared: the plotted value grows with them.
template <class Reader>
static void FillSegments(const Trace& trace, Reader read, int count, int place) {
    for (int k = 0; k < count; k++) {
        const Column& column = columns[k];
        const bool delayed = column.first + trace.delay < trace.samples && column.last + trace.delay < trace.samples;
        const int delay = delayed ? trace.delay : 0;
        auto a = read(column.first + delay), b = read(column.last + delay);
        if (trace.cut && trace.cut[column.first]) b = 0;
        const bool rises = trace.risesWhenEqual ? b >= a : b > a;
        auto low = rises ? a : b, high = rises ? b : a;
        // Kept: the end is not delayed, so that a delay above the column's width leaves nothing to scan.
        for (int i = column.first + delay + 1; i < column.last; i += column.stride) {
            const auto value = read(i);
            low = std::min(low, value);
            high = std::max(high, value);
        }
        a = rises ? low : high;
        b = rises ? high : low;
        segments[k][place] = MakeSegment(trace, column, static_cast<float>(a * trace.scale), static_cast<float>(b * trace.scale));
    }
}

// Mean of SusFilter_n samples on either side. Kept: a sample outside the file takes all before it out of the sum, while
// the divisor stays, so that both ends of a log come out too low; and a file's first line starts from 0.
template <class Reader>
static void FillSmoothedSegments(const Trace& trace, Reader read, int count, int place) {
    const int n = SusFilter_n;
    for (int k = 0; k < count; k++) {
        const Column& column = columns[k];
        double sum = 0;
        if (column.last + n < trace.samples)
            for (int i = std::max(column.last - n, 0); i <= column.last + n; i++) sum += read(i);
        if (trace.cut && trace.cut[column.first]) sum = 0;
        const float mean = static_cast<float>(sum / (2 * n + 1));
        segments[k][place] = MakeSegment(trace, column, *trace.smoothedBefore, mean);
        *trace.smoothedBefore = mean;
    }
}

// --- files ---------------------------------------------------------------------------------------------------------------

static const uint8_t* FlagsWhen(bool wanted, int slot) { return wanted ? sampleFlag[slot].data() : nullptr; }

static int DelayOf(const PlottedChannel& channel, int slot) {
    const bool sensor = channel.analogInput >= 0 && analog[slot][channel.analogInput].type == 0;
    return sensor && ExpertMode >= 2 ? lafDelay : 0;
}

static bool Smoothed(const PlottedChannel& channel) { return ctrlDown && Holds(channel.smoothed); }

static Trace MakeTrace(int slot, int channel) {
    const PlottedChannel& row = plottedChannels[channel];
    const bool cut = ctrlDown && Holds(row.cut);
    Trace trace;
    trace.samples = sampleCount[slot];
    trace.delay = DelayOf(row, slot);
    trace.scale = channel == chNe ? neFactor[slot] : row.scale;
    trace.position = channelPosition[channel];
    trace.zoom = channelZoom[channel];
    trace.magnification = viewZoom;
    trace.scroll = scrollY;
    trace.risesWhenEqual = channel == chTH;  // Kept: TH alone.
    trace.cut = FlagsWhen(cut, slot);
    trace.marked = FlagsWhen(slot == 0 && Holds(row.marked), slot);
    trace.color = channelColor[channel][slot];
    trace.markedColor = channelColor[channel][1];
    trace.smoothedBefore = &smoothedBefore[channel];
    return trace;
}

// The element type is chosen here, outside the loops over columns and samples.
template <class Fill>
static void WithReader(int slot, const ChannelSamples& samples, Fill fill) {
    if (std::holds_alternative<SlipSamples>(samples)) return fill(SlipReader{VFW[slot].data(), VRW[slot].data()});
    if (auto array = std::get_if<const SampleArray<uint16_t>*>(&samples)) return fill(StoredReader<uint16_t>{(*array)[slot].data()});
    if (auto array = std::get_if<const SampleArray<int32_t>*>(&samples)) return fill(StoredReader<int32_t>{(*array)[slot].data()});
    if (auto array = std::get_if<const SampleArray<int16_t>*>(&samples)) return fill(StoredReader<int16_t>{(*array)[slot].data()});
}

static void FillChannel(int slot, int channel, int count, int place) {
    const PlottedChannel& row = plottedChannels[channel];
    const Trace trace = MakeTrace(slot, channel);
    WithReader(slot, row.samples, [&](auto read) {
        if (Smoothed(row))
            FillSmoothedSegments(trace, read, count, place);
        else
            FillSegments(trace, read, count, place);
    });
}

static void DrawFile(int slot) {
    int shownChannels[channelTotal], shown = 0;
    for (int channel = 0; channel < channelTotal; channel++)
        if (ChannelPlotted(slot, channel)) shownChannels[shown++] = channel;
    std::fill(std::begin(smoothedBefore), std::end(smoothedBefore), 0.0f);
    ColumnWalk walk = StartWalk(slot);
    if (!HasColumns(walk)) return;
    while (const int count = NextColumns(walk)) {
        for (int place = 0; place < shown; place++) FillChannel(slot, shownChannels[place], count, place);
        for (int k = 0; k < count; k++)
            for (int place = 0; place < shown; place++) {
                const Segment& segment = segments[k][place];
                DrawLineF(columns[k].x0, segment.y0, columns[k].x1, segment.y1, segment.color, 1);
            }
    }
}

// A value below 96 is not lifted while the file is dimmed: a new log fades in from 0 first.
static void StepBrightness(int slot) {
    if (!fileDim[slot])
        fileBright[slot] = std::min(fileBright[slot] + 6, 255);
    else if (fileBright[slot] > 96)
        fileBright[slot] = std::max(fileBright[slot] - 6, 96);
}

void DrawChannelPlot() {
    for (int slot = 0; slot < fileSlots; slot++) StepBrightness(slot);
    for (int turn = 0; turn < fileSlots; turn++) {
        const int slot = fileDim[0] ? turn : fileSlots - 1 - turn;  // File 1 lies on top unless it is dimmed
        if (!slotInUse[slot] || (graphPositionOn && slot != 0)) continue;
        SetBrightness(fileBright[slot], fileBright[slot], fileBright[slot]);
        DrawFile(slot);
    }
    SetBrightness(255, 255, 255);
}
