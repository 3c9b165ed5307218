#include "run_data/load_pipeline.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <random>

#include "app/frame_loop.h"
#include "graph/view_state.h"
#include "platform/file_dialogs.h"
#include "platform/files.h"
#include "platform/headless/script.h"
#include "platform/system_files.h"
#include "run_data/csv_columns.h"
#include "run_data/csv_log.h"
#include "run_data/log_header.h"
#include "run_data/run_store.h"
#include "settings/settings.h"
#include "tests/test_folder.h"

namespace {

// A native log of version 2 with a full battery and a mark in the frames named.
std::string NativeLog(int frames, const std::vector<int>& marks = {}) {
    std::string log(headerSize + frameSize * frames, '\0');
    log[typeMarkAt] = '3';
    log[versionAt] = 2;
    log[neDividerAt] = 1;
    log[marksPerLapAt] = 1;
    log[lapVoltageAt] = 121;
    for (int i = 0; i < frames; i++) log[headerSize + frameSize * i + 13] = '\xAA';
    for (int frame : marks) log[headerSize + frameSize * (frame - 1) + 2] = '\x80';
    return log;
}

class LoadPipeline : public testing::Test {
  protected:
    void SetUp() override {
        LoadDefaults();
        DefaultScript();
        shown.clear();
        dataFolder[0] = 0;
    }
    void TearDown() override {
        EnterFolder(startFolder.c_str());
        DefaultScript();
    }

    static void ExpectOneBox(const std::string& text, const std::string& title) {
        ASSERT_EQ(shown.size(), 1u);
        EXPECT_EQ(shown[0].kind, "box");
        EXPECT_EQ(shown[0].text, text);
        EXPECT_EQ(shown[0].title, title);
    }
    // A log of 100 samples from another file in File 1, so that what a load leaves alone can be seen.
    void LoadFirst() {
        LoadFile(folder.Write("first.zrk", NativeLog(99)).c_str(), 0);
        ASSERT_EQ(sampleCount[0], 100);
        ASSERT_TRUE(shown.empty());
    }
    // Takes the place of the file at hand as LoadFile does before it renames.
    void TakeAtHand(const std::string& name) {
        std::snprintf(pathAtHand, pathSize, "%s", folder.Write(name, "x").c_str());
        std::snprintf(nameAtHand, pathSize, "%s", name.c_str());
    }

