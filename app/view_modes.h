// view_modes.h -- switching between normal graphs, graph position and the A/F map, as keys and tool bar do it.
#pragma once

// Leaves the other modes and real-time play; the buttons show it.
void ShowNormalGraphs();
void ShowAfMap();
// Real-time play as realTimePlayOn says; its clock starts.
void ShowRealTimePlay();
// The buttons of the modes and of real-time play, as the variables say.
void ShowModeButtons();
