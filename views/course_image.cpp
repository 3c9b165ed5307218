#include "views/course_image.h"

#include <algorithm>
#include <cstdio>

#include "graph/color_scheme.h"
#include "graph/view_state.h"
#include "run_data/derived_channels.h"
#include "run_data/fixed_point.h"
#include "run_data/run_store.h"
#include "settings/settings.h"
#include "views/course_file.h"

char courseCaption[16];

// Selectors beyond the channels 1 to 11.
constexpr int selectorNone = 0, selectorMoves = 12, selectorSlip = 129, selectorGear = 130, selectorFrontRise = 131,
              selectorRearRise = 132, selectorTrack = 255;
constexpr int outlineRadius = 6, dotRadius = 4, markRadius = 6, finishRadius = 7;
constexpr int riseSamples = 100;  // on either side

// --- from a point to a sample ------------------------------------------------------------------------------------------------

int CurrentLapGroup(int slot) {
    const int lap = HeldLap(slot), marks = HeldMarksPerLap(slot);
    return lap - (lap - 1) % marks;
}

uint32_t CurrentLapLength(int slot) {
    const int start = CurrentLapGroup(slot), marks = HeldMarksPerLap(slot);
    if (marks == 1) return lapLength[slot][HeldLap(slot)];
    uint32_t length = 0;
    for (int j = 0; j < marks; j++) length += lapLength[slot][start + j];
    return length;
}

static uint32_t PointDistance(int slot, int point) {
    const int start = CurrentLapGroup(slot), marks = HeldMarksPerLap(slot);
    uint32_t target = 0;
    for (int j = 0; j < marks; j++)
        target += lapLength[slot][start + j] / static_cast<uint32_t>(coursePointCount) * static_cast<uint32_t>(point);
    return target;
}

// First sample of the lap from `from` on whose distance reaches `distance`, -1 for none. Marks may stand anywhere.
static int SampleAtDistance(int slot, uint32_t distance, uint32_t from) {
    const int start = CurrentLapGroup(slot);
    const uint32_t first = lapStart[slot][start - 1];
    const uint32_t last = std::min<uint32_t>(lapStart[slot][start + HeldMarksPerLap(slot)], sampleCount[slot]);
    for (uint32_t sample = std::max(first, from); sample <= last; sample++)
        if (lapDistance[slot][sample] >= distance) return static_cast<int>(sample);
    return -1;
}

CoursePlace FindCoursePlace(int slot, int point) {
    const uint32_t distance = PointDistance(slot, point);
    return {distance, SampleAtDistance(slot, distance, 0)};
}

// Kept: a point that the lap does not reach falls back on its own number, which paints the tail of a short lap with the
// first samples of the run.
static int HeldPoint(int slot, int point) { return std::clamp(point, 0, sampleCount[slot]); }

int CoursePointToSample(int slot, int point) {
    const int sample = FindCoursePlace(slot, point).sample;
    return sample < 0 ? HeldPoint(slot, point) : sample;
}

// --- colours -------------------------------------------------------------------------------------------------------------------

// The walk over the points: distances rise with the points, so that the search goes on where it ended.
struct DotWalk {
    uint32_t reached;     // sample of the point before, all bits set when it was out of reach
    int      colorIndex;  // of the point before; a selector that moves on keeps it
    int      gearIndex;
};

static int SampleOfDot(DotWalk& walk, int slot, int point) {
    const int sample = SampleAtDistance(slot, PointDistance(slot, point), walk.reached);
    walk.reached = static_cast<uint32_t>(sample);  // a point out of reach leaves none for those behind it
    return sample < 0 ? HeldPoint(slot, point) : sample;
}

static void WriteCaption(const char* format) { std::snprintf(courseCaption, sizeof courseCaption, format, (courseColorFile & 1) + 1); }

static int StoredCount(int slot, int channel, int s) {
    switch (channel) {
        case chNe: return Ne[slot][s];
        case chTH: return TH[slot][s] / 10;
        case chVFW: return VFW[slot][s];
        case chVRW: return VRW[slot][s];
        case chFSUS: return FSUS[slot][s];
        case chRSUS: return RSUS[slot][s];
        case chLAF1: return LAF1[slot][s];
        case chLAF2: return LAF2[slot][s];
        case chVB: return VB[slot][s];
        case chAUX1: return AUX1[slot][s];
        default: return AUX2[slot][s];
    }
}

// The place of a value between the ends of the channel's grid, 0..255.
static int ScaledIndex(int channel, int value) {
    const int64_t low = GraphGrid_min[channel], high = GraphGrid_max[channel];
    if (high == low) return 0;
    const int index = static_cast<int>(std::clamp<int64_t>((value - low) * 255 / (high - low), 0, 255));
    return channel == chTH && index < 10 ? 0 : index;
}

static int SlipIndex(int slot, int s) {
    const int front = VFW[slot][s], rear = VRW[slot][s];
    if (front <= 50) return 0;
    return std::clamp((rear - front) * 1000 / front + 150, 0, 300) * 255 / 300;
}

