// Any bytes as "ZRKA.ini", "csvlabel.ini" and a ".cfg" file: what is read lies in its range, what is set is read back,
// and what the file holds besides stays.
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "graph/view_state.h"
#include "platform/files.h"
#include "platform/headless/script.h"
#include "run_data/load_pipeline.h"
#include "run_data/run_store.h"
#include "settings/graph_layout.h"
#include "settings/profile_file.h"
#include "settings/settings.h"
#include "settings/settings_file.h"

namespace {

void Require(bool holds) {
    if (!holds) std::abort();
}

// The folder of this run's files; it goes when the fuzzer ends.
struct RunFolder {
    std::filesystem::path path = std::filesystem::temp_directory_path() / ("profile_fuzz_" + std::to_string(getpid()));
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

void WriteFile(const char* name, std::string_view bytes) {
    std::ofstream(Folder().File(name), std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

struct Name { std::string section, key; };

// Sections and keys of the program's own files.
std::vector<Name> OwnNames() {
    ProfileText profile;
    WriteFile("ZRKA.ini", "");
    const std::filesystem::path current = std::filesystem::current_path();
    SaveSettings();
    std::filesystem::current_path(current);
    LoadProfile(Folder().File("ZRKA.ini").c_str(), profile);
    std::vector<Name> names;
    for (const auto& [name, line] : profile.keys) {
        const size_t split = name.find('\n');
        names.push_back({name.substr(0, split), name.substr(split + 1)});
    }
    for (const char* section : {"Time", "Ne", "LAP"}) names.push_back({section, "0"});
    names.push_back({"GraphSetting", " VRW_View_Green"});
    return names;
}
const std::vector<Name>& Names() {
    static const std::vector<Name> names = OwnNames();
    return names;
}

// Bytes of a file. Two of them stand for names of the program, so that random input is about more than strange keys.
std::string FileBytesOf(std::string_view input) {
    std::string bytes;
    for (size_t i = 0; i < input.size(); i++) {
        const bool section = input[i] == '\x01', key = input[i] == '\x02';
        if (!(section || key) || i + 1 == input.size()) {
            bytes += input[i];
            continue;
        }
        const Name& name = Names()[static_cast<uint8_t>(input[++i]) % Names().size()];
        bytes += section ? '[' + name.section + "]\n" : name.key + '=';
    }
    return bytes;
}

bool Within(int value, int low, int high) { return value >= low && value <= high; }

void RequireHeldRanges() {
    Require(Within(ExpertMode, 0, 2) && Within(CursolValueMode, 0, 7));
    Require(Within(SusVSampleNum, 0, 20) && Within(SmoothingSample, 0, 8));
    Require(Within(SmoothingSTD, 0, 1000) && Within(SusFilter_n, 0, 1000));
    Require(Within(AFmap_YCH, 0, 4) && Within(AFmap_SWCH, 0, 4) && Within(AFmap_AFCH, 0, 3));
    Require(windowWidth >= 1 && windowHeight >= 1 && Maxcono <= 256);
    for (int pixels : {BaseLinePos, CslValWidth, courseCenterX, courseCenterY, bodyX, bodyY, meterX, meterY, histX, histY})
        Require(Within(pixels, -32767, 32767));
    for (double scale : {double{courseZoom}, bodyZoom, meterZoom, histZoom}) Require(scale >= 0 && scale <= 4294968);
    for (int channel = 0; channel < layoutChannels; channel++) {
        Require(channelZoom[channel] >= 0.001 && channelZoom[channel] <= 4294968);
        Require(Within(GraphGrid_disp[channel], 0, 1));
        for (int file = 0; file < fileSlots; file++) Require(Within(showChannel[file][channel], 0, 1));
    }
    for (int marks : MarksPerLap) Require(Within(marks, 1, 3));
}

// What the profile says now, it says after being written and read too.
void RequireSameAfterParsing(const ProfileText& profile) {
    const ProfileText again = ParseProfile(ProfileBytes(profile));
    for (const Name& name : Names())
        Require(ProfileString(profile, name.section, name.key, "none") == ProfileString(again, name.section, name.key, "none"));
}

// Triples of name, kind and text from the input are set and removed.
void ChangeKeys(ProfileText& profile, std::string_view input) {
    while (input.size() > 3) {
        const Name& name = Names()[static_cast<uint8_t>(input[0]) % Names().size()];
        const int kind = input[1] & 3;
        const std::string_view text = input.substr(3, static_cast<uint8_t>(input[2]));
        input.remove_prefix(3 + text.size());
        if (kind == 0) {
            RemoveProfileKey(profile, name.section, name.key);
            Require(ProfileString(profile, name.section, name.key, "none") == "none");
        } else if (kind == 1) {
            WriteIntKey(profile, DecimalInt(text), name.section, name.key);
            Require(ProfileInt(profile, name.section, name.key, 77) == DecimalInt(text));
        } else if (kind == 2) {
            WriteStringKey(profile, text, name.section, name.key);
            Require(ProfileString(profile, name.section, name.key, "none") == text.substr(0, text.find_first_of("\r\n")));
        } else {
            WriteStringKey(profile, name.key, text, text);  // any name: written so that it reads back, or not at all
        }
    }
}

// Scales lose a unit when they are cut, and a large one of float precision loses more.
bool NearlyEqual(int before, int after) {
    const double a = static_cast<uint32_t>(before), b = static_cast<uint32_t>(after);
    return std::abs(a - b) <= 2 + a / 1e6;
}

void RequireRoundTrip(void (*save)(), void (*load)(), const char* file) {
    ProfileText first, second;
    save();
    LoadProfile(Folder().File(file).c_str(), first);
    load();
    RequireHeldRanges();
    save();
    LoadProfile(Folder().File(file).c_str(), second);
    for (const Name& name : Names()) {
        if (name.key.find("vrw_view_green") != std::string::npos) continue;  // written under another name than it is read
        const int before = ProfileInt(first, name.section, name.key, 0), after = ProfileInt(second, name.section, name.key, 0);
        Require(NearlyEqual(before, after));
    }
}

void AnswerWithLayout() { QueueAnswer(Answer::path, Folder().File("mine.cfg")); }

void UseAsFiles(std::string_view bytes) {
    const std::filesystem::path current = std::filesystem::current_path();  // the fuzzer's own paths depend on it
    WriteFile("ZRKA.ini", bytes);
    WriteFile("csvlabel.ini", bytes);
    WriteFile("mine.cfg", bytes);
    LoadSettings();
    RequireHeldRanges();
    RequireRoundTrip(SaveSettings, LoadSettings, "ZRKA.ini");
    AnswerWithLayout();
    LoadGraphLayout(1);
    RequireHeldRanges();
    const auto save = [] { AnswerWithLayout(), SaveGraphLayout(1); };
    const auto load = [] { AnswerWithLayout(), LoadGraphLayout(1); };
    RequireRoundTrip(save, load, "mine.cfg");
    shown.clear();
    std::filesystem::current_path(current);
}

void StartState() {
    DefaultScript();
    DefaultRunStore();
    DefaultViewState();
    DefaultSettings();
    DefaultSettingsFile();
    loadBusy = 0;
    SetProgramFolder(Folder().path.string().c_str());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size < 1) return 0;
    StartState();
    // The first byte says how much of the input is the file; the rest changes it.
    const std::string_view input(reinterpret_cast<const char*>(data) + 1, size - 1);
    const size_t fileSize = input.size() * (data[0] + 1) / 256;
    const std::string bytes = FileBytesOf(input.substr(0, fileSize));

    ProfileText profile = ParseProfile(bytes);
    Require(ProfileBytes(profile) == bytes);
    ReadSettingKeys(profile);
    ReadLayoutKeys(profile);
    RequireHeldRanges();
    ChangeKeys(profile, input.substr(fileSize));
    RequireSameAfterParsing(profile);
    // One input in 64 goes over the disk, which is slow: chosen so that its descendants do not all go there too.
    if (std::hash<std::string_view>()(input) % 64 == 0) UseAsFiles(bytes);
    return 0;
}
