// CSV logs through the load pipeline, and the sample logs.
#include "run_data/csv_log.h"

#include "platform/files.h"
#include "run_data/load_pipeline.h"
#include "settings/settings.h"
#include "settings/settings_file.h"
#include "tests/run_data/csv_fixture.h"
#include "tests/source_folder.h"
#include "tests/test_folder.h"
#include "tools/sample_log/bike.h"
#include "tools/sample_log/ride.h"

namespace {

struct CsvFile : CsvTest {
    TestFolder folder;
};

TEST_F(CsvFile, ClosedDialogLeavesTheDataButTakesKindAndTitle) {
    LoadFile(folder.Write("first.csv", Column("Ne", std::vector<int>(100, 7))).c_str(), 1);
    ASSERT_EQ(sampleCount[1], 102);
    fileKind[1] = 1;
    csvUser.pressesOk = false;
    const std::string second = folder.Write("second.csv", Column("Ne", std::vector<int>(110, 8)));
    LoadFile(second.c_str(), 1);
    EXPECT_EQ(sampleCount[1], 102);
    EXPECT_EQ(Ne[1][1], 7);
    EXPECT_EQ(fileKind[1], 3);
    EXPECT_STREQ(fileTitle[1], "second.csv");
    EXPECT_EQ(filePath[1], second);
}

TEST_F(CsvFile, FailedImportResetsTheSlotButTakesTheTitle) {
    LoadFile(folder.Write("first.csv", Column("Ne", std::vector<int>(100, 7))).c_str(), 1);
    shown.clear();
    LoadFile(folder.Write("second.CSV", "A,B\n" + std::string(600, '\n')).c_str(), 1);
    ExpectBox(baseTimeIncompatible);
    ExpectReset(1);
    EXPECT_STREQ(fileTitle[1], "second.CSV");
}

TEST_F(CsvFile, LogWhoseFirstByteIs3IsImported) {
    std::strcpy(csvLabel[rowTime][0], "3 Time");
    LoadFile(folder.Write("a.csv", "3 " + Column("Ne", std::vector<int>(100, 7))).c_str(), 0);
    EXPECT_EQ(sampleCount[0], 102);
    EXPECT_EQ(fileKind[0], 3);
}

TEST_F(CsvFile, KeysPressedMeanwhileOpenNothing) {
    static std::string other;
    other = folder.Write("other.csv", Column("Ne", std::vector<int>(120, 9)));
    SetDialogHandler([](int id, int argument) {
        LoadFile(other.c_str(), 1);
        return AnswerCsvDialog(id, argument);
    });
    LoadFile(folder.Write("a.csv", Column("Ne", std::vector<int>(100, 7))).c_str(), 0);
    EXPECT_EQ(sampleCount[0], 102);
    EXPECT_EQ(sampleCount[1], 1);
}

// The program's own labels know all titles of the sample logs; what is read is the ride.
TEST_F(CsvFile, SampleLogMapsItselfAndIsTheRideItWasMadeFrom) {
    SetProgramFolder((SourceFolder() + "/resources/data/").c_str());
    LoadSettings();
    SmoothingSTD = 0;
    for (int step : {5, 10, 20, 100})
        for (int style = 0; style < 3; style++) {
            SCOPED_TRACE(std::to_string(step) + " ms, titles " + std::to_string(style));
            SampleLogOptions options;
            options.laps = 2;
            options.stepMs = step;
            options.titleStyle = style;
            options.lapDistance = (step / 5 + style) % 2 != 0;
            const std::vector<uint8_t> bytes = MakeCsvLog(options);
            const std::vector<BikeSample> ride = SimulateRide(options);
            shown.clear();
            LoadFile(folder.Write("a.csv", {reinterpret_cast<const char*>(bytes.data()), bytes.size()}).c_str(), 1);
            EXPECT_EQ(shown.size(), 1u);
            EXPECT_EQ(CsvColumnOf(rowTime), 0);
            for (int row = 1; row < csvShownRows; row++) EXPECT_EQ(CsvColumnOf(row), row);
            EXPECT_EQ(lapByNumber, options.lapDistance ? 0 : 1);
            EXPECT_EQ(timeFactor[1], static_cast<double>(5.0f / static_cast<float>(step)));
            const int ticks = step / 5, rows = static_cast<int>((ride.size() + ticks - 1) / ticks);
            ASSERT_EQ(sampleCount[1], rows + 2);
            // A decimal times its scale may fall one short of the whole number that it was written from.
            const auto near = [](int read, int written) { return read == written || (written > 0 ? read == written - 1 : read == written + 1); };
            int wrong = 0, marks = 0;
            for (int i = 0; i < rows; i++) {
                const BikeSample& bike = ride[static_cast<size_t>(i) * ticks];
                wrong += Ne[1][i + 1] != bike.ne || !near(TH[1][i + 1], bike.th) || !near(VFW[1][i + 1], bike.vfw) || !near(VRW[1][i + 1], bike.vrw);
                wrong += !near(FSUS[1][i + 1], bike.fsus) || !near(RSUS[1][i + 1], bike.rsus) || !near(LAF1[1][i + 1], bike.laf1);
                wrong += !near(LAF2[1][i + 1], bike.laf2) || !near(VB[1][i + 1], bike.vb) || !near(AUX1[1][i + 1], bike.aux1) || !near(AUX2[1][i + 1], bike.aux2);
            }
            for (size_t k = 1; k < ride.size(); k++) marks += ride[k].mark && !ride[k - 1].mark;
            EXPECT_EQ(wrong, 0);
            EXPECT_EQ(lapCount[1], marks + 1);
        }
}

}  // namespace
