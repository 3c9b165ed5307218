// Dialog 1027 as a user meets it: a CSV log opened through the system's dialog.
#include <windows.h>

#include <commctrl.h>

#include "platform/win32/wide.h"
#include "resources/resource.h"
#include "tests/windows/program.h"

namespace {

constexpr int rows = 16, shownRows = 13;
constexpr const char* captions[rows] = {"Base Time(s)", " Ne(rpm)", "TH(%)", "VFW(km/h)", "VRW(kn/h)", "FrSUS(mm)", "RrSUS(mm)", "LAF1",
                                        "LAF2", "VB(V)", "AUX1", "AUX2", "LAP", "Distance", "", ""};
constexpr const char* title = "[CSV] Load data selection";
constexpr RECT traces = {600, 100, 10000, 10000};  // where the list of keys, which fades, is not

struct CsvImportDialog : testing::Test {
    Program program;
    HWND dialog = nullptr;

    void SetUp() override {
        program.home.Write("csvlabel.ini",
                           "[Time]\r\n0=Time\r\n[Ne]\r\n0=RPM\r\n[TH]\r\n0=TPS\r\n[VFW]\r\n0=Speed\r\n[AUX2]\r\n0=\xE6\xB0\xB4\xE6\xB8\xA9\r\n"
                           "[LAP]\r\n0=Lap\r\n1=Distance\r\n");
        ASSERT_TRUE(program.Start());
    }
    std::string WriteCsv(const std::string& name, int lines, const std::string& titles = "Time,RPM,TPS,Speed,\xE6\xB0\xB4\xE6\xB8\xA9,Lap,Distance") const {
        std::string text = titles + "\r\n";
        for (int i = 1; i <= lines; i++) {
            char line[96];
            std::snprintf(line, sizeof line, "%.2f,%d,%d.5,%d.0,%d.0,%d,%d\r\n", i * 0.01, 6000 + i % 500 * 14, i % 100, 60 + i % 120,
                          i % 400, 1 + i / 500, i % 500);
            text += line;
        }
        return program.home.Write(name, text);
    }
    void Open(const std::string& path) {
        Click(program.toolbar, 1033);
        ASSERT_TRUE(program.WaitForWindow("Open"));
        ASSERT_TRUE(program.AnswerFileDialog("Open", path));
        dialog = program.WaitForWindow(title);
        ASSERT_TRUE(dialog);
    }
    HWND List(int row) const { return GetDlgItem(dialog, firstCsvList + row); }
    int Selected(int row) const { return static_cast<int>(SendMessageW(List(row), CB_GETCURSEL, 0, 0)); }
    std::string Item(int row, int item) const {
        wchar_t text[256] = L"";
        SendMessageW(List(row), CB_GETLBTEXT, static_cast<WPARAM>(item), reinterpret_cast<LPARAM>(text));
        return Utf8(text);
    }
    int Items(int row) const { return static_cast<int>(SendMessageW(List(row), CB_GETCOUNT, 0, 0)); }
    // As a user would: the list's own window tells the dialog.
    void Choose(int row, int item) const {
        SendMessageW(List(row), CB_SETCURSEL, static_cast<WPARAM>(item), 0);
        SendMessageW(dialog, WM_COMMAND, MAKEWPARAM(firstCsvList + row, CBN_SELCHANGE), reinterpret_cast<LPARAM>(List(row)));
    }
};

TEST_F(CsvImportDialog, RowsStandThereWithTheirCaptionsAndArePreselected) {
    Open(WriteCsv("a.csv", 300));
    const char* const wanted[shownRows] = {"Time", "RPM", "TPS", "Speed", " - No data - ", " - No data - ", " - No data - ", " - No data - ",
                                           " - No data - ", " - No data - ", " - No data - ", "\xE6\xB0\xB4\xE6\xB8\xA9", "Lap"};
    for (int row = 0; row < rows; row++) {
        SCOPED_TRACE(row);
        EXPECT_EQ(ControlText(dialog, firstCsvCaption + row), captions[row]);
        for (int first : {firstCsvList, firstCsvCaption}) EXPECT_EQ(IsWindowVisible(GetDlgItem(dialog, first + row)) != FALSE, row < shownRows);
        EXPECT_EQ(Items(row), row == 0 ? 6 + 7 : 7 + 1);
        EXPECT_EQ(Item(row, Selected(row)), row < shownRows ? wanted[row] : " - No data - ");
    }
    const char* const times[] = {"5ms(200Hz)", "10ms(100Hz)", "25ms(40Hz)", "50ms(20Hz)", "100ms(10Hz)", "300ms(3.33Hz)", "Time"};
    for (int item = 0; item < 7; item++) EXPECT_EQ(Item(0, item), times[item]);
    EXPECT_EQ(ControlText(dialog, editCsvNotes), "");
    EXPECT_EQ(ControlText(dialog, IDOK), "OK");
    EXPECT_TRUE(IsWindowEnabled(GetDlgItem(dialog, IDOK)));
    PostMessageW(dialog, WM_SYSCOMMAND, SC_CLOSE, 0);
    EXPECT_TRUE(program.WaitUntilGone(title));
    EXPECT_EQ(program.Close(), 0);
}

TEST_F(CsvImportDialog, ControlsStandInsideTheDialogAndBesideEachOther) {
    Open(WriteCsv("a.csv", 300));
    EXPECT_EQ(ControlsInPlace(dialog), 2u * shownRows + 4u);
    PostMessageW(dialog, WM_SYSCOMMAND, SC_CLOSE, 0);
    EXPECT_TRUE(program.WaitUntilGone(title));
    EXPECT_EQ(program.Close(), 0);
}

TEST_F(CsvImportDialog, CheckBoxSaysWhatTheLapColumnHolds) {
    Open(WriteCsv("a.csv", 300));
    EXPECT_TRUE(ControlChecked(dialog, checkCsvLapType));
    EXPECT_EQ(ControlText(dialog, checkCsvLapType), "LAP Number Type");
    Click(dialog, checkCsvLapType);
    EXPECT_TRUE(WaitFor([&] { return ControlText(dialog, checkCsvLapType) == "LAP Distance Type"; }));
    EXPECT_FALSE(ControlChecked(dialog, checkCsvLapType));
    PostMessageW(dialog, WM_SYSCOMMAND, SC_CLOSE, 0);
    EXPECT_TRUE(program.WaitUntilGone(title));
    EXPECT_EQ(program.Close(), 0);
}

TEST_F(CsvImportDialog, OkImportsWithNotesAndProgressAndTheTracesAppear) {
    const std::string log = WriteCsv("a.csv", 3000);
    const Picture before = program.RestingPicture();
    Open(log);
    EXPECT_FALSE(IsWindowEnabled(program.toolbar));
    Click(dialog, IDOK);
    // Notes and bar stand half a second at the end.
    EXPECT_TRUE(WaitFor([&] { return ControlText(dialog, editCsvNotes) == "Detected Timebase 10ms(100Hz)\r\n"; }));
    EXPECT_TRUE(WaitFor([&] { return SendDlgItemMessageW(dialog, progressCsvLoad, PBM_GETPOS, 0, 0) == 300; }));
    EXPECT_FALSE(IsWindowEnabled(List(0)));
    EXPECT_FALSE(IsWindowEnabled(GetDlgItem(dialog, IDOK)));
    EXPECT_TRUE(program.WaitUntilGone(title));
    EXPECT_TRUE(WaitFor([&] { return IsWindowEnabled(program.toolbar) != FALSE; }));
    EXPECT_GT(program.RestingPicture().DifferentPixels(before, traces), 1000);
    EXPECT_EQ(program.Close(), 0);
}

TEST_F(CsvImportDialog, SelectionOfTheUserCountsAtOk) {
    Open(WriteCsv("a.csv", 3000, "Zeit,RPM,TPS,Speed,x,Lap,Distance"));
    EXPECT_EQ(Selected(0), -1);
    Choose(0, 1);  // 10 ms
    Choose(1, 7);  // no engine speed
    Click(dialog, IDOK);
    EXPECT_TRUE(program.WaitUntilGone(title));
    const Picture chosen = program.RestingPicture();
    Open(WriteCsv("b.csv", 3000, "Zeit,RPM,TPS,Speed,x,Lap,Distance"));
    Choose(0, 1);
    Click(dialog, IDOK);
    EXPECT_TRUE(program.WaitUntilGone(title));
    EXPECT_GT(program.RestingPicture().DifferentPixels(chosen, traces), 300);  // its trace is there
    EXPECT_EQ(program.Close(), 0);
}

TEST_F(CsvImportDialog, TimeBaseThatCannotBeUsedIsToldOverTheDialog) {
    Open(WriteCsv("a.csv", 300, "Zeit,RPM,TPS,Speed,x,Lap,Distance"));
    Click(dialog, IDOK);
    EXPECT_TRUE(program.AnswerBox("File Error!!", "The BaseTime that is not compatible."));
    EXPECT_TRUE(program.WaitUntilGone(title));
    EXPECT_EQ(program.Close(), 0);
}

struct CsvImportGivenUp : CsvImportDialog {
    // A log of a rider of its own.
    void OpenLog(int button, const std::string& name, uint64_t seed) {
        SampleLogOptions options;
        options.laps = 1;
        options.seed = seed;
        Click(program.toolbar, button);
        ASSERT_TRUE(program.WaitForWindow("Open"));
        ASSERT_TRUE(program.AnswerFileDialog("Open", program.WriteLog(name, options)));
        ASSERT_TRUE(WaitFor([&] { return IsWindowEnabled(program.toolbar) != FALSE; }));
    }
    // Opens a CSV log for File 1, closes its dialog without OK, and expects the picture of before, but for File 1's title.
    void GiveUpAndCompare() {
        ASSERT_TRUE(program.LetKeyListFade());
        const Picture before = program.RestingPicture();
        Open(WriteCsv("another name.csv", 3000));
        PostMessageW(dialog, WM_SYSCOMMAND, SC_CLOSE, 0);
        ASSERT_TRUE(program.WaitUntilGone(title));
        ASSERT_TRUE(WaitFor([&] { return IsWindowEnabled(program.toolbar) != FALSE; }));
        // The load that was given up lets its log fade in once more.
        const RECT fileTitle = {10, 16, 300, 32};
        const Picture after = program.RestingPicture();
        const int different = after.DifferentPixels(before);
        EXPECT_GT(different, 20);
        EXPECT_EQ(after.DifferentPixels(before, fileTitle), different);
    }
};
TEST_F(CsvImportGivenUp, LeavesTheLogThatWasThereAndTakesTheTitle) {
    const Picture empty = program.RestingPicture();
    OpenLog(1033, "a.zrk", 1);
    EXPECT_GT(program.RestingPicture().DifferentPixels(empty, traces), 1000);
    GiveUpAndCompare();
    EXPECT_EQ(program.Close(), 0);
}

TEST_F(CsvImportGivenUp, LeavesALogInFile2) {
    const Picture empty = program.RestingPicture();
    OpenLog(1034, "b.zrk", 2);
    EXPECT_GT(program.RestingPicture().DifferentPixels(empty, traces), 1000);
    GiveUpAndCompare();
    EXPECT_EQ(program.Close(), 0);
}

TEST_F(CsvImportGivenUp, LeavesTwoLogsBesideEachOther) {
    OpenLog(1033, "a.zrk", 1);
    const Picture alone = program.RestingPicture();
    OpenLog(1034, "b.zrk", 2);
    EXPECT_GT(program.RestingPicture().DifferentPixels(alone, traces), 1000);
    GiveUpAndCompare();
    EXPECT_EQ(program.Close(), 0);
}

}  // namespace
