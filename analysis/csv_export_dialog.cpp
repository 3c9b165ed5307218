// csv_export_dialog.cpp -- the hands of dialog 1028, "The selection of items and range".
#include <windows.h>

#include <commctrl.h>

#include "analysis/csv_export.h"
#include "graph/view_state.h"
#include "platform/dialogs.h"
#include "platform/win32/controls.h"
#include "platform/win32/wide.h"
#include "resources/resource.h"

static bool writing;  // the close box is dead meanwhile, as the buttons are

static HWND Bar(void* window) { return GetDlgItem(static_cast<HWND>(window), progressCsv); }

static CsvProgress ProgressOf(HWND window) {
    return {window, [](void* owner, int low, int high) { SendMessageW(Bar(owner), PBM_SETRANGE32, static_cast<WPARAM>(low), high); },
            [](void* owner, int at) { SendMessageW(Bar(owner), PBM_SETPOS, static_cast<WPARAM>(at), 0); }};
}

static void DisableAll(HWND window) {
    for (HWND control = GetWindow(window, GW_CHILD); control; control = GetWindow(control, GW_HWNDNEXT))
        EnableWindow(control, FALSE);
}

static void Write(HWND window, int (*write)(const CsvProgress&)) {
    writing = true;
    DisableAll(window);
    ShowWindow(window, SW_SHOW);  // a dialog that writes at once was never idle, and so not shown yet
    write(ProgressOf(window));
    writing = false;
    EndDialog(window, 0);
}

static void OnOpen(HWND window) {
    writing = false;
    for (const CsvRate& rate : csvRates) AddListItem(window, listCsvRate, Wide(rate.caption));
    SelectListItem(window, listCsvRate, csvDecimation);
    CheckControl(window, checkCsvTime, true);
    if (OpenCsvExport()) {
        DisableAll(window);
        PostMessageW(window, WM_COMMAND, IDOK, 0);
    }
    for (int column = 0; column < csvColumnTotal; column++)
        CheckControl(window, firstCsvColumn + column, *csvColumns[column].on != 0);
}

static void OnClick(HWND window, int id) {
    const int column = id - firstCsvColumn;
    if (column >= 0 && column < csvColumnTotal) CheckCsvColumn(column, ControlChecked(window, id));
    switch (id) {
        case IDOK:  // also what Enter means
            if (csvRangePending) Write(window, ExportAwaitedRange);
            break;
        case buttonCsvLaps: Write(window, ExportCheckedLaps); break;
        case buttonCsvRange:
            AwaitCsvRange();
            EndDialog(window, 0);
            break;
        case IDCANCEL:
            CancelCsvExport();
            EndDialog(window, 0);
            break;
    }
}

static void OnCommand(HWND window, int id, int notification) {
    if (writing) return;
    if (id == listCsvRate && notification == CBN_SELCHANGE) csvDecimation = SelectedListItem(window, id);
    if (notification == BN_CLICKED) OnClick(window, id);
}

static INT_PTR CALLBACK CsvDialogProc(HWND window, UINT message, WPARAM wParam, LPARAM) {
    switch (message) {
        case WM_INITDIALOG: OnOpen(window); return TRUE;
        case WM_COMMAND: OnCommand(window, LOWORD(wParam), HIWORD(wParam)); return TRUE;
    }
    return FALSE;
}

static const bool registered = (RegisterDialog(dialogCsvRange, reinterpret_cast<void*>(CsvDialogProc)), true);
