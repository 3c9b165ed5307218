#include "run_data/run_store.h"

#include <algorithm>
#include <cstring>
#include <new>

#include "platform/boxes.h"
#include "platform/memory.h"
#include "run_data/run_events.h"

const SampleMemory systemMemory = {TakeMemory, GiveMemory};
SampleMemory sampleMemory = {TakeMemory, GiveMemory};

SampleArray<uint16_t> Ne[fileSlots];
SampleArray<int32_t>  TH[fileSlots];
SampleArray<uint16_t> VFW[fileSlots];
SampleArray<uint16_t> VRW[fileSlots];
SampleArray<int16_t>  FSUS[fileSlots];
SampleArray<int16_t>  RSUS[fileSlots];
SampleArray<int32_t>  LAF1[fileSlots];
SampleArray<int32_t>  LAF2[fileSlots];
SampleArray<uint16_t> VB[fileSlots];
SampleArray<int32_t>  AUX1[fileSlots];
SampleArray<int32_t>  AUX2[fileSlots];
SampleArray<uint32_t> lapDistance[fileSlots];
SampleArray<uint32_t> distFront[fileSlots];
SampleArray<uint32_t> distRear[fileSlots];
SampleArray<uint8_t>  sampleFlag[fileSlots];
SampleArray<int16_t>  VFSus[fileSlots];
SampleArray<int16_t>  VRSus[fileSlots];

uint32_t lapStart[fileSlots][lapTableSize];
uint32_t lapLength[fileSlots][lapTableSize];
int32_t  lapCount[fileSlots];

int32_t sampleCount[fileSlots];
uint32_t dataVersion[fileSlots];
int32_t formatVersion[fileSlots];
int32_t fileKind[fileSlots];
int32_t slotInUse[fileSlots + 1];
double  timeFactor[fileSlots];
int32_t cursorPos[fileSlots];
int32_t currentLap[fileSlots];
int32_t lapViewOffset[fileSlots];
int32_t jumpTarget[fileSlots];
int32_t LapTimeCentis[fileSlots];
char    memoText[fileSlots][256];
char    fileTitle[fileSlots][260];
char    filePath[fileSlots][260];
char    firmwareText[16];

int neDivider[fileSlots];
int neRange[fileSlots];
int frontPulses[fileSlots];
int frontTyreMm[fileSlots];
int rearPulses[fileSlots];
int rearTyreMm[fileSlots];
int rearOnGearbox[fileSlots];
int gearboxPulses[fileSlots];
int frontSprocket[fileSlots];
int rearSprocket[fileSlots];
int MarksPerLap[fileSlots];
int tpsClosedRaw[fileSlots];
int tpsOpenRaw[fileSlots];
int tpsSpan[fileSlots];
int fsusType[fileSlots];
int rsusType[fileSlots];
int fsusZeroRaw[fileSlots];
int rsusZeroRaw[fileSlots];
int fsusStroke[fileSlots];
int rsusStroke[fileSlots];
int auxDivider[fileSlots][2];
int lafDivider[fileSlots][2];
int primaryMain[fileSlots];
int primaryCounter[fileSlots];
int gearMain[fileSlots][gearTotal];
int gearCounter[fileSlots][gearTotal];
int primaryRatio[fileSlots];
int gearLimit[fileSlots][gearTotal];
int gearRatioSeen[fileSlots];
int LinkRatio[fileSlots];
int tpsMinSeen[fileSlots];
int tpsMaxSeen[fileSlots];
int fsusMaxSeen[fileSlots];
int rsusMaxSeen[fileSlots];

AnalogCalibration analog[fileSlots][analogInputs];
AnalogCalibration analogAsLogged[fileSlots][analogInputs];

int channelMax[fileSlots][channelTotal];
int channelMin[fileSlots][channelTotal];
int showChannel[fileSlots][channelTotal];

uint32_t extremeMarkValid[fileSlots][extremeMarkTotal];
uint32_t extremeMarkSample[fileSlots][extremeMarkTotal];
int32_t  extremeMarkY[fileSlots][extremeMarkTotal];

// Start values of the sensor parameters, which are also those of a log whose teeth are missing.
static constexpr int standardGearMain[gearTotal] = {33, 32, 30, 26, 30, 29};
static constexpr int standardGearCounter[gearTotal] = {12, 16, 18, 18, 23, 24};

void DefaultTeeth(int slot) {
    primaryMain[slot] = 76;
    primaryCounter[slot] = 36;
    std::copy(standardGearMain, standardGearMain + gearTotal, gearMain[slot]);
    std::copy(standardGearCounter, standardGearCounter + gearTotal, gearCounter[slot]);
}

void SetUnknownGearing(int slot) {
    rearOnGearbox[slot] = gearboxPulses[slot] = 0;
    frontSprocket[slot] = rearSprocket[slot] = 1;
    primaryMain[slot] = primaryCounter[slot] = 1;
    std::fill(std::begin(gearMain[slot]), std::end(gearMain[slot]), 1);
    std::fill(std::begin(gearCounter[slot]), std::end(gearCounter[slot]), 1);
}

