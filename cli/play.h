// play.h -- scripts of `play`: one instruction a line, checked whole before the first one runs.
#pragma once
#include <string>
#include <string_view>
#include <vector>

#include "cli/arguments.h"

struct Instruction;

// One line of a script with its arguments read.
struct Step {
    const Instruction* instruction = nullptr;
    int line = 0;
    int number[2] = {0, 0};
    std::string text;  // the path, or the names of values
};

// Reads a script. exitDone; or exitUnusable after the line `zrka_cli: NAME line N: ...` was told.
int ReadScript(const std::string& name, std::string_view text, std::vector<Step>& steps);
// Runs the steps in the session that is open. The exit status of the first one that fails, else exitDone.
int RunScript(const Invocation& invocation, const std::vector<Step>& steps);
