#include "run_data/load_pipeline.h"

#include <cctype>
#include <cstdio>
#include <cstring>
#include <iterator>
#include <string>

#include "platform/boxes.h"
#include "platform/file_dialogs.h"
#include "platform/files.h"
#include "platform/keyboard.h"
#include "platform/system_files.h"
#include "run_data/csv_log.h"
#include "run_data/log_header.h"
#include "run_data/native_log.h"
#include "run_data/run_events.h"
#include "run_data/run_store.h"
#include "run_data/secondary_log.h"
#include "settings/settings.h"

const char askRequest[2] = {askTheUser, 0};

char pathAtHand[pathSize];
char nameAtHand[pathSize];
int  lengthAtHand;
int  loadBusy;
char fileNamePrefix[10];

static constexpr int     decodingMargin = 1024;        // zero bytes behind a file, which the readers may run into
static constexpr int64_t longestFile    = 2147481999;  // bytes, so that length and margin stay inside an int
static constexpr int     shortestFile   = 512;

void DefaultLoadPipeline() {
    std::memset(pathAtHand, 0, sizeof pathAtHand);
    std::memset(nameAtHand, 0, sizeof nameAtHand);
    lengthAtHand = 0;
    loadBusy = 0;
    std::memset(fileNamePrefix, 0, sizeof fileNamePrefix);
}

// Copies a text into a path buffer. 0 done; 1 it was too long and its start stands there.
static int CopyText(char (&to)[pathSize], const char* from) {
    return std::snprintf(to, sizeof to, "%s", from) >= pathSize;
}

// A path in pieces: the folder with its separator, and the name, whose extension is the last point and what follows it.
struct PathParts {
    std::string folder, stem, extension;
};

static PathParts SplitPath(const std::string& path) {
    size_t name = NameStart(path), point = path.rfind('.');
    if (point == std::string::npos || point < name) point = path.size();
    return {path.substr(0, name), path.substr(name, point - name), path.substr(point)};
}

// Compares a point and three characters, letter case ignored; what follows them in `extension` does not count.
static bool ExtensionIs(const std::string& extension, const char* wanted) {
    for (int i = 0; i < 4; i++)  // c_str() ends in a zero, which stops the loop in time
        if (std::tolower(static_cast<uint8_t>(extension.c_str()[i])) != wanted[i]) return false;
    return true;
}

static int RefuseType() {
    ShowBox("Not support File Type", "File Error");
    return 1;
}

static int ReadNative(int slot, const uint8_t* buffer, bool padsHeaders) {
    // A header alone, padded to the large form.
    if (padsHeaders && buffer[versionAt] < 3 && lengthAtHand == extendedHeaderSize) lengthAtHand = headerSize;
    fileKind[slot] = 1;
    ReadNativeLog(slot, buffer, lengthAtHand);
    return 0;
}

static int ReadSecondary(int slot, const uint8_t* buffer) {
    fileKind[slot] = 2;
    ReadSecondaryLog(slot, buffer, lengthAtHand);
    return 0;
}

// Kept: the kind is CSV's even when the user closes the dialog and the slot keeps its log.
static int ReadCsv(int slot, const uint8_t* buffer) {
    fileKind[slot] = 3;
    OpenCsvImport(slot, buffer, lengthAtHand);
    return 0;
}

int DispatchByType(const uint8_t* buffer, int slot) {
    std::string extension = SplitPath(pathAtHand).extension;
    bool native = buffer[typeMarkAt] == '3';
    if (native && ExtensionIs(extension, ".zrk")) return ReadNative(slot, buffer, false);
    if (native && ExtensionIs(extension, ".zrv")) return ReadNative(slot, buffer, true);
    if (ExtensionIs(extension, ".qtw")) return ReadSecondary(slot, buffer);
    if (ExtensionIs(extension, ".csv")) return ReadCsv(slot, buffer);
    return RefuseType();
}

// The fastest lap without the first and the last piece of the log.
struct FastestLap {
    uint32_t samples;  // noLap when there is none
    int number;        // 1 or more
};
static constexpr uint32_t noLap = 1199800;  // 100 minutes, less a second

static FastestLap FindFastestLap(int slot, int marks) {
    FastestLap best = {noLap, 0};
    for (int k = 1; k < lapCount[slot] - marks; k++) {
        uint32_t samples = lapStart[slot][k + marks] - lapStart[slot][k];
        if (samples < best.samples) best = {samples, k + 1};
    }
    return best;
}

