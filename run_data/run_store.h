// run_store.h -- the logs in memory, one per file slot.
//
// Owns     all samples, lap tables and sensor parameters of File 1, 2 and 3, from start-up to exit.
// Written  by the log readers, a whole slot in one call; then by derived_channels, and for File 1 by corrections.
//          Everyone else reads, every frame, without a copy.
// Time     sample i stands at i * 0.005 / timeFactor[slot] s. Sample 0 is never a logged value: readers leave it 0.
// Size     every array of a slot has sampleCount + 1 readable elements or more.
#pragma once
#include <cstdint>
#include <memory>
#include <new>
#include <vector>

#include "run_data/channels.h"

constexpr int lapTableSize     = 520;   // entries of each lap table
constexpr int lapMarkLimit     = 510;   // a new mark needs an index under this
constexpr int extremeMarkTotal = 6656;  // entries of the extreme marks of one slot
constexpr int memoLimit        = 189;   // characters of a memo taken from a log
constexpr int curvePoints      = 16;    // break points of an analog curve
constexpr int gearTotal        = 6;
constexpr int sampleLimit      = 5760000;  // samples of a file: 8 hours at 200 Hz

// Where the arrays take their memory: from the system, or from what a test puts here. take gives nullptr when there is none.
struct SampleMemory {
    void* (*take)(size_t bytes);  // at a multiple of 64
    void (*giveBack)(void* memory, size_t bytes);
};
extern SampleMemory sampleMemory;
extern const SampleMemory systemMemory;

// A vector whose new elements stay as the memory was: a load writes every element, and clearing 282 MB first would
// cost as much as the load.
template <class T>
struct UninitializedAllocator : std::allocator<T> {
    template <class U> struct rebind { using other = UninitializedAllocator<U>; };
    T* allocate(size_t n) {
        void* memory = n > SIZE_MAX / sizeof(T) ? nullptr : sampleMemory.take(n * sizeof(T));
        if (!memory) throw std::bad_alloc();
        return static_cast<T*>(memory);
    }
    void deallocate(T* p, size_t n) noexcept { sampleMemory.giveBack(p, n * sizeof(T)); }
    template <class U> void construct(U* p) noexcept { ::new (static_cast<void*>(p)) U; }
    template <class U, class... Args> void construct(U* p, Args&&... args) { ::new (static_cast<void*>(p)) U(static_cast<Args&&>(args)...); }
};
template <class T> using SampleArray = std::vector<T, UninitializedAllocator<T>>;

// Samples: [slot][sample], sampleCount[slot] of them.
extern SampleArray<uint16_t> Ne[fileSlots];           // engine speed, rpm
extern SampleArray<int32_t>  TH[fileSlots];           // throttle, 0.1 %, 0 to 1000 when calibrated
extern SampleArray<uint16_t> VFW[fileSlots];          // front wheel speed, 0.1 km/h, 15 significant bits
extern SampleArray<uint16_t> VRW[fileSlots];          // rear wheel speed, 0.1 km/h, 12 significant bits in native logs
extern SampleArray<int16_t>  FSUS[fileSlots];         // front stroke, 0.01 mm, signed
extern SampleArray<int16_t>  RSUS[fileSlots];         // rear stroke, 0.01 mm, signed
extern SampleArray<int32_t>  LAF1[fileSlots];         // analog input 1, 0.01 of the sensor's unit (analogType)
extern SampleArray<int32_t>  LAF2[fileSlots];         // analog input 2
extern SampleArray<uint16_t> VB[fileSlots];           // battery voltage, 0.01 V
extern SampleArray<int32_t>  AUX1[fileSlots];         // analog input 3, 0.01 of the unit, divided by auxDivider
extern SampleArray<int32_t>  AUX2[fileSlots];         // analog input 4
extern SampleArray<uint32_t> lapDistance[fileSlots];  // distance since the last lap start, along the CoursePosSource wheel
extern SampleArray<uint32_t> distFront[fileSlots];    // running sum of VFW; in m: / (7200.0 * timeFactor)
extern SampleArray<uint32_t> distRear[fileSlots];     // running sum of VRW
extern SampleArray<uint8_t>  sampleFlag[fileSlots];   // a logged one-bit marker, 0 or 1
extern SampleArray<int16_t>  VFSus[fileSlots];        // front suspension speed, mm/s
extern SampleArray<int16_t>  VRSus[fileSlots];        // rear suspension speed, mm/s

