// The export of File 1 as a text table: both ways, what the dialog remembers, and what is left when it fails.
#include "analysis/csv_export.h"

#include <gtest/gtest.h>
#ifndef _WIN32
#include <sys/resource.h>

#include <csignal>
#endif

#include <random>

#include "analysis/lap_stats.h"
#include "platform/clock.h"
#include "tests/analysis/csv_reference.h"
#include "tests/analysis/random_log.h"
#include "tests/program_fixture.h"

namespace {

struct CsvExport : ProgramTest {
    std::string target = folder.Path("out.csv");

    void SetUp() override {
        OpenWindow(1000, 700);
        ExpertMode = 2;
        ShowNothing();
        shown.clear();
    }
    static void ShowNothing() {
        for (const CsvColumn& column : csvColumns) *column.on = 0;
    }
    static void ShowEverything() {
        for (const CsvColumn& column : csvColumns) *column.on = 1;
    }
    static void CheckLaps(const std::vector<int>& rows) {
        std::fill(std::begin(lapChecked[0]), std::end(lapChecked[0]), 0);
        for (const int row : rows) lapChecked[0][row] = 1;
    }
    // The whole file; "" with a failure where the export says that it failed.
    std::string Bytes(int result) {
        EXPECT_EQ(result, 0);
        return folder.Read("out.csv");
    }
    std::string Laps(int rate = 0) {
        csvDecimation = rate;
        QueueAnswer(Answer::path, target);
        return Bytes(ExportCheckedLaps({}));
    }
    std::string Stretch(int first, int last, int rate = 0) {
        csvDecimation = rate;
        QueueAnswer(Answer::path, target);
        return Bytes(ExportStretch({}, {first, last}));
    }
    static std::vector<std::string> Lines(const std::string& text) {
        std::vector<std::string> lines;
        for (size_t at = 0, end; (end = text.find("\r\n", at)) != std::string::npos; at = end + 2) lines.push_back(text.substr(at, end - at));
        return lines;
    }
    // The boxes since the last call, "TITLE|TEXT".
    static std::vector<std::string> Boxes() {
        std::vector<std::string> boxes;
        for (const Shown& entry : shown)
            if (entry.kind == "box") boxes.push_back(entry.title + "|" + entry.text);
        shown.clear();
        return boxes;
    }
    int FilesBeside() const { return folder.EntryCount() - 1; }  // but the course
};
using Texts = std::vector<std::string>;

// --- rows ----------------------------------------------------------------------------------------------------------------

TEST_F(CsvExport, BytesAreThoseOfPrintfOnRandomValues) {
    std::mt19937 random(5);
    for (int round = 0; round < 40; round++) {
        const int samples = 2 + static_cast<int>(random() % 4000);
        MakeRandomLog(0, samples, {static_cast<uint32_t>(samples / 3), static_cast<uint32_t>(samples / 2)}, random());
        for (int i = 1; i < samples; i++) {
            TH[0][i] = static_cast<int32_t>(random()) >> random() % 32;
            VB[0][i] = static_cast<uint16_t>(random());
            LAF1[0][i] = static_cast<int32_t>(random()) >> random() % 32;
            VFW[0][i] = static_cast<uint16_t>(random() >> random() % 16);
            VRW[0][i] = static_cast<uint16_t>(random() >> random() % 16);
            FSUS[0][i] = static_cast<int16_t>(random());
            distRear[0][i] = distRear[0][i - 1] + VRW[0][i];
        }
        for (const CsvColumn& column : csvColumns) *column.on = round == 0 || random() % 4 != 0;
        CoursePosSource = static_cast<int>(random() % 2);
        timeFactor[0] = round % 3 == 0 ? 0.25 : 1.0;
        const int rate = round % csvRateTotal, first = static_cast<int>(random() % samples), last = static_cast<int>(random() % samples);
        const std::string bytes = Stretch(first, last, rate);
        std::string expected = bytes.substr(0, bytes.find('\n') + 1);
        int counter = 0, lap = 0;
        WriteReferenceRows([&](const char* text, size_t length) { expected.append(text, length); }, first, last, csvRates[rate].step, counter, lap);
        ASSERT_EQ(bytes, expected) << round;
    }
}

TEST_F(CsvExport, HeaderNamesEveryColumnInItsOrder) {
    MakeRandomLog(0, 100, {});
    ShowEverything();
    EXPECT_EQ(Lines(Stretch(5, 5))[0], "Time,Distance,LAP,Ne,TH,VFW,VRW,FRSUS,RRSUS,LAF1,LAF2,VB,AUX1,AUX2,Slip,vFSus,vRSus");
    ExpertMode = 1;
    EXPECT_EQ(Lines(Stretch(5, 5))[0], "Time,Distance,LAP,Ne,TH,VFW,VRW,FRSUS,RRSUS,LAF1,LAF2,VB,AUX1,AUX2");
    ShowNothing();
    EXPECT_EQ(Lines(Stretch(5, 5))[0], "Time");
}

TEST_F(CsvExport, EachColumnStandsAloneBesideTheTime) {
    MakeRandomLog(0, 100, {});
    for (const CsvColumn& column : csvColumns) {
        SCOPED_TRACE(column.caption);
        ShowNothing();
        *column.on = 1;
        const Texts lines = Lines(Stretch(5, 6));
        EXPECT_EQ(lines[0], std::string("Time") + column.header);
        EXPECT_EQ(std::count(lines[1].begin(), lines[1].end(), ','), 1);
    }
}

TEST_F(CsvExport, ValuesAreInTheirOwnUnits) {
    FillSlot(0, 100);
    ShowEverything();
    neFactor[0] = 2.0f;  // Kept: the raw speed
    auxDivider[0][0] = 10;
    Ne[0][7] = 12345, TH[0][7] = 999, VFW[0][7] = 1000, VRW[0][7] = 1234, FSUS[0][7] = -199, RSUS[0][7] = 4567;
    LAF1[0][7] = 1470, LAF2[0][7] = -15, VB[0][7] = 1259, AUX1[0][7] = 1234, AUX2[0][7] = 5, VFSus[0][7] = -321, VRSus[0][7] = 99;
    EXPECT_EQ(Lines(Stretch(7, 7))[1], "0.000,0,0,12345,99,100.0,123.4,-1,45,14.7,-0.1,12.6,12.3,0.1,234.0,-321,99");
}

TEST_F(CsvExport, LinesEndWithCarriageReturnAndLineFeed) {
    FillSlot(0, 100);
    EXPECT_EQ(Stretch(1, 2), "Time\r\n0.000\r\n0.005\r\n");
}

TEST_F(CsvExport, TheLastSampleOfTheLogIsNeverWritten) {
    FillSlot(0, 100);
    EXPECT_EQ(Lines(Stretch(97, 100)).size(), 3u) << "samples 97 and 98, not 99";
    EXPECT_EQ(Lines(Stretch(99, 99)).size(), 1u);
    EXPECT_EQ(Lines(Stretch(100, 100)).size(), 1u);
}

TEST_F(CsvExport, ARangeWhoseEndsCoincideWritesOneRow) {
    FillSlot(0, 100);
    EXPECT_EQ(Lines(Stretch(40, 40)).size(), 2u);
}

TEST_F(CsvExport, At1HzTheFirstRowIsAtZeroAndTheNextAtOneSecond) {
    FillSlot(0, 1000);
    const Texts lines = Lines(Stretch(10, 900, 4));
    ASSERT_EQ(lines.size(), 6u);
    EXPECT_EQ(lines[1], "0.000");
    EXPECT_EQ(lines[2], "1.000");
    EXPECT_EQ(lines[5], "4.000");
}

TEST_F(CsvExport, EveryRateWritesEachOfItsSteps) {
    FillSlot(0, 2003);
    for (int rate = 0; rate < csvRateTotal; rate++) {
        SCOPED_TRACE(csvRates[rate].caption);
        EXPECT_EQ(csvRates[rate].perSecond * csvRates[rate].step, 200);
        EXPECT_EQ(Lines(Stretch(1, 2000, rate)).size(), 1u + 2000u / csvRates[rate].step);
    }
}

TEST_F(CsvExport, LapColumnCountsTheMarksPassedFromZero) {
    FillSlot(0, 100);
    SetMarks(0, {20, 22, 22});
    csvLapOn = 1;
    const Texts lines = Lines(Stretch(18, 23));
    EXPECT_EQ(lines, (Texts{"Time,LAP", "0.000,0", "0.005,0", "0.010,1", "0.015,1", "0.020,3", "0.025,3"}));
    EXPECT_EQ(Lines(Stretch(18, 23, 1)), (Texts{"Time,LAP", "0.000,0", "0.010,1", "0.020,3"})) << "marks count where no row is";
}

TEST_F(CsvExport, MarksThatDoNotRiseCountWhereTheyStand) {
    FillSlot(0, 100);
    SetMarks(0, {50, 20, 30});
    csvLapOn = 1;
    EXPECT_EQ(Lines(Stretch(19, 21)), (Texts{"Time,LAP", "0.000,0", "0.005,1", "0.010,1"}));
    CheckLaps({0, 1, 2, 3});
    EXPECT_EQ(Lines(Laps()).size(), 1u + 50 + 0 + 10 + 68);
}

TEST_F(CsvExport, DistanceFollowsTheWheelThatIsSelectedAndTheTimeFactor) {
    FillSlot(0, 100);
    csvDistanceOn = 1;
    distFront[0][10] = 72000, distRear[0][10] = 7200, distFront[0][12] = 72000 + 7200 * 3 + 7199, distRear[0][12] = 7200 * 9;
    EXPECT_EQ(Lines(Stretch(10, 12))[3], "0.010,3");
    CoursePosSource = 1;
    EXPECT_EQ(Lines(Stretch(10, 12))[3], "0.010,8");
    timeFactor[0] = 0.5;
    EXPECT_EQ(Lines(Stretch(10, 12))[3], "0.010,16");
}

// --- checked laps --------------------------------------------------------------------------------------------------------

TEST_F(CsvExport, LapsAreWrittenFromBehindTheirFirstMarkToTheNextOne) {
    FillSlot(0, 100);
    SetMarks(0, {30, 60});
    for (int i = 0; i < 100; i++) Ne[0][i] = static_cast<uint16_t>(i);
    showChannel[0][chNe] = 1;
    CheckLaps({1});
    const Texts lines = Lines(Laps());
    ASSERT_EQ(lines.size(), 31u);
    EXPECT_EQ(lines[1], "0.000,31");
    EXPECT_EQ(lines[30], "0.145,60");
}

TEST_F(CsvExport, TimeAndLapGoOnAcrossLapsThatAreNotChecked) {
    FillSlot(0, 100);
    SetMarks(0, {10, 12, 14, 16});
    csvLapOn = 1;
    CheckLaps({1, 3});
    EXPECT_EQ(Lines(Laps()), (Texts{"Time,LAP", "0.000,0", "0.005,1", "0.010,1", "0.015,2"}));
}

TEST_F(CsvExport, DistanceRestartsAtEachLapAndAtTheStretchStart) {
    FillSlot(0, 100);
    SetMarks(0, {10, 13, 16});
    for (int i = 0; i < 100; i++) distFront[0][i] = static_cast<uint32_t>(i) * 7200;
    csvDistanceOn = 1;
    CheckLaps({1, 2});
    EXPECT_EQ(Lines(Laps()), (Texts{"Time,Distance", "0.000,0", "0.005,1", "0.010,2", "0.015,0", "0.020,1", "0.025,2"}));
    EXPECT_EQ(Lines(Stretch(12, 15)), (Texts{"Time,Distance", "0.000,0", "0.005,1", "0.010,2", "0.015,3"}));
}

TEST_F(CsvExport, WithAllLapsUncheckedTheHeaderStandsAloneAndDoneIsShown) {
    FillSlot(0, 100);
    SetMarks(0, {30, 60});
    CheckLaps({});
    EXPECT_EQ(Laps(), "Time\r\n");
    EXPECT_EQ(Boxes(), Texts{"Saved|Done."});
}

TEST_F(CsvExport, ChecksOfTheFirstHalfGovernAllMarksWithTwoMarksPerLap) {
    FillSlot(0, 100);
    SetMarks(0, {10, 20, 30});
    MarksPerLap[0] = 2;
    CheckLaps({1});
    EXPECT_EQ(Lines(Laps()).size(), 1u + 10 + 68) << "entries 2 and 3";
    MarksPerLap[0] = 0;
    EXPECT_EQ(Lines(Laps()).size(), 1u + 10) << "a stored 0 counts as 1";
}

TEST_F(CsvExport, OnlyFile1IsExported) {
    FillSlot(0, 100);
    MakeRandomLog(1, 5000, {1000, 2000});
    CheckLaps({0});
    EXPECT_EQ(Lines(Laps()).size(), 1u + 98);
}

TEST_F(CsvExport, AnEmptyFile1GivesTheHeader) {
    CheckLaps({0});
    EXPECT_EQ(Laps(), "Time\r\n");
    EXPECT_EQ(Stretch(0, 1), "Time\r\n");
}

// --- the file ------------------------------------------------------------------------------------------------------------

TEST_F(CsvExport, ACancelledSaveDialogSaysNotSavedAndWritesNothing) {
    FillSlot(0, 100);
    QueueAnswer(Answer::cancel);
    EXPECT_EQ(ExportStretch({}, {1, 5}), 1);
    EXPECT_EQ(Boxes(), Texts{"Error !!|Not Saved !!"});
    EXPECT_EQ(FilesBeside(), 0);
}

TEST_F(CsvExport, SaveDialogOffersCsvFilesInTheDataFolder) {
    FillSlot(0, 100);
    std::snprintf(dataFolder, sizeof dataFolder, "%s", folder.Path().c_str());
    QueueAnswer(Answer::ok);
    EXPECT_EQ(ExportStretch({}, {1, 5}), 0);
    EXPECT_EQ(shown[0].kind, "save");
    EXPECT_EQ(shown[0].text, "CSV(*.csv)|*.csv");
    EXPECT_EQ(Lines(folder.Read(".csv")).size(), 6u) << "the name that it offers";
    target = folder.Path("named");
    QueueAnswer(Answer::path, target);
    EXPECT_EQ(ExportStretch({}, {1, 5}), 0);
    EXPECT_EQ(Lines(folder.Read("named.CSV")).size(), 6u);
}

TEST_F(CsvExport, AFileThatCannotBeOpenedSaysNotSaved) {
    FillSlot(0, 100);
    QueueAnswer(Answer::path, folder.Path("no such folder/out.csv"));
    EXPECT_EQ(ExportStretch({}, {1, 5}), 1);
    EXPECT_EQ(Boxes(), Texts{"Error !!|Not Saved !!"});
    EXPECT_EQ(FilesBeside(), 0);
}

TEST_F(CsvExport, AFolderOfThatNameStandsAndNothingIsLeftBesideIt) {
    FillSlot(0, 100);
    std::filesystem::create_directories(TestFolder::FromUtf8(target));
    QueueAnswer(Answer::path, target);
    EXPECT_EQ(ExportStretch({}, {1, 5}), 1);
    EXPECT_EQ(Boxes(), Texts{"Error !!|Not Saved !!"});
    EXPECT_EQ(FilesBeside(), 1);
}

TEST_F(CsvExport, AnOlderFileIsReplacedWhole) {
    FillSlot(0, 100);
    folder.Write("out.csv", std::string(100000, 'x'));
    EXPECT_EQ(Stretch(1, 1), "Time\r\n0.000\r\n");
    EXPECT_EQ(FilesBeside(), 1);
}

#ifndef _WIN32
// While it stands, no file grows past this size, as on a disk that is full.
struct FullDisk {
    rlimit before;
    explicit FullDisk(rlim_t bytes) {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &before);
        const rlimit limit = {bytes, before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk() {
        setrlimit(RLIMIT_FSIZE, &before);
        std::signal(SIGXFSZ, SIG_DFL);
    }
};

TEST_F(CsvExport, AFullDiskIsToldOnceAndTheOldFileStands) {
    MakeRandomLog(0, 60000, {20000, 40000});
    ShowEverything();
    CheckLaps({0, 1, 2});
    folder.Write("out.csv", "what I had");
    for (const rlim_t bytes : {rlim_t{0}, rlim_t{100}, rlim_t{1000000}}) {
        SCOPED_TRACE(bytes);
        QueueAnswer(Answer::path, target);
        FullDisk disk(bytes);
        EXPECT_EQ(ExportCheckedLaps({}), 1);
    }
    EXPECT_EQ(Boxes(), (Texts{"Error !!|Not Saved !!", "Error !!|Not Saved !!", "Error !!|Not Saved !!"}));
    EXPECT_EQ(folder.Read("out.csv"), "what I had");
    EXPECT_EQ(FilesBeside(), 1);
}

TEST_F(CsvExport, AWriteErrorEndsTheRunOfTheLaps) {
    MakeRandomLog(0, 60000, {20000, 40000});
    ShowEverything();
    CheckLaps({0, 1, 2});
    static int last;
    last = -1;
    CsvProgress progress;
    progress.position = [](void*, int at) { last = at; };
    QueueAnswer(Answer::path, target);
    FullDisk disk(1000);
    EXPECT_EQ(ExportCheckedLaps(progress), 1);
    EXPECT_EQ(last, 0) << "the first lap failed";
}
#endif

// --- progress --------------------------------------------------------------------------------------------------------------

struct CsvProgressTest : CsvExport {
    static inline std::vector<std::string> calls;
    CsvProgress progress;
    void SetUp() override {
        CsvExport::SetUp();
        calls.clear();
        progress.range = [](void*, int low, int high) { calls.push_back(std::to_string(low) + ".." + std::to_string(high)); };
        progress.position = [](void*, int at) {
            calls.push_back(std::to_string(at));
            AdvanceClock(51);
        };
        QueueAnswer(Answer::path, target);
    }
};

TEST_F(CsvProgressTest, LapsAreCountedAndTheBarIsFilledAtTheEnd) {
    FillSlot(0, 100);
    SetMarks(0, {30, 60});
    CheckLaps({1});
    ExportCheckedLaps(progress);
    EXPECT_EQ(calls, (Texts{"0..3", "0", "1", "2", "3"}));
}

TEST_F(CsvProgressTest, AStretchShowsItsSampleAtTheStartAndEvery50Ms) {
    FillSlot(0, 5000);
    ExportStretch(progress, {100, 4000});
    ASSERT_GE(calls.size(), 4u);
    EXPECT_EQ(calls[0], "100..4000");
    EXPECT_EQ(calls[1], "100");
    EXPECT_GT(std::stoi(calls[2]), 100);
    EXPECT_EQ(calls.back(), "4000");
}

TEST_F(CsvProgressTest, DoneComesASecondAfterTheFullBar) {
    FillSlot(0, 100);
    progress.position = nullptr;
    const int64_t start = SteadyMs();
    ExportStretch(progress, {1, 50});
    EXPECT_EQ(SteadyMs() - start, 1000);
    EXPECT_EQ(Boxes(), Texts{"Saved|Done."});
}

// --- what the dialog does --------------------------------------------------------------------------------------------------

TEST_F(CsvExport, StartsAtTheFullRateWithoutDistanceAndLap) {
    LoadDefaults();
    EXPECT_EQ(csvDecimation, 0);
    EXPECT_EQ(csvDistanceOn, 0);
    EXPECT_EQ(csvLapOn, 0);
}

TEST_F(CsvExport, ChecksOfChannelsAreThoseOfTheGraph) {
    FillSlot(0, 100);
    for (int column = 0; column < csvColumnTotal; column++) {
        CheckCsvColumn(column, 1);
        EXPECT_EQ(activityCount, 150);
    }
    for (int channel = 0; channel < channelTotal; channel++) EXPECT_EQ(showChannel[0][channel], 1) << channel;
    EXPECT_EQ(csvDistanceOn + csvLapOn, 2);
}

TEST_F(CsvExport, ARangeTakesItsChannelsToTheGraphAndGivesThemBack) {
    FillSlot(0, 1000);
    showChannel[0][chNe] = 1;
    EXPECT_EQ(OpenCsvExport(), 0);
    CheckCsvColumn(3, 1);  // TH
    csvLapOn = 1;
    AwaitCsvRange();
    EXPECT_EQ(csvRangePending, 1);
    EXPECT_EQ(showChannel[0][chTH], 1) << "while the range is marked";
    EXPECT_EQ(OpenCsvExport(), 1);
    cursorPos[0] = 100 * 100;
    mouseX = BaseLineX();
    QueueAnswer(Answer::path, target);
    EXPECT_EQ(ExportAwaitedRange({}), 0);
    EXPECT_EQ(csvRangePending, 0);
    EXPECT_EQ(folder.Read("out.csv"), "Time,LAP,Ne,TH\r\n0.000,0,0,0\r\n");
    EXPECT_EQ(showChannel[0][chNe], 1);
    EXPECT_EQ(showChannel[0][chTH], 0);
    EXPECT_EQ(csvLapOn, 1) << "no flag of the graph";
}

TEST_F(CsvExport, ARangeThatIsNotSavedAlsoGivesTheChannelsBack) {
    FillSlot(0, 1000);
    OpenCsvExport();
    CheckCsvColumn(2, 1);
    AwaitCsvRange();
    QueueAnswer(Answer::cancel);
    EXPECT_EQ(ExportAwaitedRange({}), 1);
    EXPECT_EQ(showChannel[0][chNe], 0);
    EXPECT_EQ(csvRangePending, 0);
}

TEST_F(CsvExport, LapsAndCancelLeaveTheChannelsAsChosen) {
    FillSlot(0, 1000);
    OpenCsvExport();
    CheckCsvColumn(2, 1);
    Laps();
    EXPECT_EQ(showChannel[0][chNe], 1);
    OpenCsvExport();
    CheckCsvColumn(3, 1);
    csvRangePending = 1;
    extremeMarkValid[0][0] = 1;
    CancelCsvExport();
    EXPECT_EQ(showChannel[0][chTH], 1);
    EXPECT_EQ(csvRangePending, 0);
    EXPECT_EQ(extremeMarkValid[0][0], 0u);
}

TEST_F(CsvExport, RangeRunsBetweenCursorAndMouseWhicheverIsFirst) {
    FillSlot(0, 1000);
    cursorPos[0] = 400 * 100 + 60;
    viewZoom = 2.0;
    timeScale = 4.0;
    timeFactor[0] = 0.5;
    mouseX = BaseLineX() + 100;  // one sample a pixel
    EXPECT_EQ(StretchOnGraph().first, 400);
    EXPECT_EQ(StretchOnGraph().last, 501);
    mouseX = BaseLineX() - 100;
    EXPECT_EQ(StretchOnGraph().first, 301);
    EXPECT_EQ(StretchOnGraph().last, 400);
    mouseX = BaseLineX() - 100000;
    EXPECT_EQ(StretchOnGraph().first, 0);
    mouseX = BaseLineX() + 100000;
    EXPECT_EQ(StretchOnGraph().last, 1000);
}

}  // namespace
