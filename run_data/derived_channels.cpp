#include "run_data/derived_channels.h"

#include <algorithm>
#include <type_traits>

#include "platform/keyboard.h"
#include "run_data/fixed_point.h"
#include "run_data/run_store.h"
#include "run_data/sample_loops.h"
#include "settings/settings.h"

// `samples`, or what an array holds that could not grow.
template <class T>
static int Held(const SampleArray<T>& array, int samples) {
    return std::min(samples, static_cast<int>(array.size()));
}

// Rear wheel speed through the gear train. The engine speed divided by it is the gear ratio x 1000. Kept: the products
// wrap at 32 bits.
static uint32_t Product(unsigned a, int b, int c) { return a * static_cast<uint32_t>(b) * static_cast<uint32_t>(c); }
static uint32_t DriveSpeed(int slot, int sample) {
    return Product(VRW[slot][sample], primaryRatio[slot], rearSprocket[slot]) / 600;
}
static uint32_t DriveRatio(int slot, int sample, uint32_t driveSpeed) {
    return Product(Ne[slot][sample], frontSprocket[slot], rearTyreMm[slot]) / driveSpeed;
}

// Strokes are 0.01 mm and a tick is 5 ms, so that a difference of neighbours times 2 is mm/s.
static void StrokeSpeed(int slot, const SampleArray<int16_t>& stroke, SampleArray<int16_t>& speed) {
    int total = Held(speed, sampleCount[slot]);
    if (total < 1) return;
    int moving = std::clamp(sampleCount[slot] - SusVSampleNum - 1, 1, total);  // samples from here on stand still
    double factor = timeFactor[slot];
    speed[0] = 0;
    if (factor == 1.0)
        DoubledDifferences(stroke.data() + 1, speed.data() + 1, moving - 1);
    else
        for (int i = 1; i < moving; i++) speed[i] = Wrap16(TruncToInt((stroke[i + 1] - stroke[i]) * 2 * factor));
    std::fill(speed.begin() + moving, speed.begin() + total, 0);
}

void ComputeSuspensionSpeed(int slot) {
    dataVersion[slot]++;
    StrokeSpeed(slot, FSUS[slot], VFSus[slot]);
    StrokeSpeed(slot, RSUS[slot], VRSus[slot]);
    if (!IsKeyHeld(HeldKey::shift)) return;
    for (int i = 0, total = Held(VFSus[slot], sampleCount[slot]); i < total; i++)
        if (uint32_t speed = DriveSpeed(slot, i)) VFSus[slot][i] = Wrap16(DriveRatio(slot, i, speed));
}

// What a pass over the samples has seen. The first samples of a log and its last ones do not count.
struct Statistics {
    Extremes of[channelTotal];
    bool     taken[channelTotal];  // channels that are done
};
constexpr int skippedAtStart = 200, skippedAtEnd = 16;  // samples
constexpr Extremes nothingSeen = {2147483647, -2147483647 - 1};

// In native logs that have a battery channel a stroke counts only above 9 V.
static bool NeedsVoltage(int slot, int channel) {
    int version = formatVersion[slot];
    return (channel == chFSUS || channel == chRSUS) && fileKind[slot] == 1 && version != 0 && version != 1 && version != 32;
}

// Takes those of the samples from .. to - 1 that count into the extremes of a channel. VB is final where strokes need it.
template <class T>
static void TakeSamples(int slot, int channel, const SampleArray<T>& array, int from, int to, Extremes& extremes) {
    from = std::max(from, skippedAtStart);
    to = Held(array, std::min(to, sampleCount[slot] - skippedAtEnd));
    const bool gated = NeedsVoltage(slot, channel);
    if (gated) to = Held(VB[slot], to);
    if (from >= to) return;
    if constexpr (std::is_same_v<T, int16_t>)
        if (gated) return TakeGatedExtremes(array.data() + from, VB[slot].data() + from, 901, to - from, extremes);
    TakeExtremes(array.data() + from, to - from, extremes);
}