// The time part of the new name, with the lap's number of the whole laps.
static std::string LapTag(int slot) {
    int marks = HeldMarksPerLap(slot);
    FastestLap best = FindFastestLap(slot, marks);
    int fastest = best.number / marks, last = lapCount[slot] / marks;
    char text[64];
    if (best.samples == noLap) {
        std::snprintf(text, sizeof text, "[-'--''---(%d-%d)]", fastest, last);
    } else {
        int ms = static_cast<int>(best.samples) * 5;
        std::snprintf(text, sizeof text, "[%d'%02d''%03d(%d-%d)]", ms / 60000, ms / 1000 % 60, ms % 1000, fastest, last);
    }
    return text;
}

void RenameAfterFastestLap(int slot) {
    if (!ModifyFileName) return;
    PathParts path = SplitPath(pathAtHand);
    std::string name = path.stem + path.extension;
    CopyText(nameAtHand, name.c_str());
    if (!ExtensionIs(path.extension, ".zrk") && !ExtensionIs(path.extension, ".qtw")) return;
    // A name that holds a bracket was given by an earlier load.
    if (name.find('[') < name.find('.')) return;

    name = path.stem + fileNamePrefix + LapTag(slot) + path.extension;
    CopyText(nameAtHand, name.c_str());
    std::string renamed = path.folder + name;
    if (renamed.size() >= pathSize || RenameFile(pathAtHand, renamed.c_str()) != 0) {
        // Kept: nameAtHand holds the new name, so that the view shows a name that the disk does not have.
        ShowBox("No change file name.", "Error!");
        return;
    }
    CopyText(pathAtHand, renamed.c_str());
}

// Fills pathAtHand from the open dialog. 0 done, 1 cancelled.
static int AskForPath() {
    static constexpr FileFilter filters[] = {
        {"*(*.*)", "*.*"}, {"zrk(*.zrk)", "*.zrk"}, {"qtw(*.qtw)", "*.qtw"}, {"csv(*.csv)", "*.csv"}};
    if (!AskOpenFile({filters, std::size(filters), nullptr, dataFolder, nullptr, false}, pathAtHand)) {
        pathAtHand[0] = 0;
        return 1;
    }
    // The dialog has made the folder of the chosen file current.
    std::snprintf(dataFolder, sizeof dataFolder, "%s", CurrentFolder().c_str());
    return 0;
}

static LoadResult RefuseFile(const char* path) {
    ShowBox(("Load file error " + std::string(path)).c_str(), "File Error");
    return LoadResult::refused;
}

// Reads pathAtHand into the slot.
static LoadResult ReadFileAtHand(int slot) {
    FileBytes file;
    if (ReadWholeFile(pathAtHand, longestFile, decodingMargin, file) != 0 || file.length < shortestFile)
        return RefuseFile(pathAtHand);
    lengthAtHand = static_cast<int>(file.length);
    LoadResult result = DispatchByType(file.data.get(), slot) == 0 ? LoadResult::loaded : LoadResult::refused;
    AfterRead(slot);
    RenameAfterFastestLap(slot);
    return result;
}

static LoadResult LoadRequested(const char* request, int slot) {
    if (request[0] == 0) return LoadResult::nothing;
    if (request[0] == askTheUser) {
        if (AskForPath() != 0) return LoadResult::nothing;
    } else if (CopyText(pathAtHand, request) != 0) {
        return RefuseFile(request);
    }
    PathParts path = SplitPath(pathAtHand);
    CopyText(nameAtHand, (path.stem + path.extension).c_str());
    return ReadFileAtHand(slot);
}

void LoadFile(const char* request, int slot) {
    if (loadBusy) return;
    loadBusy = 1;
    pathAtHand[0] = nameAtHand[0] = 0;
    LoadResult result = LoadRequested(request, slot);
    if (result != LoadResult::nothing) {
        bool loaded = result == LoadResult::loaded;
        CopyText(fileTitle[slot], loaded ? nameAtHand : "");
        CopyText(filePath[slot], loaded ? pathAtHand : "");
    }
    ClearExtremeMarks();
    loadBusy = 0;
    AfterLoad(slot, result);
}

void Unload() {
    if (!IsKeyHeld(HeldKey::shift)) EmptySlot(1);
    EmptySlot(2);
    ClearExtremeMarks();
    AfterUnload();
}
