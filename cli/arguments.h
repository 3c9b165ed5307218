// arguments.h -- takes the words of a command line apart: options before the command, the command, its own options and
// its operands; and writes the help from the same tables.
#pragma once
#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

struct OptionInfo {
    const char* name;     // with its two dashes
    const char* value;    // what stands behind it, nullptr for nothing
    const char* meaning;
    const char* example;
};

// A setting in place of the file's.
struct SettingOverride {
    std::string section, key, value;
};

struct Command;

// What the user asked for.
struct Invocation {
    std::string home;  // full path of the program's folder, empty for the executable's
    std::vector<SettingOverride> settings;
    bool holdShift = false, holdCtrl = false;
    bool saveSettings = false;

    const Command* command = nullptr;
    struct Given {
        const OptionInfo* option;
        std::string value;
    };
    std::vector<Given> options;         // of the command, in their order
    std::vector<std::string> operands;  // what is no option
};

struct Command {
    const char *name, *operands, *summary;
    std::string (*details)();
    const char* example;
    std::span<const OptionInfo> options;
    size_t fewest, most;  // operands
    int (*run)(const Invocation& invocation);
};

// Fills `invocation` from the words behind the program's name. -1: the command is to be run; else an exit status, and
// the help or the reason has been printed.
int ParseArguments(std::span<const std::string> words, std::span<const Command> commands, Invocation& invocation);
// The last value given for an option of the command, or nullptr.
const std::string* GivenValue(const Invocation& invocation, const char* option);

// Reads a whole decimal number in low..high. False when `text` is anything else.
bool ReadNumber(std::string_view text, int low, int high, int& number);
// Reads "shift", "ctrl" or both with a comma between.
bool ReadHeldKeys(std::string_view text, bool& shift, bool& ctrl);
// The path made absolute from the current folder, which the program leaves for its own at start.
std::string FullPath(const std::string& path);
// Makes a folder and those above it. 0 done, also when it is there already; 1 failed.
int MakeFolder(const std::string& path);
