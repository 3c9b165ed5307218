// input_step.h -- once per pass, before drawing: mouse and keyboard move cursors, zoom, switch views, and decide whether
// anything changed at all.
#pragma once

// Sets idleFrame and activityCount.
void ReadInput();
// Takes and acts on one key.
void HandleKey();
void DefaultInputStep();
