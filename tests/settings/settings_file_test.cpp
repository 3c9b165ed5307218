#include "settings/settings_file.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdio>
#include <cstring>
#include <variant>

#ifndef _WIN32
#include <sys/wait.h>
#include <unistd.h>
#endif

#include "graph/color_scheme.h"
#include "graph/view_state.h"
#include "platform/files.h"
#include "platform/headless/script.h"
#include "run_data/csv_columns.h"
#include "run_data/run_store.h"
#include "settings/graph_layout.h"
#include "settings/settings.h"
#include "tests/test_folder.h"

using namespace std::string_literals;

struct SettingsFile : testing::Test {
    TestFolder folder;

    SettingsFile() {
        SetProgramFolder(folder.Path().c_str());
        DefaultScript();
        DefaultRunStore();
        DefaultViewState();
        DefaultSettings();
        DefaultSettingsFile();
    }

    void Load(const std::string& bytes) {
        folder.Write("ZRKA.ini", bytes);
        LoadSettings();
    }
    void LoadKey(const char* section, const char* key, const std::string& value) {
        Load(std::string("[") + section + "]\r\n" + key + "=" + value + "\r\n");
    }
    // The text of a key after SaveSettings into a folder without a file.
    std::string Saved(const char* section, const char* key) {
        std::filesystem::remove(folder.path / "ZRKA.ini");
        SaveSettings();
        const ProfileText profile = ParseProfile(folder.Read("ZRKA.ini"));
        return std::string(ProfileString(profile, section, key, "missing"));
    }
};

// Keys, defaults and whether they are saved, as users know them.
struct IntRow {
    const char *section, *key;
    int* variable;
    int standard;
    bool saved;
};
static const IntRow intRows[] = {
    {"Window", "x", &windowX, 0, true},
    {"Window", "y", &windowY, 0, true},
    {"Window", "x2", &windowWidth, 1024, true},
    {"Window", "y2", &windowHeight, 768, true},
    {"Window", "zoomed", &zoomed, 0, true},
    {"Window", "Curse_X", &courseCenterX, 1980, true},
    {"Window", "Curse_Y", &courseCenterY, 0, true},
    {"Window", "MC_X", &bodyX, 1800, true},
    {"Window", "MC_Y", &bodyY, 360, true},
    {"Window", "Meter_X", &meterX, 90, true},
    {"Window", "Meter_Y", &meterY, 920, true},
    {"Window", "Susgram_X", &histX, 1800, true},
    {"Window", "Susgram_Y", &histY, 500, true},
    {"ViewSetting", "AFmap_YCH", &AFmap_YCH, 0, true},
    {"ViewSetting", "AFmap_AFCH", &AFmap_AFCH, 0, true},
    {"ViewSetting", "AFmap_SWCH", &AFmap_SWCH, 0, true},
    {"ModeSetting", "CursolValueMode", &CursolValueMode, 1, true},
    {"ModeSetting", "smoothingNE", &smoothingNE, 0, true},
    {"ModeSetting", "smoothingVW", &smoothingVW, 0, true},
    {"ModeSetting", "SmoothingSample", &SmoothingSample, 4, false},
    {"ModeSetting", "CoursePosSource", &CoursePosSource, 0, true},
    {"ModeSetting", "colortype", &colortype, 0, true},
    {"ModeSetting", "CourseLayout_on", &CourseLayout_on, 1, true},
    {"ModeSetting", "GridFill", &GridFill, 1, true},
    {"ModeSetting", "AnimeMode", &AnimeMode, 1, true},
    {"ModeSetting", "BodyDisplay", &BodyDisplay, 1, true},
    {"ModeSetting", "SusgramDisplay", &SusgramDisplay, 0, true},
    {"ModeSetting", "ExpertMode", &ExpertMode, 0, true},
    {"ModeSetting", "BaseLinePos", &BaseLinePos, 0, true},
    {"ModeSetting", "AutoOnOffLoad", &AutoOnOffLoad, 1, true},
    {"ModeSetting", "VFWCopyVRW", &VFWCopyVRW, 0, true},
    {"ModeSetting", "ModifyFileName", &ModifyFileName, 0, true},
    {"ModeSetting", "CslValWidth", &CslValWidth, 0, true},
    {"ModeSetting", "SusFilter_n", &SusFilter_n, 7, false},
    {"ModeSetting", "ExclusiveF1Color", &ExclusiveF1Color, 0, true},
    {"ModeSetting", "HD_Display", &HD_Display, 0, false},
    {"SPLConfig", "VSync", &VSync, 1, false},
    {"SPLConfig", "LinkRatio", &LinkRatio[0], 235, false},
    {"SPLConfig", "Memo_view", &Memo_view, 1, true},
    {"SPLConfig", "Blend_mode", &Blend_mode, 0, false},
    {"SPLConfig", "Color_body", &Color_body, 0, false},
    {"SPLConfig", "Debug", &Debug, 0, false},
    {"SPLConfig", "AWC", &AWC, 0, false},
    {"SPLConfig", "LC", &LC, 0, false},
    {"SPLConfig", "Finalchg", &Finalchg, 0, false},
    {"SPLConfig", "VBerrexp", &VBerrexp, 0, false},
    {"SPLConfig", "CompressFile", &CompressFile, 0, false},
    {"SPLConfig", "CompressFileVer", &CompressFileVer, 3, false},
    {"SPLConfig", "AllowCompressMode", &AllowCompressMode, 0, false},
    {"SPLConfig", "SusVSampleNum", &SusVSampleNum, 3, false},
    {"SPLConfig", "Lastcono", &Lastcono, 16, true},
    {"SPLConfig", "SmoothingSTD", &SmoothingSTD, 2, false},
    {"SPLConfig", "Maxcono", &Maxcono, 32, false},
    {"SPLConfig", "ColorMap", &ColorMap, 1, false},
    {"SPLConfig", "RTM", &RTM, 0, false},
    {"SPLConfig", "Shifter", &Shifter, 0, false},
    {"SPLConfig", "SPLT", &SPLT, 0, false},
};

