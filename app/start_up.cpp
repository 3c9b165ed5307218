// start_up.cpp -- from the entry point to the first pass, recovery of a lost device, and the end of the run.
#include <cstdio>

#include "analysis/csv_export.h"
#include "analysis/distribution.h"
#include "analysis/final_simulation.h"
#include "analysis/lap_marks.h"
#include "analysis/lap_order.h"
#include "analysis/lap_stats.h"
#include "analysis/lap_table.h"
#include "app/frame_loop.h"
#include "app/input_step.h"
#include "app/toolbar.h"
#include "app/view_modes.h"
#include "draw/draw_layer.h"
#include "graph/color_scheme.h"
#include "graph/rest_panels.h"
#include "graph/value_readout.h"
#include "graph/view_state.h"
#include "platform/boxes.h"
#include "platform/files.h"
#include "platform/window.h"
#include "resources/resource.h"
#include "run_data/csv_columns.h"
#include "run_data/load_pipeline.h"
#include "run_data/native_log.h"
#include "run_data/run_store.h"
#include "run_data/setup_values.h"
#include "settings/settings.h"
#include "settings/settings_file.h"
#include "views/course_file.h"
#include "views/course_map.h"

static constexpr char versionText[] = "ZRKA Ver 1.01.64";

void LoadDefaults() {
    DefaultDrawLayer();
    DefaultRunStore();
    DefaultSetupValues();
    DefaultNativeLog();
    DefaultCsvColumns();
    DefaultLoadPipeline();
    DefaultSettings();
    DefaultSettingsFile();
    DefaultViewState();
    DefaultColorScheme();
    DefaultValueReadout();
    DefaultRestPanels();
    DefaultCourse();
    DefaultCourseMap();
    DefaultLapOrder();
    DefaultLapMarks();
    DefaultLapStats();
    DefaultLapTable();
    DefaultFinalSimulation();
    DefaultCsvExport();
    DefaultDistribution();
    DefaultToolbar();
    DefaultInputStep();
    DefaultFrameLoop();
}

// Kept: the surface is rounded down to a multiple of 8 here and up in RebuildResources.
static void DescribeWindow() {
    char title[64];
    std::snprintf(title, sizeof title, "%s_e", versionText);
    SetWindowTitle(title);
    VirtualScreenSize(&screenWidth, &screenHeight);
    SetWindowIcon(iconProgram);
    SetVideoMode(32, screenWidth / 8 * 8, screenHeight, 60);
    if (windowX > screenWidth) windowX = 0;  // the monitor it stood on has gone
    if (windowY > screenHeight) windowY = 0;
    SetWindowPosition(windowX, windowY);
    ApplyClientSize(windowWidth, windowHeight);
    SetWaitForBlank(VSync != 0);
    SetRunInBackground(true);
    SetStartMinimised(zoomed != 0);
}

static void ShowWindow() {
    if (zoomed) {
        ShowMainWindow(3);
        ShowMainWindow(2);
    } else {
        ShowMainWindow(0);
    }
}

int InitWindowAndDevice() {
    DescribeWindow();
    if (InitDrawing() != 0) return 1;
    CreateToolbarWindow();
    ShowWindow();
    RebuildResources();
    SetRestoreCallback(RebuildResources);
    return 0;
}

int StartProgram(const char* log) {
    LoadDefaults();
    EnterProgramFolder();
    LoadSettings();
    if (const int failure = InitWindowAndDevice()) {
        ShowBox(failure == 1 ? "Graphic Device Error. 0x01 " : "Graphic Device Error. 0x02", "Error", BoxOwner::none);
        quitFlag = 1;
        return -1;
    }
    PlaceToolbar(1);
    if (log) LoadFile(log, 0);
    BringMainWindowToFront();
    return 0;
}

// Logs survive: they live in the run store and not in the device.
void ResetDevice() {
    DeleteAllImages();
    DestroyToolbarWindow();
    ShutDownDrawing();
    if (const int failure = InitWindowAndDevice()) {
        ShowBox(failure == 1 ? "Graphic Device Error1. " : "Graphic Device Error2.", "Error", BoxOwner::none);
        quitFlag = 1;
        return;
    }
    PlaceToolbar(1);
    meterRedraw = 1;
    realTimePlayOn = 0;
    ShowModeButtons();
    activityCount = 150;
    quitFlag = 0;  // overrules a close that came with the reset
    if (Debug) ShowBox("Device Reset", "ZRKA");
}

void ShutDownProgram() {
    SaveSettings();
    SaveSectorIni();
    DeleteAllImages();
    ShutDownDrawing();
    ReleaseRunStore();
}

int RunProgram(const char* log) {
    if (StartProgram(log) != 0) return -1;
    while (LoopRuns()) LoopPass();
    ShutDownProgram();
    return 0;
}