// Calls visit(array, checked) for every sample array of a slot. A new array is added here and nowhere else.
template <class Visit>
void ForEachSampleArray(int slot, Visit visit) {
    visit(Ne[slot], true);
    visit(TH[slot], true);
    visit(VFW[slot], true);
    visit(VRW[slot], true);
    visit(FSUS[slot], true);
    visit(RSUS[slot], true);
    visit(LAF1[slot], true);
    visit(LAF2[slot], true);
    visit(VB[slot], false);  // Kept: VB, VFSus and VRSus are not checked after a resize.
    visit(AUX1[slot], true);
    visit(AUX2[slot], true);
    visit(lapDistance[slot], true);
    visit(distFront[slot], true);
    visit(distRear[slot], true);
    visit(sampleFlag[slot], true);
    visit(VFSus[slot], false);
    visit(VRSus[slot], false);
}

// Laps: a lap of m marks runs from lapStart[slot][k] to lapStart[slot][k + m]. lapStart[slot][0] is 0; every entry from
// lapCount on holds sampleCount.
extern uint32_t lapStart[fileSlots][lapTableSize];   // samples
extern uint32_t lapLength[fileSlots][lapTableSize];  // speed counts of the CoursePosSource wheel, as lapDistance
extern int32_t  lapCount[fileSlots];                 // 1 or more; 1 without marks

// What a slot holds and where its view stands.
extern int32_t sampleCount[fileSlots];    // 1 or more
extern uint32_t dataVersion[fileSlots];   // counts up whenever samples may have changed, for what is kept beside them
extern int32_t formatVersion[fileSlots];  // 0, 1, 2, 3, 4 or 32; .qtw and CSV loads leave the previous value
extern int32_t fileKind[fileSlots];       // 0 nothing yet, 1 native, 2 secondary, 3 CSV
extern int32_t slotInUse[fileSlots + 1];  // slot 0 counts as in use from start-up; the fourth entry stays 0 and ends loops
extern double  timeFactor[fileSlots];     // 1.0 at 200 Hz; CSV: 5 ms / the file's step
extern int32_t cursorPos[fileSlots];      // sample under the cursor line, times 100
extern int32_t currentLap[fileSlots];     // lap under the cursor, from 1; may be stale, see HeldLap
extern int32_t lapViewOffset[fileSlots];  // first row of the lap list, 0 to lapCount - 1
extern int32_t jumpTarget[fileSlots];     // sample the cursor glides to, -1 when none
extern int32_t LapTimeCentis[fileSlots];  // 0.01 s, time of the current lap, written by the lap list
extern char    memoText[fileSlots][256];  // Shift-JIS, at most memoLimit characters from a log
extern char    fileTitle[fileSlots][260]; // UTF-8 file name as the view shows it
extern char    filePath[fileSlots][260];  // UTF-8 full path of the loaded file
extern char    firmwareText[16];          // File 1 only, 14 bytes as logged

// How the raw values were taken, from the log's header; the set-up dialogs show and edit those of File 1.
extern int neDivider[fileSlots];         // engine pulses divisor; 0 means count x 2
extern int neRange[fileSlots];           // extended Ne code, 3 and up, else 0
extern int frontPulses[fileSlots];       // pulses per turn, 1 or more
extern int frontTyreMm[fileSlots];       // mm per turn, 100 or more
extern int rearPulses[fileSlots];
extern int rearTyreMm[fileSlots];
extern int rearOnGearbox[fileSlots];     // 1 gearbox sensor, 0 wheel sensor
extern int gearboxPulses[fileSlots];
extern int frontSprocket[fileSlots];     // final ratio: drive and driven teeth
extern int rearSprocket[fileSlots];
extern int MarksPerLap[fileSlots];       // 1, 2 or 3; "LAP Marker" can store 0, used as 1 (HeldMarksPerLap)
extern int tpsClosedRaw[fileSlots];      // raw 8 bit throttle at 0 % and at 100 %
extern int tpsOpenRaw[fileSlots];
extern int tpsSpan[fileSlots];           // scale of format versions 0 and 32, normally 50
extern int fsusType[fileSlots];          // 0 fixed sensor, 1 linear, else none
extern int rsusType[fileSlots];
extern int fsusZeroRaw[fileSlots];       // 10 bit reading at stroke zero
extern int rsusZeroRaw[fileSlots];
extern int fsusStroke[fileSlots];        // signed, 0.1 mm over 0 to 5 V of a linear sensor
extern int rsusStroke[fileSlots];
extern int auxDivider[fileSlots][2];     // AUX1, AUX2: shown = stored x divider x 0.01; 1, 10 or 100
extern int lafDivider[fileSlots][2];     // LAF1, LAF2: the same in the lap statistics; 0 before the first native load
extern int primaryMain[fileSlots];
extern int primaryCounter[fileSlots];
extern int gearMain[fileSlots][gearTotal];
extern int gearCounter[fileSlots][gearTotal];
extern int primaryRatio[fileSlots];             // primaryMain x 1000 / primaryCounter, native logs only
extern int gearLimit[fileSlots][gearTotal];     // [k - 1] is the threshold of gear k, ratio x 1000
extern int gearRatioSeen[fileSlots];            // ratio x 1000 of the last GearPosition call, for the meter
extern int LinkRatio[fileSlots];                // rear link ratio in hundredths
extern int tpsMinSeen[fileSlots];               // extremes of the raw readings during the log
extern int tpsMaxSeen[fileSlots];
extern int fsusMaxSeen[fileSlots];
extern int rsusMaxSeen[fileSlots];

