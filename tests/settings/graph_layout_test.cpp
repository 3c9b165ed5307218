#include "settings/graph_layout.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "graph/color_scheme.h"
#include "graph/view_state.h"
#include "platform/files.h"
#include "platform/headless/script.h"
#include "run_data/load_pipeline.h"
#include "run_data/run_store.h"
#include "settings/settings_file.h"
#include "tests/test_folder.h"

struct GraphLayout : testing::Test {
    TestFolder folder;

    GraphLayout() {
        SetProgramFolder(folder.Path().c_str());
        DefaultScript();
        DefaultRunStore();
        DefaultViewState();
        DefaultSettings();
        DefaultSettingsFile();
        loadBusy = 0;
    }

    void Load(const std::string& bytes) {
        folder.Write("ZRKA.ini", bytes);
        LoadGraphLayout(0);
    }
    void LoadKey(const std::string& key, const std::string& value) { Load("[GraphSetting]\r\n" + key + "=" + value + "\r\n"); }
    void LoadUserFile(const std::string& bytes) {
        QueueAnswer(Answer::path, folder.Write("mine.cfg", bytes));
        LoadGraphLayout(1);
    }
    void SaveUserFile() {
        QueueAnswer(Answer::path, folder.Path("mine.cfg"));
        SaveGraphLayout(1);
    }
    std::string UserKey(const std::string& key) {
        const ProfileText profile = ParseProfile(folder.Read("mine.cfg"));
        return std::string(ProfileString(profile, "GraphSetting", key, "missing"));
    }
};

// Every key but the zooms: its variable and what a missing key gives.
struct LayoutRow {
    std::string key;
    int* variable;
    int standard;
};
static std::vector<LayoutRow> LayoutRows() {
    static const char* const positions[] = {"rpmpos",  "tpspos", "vfwpos",  "vrwpos",  "fsuspos", "rsuspos",  "lafpos",
                                            "laf2pos", "vbpos",  "aux1pos", "aux2pos", "slippos", "fsusvpos", "rsusvpos"};
    static const char* const words[] = {"NE",   "TPS", "VFW",  "VRW",  "FSUS", "RSUS",  "LAF1",
                                        "LAF2", "VB",  "AUX1", "AUX2", "SLIP", "FSUSV", "RSUSV"};
    static const int position[] = {360, 430, 840, 840, 600, 680, 450, 450, 80, 840, 840, 700, 600, 680};
    static const int grid[][4] = {{5000, 16000, 1000, 1}, {0, 100, 25, 1},     {0, 3000, 500, 1},    {0, 3000, 500, 0},
                                  {0, 12000, 1000, 1},    {0, 3500, 1000, 1},  {1150, 1350, 50, 1},  {1150, 1350, 50, 0},
                                  {90, 150, 30, 0},       {0, 5000, 2500, 0},  {0, 5000, 2500, 0},   {-500, 200, 100, 0},
                                  {-2000, 2000, 1000, 0}, {-1000, 1000, 500, 0}};
    static const int view[] = {1, 1, 1, 1, 1, 1, 1, 0, 1, 0, 0, 0, 0, 0};
    std::vector<LayoutRow> rows;
    for (int c = 0; c < layoutChannels; c++) {
        const std::string n = std::to_string(c);
        const bool odd = c == 3 || c == 5 || c == 7;
        rows.push_back({positions[c], &channelPosition[c], position[c]});
        rows.push_back({"GraphGrid_min" + n, &GraphGrid_min[c], grid[c][0]});
        rows.push_back({"GraphGrid_max" + n, &GraphGrid_max[c], grid[c][1]});
        rows.push_back({"GraphGrid_step" + n, &GraphGrid_step[c], grid[c][2]});
        rows.push_back({"GraphGrid_disp" + n, &GraphGrid_disp[c], grid[c][3]});
        rows.push_back({"Color_Green" + n, &colorStored[0][c], odd});
        rows.push_back({"Color_Gonly" + n, &colorStored[1][c], odd});
        rows.push_back({"Color_Red" + n, &Color_Red[c], odd || c == 10 ? 3 : 2});
        rows.push_back({"Color_White" + n, &Color_White[c], odd || c == 10 ? 7 : 8});
        rows.push_back({std::string(words[c]) + "_View_Green", &showChannel[0][c], view[c]});
        rows.push_back({std::string(words[c]) + "_View_Red", &showChannel[1][c], view[c]});
        rows.push_back({std::string(words[c]) + "_View_White", &showChannel[2][c], view[c]});
    }
    rows.push_back({"Lap_Point_Green", &MarksPerLap[0], 1});
    rows.push_back({"Lap_Point_Red", &MarksPerLap[1], 1});
    rows.push_back({"Lap_Point_White", &MarksPerLap[2], 1});
    return rows;
}

