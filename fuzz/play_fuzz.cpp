// Random hands on random logs: bytes become settings, a layout, logs with damage, and a script of `play` that is then run
// whole.
#include <unistd.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>
#include <string_view>

#include "cli/console.h"
#include "cli/play.h"
#include "cli/session.h"
#include "draw/surface.h"
#include "settings/settings.h"
#include "tools/sample_log/sample_log.h"

namespace {

constexpr int stepLimit = 120;
constexpr int passLimit = 12;  // of one instruction

// Takes numbers from the input; behind its end all are 0.
struct Input {
    const uint8_t* data;
    size_t size, at = 0;

    bool Ended() const { return at >= size; }
    int Byte() { return Ended() ? 0 : data[at++]; }
    int Below(int limit) {
        const int high = Byte();
        return (high * 256 + Byte()) % limit;
    }
    int Coordinate() { return Below(900) - 250; }  // the client area and its surroundings
};

// The folder of this run's files; it goes when the fuzzer ends.
struct RunFolder {
    std::filesystem::path path = std::filesystem::temp_directory_path() / ("play_fuzz_" + std::to_string(getpid()));
    RunFolder() { std::filesystem::create_directories(path); }
    ~RunFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }
    std::string File(const char* name) const { return (path / name).string(); }
};
const RunFolder& Folder() {
    static const RunFolder folder;
    return folder;
}

// A short log of a version, made once.
const std::vector<uint8_t>& CleanLog(int version, int marksPerLap) {
    static std::map<std::pair<int, int>, std::vector<uint8_t>> logs;
    std::vector<uint8_t>& log = logs[{version, marksPerLap}];
    if (log.empty()) {
        SampleLogOptions options;
        options.version = version;
        options.laps = 0;
        options.seconds = 60;
        options.skipSeconds = 60;  // past the pit lane: some marks come
        options.marksPerLap = marksPerLap;
        log = MakeSampleLog(options);
    }
    return log;
}

// A log whose length and some bytes are the input's.
void WriteLog(Input& input, const char* name) {
    constexpr int versions[] = {0, 32, 1, 2, 3, 4};
    const int version = versions[input.Byte() % 6];
    std::vector<uint8_t> log = CleanLog(version, 1 + input.Byte() % 3);
    if (input.Byte() % 2) log.resize(512 + size_t(input.Below(65536)) * 8 % log.size());
    for (int changes = input.Byte() % 8; changes > 0; changes--) {
        const size_t at = size_t(input.Below(65536)) % (input.Byte() % 2 ? log.size() : 1024) % log.size();
        log[at] = static_cast<uint8_t>(input.Byte());
    }
    std::ofstream(Folder().path / name, std::ios::binary).write(reinterpret_cast<const char*>(log.data()), log.size());
}

std::string Number(int number) { return std::to_string(number); }

// A settings file or a layout: some of its keys, with any number behind them.
void WriteSettings(Input& input, const char* name, std::string_view sections) {
    struct Key { const char *section, *name; };
    static constexpr Key keys[] = {
        {"Window", "x2"},            {"Window", "y2"},             {"Window", "Curse_X"},      {"Window", "Curse_Z"},
        {"Window", "MC_Z"},          {"Window", "Meter_X"},        {"Window", "Meter_Z"},      {"Window", "Susgram_Z"},
        {"ModeSetting", "CursolValueMode"}, {"ModeSetting", "SmoothingSample"}, {"ModeSetting", "colortype"},
        {"ModeSetting", "BaseLinePos"}, {"ModeSetting", "CslValWidth"}, {"ModeSetting", "SusFilter_n"},
        {"ModeSetting", "ExpertMode"}, {"ModeSetting", "HD_Display"}, {"ModeSetting", "GridFill"},
        {"SPLConfig", "SusVSampleNum"}, {"SPLConfig", "SmoothingSTD"}, {"SPLConfig", "Blend_mode"}, {"SPLConfig", "Shifter"},
        {"SPLConfig", "VSync"},      {"GraphSetting", "rpmpos"},   {"GraphSetting", "rpmzoom"}, {"GraphSetting", "vfwzoom"},
        {"GraphSetting", "slipzoom"}, {"GraphSetting", "GraphGrid_min0"}, {"GraphSetting", "GraphGrid_max0"},
        {"GraphSetting", "GraphGrid_step0"}, {"GraphSetting", "GraphGrid_step6"}, {"GraphSetting", "Color_Green2"},
        {"GraphSetting", "Color_Gonly3"}, {"GraphSetting", "Lap_Point_Green"}, {"GraphSetting", "VFW_View_Red"}};
    constexpr int wild[] = {0, 1, -1, 2, 3, 7, 100, 1000, 32767, -32768, 65536, 1000000, INT32_MAX, INT32_MIN};
    std::ofstream file(Folder().path / name, std::ios::binary);
    for (int count = input.Byte() % 8; count > 0; count--) {
        const Key& key = keys[input.Byte() % std::size(keys)];
        const int value = input.Byte() % 2 ? wild[input.Byte() % std::size(wild)] : input.Below(65536) - 32768;
        if (sections.find(key.section) != sections.npos) file << '[' << key.section << "]\n" << key.name << '=' << value << '\n';
    }
}