// Replaces samples first .. last - 1 by the mean of the samples up to `half` away; what lies outside the log adds
// nothing. A block of original values is enough: the last ones of a block stay for the windows of the next. Each block of
// means is handed to done(from, to).
template <class T, class Done>
static void Smooth(SampleArray<T>& array, int samples, int first, int last, int half, Done done) {
    alignas(64) static T around[meansBlock + 2 * meansHalfLimit];  // from sample first - half on
    int n = Held(array, samples);
    int next = std::max(0, first - half);  // the sample to be taken next
    int held = next - (first - half);      // samples in `around`
    std::fill_n(around, held, T{0});
    for (int from = first, end = std::min(last, n); from < end; from += meansBlock) {
        int count = std::min(meansBlock, end - from), wanted = count + 2 * half;
        int taken = std::min(n - next, wanted - held);
        std::copy_n(array.data() + next, taken, around + held);
        std::fill(around + held + taken, around + wanted, T{0});
        next += taken;
        Means(around, half, array.data() + from, count);
        done(from, from + count);
        std::copy(around + count, around + wanted, around);
        held = wanted - count;
    }
}

static void SmoothWheelsAndEngine(int slot) {
    int half = std::clamp(SmoothingSample, 0, 8), n = sampleCount[slot];
    int first = half + 2, last = n - half - 2;
    auto smooth = [&](auto& array) { Smooth(array, n, first, last, half, [](int, int) {}); };
    if (smoothingNE) smooth(Ne[slot]);
    if (!smoothingVW) return;
    smooth(VFW[slot]);
    smooth(VRW[slot]);
}

// Smooths a channel from sample 1 on, and takes its extremes where there are statistics to fill.
template <class T>
static void SmoothSensor(int slot, int channel, SampleArray<T>& array, int half, Statistics* statistics) {
    const int n = sampleCount[slot];
    if (!statistics) return Smooth(array, n, 1, n, half, [](int, int) {});
    Smooth(array, n, 1, n, half, [&](int from, int to) {
        TakeSamples(slot, channel, array, from, to, statistics->of[channel]);
    });
    statistics->taken[channel] = true;
}

static void SmoothSensors(int slot, Statistics* statistics) {
    int half = fileKind[slot] == 1 && !IsKeyHeld(HeldKey::ctrl) ? std::clamp(SmoothingSTD, 0, meansHalfLimit) : 0;
    constexpr int speedHalf = 2;  // Kept: of the suspension speeds, whatever the setting and the keys say
    auto smooth = [&](int channel, auto& array, int width) { SmoothSensor(slot, channel, array, width, statistics); };
    smooth(chVFSus, VFSus[slot], speedHalf);
    smooth(chVRSus, VRSus[slot], speedHalf);
    if (half == 0) return;  // the mean of one sample
    smooth(chVB, VB[slot], half);  // first, as the extremes of the strokes ask for it
    smooth(chFSUS, FSUS[slot], half);
    smooth(chRSUS, RSUS[slot], half);
    smooth(chTH, TH[slot], half);
    smooth(chLAF1, LAF1[slot], half);
    smooth(chLAF2, LAF2[slot], half);
    smooth(chAUX1, AUX1[slot], half);
    smooth(chAUX2, AUX2[slot], half);
}

static void SmoothAll(int slot, Statistics* statistics) {
    SmoothWheelsAndEngine(slot);
    if (SmoothingSTD != 0) SmoothSensors(slot, statistics);
    if (VFWCopyVRW) std::copy_n(VFW[slot].begin(), sampleCount[slot] - 1, VRW[slot].begin());
}

void SmoothChannels(int slot) { SmoothAll(slot, nullptr); }

