// Dialog 1022 as a user meets it.
#include <cstdlib>

#include "resources/resource.h"
#include "tests/windows/program.h"

namespace {

constexpr int columns = 4, choices = 9;
int Radio(int column, int index) { return firstColorRadio + column * colorColumnIds + index; }
int Sample(int column, int index) { return firstColorSample + column * colorColumnIds + index; }

struct GraphSettingDialog : testing::Test {
    Program program{"dialog_stand.exe"};
    HWND dialog = nullptr;

    void Open(int channel, const std::string& settings = "") {
        program.home.Write("ZRKA.ini", settings);
        ASSERT_TRUE(program.Start({"1022", std::to_string(channel)}));
        dialog = program.WaitForWindow("Graph Setting");
        ASSERT_TRUE(dialog);
    }
    void End() { EXPECT_EQ(program.ExitCode(), 0); }
    void PressClose() {
        Click(dialog, buttonGraphSettingClose);
        End();
    }
    void PressCloseBox() {
        PostMessageW(dialog, WM_SYSCOMMAND, SC_CLOSE, 0);
        End();
    }
    std::string Saved(const std::string& key, const std::string& section = "GraphSetting") const {
        return IniValue(program.home.Path("ZRKA.ini"), section, key);
    }
    HWND Control(int id) const { return GetDlgItem(dialog, id); }
    bool Visible(int id) const { return IsWindowVisible(Control(id)) != FALSE; }
    void Focus(int id) const { SendMessageW(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(Control(id)), TRUE); }
    // Types into a field and leaves it; what it shows then.
    std::string AfterTyping(int field, const std::string& text) const {
        Focus(field);
        SetControlText(dialog, field, text);
        Focus(buttonGraphSettingClose);
        return ControlText(dialog, field);
    }
    void ClickAndWait(int id, const std::function<bool()>& done) const {
        Click(dialog, id);
        EXPECT_TRUE(WaitFor(done));
    }
    // Whether a sample of File 2 is painted so, as the screen has it. Strokes of letters may be smoothed: a near colour
    // will do.
    bool SampleShows(int index, uint32_t color, uint32_t background) const {
        RECT place;
        GetClientRect(Control(Sample(1, index)), &place);
        MapWindowPoints(Control(Sample(1, index)), dialog, reinterpret_cast<POINT*>(&place), 2);
        const Picture picture = GrabClient(dialog);
        if (place.right > picture.width || place.bottom > picture.height) return false;
        if (picture.At(place.right - 1, place.bottom - 1) != background) return false;
        bool found = false;
        for (int y = place.top; y < place.bottom; y++)
            for (int x = place.left; x < place.right; x++) {
                int distance = 0;
                for (int shift : {0, 8, 16})
                    distance += std::abs(static_cast<int>(picture.At(x, y) >> shift & 255) - static_cast<int>(color >> shift & 255));
                found |= distance < 120;
            }
        return found;
    }
    int ColumnOf(int column) const {
        for (int index = 0; index < choices; index++)
            if (ControlChecked(dialog, Radio(column, index))) return index;
        return -1;
    }
};

TEST_F(GraphSettingDialog, EveryControlIsThereWithItsCaption) {
    Open(0, "[ModeSetting]\r\nExpertMode=2\r\nExclusiveF1Color=1\r\n");
    EXPECT_EQ(ControlText(dialog, editGridMin), "5000");
    EXPECT_EQ(ControlText(dialog, editGridMax), "16000");
    EXPECT_EQ(ControlText(dialog, editGridStep), "1000");
    EXPECT_EQ(ControlText(dialog, checkGridDisplay), "Grid Display");
    EXPECT_EQ(ControlText(dialog, checkOnlyFile1), "color of  only File1");
    EXPECT_EQ(ControlText(dialog, groupOnlyFile1), "onlyF1");
    EXPECT_EQ(ControlText(dialog, buttonGraphSettingClose), "Close");
    for (int column = 0; column < columns; column++)
        for (int index = 0; index < choices; index++) {
            SCOPED_TRACE(std::to_string(column) + "/" + std::to_string(index));
            EXPECT_TRUE(Visible(Radio(column, index)));
            EXPECT_TRUE(Visible(Sample(column, index)));
            EXPECT_EQ(ControlText(dialog, Sample(column, index)), "llllllll");
        }
    for (const wchar_t* caption : {L"Grid", L"Min", L"Max", L"Step", L"File1", L"File2", L"File3"})
        EXPECT_TRUE(FindWindowExW(dialog, nullptr, nullptr, caption));
    PressClose();
}

TEST_F(GraphSettingDialog, ControlsStandInsideTheDialogAndBesideEachOther) {
    Open(0, "[ModeSetting]\r\nExpertMode=2\r\nExclusiveF1Color=1\r\n");
    RECT client, taken, common;
    GetClientRect(dialog, &client);
    std::vector<RECT> places;
    for (HWND control = GetWindow(dialog, GW_CHILD); control; control = GetWindow(control, GW_HWNDNEXT)) {
        GetWindowRect(control, &taken);
        MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&taken), 2);
        SCOPED_TRACE(WindowText(control) + " " + std::to_string(GetDlgCtrlID(control)));
        EXPECT_TRUE(taken.left >= 0 && taken.top >= 0 && taken.right <= client.right && taken.bottom <= client.bottom);
        wchar_t name[16] = L"";
        GetClassNameW(control, name, 16);
        if (std::wstring(name) == L"Button" && (GetWindowLongPtrW(control, GWL_STYLE) & BS_TYPEMASK) == BS_GROUPBOX) continue;
        for (const RECT& place : places) EXPECT_FALSE(IntersectRect(&common, &place, &taken));
        places.push_back(taken);
    }
    EXPECT_EQ(places.size(), 3u + 3u + 1u + 2u * columns * choices + 2u);
    PressClose();
}