static void DefaultSensors(int slot) {
    neDivider[slot] = 2;
    neRange[slot] = 0;
    frontPulses[slot] = 20;
    frontTyreMm[slot] = 1920;
    rearPulses[slot] = 4;
    rearTyreMm[slot] = 2010;
    rearOnGearbox[slot] = 1;
    gearboxPulses[slot] = 29;
    frontSprocket[slot] = 15;
    rearSprocket[slot] = 43;
    MarksPerLap[slot] = 1;
    tpsClosedRaw[slot] = tpsOpenRaw[slot] = tpsSpan[slot] = 0;
    fsusType[slot] = rsusType[slot] = 0;
    fsusZeroRaw[slot] = rsusZeroRaw[slot] = 0;
    fsusStroke[slot] = rsusStroke[slot] = 0;
    for (int input = 0; input < 2; input++) {
        auxDivider[slot][input] = 1;
        lafDivider[slot][input] = 0;
    }
    DefaultTeeth(slot);
    primaryRatio[slot] = 0;
    std::fill(gearLimit[slot], gearLimit[slot] + gearTotal, 0);
    gearRatioSeen[slot] = 0;
    LinkRatio[slot] = slot == 0 ? 235 : 233;
    tpsMinSeen[slot] = 120;
    tpsMaxSeen[slot] = 128;
    fsusMaxSeen[slot] = rsusMaxSeen[slot] = 0;
    for (int input = 0; input < analogInputs; input++) {
        analog[slot][input] = {};
        analog[slot][input].type = input < 2 ? 0 : 1;
        analogAsLogged[slot][input] = analog[slot][input];
    }
}

static void DefaultSlot(int slot) {
    EnsureChannels(slot, 512);
    ClearChannels(slot, 512);
    std::fill(std::begin(lapStart[slot]), std::end(lapStart[slot]), 0);
    std::fill(std::begin(lapLength[slot]), std::end(lapLength[slot]), 0);
    lapCount[slot] = 1;
    sampleCount[slot] = 1;
    formatVersion[slot] = 0;
    fileKind[slot] = 0;
    slotInUse[slot] = slot == 0 ? 1 : 0;
    timeFactor[slot] = 1.0;
    cursorPos[slot] = 0;
    currentLap[slot] = 1;
    lapViewOffset[slot] = 0;
    jumpTarget[slot] = -1;
    LapTimeCentis[slot] = 0;
    std::memset(memoText[slot], 0, sizeof memoText[slot]);
    std::memset(fileTitle[slot], 0, sizeof fileTitle[slot]);
    std::memset(filePath[slot], 0, sizeof filePath[slot]);
    DefaultSensors(slot);
    for (int channel = 0; channel < channelTotal; channel++) {
        channelMax[slot][channel] = channelMin[slot][channel] = 0;
        showChannel[slot][channel] = channel < chSlip ? 1 : 0;
    }
}

void DefaultRunStore() {
    for (int slot = 0; slot < fileSlots; slot++) DefaultSlot(slot);
    slotInUse[fileSlots] = 0;
    std::memset(firmwareText, 0, sizeof firmwareText);
    ClearExtremeMarks();
}

void ReleaseRunStore() {
    for (int slot = 0; slot < fileSlots; slot++)
        ForEachSampleArray(slot, [](auto& array, bool) { std::remove_reference_t<decltype(array)>().swap(array); });
}

// Fresh pages cost more than decoding, so that memory is kept for the next load unless most of it would lie idle.
static constexpr size_t idleFactor = 2;
static constexpr size_t keptElements = 4096;  // as many are never too many

template <class T>
static bool HoldsWell(const SampleArray<T>& array, size_t samples) {
    const size_t held = array.capacity();
    return samples <= held && held <= std::max(samples * idleFactor, keptElements);
}

// 0 when the array has `samples` elements; 1 without memory, and then it stays as it is.
template <class T>
static int Resize(SampleArray<T>& array, size_t samples) {
    try {
        if (samples != 0 && !HoldsWell(array, samples)) {
            SampleArray<T> fresh;
            fresh.reserve(samples);
            array.swap(fresh);
        }
    } catch (const std::exception&) {
        if (samples > array.capacity()) return 1;
    }
    array.resize(samples);
    return 0;
}

int EnsureChannels(int slot, int samples) {
    bool missing = samples <= 0;
    dataVersion[slot]++;
    ForEachSampleArray(slot, [&](auto& array, bool checked) {
        if (Resize(array, static_cast<size_t>(std::max(samples, 0))) != 0 && checked) missing = true;
    });
    if (!missing) return 0;
    ShowBox("Memory Ensure Error.(Data Main buffers)", "Memory Error!!");
    return 1;
}

void ClearChannels(int slot, int samples) {
    ForEachSampleArray(slot, [&](auto& array, bool) {
        size_t elements = std::min<size_t>(array.size(), samples > 0 ? samples : 0);
        std::fill_n(array.begin(), elements, 0);
    });
}

void EmptySlot(int slot) {
    EnsureChannels(slot, 16);
    ClearChannels(slot, 16);
    if (slot != 0) slotInUse[slot] = 0;
    std::fill(std::begin(lapStart[slot]), std::end(lapStart[slot]), 0);
    std::fill(std::begin(lapLength[slot]), std::end(lapLength[slot]), 0);
    lapCount[slot] = 1;
    sampleCount[slot] = 1;
    cursorPos[slot] = 0;
    currentLap[slot] = 1;
}

void ResetSlot(int slot) {
    EmptySlot(slot);
    lapViewOffset[slot] = 0;
    AfterReset(slot);
    ClearExtremeMarks();
}

void ClearExtremeMarks() { std::memset(extremeMarkValid, 0, sizeof extremeMarkValid); }

void FillLapEnd(int slot) {
    std::fill(lapStart[slot] + std::min<int>(lapCount[slot], lapTableSize), std::end(lapStart[slot]),
              static_cast<uint32_t>(sampleCount[slot]));
}
