// Dialog 1023 as a user meets it: three logs, opened by key or tool bar. What the portable tables say is asked from
// zrka_cli, which prints them with a star behind every best value.
#include <array>
#include <set>
#include <sstream>

#include "resources/resource.h"
#include "tests/windows/program.h"

namespace {

constexpr int lines = 8, columns = 13;
constexpr int cells[2] = {firstUpperCell, firstLowerCell}, headers[2] = {firstUpperHeader, firstLowerHeader};
constexpr int checks[2] = {firstUpperCheck, firstLowerCheck}, scrolls[2] = {scrollUpperTable, scrollLowerTable};
constexpr int selects[2] = {labelUpperSelect, labelLowerSelect};
constexpr int expertButtons[] = {buttonDistribution, buttonCsvOutput, buttonHarmonize, buttonTablePage};

struct Cell {
    std::string text;
    bool best = false;
    bool operator==(const Cell&) const = default;
};
std::ostream& operator<<(std::ostream& out, const Cell& cell) { return out << cell.text << (cell.best ? "*" : ""); }
using Line  = std::array<Cell, columns>;
using Table = std::vector<Line>;

struct LapDialog : testing::Test {
    Program program;
    HWND dialog = nullptr;
    std::vector<std::string> logs;
    const std::string expert = "[ModeSetting]\r\nExpertMode=2\r\n";

    // Starts on logs with that many laps beside the lap out and the lap in.
    void StartOn(const std::vector<int>& laps, const std::string& settings) {
        program.home.Write("ZRKA.ini", settings);
        program.home.Write("Sector.ini", "[sorrel.crs]\r\nSec1=300\r\nSec2=610\r\n");
        for (size_t i = 0; i < laps.size(); i++) {
            SampleLogOptions options;
            options.laps = laps[i];
            options.seed = i + 1;
            logs.push_back(program.WriteLog(std::string(1, static_cast<char>('a' + i)) + ".zrk", options));
        }
        ASSERT_TRUE(program.Start({logs[0]}));
        for (size_t i = 1; i < logs.size(); i++) {
            program.Type(static_cast<int>('1' + i));
            ASSERT_TRUE(program.AnswerFileDialog("Open", logs[i]));
            ASSERT_TRUE(WaitFor([&] { return IsWindowEnabled(program.main) != FALSE; }));
        }
    }
    void Open() {
        program.Type('D');
        dialog = program.WaitForWindow("Analysis tools");
        ASSERT_TRUE(dialog);
        ASSERT_TRUE(WaitFor([&] { return !Text(cells[0] + columns * (lines - 1)).empty(); }));
        Picture last;  // until it is painted whole
        ASSERT_TRUE(WaitFor([&] {
            Picture now = GrabClient(dialog);
            std::swap(now, last);
            return now == last && ColorCount(last) > 8;
        }));
    }
    void OpenOn(const std::vector<int>& laps, const std::string& settings) {
        ASSERT_NO_FATAL_FAILURE(StartOn(laps, settings));
        ASSERT_NO_FATAL_FAILURE(Open());
    }
    bool IsGone() { return WaitFor([&] { return !IsWindow(dialog); }); }
    void CloseAll() {
        Click(dialog, buttonTableClose);
        EXPECT_TRUE(IsGone());
        EXPECT_EQ(program.Close(), 0);
    }

    HWND Control(int id) const { return GetDlgItem(dialog, id); }
    std::string Text(int id) const { return ControlText(dialog, id); }
    bool Becomes(int id, const std::string& text) const {
        return WaitFor([&] { return Text(id) == text; });
    }
    // Labels and cells are static controls: they answer the button's way down.
    void Press(int id) const {
        PostMessageW(Control(id), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(3, 3));
        PostMessageW(Control(id), WM_LBUTTONUP, 0, MAKELPARAM(3, 3));
    }
    RECT Place(int id) const {
        RECT place;
        GetClientRect(Control(id), &place);
        MapWindowPoints(Control(id), dialog, reinterpret_cast<POINT*>(&place), 2);
        return place;
    }
    // Whether a control's part of the picture has letters in a clear red.
    bool IsRed(const Picture& picture, int id) const {
        const RECT place = Place(id);
        for (int y = place.top; y < place.bottom; y++)
            for (int x = place.left; x < place.right; x++) {
                const uint32_t pixel = picture.At(x, y);
                if ((pixel >> 16 & 255) > 200 && (pixel >> 8 & 255) < 90 && (pixel & 255) < 90) return true;
            }
        return false;
    }
    Table ShownTable(int table) const {
        const Picture picture = GrabClient(dialog);
        Table shown(lines);
        for (int line = 0; line < lines; line++)
            for (int column = 0; column < columns; column++) {
                const int id = cells[table] + line * columns + column;
                shown[line][column] = {Text(id), IsRed(picture, id)};
            }
        return shown;
    }
    std::set<int> CheckedLines(int table) const {
        std::set<int> checked;
        for (int line = 0; line < lines; line++)
            if (ControlChecked(dialog, checks[table] + line)) checked.insert(line);
        return checked;
    }