    TestFolder folder;
    std::string startFolder = CurrentFolder();
};
using LoadFileOf = LoadPipeline;
using OpenDialogOf = LoadPipeline;
using Dispatch = LoadPipeline;
using Unloading = LoadPipeline;

TEST_F(LoadFileOf, APathFillsTheSlotAndNamesIt) {
    const std::string path = folder.Write("lap.zrk", NativeLog(99));
    LoadFile(path.c_str(), 1);
    EXPECT_EQ(sampleCount[1], 100);
    EXPECT_EQ(slotInUse[1], 1);
    EXPECT_EQ(fileKind[1], 1);
    EXPECT_STREQ(fileTitle[1], "lap.zrk");
    EXPECT_EQ(filePath[1], path);
    EXPECT_EQ(loadBusy, 0);
    EXPECT_TRUE(shown.empty());
}

TEST_F(LoadFileOf, ASlotLeavesTheOtherSlotsAndTheirNames) {
    LoadFirst();
    LoadFile(folder.Write("second.zrk", NativeLog(49)).c_str(), 1);
    LoadFile(folder.Write("third.zrk", NativeLog(9)).c_str(), 0);
    EXPECT_EQ(sampleCount[0], 10);
    EXPECT_EQ(sampleCount[1], 50);
    EXPECT_STREQ(fileTitle[1], "second.zrk");
}

TEST_F(LoadFileOf, AnEmptyPathRunsTheClosingStepsAlone) {
    LoadFirst();
    extremeMarkValid[2][5] = 1;
    afMapOn = 1;
    LoadFile("", 0);
    EXPECT_EQ(extremeMarkValid[2][5], 0u);
    EXPECT_EQ(afMapOn, 0);
    EXPECT_EQ(activityCount, 150);
    EXPECT_STREQ(fileTitle[0], "first.zrk");
    EXPECT_EQ(sampleCount[0], 100);
}

TEST_F(LoadFileOf, AnyRequestDoesNothingWhileALoadRuns) {
    LoadFirst();
    extremeMarkValid[0][0] = 1;
    loadBusy = 1;
    LoadFile(folder.Write("second.zrk", NativeLog(9)).c_str(), 0);
    LoadFile(askRequest, 0);
    EXPECT_EQ(sampleCount[0], 100);
    EXPECT_EQ(extremeMarkValid[0][0], 1u);
    EXPECT_EQ(loadBusy, 1);
    EXPECT_TRUE(shown.empty());
}

TEST_F(LoadFileOf, AFileOf511BytesIsALoadFileError) {
    LoadFirst();
    const std::string path = folder.Write("short.zrk", NativeLog(0).substr(0, 511));
    LoadFile(path.c_str(), 0);
    ExpectOneBox("Load file error " + path, "File Error");
    EXPECT_EQ(sampleCount[0], 100);  // the old log stays, but its name goes
    EXPECT_STREQ(fileTitle[0], "");
    EXPECT_STREQ(filePath[0], "");
    const int32_t rect[4] = {10, 16, 10, 16};
    EXPECT_EQ(std::memcmp(titleRect[0], rect, sizeof rect), 0);
}

TEST_F(LoadFileOf, AHeaderAloneIsALogOfOneSample) {
    LoadFirst();
    LoadFile(folder.Write("header.zrk", NativeLog(0)).c_str(), 0);
    EXPECT_TRUE(shown.empty());
    EXPECT_EQ(sampleCount[0], 1);
    EXPECT_EQ(lapCount[0], 1);
    EXPECT_STREQ(fileTitle[0], "header.zrk");
}

TEST_F(LoadFileOf, AMissingFileIsALoadFileError) {
    const std::string path = folder.Path("missing.zrk");
    LoadFile(path.c_str(), 2);
    ExpectOneBox("Load file error " + path, "File Error");
    EXPECT_EQ(slotInUse[2], 0);
}

TEST_F(LoadFileOf, APathTooLongForItsBufferIsALoadFileError) {
    const std::string path = folder.Path(std::string(240, 'a')) + ".zrk";
    LoadFile(path.c_str(), 0);
    ExpectOneBox("Load file error " + path, "File Error");
}

TEST_F(LoadFileOf, AFileWhoseLengthAndMarginPass31BitsIsALoadFileError) {
    const std::string path = folder.Write("large.zrk", NativeLog(0));
    std::filesystem::resize_file(folder.path / "large.zrk", 2147482000);  // sparse
    LoadFile(path.c_str(), 0);
    ExpectOneBox("Load file error " + path, "File Error");
}

TEST_F(LoadFileOf, AReaderThatFailsLeavesTheSlotResetAndTheFilesName) {
    LoadFirst();
    std::string log = NativeLog(50);
    log[versionAt] = 5;
    LoadFile(folder.Write("strange.zrk", log).c_str(), 0);
    ExpectOneBox("Memory Ensure Error.(Data Main buffers)", "Memory Error!!");
    EXPECT_EQ(sampleCount[0], 1);
    EXPECT_EQ(slotInUse[0], 1);
    EXPECT_STREQ(fileTitle[0], "strange.zrk");
}

TEST_F(LoadFileOf, ARefusedTypeLeavesTheOldLogWithoutItsName) {
    LoadFirst();
    extremeMarkValid[1][7] = 1;
    LoadFile(folder.Write("notes.txt", NativeLog(10)).c_str(), 0);
    ExpectOneBox("Not support File Type", "File Error");
    EXPECT_EQ(sampleCount[0], 100);
    EXPECT_EQ(fileKind[0], 1);
    EXPECT_STREQ(fileTitle[0], "");
    EXPECT_STREQ(filePath[0], "");
    EXPECT_EQ(extremeMarkValid[1][7], 0u);
}

TEST_F(LoadFileOf, ARefusedFileRunsTheRenameAsWell) {
    LoadFirst();
    ModifyFileName = 1;
    LoadFile(folder.Write("text.zrk", std::string(600, 'x')).c_str(), 0);
    EXPECT_EQ(folder.Read("text[-'--''---(0-1)].zrk").size(), 600u);
    EXPECT_STREQ(fileTitle[0], "");
}

TEST_F(LoadFileOf, ALoadedLogBringsItsFileNameWithTheRename) {
    ModifyFileName = 1;
    LoadFile(folder.Write("lap.zrk", NativeLog(3000, {700, 1402, 2105})).c_str(), 0);
    EXPECT_STREQ(fileTitle[0], "lap[0'03''510(2-4)].zrk");
    EXPECT_EQ(filePath[0], folder.Path("lap[0'03''510(2-4)].zrk"));
    EXPECT_EQ(folder.EntryCount(), 1);
    LoadFile(std::string(filePath[0]).c_str(), 0);
    EXPECT_STREQ(fileTitle[0], "lap[0'03''510(2-4)].zrk");
    EXPECT_TRUE(shown.empty());
}

// What a load into another slot must leave as it is.
struct SlotState {
    std::vector<int64_t> numbers;
    std::string texts;
    bool operator==(const SlotState&) const = default;
};
SlotState StateOf(int slot) {
    SlotState state;
    ForEachSampleArray(slot, [&](const auto& array, bool) {
        state.numbers.push_back(static_cast<int64_t>(array.size()));
        state.numbers.insert(state.numbers.end(), array.begin(), array.end());
    });
    state.numbers.insert(state.numbers.end(), std::begin(lapStart[slot]), std::end(lapStart[slot]));
    state.numbers.insert(state.numbers.end(), std::begin(lapLength[slot]), std::end(lapLength[slot]));
    for (const auto* scalars : {sampleCount, lapCount, slotInUse, formatVersion, fileKind, cursorPos, currentLap, MarksPerLap})
        state.numbers.push_back(scalars[slot]);
    for (const auto* sensors : {neDivider, frontPulses, frontTyreMm, rearTyreMm, rearSprocket, fsusType, fsusZeroRaw, primaryRatio})
        state.numbers.push_back(sensors[slot]);
    for (const auto& row : {channelMin[slot], channelMax[slot], showChannel[slot]})
        state.numbers.insert(state.numbers.end(), row, row + channelTotal);
    state.texts = std::string(memoText[slot]) + "|" + fileTitle[slot] + "|" + filePath[slot];
    return state;
}

// Bytes of any kind; some of them look like the start of a log.
std::string AnyBytes(std::mt19937& random) {
    constexpr char textLetters[] = "0123456789.,-+e\"\n\r;Time LAPne";
    std::string bytes(512 + random() % 4000, '\0');
    const bool text = random() % 2;
    for (char& byte : bytes) byte = text ? textLetters[random() % (sizeof textLetters - 1)] : static_cast<char>(random());
    if (random() % 3) bytes[typeMarkAt] = '3';
    if (random() % 4) bytes[versionAt] = static_cast<char>(std::array{0, 1, 2, 3, 4, 32, 5}[random() % 7]);
    if (random() % 4) bytes[84] = bytes[85] = 0;  // .qtw: minutes, not hours
    return bytes;
}

int ImportAsOffered(int, int) {
    OpenCsvRows();
    AcceptCsvImport({});
    return 0;
}

TEST_F(LoadFileOf, AnyBytesUnderAnyNameLeaveTheOtherSlots) {
    std::mt19937 random(7);
    for (int slot : {0, 2}) LoadFile(folder.Write("other.zrk", NativeLog(300 + slot, {100})).c_str(), slot);
    const SlotState before[] = {StateOf(0), StateOf(2)};
    SetDialogHandler(ImportAsOffered);
    for (const char* name : {"a.zrk", "a.zrv", "a.qtw", "a.csv", "a.txt", "a"})
        for (int round = 0; round < 40; round++) {
            SCOPED_TRACE(testing::Message() << name << " " << round);
            const std::string bytes = AnyBytes(random);
            const std::string path = folder.Write(name, bytes);
            LoadFile(path.c_str(), 1);
            ASSERT_TRUE(StateOf(0) == before[0]);
            ASSERT_TRUE(StateOf(2) == before[1]);
            ASSERT_EQ(loadBusy, 0);
            ASSERT_GE(sampleCount[1], 1);
            ForEachSampleArray(1, [](const auto& array, bool) { ASSERT_GT(static_cast<int>(array.size()), sampleCount[1]); });
            ASSERT_GE(lapCount[1], 1);
            ASSERT_LE(lapCount[1], lapMarkLimit);
            ASSERT_EQ(folder.Read(name), bytes);
        }
}

TEST_F(LoadFileOf, AFailureInOneSlotLeavesTheOtherSlots) {
    for (int slot : {0, 2}) LoadFile(folder.Write("other.zrk", NativeLog(300 + slot, {100})).c_str(), slot);
    const SlotState before[] = {StateOf(0), StateOf(2)};
    std::string strange = NativeLog(50), longQtw(1200, '\0');
    strange[versionAt] = 5;
    longQtw[84] = 1;
    const struct { const char* name; std::string bytes; } failures[] = {
        {"short.zrk", std::string(511, '3')}, {"type.txt", NativeLog(50)}, {"strange.zrk", strange}, {"long.qtw", longQtw}};
    for (const auto& failure : failures) {
        SCOPED_TRACE(failure.name);
        shown.clear();
        LoadFile(folder.Write(failure.name, failure.bytes).c_str(), 1);
        EXPECT_FALSE(shown.empty());
        EXPECT_TRUE(StateOf(0) == before[0]);
        EXPECT_TRUE(StateOf(2) == before[1]);
    }
}

TEST_F(LoadFileOf, ACsvWithoutATimeBaseLeavesTheSlotResetAndTheFilesName) {
    LoadFirst();
    SetDialogHandler(ImportAsOffered);
    LoadFile(folder.Write("no_time.csv", std::string(600, '7') + "\n").c_str(), 0);
    ASSERT_EQ(shown.size(), 2u);
    EXPECT_EQ(shown[0].kind, "dialog");
    EXPECT_EQ(shown[1].kind, "box");
    EXPECT_EQ(sampleCount[0], 1);
    EXPECT_EQ(Ne[0].size(), 16u);
    EXPECT_EQ(slotInUse[0], 1);
    EXPECT_STREQ(fileTitle[0], "no_time.csv");
}

TEST_F(LoadFileOf, ALogWhoseRenameFailsStandsUnderTheNewName) {
    ModifyFileName = 1;
    folder.Write("lap[-'--''---(0-1)].zrk", "other");
    const std::string path = folder.Write("lap.zrk", NativeLog(99));
    LoadFile(path.c_str(), 0);
    ExpectOneBox("No change file name.", "Error!");
    EXPECT_EQ(sampleCount[0], 100);
    EXPECT_STREQ(fileTitle[0], "lap[-'--''---(0-1)].zrk");
    EXPECT_EQ(filePath[0], path);
}

TEST_F(LoadFileOf, AFolderIsALoadFileError) {
    std::filesystem::create_directory(folder.path / "logs.zrk");
    LoadFile(folder.Path("logs.zrk").c_str(), 0);
    ExpectOneBox("Load file error " + folder.Path("logs.zrk"), "File Error");
}

int LoadFromDialog(int, int) {
    LoadFile("other.zrk", 0);
    LoadFile(askRequest, 1);
    return 0;
}

TEST_F(LoadFileOf, ARequestDuringTheDialogOfACsvLogOpensNothing) {
    LoadFirst();
    EnterFolder(folder.Path().c_str());
    folder.Write("other.zrk", NativeLog(49));
    SetDialogHandler(LoadFromDialog);
    LoadFile(folder.Write("a.csv", std::string(600, ',')).c_str(), 2);
    EXPECT_EQ(sampleCount[0], 100);
    EXPECT_STREQ(fileTitle[0], "first.zrk");
    EXPECT_EQ(slotInUse[1], 0);
    EXPECT_EQ(shown.size(), 1u);  // the dialog alone
    EXPECT_EQ(loadBusy, 0);
}

TEST_F(OpenDialogOf, TheMarkerByteOffersTheLogTypesAndReadsTheChoice) {
    const std::string path = folder.Write("chosen.zrk", NativeLog(9));
    QueueAnswer(Answer::path, path);
    LoadFile(askRequest, 0);
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].kind, "open");
    EXPECT_EQ(shown[0].text, "*(*.*)|*.*|zrk(*.zrk)|*.zrk|qtw(*.qtw)|*.qtw|csv(*.csv)|*.csv");
    EXPECT_EQ(sampleCount[0], 10);
    EXPECT_STREQ(fileTitle[0], "chosen.zrk");
    EXPECT_EQ(filePath[0], path);
}

