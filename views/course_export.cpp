// course_export.cpp -- what leaves the course map: seven pictures, and the fuel used.
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>

#include "draw/draw_layer.h"
#include "graph/color_scheme.h"
#include "graph/view_state.h"
#include "platform/boxes.h"
#include "platform/file_dialogs.h"
#include "platform/files.h"
#include "run_data/fixed_point.h"
#include "run_data/run_store.h"
#include "settings/settings.h"
#include "views/course_image.h"
#include "views/course_map.h"

// --- pictures ------------------------------------------------------------------------------------------------------------------

struct SavedPicture {
    int         selector;
    const char* suffix;
};
static constexpr SavedPicture savedPictures[] = {{1, "_ne"},   {2, "_th"},     {3, "_vfw"},   {5, "_fsus"},
                                                 {6, "_rsus"}, {129, "_Slip"}, {130, "_gear"}};

static size_t NameBegin(const std::string& path) {
    const size_t slash = path.find_last_of("/\\");
    return slash == std::string::npos ? 0 : slash + 1;
}

// Cut at the last point of the file's name.
static std::string WithoutExtension(const std::string& path) {
    const size_t point = path.rfind('.');
    return point == std::string::npos || point < NameBegin(path) ? path : path.substr(0, point);
}

// Kept: File 1's time, 0 in the first lap, whatever the list says.
static int LapCentisOnMap() {
    const int lap = HeldLap(0), marks = HeldMarksPerLap(0);
    if (lap - 1 < 1) return 0;
    const int64_t samples = int64_t{lapStart[0][marks + lap - 1]} - lapStart[0][lap - 1];
    return TruncToInt(static_cast<double>(samples) / timeFactor[0] * 0.5);
}

static int SavePicture(const std::string& stem, const SavedPicture& picture) {
    const std::string name = stem + picture.suffix;
    courseColorChannel = picture.selector;
    RedrawCourseImage(0);
    LapTimeCentis[0] = LapCentisOnMap();
    SetDrawTarget(courseImage);
    DrawTextAt(512 - 9 * fontSize, 0, name.c_str() + NameBegin(name), debugColor[0], bigFont);
    DrawTextF(16, 0, debugColor[0], bigFont, "%02d'%05.2f", LapTimeCentis[0] / 6000, LapTimeCentis[0] % 6000 * 0.01);
    const int failed = SaveDrawTargetBmp((name + ".bmp").c_str(), 512, 512);
    SetDrawTarget(backBuffer);
    return failed;
}

static bool SavePictures(const std::string& stem) {
    for (const SavedPicture& picture : savedPictures) {
        if (SavePicture(stem, picture) == 0) continue;
        ShowBox("failed to save !!", "Error !!");
        return false;
    }
    return true;
}

void SaveCourseMapImages() {
    static constexpr FileFilter filters[] = {{"BMP(*.bmp)", "*.bmp"}};
    char path[pathSize];
    const bool chosen = AskSaveFile({filters, 1, "bmp", bmpFolder, nullptr, true}, path);
    if (chosen) {
        const int selector = courseColorChannel;
        if (SavePictures(WithoutExtension(path))) {
            ShowBox("Course Map was saved.", "Saved");
            std::snprintf(bmpFolder, sizeof bmpFolder, "%s", std::string(path, NameBegin(path)).c_str());
        }
        courseColorChannel = selector;
        RedrawCourseImage(0);
    }
    EnterProgramFolder();
    SetDrawTarget(backBuffer);
}

// --- fuel ------------------------------------------------------------------------------------------------------------------------

constexpr int pulseLevel = 250;  // AUX1 above this is the flow meter's pulse: one cc
constexpr int fuelLines = 30;

struct FuelUse {
    int total;
    int lap[lapTableSize];
    int lastLap;  // highest index reached
};

static FuelUse CountFuel(int slot) {
    FuelUse use{};
    if (!slotInUse[slot] || !showChannel[slot][chAUX1]) return use;
    bool on = false;
    for (int sample = 0; sample < sampleCount[slot]; sample++) {
        const int level = AUX1[slot][sample];
        if (!on && level > pulseLevel) {
            on = true;
            use.total++;
            use.lap[use.lastLap]++;
        } else if (on && level <= pulseLevel) {
            on = false;
        }
        if (use.lastLap + 2 < lapTableSize && static_cast<uint32_t>(sample) >= lapStart[slot][use.lastLap + 1]) use.lastLap++;
    }
    use.lastLap = std::min(use.lastLap, lapCount[slot] - 1);
    return use;
}

void ShowFuelUsed() {
    const FuelUse uses[2] = {CountFuel(0), CountFuel(1)};
    char text[4096];
    int length = std::snprintf(text, 512, "total - %5d cc  :  %5d cc\n\n", uses[0].total, uses[1].total);
    const int last = std::min(std::max(uses[0].lastLap, uses[1].lastLap), fuelLines - 1);
    for (int lap = 0; lap <= last && length < static_cast<int>(sizeof text) - 1; lap++)
        length += std::snprintf(text + length, sizeof text - length, "lap %d  -  %4d cc  :  %4d cc\n", lap, uses[0].lap[lap], uses[1].lap[lap]);
    ShowBox(text, "Fuel used");
}
