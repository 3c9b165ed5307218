// lap_dialog.cpp -- the hands of dialog 1023, "Analysis tools".
#include <windows.h>

#include <algorithm>
#include <cstring>

#include "analysis/harmonize.h"
#include "analysis/lap_order.h"
#include "analysis/lap_table.h"
#include "graph/view_state.h"
#include "platform/dialogs.h"
#include "platform/win32/controls.h"
#include "resources/resource.h"

// First ids of a table's controls.
struct TableControls {
    int cell, header, check, scroll, select;
};
static constexpr TableControls tableControls[lapTables] = {
    {firstUpperCell, firstUpperHeader, firstUpperCheck, scrollUpperTable, labelUpperSelect},
    {firstLowerCell, firstLowerHeader, firstLowerCheck, scrollLowerTable, labelLowerSelect},
};
static constexpr int expertButtons[] = {buttonDistribution, buttonCsvOutput, buttonHarmonize, buttonTablePage};

// What the controls show. Only what differs is set, so that a table that scrolls does not flicker.
struct ShownTable {
    LapCell     cells[lapLines][lapColumns];
    char        headers[lapColumns][sizeof lapHeaders[0][0]];
    ScrollState scroll;
};
static ShownTable shownTables[lapTables];
// Where a cell is drawn before it goes to its window; as large as the widest.
struct CellSurface {
    HDC     context;
    HBITMAP bitmap;
};
static CellSurface cellSurface;
// The cells' windows, found once: among three hundred controls each search by id takes as long as setting a text.
static HWND       cellWindows[lapTables][lapLines * lapColumns];
static int        wheelRest;  // of a notch, in wheel units

// --- showing ---------------------------------------------------------------------------------------------------------------

static void ShowText(HWND window, int id, const char* text) {
    if (ControlText(window, id) != text) SetControlText(window, id, text);
}

static void FindCells(HWND window) {
    for (HWND control = GetWindow(window, GW_CHILD); control; control = GetWindow(control, GW_HWNDNEXT))
        for (int table = 0; table < lapTables; table++) {
            const int cell = GetDlgCtrlID(control) - tableControls[table].cell;
            if (cell >= 0 && cell < lapLines * lapColumns) cellWindows[table][cell] = control;
        }
}

// The text is set past the control, which on one system paints at once and on another may not paint what its owner draws.
static void ShowCell(HWND control, LapCell& shown, const LapCell& cell) {
    const bool otherText = std::strcmp(shown.text, cell.text) != 0;
    if (!otherText && shown.best == cell.best) return;
    if (otherText) DefWindowProcA(control, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(cell.text));  // digits, signs and "Avr."
    shown = cell;
    RedrawWindow(control, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
}

static void ShowHeader(HWND window, int id, char* shown, const char* header) {
    if (std::strcmp(shown, header) == 0) return;
    SetControlText(window, id, header);
    std::strcpy(shown, header);
}

static void ShowScroll(HWND window, int id, ScrollState& shown, const ScrollState& state) {
    if (std::memcmp(&shown, &state, sizeof state) == 0) return;
    SCROLLINFO info = {};
    info.cbSize = sizeof info;
    info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS | SIF_DISABLENOSCROLL;
    info.nMin = state.low;
    info.nMax = std::max(state.low, state.high);
    info.nPage = static_cast<UINT>(state.page);
    info.nPos = state.position;
    SetScrollInfo(GetDlgItem(window, id), SB_CTL, &info, TRUE);
    shown = state;
}

static void ShowTable(HWND window, int table) {
    const TableControls& controls = tableControls[table];
    ShownTable& shown = shownTables[table];
    for (int line = 0; line < lapLines; line++) {
        for (int column = 0; column < lapColumns; column++)
            ShowCell(cellWindows[table][line * lapColumns + column], shown.cells[line][column], lapCells[table][line][column]);
        if (ControlChecked(window, controls.check + line) != (lineChecked[table][line] != 0))
            CheckControl(window, controls.check + line, lineChecked[table][line] != 0);
    }
    for (int column = 0; column < lapColumns; column++)
        ShowHeader(window, controls.header + column, shown.headers[column], lapHeaders[table][column]);
    ShowScroll(window, controls.scroll, shown.scroll, lapScroll[table]);
    ShowText(window, controls.select, SelectText(table));
}

static void ShowTables(HWND window) {
    for (int table = 0; table < lapTables; table++) ShowTable(window, table);
    ShowText(window, labelLowerFile, LowerFileText());
    ShowText(window, buttonTablePage, PageText());
    CheckControl(window, checkSectorTime, sectorView != 0);
}

// --- drawing ---------------------------------------------------------------------------------------------------------------

static void MakeCellSurface(HWND window) {
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    for (const HWND cell : cellWindows[0]) {
        RECT client;
        GetClientRect(cell, &client);
        info.bmiHeader.biWidth = std::max(info.bmiHeader.biWidth, client.right);
        info.bmiHeader.biHeight = std::max(info.bmiHeader.biHeight, client.bottom);
    }
    void* pixels;
    cellSurface.context = CreateCompatibleDC(nullptr);
    cellSurface.bitmap = CreateDIBSection(cellSurface.context, &info, DIB_RGB_COLORS, &pixels, nullptr, 0);
    SelectObject(cellSurface.context, cellSurface.bitmap);
    SelectObject(cellSurface.context, reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0)));
    SetBkMode(cellSurface.context, TRANSPARENT);
}