// Kept: a point at which the gear changes is grey.
static int GearIndex(DotWalk& walk, int slot, int s) {
    const int gear = GearPosition(slot, s);
    const int index = gear * 255 / 5 - 41 - (gear == 3 ? 29 : gear == 5 ? 15 : 0);
    const bool changed = index != walk.gearIndex;
    walk.gearIndex = index;
    return changed ? 0 : std::clamp(index, 0, 255);
}

// How much faster the wheel turns in the half second ahead than in the one behind.
static int RiseIndex(int slot, const SampleArray<uint16_t>& speed, int s) {
    int ahead = 0, behind = 0;
    for (int j = 0; j < riseSamples; j++) {
        if (s + j <= 0 || s + j >= sampleCount[slot] || s - j < 1 || s - j >= sampleCount[slot]) continue;
        ahead += speed[s + j];
        behind += speed[s - j];
    }
    const int index = (ahead / riseSamples - behind / riseSamples) * 128 / 200 + 128;
    return index == 0 ? 2 : std::clamp(index, 0, 255);
}

// Kept: a selector that moves on keeps the colour of the point before for one point.
static int MoveSelector(const DotWalk& walk, int selector) {
    courseColorChannel = selector;
    return walk.colorIndex;
}

static int ColorIndex(DotWalk& walk, int point) {
    static constexpr const char* captions[] = {"",           "File %d:Ne",   "File %d:Th",   "File %d:VFW",
                                               "File %d:VRW", "File %d:FSUS", "File %d:RSUS", "File %d:LAF1",
                                               "File %d:LAF2", "File %d:VB",  "File %d:AUX1", "File %d:AUX2"};
    const int slot = courseColorFile, selector = courseColorChannel;
    if (selector == selectorMoves) return MoveSelector(walk, selectorSlip);
    if (selector == selectorTrack) {
        courseCaption[0] = 0;
        return point * 255 / coursePointCount;
    }
    const bool rise = selector == selectorFrontRise || selector == selectorRearRise;
    if (rise && !Debug) return MoveSelector(walk, selectorTrack);
    if (selector < 1 || (selector > selectorMoves && selector < selectorSlip) || selector > selectorRearRise)
        return MoveSelector(walk, selectorNone);
    const int s = SampleOfDot(walk, slot, point);
    if (selector < selectorMoves) {
        WriteCaption(captions[selector]);
        return ScaledIndex(selector - 1, StoredCount(slot, selector - 1, s));
    }
    WriteCaption(selector == selectorSlip        ? "File %d:Slip%%"
                 : selector == selectorGear      ? "File %d:GearPos"
                 : selector == selectorFrontRise ? "File %d:dVFW"
                                                 : "File %d:dVRW");
    if (selector == selectorSlip) return SlipIndex(slot, s);
    if (selector == selectorGear) return GearIndex(walk, slot, s);
    return RiseIndex(slot, selector == selectorFrontRise ? VFW[slot] : VRW[slot], s);
}

// --- the picture -----------------------------------------------------------------------------------------------------------------

static Color UniformColor() { return MakeColor(255, 0, 0) | (colortype == 1 ? MakeColor(0, 0, 255) : MakeColor(0, 255, 0)); }

static void Dot(int point, int radius, Color color) {
    DrawCircle(TruncToInt(courseX[point] * courseScale + courseHalf), TruncToInt(courseY[point] * courseScale + courseHalf), radius,
               color, 1, 1);
}

static void DotBlend() { SetBlend(courseImageNoAlpha ? blendAdd : blendAlphaImage, 127); }

static void DrawDots(bool uniform) {
    DotWalk walk{0, 0, 0};
    int mark = 1;
    DotBlend();
    for (int point = 0; point <= coursePointCount; point++) {
        if (sectorMark[0][mark] == point && HeldMarksPerLap(0) == 1) {
            SetBlend(blendNone, 255);
            Dot(point, markRadius, UniformColor());
            DotBlend();
            mark = std::min(mark + 1, sectorMarkSize - 1);
            continue;
        }
        if (!uniform && courseColorChannel == selectorNone) {
            courseCaption[0] = 0;
            uniform = true;
        }
        if (!uniform) walk.colorIndex = ColorIndex(walk, point);
        Dot(point, dotRadius, uniform ? UniformColor() : ColorRamp[walk.colorIndex]);
    }
}

void RedrawCourseImage(int uniform) {
    if (courseImage == noHandle) return;
    const Color background = colortype == 1 ? MakeColor(255, 255, 255) : MakeColor(0, 0, 0);
    SetDrawTarget(courseImage);
    SetBlend(blendNone, 255);
    ClearImageBlack(courseImage);
    for (int point = 0; point <= coursePointCount; point++) Dot(point, outlineRadius, background);
    DrawDots(uniform == 1);
    SetBlend(blendNone, 255);
    Dot(0, finishRadius, UniformColor());
    SetDrawTarget(backBuffer);
}

void DefaultCourseImage() { courseCaption[0] = 0; }
