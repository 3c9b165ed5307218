#include "app/toolbar_commands.h"

#include "analysis/lap_marks.h"
#include "app/layout_cycle.h"
#include "app/toolbar.h"
#include "app/view_modes.h"
#include "graph/view_state.h"
#include "platform/dialogs.h"
#include "platform/window.h"
#include "run_data/load_pipeline.h"
#include "settings/settings.h"

static bool ThirdFileMeant() { return shiftDown && ExpertMode == 2; }

static void OpenLog(int slot) {
    LoadFile(askRequest, slot);
    dragKind = 1;  // the press that chose the file is spent
    mouseButtons = 0;
    widgetHover = 0;
}

static void OpenSetup(bool) {
    OpenDialog(dialogSetup);
    meterRedraw = 1;
}

static void ShowGraphPosition(bool) {
    graphPositionOn = 1;
    afMapOn = realTimePlayOn = 0;
    layoutCycle = 0;
    rulerFade = 5;
    ShowModeButtons();
}

static void SetAnime(bool on) {
    AnimeMode = on;
    ShowNormalGraphs();
    rulerFade = 4;
}

static void SetPlay(bool on) {
    realTimePlayOn = on;
    ShowRealTimePlay();
}

// The map is started from the analysis tools, and left here.
static void SwitchAfMap(bool) {
    int next = 0;  // the dialog that takes the tools' place
    if (ButtonChecked(buttonAfMap))
        afMapOn = 0;
    else
        next = OpenDialog(dialogAnalysisTools);
    graphPositionOn = 0;
    rulerFade = 5;
    ShowModeButtons();
    CheckButton(buttonGraphs, true);
    if (next != 0) OpenDialog(next);
}

struct CommandRow {
    int id;
    bool view;  // a view command: new frames, and no button counts as held
    void (*act)(bool on);
};
static const CommandRow commandRows[] = {
    {buttonMoveFile1, false, [](bool on) { fileMoveOn[0] = on; }},
    {buttonMoveFile2, false, [](bool on) { fileMoveOn[ThirdFileMeant() ? 2 : 1] = on; }},
    {buttonOpen1, false, [](bool) { OpenLog(0); }},
    {buttonOpen2, false, [](bool) { OpenLog(ThirdFileMeant() ? 2 : 1); }},
    {buttonLayout, false, [](bool) { StepLayoutCycle(); }},
    {buttonClose2, false, [](bool) { Unload(); }},
    {buttonSetup, false, OpenSetup},
    {buttonPosition, true, ShowGraphPosition},
    {buttonGraphs, true, [](bool) { ShowNormalGraphs(); }},
    {buttonAnime, true, SetAnime},
    {buttonPlay, true, SetPlay},
    {buttonAfMap, true, SwitchAfMap},
};

void ToolbarCommand(int id, bool on) {
    ReleaseMarks();
    for (const CommandRow& row : commandRows) {
        if (row.id != id) continue;
        if (id != buttonAfMap) CheckButton(id, on);  // that one is set by what it does
        row.act(on);
        if (row.view) {
            activityCount = 100;
            animationPending = 1;
            mouseButtons = 0;
        }
    }
    BringMainWindowToFront();  // the keyboard keeps working
}
