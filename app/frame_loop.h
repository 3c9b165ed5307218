// frame_loop.h -- start-up, the loop, pacing, power, recovery and shutdown.
#pragma once
#include <cstdint>

extern int32_t quitFlag;    // non-zero ends the loop: 1 close, 2 tool bar destroyed
extern int32_t powerState;  // 0 running, 1 suspend asked, 2 suspended, 3 resuming
extern int32_t frameNumber; // drawn frames since start

// Every global into its start state; allocates the sample arrays. Tests begin with it and need no other set-up.
void LoadDefaults();
// Start-up order as a whole; `log` is the command line's argument or nullptr. 0, or -1 when no device could be set up.
int StartProgram(const char* log);
// Until the end of the run: passes, then shutdown.
int RunProgram(const char* log);
// 0 done; 1 the drawing layer cannot start; 2 reserved.
int InitWindowAndDevice();
// Frees all images and makes them, fonts, colours, scales and summaries anew. Safe at any time from the loop.
void RebuildResources();
void BuildFonts();
// One pass of the loop: messages, power, input, frame, pace.
void LoopPass();
bool LoopRuns();
// clientWidth, clientHeight and their halves; a minimised window keeps the last ones.
void ReadClientSize();
// One frame from back to front, without the flip.
void DrawFrame();
// The wait at the end of a pass: 200 ms at rest, else what keeps the frame rate.
void PaceFrame();
// Milliseconds of the pass so far, and of the one before with its wait.
int PassElapsedMs();
int LastPassMs();
// Recovery from a failed message pump: window, tool bar and device anew.
void ResetDevice();
void ShutDownProgram();
// Power broadcast as the tool bar receives it.
enum class PowerEvent { suspendQuery, suspend, resume };
void PowerBroadcast(PowerEvent event);
// One pass's share of suspending and resuming; the rest of a pass runs only in state 0.
void ActOnPowerState();
// WM_DISPLAYCHANGE.
void DisplayChanged();
void DefaultFrameLoop();
