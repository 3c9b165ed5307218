// Dialog 1025 as a user meets it.
#include "platform/win32/wide.h"
#include "resources/resource.h"
#include "tests/windows/program.h"

namespace {

// The sample log is of a bike with 16 and 42 teeth and a rear tyre of 2010 mm.
struct SimulationDialog : testing::Test {
    Program program{"dialog_stand.exe"};
    HWND dialog = nullptr;

    void Open(const std::string& settings = "", bool withLog = true) {
        program.home.Write("ZRKA.ini", settings);
        SampleLogOptions options;
        options.laps = 1;
        std::vector<std::string> arguments = {"1025", "0"};
        if (withLog) arguments.push_back(program.WriteLog("a.zrk", options));
        ASSERT_TRUE(program.Start(arguments));
        dialog = program.WaitForWindow("Final Simulation");
        ASSERT_TRUE(dialog);
    }
    void PressOk() {
        Click(dialog, IDOK);
        EXPECT_EQ(program.ExitCode(), 0);
    }
    std::string Text(int id) const { return ControlText(dialog, id); }
    bool Becomes(int id, const std::string& text) const {
        return WaitFor([&] { return Text(id) == text; });
    }
    std::vector<std::string> Items(int list) const {
        std::vector<std::string> items;
        const int count = static_cast<int>(SendDlgItemMessageW(dialog, list, CB_GETCOUNT, 0, 0));
        for (int i = 0; i < count; i++) {
            wchar_t text[16] = L"";
            SendDlgItemMessageW(dialog, list, CB_GETLBTEXT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(text));
            items.push_back(Utf8(text));
        }
        return items;
    }
    void Key(int control, int key) const { PostMessageW(GetDlgItem(dialog, control), WM_KEYDOWN, static_cast<WPARAM>(key), 0); }
    void Press(int label) const {
        PostMessageW(GetDlgItem(dialog, label), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(3, 3));
        PostMessageW(GetDlgItem(dialog, label), WM_LBUTTONUP, 0, MAKELPARAM(3, 3));
    }
    void Focus(int id) const { SendMessageW(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(GetDlgItem(dialog, id)), TRUE); }
};

TEST_F(SimulationDialog, ShowsTheLogAndTheSimulatedValuesInTheirGroups) {
    ASSERT_NO_FATAL_FAILURE(Open());
    EXPECT_EQ(Text(labelFrontTeeth), "16");
    EXPECT_EQ(Text(labelRearTeeth), "42");
    EXPECT_EQ(Text(labelLoggedRatio), "2.625");
    EXPECT_EQ(Text(labelSimRatio), "2.625");
    EXPECT_EQ(Text(labelLoggedTire), "2010");
    EXPECT_EQ(Text(editSimTire), "2010");
    EXPECT_EQ(Text(listFrontTeeth), "16");
    EXPECT_EQ(Text(listRearTeeth), "42");
    EXPECT_EQ(Text(IDOK), "OK");
    EXPECT_EQ(Text(IDCANCEL), "Reset");
    for (const wchar_t* group : {L"Final Ratio", L"Tire Length"}) EXPECT_TRUE(FindWindowExW(dialog, nullptr, L"Button", group));
    PressOk();
}

TEST_F(SimulationDialog, ListsHoldEveryNumberOfTeeth) {
    ASSERT_NO_FATAL_FAILURE(Open());
    const struct { int list, first, last; } lists[] = {{listFrontTeeth, 13, 22}, {listRearTeeth, 30, 70}};
    for (const auto& row : lists) {
        std::vector<std::string> wanted;
        for (int teeth = row.first; teeth <= row.last; teeth++) wanted.push_back(std::to_string(teeth));
        EXPECT_EQ(Items(row.list), wanted);
    }
    PressOk();
}

TEST_F(SimulationDialog, ASelectionShowsItsRatioAndResetGoesBack) {
    ASSERT_NO_FATAL_FAILURE(Open());
    Key(listFrontTeeth, VK_DOWN);
    EXPECT_TRUE(Becomes(labelSimRatio, "2.471"));
    Key(listRearTeeth, VK_END);
    EXPECT_TRUE(Becomes(labelSimRatio, "4.118"));
    SetControlText(dialog, editSimTire, "1900");
    EXPECT_EQ(Text(labelLoggedRatio), "2.625");
    Click(dialog, IDCANCEL);
    EXPECT_TRUE(Becomes(labelSimRatio, "2.625"));
    EXPECT_TRUE(Becomes(editSimTire, "2010"));
    EXPECT_EQ(Text(listFrontTeeth), "16");
    EXPECT_EQ(Text(listRearTeeth), "42");
    PressOk();
}

TEST_F(SimulationDialog, TheTyreFieldGoesOnShowingWhatWasTyped) {
    ASSERT_NO_FATAL_FAILURE(Open());
    for (const char* typed : {"5", "99999", "abc"}) {
        Focus(editSimTire);
        SetControlText(dialog, editSimTire, typed);
        Focus(IDOK);
        EXPECT_EQ(Text(editSimTire), typed);
    }
    PressOk();
}

TEST_F(SimulationDialog, ArrowsChangeTheLoggedTeethWithTheSettingOnly) {
    const struct { int arrow, label; const char *before, *after; } rows[] = {
        {arrowFrontUp, labelFrontTeeth, "16", "17"}, {arrowFrontDown, labelFrontTeeth, "17", "16"},
        {arrowRearUp, labelRearTeeth, "42", "43"},   {arrowRearDown, labelRearTeeth, "43", "42"}};
    ASSERT_NO_FATAL_FAILURE(Open());
    for (const auto& row : rows) Press(row.arrow);
    Key(listFrontTeeth, VK_DOWN);  // behind the presses in the queue
    EXPECT_TRUE(Becomes(labelSimRatio, "2.471"));
    EXPECT_EQ(Text(labelFrontTeeth), "16");
    EXPECT_EQ(Text(labelRearTeeth), "42");
    PressOk();
    ASSERT_NO_FATAL_FAILURE(Open("[SPLConfig]\r\nFinalchg=1\r\n"));
    for (const auto& row : rows) {
        EXPECT_EQ(Text(row.label), row.before);
        Press(row.arrow);
        EXPECT_TRUE(Becomes(row.label, row.after));
    }
    EXPECT_EQ(Text(labelLoggedRatio), "2.625");
    PressOk();
}

TEST_F(SimulationDialog, WithoutALogItShowsTheStandardBikeAndTheCloseBoxEndsIt) {
    ASSERT_NO_FATAL_FAILURE(Open("", false));
    EXPECT_EQ(Text(labelLoggedRatio), "2.867");
    EXPECT_EQ(Text(labelSimRatio), "2.867");
    PostMessageW(dialog, WM_SYSCOMMAND, SC_CLOSE, 0);
    EXPECT_EQ(program.ExitCode(), 0);
}

}  // namespace
