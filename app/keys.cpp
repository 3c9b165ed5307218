// keys.cpp -- what each key does, as a table of character, condition and action.
#include <algorithm>
#include <cctype>

#include "analysis/lap_marks.h"
#include "app/input_parts.h"
#include "app/input_step.h"
#include "app/toolbar.h"
#include "app/view_modes.h"
#include "draw/draw_layer.h"
#include "graph/grid.h"
#include "graph/view_state.h"
#include "platform/dialogs.h"
#include "platform/window.h"
#include "resources/resource.h"
#include "run_data/derived_channels.h"
#include "run_data/load_pipeline.h"
#include "run_data/run_store.h"
#include "settings/graph_layout.h"
#include "settings/settings.h"
#include "views/course_file.h"
#include "views/course_image.h"
#include "views/course_map.h"

constexpr int keyTab = 9, keyEscape = 27, keyRight = 28, keyLeft = 29, keyUp = 30, keyDown = 31;
constexpr int lafDelayStep = 5, lafDelayLimit = 200;  // samples

static int shiftBefore;  // in the pass before

// --- conditions ------------------------------------------------------------------------------------------------------------

static bool InGraphPosition() { return graphPositionOn != 0; }
static bool InAfMap() { return afMapOn != 0; }
static bool Expert() { return ExpertMode >= 2; }
static bool WithDebug() { return Debug != 0; }
static bool CourseShown() { return CourseLayout_on != 0; }
static bool CourseColoured() { return ColorMap || Debug; }
static bool WithShift() { return shiftDown != 0; }
static bool ExpertWithShift() { return shiftDown && ExpertMode >= 2; }

// --- actions ---------------------------------------------------------------------------------------------------------------

static void OpenLog(int slot) {
    LoadFile(askRequest, slot);
    BringMainWindowToFront();
}

static void BackToGraphs() {
    ShowNormalGraphs();
    BringMainWindowToFront();
}

static void MoveLafDelay(int samples) { lafDelay = std::clamp(lafDelay + samples, 0, lafDelayLimit); }

static void MoveLafDelayShown(int samples) {
    MoveLafDelay(samples);
    lafDelayShow = 100;
}

static void ToggleFileMove(int slot) {
    fileMoveOn[slot] ^= 1;
    CheckButton(slot == 0 ? buttonMoveFile1 : buttonMoveFile2, fileMoveOn[slot] != 0);
}

static void ToggleComparison() {
    ToggleFileMove(shiftDown && ExpertMode >= 1 ? 2 : 1);
    courseColorFile ^= 1;
    RedrawCourseImage(0);
}

static void ChangeSpeedMargin(int samples) {
    SusVSampleNum = std::clamp(SusVSampleNum + samples, 0, 20);
    for (int slot : {0, 1}) ComputeSuspensionSpeed(slot);  // Kept: File 3 stays as it was loaded.
}

static void LoadLayout() {
    LoadGraphLayout(1);
    BuildGrid();
}

static void ToggleAnime() {
    AnimeMode ^= 1;
    ShowNormalGraphs();
    rulerFade = 4;
    CheckButton(buttonAnime, AnimeMode != 0);
}

static void ToggleScrollBar() {
    scrollBarOn ^= 1;
    scrollBarGrow = scrollBarOn ? 32 : 0;
}

static void OpenAnalysis() {
    afMapOn = 0;
    dragKind = 0;
    rulerFade = 5;
    const int next = OpenDialog(dialogAnalysisTools);  // the dialog that takes its place, 0 for none
    graphPositionOn = 0;
    ShowModeButtons();
    if (next != 0) OpenDialog(next);
}

static void DoubleZoom() {
    viewZoomGoal *= 2;
    if (viewZoomGoal > 40000) viewZoomGoal = 10000;
}

static void StepColouring() {
    courseColorChannel += shiftDown ? -1 : 1;
    if (courseColorChannel < 0) courseColorChannel = 131;
    RedrawCourseImage(0);
}

static void MoveCourseOffset(int offset) {
    courseOffset = offset;
    ApplyCourseOffset();
}

static void TogglePlay() {
    realTimePlayOn ^= 1;
    ShowRealTimePlay();
}

// The simple levels cannot hide the panels.
static void SetReadout(int mode) { CursolValueMode = ExpertMode < 2 ? mode & 1 : mode; }

static void ShowOverlay() {
    shortcutFade = 512;
    shortcutOverlayOn = 1;
}

// --- the table -------------------------------------------------------------------------------------------------------------