    Table PortableTable(int file, std::vector<std::string> options) const {
        const std::string slot = std::to_string(file);
        options.insert(options.begin(), {"--home", program.home.Path(), "laps", "--file", slot});
        options.insert(options.end(), logs.begin(), logs.end());
        std::istringstream text(ToolOutput("zrka_cli.exe", options));
        Table table;
        for (std::string row; std::getline(text, row);) {
            std::istringstream parts(row);
            Line line;
            for (Cell& cell : line) {
                std::getline(parts, cell.text, '\t');
                if (!cell.text.empty() && cell.text.back() == '*') {
                    cell.text.pop_back();
                    cell.best = true;
                }
            }
            table.push_back(line);
        }
        return table;
    }
    // Waits until the dialog has drawn what the portable table says, texts and red cells.
    void ExpectTable(int table, int file, const std::vector<std::string>& options) const {
        const Table wanted = PortableTable(file, options);
        ASSERT_EQ(wanted.size(), static_cast<size_t>(lines));
        WaitFor([&] { return ShownTable(table) == wanted; }, 10);
        const Table shown = ShownTable(table);
        for (int line = 0; line < lines; line++)
            for (int column = 0; column < columns; column++)
                EXPECT_EQ(shown[line][column], wanted[line][column]) << "line " << line << ", column " << column;
    }

