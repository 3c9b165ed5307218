// session.h -- the program as the command line runs it: settings, window in memory, logs, message boxes told.
#pragma once
#include <span>
#include <string>

#include "cli/arguments.h"
#include "platform/headless/script.h"

constexpr int largestClient = 8192;      // pixels, width and height of a client area
constexpr int mostPasses    = 10000000;

// Full paths of the operands, taken before the session leaves the current folder for the program's.
std::vector<std::string> OperandPaths(const Invocation& invocation);
// Start state, the program's folder and the settings with those of --set; dialogs that a load opens are answered.
// exitDone or exitUnusable.
int BeginSession(const Invocation& invocation);
// Opens the window in memory, with time that costs nothing, on a screen that has room for width x height and is at least
// the usual one. exitDone or exitFailed.
int OpenSessionWindow(int width, int height);
// Loads a log into a slot with the keys of --hold down, in addition to those already held. exitFailed when the program
// showed a message box.
int LoadLog(const Invocation& invocation, const std::string& path, int slot);
// Loads the files into File 1, 2, 3; goes on behind one that fails.
int LoadLogs(const Invocation& invocation, std::span<const std::string> files);
// Passes of the main loop, as long as it runs.
void RunPasses(int count);
// Writes the client area of the last drawn frame. exitDone or exitFailed.
int SavePicture(const std::string& path);
// Tells the message boxes that were not told yet on consoleErr, as `box TITLE | TEXT`.
void TellBoxes();
// What was shown since the last call, for a script that asks.
std::vector<Shown> TakeShown();
// `KIND TITLE | TEXT` in one line, without its end.
std::string ShownLine(const Shown& entry);
// Writes the settings if --save-settings asks for it, then releases images, window and logs.
void EndSession(const Invocation& invocation);