struct ScaledRow {
    const char *section, *key;
    std::variant<float*, double*> variable;
    int standard;
    double unit;
};
static const ScaledRow scaledRows[] = {
    {"Window", "Curse_Z", &courseZoom, 500, 1000},
    {"Window", "MC_Z", &bodyZoom, 500, 1000},
    {"Window", "Meter_Z", &meterZoom, 650, 1000},
    {"Window", "Susgram_Z", &histZoom, 1000, 1000},
    {"ViewSetting", "AFmap_SWTHS", &AFmap_SWTHS, 250, 100},
};
static double Scaled(const ScaledRow& row) {
    return std::visit([](auto* variable) -> double { return *variable; }, row.variable);
}

struct TextRow {
    const char *section, *key, *text, *standard;
    size_t limit;
};
static const TextRow textRows[] = {
    {"Path", "Data", dataFolder, "", 260},
    {"Path", "BMP", bmpFolder, "", 260},
    {"ModeSetting", "CourseFile_name", CourseFile_name, "sorrel.crs", 256},
};

// Text and number of keys that no file holds.
static constexpr int unlikely = 3;

TEST_F(SettingsFile, NewInstallationStartsWith1024By768InEasyMode) {
    windowWidth = windowHeight = 1;
    ExpertMode = 2;
    LoadSettings();
    EXPECT_EQ(windowWidth, 1024);
    EXPECT_EQ(windowHeight, 768);
    EXPECT_EQ(ExpertMode, 0);
    EXPECT_EQ(folder.EntryCount(), 0) << "reading writes nothing";
}

