// layout_events.h -- what a graph layout from a file of the user's announces to the rest of the program.
#pragma once

// The layout has been read: the A/F map ends. app/run_events.cpp has the list.
void AfterLayoutLoad();
