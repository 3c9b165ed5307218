// Dialog 1028 as a user meets it, in the real program: from the analysis tools to the file.
#include <algorithm>
#include <thread>

#include "resources/resource.h"
#include "tests/windows/program.h"

namespace {

constexpr const char* title = "The selection of items and range";
constexpr const char* columns[] = {"Distance", "Lap", "Ne", "TH", "VFW", "VRW", "FrSUS", "RrSUS", "LAF1", "LAF2", "VB", "AUX1", "AUX2",
                                   "SlipRatio", "FrSusSpeed", "RrSusSpeed"};

std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    for (size_t at = 0, end; (end = text.find("\r\n", at)) != std::string::npos; at = end + 2) lines.push_back(text.substr(at, end - at));
    return lines;
}

struct CsvExportDialog : testing::Test {
    Program program;
    HWND dialog = nullptr;
    std::string log, target = program.home.Path("out \xE3\x83\xAD\xE3\x82\xB0.csv");

    void SetUp() override {
        program.home.Write("ZRKA.ini", "[ModeSetting]\r\nExpertMode=2\r\nAnimeMode=0\r\n[Window]\r\nx2=1000\r\ny2=700\r\n");
        SampleLogOptions options;
        options.laps = 3;
        log = program.WriteLog("a.zrk", options);
        ASSERT_TRUE(program.Start({log}));
    }
    // By the way that a user takes.
    void Open() {
        program.RestingPicture();
        program.Type('D');
        const HWND tools = program.WaitForWindow("Analysis tools");
        ASSERT_TRUE(tools);
        ASSERT_TRUE(IsWindowVisible(GetDlgItem(tools, buttonCsvOutput)));
        Click(tools, buttonCsvOutput);
        dialog = program.WaitForWindow(title);
        ASSERT_TRUE(dialog);
        EXPECT_FALSE(program.Find("Analysis tools"));
    }
    void Check(int column, bool on) {
        if (ControlChecked(dialog, firstCsvColumn + column) != on) Click(dialog, firstCsvColumn + column);
        EXPECT_TRUE(WaitFor([&] { return ControlChecked(dialog, firstCsvColumn + column) == on; }));
    }
    void CheckOnly(std::initializer_list<int> wanted) {
        for (int column = 0; column < static_cast<int>(std::size(columns)); column++)
            Check(column, std::find(wanted.begin(), wanted.end(), column) != wanted.end());
    }
    void ChooseRate(int rate) {
        SendDlgItemMessageW(dialog, listCsvRate, CB_SETCURSEL, static_cast<WPARAM>(rate), 0);
        SendMessageW(dialog, WM_COMMAND, MAKEWPARAM(listCsvRate, CBN_SELCHANGE), reinterpret_cast<LPARAM>(GetDlgItem(dialog, listCsvRate)));
    }
    std::string Written() const { return program.home.Read("out \xE3\x83\xAD\xE3\x82\xB0.csv"); }
    // What the command line writes for the same choice.
    std::string FromTheCommandLine(std::vector<std::string> options) {
        const std::string path = program.home.Path("cli.csv");
        options.insert(options.begin(), {"--home", program.home.Path(), "export"});
        options.insert(options.end(), {path, log});
        EXPECT_EQ(RunTool("zrka_cli.exe", options), 0);
        return program.home.Read("cli.csv");
    }
};

TEST_F(CsvExportDialog, EveryControlIsThereWithItsCaption) {
    Open();
    EXPECT_EQ(ControlText(dialog, checkCsvTime), "Time");
    EXPECT_TRUE(ControlChecked(dialog, checkCsvTime));
    EXPECT_FALSE(IsWindowEnabled(GetDlgItem(dialog, checkCsvTime)));
    for (int column = 0; column < 16; column++) EXPECT_EQ(ControlText(dialog, firstCsvColumn + column), columns[column]);
    EXPECT_FALSE(ControlChecked(dialog, firstCsvColumn));
    EXPECT_TRUE(ControlChecked(dialog, firstCsvColumn + 2)) << "Ne is on the graph";
    EXPECT_EQ(ControlText(dialog, buttonCsvLaps), "Selected Lap");
    EXPECT_EQ(ControlText(dialog, buttonCsvRange), "Range Select");
    EXPECT_EQ(ControlText(dialog, IDCANCEL), "Cancel");
    EXPECT_TRUE(GetDlgItem(dialog, progressCsv));
    const char* rates[] = {"200Hz (5ms)", "100Hz(10ms)", "50Hz (20ms)", "10Hz(100ms)", "1Hz(1000ms)"};
    EXPECT_EQ(SendDlgItemMessageW(dialog, listCsvRate, CB_GETCOUNT, 0, 0), 5);
    EXPECT_EQ(SendDlgItemMessageW(dialog, listCsvRate, CB_GETCURSEL, 0, 0), 0);
    for (int rate = 0; rate < 5; rate++) {
        wchar_t text[32] = L"";
        SendDlgItemMessageW(dialog, listCsvRate, CB_GETLBTEXT, static_cast<WPARAM>(rate), reinterpret_cast<LPARAM>(text));
        for (int i = 0; rates[rate][i]; i++) EXPECT_EQ(text[i], static_cast<wchar_t>(rates[rate][i]));
    }
    Click(dialog, IDCANCEL);
    EXPECT_TRUE(program.WaitUntilGone(title));
    EXPECT_EQ(program.Close(), 0);
}

