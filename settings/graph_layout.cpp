#include "settings/graph_layout.h"

#include <algorithm>
#include <cstdio>
#include <string>

#include "graph/color_scheme.h"
#include "platform/file_dialogs.h"
#include "platform/files.h"
#include "run_data/load_pipeline.h"
#include "run_data/run_store.h"
#include "settings/layout_events.h"
#include "settings/number_key.h"
#include "settings/settings_file.h"

const ChannelLayout channelLayout[layoutChannels] = {
    {"rpmpos", "rpmzoom", "NE", 360, 50000, 5000, 16000, 1000, 1, 0, 2, 8, 1},
    {"tpspos", "tpszoom", "TPS", 430, 1000, 0, 100, 25, 1, 0, 2, 8, 1},
    {"vfwpos", "vfwzoom", "VFW", 840, 20000, 0, 3000, 500, 1, 0, 2, 8, 1},
    {"vrwpos", "vrwzoom", "VRW", 840, 20000, 0, 3000, 500, 0, 1, 3, 7, 1},
    {"fsuspos", "fsuszoom", "FSUS", 600, 75000, 0, 12000, 1000, 1, 0, 2, 8, 1},
    {"rsuspos", "rsuszoom", "RSUS", 680, 50000, 0, 3500, 1000, 1, 1, 3, 7, 1},
    {"lafpos", "lafzoom", "LAF1", 450, 8000, 1150, 1350, 50, 1, 0, 2, 8, 1},
    {"laf2pos", "laf2zoom", "LAF2", 450, 8000, 1150, 1350, 50, 0, 1, 3, 7, 0},
    {"vbpos", "vbzoom", "VB", 80, 20000, 90, 150, 30, 0, 0, 2, 8, 1},
    {"aux1pos", "aux1zoom", "AUX1", 840, 10000, 0, 5000, 2500, 0, 0, 2, 8, 0},
    {"aux2pos", "aux2zoom", "AUX2", 840, 10000, 0, 5000, 2500, 0, 0, 3, 7, 0},
    {"slippos", "slipzoom", "SLIP", 700, 10000, -500, 200, 100, 0, 0, 2, 8, 0},
    {"fsusvpos", "fsusvzoom", "FSUSV", 600, 50000, -2000, 2000, 1000, 0, 0, 2, 8, 0},
    {"rsusvpos", "rsusvzoom", "RSUSV", 680, 50000, -1000, 1000, 500, 0, 0, 2, 8, 0},
};
static const char* const fileWord[fileSlots] = {"Green", "Red", "White"};

enum class KeyUse { read, write };

static std::string ViewKey(KeyUse use, int file, int channel) {
    // Kept: one flag is asked for under a name with a leading blank, which the writer never writes. So it is 1 unless
    // somebody typed that blank into the file.
    const char* lead = use == KeyUse::read && file == 0 && channel == chVRW ? " " : "";
    return std::string(lead) + channelLayout[channel].viewWord + "_View_" + fileWord[file];
}

// Calls visit(row) for every key of the section.
template <class Visit>
static void ForEachLayoutKey(KeyUse use, Visit visit) {
    const auto row = [&](const std::string& key, auto* variable, int standard, int (*hold)(int) = nullptr) {
        visit(NumberKey{"GraphSetting", key.c_str(), variable, standard, true, hold});
    };
    for (int channel = 0; channel < layoutChannels; channel++) {
        const ChannelLayout& standard = channelLayout[channel];
        const std::string number = std::to_string(channel);
        row(standard.positionKey, &channelPosition[channel], standard.position);
        row(standard.zoomKey, &channelZoom[channel], standard.zoom);
        row("GraphGrid_min" + number, &GraphGrid_min[channel], standard.min);
        row("GraphGrid_max" + number, &GraphGrid_max[channel], standard.max);
        row("GraphGrid_step" + number, &GraphGrid_step[channel], standard.step);
        row("GraphGrid_disp" + number, &GraphGrid_disp[channel], standard.disp, AsFlag);
        // Kept: the current row goes into the file, also when it is the lone file's. SaveSettings makes the normal one
        // current before.
        row("Color_Green" + number, &colorCurrent[channel], standard.file1);
        row("Color_Gonly" + number, &colorStored[1][channel], standard.file1);
        row("Color_Red" + number, &Color_Red[channel], standard.file2);
        row("Color_White" + number, &Color_White[channel], standard.file3);
        for (int file = 0; file < fileSlots; file++)
            row(ViewKey(use, file, channel), &showChannel[file][channel], standard.view, AsFlag);
    }
    for (int file = 0; file < fileSlots; file++)
        row(std::string("Lap_Point_") + fileWord[file], &MarksPerLap[file], 1, WithinOr<1, 3, 1>);
}

void ReadLayoutKeys(const ProfileText& profile) {
    ForEachLayoutKey(KeyUse::read, [&](const NumberKey& row) { ReadNumber(profile, row); });
    for (double& zoom : channelZoom) zoom = std::max(zoom, 0.001);
    std::copy(std::begin(colorCurrent), std::end(colorCurrent), colorStored[0]);
}

void WriteLayoutKeys(ProfileText& profile) {
    ForEachLayoutKey(KeyUse::write, [&](const NumberKey& row) { WriteNumber(profile, row); });
}

static void ReadLayoutFile(const char* path) {
    ProfileText profile;
    LoadProfile(path, profile);
    ReadLayoutKeys(profile);
}

static void WriteLayoutFile(const char* path) {
    ProfileText profile;
    if (LoadProfile(path, profile) != 0) return;
    WriteLayoutKeys(profile);
    SaveProfile(path, profile);  // silent when it fails, as every write of settings
}

// Runs change(path) with the file that the user chooses, unless a load or another such dialog is under way.
template <class Change>
static void WithChosenFile(int (*ask)(const FileDialog&, char*), Change change) {
    if (loadBusy) return;
    loadBusy = 1;
    const FileFilter filter = {"cfg(*.cfg)", "*.cfg"};
    const FileDialog dialog = {&filter, 1, "cfg", ProgramFolder(), nullptr, true};
    char path[pathSize];
    if (ask(dialog, path)) change(path);
    loadBusy = 0;
}

void LoadGraphLayout(int showDialog) {
    if (!showDialog) return ReadLayoutFile(ProgramFile("ZRKA.ini").c_str());
    WithChosenFile(AskOpenFile, [](const char* path) {
        ReadLayoutFile(path);
        AfterLayoutLoad();
        ApplyColorSet(0);
    });
}

void SaveGraphLayout(int showDialog) {
    if (!showDialog) return WriteLayoutFile(ProgramFile("ZRKA.ini").c_str());
    WithChosenFile(AskSaveFile, [](const char* path) {
        ApplyColorSet(0);
        WriteLayoutFile(path);
    });
}

void StoreColorIndex(int channel) { colorStored[0][channel] = colorCurrent[channel]; }
