#include "cli/session.h"

#include <algorithm>
#include <utility>

#include "app/frame_loop.h"
#include "app/toolbar.h"
#include "cli/console.h"
#include "cli/csv_answer.h"
#include "draw/draw_layer.h"
#include "graph/view_state.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "resources/resource.h"
#include "run_data/load_pipeline.h"
#include "run_data/run_store.h"
#include "settings/settings_file.h"

static size_t toldBoxes;  // of `shown`

std::vector<std::string> OperandPaths(const Invocation& invocation) {
    std::vector<std::string> paths;
    for (const std::string& operand : invocation.operands) paths.push_back(FullPath(operand));
    return paths;
}

// The dialogs that open without a user to answer them.
static int AnswerDialog(int id, int) {
    if (id == dialogCsvImport) AnswerCsvDialog();
    return 0;
}

int BeginSession(const Invocation& invocation) {
    if (int status = TakeCsvOptions(invocation); status != exitDone) return status;
    DefaultScript();
    SetDialogHandler(AnswerDialog);
    toldBoxes = 0;
    UseVirtualClock(false);
    if (!invocation.home.empty()) SetProgramFolder(invocation.home.c_str());
    LoadDefaults();
    for (const SettingOverride& setting : invocation.settings)
        if (OverrideSetting(setting.section.c_str(), setting.key.c_str(), setting.value.c_str()) != 0)
            return Refuse("--set %s.%s: no such setting; accepted are the sections and keys of \"ZRKA.ini\"",
                          setting.section.c_str(), setting.key.c_str());
    EnterProgramFolder();
    LoadSettings();
    return exitDone;
}

int OpenSessionWindow(int width, int height) {
    UseVirtualClock(true);
    ScriptScreenSize(std::max(width, 1920), std::max(height, 1080));
    if (InitWindowAndDevice() != 0) return Fail("the drawing surface cannot be made");
    PlaceToolbar(1);
    return exitDone;
}

int LoadLog(const Invocation& invocation, const std::string& path, int slot) {
    const bool shift = IsKeyHeld(HeldKey::shift), ctrl = IsKeyHeld(HeldKey::ctrl);
    const size_t before = shown.size();
    ScriptHold(shift || invocation.holdShift, ctrl || invocation.holdCtrl);
    LoadFile(path.c_str(), slot);
    ScriptHold(shift, ctrl);
    TellBoxes();
    const auto isBox = [](const Shown& entry) { return entry.kind == "box"; };
    return std::any_of(shown.begin() + before, shown.end(), isBox) ? exitFailed : exitDone;
}

int LoadLogs(const Invocation& invocation, std::span<const std::string> files) {
    int status = exitDone;
    for (size_t slot = 0; slot < files.size(); slot++)
        status = std::max(status, LoadLog(invocation, files[slot], static_cast<int>(slot)));
    return status;
}

void RunPasses(int count) {
    for (int pass = 0; pass < count && LoopRuns(); pass++) LoopPass();
    TellBoxes();
}

int SavePicture(const std::string& path) {
    if (frameNumber == 0) return Fail("no frame has been drawn that %s could show", path.c_str());
    if (SaveDrawTargetBmp(path.c_str(), clientWidth, clientHeight) != 0) return Fail("cannot write %s", path.c_str());
    return exitDone;
}

std::string ShownLine(const Shown& entry) {
    std::string line = entry.kind;
    if (!entry.title.empty()) line += " " + entry.title;
    if (!entry.text.empty()) line += " | " + entry.text;
    for (char& byte : line)
        if (byte == '\n' || byte == '\r') byte = ' ';
    return line;
}

void TellBoxes() {
    for (; toldBoxes < shown.size(); toldBoxes++)
        if (shown[toldBoxes].kind == "box") fprintf(consoleErr, "%s\n", ShownLine(shown[toldBoxes]).c_str());
}

std::vector<Shown> TakeShown() {
    TellBoxes();
    toldBoxes = 0;
    return std::exchange(shown, {});
}

void EndSession(const Invocation& invocation) {
    TellBoxes();
    if (invocation.saveSettings) SaveSettings();
    DeleteAllImages();
    ShutDownDrawing();
    ReleaseRunStore();
}