static void ReleaseCellSurface() {
    DeleteDC(cellSurface.context);
    DeleteObject(cellSurface.bitmap);
    cellSurface = {};
}

// The brush behind a "Select" label; nullptr for any other control.
static HBRUSH PaintLabel(HDC surface, int id) {
    if (id != labelUpperSelect && id != labelLowerSelect) return nullptr;
    SetTextColor(surface, GetSysColor(COLOR_BTNTEXT));
    SetBkColor(surface, GetSysColor(COLOR_BTNFACE));
    return GetSysColorBrush(COLOR_BTNFACE);
}

// Red letters for the best. The cell goes to the window in one piece: a label clears its place before it writes, and
// while a table scrolls the empty place can be seen.
static void DrawCell(const DRAWITEMSTRUCT& item, const LapCell& cell) {
    const HDC surface = cellSurface.context;
    RECT place = {0, 0, item.rcItem.right - item.rcItem.left, item.rcItem.bottom - item.rcItem.top};
    SetTextColor(surface, cell.best ? RGB(255, 0, 0) : GetSysColor(COLOR_BTNTEXT));
    FillRect(surface, &place, GetSysColorBrush(COLOR_BTNFACE));
    DrawTextA(surface, cell.text, -1, &place, DT_CENTER | DT_NOPREFIX | DT_SINGLELINE);
    BitBlt(item.hDC, item.rcItem.left, item.rcItem.top, place.right, place.bottom, surface, 0, 0, SRCCOPY);
}

static void OnDrawItem(const DRAWITEMSTRUCT& item) {
    for (int table = 0; table < lapTables; table++) {
        const int cell = static_cast<int>(item.CtlID) - tableControls[table].cell;
        if (cell >= 0 && cell < lapLines * lapColumns) DrawCell(item, lapCells[table][cell / lapColumns][cell % lapColumns]);
    }
}

// --- acting ----------------------------------------------------------------------------------------------------------------

static void OnOpen(HWND window) {
    std::memset(shownTables, 0, sizeof shownTables);
    FindCells(window);
    MakeCellSurface(window);
    wheelRest = 0;
    CheckControl(window, checkKeep, keepOn != 0);
    for (const int id : expertButtons) ShowControl(window, id, ExpertToolsShown());
    OpenLapTable();
    ShowTables(window);
}

static void Close(HWND window) {
    CloseLapTable(ControlChecked(window, checkKeep));
    EndDialog(window, 0);
}

// What is left to do after a press: show both tables as they are now, or end the dialog; the export's takes its place then.
enum class After { show, close, openExport };

// The tools behind the buttons, a function each.

static After RunDistribution() {
    OpenDialog(dialogDistribution);
    return After::show;
}

static After RunSimulation() {
    OpenDialog(dialogFinalSimulation);
    RefreshLapTables();
    return After::show;
}

// Kept: the tables show the new speeds when they are computed the next time.
static After RunHarmonize() {
    HarmonizeTyreLength();
    return After::show;
}

static After LeaveForExport() {
    LeaveForCsvOutput();
    return After::openExport;
}

static After LeaveForAfMap() { return After::close; }

template <void (*click)()>
static After Press() {
    click();
    return After::show;
}