struct ZoomRow { const char* key; int standard; };
static const ZoomRow zoomRows[layoutChannels] = {
    {"rpmzoom", 50000}, {"tpszoom", 1000}, {"vfwzoom", 20000},  {"vrwzoom", 20000},  {"fsuszoom", 75000},
    {"rsuszoom", 50000}, {"lafzoom", 8000}, {"laf2zoom", 8000}, {"vbzoom", 20000},   {"aux1zoom", 10000},
    {"aux2zoom", 10000}, {"slipzoom", 10000}, {"fsusvzoom", 50000}, {"rsusvzoom", 50000}};

static bool IsFlag(const LayoutRow& row) {
    return row.key.find("_View_") != std::string::npos || row.key.find("_disp") != std::string::npos;
}
// The one key that reading does not find under the name that writing gives it.
static bool IsBlankKey(const LayoutRow& row) { return row.key == "VRW_View_Green"; }

TEST_F(GraphLayout, MissingKeyGivesItsDefault) {
    for (const LayoutRow& row : LayoutRows()) {
        SCOPED_TRACE(row.key);
        *row.variable = 77;
        LoadGraphLayout(0);
        EXPECT_EQ(*row.variable, row.standard);
    }
    for (int channel = 0; channel < layoutChannels; channel++) {
        SCOPED_TRACE(zoomRows[channel].key);
        channelZoom[channel] = 77;
        LoadGraphLayout(0);
        EXPECT_EQ(channelZoom[channel], zoomRows[channel].standard / 1000.0);
    }
}

TEST_F(GraphLayout, FileOfAnotherKindLoadsAsTheDefaultsWithoutAMessage) {
    for (const LayoutRow& row : LayoutRows()) *row.variable = 77;
    LoadUserFile("BM\x01\x02 not a layout at all\n\n[Other]\nrpmpos=5\n");
    for (const LayoutRow& row : LayoutRows()) {
        SCOPED_TRACE(row.key);
        EXPECT_EQ(*row.variable, row.standard);
    }
    for (const Shown& box : shown) EXPECT_EQ(box.kind, "open");
}

TEST_F(GraphLayout, EachKeyReachesItsVariableAndNoOther) {
    const std::vector<LayoutRow> rows = LayoutRows();
    for (const LayoutRow& row : rows) {
        SCOPED_TRACE(row.key);
        const int value = IsFlag(row) ? !row.standard : 3 - (row.standard == 3);
        LoadKey(IsBlankKey(row) ? " " + row.key : row.key, std::to_string(value));
        for (const LayoutRow& other : rows) {
            SCOPED_TRACE(other.key);
            EXPECT_EQ(*other.variable, other.variable == row.variable ? value : other.standard);
        }
    }
    for (int channel = 0; channel < layoutChannels; channel++) {
        SCOPED_TRACE(zoomRows[channel].key);
        LoadKey(zoomRows[channel].key, "12345");
        for (int other = 0; other < layoutChannels; other++)
            EXPECT_EQ(channelZoom[other], other == channel ? 12.345 : zoomRows[other].standard / 1000.0);
    }
}

TEST_F(GraphLayout, EveryKeyIsWrittenAndReadAgain) {
    for (const LayoutRow& row : LayoutRows()) {
        SCOPED_TRACE(row.key);
        DefaultSettings();
        const int value = IsFlag(row) ? !row.standard : 3 - (row.standard == 3);
        *row.variable = value;
        SaveUserFile();
        EXPECT_EQ(UserKey(row.key), std::to_string(value));
        DefaultSettings();
        LoadUserFile(folder.Read("mine.cfg"));
        EXPECT_EQ(*row.variable, IsBlankKey(row) ? 1 : value);
    }
    for (int channel = 0; channel < layoutChannels; channel++) {
        SCOPED_TRACE(zoomRows[channel].key);
        channelZoom[channel] = 3.25;
        SaveUserFile();
        EXPECT_EQ(UserKey(zoomRows[channel].key), "3250");
        channelZoom[channel] = 1;
        LoadUserFile(folder.Read("mine.cfg"));
        EXPECT_EQ(channelZoom[channel], 3.25);
    }
}