TEST_F(SettingsFile, MissingKeyGivesItsDefault) {
    for (const IntRow& row : intRows) {
        SCOPED_TRACE(row.key);
        *row.variable = unlikely;
        Load("[Window]\r\n[Other]\r\n");
        EXPECT_EQ(*row.variable, row.standard);
    }
    for (const ScaledRow& row : scaledRows) {
        SCOPED_TRACE(row.key);
        EXPECT_FLOAT_EQ(static_cast<float>(Scaled(row)), static_cast<float>(row.standard / row.unit));
    }
    for (const TextRow& row : textRows) {
        SCOPED_TRACE(row.key);
        EXPECT_STREQ(row.text, row.standard);
    }
}

TEST_F(SettingsFile, StartStateIsWhatAnEmptyFileGives) {
    for (const IntRow& row : intRows) *row.variable = unlikely;
    DefaultSettings();
    for (const IntRow& row : intRows) {
        SCOPED_TRACE(row.key);
        EXPECT_EQ(*row.variable, row.standard);
    }
}

TEST_F(SettingsFile, EachKeyReachesItsVariableAndNoOther) {
    for (const IntRow& row : intRows) {
        SCOPED_TRACE(row.key);
        const int value = row.standard == 1 ? 2 : 1;
        LoadKey(row.section, row.key, std::to_string(value));
        EXPECT_EQ(*row.variable, value);
        for (const IntRow& other : intRows) {
            if (&other == &row) continue;
            EXPECT_EQ(*other.variable, other.standard) << other.key;
        }
    }
    for (const ScaledRow& row : scaledRows) {
        SCOPED_TRACE(row.key);
        LoadKey(row.section, row.key, "1250");
        EXPECT_EQ(Scaled(row), 1250 / row.unit);
    }
    for (const TextRow& row : textRows) {
        SCOPED_TRACE(row.key);
        LoadKey(row.section, row.key, "a b\\c");
        EXPECT_STREQ(row.text, "a b\\c");
    }
}

TEST_F(SettingsFile, KeyInAnotherSectionIsNotRead) {
    LoadKey("SPLConfig", "ExpertMode", "2");
    EXPECT_EQ(ExpertMode, 0);
}

TEST_F(SettingsFile, SavedKeysReachTheFileAndTheOthersDoNot) {
    for (const IntRow& row : intRows) {
        SCOPED_TRACE(row.key);
        *row.variable = unlikely;
        EXPECT_EQ(Saved(row.section, row.key), row.saved ? "3" : "missing");
    }
    for (const ScaledRow& row : scaledRows) {
        SCOPED_TRACE(row.key);
        std::visit([](auto* variable) { *variable = 1.5; }, row.variable);
        EXPECT_EQ(Saved(row.section, row.key), row.unit == 1000 ? "1500" : "150");
    }
    strcpy(dataFolder, "D:\\logs");
    strcpy(bmpFolder, "E:\\");
    strcpy(CourseFile_name, "other.crs");
    EXPECT_EQ(Saved("Path", "Data"), "D:\\logs");
    EXPECT_EQ(Saved("Path", "BMP"), "E:\\");
    EXPECT_EQ(Saved("ModeSetting", "CourseFile_name"), "other.crs");
}

TEST_F(SettingsFile, DefaultsSurviveSavingAndLoading) {
    SaveSettings();
    for (const IntRow& row : intRows) *row.variable = unlikely;
    for (const ScaledRow& row : scaledRows) std::visit([](auto* variable) { *variable = 9; }, row.variable);
    LoadSettings();
    for (const IntRow& row : intRows) {
        SCOPED_TRACE(row.key);
        EXPECT_EQ(*row.variable, row.standard);
    }
    for (const ScaledRow& row : scaledRows) {
        SCOPED_TRACE(row.key);
        EXPECT_FLOAT_EQ(static_cast<float>(Scaled(row)), static_cast<float>(row.standard / row.unit));
    }
    EXPECT_STREQ(CourseFile_name, "sorrel.crs");
}

