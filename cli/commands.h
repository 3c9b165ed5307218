// commands.h -- the commands of zrka_cli.
#pragma once
#include <span>
#include <string>

#include "cli/arguments.h"

// Each returns an exit status.
int RunDump(const Invocation& invocation);    // dump.cpp
int RunRender(const Invocation& invocation);  // render.cpp
int RunLaps(const Invocation& invocation);    // laps.cpp
int RunExport(const Invocation& invocation);  // export.cpp
int RunDistribution(const Invocation& invocation);  // distribution.cpp
int RunPlay(const Invocation& invocation);    // play.cpp
// The instructions of a script, for the help.
std::string PlayDetails();

// The whole program: from the words behind its name to the exit status.
int RunCommandLine(std::span<const std::string> words);