// Calls visit(channel, array) for the channels that are sample arrays.
template <class Visit>
static void ForEachChannel(int slot, Visit visit) {
    visit(chNe, Ne[slot]);
    visit(chTH, TH[slot]);
    visit(chVFW, VFW[slot]);
    visit(chVRW, VRW[slot]);
    visit(chFSUS, FSUS[slot]);
    visit(chRSUS, RSUS[slot]);
    visit(chLAF1, LAF1[slot]);
    visit(chLAF2, LAF2[slot]);
    visit(chVB, VB[slot]);
    visit(chAUX1, AUX1[slot]);
    visit(chAUX2, AUX2[slot]);
    visit(chVFSus, VFSus[slot]);
    visit(chVRSus, VRSus[slot]);
}

static void ChooseShownChannels(int slot) {
    int* show = showChannel[slot];
    for (int channel = chNe; channel < chSlip; channel++)
        show[channel] = channelMin[slot][channel] != channelMax[slot][channel];
    show[chVB] = 1;
    if (!show[chFSUS]) show[chVFSus] = 0;
    if (!show[chRSUS]) show[chVRSus] = 0;
    if (!show[chVFW] && !show[chVRW]) show[chSlip] = 0;
}

// Kept: slip and suspension speeds keep the extremes of earlier loads.
static Statistics StartStatistics(int slot) {
    Statistics statistics = {};
    for (int channel = 0; channel < channelTotal; channel++)
        statistics.of[channel] =
            channel < chSlip ? nothingSeen : Extremes{channelMin[slot][channel], channelMax[slot][channel]};
    return statistics;
}

// Takes the channels that are not done.
static void TakeRest(int slot, Statistics& statistics) {
    constexpr int blockSize = 2048;
    const int end = sampleCount[slot] - skippedAtEnd;
    for (int from = skippedAtStart; from < end; from += blockSize) {
        const int to = std::min(end, from + blockSize);
        ForEachChannel(slot, [&](int channel, const auto& array) {
            if (!statistics.taken[channel]) TakeSamples(slot, channel, array, from, to, statistics.of[channel]);
        });
        TakeSlipExtremes(VFW[slot].data() + from, VRW[slot].data() + from, to - from, statistics.of[chSlip]);
    }
}

static void EndStatistics(int slot, Statistics& statistics) {
    TakeRest(slot, statistics);
    // Sample 200 or, in a shorter log, the element behind the last counts in any case.
    const int first = std::min(sampleCount[slot], skippedAtStart);
    ForEachChannel(slot, [&](int channel, const auto& array) {
        if (channel < chSlip && Held(array, first + 1) > first) TakeExtremes(array.data() + first, 1, statistics.of[channel]);
    });
    for (int channel = 0; channel < channelTotal; channel++) {
        const Extremes& seen = statistics.of[channel];
        if (seen.low > seen.high) continue;  // an array that could not grow as far
        channelMin[slot][channel] = seen.low;
        channelMax[slot][channel] = seen.high;
    }
    if (sampleCount[slot] > 2000 && AutoOnOffLoad) ChooseShownChannels(slot);
}

void ComputeStatistics(int slot) {
    Statistics statistics = StartStatistics(slot);
    EndStatistics(slot, statistics);
}

void FinishChannels(int slot) {
    ComputeSuspensionSpeed(slot);
    Statistics statistics = StartStatistics(slot);
    SmoothAll(slot, &statistics);
    EndStatistics(slot, statistics);
}

double SlipRatio(int slot, int sample) {
    int front = VFW[slot][sample], rear = VRW[slot][sample];
    return front > 50 ? (rear - front) * 1000.0 / front : 0.0;
}

int GearPosition(int slot, int sample) {
    if (Ne[slot][sample] == 0 || VRW[slot][sample] == 0) return 0;
    uint32_t speed = DriveSpeed(slot, sample);
    uint32_t ratio = speed == 0 ? 100000 : DriveRatio(slot, sample, speed);
    gearRatioSeen[slot] = static_cast<int>(std::min<uint32_t>(ratio, 2147483647));
    int gear = 0;
    for (int limit : gearLimit[slot]) gear += gearRatioSeen[slot] < limit;
    return gear;
}