TEST_F(SettingsFile, HandEditedKeysCommentsAndForeignLinesSurviveSaving) {
    Load("; my switches\n[SPLConfig]\nDebug=1\nlastCono = 4 \nMine=x\n\n[Else]\nk=v\n");
    Lastcono = 7;
    SaveSettings();
    const std::string bytes = folder.Read("ZRKA.ini");
    EXPECT_EQ(bytes.find("; my switches\n[SPLConfig]\nDebug=1\nlastCono = 7 \nMine=x\nMemo_view=1\n\n[Else]\nk=v\n"), 0u) << bytes;
}

TEST_F(SettingsFile, SectionsOfANewFileStandInTheToldOrder) {
    SaveSettings();
    const std::string bytes = folder.Read("ZRKA.ini");
    size_t last = 0;
    for (const char* section : {"[Path]\r\n", "[Window]\r\n", "[GraphSetting]\r\n", "[ViewSetting]\r\n", "[ModeSetting]\r\n", "[SPLConfig]\r\n"}) {
        SCOPED_TRACE(section);
        const size_t at = bytes.find(section);
        ASSERT_NE(at, std::string::npos);
        EXPECT_GE(at, last);
        last = at;
    }
    EXPECT_EQ(bytes.find("[Path]\r\nData=\r\nBMP=\r\n"), 0u);
}

TEST_F(SettingsFile, HdDisplayIsNeverSaved) {
    Load("[ModeSetting]\r\nHD_Display=0\r\n");
    HD_Display = 1;
    SaveSettings();
    LoadSettings();
    EXPECT_EQ(HD_Display, 0);
}

TEST_F(SettingsFile, NegativeScaleReadsAsAVeryLargeOne) {
    LoadKey("Window", "MC_Z", "-1");
    EXPECT_DOUBLE_EQ(bodyZoom, 4294967.295);
    EXPECT_EQ(Saved("Window", "MC_Z"), "-1");
    LoadKey("Window", "Curse_Z", "-500");
    EXPECT_FLOAT_EQ(courseZoom, 4294966.796f);
}

TEST_F(SettingsFile, ScaleZeroIsNotLifted) {
    LoadKey("Window", "Meter_Z", "0");
    EXPECT_EQ(meterZoom, 0);
}

TEST_F(SettingsFile, ThresholdReadsSigned) {
    LoadKey("ViewSetting", "AFmap_SWTHS", "-5");
    EXPECT_FLOAT_EQ(AFmap_SWTHS, -0.05f);
    EXPECT_EQ(Saved("ViewSetting", "AFmap_SWTHS"), "-5");
}

TEST_F(SettingsFile, ScalesAreCutOnWriting) {
    bodyZoom = 1.2349;
    EXPECT_EQ(Saved("Window", "MC_Z"), "1234");
    bodyZoom = 1.001;  // 1000.9999999999999 thousandths
    EXPECT_EQ(Saved("Window", "MC_Z"), "1000");
    bodyZoom = -0.5;
    EXPECT_EQ(Saved("Window", "MC_Z"), "0");
    bodyZoom = 1e300;
    EXPECT_EQ(Saved("Window", "MC_Z"), "-1");
    AFmap_SWTHS = 1e30f;
    EXPECT_EQ(Saved("ViewSetting", "AFmap_SWTHS"), "2147483647");
}

TEST_F(SettingsFile, LastPortIsWrittenAsZeroAfterAFailedScan) {
    Lastcono = 0;
    EXPECT_EQ(Saved("SPLConfig", "Lastcono"), "0");
}