TEST_F(OpenDialogOf, AChoiceMakesItsFolderTheDataFolder) {
    QueueAnswer(Answer::path, folder.Write("chosen.zrk", NativeLog(9)));
    LoadFile(askRequest, 0);
    EXPECT_EQ(dataFolder, std::filesystem::canonical(folder.path).string());
}

TEST_F(OpenDialogOf, ACancelStillClearsTheMarksAndLeavesTheAfMap) {
    LoadFirst();
    std::snprintf(dataFolder, sizeof dataFolder, "before");
    extremeMarkValid[0][3] = 1;
    afMapOn = keepOn = 1;
    afFade = 50;
    QueueAnswer(Answer::cancel);
    LoadFile(askRequest, 0);
    EXPECT_EQ(extremeMarkValid[0][3], 0u);
    EXPECT_EQ(afMapOn, 0);
    EXPECT_EQ(keepOn, 0);
    EXPECT_EQ(afFade, 0);
    EXPECT_STREQ(fileTitle[0], "first.zrk");
    EXPECT_STREQ(dataFolder, "before");
    EXPECT_EQ(loadBusy, 0);
    EXPECT_EQ(sampleCount[0], 100);
}

TEST_F(Dispatch, ExtensionsCompareThreeCharactersWithoutLetterCase) {
    for (const char* name : {"a.zrk", "a.ZRK", "a.Zrv", "a.zrk2", "a.b.zrv"}) {
        SCOPED_TRACE(name);
        LoadFile(folder.Write(name, NativeLog(9)).c_str(), 0);
        EXPECT_TRUE(shown.empty());
        EXPECT_STREQ(fileTitle[0], name);
        EXPECT_EQ(sampleCount[0], 10);
    }
}