// Calibration of the analog inputs LAF1, LAF2, AUX1, AUX2, twice: the working set, which the AUX calculation edits, and
// the set as it was logged. A reader fills both.
struct AnalogCalibration {
    int     type;                           // 0 built-in A/F sensor, 1 volts, 2 linear, 3 curve
    int16_t slope, offset;                  // of a linear input
    int16_t curveX[curvePoints];            // mV
    int16_t curveY[curvePoints];            // 0.01 of the output unit
};
extern AnalogCalibration analog[fileSlots][analogInputs];
extern AnalogCalibration analogAsLogged[fileSlots][analogInputs];

// Statistics of the whole log and what is shown, per channel of channels.h. channelMax and channelMin are in stored
// units; Slip in 0.1 %.
extern int channelMax[fileSlots][channelTotal];
extern int channelMin[fileSlots][channelTotal];
extern int showChannel[fileSlots][channelTotal];  // 0 or 1

// Extreme marks that the lap table leaves on the graph.
extern uint32_t extremeMarkValid[fileSlots][extremeMarkTotal];   // 0 or 1
extern uint32_t extremeMarkSample[fileSlots][extremeMarkTotal];  // sample
extern int32_t  extremeMarkY[fileSlots][extremeMarkTotal];       // stored value's pixel row, see lap_marks

// Puts every global above into its start state: arrays of 512 zero elements, slot 0 in use and empty.
void DefaultRunStore();
// Gives a slot the standard gear teeth.
void DefaultTeeth(int slot);
// The gearing of a log that tells none: all teeth 1, the rear speed from the wheel.
void SetUnknownGearing(int slot);
// Releases the arrays of all slots, at exit.
void ReleaseRunStore();
// Resizes all arrays of a slot. 0 when done; 1 after the user was told ("Memory Ensure Error.(Data Main buffers)",
// "Memory Error!!"), and the caller resets the slot. 0 samples count as a failure. Elements stay while the new size fits
// into the memory at hand; arrays that take new memory hold anything. Memory that is much too large is given back.
int EnsureChannels(int slot, int samples);
// Fills the first `samples` elements of each array with zero bytes.
void ClearChannels(int slot, int samples);
// Empties a slot after a failed load and announces it (AfterReset). Slot 0 stays in use, so that every view finds a
// File 1. Title and path stay.
void ResetSlot(int slot);
// Empties a slot's arrays and lap tables: what ResetSlot and Unload have in common. slotInUse becomes 0 for slots 1 and 2.
void EmptySlot(int slot);
// Clears the valid flags of the extreme marks of all slots.
void ClearExtremeMarks();
// Fills all entries of lapStart from lapCount on with sampleCount.
void FillLapEnd(int slot);

// MarksPerLap with 0 and anything else outside 1..3 taken as 1.
inline int HeldMarksPerLap(int slot) { return MarksPerLap[slot] == 2 || MarksPerLap[slot] == 3 ? MarksPerLap[slot] : 1; }
// currentLap held inside 1..lapCount.
inline int HeldLap(int slot) {
    return currentLap[slot] < 1 ? 1 : currentLap[slot] > lapCount[slot] ? lapCount[slot] : currentLap[slot];
}
