#include "bench/table/table_stand.h"

#include <windows.h>

#include <cstring>
#include <fstream>

#include "analysis/lap_stats.h"
#include "analysis/lap_table.h"
#include "app/frame_loop.h"
#include "bench/start/scratch_folder.h"
#include "platform/tool_window.h"
#include "platform/window.h"
#include "resources/resource.h"
#include "run_data/load_pipeline.h"
#include "run_data/run_store.h"

constexpr int firstCells[lapTables] = {firstUpperCell, firstLowerCell};

static std::ofstream figures;
static WNDPROC toolbarProcedure, dialogProcedure;
static double paintedAt;           // 0 while the dialog is not painted
static int unpaintedCells;         // that showed nothing when the dialog was thought painted: none, unless that is wrong
static void (*whenPainted)(HWND);  // before the dialog is closed; nullptr for nothing

static void Note(Figure figure, double number) { figures << figureNames[figure] << ' ' << number << '\n'; }

// --- opening ---------------------------------------------------------------------------------------------------------------

static bool PaintsWait() { return (HIWORD(GetQueueStatus(QS_PAINT)) & QS_PAINT) != 0; }

// A cell with a text shows something else than its background.
static bool CellIsThere(HWND cell) {
    if (GetUpdateRect(cell, nullptr, FALSE)) return false;
    if (GetWindowTextLengthW(cell) == 0) return true;
    RECT client;
    GetClientRect(cell, &client);
    const HDC surface = GetDC(cell);
    const COLORREF background = GetPixel(surface, 0, 0);
    bool letters = false;
    for (int x = 0; x < client.right && !letters; x++)
        for (int y = 0; y < client.bottom && !letters; y++) letters = GetPixel(surface, x, y) != background;
    ReleaseDC(cell, surface);
    return letters;
}

static void CheckAverageLines(HWND dialog) {
    for (const int first : firstCells)
        for (int column = 0; column < lapColumns; column++)
            unpaintedCells += !CellIsThere(GetDlgItem(dialog, first + averageLine * lapColumns + column));
}

static void OnIdle(HWND dialog) {
    if (paintedAt != 0 || !IsWindowVisible(dialog) || PaintsWait()) return;
    paintedAt = NowMs();
    CheckAverageLines(dialog);
    if (whenPainted) whenPainted(dialog);
    PostMessageW(dialog, WM_COMMAND, buttonTableClose, 0);
}

static LRESULT CALLBACK WatchedToolbar(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_ENTERIDLE && wParam == MSGF_DIALOGBOX) OnIdle(reinterpret_cast<HWND>(lParam));
    return CallWindowProcW(toolbarProcedure, window, message, wParam, lParam);
}

static WNDPROC Watch(HWND window, WNDPROC procedure) {
    return reinterpret_cast<WNDPROC>(SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(procedure)));
}

// Lets the windows behind the dialog settle.
static void ServeFor(double milliseconds) {
    for (const double end = NowMs() + milliseconds; NowMs() < end; Sleep(1)) PumpMessages();
}

static double OpenOnce() {
    ServeFor(30);
    paintedAt = 0;
    const HWND toolbar = static_cast<HWND>(ToolWindowHandle());
    const double begin = NowMs();
    SendMessageW(toolbar, WM_COMMAND, buttonAfMap, reinterpret_cast<LPARAM>(GetDlgItem(toolbar, buttonAfMap)));
    return paintedAt - begin;
}

static void ForgetStatistics() {
    for (int slot = 0; slot < fileSlots; slot++) dataVersion[slot]++;
}

static double StatisticsAlone() {
    ForgetStatistics();
    const double begin = NowMs();
    ComputeLapStats();
    return NowMs() - begin;
}

// --- scrolling and refilling -----------------------------------------------------------------------------------------------

static int paints[lapTables][lapLines][lapColumns];  // of each cell since the step began
static int erasures;

template <class Visit>
static void ForEachCell(Visit visit) {
    for (int table = 0; table < lapTables; table++)
        for (int line = 0; line < lapLines; line++)
            for (int column = 0; column < lapColumns; column++) visit(table, line, column);
}

static void CountPaint(int id) {
    for (int table = 0; table < lapTables; table++) {
        const int cell = id - firstCells[table];
        if (cell >= 0 && cell < lapLines * lapColumns) paints[table][cell / lapColumns][cell % lapColumns]++;
    }
}