    SCROLLINFO Scroll(int table) const {
        SCROLLINFO info = {};
        info.cbSize = sizeof info;
        info.fMask = SIF_ALL;
        GetScrollInfo(Control(scrolls[table]), SB_CTL, &info);
        return info;
    }
    void MoveScroll(int table, int code, int position = 0) const {
        SendMessageW(dialog, WM_VSCROLL, MAKEWPARAM(code, position), reinterpret_cast<LPARAM>(Control(scrolls[table])));
    }
    // In the upper or the lower half of the dialog.
    LPARAM MouseOver(int table) const {
        RECT frame;
        GetWindowRect(dialog, &frame);
        const int y = frame.top + (frame.bottom - frame.top) * (table == 0 ? 1 : 3) / 4;
        return MAKELPARAM((frame.left + frame.right) / 2, y);
    }
    void Wheel(int table, int delta) const {
        SendMessageW(dialog, WM_MOUSEWHEEL, MAKEWPARAM(0, delta), MouseOver(table));
    }
};

TEST_F(LapDialog, CellsAndRedValuesOfThreeLogsAreThePortableTablesOnEveryPage) {
    ASSERT_NO_FATAL_FAILURE(OpenOn({7, 9, 8}, expert));
    ExpectTable(0, 1, {"--table", "page1"});
    ExpectTable(1, 2, {"--table", "page1"});
    Press(labelLowerFile);
    ASSERT_TRUE(Becomes(labelLowerFile, "File3"));
    ExpectTable(1, 3, {"--table", "page1"});
    Click(dialog, buttonTablePage);
    ASSERT_TRUE(Becomes(buttonTablePage, "Page 2"));
    ExpectTable(0, 1, {"--table", "page2"});
    ExpectTable(1, 3, {"--table", "page2"});
    Click(dialog, checkSectorTime);
    ASSERT_TRUE(Becomes(headers[0] + 1, "Sec1"));
    EXPECT_TRUE(ControlChecked(dialog, checkSectorTime));
    ExpectTable(0, 1, {"--table", "sectors"});
    ExpectTable(1, 3, {"--table", "sectors"});
    Press(labelLowerFile);
    ASSERT_TRUE(Becomes(labelLowerFile, "File2"));
    ExpectTable(1, 2, {"--table", "sectors"});
    CloseAll();
}

TEST_F(LapDialog, HeadersOfBothTablesChangeWithThePageAndTheSectorView) {
    using Headers = std::array<const char*, columns>;
    constexpr Headers pageOne = {"  LAP   TIME", "   min     Ne", "   max    Ne", " max  VFW", " max  VRW", " max  FSUS", " avr  FSUS",
                                 " max  RSUS", " avr  RSUS", " min  SLIP", " max  SLIP", " min  AUX1", " max  AUX1"};
    constexpr Headers pageTwo = {"  LAP   TIME", " min  LAF1", " max  LAF1", " min  LAF2", " max  LAF2", " max VFSUS", " min VFSUS",
                                 " max VRSUS", " min VRSUS", "", "", " min  AUX2", " max  AUX2"};
    constexpr Headers sectors = {"  LAP   TIME", "Sec1", "Sec2", "Sec3", "Sec4", "Sec5", "Sec6", "Sec7", "", "", "", "Ideal time",
                                 "Lap  Avr. "};
    ASSERT_NO_FATAL_FAILURE(OpenOn({7}, expert));
    const auto expect = [&](int table, Headers wanted) {
        for (int column = 0; column < columns; column++) EXPECT_EQ(Text(headers[table] + column), wanted[column]) << table;
    };
    Headers lower = pageOne;
    lower[1] = "  min   Ne";
    lower[2] = "  max   Ne";
    expect(0, pageOne);
    expect(1, lower);
    Click(dialog, buttonTablePage);
    ASSERT_TRUE(Becomes(buttonTablePage, "Page 2"));
    for (int table : {0, 1}) expect(table, pageTwo);
    Click(dialog, checkSectorTime);
    ASSERT_TRUE(Becomes(headers[1] + 12, "Lap  Avr. "));
    for (int table : {0, 1}) expect(table, sectors);
    Click(dialog, checkSectorTime);  // stays down
    Click(dialog, buttonTablePage);
    ASSERT_TRUE(Becomes(buttonTablePage, "Page 1"));
    EXPECT_FALSE(ControlChecked(dialog, checkSectorTime));
    for (int table : {0, 1}) expect(table, pageOne);
    CloseAll();
}

TEST_F(LapDialog, EveryHeaderSortsItsTableAndLeavesTheOther) {
    ASSERT_NO_FATAL_FAILURE(OpenOn({9, 9}, expert));
    for (int column = 0; column < columns; column++) {
        SCOPED_TRACE(column);
        Press(headers[0] + column);
        ExpectTable(0, 1, {"--table", "page1", "--sort", std::to_string(column + 1)});
    }
    ExpectTable(1, 2, {"--table", "page1"});
    Click(dialog, buttonTablePage);
    ASSERT_TRUE(Becomes(buttonTablePage, "Page 2"));
    for (int column : {1, 5, 6, 7, 8, 12}) {
        SCOPED_TRACE(column);
        Press(headers[1] + column);
        ExpectTable(1, 2, {"--table", "page2", "--sort", std::to_string(column + 1)});
    }
    Click(dialog, checkSectorTime);
    ASSERT_TRUE(Becomes(headers[1] + 1, "Sec1"));
    for (int column : {0, 1, 2, 3}) {
        SCOPED_TRACE(column);
        Press(headers[1] + column);
        ExpectTable(1, 2, {"--table", "sectors", "--sort", std::to_string(column + 1)});
    }
    CloseAll();
}

TEST_F(LapDialog, ScrollBarsStopAtBothEndsAndTheTableFollows) {
    ASSERT_NO_FATAL_FAILURE(OpenOn({15, 6}, expert));  // 17 rows: the first row goes up to 17 - 6 - 1
    const auto expectFirst = [&](int first) {
        SCOPED_TRACE(first);
        EXPECT_EQ(Scroll(0).nPos, first);
        ExpectTable(0, 1, {"--table", "page1", "--first", std::to_string(first)});
    };
    EXPECT_EQ(Scroll(0).nMin, 0);
    EXPECT_EQ(Scroll(0).nMax, 10);
    EXPECT_EQ(Scroll(0).nPage, 1u);
    MoveScroll(0, SB_LINEUP);
    expectFirst(0);
    MoveScroll(0, SB_LINEDOWN);
    expectFirst(1);
    MoveScroll(0, SB_PAGEDOWN);
    expectFirst(5);
    for (int i = 0; i < 4; i++) MoveScroll(0, SB_PAGEDOWN);
    expectFirst(10);
    MoveScroll(0, SB_LINEDOWN);
    expectFirst(10);
    MoveScroll(0, SB_PAGEUP);
    expectFirst(6);
    MoveScroll(0, SB_THUMBTRACK, 3);
    expectFirst(3);
    MoveScroll(0, SB_THUMBPOSITION, 9);  // is not handled
    expectFirst(3);
    MoveScroll(0, SB_TOP);
    expectFirst(0);
    const Table top = ShownTable(0);
    MoveScroll(0, SB_BOTTOM);
    const Table bottom = ShownTable(0), last = PortableTable(1, {"--table", "page1", "--first", "15"});
    for (int line = 0; line < lines; line++)
        EXPECT_EQ(bottom[line], line < 2 || line == lines - 1 ? last[line] : top[line]) << "lines behind the last lap stay";
    EXPECT_EQ(Scroll(1).nMax, 1) << "8 rows";
    CloseAll();
}

TEST_F(LapDialog, TheWheelScrollsTheTableOfItsHalfByOneRowANotch) {
    ASSERT_NO_FATAL_FAILURE(OpenOn({15, 15}, expert));
    Wheel(0, -2 * WHEEL_DELTA);
    EXPECT_EQ(Scroll(0).nPos, 2);
    EXPECT_EQ(Scroll(1).nPos, 0);
    Wheel(1, -WHEEL_DELTA / 2);
    EXPECT_EQ(Scroll(1).nPos, 0) << "half a notch";
    Wheel(1, -WHEEL_DELTA / 2);
    EXPECT_EQ(Scroll(1).nPos, 1);
    Wheel(0, 5 * WHEEL_DELTA);
    EXPECT_EQ(Scroll(0).nPos, 0);
    ExpectTable(1, 2, {"--table", "page1", "--first", "1"});
    CloseAll();
}

TEST_F(LapDialog, NoCellIsSeenEmptyWhileTheTableScrolls) {
    ASSERT_NO_FATAL_FAILURE(OpenOn({15}, expert));
    std::vector<RECT> places;
    for (int cell = 0; cell < lines * columns; cell++) places.push_back(Place(cells[0] + cell));
    const auto isEmpty = [](const Picture& picture, const RECT& place) {
        for (int y = place.top; y < place.bottom; y++)
            for (int x = place.left; x < place.right; x++)
                if (picture.At(x, y) != picture.At(place.left, place.top)) return false;
        return true;
    };
    const auto turn = [&](int notches) {
        PostMessageW(dialog, WM_MOUSEWHEEL, MAKEWPARAM(0, notches * WHEEL_DELTA), MouseOver(0));
    };
    for (int i = 0; i < 400; i++) turn(i % 2 == 0 ? -1 : 1);
    turn(-3);
    int pictures = 0, moving = 0, empty = 0;
    EXPECT_TRUE(WaitFor([&] {
        for (int i = 0; i < 10; i++) {
            const Picture picture = GrabClient(dialog);
            moving += Scroll(0).nPos != 3;
            for (const RECT& place : places) empty += isEmpty(picture, place);
            pictures++;
        }
        return Scroll(0).nPos == 3;
    }));
    EXPECT_EQ(empty, 0) << "in " << pictures << " pictures";
    EXPECT_GT(moving, 3) << "seen while the table moved, of " << pictures;
    ExpectTable(0, 1, {"--table", "page1", "--first", "3"});
    CloseAll();
}

TEST_F(LapDialog, ACheckBoxChangesAveragesAndRedValuesAndTheLastOneIsDisabled) {
    ASSERT_NO_FATAL_FAILURE(OpenOn({5}, expert));  // rows 0 to 6, of which 1 to 5 count
    EXPECT_EQ(CheckedLines(0), (std::set<int>{1, 2, 3, 4, 5}));
    for (int table : {0, 1})
        for (int line = 0; line < lines; line++)
            EXPECT_EQ(IsWindowEnabled(GetDlgItem(dialog, checks[table] + line)) != FALSE, line < lines - 1);
    Click(dialog, checks[0] + 2);
    ASSERT_TRUE(WaitFor([&] { return !ControlChecked(dialog, checks[0] + 2); }));
    ExpectTable(0, 1, {"--table", "page1", "--check", "1,3,4,5"});
    Click(dialog, checks[0] + 0);
    ASSERT_TRUE(WaitFor([&] { return ControlChecked(dialog, checks[0] + 0); }));
    ExpectTable(0, 1, {"--table", "page1", "--check", "0,1,3,4,5"});
    Click(dialog, checks[0] + lines - 1);
    Click(dialog, checks[0] + 2);
    ASSERT_TRUE(WaitFor([&] { return ControlChecked(dialog, checks[0] + 2); }));
    EXPECT_EQ(CheckedLines(0), (std::set<int>{0, 1, 2, 3, 4, 5}));
    CloseAll();
}

TEST_F(LapDialog, SelectCyclesAllOffAndAllOnForItsTableAlone) {
    ASSERT_NO_FATAL_FAILURE(OpenOn({5, 5}, expert));
    EXPECT_EQ(Text(selects[0]), "Select");
    Press(selects[0]);
    ASSERT_TRUE(Becomes(selects[0], "ALL off"));
    EXPECT_TRUE(CheckedLines(0).empty());
    EXPECT_EQ(CheckedLines(1), (std::set<int>{1, 2, 3, 4, 5}));
    Press(selects[0]);
    ASSERT_TRUE(Becomes(selects[0], "ALL on"));
    EXPECT_EQ(CheckedLines(0), (std::set<int>{0, 1, 2, 3, 4, 5, 6}));
    Press(selects[0]);
    ASSERT_TRUE(Becomes(selects[0], "ALL off"));
    Click(dialog, checks[0] + 4);
    ASSERT_TRUE(Becomes(selects[0], "Select"));
    EXPECT_EQ(CheckedLines(0), (std::set<int>{4}));
    EXPECT_EQ(Text(selects[1]), "Select");
    CloseAll();
}

TEST_F(LapDialog, KeepHoldsTheChecksUntilAFileIsOpened) {
    ASSERT_NO_FATAL_FAILURE(OpenOn({5}, expert));
    const std::set<int> all = {1, 2, 3, 4, 5}, some = {1, 2, 4, 5};
    const auto reopen = [&] {
        Click(dialog, buttonTableClose);
        ASSERT_TRUE(IsGone());
        Open();
    };
    const auto uncheck = [&] {
        Click(dialog, checks[0] + 3);
        ASSERT_TRUE(WaitFor([&] { return CheckedLines(0) == some; }));
    };
    uncheck();
    reopen();
    EXPECT_EQ(CheckedLines(0), all);
    uncheck();
    Click(dialog, checkKeep);
    ASSERT_TRUE(WaitFor([&] { return ControlChecked(dialog, checkKeep); }));
    reopen();
    EXPECT_TRUE(ControlChecked(dialog, checkKeep));
    EXPECT_EQ(CheckedLines(0), some);
    Click(dialog, buttonTableClose);
    ASSERT_TRUE(IsGone());
    program.Type('2');
    ASSERT_TRUE(program.AnswerFileDialog("Open", logs[0]));
    ASSERT_TRUE(WaitFor([&] { return IsWindowEnabled(program.main) != FALSE; }));
    Open();
    EXPECT_FALSE(ControlChecked(dialog, checkKeep));
    EXPECT_EQ(CheckedLines(0), all);
    CloseAll();
}

TEST_F(LapDialog, BelowExpertTheToolsAreHiddenAndTheLowerFileStaysFile2) {
    for (const int level : {0, 1}) {
        SCOPED_TRACE(level);
        logs.clear();
        ASSERT_NO_FATAL_FAILURE(OpenOn({3}, "[ModeSetting]\r\nExpertMode=" + std::to_string(level) + "\r\n"));
        for (const int id : expertButtons) EXPECT_FALSE(IsWindowVisible(Control(id))) << id;
        EXPECT_FALSE(IsWindowVisible(Control(buttonCourseReview)));
        for (const int id : {buttonSimulation, buttonLafHistogram, checkSectorTime, checkKeep, buttonTableClose})
            EXPECT_TRUE(IsWindowVisible(Control(id))) << id;
        Press(labelLowerFile);
        Click(dialog, checkSectorTime);  // behind the press in the queue
        ASSERT_TRUE(Becomes(headers[0] + 1, "Sec1"));
        EXPECT_EQ(Text(labelLowerFile), "File2");
        CloseAll();
    }
}

TEST_F(LapDialog, EveryControlStandsInsideTheDialogWithItsCaption) {
    ASSERT_NO_FATAL_FAILURE(OpenOn({3}, expert));
    const struct { int id; const char* caption; } captions[] = {
        {checkSectorTime, "Estimation SectorTime"}, {buttonHarmonize, "TireLength Harmonize"}, {buttonTablePage, "Page 1"},
        {buttonLafHistogram, " LAF  Histogram"},    {buttonDistribution, "Distribution analysis"},
        {buttonSimulation, "Final Simulation"},     {buttonCsvOutput, "   CSV     Output"}, {buttonCourseReview, "CurseMAP Review"},
        {checkKeep, "Keep"},                        {buttonTableClose, "CLOSE"},               {labelLowerFile, "File2"}};
    for (const auto& row : captions) EXPECT_EQ(Text(row.id), row.caption);
    for (const int id : expertButtons) EXPECT_TRUE(IsWindowVisible(Control(id))) << id;
    EXPECT_FALSE(IsWindowVisible(Control(buttonCourseReview)));
    EXPECT_EQ(ControlsInPlace(dialog), 2u * (lines * columns + columns + lines + 1 + 2) + 10u - 1u);
    CloseAll();
}

TEST_F(LapDialog, AClickOnAValueClosesTheDialogAndTheGraphGoesThere) {
    ASSERT_NO_FATAL_FAILURE(StartOn({5}, expert));
    const auto after = [&](int line, int column) {
        Open();
        Press(cells[0] + line * columns + column);
        EXPECT_TRUE(IsGone());
        return program.RestingPicture();
    };
    const Picture fastest = after(2, 2), start = after(3, 0), fastestAgain = after(2, 2);
    constexpr RECT traces = {640, 0, 1024, 600};
    const int elsewhere = start.DifferentPixels(fastest, traces);
    EXPECT_GT(elsewhere, 2000);
    EXPECT_LT(fastestAgain.DifferentPixels(fastest, traces) * 3, elsewhere) << "a glide from the other side ends a sample beside";
    EXPECT_EQ(program.Close(), 0);
}

TEST_F(LapDialog, AClickOnAMeanAnEmptyCellOrAnEmptyLineKeepsItOpen) {
    ASSERT_NO_FATAL_FAILURE(OpenOn({3}, expert));
    for (const int cell : {1 * columns + 6, 1 * columns + 8, (lines - 1) * columns + 2, (lines - 1) * columns}) {
        Press(cells[0] + cell);
        Press(cells[1] + cell);
    }
    Click(dialog, buttonTablePage);  // behind the presses in the queue
    ASSERT_TRUE(Becomes(buttonTablePage, "Page 2"));
    CloseAll();
}

TEST_F(LapDialog, TheToolBarOpensItToo) {
    ASSERT_NO_FATAL_FAILURE(StartOn({3}, expert));
    Click(program.toolbar, buttonAfMap);
    dialog = program.WaitForWindow("Analysis tools");
    ASSERT_TRUE(dialog);
    ExpectTable(0, 1, {"--table", "page1"});
    PostMessageW(dialog, WM_SYSCOMMAND, SC_CLOSE, 0);
    EXPECT_TRUE(IsGone());
    EXPECT_EQ(program.Close(), 0);
}

TEST_F(LapDialog, OtherSprocketsOfTheFinalSimulationChangeTheSpeedsOfFile1) {
    ASSERT_NO_FATAL_FAILURE(OpenOn({4, 4}, expert));
    const Table upper = ShownTable(0), lower = ShownTable(1);
    Click(dialog, buttonSimulation);
    const HWND simulation = program.WaitForWindow("Final Simulation");
    ASSERT_TRUE(simulation);
    EXPECT_FALSE(IsWindowEnabled(dialog));
    PostMessageW(GetDlgItem(simulation, listFrontTeeth), WM_KEYDOWN, VK_END, 0);  // 16 logged, 22 the last of the list
    ASSERT_TRUE(WaitFor([&] { return ControlText(simulation, labelSimRatio) == "1.909"; }));
    Click(simulation, IDOK);
    ASSERT_TRUE(WaitFor([&] { return !IsWindow(simulation); }));
    const float factor = 42.0f / 22.0f / (42.0f / 16.0f);
    for (int line = 1; line < 4; line++)
        for (const int column : {1, 2}) {
            const int speed = static_cast<int>(std::stof(upper[line][column].text) * factor);
            EXPECT_TRUE(Becomes(cells[0] + line * columns + column, std::to_string(speed)));
        }
    EXPECT_EQ(Text(cells[0] + columns), upper[1][0].text) << "the lap time stays";
    EXPECT_EQ(ShownTable(1), lower);
    CloseAll();
}

}  // namespace
