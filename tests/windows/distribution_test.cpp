// Dialog 1024 as a user meets it, in the real program, and the button that fits the tyres.
#include <algorithm>

#include "resources/resource.h"
#include "tests/windows/program.h"

namespace {

constexpr const char* title = "percentage";

struct DistributionDialog : testing::Test {
    Program program;
    HWND tools = nullptr, dialog = nullptr;
    std::string log;

    void SetUp() override {
        program.home.Write("ZRKA.ini", "[ModeSetting]\r\nExpertMode=2\r\nAnimeMode=0\r\n");
        SampleLogOptions options;
        options.laps = 3;
        log = program.WriteLog("a.zrk", options);
        ASSERT_TRUE(program.Start({log}));
        program.RestingPicture();
        program.Type('D');
        tools = program.WaitForWindow("Analysis tools");
        ASSERT_TRUE(tools);
        ASSERT_TRUE(IsWindowVisible(GetDlgItem(tools, buttonDistribution)));
        Click(tools, buttonDistribution);
        dialog = program.WaitForWindow(title);
        ASSERT_TRUE(dialog);
    }
    void CloseAll() {
        Click(dialog, buttonDistClose);
        EXPECT_TRUE(program.WaitUntilGone(title));
        Click(tools, buttonTableClose);
        EXPECT_TRUE(program.WaitUntilGone("Analysis tools"));
        EXPECT_EQ(program.Close(), 0);
    }
    void Focus(int id) const { SendMessageW(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(GetDlgItem(dialog, id)), TRUE); }
    std::string AfterTyping(int field, const std::string& text) const {
        Focus(field);
        SetControlText(dialog, field, text);
        Focus(IDOK);
        return ControlText(dialog, field);
    }
    void Select(int list, int item) const {
        SendDlgItemMessageW(dialog, list, CB_SETCURSEL, static_cast<WPARAM>(item), 0);
        SendMessageW(dialog, WM_COMMAND, MAKEWPARAM(list, CBN_SELCHANGE), reinterpret_cast<LPARAM>(GetDlgItem(dialog, list)));
    }
    // The whole text of a box, however long.
    std::string BoxText(int id) const {
        const HWND box = GetDlgItem(dialog, id);
        std::wstring text(static_cast<size_t>(SendMessageW(box, WM_GETTEXTLENGTH, 0, 0)) + 1, L'\0');
        text.resize(static_cast<size_t>(SendMessageW(box, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()))));
        return {text.begin(), text.end()};
    }
    // Presses "Analyze"; the text of the left box once it has changed.
    std::string Analyzed() const {
        const std::string before = BoxText(editDistFile1);
        Click(dialog, IDOK);
        EXPECT_TRUE(WaitFor([&] { return BoxText(editDistFile1) != before; }));
        return BoxText(editDistFile1);
    }
};

std::string FirstLine(const std::string& text) { return text.substr(0, text.find('\n') + 1); }

TEST_F(DistributionDialog, EveryControlIsThere) {
    EXPECT_EQ(ControlText(dialog, editDistMin), "6000");
    EXPECT_EQ(ControlText(dialog, editDistMax), "16000");
    EXPECT_EQ(ControlText(dialog, editDistStep), "500");
    EXPECT_EQ(ControlText(dialog, IDOK), "Analyze");
    EXPECT_EQ(ControlText(dialog, buttonDistClose), "Close");
    EXPECT_EQ(ControlText(dialog, listDistChannel), "Ne");
    EXPECT_EQ(ControlText(dialog, listDistLaps), "All Lap");
    EXPECT_EQ(SendDlgItemMessageW(dialog, listDistChannel, CB_GETCOUNT, 0, 0), 4);
    EXPECT_EQ(SendDlgItemMessageW(dialog, listDistLaps, CB_GETCOUNT, 0, 0), 2);
    for (const int box : {editDistFile1, editDistFile2}) {
        const LONG_PTR style = GetWindowLongPtrW(GetDlgItem(dialog, box), GWL_STYLE);
        EXPECT_TRUE((style & ES_READONLY) && (style & ES_MULTILINE));
        EXPECT_EQ(BoxText(box), "");
    }
    CloseAll();
}

