// frame_steps.h -- one frame as a table: what is drawn, in which order, when, and with which blend. Adding a view is adding a row.
#pragma once
#include <span>

enum FrameModes : unsigned {
    normalGraphs  = 1,
    graphPosition = 2,
    afMap         = 4,
    allModes      = normalGraphs | graphPosition | afMap
};
// Graph position wins over the A/F map.
FrameModes ModeAtHand();

struct FrameStep {
    unsigned modes;
    bool (*wanted)();  // nullptr: always
    void (*blend)();   // nullptr: the function sets its own; otherwise the resting blend follows
    void (*draw)();
};
extern const std::span<const FrameStep> frameSteps;
