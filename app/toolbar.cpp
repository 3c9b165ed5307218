#include "app/toolbar.h"

#include "app/frame_loop.h"
#include "app/layout_cycle.h"
#include "app/toolbar_commands.h"
#include "draw/draw_layer.h"
#include "graph/view_state.h"
#include "platform/window.h"
#include "settings/settings.h"

static bool checked[lastCheckButton - firstCheckButton + 1];

struct ToolButton {
    int id, icon;
    const char* tip;
};
static const ToolButton toolButtons[] = {
    {buttonMoveFile1, iconMoveFile1, "Move File 1 (Z)"},
    {buttonMoveFile2, iconMoveFile2, "Move File 2 (X), with Shift File 3"},
    {buttonOpen1, iconOpenFile1, "Open File 1 (1)"},
    {buttonOpen2, iconOpenFile2, "Open File 2 (2), with Shift File 3"},
    {buttonLayout, iconLayout, "Overlay the speeds, fit the traces, standard layout"},
    {buttonClose2, iconCloseFile2, "Close File 2 and 3, with Shift File 3"},
    {buttonPosition, iconPosition, "Graph position"},
    {buttonGraphs, iconGraphs, "Graphs (Esc)"},
    {buttonAnime, iconAnimation, "Meter and body (A)"},
    {buttonAfMap, iconAfMap, "A/F map (E)"},
    {buttonPlay, iconPlay, "Play (S)"},
    {buttonSetup, iconSetup, "Setup (F)"},
};

void CheckButton(int id, bool on) {
    if (!IsCheckButton(id)) return;
    checked[id - firstCheckButton] = on;
    SetToolButton(id, on);
}

bool ButtonChecked(int id) { return IsCheckButton(id) && checked[id - firstCheckButton]; }

void ShowSecondFileButtons() {
    const bool third = shiftDown && ExpertMode == 2;
    CheckButton(buttonMoveFile2, fileMoveOn[third ? 2 : 1] != 0);
    SetToolButtonIcon(buttonMoveFile2, third ? iconMoveFile3 : iconMoveFile2);
    SetToolButtonIcon(buttonOpen2, third ? iconOpenFile3 : iconOpenFile2);
}

// States after the window was made, also after a device reset: what the variables say.
static void ShowStates() {
    CheckButton(buttonMoveFile1, fileMoveOn[0] != 0);
    CheckButton(buttonPosition, graphPositionOn != 0);
    CheckButton(buttonGraphs, !graphPositionOn && !afMapOn);
    CheckButton(buttonAnime, AnimeMode != 0);
    CheckButton(buttonPlay, realTimePlayOn != 0);
    CheckButton(buttonAfMap, afMapOn != 0);
    ShowSecondFileButtons();
}

void CreateToolbarWindow() {
    const ToolWindowEvents events = {ToolbarCommand, [] { quitFlag = 1; }, [] { quitFlag = 2; }};
    if (OpenToolWindow(events) != 0) return;
    SetDialogWindow(ToolWindowHandle());
    for (const ToolButton& button : toolButtons) {
        SetToolButtonIcon(button.id, button.icon);
        SetToolButtonTip(button.id, button.tip);
    }
    ShowStates();
}

void DestroyToolbarWindow() {
    SetDialogWindow(nullptr);
    CloseToolWindow();
}

void* ToolbarWindowHandle() { return ToolWindowHandle(); }

ScreenRect PulledOnto(const ScreenRect& monitor, const ScreenRect& rect) {
    ScreenRect pulled = rect;
    const auto move = [&pulled](int dx, int dy) {
        pulled = {pulled.left + dx, pulled.top + dy, pulled.right + dx, pulled.bottom + dy};
    };
    if (pulled.right > monitor.right) move(monitor.right - pulled.right, 0);
    if (pulled.left < monitor.left) move(monitor.left - pulled.left, 0);
    if (pulled.bottom > monitor.bottom) move(0, monitor.bottom - pulled.bottom);
    if (pulled.top < monitor.top) move(0, monitor.top - pulled.top);
    return pulled;
}

void PlaceToolbar(int fromMainWindow) {
    ShowMainWindow(4);
    ScreenRect rect = ToolWindowRect();
    const ScreenRect monitor = MonitorRect(rect);
    if (fromMainWindow) {
        const ScreenRect anchor = MainWindowMaximised() ? monitor : MainWindowNormalRect();
        const int left = anchor.left + 256, top = anchor.bottom - 288;
        rect = {left, top, left + rect.right - rect.left, top + rect.bottom - rect.top};
    }
    rect = PulledOnto(monitor, rect);
    PlaceToolWindow(rect.left, rect.top);
}

void DefaultToolbar() {
    DefaultLayoutCycle();
    ShowStates();
}
