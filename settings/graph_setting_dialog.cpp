// graph_setting_dialog.cpp -- the hands of dialog 1022, "Graph Setting".
#include <windows.h>

#include "platform/dialogs.h"
#include "platform/win32/controls.h"
#include "resources/resource.h"
#include "settings/graph_setting.h"

static int channel;

static constexpr int fieldControls[gridFields] = {editGridMin, editGridMax, editGridStep};  // by GridField

static void ShowField(HWND window, int field) {
    char text[gridTextSize];
    ShowGridField(channel, static_cast<GridField>(field), text);
    SetControlText(window, fieldControls[field], text);
}

static void OnFieldLeft(HWND window, int field) {
    LeaveGridField(channel, static_cast<GridField>(field), ControlText(window, fieldControls[field]).c_str());
    ShowField(window, field);
}

// Radios and samples are numbered by column and colour index.
static int ColorControl(int first, int column, int index) { return first + column * colorColumnIds + index; }

struct ColorPlace { int column, index; };
// Whether `id` is one of the numbered controls from `first` on, and which.
static bool IsColorControl(int id, int first, ColorPlace& place) {
    const int number = id - first;
    place = {number / colorColumnIds, number % colorColumnIds};
    return number >= 0 && place.column < colorColumns && place.index < colorChoices;
}

static void ShowOnlyFile1Column(HWND window) {
    const int column = static_cast<int>(ColorColumn::onlyFile1);
    ShowControl(window, groupOnlyFile1, OnlyFile1Shown());
    for (int index = 0; index < colorChoices; index++)
        for (int first : {firstColorRadio, firstColorSample})
            ShowControl(window, ColorControl(first, column, index), OnlyFile1Shown());
}

static void OnOpen(HWND window, int wanted) {
    channel = wanted;
    OpenGraphSetting();
    for (int field = 0; field < gridFields; field++) ShowField(window, field);
    CheckControl(window, checkGridDisplay, GraphGrid_disp[channel]);
    CheckControl(window, checkOnlyFile1, ExclusiveF1Color);
    ShowControl(window, checkOnlyFile1, OnlyFile1Offered());
    for (int column = 0; column < colorColumns; column++) {
        const int chosen = ColorChoice(channel, static_cast<ColorColumn>(column));
        for (int index = 0; index < colorChoices; index++)
            CheckControl(window, ColorControl(firstColorRadio, column, index), index == chosen);
    }
    ShowOnlyFile1Column(window);
}

static void OnClick(HWND window, int id) {
    ColorPlace place;
    if (id == checkGridDisplay) GraphGrid_disp[channel] = ControlChecked(window, id);
    if (id == checkOnlyFile1) {
        ExclusiveF1Color = ControlChecked(window, id);
        ShowOnlyFile1Column(window);
    }
    if (IsColorControl(id, firstColorRadio, place)) SetColorChoice(channel, static_cast<ColorColumn>(place.column), place.index);
}

static void Close(HWND window, GraphSettingEnd end) {
    SetFocus(GetDlgItem(window, buttonGraphSettingClose));  // so the field that is being edited is left first
    CloseGraphSetting(channel, end);
    EndDialog(window, 0);
}

static void OnCommand(HWND window, int id, int notification) {
    for (int field = 0; field < gridFields; field++)
        if (id == fieldControls[field] && notification == EN_KILLFOCUS) OnFieldLeft(window, field);
    if (notification != BN_CLICKED) return;
    OnClick(window, id);
    if (id == buttonGraphSettingClose) Close(window, GraphSettingEnd::button);
    if (id == IDCANCEL) Close(window, GraphSettingEnd::window);  // the close box, or Esc
}

static COLORREF Reference(SampleColor color) { return RGB(color.red, color.green, color.blue); }

// The brush behind a sample's text, or nullptr for any other control.
static HBRUSH PaintSample(HDC surface, HWND control) {
    ColorPlace place;
    if (!IsColorControl(GetDlgCtrlID(control), firstColorSample, place)) return nullptr;
    SetTextColor(surface, Reference(ColorSample(place.index)));
    SetBkColor(surface, Reference(SampleBackground()));
    SetDCBrushColor(surface, Reference(SampleBackground()));
    return static_cast<HBRUSH>(GetStockObject(DC_BRUSH));
}

static INT_PTR CALLBACK GraphSettingProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_INITDIALOG: OnOpen(window, static_cast<int>(lParam)); return TRUE;
        case WM_COMMAND: OnCommand(window, LOWORD(wParam), HIWORD(wParam)); return TRUE;
        case WM_CTLCOLORSTATIC:
            return reinterpret_cast<INT_PTR>(PaintSample(reinterpret_cast<HDC>(wParam), reinterpret_cast<HWND>(lParam)));
    }
    return FALSE;
}

static const bool registered = (RegisterDialog(dialogGraphSetting, reinterpret_cast<void*>(GraphSettingProc)), true);