TEST_F(Dispatch, OtherNamesAreRefused) {
    for (const char* name : {"zrk", "a", "a.", "a.zr", "a.zrk.bak", "a.zr k", "a.zip"}) {
        SCOPED_TRACE(name);
        shown.clear();
        LoadFile(folder.Write(name, NativeLog(9)).c_str(), 0);
        ExpectOneBox("Not support File Type", "File Error");
    }
}

TEST_F(Dispatch, APointInTheFolderIsNoExtension) {
    std::filesystem::create_directory(folder.path / "logs.zrk");
    LoadFile(folder.Write("logs.zrk/lap", NativeLog(9)).c_str(), 0);
    ExpectOneBox("Not support File Type", "File Error");
}

TEST_F(Dispatch, ANativeNameWithoutTheTypeMarkIsRefused) {
    for (const char* name : {"a.zrk", "a.zrv"}) {
        SCOPED_TRACE(name);
        shown.clear();
        std::string log = NativeLog(9);
        log[typeMarkAt] = '4';
        LoadFile(folder.Write(name, log).c_str(), 0);
        ExpectOneBox("Not support File Type", "File Error");
    }
}

TEST_F(Dispatch, ACsvWhoseFirstByteIs3GoesToTheCsvImport) {
    LoadFirst();
    LoadFile(folder.Write("a.csv", NativeLog(49)).c_str(), 0);
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].kind, "dialog");
    EXPECT_EQ(shown[0].title, "1027");
    EXPECT_EQ(fileKind[0], 3);
    EXPECT_EQ(sampleCount[0], 100);  // nobody pressed OK: the data stay, the name is the new file's
    EXPECT_STREQ(fileTitle[0], "a.csv");
}

