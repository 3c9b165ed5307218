// The real tool bar: its controls, what a press changes in it, and a log opened through it.
#include "tests/windows/program.h"

namespace {

struct Control {
    int id;
    const char* caption;
    int x, y;  // dialog units
};
constexpr Control controls[] = {
    {1111, "Check1", 0, 0},  {1112, "Check2", 23, 0},  {1033, "Open1", 0, 23}, {1034, "Open2", 23, 23},
    {1035, "Greset", 0, 47}, {1036, "Close2", 23, 47}, {1113, "GPM", 0, 71},   {1114, "MoveM", 23, 71},
    {1115, "ANM", 0, 95},    {1117, "AFM", 23, 95},    {1116, "Play", 0, 119}, {1037, "Setup", 23, 119},
};

struct ToolbarWindow : testing::Test {
    Program program;
    void SetUp() override { ASSERT_TRUE(program.Start()); }
    bool Becomes(int id, bool checked) {
        return WaitFor([&] { return ControlChecked(program.toolbar, id) == checked; });
    }
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