std::string Size(Input& input) {
    constexpr int sizes[] = {0, 1, 2, 7, 40, 160, 333, 640};
    const int width = sizes[input.Byte() % 8];
    return "size " + Number(width) + " " + Number(sizes[input.Byte() % 8]);
}
std::string Mouse(Input& input) {
    const int x = input.Coordinate();
    return "mouse " + Number(x) + " " + Number(input.Coordinate());
}
std::string Buttons(Input& input) { return "buttons " + Number(input.Byte() % 32); }
std::string Wheel(Input& input) { return "wheel " + Number(input.Below(64) - 32); }
std::string HWheel(Input& input) { return "hwheel " + Number(input.Below(4000) - 2000); }
std::string Hold(Input& input) {
    constexpr const char* keys[] = {"", " shift", " ctrl", " shift,ctrl"};
    return std::string("hold") + keys[input.Byte() % 4];
}
std::string Key(Input& input) {
    constexpr const char* named[] = {"Tab", "Esc", "Right", "Left", "Up", "Down", "Space"};
    const int key = input.Byte() % 128;
    return "key " + (key > ' ' && key < 127 && key != '#' ? std::string(1, static_cast<char>(key)) : named[key % 7]);
}
std::string Answer(Input& input) {
    const int kind = input.Byte() % 8;
    return "answer " + (kind == 0 ? "cancel" : kind == 1 ? "ok" : Folder().File(kind == 2 ? "layout.cfg" : "a.zrk"));
}
std::string Load(Input& input) {
    const int slot = 1 + input.Byte() % 3;
    return "load " + Number(slot) + " " + Folder().File(input.Byte() % 2 ? "a.zrk" : "b.zrk");
}
std::string Pass(Input& input) { return "pass " + Number(1 + input.Byte() % passLimit); }
std::string Event(Input& input) {
    constexpr const char* events[] = {"power suspend-query", "power suspend",   "power resume",       "power resume",
                                      "display-change",      "foreground main", "foreground main",    "foreground main",
                                      "foreground toolbar",  "foreground other"};
    return events[input.Byte() % std::size(events)];
}
std::string Command(Input& input) {
    constexpr int buttons[] = {1111, 1112, 1033, 1034, 1035, 1036, 1113, 1114, 1115, 1117, 1116, 1037};
    const int button = buttons[input.Byte() % std::size(buttons)];
    return "command " + Number(button) + (input.Byte() % 2 ? " checked" : "");
}
std::string State(Input& input) { return input.Byte() % 2 ? "state cursorPos lapStart viewZoom fileTitle" : "boxes"; }

// Passes, mouse and keys come up more often than what is rare in a user's hands as well.
std::string (*const makers[])(Input&) = {Pass, Pass,   Pass, Mouse, Mouse, Mouse,  Buttons, Buttons, Key, Key,
                                         Key,  Wheel,  Hold, Size,  Load,  Answer, Event,   State,   HWheel, Command};

std::string MakeScript(Input& input) {
    std::string script = "size 320 240\nload 1 " + Folder().File("a.zrk") + "\n";
    for (int step = 0; step < stepLimit && !input.Ended(); step++)
        script += makers[input.Byte() % std::size(makers)](input) + "\n";
    return script;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static FILE* const nowhere = std::fopen("/dev/null", "w");
    static const std::filesystem::path here = std::filesystem::current_path();  // the session leaves it for the program's
    Input input{data, size};
    WriteLog(input, "a.zrk");
    WriteLog(input, "b.zrk");
    WriteSettings(input, "ZRKA.ini", "Window ModeSetting SPLConfig GraphSetting");
    WriteSettings(input, "layout.cfg", "GraphSetting");
    consoleOut = nowhere;
    consoleErr = stderr;  // what is refused is a fault of this file and stops the fuzzer
    Invocation invocation;
    invocation.home = Folder().path.string();
    if (BeginSession(invocation) != exitDone) __builtin_trap();
    if (input.Byte() % 2) ExpertMode = 2;  // most keys and rows are the expert's
    Debug = input.Byte() % 2;
    // Pixels take most of the time and have tests of their own: one run in four draws them.
    SelectBackEnd(input.Byte() % 4 ? DrawBackEnd::none : DrawBackEnd::software);
    std::vector<Step> steps;
    if (ReadScript("fuzz", MakeScript(input), steps) != exitDone) __builtin_trap();
    consoleErr = nowhere;
    if (OpenSessionWindow(0, 0) == exitDone) RunScript(invocation, steps);
    EndSession(invocation);
    std::filesystem::current_path(here);
    return 0;
}
