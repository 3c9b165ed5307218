// channel_plot.h -- traces, lap lines and cursor line, drawn from the raw samples in every frame.
#pragma once

// All files, all channels, in the blend at hand.
void DrawChannelPlot();
void DrawLapLines();
void DrawCursorLine();
// The mapping of one file's time axis at this moment.
struct TimeMapping {
    double samplesPerPixel, pixelsPerSample;
    int    cursor;     // cursorPos
    int    baseLineX;
};
TimeMapping MapTime(int slot);
// x of a sample (in float as drawn), and the sample at a pixel offset from the cursor line, truncated.
float SampleToX(const TimeMapping& mapping, int sample);
int   OffsetToSample(const TimeMapping& mapping, double offset);
// Bottom of lap and cursor lines: above the scroll bar when it is on.
int LineBottom();
