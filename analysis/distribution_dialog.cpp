// distribution_dialog.cpp -- the hands of dialog 1024, "percentage".
#include <windows.h>

#include "analysis/distribution.h"
#include "platform/dialogs.h"
#include "platform/win32/controls.h"
#include "platform/win32/wide.h"
#include "resources/resource.h"

static constexpr int fieldControls[distFields] = {editDistMin, editDistMax, editDistStep};
static constexpr int textControls[distFiles] = {editDistFile1, editDistFile2};

// The texts of the three fields, as the thinking takes them.
struct TypedFields {
    std::string texts[distFields];
    const char* typed[distFields];

    explicit TypedFields(HWND window) {
        for (int field = 0; field < distFields; field++) {
            texts[field] = ControlText(window, fieldControls[field]);
            typed[field] = texts[field].c_str();
        }
    }
};

static void ShowBands(HWND window) {
    for (int field = 0; field < distFields; field++) SetControlNumber(window, fieldControls[field], distBands[field]);
}

static void FillList(HWND window, int id, const char* const* names, int count) {
    for (int i = 0; i < count; i++) AddListItem(window, id, Wide(names[i]));
    SelectListItem(window, id, 0);
}

static void OnOpen(HWND window) {
    OpenDistribution();
    FillList(window, listDistChannel, distChannelNames, distChannels);
    FillList(window, listDistLaps, distLapNames, distLapChoices);
    for (const int id : textControls) SendDlgItemMessageW(window, id, EM_SETLIMITTEXT, 0, 0);  // 4001 lines may come
    ShowBands(window);
}

// Put in at the end of the box, which so shows the last lines.
static void ShowResults(HWND window) {
    for (int file = 0; file < distFiles; file++) {
        SetControlText(window, textControls[file], "");
        SendDlgItemMessageW(window, textControls[file], EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(Wide(distTexts[file]).c_str()));
    }
}

static void OnClick(HWND window, int id) {
    if (id == buttonDistClose || id == IDCANCEL) EndDialog(window, 0);
    if (id != IDOK) return;
    distLaps = SelectedListItem(window, listDistLaps);
    Analyze(TypedFields(window).typed);
    ShowResults(window);
}

static void OnCommand(HWND window, int id, int notification) {
    for (int field = 0; field < distFields; field++)
        if (id == fieldControls[field] && notification == EN_KILLFOCUS)
            SetControlNumber(window, id, LeaveDistField(static_cast<DistField>(field), ControlText(window, id).c_str()));
    if (id == listDistChannel && notification == CBN_SELCHANGE) {
        ChooseDistChannel(SelectedListItem(window, id), TypedFields(window).typed);
        ShowBands(window);
    }
    if (notification == BN_CLICKED) OnClick(window, id);
}

static INT_PTR CALLBACK DistributionProc(HWND window, UINT message, WPARAM wParam, LPARAM) {
    switch (message) {
        case WM_INITDIALOG: OnOpen(window); return TRUE;
        case WM_COMMAND: OnCommand(window, LOWORD(wParam), HIWORD(wParam)); return TRUE;
    }
    return FALSE;
}

static const bool registered = (RegisterDialog(dialogDistribution, reinterpret_cast<void*>(DistributionProc)), true);
