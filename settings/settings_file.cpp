#include "settings/settings_file.h"

#include <climits>
#include <cstring>
#include <string>
#include <vector>

#include "graph/color_scheme.h"
#include "graph/view_state.h"
#include "platform/files.h"
#include "platform/window.h"
#include "run_data/csv_columns.h"
#include "run_data/run_store.h"
#include "settings/graph_layout.h"
#include "settings/number_key.h"
#include "settings/settings.h"

static int LowThreeBits(int value) { return value & 7; }
static constexpr auto pixels = Clamped<-32767, 32767>;
static constexpr bool saved = true, byHand = false;

static const NumberKey numberKeys[] = {
    {"Window", "x", &windowX, 0, saved},
    {"Window", "y", &windowY, 0, saved},
    {"Window", "x2", &windowWidth, 1024, saved, WithinOr<1, INT_MAX, 1024>},
    {"Window", "y2", &windowHeight, 768, saved, WithinOr<1, INT_MAX, 768>},
    {"Window", "zoomed", &zoomed, 0, saved},
    {"Window", "Curse_X", &courseCenterX, 1980, saved, pixels},
    {"Window", "Curse_Y", &courseCenterY, 0, saved, pixels},
    {"Window", "Curse_Z", &courseZoom, 500, saved},
    {"Window", "MC_X", &bodyX, 1800, saved, pixels},
    {"Window", "MC_Y", &bodyY, 360, saved, pixels},
    {"Window", "MC_Z", &bodyZoom, 500, saved},
    {"Window", "Meter_X", &meterX, 90, saved, pixels},
    {"Window", "Meter_Y", &meterY, 920, saved, pixels},
    {"Window", "Meter_Z", &meterZoom, 650, saved},
    {"Window", "Susgram_X", &histX, 1800, saved, pixels},
    {"Window", "Susgram_Y", &histY, 500, saved, pixels},
    {"Window", "Susgram_Z", &histZoom, 1000, saved},

    {"ViewSetting", "AFmap_YCH", &AFmap_YCH, 0, saved, WithinOr<0, 4, 0>},
    {"ViewSetting", "AFmap_AFCH", &AFmap_AFCH, 0, saved, WithinOr<0, 3, 0>},
    {"ViewSetting", "AFmap_SWCH", &AFmap_SWCH, 0, saved, WithinOr<0, 4, 0>},
    {"ViewSetting", "AFmap_SWTHS", &AFmap_SWTHS, 250, saved, nullptr, NumberForm::hundredths},

    {"ModeSetting", "CursolValueMode", &CursolValueMode, 1, saved, LowThreeBits},
    {"ModeSetting", "smoothingNE", &smoothingNE, 0, saved},
    {"ModeSetting", "smoothingVW", &smoothingVW, 0, saved},
    {"ModeSetting", "SmoothingSample", &SmoothingSample, 4, byHand, Clamped<0, 8>},
    {"ModeSetting", "CoursePosSource", &CoursePosSource, 0, saved},
    {"ModeSetting", "colortype", &colortype, 0, saved},
    {"ModeSetting", "CourseLayout_on", &CourseLayout_on, 1, saved},
    {"ModeSetting", "GridFill", &GridFill, 1, saved},
    {"ModeSetting", "AnimeMode", &AnimeMode, 1, saved},
    {"ModeSetting", "BodyDisplay", &BodyDisplay, 1, saved},
    {"ModeSetting", "SusgramDisplay", &SusgramDisplay, 0, saved},
    {"ModeSetting", "ExpertMode", &ExpertMode, 0, saved, Clamped<0, 2>},
    {"ModeSetting", "BaseLinePos", &BaseLinePos, 0, saved, pixels},
    {"ModeSetting", "AutoOnOffLoad", &AutoOnOffLoad, 1, saved},
    {"ModeSetting", "VFWCopyVRW", &VFWCopyVRW, 0, saved},
    {"ModeSetting", "ModifyFileName", &ModifyFileName, 0, saved},
    {"ModeSetting", "CslValWidth", &CslValWidth, 0, saved, pixels},
    {"ModeSetting", "SusFilter_n", &SusFilter_n, 7, byHand, Clamped<0, 1000>},
    {"ModeSetting", "ExclusiveF1Color", &ExclusiveF1Color, 0, saved},
    {"ModeSetting", "HD_Display", &HD_Display, 0, byHand},  // Kept: a tick in the set-up dialog holds for the run only.

    {"SPLConfig", "VSync", &VSync, 1, byHand},
    {"SPLConfig", "LinkRatio", &LinkRatio[0], 235, byHand},
    {"SPLConfig", "Memo_view", &Memo_view, 1, saved},
    {"SPLConfig", "Blend_mode", &Blend_mode, 0, byHand},
    {"SPLConfig", "Color_body", &Color_body, 0, byHand},
    {"SPLConfig", "Debug", &Debug, 0, byHand},
    {"SPLConfig", "AWC", &AWC, 0, byHand},
    {"SPLConfig", "LC", &LC, 0, byHand},
    {"SPLConfig", "Finalchg", &Finalchg, 0, byHand},
    {"SPLConfig", "VBerrexp", &VBerrexp, 0, byHand},
    {"SPLConfig", "CompressFile", &CompressFile, 0, byHand},
    {"SPLConfig", "CompressFileVer", &CompressFileVer, 3, byHand},
    {"SPLConfig", "AllowCompressMode", &AllowCompressMode, 0, byHand},
    {"SPLConfig", "SusVSampleNum", &SusVSampleNum, 3, byHand, Clamped<0, 20>},
    {"SPLConfig", "Lastcono", &Lastcono, 16, saved},
    {"SPLConfig", "SmoothingSTD", &SmoothingSTD, 2, byHand, Clamped<0, 1000>},
    {"SPLConfig", "Maxcono", &Maxcono, 32, byHand, Clamped<INT_MIN, 256>},
    {"SPLConfig", "ColorMap", &ColorMap, 1, byHand},
    {"SPLConfig", "RTM", &RTM, 0, byHand},
    {"SPLConfig", "Shifter", &Shifter, 0, byHand},
    {"SPLConfig", "SPLT", &SPLT, 0, byHand},
};