TEST_F(SettingsFile, ValuesAreHeldInTheirRangesWhenRead) {
    struct { const char *section, *key; int* variable; const char* text; int value; } const rows[] = {
        {"ModeSetting", "ExpertMode", &ExpertMode, "-1", 0},
        {"ModeSetting", "ExpertMode", &ExpertMode, "2", 2},
        {"ModeSetting", "ExpertMode", &ExpertMode, "3", 2},
        {"ModeSetting", "CursolValueMode", &CursolValueMode, "7", 7},
        {"ModeSetting", "CursolValueMode", &CursolValueMode, "8", 0},
        {"ModeSetting", "CursolValueMode", &CursolValueMode, "-1", 7},
        {"SPLConfig", "SusVSampleNum", &SusVSampleNum, "20", 20},
        {"SPLConfig", "SusVSampleNum", &SusVSampleNum, "21", 20},
        {"SPLConfig", "SusVSampleNum", &SusVSampleNum, "-1", 0},
        {"ModeSetting", "SmoothingSample", &SmoothingSample, "8", 8},
        {"ModeSetting", "SmoothingSample", &SmoothingSample, "9", 8},
        {"ModeSetting", "SmoothingSample", &SmoothingSample, "-4", 0},
        {"SPLConfig", "SmoothingSTD", &SmoothingSTD, "1000", 1000},
        {"SPLConfig", "SmoothingSTD", &SmoothingSTD, "1001", 1000},
        {"SPLConfig", "SmoothingSTD", &SmoothingSTD, "-1", 0},
        {"ModeSetting", "SusFilter_n", &SusFilter_n, "1001", 1000},
        {"ModeSetting", "SusFilter_n", &SusFilter_n, "-1", 0},
        {"ViewSetting", "AFmap_YCH", &AFmap_YCH, "4", 4},
        {"ViewSetting", "AFmap_YCH", &AFmap_YCH, "5", 0},
        {"ViewSetting", "AFmap_YCH", &AFmap_YCH, "-1", 0},
        {"ViewSetting", "AFmap_SWCH", &AFmap_SWCH, "4", 4},
        {"ViewSetting", "AFmap_SWCH", &AFmap_SWCH, "5", 0},
        {"ViewSetting", "AFmap_AFCH", &AFmap_AFCH, "3", 3},
        {"ViewSetting", "AFmap_AFCH", &AFmap_AFCH, "4", 0},
        {"Window", "x2", &windowWidth, "0", 1024},
        {"Window", "x2", &windowWidth, "1", 1},
        {"Window", "x2", &windowWidth, "-7", 1024},
        {"Window", "y2", &windowHeight, "0", 768},
        {"Window", "y2", &windowHeight, "1", 1},
        {"ModeSetting", "BaseLinePos", &BaseLinePos, "32768", 32767},
        {"ModeSetting", "BaseLinePos", &BaseLinePos, "-32768", -32767},
        {"ModeSetting", "CslValWidth", &CslValWidth, "40000", 32767},
        {"Window", "Curse_X", &courseCenterX, "99999", 32767},
        {"Window", "Curse_Y", &courseCenterY, "-99999", -32767},
        {"Window", "MC_X", &bodyX, "99999", 32767},
        {"Window", "MC_Y", &bodyY, "-99999", -32767},
        {"Window", "Meter_X", &meterX, "99999", 32767},
        {"Window", "Meter_Y", &meterY, "-99999", -32767},
        {"Window", "Susgram_X", &histX, "99999", 32767},
        {"Window", "Susgram_Y", &histY, "-99999", -32767},
        {"SPLConfig", "Maxcono", &Maxcono, "256", 256},
        {"SPLConfig", "Maxcono", &Maxcono, "257", 256},
        {"SPLConfig", "Maxcono", &Maxcono, "-3", -3},
        {"Window", "x", &windowX, "-70000", -70000},
        {"ModeSetting", "colortype", &colortype, "9", 9},
        {"ModeSetting", "ExpertMode", &ExpertMode, "2 is expert", 2},
        {"ModeSetting", "ExpertMode", &ExpertMode, "", 0},
        {"ModeSetting", "GridFill", &GridFill, "on", 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.key) + "=" + row.text);
        LoadKey(row.section, row.key, row.text);
        EXPECT_EQ(*row.variable, row.value);
    }
}

