#include "run_data/secondary_channels.h"

#include <algorithm>
#include <array>

#include "platform/keyboard.h"
#include "run_data/byte_order.h"
#include "run_data/fixed_point.h"
#include "run_data/run_store.h"
#include "run_data/secondary_header.h"
#include "run_data/secondary_stream.h"
#include "settings/settings.h"

using namespace secondaryHeader;

namespace {

constexpr int lapPeriod = 60;  // samples
constexpr int tableSize = 1024;

// offset + (raw x scale + shift) x factor / divisor, truncated toward zero.
struct Conversion {
    int scale, shift, factor, divisor, offset;
};
constexpr Conversion openSensor = {1, 0, 500, 1023, 0};  // 0.01 V of a 10 bit reading

struct StreamChannel {
    int period;  // samples between two codes, 0 for none
    int wait;    // samples until the next code
    int held;    // elements of its array, which may have failed to grow
    int value;   // at the sample at hand: stored, or raw where there is a conversion
    int stored;  // value, converted
    Conversion conversion;
    std::array<int, tableSize> table;  // of readings of 10 bits
};

struct Decoder {
    int slot, marks;
    StreamChannel ne, vfw, vrw, th, vb, fsus, rsus, laf1, laf2, spare1, spare2, lap;
};

int Convert(const Conversion& c, int raw) {
    const int64_t scaled = int64_t{raw} * c.scale + c.shift;
    return Wrap32(c.offset + scaled * c.factor / c.divisor);
}
int ConvertReading(const StreamChannel& channel, int raw) {
    return static_cast<unsigned>(raw) < tableSize ? channel.table[raw] : Convert(channel.conversion, raw);
}

// Kept: 1024 and 18769 in front against 1023 and 12500 behind, and the native logs' 18768.
Conversion FrontStroke(int slot) {
    return fsusType[slot] == 0 ? Conversion{1, 1024 - fsusZeroRaw[slot], -18769, 1024, 18769} : openSensor;
}
Conversion RearStroke(int slot) {
    return rsusType[slot] == 0 ? Conversion{1, 1023 - rsusZeroRaw[slot], -12500, 1023, 12500} : openSensor;
}
Conversion Throttle(const uint8_t* log) {
    const int low = ReadU16Be(log + throttleMinAt), span = ReadU16Be(log + throttleMaxAt) - low;
    return span != 0 ? Conversion{4, -low, 1000, span, 0} : Conversion{0, 0, 0, 1, 0};
}
Conversion AirFuel(int slot, int input) {
    const bool raw = Debug && IsKeyHeld(HeldKey::ctrl);
    return analog[slot][input].type == 0 && !raw ? Conversion{1, 0, 1000, 1140, 900} : openSensor;
}

template <class T>
void StartChannel(StreamChannel& channel, int intervalMs, const SampleArray<T>& array) {
    channel.period = channel.wait = intervalMs / 5;
    channel.held = static_cast<int>(array.size());
    channel.value = channel.stored = 0;
}
template <class T>
void StartReading(StreamChannel& channel, int intervalMs, const SampleArray<T>& array, const Conversion& conversion) {
    StartChannel(channel, intervalMs, array);
    channel.conversion = conversion;
    for (int raw = 0; raw < tableSize; raw++) channel.table[raw] = Convert(conversion, raw);
    channel.stored = channel.table[0];
}

void StartDecoder(Decoder& d, const uint8_t* log) {
    const int s = d.slot;
    auto interval = [&](int at) { return int{ReadU16Be(log + at)}; };
    const SampleArray<uint8_t> none;
    StartChannel(d.ne, interval(neIntervalAt), Ne[s]);
    StartChannel(d.vfw, interval(vfwIntervalAt), VFW[s]);
    StartChannel(d.vrw, interval(vrwIntervalAt), VRW[s]);
    StartChannel(d.vb, interval(vbIntervalAt), VB[s]);
    StartReading(d.th, interval(thIntervalAt), TH[s], Throttle(log));
    StartReading(d.fsus, interval(fsusIntervalAt), FSUS[s], FrontStroke(s));
    StartReading(d.rsus, interval(rsusIntervalAt), RSUS[s], RearStroke(s));
    StartReading(d.laf1, interval(laf1IntervalAt), LAF1[s], AirFuel(s, 0));
    StartReading(d.laf2, interval(laf2IntervalAt), LAF2[s], AirFuel(s, 1));
    StartChannel(d.spare1, interval(spare1IntervalAt), none);
    StartChannel(d.spare2, interval(spare2IntervalAt), none);
    StartChannel(d.lap, log[flagsAt] & 0x10 ? lapPeriod * 5 : 0, none);
}

// True when the code at hand is the channel's at this sample.
bool Due(StreamChannel& channel) {
    if (--channel.wait > 0) return false;
    channel.wait = channel.period;
    return true;
}

// The walk along the stream; a local of the loop, so that it stays in registers.
struct Walk {
    int sample;
    CodeStream stream;
    StreamCode code;  // the next one
};

// Each of the following takes one channel through the sample at hand. False when the stream ends.

// A channel whose values stand in the stream divided by `unit`. A code is for the next sample.
[[gnu::always_inline]] inline bool TakeValue(Walk& w, StreamChannel& channel, uint16_t* samples, int unit) {
    if (channel.period == 0) return true;
    const bool due = Due(channel);
    if (due) channel.value = WrapU16((w.code.absolute ? 0 : channel.value) + w.code.value * unit);
    if (w.sample + 1 < channel.held) samples[w.sample + 1] = static_cast<uint16_t>(channel.value);
    return !due || NextCode(w.stream, w.code);
}

// A channel of raw readings, which are as wide as the samples.
template <class T>
[[gnu::always_inline]] inline bool TakeReading(Walk& w, StreamChannel& channel, T* samples) {
    if (channel.period == 0) return true;
    samples[w.sample] = static_cast<T>(channel.stored);
    if (!Due(channel)) return true;
    const int64_t raw = int64_t{w.code.absolute ? 0 : channel.value} + w.code.value;
    channel.value = static_cast<T>(raw);
    channel.stored = ConvertReading(channel, channel.value);
    return NextCode(w.stream, w.code);
}

[[gnu::always_inline]] inline bool TakeSpare(Walk& w, StreamChannel& channel) {
    return channel.period == 0 || !Due(channel) || NextCode(w.stream, w.code);
}

void StoreMark(Decoder& d, int sample, int samplesAgo) {
    if (samplesAgo <= 0 || d.marks >= lapMarkLimit) return;
    lapStart[d.slot][d.marks++] = static_cast<uint32_t>(std::max(0, sample - samplesAgo));
}

[[gnu::always_inline]] inline bool TakeChannels(Decoder& d, Walk& w) {
    const int s = d.slot;
    return TakeValue(w, d.ne, Ne[s].data(), 20) && TakeValue(w, d.vfw, VFW[s].data(), 10) &&
           TakeValue(w, d.vrw, VRW[s].data(), 10) && TakeReading(w, d.th, TH[s].data()) &&
           TakeValue(w, d.vb, VB[s].data(), 10) && TakeReading(w, d.fsus, FSUS[s].data()) &&
           TakeReading(w, d.rsus, RSUS[s].data()) && TakeReading(w, d.laf1, LAF1[s].data()) &&
           TakeReading(w, d.laf2, LAF2[s].data()) && TakeSpare(w, d.spare1) && TakeSpare(w, d.spare2);
}

// Returns the first sample that is not decoded. Channels of periods that are 0 never end the stream, so the number of
// samples does.
int DecodeSamples(Decoder& d, const CodeStream& stream, int samples) {
    Walk w = {1, stream, {}};
    if (w.sample >= samples || !NextCode(w.stream, w.code)) return w.sample;
    while (w.sample < samples) {
        if (!TakeChannels(d, w)) return w.sample;
        const bool lap = d.lap.period != 0 && Due(d.lap);
        if (lap) StoreMark(d, w.sample, w.code.value);
        w.sample++;
        if (lap && !NextCode(w.stream, w.code)) return w.sample;
    }
    return w.sample;
}

}  // namespace

int DecodeSecondaryStream(int slot, const uint8_t* log, int length, int samples, int& markCount) {
    static Decoder d;
    d.slot = slot;
    d.marks = 1;
    StartDecoder(d, log);
    const int end = DecodeSamples(d, StartStream(log, streamAt * 8, int64_t{length} * 8), samples);
    markCount = d.marks;
    return end;
}
