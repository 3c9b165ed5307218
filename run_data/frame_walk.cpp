// Where each change-mask frame begins follows from the size of the one before: a long chain of look-ups, each of which waits
// for the last. So a long log is walked in several parts at once. All but the first begin anywhere, within a frame mostly,
// and soon come into step by chance: from the first place on that the walk of the part before reaches too, the two are the
// same. What such a walk found before that place is dropped. Where they never meet, the part is walked again.
#include <algorithm>
#include <cstring>
#include <new>

#include "run_data/frame_sizes.h"
#include "run_data/log_header.h"
#include "run_data/native_frames.h"

constexpr int walkParts = 4;
constexpr int64_t shortestPart = 16384;  // bytes, and more than a frame

// Most steps through so many bytes.
static int64_t StepsOf(int64_t bytes) { return bytes / smallestMaskFrame + 1; }

// A walk through one part of a log: steps to frames that begin before `stop`.
struct Walk {
    const uint8_t *at, *stop;
    uint8_t *first, *behind;  // the steps made
};

static void Step(Walk& walk, const FrameSizes& sizes) {
    size_t size = FrameSize(sizes, walk.at);
    *walk.behind++ = static_cast<uint8_t>(size);
    walk.at += size;
}

static void WalkAtOnce(Walk (&walks)[walkParts], const FrameSizes& sizes) {
    for (;;) {
        int64_t left = walks[0].stop - walks[0].at;
        for (const Walk& walk : walks) left = std::min<int64_t>(left, walk.stop - walk.at);
        int64_t steps = left / largestMaskFrame;
        if (steps <= 0) break;
        const uint8_t* at[walkParts];
        uint8_t* out[walkParts];
        for (int k = 0; k < walkParts; k++) at[k] = walks[k].at, out[k] = walks[k].behind;
        for (int64_t i = 0; i < steps; i++) {
#pragma GCC unroll 4
            for (int k = 0; k < walkParts; k++) {
                size_t size = FrameSize(sizes, at[k]);
                out[k][i] = static_cast<uint8_t>(size);
                at[k] += size;
            }
        }
        for (int k = 0; k < walkParts; k++) walks[k].at = at[k], walks[k].behind = out[k] + steps;
    }
}

static void WalkToStop(Walk& walk, const FrameSizes& sizes) {
    while (walk.at < walk.stop) Step(walk, sizes);
}

// Memory for a number of steps, that of the log before when it is enough.
static bool MakeRoom(FrameSteps& steps, int64_t count) {
    if (count <= steps.room) return true;
    steps.room = 0;
    steps.bytes.reset();
    steps.bytes.reset(new (std::nothrow) uint8_t[count]);
    if (steps.bytes) steps.room = count;
    return steps.room > 0;
}

// The parts of a log, each with room for its steps behind `first`.
static void PlanWalks(Walk (&walks)[walkParts], const uint8_t* begin, int64_t length, int64_t part, uint8_t* first) {
    for (int k = 0; k < walkParts; k++) {
        uint8_t* steps = first + k * StepsOf(part);
        walks[k] = {begin + std::min(length, k * part), begin + std::min(length, (k + 1) * part), steps, steps};
    }
}

// Steps in order, as many as there is room for.
struct StepList {
    uint8_t* steps;
    int count, limit;
    void Add(const uint8_t* from, const uint8_t* end) {
        int taken = static_cast<int>(std::min<int64_t>(end - from, limit - count));
        std::memcpy(steps + count, from, taken);
        count += taken;
    }
};

// Goes on at `at`, a frame of the log, to the end of a part, which was walked from `start`; returns the frame behind it.
static const uint8_t* JoinWalk(const Walk& walk, const uint8_t* start, const uint8_t* at, const FrameSizes& sizes,
                               StepList& list) {
    const uint8_t *other = start, *step = walk.first;
    while (at != other && at < walk.stop) {
        if (at > other) {
            other += *step++;
            continue;
        }
        uint8_t size = static_cast<uint8_t>(FrameSize(sizes, at));
        list.Add(&size, &size + 1);
        at += size;
    }
    if (at != other) return at;  // never in step
    list.Add(step, walk.behind);
    return walk.at;
}

int WalkChangeMaskFrames(const uint8_t* log, int length, int version, int limit, FrameSteps& steps) {
    if (length < extendedHeaderSize) return 0;
    const uint8_t* begin = log + extendedHeaderSize;
    const int64_t reach = length - extendedHeaderSize + 1;  // Kept: a frame that begins right at the end counts.
    const int64_t part = std::max(shortestPart, reach / walkParts + 1);
    limit = static_cast<int>(std::min<int64_t>(limit, StepsOf(reach)));
    if (!MakeRoom(steps, limit + walkParts * StepsOf(part))) return -1;
    Walk walks[walkParts];
    PlanWalks(walks, begin, reach, part, steps.bytes.get() + limit);
    const uint8_t* starts[walkParts];
    for (int k = 0; k < walkParts; k++) starts[k] = walks[k].at;
    const FrameSizes& sizes = SizesFor(version);
    WalkAtOnce(walks, sizes);
    for (Walk& walk : walks) WalkToStop(walk, sizes);
    StepList list = {steps.bytes.get(), 0, limit};
    const uint8_t* at = begin;
    for (int k = 0; k < walkParts; k++) at = JoinWalk(walks[k], starts[k], at, sizes, list);
    return list.count;
}
