#include "run_data/derived_channels.h"

#include <algorithm>

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

// Replaces samples first .. last - 1 by the mean of the samples up to `half` away; what lies outside the log adds
// nothing. A block of original values is enough: the last ones of a block stay for the windows of the next.
template <class T>
static void Smooth(SampleArray<T>& array, int samples, int first, int last, int half) {
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
        std::copy(around + count, around + wanted, around);
        held = wanted - count;
    }
}

static void SmoothWheelsAndEngine(int slot) {
    int half = std::clamp(SmoothingSample, 0, 8), n = sampleCount[slot];
    int first = half + 2, last = n - half - 2;
    if (smoothingNE) Smooth(Ne[slot], n, first, last, half);
    if (!smoothingVW) return;
    Smooth(VFW[slot], n, first, last, half);
    Smooth(VRW[slot], n, first, last, half);
}

static void SmoothSensors(int slot) {
    int n = sampleCount[slot];
    int half = fileKind[slot] == 1 && !IsKeyHeld(HeldKey::ctrl) ? std::clamp(SmoothingSTD, 0, meansHalfLimit) : 0;
    constexpr int speedHalf = 2;  // Kept: of the suspension speeds, whatever the setting and the keys say
    Smooth(VFSus[slot], n, 1, n, speedHalf);
    Smooth(VRSus[slot], n, 1, n, speedHalf);
    if (half == 0) return;  // the mean of one sample
    for (auto* stroke : {&FSUS[slot], &RSUS[slot]}) Smooth(*stroke, n, 1, n, half);
    for (auto* sensor : {&TH[slot], &LAF1[slot], &LAF2[slot], &AUX1[slot], &AUX2[slot]}) Smooth(*sensor, n, 1, n, half);
    Smooth(VB[slot], n, 1, n, half);
}

void SmoothChannels(int slot) {
    SmoothWheelsAndEngine(slot);
    if (SmoothingSTD != 0) SmoothSensors(slot);
    if (VFWCopyVRW) std::copy_n(VFW[slot].begin(), sampleCount[slot] - 1, VRW[slot].begin());
}

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

// In native logs that have a battery channel a stroke counts only above 9 V.
static bool StrokesNeedVoltage(int slot) {
    int version = formatVersion[slot];
    return fileKind[slot] == 1 && version != 0 && version != 1 && version != 32;
}

// Takes samples from .. to - 1 into the extremes of every channel.
static void TakeBlock(int slot, int from, int to, Extremes (&extremes)[channelTotal]) {
    bool gated = StrokesNeedVoltage(slot);
    auto take = [&](int channel, const auto& array) {
        int count = Held(array, to) - from;
        if (count > 0) TakeExtremes(array.data() + from, count, extremes[channel]);
    };
    ForEachChannel(slot, [&](int channel, const auto& array) {
        if (!gated || (channel != chFSUS && channel != chRSUS)) take(channel, array);
    });
    TakeSlipExtremes(VFW[slot].data() + from, VRW[slot].data() + from, to - from, extremes[chSlip]);
    int voltages = Held(VB[slot], to) - from;
    if (!gated || voltages <= 0) return;
    TakeGatedExtremes(FSUS[slot].data() + from, VB[slot].data() + from, 901, voltages, extremes[chFSUS]);
    TakeGatedExtremes(RSUS[slot].data() + from, VB[slot].data() + from, 901, voltages, extremes[chRSUS]);
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

void ComputeStatistics(int slot) {
    constexpr int skippedAtStart = 200, skippedAtEnd = 16, blockSize = 2048;
    int n = sampleCount[slot], start = std::min(n, skippedAtStart);
    Extremes extremes[channelTotal];
    // Kept: slip and suspension speeds keep the extremes of earlier loads.
    for (int channel = 0; channel < channelTotal; channel++)
        extremes[channel] = {channelMin[slot][channel], channelMax[slot][channel]};
    ForEachChannel(slot, [&](int channel, const auto& array) {
        if (channel < chSlip && Held(array, start + 1) > start) extremes[channel] = {int{array[start]}, int{array[start]}};
    });
    for (int from = start; from < n - skippedAtEnd; from += blockSize)
        TakeBlock(slot, from, std::min(n - skippedAtEnd, from + blockSize), extremes);
    for (int channel = 0; channel < channelTotal; channel++) {
        channelMin[slot][channel] = extremes[channel].low;
        channelMax[slot][channel] = extremes[channel].high;
    }
    if (n > 2000 && AutoOnOffLoad) ChooseShownChannels(slot);
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