TEST_F(GraphLayout, SavedFileHoldsThisSectionOnly) {
    SaveUserFile();
    const std::string bytes = folder.Read("mine.cfg");
    EXPECT_EQ(bytes.find("[GraphSetting]\r\n"), 0u);
    EXPECT_EQ(bytes.find('[', 1), std::string::npos);
    EXPECT_EQ(std::count(bytes.begin(), bytes.end(), '\n'), 1 + 14 * 13 + 3);
}

TEST_F(GraphLayout, FlagWithoutTheKeyUnderALeadingBlankIs1) {
    showChannel[0][chVRW] = 0;
    SaveUserFile();
    EXPECT_EQ(UserKey("VRW_View_Green"), "0");
    LoadUserFile(folder.Read("mine.cfg"));
    EXPECT_EQ(showChannel[0][chVRW], 1);
    LoadUserFile("[GraphSetting]\n VRW_View_Green=0\n");
    EXPECT_EQ(showChannel[0][chVRW], 0);
    LoadUserFile("[GraphSetting]\nVRW_View_Red=0\n");
    EXPECT_EQ(showChannel[1][chVRW], 0) << "the other files have no such blank";
}

TEST_F(GraphLayout, ZoomReadsUnsignedAndZeroBecomesAThousandth) {
    LoadKey("rpmzoom", "-1");
    EXPECT_DOUBLE_EQ(channelZoom[chNe], 4294967.295);
    LoadKey("rpmzoom", "0");
    EXPECT_EQ(channelZoom[chNe], 0.001);
    LoadKey("rpmzoom", "1");
    EXPECT_EQ(channelZoom[chNe], 0.001);
    LoadKey("rpmzoom", "2");
    EXPECT_EQ(channelZoom[chNe], 0.002);
}

TEST_F(GraphLayout, ZoomIsCutOnWriting) {
    channelZoom[chNe] = 1.2349;
    SaveUserFile();
    EXPECT_EQ(UserKey("rpmzoom"), "1234");
}

TEST_F(GraphLayout, MarksPerLapOtherThan1To3Become1) {
    struct { const char* text; int marks; } const rows[] = {{"0", 1}, {"1", 1}, {"2", 2}, {"3", 3}, {"4", 1}, {"-1", 1}, {"x", 1}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        LoadKey("Lap_Point_Red", row.text);
        EXPECT_EQ(MarksPerLap[1], row.marks);
    }
}

TEST_F(GraphLayout, FlagsAreHeldTo0And1) {
    LoadKey("NE_View_White", "5");
    EXPECT_EQ(showChannel[2][chNe], 1);
    LoadKey("GraphGrid_disp3", "-2");
    EXPECT_EQ(GraphGrid_disp[3], 1);
}

TEST_F(GraphLayout, LoadFillsTheCurrentAndTheStoredRow) {
    colorCurrent[14] = 5;
    Load("[GraphSetting]\nColor_Green3=6\nColor_Gonly3=4\n");
    EXPECT_EQ(colorCurrent[3], 6);
    EXPECT_EQ(colorStored[0][3], 6);
    EXPECT_EQ(colorStored[1][3], 4);
    EXPECT_EQ(colorStored[0][14], 5) << "all 15 entries come from the current row";
}

TEST_F(GraphLayout, LoadFromAFileChoosesTheColoursOfALoneLog) {
    ExpertMode = 2;
    ExclusiveF1Color = 1;
    LoadUserFile("[GraphSetting]\nColor_Green0=6\nColor_Gonly0=4\n");
    EXPECT_EQ(colorCurrent[0], 4);
    EXPECT_EQ(colorStored[0][0], 6);
    slotInUse[1] = 1;
    LoadUserFile("[GraphSetting]\nColor_Green0=6\nColor_Gonly0=4\n");
    EXPECT_EQ(colorCurrent[0], 6);
}

TEST_F(GraphLayout, SavingToAFileWritesTheColoursThatFile1Wears) {
    ExpertMode = 2;
    ExclusiveF1Color = 1;
    colorStored[0][0] = 6;
    colorStored[1][0] = 4;
    SaveUserFile();
    EXPECT_EQ(UserKey("Color_Green0"), "4");
    slotInUse[2] = 1;
    SaveUserFile();
    EXPECT_EQ(UserKey("Color_Green0"), "6");
    EXPECT_EQ(UserKey("Color_Gonly0"), "4");
}

TEST_F(GraphLayout, StoredColourIsTheCurrentOneAlsoOfALoneLog) {
    colorCurrent[2] = 5;
    colorCurrent[3] = 6;
    StoreColorIndex(2);
    EXPECT_EQ(colorStored[0][2], 5);
    EXPECT_EQ(colorStored[0][3], 1);
    EXPECT_EQ(colorStored[1][2], 0);
}