TEST_F(CsvExportDialog, SelectedLapsAreWrittenThroughTheSystemsDialog) {
    Open();
    CheckOnly({0, 1, 2, 13});
    ChooseRate(3);
    Click(dialog, buttonCsvLaps);
    ASSERT_TRUE(program.WaitForWindow("Save As"));
    for (const int id : {buttonCsvLaps, buttonCsvRange, static_cast<int>(IDCANCEL), listCsvRate, firstCsvColumn})
        EXPECT_FALSE(IsWindowEnabled(GetDlgItem(dialog, id))) << id;
    EXPECT_TRUE(program.AnswerFileDialog("Save As", target));
    EXPECT_TRUE(program.AnswerBox("Saved", "Done."));
    EXPECT_TRUE(program.WaitUntilGone(title));
    const std::string written = Written();
    EXPECT_EQ(written.substr(0, 27), "Time,Distance,LAP,Ne,Slip\r\n");
    EXPECT_GT(Lines(written).size(), 100u);
    EXPECT_EQ(written, FromTheCommandLine({"--rate", "10", "--columns", "Distance,Lap,Ne,SlipRatio"}));
    EXPECT_EQ(program.Close(), 0);
}

TEST_F(CsvExportDialog, ARangeIsMarkedOnTheGraphAndWrittenByTheNextPress) {
    Open();
    CheckOnly({3});
    Click(dialog, buttonCsvRange);
    EXPECT_TRUE(program.WaitUntilGone(title));
    SetForegroundWindow(program.main);
    POINT place = {700, 300};  // right of the cursor line at 500
    ClientToScreen(program.main, &place);
    SetCursorPos(place.x, place.y);
    program.RestingPicture();  // the program, at rest, has looked at the pointer
    PostMessageW(program.main, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(700, 300));
    ASSERT_TRUE(program.WaitForWindow("Save As"));
    dialog = program.Find(title);
    ASSERT_TRUE(dialog);
    EXPECT_FALSE(IsWindowEnabled(GetDlgItem(dialog, buttonCsvLaps)));
    EXPECT_TRUE(program.AnswerFileDialog("Save As", target));
    EXPECT_TRUE(program.AnswerBox("Saved", "Done."));
    EXPECT_TRUE(program.WaitUntilGone(title));
    const std::string written = Written();
    const size_t rows = Lines(written).size() - 1;
    EXPECT_GT(rows, 100u);
    EXPECT_EQ(written, FromTheCommandLine({"--columns", "TH", "--range", "0-" + std::to_string(rows - 1)}));
    // The export over, the graph shows what it did before.
    PostMessageW(program.main, WM_LBUTTONUP, 0, 0);
    Open();
    for (const int column : {2, 3, 4}) EXPECT_TRUE(ControlChecked(dialog, firstCsvColumn + column)) << columns[column];
    Click(dialog, IDCANCEL);
    EXPECT_TRUE(program.WaitUntilGone(title));
    EXPECT_EQ(program.Close(), 0);
}

TEST_F(CsvExportDialog, ACancelledSaveDialogSaysNotSaved) {
    Open();
    Click(dialog, buttonCsvLaps);
    const HWND save = program.WaitForWindow("Save As");
    ASSERT_TRUE(save);
    Click(save, IDCANCEL);
    EXPECT_TRUE(program.AnswerBox("Error !!", "Not Saved !!"));
    EXPECT_TRUE(program.WaitUntilGone(title));
    EXPECT_EQ(program.Close(), 0);
}

TEST_F(CsvExportDialog, AFileThatIsOpenElsewhereStandsAndIsToldOnce) {
    program.home.Write("held.csv", "what I had");
    Open();
    Click(dialog, buttonCsvLaps);
    const std::wstring held = (program.home.path / "held.csv").wstring();
    const HANDLE handle = CreateFileW(held.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(handle, INVALID_HANDLE_VALUE);
    const HWND save = program.WaitForWindow("Save As");
    ASSERT_TRUE(save);
    std::thread answers([&] { program.AnswerFileDialog("Save As", program.home.Path("held.csv")); });
    const auto replace = [&] {  // the system's own question
        HWND found = nullptr;
        EnumWindows(
            [](HWND window, LPARAM parameter) -> BOOL {
                if (GetDlgItem(window, IDYES)) *reinterpret_cast<HWND*>(parameter) = window;
                return TRUE;
            },
            reinterpret_cast<LPARAM>(&found));
        return found;
    };
    EXPECT_TRUE(WaitFor([&] { return replace() != nullptr; }));
    if (const HWND question = replace()) Click(question, IDYES);
    answers.join();
    EXPECT_TRUE(program.AnswerBox("Error !!", "Not Saved !!"));
    EXPECT_TRUE(program.WaitUntilGone(title));
    CloseHandle(handle);
    EXPECT_EQ(program.home.Read("held.csv"), "what I had");
    EXPECT_EQ(program.Close(), 0);
}

}  // namespace