TEST_F(DistributionDialog, ResultsStandInBothBoxesAndCanBeCopied) {
    const std::string left = Analyzed(), right = BoxText(editDistFile2);
    EXPECT_EQ(FirstLine(left), "- rpm - \t - % - \r\n");
    EXPECT_EQ(FirstLine(right), "- rpm - \t - % - \r\n");
    EXPECT_NE(left, right) << "there is no File 2";
    SendDlgItemMessageW(dialog, editDistFile1, EM_SETSEL, 0, -1);
    SendDlgItemMessageW(dialog, editDistFile1, WM_COPY, 0, 0);
    ASSERT_TRUE(OpenClipboard(nullptr));
    std::string copied;
    if (const HANDLE data = GetClipboardData(CF_UNICODETEXT)) {
        const std::wstring text = static_cast<const wchar_t*>(GlobalLock(data));
        copied.assign(text.begin(), text.end());
        GlobalUnlock(data);
    }
    CloseClipboard();
    EXPECT_EQ(copied, left);
    CloseAll();
}

TEST_F(DistributionDialog, FieldsAreLimitedWhenLeftAndEachChannelHasItsOwn) {
    EXPECT_EQ(AfterTyping(editDistMin, "30000"), "20000");
    EXPECT_EQ(AfterTyping(editDistMin, "8000"), "8000");
    EXPECT_EQ(AfterTyping(editDistStep, "1"), "10");
    EXPECT_EQ(AfterTyping(editDistMax, "-7"), "8000");
    Select(listDistChannel, 2);
    EXPECT_EQ(ControlText(dialog, editDistMin), "0");
    EXPECT_EQ(ControlText(dialog, editDistMax), "125");
    EXPECT_EQ(ControlText(dialog, editDistStep), "5");
    EXPECT_EQ(AfterTyping(editDistMax, "900"), "200");
    EXPECT_EQ(FirstLine(Analyzed()), "- mm - \t - % - \r\n");
    Select(listDistChannel, 0);
    EXPECT_EQ(ControlText(dialog, editDistMin), "8000");
    EXPECT_EQ(ControlText(dialog, editDistStep), "10");
    CloseAll();
}

TEST_F(DistributionDialog, TheFinestBandsShowAllTheirLines) {
    AfterTyping(editDistMin, "-20000");
    AfterTyping(editDistMax, "20000");
    AfterTyping(editDistStep, "10");
    const std::string text = Analyzed();
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 4002);
    CloseAll();
}

TEST_F(DistributionDialog, CheckedLapsGiveOtherSharesThanAllLaps) {
    const std::string all = Analyzed();
    Select(listDistLaps, 1);
    EXPECT_NE(Analyzed(), all);
    CloseAll();
}

TEST_F(DistributionDialog, TheCloseBoxClosesItToo) {
    PostMessageW(dialog, WM_SYSCOMMAND, SC_CLOSE, 0);
    EXPECT_TRUE(program.WaitUntilGone(title));
    EXPECT_TRUE(IsWindowEnabled(tools));
    Click(tools, buttonTableClose);
    EXPECT_EQ(program.Close(), 0);
}

TEST_F(DistributionDialog, TyresAreFittedToFile2sAndItIsTold) {
    Click(dialog, buttonDistClose);
    EXPECT_TRUE(program.WaitUntilGone(title));
    Click(tools, buttonHarmonize);  // without a File 2 nothing happens
    Click(tools, buttonTableClose);
    EXPECT_TRUE(program.WaitUntilGone("Analysis tools"));
    EXPECT_FALSE(program.Find("arrange"));
    SampleLogOptions options;
    options.laps = 2;
    options.seed = 2;
    const std::string second = program.WriteLog("b.zrk", options);
    program.Type('2');
    EXPECT_TRUE(program.AnswerFileDialog("Open", second));
    program.RestingPicture();
    program.Type('D');
    tools = program.WaitForWindow("Analysis tools");
    ASSERT_TRUE(tools);
    Click(tools, buttonHarmonize);
    EXPECT_TRUE(program.AnswerBox("arrange", "arranged adjusted VFW & VRW to file 2"));
    Click(tools, buttonTableClose);
    EXPECT_TRUE(program.WaitUntilGone("Analysis tools"));
    EXPECT_EQ(program.Close(), 0);
}

}  // namespace