TEST_F(Dispatch, AQtwNameIsASecondaryLogWhateverItsFirstByte) {
    std::string log(1200, '\0');
    log[86] = 1;  // second
    for (char first : {'3', 'x'}) {
        log[0] = first;
        LoadFile(folder.Write("run.qtw", log).c_str(), 1);
        EXPECT_EQ(fileKind[1], 2);
        EXPECT_EQ(sampleCount[1], 200);
        EXPECT_STREQ(fileTitle[1], "run.qtw");
    }
    EXPECT_TRUE(shown.empty());
}

TEST_F(Dispatch, ARefusedQtwKeepsItsKindAndName) {
    std::string log(1200, '\0');
    log[84] = 1;  // 65536 s
    LoadFile(folder.Write("long.qtw", log).c_str(), 0);
    EXPECT_EQ(shown.size(), 2u);
    EXPECT_EQ(fileKind[0], 2);
    EXPECT_STREQ(fileTitle[0], "long.qtw");
}

TEST_F(Dispatch, AZrvOf1024BytesOfAnOldVersionIsAHeaderAlone) {
    LoadFile(folder.Write("setup.zrv", NativeLog(32)).c_str(), 0);
    EXPECT_EQ(lengthAtHand, headerSize);
    EXPECT_EQ(sampleCount[0], 1);
}

