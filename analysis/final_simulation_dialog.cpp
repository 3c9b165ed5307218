// final_simulation_dialog.cpp -- the hands of dialog 1025, "Final Simulation".
#include <windows.h>

#include "analysis/final_simulation.h"
#include "platform/dialogs.h"
#include "platform/win32/controls.h"
#include "resources/resource.h"
#include "run_data/run_store.h"

struct ListControl {
    int       id;
    TeethList list;
    int       first, last;
};
static constexpr ListControl listControls[] = {
    {listFrontTeeth, TeethList::front, frontTeethFirst, frontTeethLast},
    {listRearTeeth, TeethList::rear, rearTeethFirst, rearTeethLast},
};
struct ArrowControl {
    int        id;
    TeethArrow arrow;
};
static constexpr ArrowControl arrowControls[] = {
    {arrowFrontUp, TeethArrow::frontUp},
    {arrowFrontDown, TeethArrow::frontDown},
    {arrowRearUp, TeethArrow::rearUp},
    {arrowRearDown, TeethArrow::rearDown},
};

static void FillList(HWND window, const ListControl& control) {
    for (int teeth = control.first; teeth <= control.last; teeth++) AddListItem(window, control.id, std::to_wstring(teeth));
}

static void ShowRatios(HWND window) {
    char text[ratioTextSize];
    SetControlNumber(window, labelFrontTeeth, frontSprocket[0]);
    SetControlNumber(window, labelRearTeeth, rearSprocket[0]);
    LoggedRatioText(text);
    SetControlText(window, labelLoggedRatio, text);
    SimulatedRatioText(text);
    SetControlText(window, labelSimRatio, text);
}

static void ShowAll(HWND window) {
    for (const ListControl& control : listControls) SelectListItem(window, control.id, TeethItem(control.list));
    ShowRatios(window);
    SetControlNumber(window, labelLoggedTire, rearTyreMm[0]);
    SetControlNumber(window, editSimTire, simTireLength);
}

static void OnOpen(HWND window) {
    OpenFinalSimulation();
    for (const ListControl& control : listControls) FillList(window, control);
    ShowAll(window);
}

static void Close(HWND window) {
    SetFocus(GetDlgItem(window, IDOK));  // so the tyre field is left first
    EndDialog(window, 0);
}

static void OnClick(HWND window, int id) {
    if (id == IDOK) Close(window);
    if (id == IDCANCEL) {  // the button "Reset", and Esc
        ResetFinalSimulation();
        ShowAll(window);
    }
    for (const ArrowControl& control : arrowControls)
        if (id == control.id) {
            StepLoggedTeeth(control.arrow);
            ShowRatios(window);
        }
}

static void OnCommand(HWND window, int id, int notification) {
    for (const ListControl& control : listControls)
        if (id == control.id && notification == CBN_SELCHANGE) {
            ChooseTeeth(control.list, SelectedListItem(window, id));
            ShowRatios(window);
            return;
        }
    if (id == editSimTire && notification == EN_KILLFOCUS) LeaveTireLength(ControlText(window, id).c_str());
    if (notification == BN_CLICKED) OnClick(window, id);
}

static INT_PTR CALLBACK FinalSimulationProc(HWND window, UINT message, WPARAM wParam, LPARAM) {
    switch (message) {
        case WM_INITDIALOG: OnOpen(window); return TRUE;
        case WM_COMMAND: OnCommand(window, LOWORD(wParam), HIWORD(wParam)); return TRUE;
        case WM_CLOSE: Close(window); return TRUE;  // would press "Reset", which has the number of a cancel button
    }
    return FALSE;
}

static const bool registered = (RegisterDialog(dialogFinalSimulation, reinterpret_cast<void*>(FinalSimulationProc)), true);
