#include "run_data/derived_channels.h"

#include <algorithm>
#include <vector>

#include "platform/keyboard.h"
#include "run_data/fixed_point.h"
#include "run_data/run_store.h"
#include "settings/settings.h"

// Rear wheel speed through the gear train; the engine speed divided by it is the gear ratio x 1000. Kept: the products
// wrap at 32 bits.
static uint32_t DriveSpeed(int slot, int sample) {
    return uint32_t{VRW[slot][sample]} * static_cast<uint32_t>(primaryRatio[slot]) * static_cast<uint32_t>(rearSprocket[slot]) / 600;
}
static uint32_t DriveRatio(int slot, int sample, uint32_t driveSpeed) {
    return uint32_t{Ne[slot][sample]} * static_cast<uint32_t>(frontSprocket[slot]) * static_cast<uint32_t>(rearTyreMm[slot]) / driveSpeed;
}

// Strokes are 0.01 mm and a tick is 5 ms, so that a difference of neighbours times 2 is mm/s.
static void StrokeSpeed(int slot, const SampleArray<int16_t>& stroke, SampleArray<int16_t>& speed) {
    int total = std::min<int>(sampleCount[slot], speed.size());
    int moving = std::min(total, sampleCount[slot] - SusVSampleNum - 1);
    std::fill_n(speed.begin(), total, 0);
    for (int i = 1; i < moving; i++)
        speed[i] = Wrap16(TruncToInt((stroke[i + 1] - stroke[i]) * 2 * timeFactor[slot]));
}

void ComputeSuspensionSpeed(int slot) {
    dataVersion[slot]++;
    StrokeSpeed(slot, FSUS[slot], VFSus[slot]);
    StrokeSpeed(slot, RSUS[slot], VRSus[slot]);
    if (!IsKeyHeld(HeldKey::shift)) return;
    int total = std::min<int>(sampleCount[slot], VFSus[slot].size());
    for (int i = 0; i < total; i++)
        if (uint32_t speed = DriveSpeed(slot, i)) VFSus[slot][i] = Wrap16(DriveRatio(slot, i, speed));
}

// Replaces samples first .. last - 1 by the mean of the samples within `half`; what lies outside the log adds nothing.
template <class T>
static void Smooth(SampleArray<T>& array, int samples, int first, int last, int half) {
    int total = std::min<int>(samples, array.size());
    std::vector<T> original(array.begin(), array.begin() + total);
    for (int i = first; i < std::min(last, total); i++) {
        int64_t sum = 0;
        for (int j = std::max(0, i - half); j <= std::min(total - 1, i + half); j++) sum += original[j];
        array[i] = static_cast<T>(sum / (2 * half + 1));
    }
}

void SmoothChannels(int slot) {
    int n = sampleCount[slot];
    int window = fileKind[slot] == 1 && !IsKeyHeld(HeldKey::ctrl) ? std::clamp(SmoothingSTD, 0, 1000) : 0;
    int wheelWindow = std::clamp(SmoothingSample, 0, 8);
    int first = wheelWindow + 2, last = n - wheelWindow - 2;
    if (smoothingNE) Smooth(Ne[slot], n, first, last, wheelWindow);
    if (smoothingVW) Smooth(VFW[slot], n, first, last, wheelWindow);
    if (smoothingVW) Smooth(VRW[slot], n, first, last, wheelWindow);
    if (SmoothingSTD != 0) {
        Smooth(TH[slot], n, 1, n, window);
        Smooth(FSUS[slot], n, 1, n, window);
        Smooth(RSUS[slot], n, 1, n, window);
        Smooth(VFSus[slot], n, 1, n, 2);
        Smooth(VRSus[slot], n, 1, n, 2);
        Smooth(LAF1[slot], n, 1, n, window);
        Smooth(LAF2[slot], n, 1, n, window);
        Smooth(AUX1[slot], n, 1, n, window);
        Smooth(AUX2[slot], n, 1, n, window);
        Smooth(VB[slot], n, 1, n, window);
    }
    if (VFWCopyVRW) std::copy_n(VFW[slot].begin(), n - 1, VRW[slot].begin());
}

static void TakeExtreme(int slot, int channel, int value) {
    channelMax[slot][channel] = std::max(channelMax[slot][channel], value);
    channelMin[slot][channel] = std::min(channelMin[slot][channel], value);
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

static void ChooseShownChannels(int slot) {
    int* show = showChannel[slot];
    auto moves = [&](int channel) { return channelMin[slot][channel] != channelMax[slot][channel] ? 1 : 0; };
    for (int channel : {chNe, chTH, chVFW, chVRW, chFSUS, chRSUS, chLAF1, chLAF2, chAUX1, chAUX2}) show[channel] = moves(channel);
    show[chVB] = 1;
    if (!show[chFSUS]) show[chVFSus] = 0;
    if (!show[chRSUS]) show[chVRSus] = 0;
    if (!show[chVFW] && !show[chVRW]) show[chSlip] = 0;
}

void ComputeStatistics(int slot) {
    int n = sampleCount[slot], start = std::min(n, 200);
    bool gated = fileKind[slot] == 1 && formatVersion[slot] != 0 && formatVersion[slot] != 1 && formatVersion[slot] != 32;
    ForEachChannel(slot, [&](int channel, const auto& array) {
        int total = std::min<int>(n, array.size());
        if (channel < chSlip && start < static_cast<int>(array.size()))
            channelMax[slot][channel] = channelMin[slot][channel] = array[start];
        for (int i = 200; i < total - 16; i++) {
            if (gated && (channel == chFSUS || channel == chRSUS) && VB[slot][i] < 901) continue;
            TakeExtreme(slot, channel, array[i]);
        }
    });
    for (int i = 200; i < n - 16; i++)
        if (VFW[slot][i] > 50) TakeExtreme(slot, chSlip, (VRW[slot][i] - VFW[slot][i]) * 1000 / VFW[slot][i]);
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