TEST_F(Dispatch, OnlyThatLengthNameAndVersionAreTakenAsAHeaderAlone) {
    LoadFile(folder.Write("log.zrk", NativeLog(32)).c_str(), 0);
    EXPECT_EQ(sampleCount[0], 33);
    LoadFile(folder.Write("log.zrv", NativeLog(33)).c_str(), 0);
    EXPECT_EQ(sampleCount[0], 34);
    std::string log = NativeLog(32);
    log[versionAt] = 3;
    LoadFile(folder.Write("new.zrv", log).c_str(), 0);
    EXPECT_EQ(lengthAtHand, extendedHeaderSize);
}

class RenamedLog : public LoadPipeline {
  protected:
    void SetUp() override {
        LoadPipeline::SetUp();
        ModifyFileName = 1;
    }
    // Marks of File 1, behind sample 0 and in front of the end.
    static void SetMarks(const std::vector<uint32_t>& marks, int samples) {
        lapCount[0] = static_cast<int>(marks.size()) + 1;
        sampleCount[0] = samples;
        std::copy(marks.begin(), marks.end(), lapStart[0] + 1);
        FillLapEnd(0);
    }
    std::string Renamed(const std::string& name) {
        TakeAtHand(name);
        RenameAfterFastestLap(0);
        return nameAtHand;
    }
};

TEST_F(RenamedLog, CarriesTheFastestLapItsNumberAndTheLastOnes) {
    SetMarks({1000, 20000, 38123, 60000}, 70000);
    EXPECT_EQ(Renamed("run.zrk"), "run[1'30''615(3-5)].zrk");
    EXPECT_EQ(pathAtHand, folder.Path("run[1'30''615(3-5)].zrk"));
    EXPECT_TRUE(FileExists(pathAtHand));
    EXPECT_FALSE(FileExists(folder.Path("run.zrk").c_str()));
    EXPECT_TRUE(shown.empty());
}

TEST_F(RenamedLog, CarriesThePrefix) {
    SetMarks({1000, 2000}, 3000);
    std::strcpy(fileNamePrefix, "_wet_");
    EXPECT_EQ(Renamed("run.QTW"), "run_wet_[0'05''000(2-3)].QTW");
}

TEST_F(RenamedLog, WithoutALapCarriesDashes) {
    SetMarks({}, 3000);
    EXPECT_EQ(Renamed("run.zrk"), "run[-'--''---(0-1)].zrk");
    SetMarks({1500}, 3000);
    EXPECT_EQ(Renamed("one.zrk"), "one[-'--''---(0-2)].zrk");
}

TEST_F(RenamedLog, CountsNoLapOf100MinutesLessASecond) {
    SetMarks({1000, 1000 + 1199800}, 2000000);
    EXPECT_EQ(Renamed("run.zrk"), "run[-'--''---(0-3)].zrk");
    SetMarks({1000, 1000 + 1199799}, 2000000);
    EXPECT_EQ(Renamed("run.zrk"), "run[99'58''995(2-3)].zrk");
}

TEST_F(RenamedLog, WithTwoMarksALapTimesOnlyWholeLaps) {
    // Four marks: laps run from mark 1 to 3 and from 2 to 4, and the numbers count whole laps.
    MarksPerLap[0] = 2;
    SetMarks({1000, 5000, 11000, 14000}, 20000);
    EXPECT_EQ(Renamed("run.zrk"), "run[0'45''000(1-2)].zrk");
}

TEST_F(RenamedLog, WithThreeMarksALapTimesOnlyWholeLaps) {
    MarksPerLap[0] = 3;
    SetMarks({1000, 2000, 3000, 9000, 9500, 9900}, 20000);
    EXPECT_EQ(Renamed("run.zrk"), "run[0'34''500(1-2)].zrk");
}

TEST_F(RenamedLog, TakesMarksOutsideOneToThreeAsOne) {
    MarksPerLap[0] = 0;
    SetMarks({1000, 5000, 11000}, 20000);
    EXPECT_EQ(Renamed("run.zrk"), "run[0'20''000(2-4)].zrk");
}

TEST_F(RenamedLog, IgnoresMarksThatDoNotRise) {
    SetMarks({5000, 4000, 9000}, 20000);
    EXPECT_EQ(Renamed("run.zrk"), "run[0'25''000(3-4)].zrk");
}

