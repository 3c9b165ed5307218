// csv_import_dialog.cpp -- the hands of dialog 1027, "[CSV] Load data selection".
#include <windows.h>

#include <commctrl.h>

#include "platform/dialogs.h"
#include "platform/win32/controls.h"
#include "platform/win32/wide.h"
#include "resources/resource.h"
#include "run_data/csv_columns.h"
#include "run_data/csv_log.h"

static HWND dialog;    // while it is open
static bool importing;  // the close box is dead meanwhile, as the rows and OK are

static void FillList(HWND window, int row) {
    for (int item = 0; const char* text = CsvItemText(row, item); item++)
        AddListItem(window, firstCsvList + row, WideOfUnknown(text));
    SelectListItem(window, firstCsvList + row, csvRow[row]);
}

static void ShowLapType(HWND window) {
    CheckControl(window, checkCsvLapType, lapByNumber != 0);
    SetControlText(window, checkCsvLapType, LapTypeText());
}

static void OnOpen(HWND window) {
    dialog = window;
    importing = false;
    OpenCsvRows();
    for (int row = 0; row < csvRows; row++) FillList(window, row);
    ShowLapType(window);
    SendDlgItemMessageW(window, progressCsvLoad, PBM_SETRANGE32, 0, csvProgressRange);
}

static void TakeSelection(HWND window, int row) {
    ChooseCsvItem(row, SelectedListItem(window, firstCsvList + row));
}

static void ShowProgress(int position) {
    SendDlgItemMessageW(dialog, progressCsvLoad, PBM_SETPOS, static_cast<WPARAM>(position), 0);
}

static void AddNote(const char* text) {
    SendDlgItemMessageW(dialog, editCsvNotes, EM_SETSEL, static_cast<WPARAM>(GetWindowTextLengthW(GetDlgItem(dialog, editCsvNotes))), -1);
    SendDlgItemMessageW(dialog, editCsvNotes, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(Wide(text).c_str()));
}

static void OnOk(HWND window) {
    importing = true;
    for (int row = 0; row < csvRows; row++) {
        EnableWindow(GetDlgItem(window, firstCsvList + row), FALSE);
        TakeSelection(window, row);
    }
    for (const int id : {IDOK, checkCsvLapType}) EnableWindow(GetDlgItem(window, id), FALSE);
    AcceptCsvImport({ShowProgress, AddNote});
    EndDialog(window, 1);
}

static void OnCommand(HWND window, int id, int notification) {
    if (importing) return;
    if (id >= firstCsvList && id < firstCsvList + csvRows) {
        if (notification == CBN_SELCHANGE) TakeSelection(window, id - firstCsvList);
        return;
    }
    if (notification != BN_CLICKED) return;
    switch (id) {
        case checkCsvLapType:
            lapByNumber = ControlChecked(window, id);
            ShowLapType(window);
            break;
        case IDOK: OnOk(window); break;
        case IDCANCEL: EndDialog(window, 0); break;  // the close box, or Esc
    }
}

static INT_PTR CALLBACK CsvImportProc(HWND window, UINT message, WPARAM wParam, LPARAM) {
    switch (message) {
        case WM_INITDIALOG: OnOpen(window); return TRUE;
        case WM_COMMAND: OnCommand(window, LOWORD(wParam), HIWORD(wParam)); return TRUE;
    }
    return FALSE;
}

static const bool registered = (RegisterDialog(dialogCsvImport, reinterpret_cast<void*>(CsvImportProc)), true);