// The dialog is told to draw a cell each time it is painted. A themed button asks for the background under itself
// by the message that erases, on a surface of its own.
static LRESULT CALLBACK WatchedDialog(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_DRAWITEM) CountPaint(static_cast<int>(wParam));
    if (message == WM_ERASEBKGND) erasures += WindowFromDC(reinterpret_cast<HDC>(wParam)) == window;
    return CallWindowProcW(dialogProcedure, window, message, wParam, lParam);
}

static void PaintAll() {
    for (MSG message; PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE | PM_QS_PAINT);) DispatchMessageW(&message);
}

using Cells = LapCell[lapTables][lapLines][lapColumns];

static void NoteStep(double milliseconds, const Cells& before) {
    int changed = 0, painted = 0, spare = 0, missed = 0;
    ForEachCell([&](int table, int line, int column) {
        const LapCell &old = before[table][line][column], &now = lapCells[table][line][column];
        const bool differs = std::strcmp(old.text, now.text) != 0 || old.best != now.best;
        const int count = paints[table][line][column];
        changed += differs;
        painted += count > 0;
        spare += std::max(count - differs, 0);
        missed += differs && count == 0;
    });
    const double numbers[] = {milliseconds, changed * 1.0, painted * 1.0, spare * 1.0, missed * 1.0, erasures * 1.0};
    static_assert(std::size(numbers) == figureTotal - stepMs);
    for (size_t i = 0; i < std::size(numbers); i++) Note(static_cast<Figure>(stepMs + static_cast<int>(i)), numbers[i]);
}

static void Step(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    Cells before;
    std::memcpy(before, lapCells, sizeof before);
    std::memset(paints, 0, sizeof paints);
    erasures = 0;
    const double begin = NowMs();
    SendMessageW(dialog, message, wParam, lParam);
    PaintAll();
    NoteStep(NowMs() - begin, before);
}

// By the bar down and up, by the wheel, and in another order.
static void ScrollAndRefill(HWND dialog) {
    dialogProcedure = Watch(dialog, WatchedDialog);
    const LPARAM bar = reinterpret_cast<LPARAM>(GetDlgItem(dialog, scrollUpperTable));
    for (const int code : {SB_TOP, SB_LINEDOWN, SB_LINEDOWN, SB_PAGEDOWN, SB_PAGEDOWN, SB_LINEUP, SB_PAGEUP, SB_BOTTOM, SB_TOP})
        Step(dialog, WM_VSCROLL, static_cast<WPARAM>(code), bar);
    RECT frame;
    GetWindowRect(dialog, &frame);
    const LPARAM upperHalf = MAKELPARAM(frame.left + 40, frame.top + 40);
    const LPARAM lowerHalf = MAKELPARAM(frame.left + 40, frame.bottom - 40);
    for (const LPARAM mouse : {upperHalf, lowerHalf})
        for (const int delta : {-WHEEL_DELTA, -WHEEL_DELTA, WHEEL_DELTA, -3 * WHEEL_DELTA})
            Step(dialog, WM_MOUSEWHEEL, MAKEWPARAM(0, delta), mouse);
    for (int column = 0; column < lapColumns; column++) {
        const int header = firstUpperHeader + column;
        Step(dialog, WM_COMMAND, static_cast<WPARAM>(header), reinterpret_cast<LPARAM>(GetDlgItem(dialog, header)));
    }
    Watch(dialog, dialogProcedure);
}

// --- the whole ---------------------------------------------------------------------------------------------------------------

static bool StartOn(int logs, char** names) {
    if (StartProgram(logs > 0 ? names[0] : nullptr) != 0) return false;
    for (int i = 1; i < logs; i++) LoadFile(names[i], i);
    for (int i = 0; i < logs; i++)
        if (lapCount[i] < 2) return false;
    toolbarProcedure = Watch(static_cast<HWND>(ToolWindowHandle()), WatchedToolbar);
    for (const double end = NowMs() + 300; NowMs() < end;) LoopPass();
    return true;
}

int MeasureTable(int turns, int logs, char** names) {
    if (!StartOn(logs, names)) return 1;
    figures.open(figuresFile);
    Note(firstMs, OpenOnce());
    for (int turn = 0; turn < turns; turn++) {
        Note(statisticsMs, StatisticsAlone());
        ForgetStatistics();
        Note(openMs, OpenOnce());
        Note(againMs, OpenOnce());
    }
    whenPainted = ScrollAndRefill;
    const bool scrolled = OpenOnce() >= 0;
    ShutDownProgram();
    return scrolled && unpaintedCells == 0 && figures.flush() ? 0 : 1;
}