TEST_F(SettingsFile, TextsAreCutAtTheirLimit) {
    for (const TextRow& row : textRows) {
        SCOPED_TRACE(row.key);
        const std::string longest(row.limit, 'a');
        LoadKey(row.section, row.key, longest);
        EXPECT_EQ(row.text, longest);
        LoadKey(row.section, row.key, longest + "b");
        EXPECT_EQ(row.text, longest);
    }
}

TEST_F(SettingsFile, FolderWithBlanksAndQuotesAtItsEndsComesBack) {
    strcpy(dataFolder, " 'logs' ");
    SaveSettings();
    dataFolder[0] = '\0';
    LoadSettings();
    EXPECT_STREQ(dataFolder, " 'logs' ");
}

TEST_F(SettingsFile, LinkRatioOfTheFileIsThatOfFile1Only) {
    const int others[] = {LinkRatio[1], LinkRatio[2]};
    LoadKey("SPLConfig", "LinkRatio", "240");
    EXPECT_EQ(LinkRatio[0], 240);
    EXPECT_EQ(LinkRatio[1], others[0]);
    EXPECT_EQ(LinkRatio[2], others[1]);
}

TEST_F(SettingsFile, MaximisedWindowIsSavedWithItsRestoredSize) {
    OpenMainWindow({"t", 0, 11, 22, 640, 480, false});
    ShowMainWindow(2);
    EXPECT_EQ(Saved("Window", "zoomed"), "1");
    EXPECT_FALSE(MainWindowMaximised());
    EXPECT_EQ(windowWidth, 640);
    EXPECT_EQ(windowHeight, 480);
    EXPECT_EQ(windowX, 11);
    EXPECT_EQ(windowY, 22);
    CloseMainWindow();
}

TEST_F(SettingsFile, WindowMinimisedFromMaximisedIsSavedAsMaximised) {
    OpenMainWindow({"t", 0, 11, 22, 640, 480, false});
    ShowMainWindow(2);
    ShowMainWindow(1);
    EXPECT_EQ(Saved("Window", "zoomed"), "1");
    EXPECT_FALSE(MainWindowMaximised());
    CloseMainWindow();
}

TEST_F(SettingsFile, WindowWithoutAnAreaKeepsTheLastKnownPlace) {
    windowX = 5, windowY = 6, windowWidth = 700, windowHeight = 500;
    OpenMainWindow({"t", 0, -32000, -32000, 0, 0, false});
    EXPECT_EQ(Saved("Window", "x2"), "700");
    EXPECT_EQ(windowX, 5);
    EXPECT_EQ(windowY, 6);
    EXPECT_EQ(windowHeight, 500);
    CloseMainWindow();
}

TEST_F(SettingsFile, WithoutAWindowTheLastKnownPlaceIsSaved) {
    zoomed = 1;
    windowX = 33;
    EXPECT_EQ(Saved("Window", "x"), "33");
    EXPECT_EQ(zoomed, 1);
}

TEST_F(SettingsFile, ColoursOfALoneLogDoNotReachTheFile) {
    ExpertMode = 2;
    ExclusiveF1Color = 1;
    colorStored[0][chNe] = 4;
    colorStored[1][chNe] = 6;
    ApplyColorSet(0);
    ASSERT_EQ(colorCurrent[chNe], 6);
    EXPECT_EQ(Saved("GraphSetting", "Color_Green0"), "4");
    EXPECT_EQ(Saved("GraphSetting", "Color_Gonly0"), "6");
}

TEST_F(SettingsFile, SavingMakesTheProgramsFolderCurrent) {
    const std::string before = CurrentFolder();
    SaveSettings();
    EXPECT_EQ(std::filesystem::canonical(CurrentFolder()), std::filesystem::canonical(folder.path));
    std::filesystem::current_path(before);
}