constexpr int leavesActivity = -1;  // opens a file or a dialog
struct KeyRow {
    int key;         // letters in upper case
    bool (*when)();  // nullptr: always
    int activity;    // activityCount after the key
    void (*act)();
};
// Rows are tried from the top.
static const KeyRow keyRows[] = {
    {keyTab, nullptr, 100, [] { DrawExtremeMarks(MarkEvent::toggle); }},
    {keyEscape, nullptr, 100, BackToGraphs},
    {keyRight, InGraphPosition, 100, [] { MoveCourseOffset(courseOffset + 1); }},
    {keyRight, InAfMap, 100, [] { MoveLafDelay(lafDelayStep); }},
    {keyRight, nullptr, 100, [] { StepByArrow(1); }},
    {keyLeft, InGraphPosition, 100, [] { MoveCourseOffset(courseOffset - 1); }},
    {keyLeft, InAfMap, 100, [] { MoveLafDelay(-lafDelayStep); }},
    {keyLeft, nullptr, 100, [] { StepByArrow(-1); }},
    {keyUp, InGraphPosition, 100, [] { MoveCourseOffset(courseOffset + 10); }},
    {keyUp, nullptr, 100, [] { lapSteps++; }},
    {keyDown, InGraphPosition, 100, [] { MoveCourseOffset(courseOffset - 10); }},
    {keyDown, nullptr, 100, [] { lapSteps--; }},
    {' ', InAfMap, 100, [] { afInvert ^= 1; }},
    {' ', nullptr, 100, ToggleComparison},
    {',', Expert, 150, [] { MoveLafDelayShown(-lafDelayStep); }},
    {'<', Expert, 150, [] { MoveLafDelayShown(-lafDelayStep); }},
    {'.', Expert, 150, [] { MoveLafDelayShown(lafDelayStep); }},
    {'>', Expert, 150, [] { MoveLafDelayShown(lafDelayStep); }},
    {'-', nullptr, 100, ShowOverlay},
    {'0', WithDebug, 100, [] { ChangeSpeedMargin(-1); }},
    {'9', WithDebug, 100, [] { ChangeSpeedMargin(1); }},
    {'1', nullptr, leavesActivity, [] { OpenLog(0); }},
    {'2', nullptr, leavesActivity, [] { OpenLog(1); }},
    {'3', Expert, leavesActivity, [] { OpenLog(2); }},
    {'3', nullptr, leavesActivity, BringMainWindowToFront},  // Kept: below the expert level it only returns the focus.
    {'4', CourseShown, leavesActivity, SaveCourseMapImages},
    {'5', nullptr, leavesActivity, LoadLayout},
    {'6', nullptr, leavesActivity, [] { SaveGraphLayout(1); }},
    {'A', nullptr, 100, ToggleAnime},
    {'B', nullptr, 55, ToggleScrollBar},
    {'C', nullptr, 55, [] {}},
    {'D', nullptr, leavesActivity, OpenAnalysis},
    {'E', InAfMap, 100, BackToGraphs},
    {'E', nullptr, 100, ShowAfMap},
    {'F', nullptr, leavesActivity, [] { OpenDialog(dialogSetup); }},
    {'K', nullptr, leavesActivity, ShowFuelUsed},
    {'L', nullptr, 100, [] { CslValWidth = CslValWidth ? 0 : 80; }},
    {'M', nullptr, 55, [] { Memo_view ^= 1; }},
    {'N', nullptr, 100, DoubleZoom},
    {'O', CourseColoured, 100, StepColouring},
    {'P', WithDebug, leavesActivity, [] { OpenDialog(dialogRealTimeMonitor); }},
    {'Q', nullptr, 55, [] { BodyDisplay ^= 1; }},
    {'S', nullptr, 100, TogglePlay},
    {'V', WithShift, 100, [] { SetReadout(CursolValueMode ^ 4); }},
    {'V', nullptr, 100, [] { SetReadout((CursolValueMode + 1) & 3); }},
    {'W', nullptr, 55, [] { SusgramDisplay ^= 1; }},
    {'X', ExpertWithShift, 100, [] { ToggleFileMove(2); }},
    {'X', nullptr, 100, [] { ToggleFileMove(1); }},
    {'Z', InGraphPosition, 100, [] { MoveCourseOffset(0); }},
    {'Z', nullptr, 100, [] { ToggleFileMove(0); }},
};

static void ReadHeldKeys() {
    shiftDown = IsKeyDown(Key::shift);
    ctrlDown = IsKeyDown(Key::ctrl);
    if (ctrlDown) activityCount = 100;
    if (shiftDown != shiftBefore) ShowSecondFileButtons();
    if (shiftDown && !shiftBefore) activityCount = 100;
    shiftBefore = shiftDown;
}

static void ActOnKey(int key) {
    for (const KeyRow& row : keyRows) {
        if (row.key != key || (row.when && !row.when())) continue;
        if (row.activity != leavesActivity) activityCount = row.activity;
        row.act();
        return;
    }
}

void HandleKey() {
    ReadHeldKeys();
    const int key = TakeChar();
    if (key == 0) return;
    ActOnKey(key > 0 && key < 128 ? std::toupper(key) : key);
    if (afMapOn) DrainCharQueue();
}

void DefaultKeys() { shiftBefore = 0; }