TEST_F(GraphSettingDialog, LeavingAFieldLimitsWhatWasTypedAndRewritesIt) {
    Open(6);  // LAF1
    EXPECT_EQ(ControlText(dialog, editGridMin), "11.5");
    EXPECT_EQ(AfterTyping(editGridMin, "-3"), "0.0");
    EXPECT_EQ(AfterTyping(editGridMin, "9.25 AFR"), "9.2");
    EXPECT_EQ(AfterTyping(editGridMax, "13.5"), "13.0");
    EXPECT_EQ(AfterTyping(editGridStep, "0"), "0.1");
    PressClose();
    EXPECT_EQ(Saved("GraphGrid_min6"), "925");
    EXPECT_EQ(Saved("GraphGrid_max6"), "1300");
    EXPECT_EQ(Saved("GraphGrid_step6"), "10");
}

TEST_F(GraphSettingDialog, FieldThatIsBeingEditedIsReadBeforeTheDialogCloses) {
    for (const bool button : {true, false}) {
        Open(2);  // VFW
        Focus(editGridMax);
        SetControlText(dialog, editGridMax, "250");
        if (button)
            PressClose();
        else
            PressCloseBox();
        EXPECT_EQ(Saved("GraphGrid_max2"), "2500");
    }
}

TEST_F(GraphSettingDialog, MaxBelowMinBecomesMinWhenTheDialogCloses) {
    Open(0);
    EXPECT_EQ(AfterTyping(editGridMax, "100"), "100");
    PressClose();
    EXPECT_EQ(Saved("GraphGrid_max0"), "5000");
}