TEST_F(SettingsFile, FolderThatCannotBeWrittenIsNotReported) {
    SetProgramFolder(folder.Path("none").c_str());
    shown.clear();
    SaveSettings();
    LoadSettings();
    EXPECT_TRUE(shown.empty());
    EXPECT_EQ(folder.EntryCount(), 0);
}

#ifndef _WIN32
// Runs work in a process of its own that has no more rights than any user, as root may write everywhere; returns its exit
// status, -1 without one.
static int StatusAsAnyUser(int (*work)()) {
    constexpr uid_t nobody = 65534;
    const pid_t child = fork();
    if (child == 0) _exit(geteuid() == 0 && setuid(nobody) != 0 ? 99 : work());
    int status = 0;
    return waitpid(child, &status, 0) == child && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST_F(SettingsFile, AReadOnlyProgramFolderIsLeftAsItIsAndNothingIsReported) {
    const std::string before = "[Window]\r\nx=123\r\n";
    folder.Write("ZRKA.ini", before);
    std::filesystem::permissions(folder.path, std::filesystem::perms(0555));
    const int status = StatusAsAnyUser([] {
        shown.clear();
        LoadSettings();
        if (windowX != 123) return 1;
        windowX = 77;
        if (std::fopen(ProgramFile("probe").c_str(), "wb") != nullptr) return 2;  // it can be written to after all
        SaveSettings();
        return shown.empty() ? 0 : 3;
    });
    std::filesystem::permissions(folder.path, std::filesystem::perms(0755));
    if (status == 99) GTEST_SKIP() << "no other user to be had here";
    EXPECT_EQ(status, 0);
    EXPECT_EQ(folder.Read("ZRKA.ini"), before);
    EXPECT_EQ(folder.EntryCount(), 1);
}
#endif

TEST_F(SettingsFile, FolderInPlaceOfTheFileGivesDefaultsAndIsLeftAlone) {
    std::filesystem::create_directory(folder.path / "ZRKA.ini");
    std::filesystem::create_directory(folder.path / "csvlabel.ini");
    ExpertMode = 2;
    LoadSettings();
    EXPECT_EQ(ExpertMode, 0);
    SaveSettings();
    EXPECT_TRUE(std::filesystem::is_directory(folder.path / "ZRKA.ini"));
    EXPECT_EQ(folder.EntryCount(), 2);
    EXPECT_TRUE(shown.empty());
}

TEST_F(SettingsFile, FileTooLargeToReadIsLeftAlone) {
    const std::string bytes = "[Window]\nx=5\n" + std::string(profileSizeLimit, '\n');
    Load(bytes);
    EXPECT_EQ(windowX, 0);
    SaveSettings();
    EXPECT_EQ(folder.Read("ZRKA.ini"), bytes);
}

TEST_F(SettingsFile, HostileBytesGiveDefaultsAndTheFileCanBeSavedAgain) {
    std::string bytes = "\xFF\xFEZ\0[\0=]\0[[[[\n=\n[]\n=1\n[Window\n]"s;
    for (int i = 0; i < 3000; i++) bytes += static_cast<char>(i * 7919 >> 3);
    Load(bytes);
    for (const IntRow& row : intRows) {
        SCOPED_TRACE(row.key);
        EXPECT_EQ(*row.variable, row.standard);
    }
    windowX = 12;
    SaveSettings();
    windowX = 0;
    LoadSettings();
    EXPECT_EQ(windowX, 12);
    EXPECT_EQ(folder.Read("ZRKA.ini").compare(0, bytes.size(), bytes), 0) << "what it held stays";
}

TEST_F(SettingsFile, OverrideStandsInPlaceOfTheFilesValue) {
    EXPECT_EQ(OverrideSetting("SPLConfig", "Debug", "1"), 0);
    EXPECT_EQ(OverrideSetting("modesetting", "expertmode", "9"), 0);
    EXPECT_EQ(OverrideSetting("GraphSetting", "rpmpos", "17"), 0);
    EXPECT_EQ(OverrideSetting("Path", "Data", "/logs"), 0);
    EXPECT_EQ(OverrideSetting("GraphSetting", " VRW_View_Green", "0"), 0);
    Load("[SPLConfig]\r\nDebug=0\r\n");
    EXPECT_EQ(Debug, 1);
    EXPECT_EQ(ExpertMode, 2) << "held as a value of the file";
    EXPECT_EQ(channelPosition[chNe], 17);
    EXPECT_STREQ(dataFolder, "/logs");
    EXPECT_EQ(showChannel[0][chVRW], 0);
    EXPECT_EQ(folder.Read("ZRKA.ini"), "[SPLConfig]\r\nDebug=0\r\n");
}

TEST_F(SettingsFile, StartStateHasNoOverrides) {
    OverrideSetting("SPLConfig", "Debug", "1");
    DefaultSettingsFile();
    LoadSettings();
    EXPECT_EQ(Debug, 0);
}

TEST_F(SettingsFile, LastOverrideOfAKeyCounts) {
    OverrideSetting("SPLConfig", "Debug", "1");
    OverrideSetting("SPLConfig", "Debug", "2");
    LoadSettings();
    EXPECT_EQ(Debug, 2);
}

TEST_F(SettingsFile, OverrideOfAnUnknownKeyIsRefused) {
    EXPECT_EQ(OverrideSetting("SPLConfig", "Debugg", "1"), 1);
    EXPECT_EQ(OverrideSetting("ModeSetting", "Debug", "1"), 1);
    EXPECT_EQ(OverrideSetting("", "", ""), 1);
    EXPECT_EQ(OverrideSetting("GraphSetting", "Color_Green14", "1"), 1);
}

TEST_F(SettingsFile, EveryKeyCanBeOverridden) {
    for (const IntRow& row : intRows) {
        SCOPED_TRACE(row.key);
        EXPECT_EQ(OverrideSetting(row.section, row.key, "1"), 0);
    }
    for (const ScaledRow& row : scaledRows) {
        SCOPED_TRACE(row.key);
        EXPECT_EQ(OverrideSetting(row.section, row.key, "1"), 0);
    }
}

static const char* const labelSections[] = {"Time", "Ne", "TH", "VFW", "VRW", "FRSUS", "RRSUS", "LAF1", "LAF2", "VB", "AUX1", "AUX2", "LAP"};

TEST_F(SettingsFile, ColumnTitlesWithoutAFileSayNoData) {
    for (auto& section : csvLabel)
        for (auto& label : section) strcpy(label, "x");
    LoadSettings();
    for (const auto& section : csvLabel)
        for (const auto& label : section) EXPECT_STREQ(label, "No data");
}

TEST_F(SettingsFile, EachColumnTitleReachesItsPlace) {
    std::string bytes;
    for (const char* section : labelSections) {
        bytes += std::string("[") + section + "]\r\n";
        for (int key = 0; key < csvLabelKeys; key++) bytes += std::to_string(key) + "=" + section + " no. " + std::to_string(key) + "\r\n";
    }
    folder.Write("csvlabel.ini", bytes);
    LoadSettings();
    for (int section = 0; section < csvLabelSections; section++)
        for (int key = 0; key < csvLabelKeys; key++)
            EXPECT_EQ(csvLabel[section][key], std::string(labelSections[section]) + " no. " + std::to_string(key));
}

TEST_F(SettingsFile, ColumnTitleIsCutAt63CharactersAndKeepsItsBytes) {
    const std::string longest = std::string(60, 'a') + "\x93\xFA\x96";
    folder.Write("csvlabel.ini", "[Ne]\n0=" + longest + "\x7B\n15=\n16=x\n");
    LoadSettings();
    EXPECT_EQ(csvLabel[1][0], longest);
    EXPECT_STREQ(csvLabel[1][15], "");
    EXPECT_STREQ(csvLabel[1][1], "No data");
}
