// The real tool bar: its controls, what a press changes in it, and a log opened through it.
#include "platform/win32/wide.h"
#include "tests/windows/program.h"

#include <commctrl.h>

namespace {

struct Control {
    int id;
    const char* caption;
    int x, y;  // dialog units
    const char* tip;
};
constexpr Control controls[] = {
    {1111, "Check1", 0, 0, "Move File 1 (Z)"},
    {1112, "Check2", 23, 0, "Move File 2 (X), with Shift File 3"},
    {1033, "Open1", 0, 23, "Open File 1 (1)"},
    {1034, "Open2", 23, 23, "Open File 2 (2), with Shift File 3"},
    {1035, "Greset", 0, 47, "Overlay the speeds, fit the traces, standard layout"},
    {1036, "Close2", 23, 47, "Close File 2 and 3, with Shift File 3"},
    {1113, "GPM", 0, 71, "Graph position"},
    {1114, "MoveM", 23, 71, "Graphs (Esc)"},
    {1115, "ANM", 0, 95, "Meter and body (A)"},
    {1117, "AFM", 23, 95, "A/F map (E)"},
    {1116, "Play", 0, 119, "Play (S)"},
    {1037, "Setup", 23, 119, "Setup (F)"},
};

// What the tool tips of a button say: asked for in the program's own memory, as the message hands over a pointer.
std::string TipText(HANDLE process, HWND tips, HWND toolbar, HWND button) {
    constexpr SIZE_T room = 4096, textAt = 1024;
    char* const there = static_cast<char*>(VirtualAllocEx(process, nullptr, room, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE));
    TTTOOLINFOW tool = {};
    tool.cbSize = sizeof tool;
    tool.uFlags = TTF_IDISHWND;
    tool.hwnd = toolbar;
    tool.uId = reinterpret_cast<UINT_PTR>(button);
    tool.lpszText = reinterpret_cast<wchar_t*>(there + textAt);
    WriteProcessMemory(process, there, &tool, sizeof tool, nullptr);
    SendMessageW(tips, TTM_GETTEXTW, 200, reinterpret_cast<LPARAM>(there));
    wchar_t text[201] = L"";
    ReadProcessMemory(process, there + textAt, text, sizeof text - sizeof *text, nullptr);
    VirtualFreeEx(process, there, 0, MEM_RELEASE);
    return Utf8(text);
}

struct ToolbarWindow : testing::Test {
    Program program;
    void SetUp() override { ASSERT_TRUE(program.Start()); }
    bool Becomes(int id, bool checked) {
        return WaitFor([&] { return ControlChecked(program.toolbar, id) == checked; });
    }
    // Graph position, graphs, play, A/F map.
    bool ModesBecome(bool position, bool graphs, bool play, bool afMap) {
        return Becomes(1113, position) && Becomes(1114, graphs) && Becomes(1116, play) && Becomes(1117, afMap);
    }
    void Restart(const std::string& settings) {
        EXPECT_EQ(program.Close(), 0);
        program.home.Write("ZRKA.ini", settings);
        ASSERT_TRUE(program.Start());
    }
    std::string Saved(const std::string& key) { return IniValue(program.home.Path("ZRKA.ini"), "GraphSetting", key); }
};

TEST_F(ToolbarWindow, EveryButtonStandsInItsPlaceWithCaptionAndIcon) {
    for (const Control& control : controls) {
        SCOPED_TRACE(control.caption);
        const HWND button = GetDlgItem(program.toolbar, control.id);
        ASSERT_TRUE(button);
        EXPECT_EQ(WindowText(button), control.caption);
        EXPECT_TRUE(WaitFor([=] { return SendMessageW(button, BM_GETIMAGE, IMAGE_ICON, 0) != 0; })) << "when it is first painted";
        // MapDialogRect serves only dialogs of the own process: compare with the first buttons of row and column.
        RECT rect = {}, first = {}, second = {};
        GetWindowRect(button, &rect);
        GetWindowRect(GetDlgItem(program.toolbar, 1111), &first);
        GetWindowRect(GetDlgItem(program.toolbar, 1112), &second);
        EXPECT_EQ(rect.left, control.x == 0 ? first.left : second.left);
        const int height = first.bottom - first.top;  // 24 units
        EXPECT_NEAR(rect.top - first.top, control.y * height / 24.0, 1.0);
    }
    EXPECT_EQ(program.Close(), 0);
}

TEST_F(ToolbarWindow, EveryButtonHasItsToolTipOnceTheMouseHasCome) {
    SendMessageW(program.toolbar, WM_SETCURSOR, reinterpret_cast<WPARAM>(GetDlgItem(program.toolbar, 1111)),
                 MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
    HWND tips = nullptr;
    for (HWND window = nullptr; (window = FindWindowExW(nullptr, window, TOOLTIPS_CLASSW, nullptr));)
        if (GetWindow(window, GW_OWNER) == program.toolbar) tips = window;
    ASSERT_TRUE(tips);
    EXPECT_EQ(SendMessageW(tips, TTM_GETTOOLCOUNT, 0, 0), 12);
    for (const Control& control : controls)
        EXPECT_EQ(TipText(program.process.hProcess, tips, program.toolbar, GetDlgItem(program.toolbar, control.id)), control.tip);
    EXPECT_EQ(program.Close(), 0);
}

TEST_F(ToolbarWindow, StartsWithTheStatesOfNormalGraphs) {
    for (int id : {1111, 1112, 1114, 1115}) EXPECT_TRUE(ControlChecked(program.toolbar, id)) << id;
    for (int id : {1113, 1116, 1117}) EXPECT_FALSE(ControlChecked(program.toolbar, id)) << id;
    EXPECT_EQ(program.Close(), 0);
}

TEST_F(ToolbarWindow, PressesChangeTheViewAndKeysShowInTheButtons) {
    Click(program.toolbar, 1113);
    EXPECT_TRUE(Becomes(1113, true));
    EXPECT_TRUE(Becomes(1114, false));
    Click(program.toolbar, 1116);
    EXPECT_TRUE(Becomes(1116, true));
    EXPECT_TRUE(Becomes(1113, false));
    Click(program.toolbar, 1114);
    EXPECT_TRUE(Becomes(1114, true));
    EXPECT_TRUE(Becomes(1116, false));
    program.Type('Z');
    EXPECT_TRUE(Becomes(1111, false));
    program.Type('X');
    EXPECT_TRUE(Becomes(1112, false));
    program.Type('Z');
    EXPECT_TRUE(Becomes(1111, true));
    EXPECT_EQ(program.Close(), 0);
}

TEST_F(ToolbarWindow, TheButtonsOfTheFilesReachTheStateThatTheirKeysToggle) {
    const struct { int button, key; } rows[] = {{1111, 'Z'}, {1112, 'X'}};
    for (const auto& row : rows) {
        Click(program.toolbar, row.button);
        EXPECT_TRUE(Becomes(row.button, false));
        program.Type(row.key);  // toggles what the button has set
        EXPECT_TRUE(Becomes(row.button, true)) << row.button;
    }
    program.Type(' ');
    EXPECT_TRUE(Becomes(1112, false));
    EXPECT_EQ(program.Close(), 0);
}

TEST_F(ToolbarWindow, KeysOfTheViewsShowInTheButtons) {
    program.Type('E');
    EXPECT_TRUE(ModesBecome(false, false, false, true));
    program.Type(27);
    EXPECT_TRUE(ModesBecome(false, true, false, false));
    program.Type('A');
    EXPECT_TRUE(Becomes(1115, false));
    program.Type('S');
    EXPECT_TRUE(ModesBecome(false, true, true, false));
    EXPECT_TRUE(Becomes(1115, true)) << "play shows the meter";
    program.Type('E');
    EXPECT_TRUE(ModesBecome(false, false, false, true));
    program.Type('E');
    EXPECT_TRUE(ModesBecome(false, true, false, false));
    EXPECT_EQ(program.Close(), 0);
}

TEST_F(ToolbarWindow, EveryViewCommandLeavesTheOthers) {
    Click(program.toolbar, 1113);
    EXPECT_TRUE(ModesBecome(true, false, false, false));
    Click(program.toolbar, 1113);
    EXPECT_TRUE(ModesBecome(true, false, false, false)) << "pressed again it stays";
    Click(program.toolbar, 1116);
    EXPECT_TRUE(ModesBecome(false, true, true, false));
    Click(program.toolbar, 1116);
    EXPECT_TRUE(ModesBecome(false, true, false, false));
    Click(program.toolbar, 1113);
    EXPECT_TRUE(ModesBecome(true, false, false, false));
    Click(program.toolbar, 1115);
    EXPECT_TRUE(ModesBecome(false, true, false, false));
    EXPECT_TRUE(Becomes(1115, false));
    program.Type('E');
    EXPECT_TRUE(Becomes(1117, true));
    Click(program.toolbar, 1117);
    EXPECT_TRUE(ModesBecome(false, true, false, false)) << "pressed while on it leaves the map";
    Click(program.toolbar, 1114);
    EXPECT_TRUE(ModesBecome(false, true, false, false));
    EXPECT_EQ(program.Close(), 0);
}

TEST_F(ToolbarWindow, TheAfMapsButtonOpensTheAnalysisToolsWhileTheToolBarWaits) {
    Click(program.toolbar, 1117);
    const HWND tools = program.WaitForWindow("Analysis tools");
    ASSERT_TRUE(tools);
    EXPECT_FALSE(IsWindowEnabled(program.toolbar));
    PostMessageW(tools, WM_SYSCOMMAND, SC_CLOSE, 0);
    EXPECT_TRUE(program.WaitUntilGone("Analysis tools"));
    EXPECT_TRUE(WaitFor([&] { return IsWindowEnabled(program.toolbar) != FALSE; }));
    EXPECT_TRUE(ModesBecome(false, true, false, false));
    EXPECT_EQ(program.Close(), 0);
}

TEST_F(ToolbarWindow, TheLayoutsButtonStepsThroughItsThreeLayouts) {
    const std::string own = "[GraphSetting]\r\nvfwpos=500\r\nvfwzoom=7000\r\nrpmzoom=33000\r\n";
    const struct { int presses; const char *vrwpos, *vrwzoom, *rpmzoom; } rows[] = {
        {1, "500", "7000", "33000"}, {3, nullptr, "20000", "50000"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.presses);
        Restart(own);
        for (int press = 0; press < row.presses; press++) Click(program.toolbar, 1035);
        EXPECT_EQ(program.Close(), 0) << "closes behind the posted presses";
        if (row.vrwpos) {
            EXPECT_EQ(Saved("vrwpos"), row.vrwpos);
        }
        EXPECT_EQ(Saved("vrwzoom"), row.vrwzoom);
        EXPECT_EQ(Saved("rpmzoom"), row.rpmzoom);
        ASSERT_TRUE(program.Start());
    }
    EXPECT_EQ(program.Close(), 0);
}

TEST_F(ToolbarWindow, File2IsOpenedAndClosedThere) {
    SampleLogOptions options;
    options.laps = 1;
    const std::string log = program.WriteLog("a.zrk", options);
    // Pixels of File 2's name, which wears a colour of its own.
    const auto nameShown = [&] {
        const Picture picture = GrabClient(program.main);
        int count = 0;
        for (int y = 31; y < 46 && y < picture.height; y++)
            for (int x = 10; x < 110 && x < picture.width; x++) count += picture.At(x, y) == 0xFFC8C8;
        return count > 5;
    };
    EXPECT_FALSE(nameShown());
    Click(program.toolbar, 1034);
    EXPECT_TRUE(program.AnswerFileDialog("Open", log));
    EXPECT_TRUE(WaitFor(nameShown));
    Click(program.toolbar, 1036);
    EXPECT_TRUE(WaitFor([&] { return !nameShown(); }));
    EXPECT_EQ(program.Close(), 0);
}

TEST_F(ToolbarWindow, ALogIsOpenedThroughTheSystemsDialogWhileTheToolBarWaits) {
    SampleLogOptions options;
    options.laps = 1;
    const std::string log = program.WriteLog("a.zrk", options);
    const Picture before  = program.RestingPicture();
    Click(program.toolbar, 1033);
    ASSERT_TRUE(program.WaitForWindow("Open"));
    EXPECT_FALSE(IsWindowEnabled(program.toolbar));
    EXPECT_TRUE(program.AnswerFileDialog("Open", log));
    EXPECT_TRUE(WaitFor([&] { return IsWindowEnabled(program.toolbar) != FALSE; }));
    EXPECT_GT(program.RestingPicture().DifferentPixels(before), 1000);
    EXPECT_EQ(program.Close(), 0);
}

TEST_F(ToolbarWindow, BodyViewChosenThereIsKeptInTheSettings) {
    Click(program.toolbar, 1115);
    EXPECT_TRUE(Becomes(1115, false));
    EXPECT_EQ(program.Close(), 0);
    EXPECT_EQ(IniValue(program.home.Path("ZRKA.ini"), "ModeSetting", "AnimeMode"), "0");
}

}  // namespace