TEST_F(GraphSettingDialog, RadiosAndTicksReachTheSettings) {
    Open(3, "[ModeSetting]\r\nExpertMode=2\r\nExclusiveF1Color=1\r\n");
    EXPECT_EQ(ColumnOf(0), 1);
    EXPECT_EQ(ColumnOf(1), 3);
    EXPECT_EQ(ColumnOf(2), 7);
    EXPECT_EQ(ColumnOf(3), 1);
    EXPECT_FALSE(ControlChecked(dialog, checkGridDisplay));
    for (int column = 0; column < columns; column++)
        ClickAndWait(Radio(column, 4 + column), [&] { return ColumnOf(column) == 4 + column; });
    ClickAndWait(checkGridDisplay, [&] { return ControlChecked(dialog, checkGridDisplay); });
    PressClose();
    EXPECT_EQ(Saved("Color_Green3"), "4");
    EXPECT_EQ(Saved("Color_Red3"), "5");
    EXPECT_EQ(Saved("Color_White3"), "6");
    EXPECT_EQ(Saved("Color_Gonly3"), "7");
    EXPECT_EQ(Saved("GraphGrid_disp3"), "1");
}

TEST_F(GraphSettingDialog, CloseBoxKeepsAllButTheColourOfFile1) {
    Open(1);
    ClickAndWait(Radio(0, 6), [&] { return ColumnOf(0) == 6; });
    ClickAndWait(Radio(1, 6), [&] { return ColumnOf(1) == 6; });
    PressCloseBox();
    EXPECT_EQ(Saved("Color_Green1"), "0");
    EXPECT_EQ(Saved("Color_Red1"), "6");
}

TEST_F(GraphSettingDialog, TickShowsAndHidesTheColumnAtLevelExpert) {
    Open(0, "[ModeSetting]\r\nExpertMode=2\r\n");
    EXPECT_TRUE(Visible(checkOnlyFile1));
    const auto columnShown = [&](bool shown) {
        for (int index = 0; index < choices; index++)
            if (Visible(Radio(3, index)) != shown || Visible(Sample(3, index)) != shown) return false;
        return Visible(groupOnlyFile1) == shown;
    };
    EXPECT_TRUE(columnShown(false));
    ClickAndWait(checkOnlyFile1, [&] { return columnShown(true); });
    ClickAndWait(checkOnlyFile1, [&] { return columnShown(false); });
    ClickAndWait(checkOnlyFile1, [&] { return columnShown(true); });
    PressClose();
    EXPECT_EQ(Saved("ExclusiveF1Color", "ModeSetting"), "1");
}

TEST_F(GraphSettingDialog, BelowExpertTheTickIsAbsentAndTheSettingCleared) {
    Open(0, "[ModeSetting]\r\nExpertMode=1\r\nExclusiveF1Color=1\r\n");
    EXPECT_FALSE(Visible(checkOnlyFile1));
    EXPECT_FALSE(Visible(groupOnlyFile1));
    EXPECT_FALSE(Visible(Radio(3, 0)));
    EXPECT_TRUE(Visible(Radio(2, 8)));
    PressClose();
    EXPECT_EQ(Saved("ExclusiveF1Color", "ModeSetting"), "0");
}

TEST_F(GraphSettingDialog, SamplesWearTheirColoursOnTheBackgroundOfTheScheme) {
    constexpr uint32_t wanted[2][choices] = {
        {0x00FF00, 0x00FFC0, 0xFF0000, 0xFF00C0, 0xC0A800, 0xC0FF00, 0x009600, 0x8C8C8C, 0xFFFFFF},
        {0x0000FF, 0x00C0FF, 0xFF0000, 0xFF00C0, 0xC0A800, 0x808000, 0x009600, 0x8C8C8C, 0x000000}};
    for (int scheme : {0, 1}) {
        Open(0, "[ModeSetting]\r\ncolortype=" + std::to_string(scheme) + "\r\n");
        const uint32_t background = scheme ? 0xFFFFFF : 0;
        for (int index = 0; index < choices; index++) {
            SCOPED_TRACE(std::to_string(scheme) + "/" + std::to_string(index));
            const auto painted = [&] { return SampleShows(index, wanted[scheme][index], background); };
            EXPECT_TRUE(WaitFor(painted, 10));
        }
        PressClose();
    }
}

}  // namespace