TEST_F(GraphLayout, LoadFromAFileEndsTheAfMap) {
    afMapOn = 1;
    afProgress = 99;
    LoadUserFile("");
    EXPECT_EQ(afMapOn, 0);
    EXPECT_EQ(afProgress, 0);
}

TEST_F(GraphLayout, CancelledLoadChangesNothing) {
    channelPosition[0] = 5;
    afMapOn = 1;
    QueueAnswer(Answer::cancel);
    LoadGraphLayout(1);
    EXPECT_EQ(channelPosition[0], 5);
    EXPECT_EQ(afMapOn, 1);
    EXPECT_EQ(loadBusy, 0);
    EXPECT_EQ(shown.size(), 1u);
}

TEST_F(GraphLayout, CancelledSaveWritesNothing) {
    QueueAnswer(Answer::cancel);
    SaveGraphLayout(1);
    EXPECT_EQ(folder.EntryCount(), 0);
    EXPECT_EQ(loadBusy, 0);
}

TEST_F(GraphLayout, SecondRequestAtOnceReturnsAtOnce) {
    loadBusy = 1;
    channelPosition[0] = 5;
    LoadUserFile("[GraphSetting]\nrpmpos=9\n");
    SaveGraphLayout(1);
    EXPECT_EQ(channelPosition[0], 5);
    EXPECT_TRUE(shown.empty());
    EXPECT_EQ(loadBusy, 1);
}

TEST_F(GraphLayout, RequestsWhileADialogIsOpenReturnAtOnce) {
    SetFileDialogHandler([] {
        LoadGraphLayout(1);
        SaveGraphLayout(1);
    });
    LoadGraphLayout(1);
    EXPECT_EQ(shown.size(), 1u);
    SaveGraphLayout(1);
    EXPECT_EQ(shown.size(), 2u);
    EXPECT_EQ(loadBusy, 0);
}

TEST_F(GraphLayout, DialogsOfferCfgFiles) {
    LoadUserFile("");
    SaveUserFile();
    ASSERT_EQ(shown.size(), 2u);
    EXPECT_EQ(shown[0].kind, "open");
    EXPECT_EQ(shown[1].kind, "save");
    for (const Shown& dialog : shown) EXPECT_NE(dialog.text.find("cfg(*.cfg)"), std::string::npos) << dialog.text;
    EXPECT_EQ(loadBusy, 0);
}

TEST_F(GraphLayout, SaveKeepsWhatElseTheFileHolds) {
    folder.Write("mine.cfg", "; wet track\n[GraphSetting]\nRPMPOS = 1\n[Notes]\na=b\n");
    SaveUserFile();
    const std::string bytes = folder.Read("mine.cfg");
    EXPECT_EQ(bytes.find("; wet track\n[GraphSetting]\nRPMPOS = 360\n"), 0u);
    EXPECT_NE(bytes.find("\n[Notes]\na=b\n"), std::string::npos);
}

TEST_F(GraphLayout, SaveIntoAFolderThatIsNotThereIsNotReported) {
    QueueAnswer(Answer::path, folder.Path("none/mine.cfg"));
    SaveGraphLayout(1);
    EXPECT_EQ(folder.EntryCount(), 0);
    for (const Shown& box : shown) EXPECT_EQ(box.kind, "save");
}

TEST_F(GraphLayout, SaveWithoutADialogGoesIntoTheSettingsFile) {
    folder.Write("ZRKA.ini", "[Window]\nx=5\n");
    channelPosition[chVB] = 81;
    SaveGraphLayout(0);
    const ProfileText profile = ParseProfile(folder.Read("ZRKA.ini"));
    EXPECT_EQ(ProfileInt(profile, "GraphSetting", "vbpos", 0), 81);
    EXPECT_EQ(ProfileInt(profile, "Window", "x", 0), 5);
}

TEST_F(GraphLayout, SettingsFileStaysTheProgramsAfterALayoutFile) {
    LoadUserFile("[GraphSetting]\nrpmpos=9\n[Window]\nx=44\n");
    SaveSettings();
    EXPECT_EQ(folder.Read("mine.cfg"), "[GraphSetting]\nrpmpos=9\n[Window]\nx=44\n");
    const ProfileText profile = ParseProfile(folder.Read("ZRKA.ini"));
    EXPECT_EQ(ProfileInt(profile, "GraphSetting", "rpmpos", 0), 9);
    EXPECT_EQ(ProfileInt(profile, "Window", "x", 1), 0);
}
