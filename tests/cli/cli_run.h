// cli_run.h -- runs a command line inside a test and keeps what it printed.
#pragma once
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "cli/commands.h"
#include "cli/console.h"

struct CliRun {
    int status;
    std::string out, err;
};

inline std::string ReadBack(FILE* file) {
    std::string text(static_cast<size_t>(std::ftell(file)), '\0');
    std::rewind(file);
    text.resize(std::fread(text.data(), 1, text.size(), file));
    std::fclose(file);
    return text;
}

// Starts capturing at once; Finish gives what was printed and puts the streams and the current folder back.
struct CliCapture {
    std::filesystem::path folder = std::filesystem::current_path();
    CliCapture() {
        consoleOut = std::tmpfile();
        consoleErr = std::tmpfile();
    }
    CliRun Finish(int status) {
        CliRun run{status, ReadBack(consoleOut), ReadBack(consoleErr)};
        consoleOut = stdout;
        consoleErr = stderr;
        std::filesystem::current_path(folder);
        return run;
    }
};

inline CliRun RunCli(const std::vector<std::string>& words) {
    CliCapture capture;
    return capture.Finish(RunCommandLine(words));
}

// How many lines a text has.
inline long LineCount(const std::string& text) { return std::count(text.begin(), text.end(), '\n'); }