TEST_F(RenamedLog, WithABracketBeforeThePointKeepsItsName) {
    SetMarks({1000, 2000}, 3000);
    for (const char* name : {"run[1].zrk", "[run.zrk"}) EXPECT_EQ(Renamed(name), name);
}

TEST_F(RenamedLog, WithABracketBehindTheFirstPointIsRenamed) {
    SetMarks({1000, 2000}, 3000);
    EXPECT_EQ(Renamed("run.a[1].zrk"), "run.a[1][0'05''000(2-3)].zrk");
}

TEST_F(RenamedLog, OfOtherTypesKeepsItsName) {
    SetMarks({1000, 2000}, 3000);
    for (const char* name : {"run.zrv", "run.csv", "run", "run.txt"}) {
        EXPECT_EQ(Renamed(name), name);
        EXPECT_EQ(pathAtHand, folder.Path(name));
    }
}

TEST_F(RenamedLog, WithoutTheOptionKeepsItsName) {
    ModifyFileName = 0;
    SetMarks({1000, 2000}, 3000);
    EXPECT_EQ(Renamed("run.zrk"), "run.zrk");
}

TEST_F(RenamedLog, ThatMeetsAnotherFileKeepsItsPathAndShowsTheNewName) {
    SetMarks({1000, 2000}, 3000);
    folder.Write("run[0'05''000(2-3)].zrk", "other");
    EXPECT_EQ(Renamed("run.zrk"), "run[0'05''000(2-3)].zrk");
    ExpectOneBox("No change file name.", "Error!");
    EXPECT_EQ(pathAtHand, folder.Path("run.zrk"));
    EXPECT_EQ(folder.Read("run[0'05''000(2-3)].zrk"), "other");
}

TEST_F(RenamedLog, WhosePathWouldReach260CharactersCountsAsFailed) {
    SetMarks({1000, 2000}, 3000);
    const std::string tag = "[0'05''000(2-3)]", base = folder.Path("x");
    const std::string fits(259 - tag.size() - (base.size() - 1) - 4, 'a');
    EXPECT_EQ(Renamed(fits + ".zrk"), fits + tag + ".zrk");
    EXPECT_EQ(std::strlen(pathAtHand), 259u);
    EXPECT_TRUE(shown.empty());
    const std::string tooLong = fits + "b";
    Renamed(tooLong + ".zrk");
    ExpectOneBox("No change file name.", "Error!");
    EXPECT_EQ(pathAtHand, folder.Path(tooLong + ".zrk"));
    EXPECT_EQ(nameAtHand, tooLong + tag + ".zrk");
}

TEST_F(Unloading, EmptiesFile2AndFile3) {
    for (int slot = 0; slot < fileSlots; slot++) LoadFile(folder.Write("a.zrk", NativeLog(99, {50})).c_str(), slot);
    extremeMarkValid[0][1] = 1;
    afFade = 5;
    cursorPos[1] = 700;
    currentLap[1] = 2;
    Unload();
    EXPECT_EQ(sampleCount[0], 100);
    for (int slot : {1, 2}) {
        EXPECT_EQ(sampleCount[slot], 1);
        EXPECT_EQ(lapCount[slot], 1);
        EXPECT_EQ(lapStart[slot][1], 0u);
        EXPECT_EQ(slotInUse[slot], 0);
        EXPECT_EQ(cursorPos[slot], 0);
        EXPECT_EQ(currentLap[slot], 1);
        EXPECT_EQ(Ne[slot].size(), 16u);
        EXPECT_STREQ(fileTitle[slot], "a.zrk");  // names stay
    }
    EXPECT_EQ(afFade, 128);
    EXPECT_EQ(extremeMarkValid[0][1], 0u);
}

TEST_F(Unloading, WithShiftEmptiesFile3Alone) {
    for (int slot = 0; slot < fileSlots; slot++) LoadFile(folder.Write("a.zrk", NativeLog(99)).c_str(), slot);
    ScriptHold(true, false);
    Unload();
    EXPECT_EQ(sampleCount[1], 100);
    EXPECT_EQ(slotInUse[1], 1);
    EXPECT_EQ(sampleCount[2], 1);
    EXPECT_EQ(slotInUse[2], 0);
}

}  // namespace