struct TextKey {
    const char *section, *key;
    char* text;
    size_t size;
    const char* standard;
};
static const TextKey textKeys[] = {
    {"Path", "Data", dataFolder, sizeof dataFolder, ""},
    {"Path", "BMP", bmpFolder, sizeof bmpFolder, ""},
    {"ModeSetting", "CourseFile_name", CourseFile_name, sizeof CourseFile_name, "sorrel.crs"},
};

// Sections and keys of "csvlabel.ini"; the keys are "0" to "15".
static const char* const csvLabelSection[csvLabelSections] = {"Time", "Ne",   "TH", "VFW",  "VRW",  "FRSUS", "RRSUS",
                                                              "LAF1", "LAF2", "VB", "AUX1", "AUX2", "LAP"};

namespace {
struct Override { std::string section, key, value; };
}
static std::vector<Override> overrides;

std::string ProgramFile(const char* name) { return std::string(ProgramFolder()) + name; }

static void CopyText(char* text, size_t size, std::string_view value) {
    text[value.copy(text, size - 1)] = '\0';
}

void ReadSettingKeys(const ProfileText& profile) {
    for (const NumberKey& row : numberKeys) ReadNumber(profile, row);
    for (const TextKey& row : textKeys) CopyText(row.text, row.size, ProfileString(profile, row.section, row.key, row.standard));
}

static void ReadCsvLabels(const ProfileText& profile) {
    for (int section = 0; section < csvLabelSections; section++)
        for (int key = 0; key < csvLabelKeys; key++)
            CopyText(csvLabel[section][key], csvLabelSize,
                     ProfileString(profile, csvLabelSection[section], std::to_string(key), "No data"));
}

void LoadSettings() {
    ProfileText profile;
    LoadProfile(ProgramFile("ZRKA.ini").c_str(), profile);
    for (const Override& set : overrides) WriteStringKey(profile, set.value, set.section, set.key);
    ReadSettingKeys(profile);
    ReadLayoutKeys(profile);
    LoadProfile(ProgramFile("csvlabel.ini").c_str(), profile);
    ReadCsvLabels(profile);
}

static void WriteSection(ProfileText& profile, std::string_view section) {
    for (const TextKey& row : textKeys)
        if (section == row.section) WriteStringKey(profile, row.text, row.section, row.key);
    for (const NumberKey& row : numberKeys)
        if (section == row.section && row.saved) WriteNumber(profile, row);
}

// Size and place that the window comes back with: those it has when it is not maximised. A window without an area leaves
// the last known ones.
static void NoteWindowPlace() {
    if (!MainWindowOpen()) return;
    zoomed = MainWindowMaximised();
    ShowMainWindow(3);
    if (MainWindowMaximised()) {  // it was minimised from there
        zoomed = 1;
        ShowMainWindow(3);
    }
    int width, height;
    WindowClientSize(&width, &height);
    if (width < 1 || height < 1) return;
    windowWidth = width;
    windowHeight = height;
    WindowPosition(&windowX, &windowY);
}

void SaveSettings() {
    ApplyColorSet(1);  // the colours that a lone log wears do not reach the file
    EnterProgramFolder();
    NoteWindowPlace();
    const std::string path = ProgramFile("ZRKA.ini");
    ProfileText profile;
    if (LoadProfile(path.c_str(), profile) != 0) return;  // there, but unreadable: what it holds is not ours to drop
    WriteSection(profile, "Path");
    WriteSection(profile, "Window");
    WriteLayoutKeys(profile);
    WriteSection(profile, "ViewSetting");
    WriteSection(profile, "ModeSetting");
    WriteSection(profile, "SPLConfig");
    SaveProfile(path.c_str(), profile);  // silent when it fails
}

static bool IsSettingKey(const char* section, const char* key) {
    ProfileText known;
    for (const TextKey& row : textKeys) WriteStringKey(known, "", row.section, row.key);
    for (const NumberKey& row : numberKeys) WriteNumber(known, row);
    WriteLayoutKeys(known);
    return ProfileString(known, section, key, {}).data() != nullptr;
}

int OverrideSetting(const char* section, const char* key, const char* value) {
    if (!IsSettingKey(section, key + std::strspn(key, " "))) return 1;
    overrides.push_back({section, key, value});
    return 0;
}

void DefaultSettingsFile() {
    ReadCsvLabels({});
    overrides.clear();
}