struct ButtonAction {
    int id;
    After (*press)();
};
static constexpr ButtonAction buttonActions[] = {
    {checkSectorTime, Press<ClickSectorTimes>}, {buttonTablePage, Press<ClickPage>}, {labelLowerFile, Press<ClickLowerFile>},
    {buttonDistribution, RunDistribution},      {buttonSimulation, RunSimulation},   {buttonHarmonize, RunHarmonize},
    {buttonCsvOutput, LeaveForExport},          {buttonLafHistogram, LeaveForAfMap},
};

static void OnButton(HWND window, int id) {
    if (id == buttonTableClose || id == IDCANCEL) return Close(window);  // or the close box, or Esc
    for (const ButtonAction& row : buttonActions) {
        if (row.id != id) continue;
        const After after = row.press();
        if (after == After::show)
            ShowTables(window);
        else
            EndDialog(window, after == After::openExport ? dialogCsvRange : 0);
    }
}

// 1 when the id belongs to the table. A click on a value ends the dialog.
static int OnTable(HWND window, int table, int id) {
    const TableControls& controls = tableControls[table];
    const int cell = id - controls.cell, header = id - controls.header, line = id - controls.check;
    if (cell >= 0 && cell < lapLines * lapColumns) {
        if (ClickCell(table, cell / lapColumns, cell % lapColumns)) EndDialog(window, 0);
        return 1;
    }
    if (header >= 0 && header < lapColumns)
        ClickHeader(table, header);
    else if (line >= 0 && line < lapLines)
        ToggleLine(table, line);
    else if (id == controls.select)
        ClickSelect(table);
    else
        return 0;
    ShowTable(window, table);
    return 1;
}

static void OnCommand(HWND window, int id, int notification) {
    if (notification != BN_CLICKED && notification != STN_DBLCLK) return;  // the second of two quick clicks on a label
    if (!OnTable(window, 0, id) && !OnTable(window, 1, id)) OnButton(window, id);
}

static void OnScroll(HWND window, HWND bar, int code, int position) {
    struct Code { int code; ScrollAction action; };
    static constexpr Code codes[] = {
        {SB_LINEUP, ScrollAction::lineUp},   {SB_LINEDOWN, ScrollAction::lineDown},   {SB_PAGEUP, ScrollAction::pageUp},
        {SB_PAGEDOWN, ScrollAction::pageDown}, {SB_THUMBTRACK, ScrollAction::thumb}, {SB_TOP, ScrollAction::top},
        {SB_BOTTOM, ScrollAction::bottom},
    };
    const int table = GetDlgCtrlID(bar) == scrollLowerTable;
    for (const Code& row : codes)
        if (row.code == code) ScrollTable(table, row.action, position);
    ShowTable(window, table);
}

static void OnWheel(HWND window, int delta, POINT mouse) {
    RECT client;
    GetClientRect(window, &client);
    ScreenToClient(window, &mouse);
    const int table = mouse.y >= client.bottom / 2;
    wheelRest += delta;
    const int notches = wheelRest / WHEEL_DELTA;
    wheelRest %= WHEEL_DELTA;
    if (notches == 0) return;
    WheelTable(table, notches);
    ShowTable(window, table);
}

static INT_PTR CALLBACK LapDialogProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const auto signedWord = [](auto word) { return static_cast<short>(word); };
    switch (message) {
        case WM_INITDIALOG: OnOpen(window); return TRUE;
        case WM_COMMAND: OnCommand(window, LOWORD(wParam), HIWORD(wParam)); return TRUE;
        case WM_VSCROLL: OnScroll(window, reinterpret_cast<HWND>(lParam), LOWORD(wParam), HIWORD(wParam)); return TRUE;
        case WM_MOUSEWHEEL:
            OnWheel(window, signedWord(HIWORD(wParam)), {signedWord(LOWORD(lParam)), signedWord(HIWORD(lParam))});
            return TRUE;
        case WM_DESTROY: ReleaseCellSurface(); return TRUE;
        case WM_DRAWITEM: OnDrawItem(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam)); return TRUE;
        case WM_CTLCOLORSTATIC:
            return reinterpret_cast<INT_PTR>(
                PaintLabel(reinterpret_cast<HDC>(wParam), GetDlgCtrlID(reinterpret_cast<HWND>(lParam))));
    }
    return FALSE;
}

static const bool registered = (RegisterDialog(dialogAnalysisTools, reinterpret_cast<void*>(LapDialogProc)), true);
