// Logs of 8 hours: all three slots hold one, and a load takes no more memory than it needs.
#include <gtest/gtest.h>

#include <cstring>

#include "app/frame_loop.h"
#include "platform/headless/script.h"
#include "run_data/load_pipeline.h"
#include "run_data/log_header.h"
#include "run_data/run_store.h"
#include "run_data/secondary_header.h"
#include "tests/test_folder.h"
#include "tools/sample_log/sample_log.h"

namespace {

constexpr int minuteSamples = 12000, minutes = 480;

// The frames of a minute on the circuit, again and again.
std::string EightHoursOf(int version) {
    SampleLogOptions options;
    options.version = version;
    options.laps = 0;
    options.skipSeconds = 30;
    options.seconds = 60;
    const std::vector<uint8_t> minute = MakeSampleLog(options);
    const int header = version < 3 ? headerSize : extendedHeaderSize;
    std::string log(minute.begin(), minute.begin() + header);
    log.reserve(header + (minute.size() - header) * minutes);
    for (int k = 0; k < minutes; k++) log.append(minute.begin() + header, minute.end());
    return log;
}

// An engine speed in every sample that never changes but at the start.
std::string EightSecondaryHours() {
    using namespace secondaryHeader;
    std::string log(streamAt, '\0');
    log[neIntervalAt + 1] = 5;
    log[secondsAt + 1] = static_cast<char>(longestLogSeconds >> 8);
    log[secondsAt + 2] = static_cast<char>(longestLogSeconds & 255);
    log += static_cast<char>(0x80);  // one up, then no change
    log.append(sampleLimit / 8 + 8, '\0');
    return log;
}

class LongLog : public testing::Test {
  protected:
    void SetUp() override {
        DefaultScript();
        shown.clear();
        ReleaseRunStore();
        LoadDefaults();
    }
    void TearDown() override {
        ReleaseRunStore();
        LoadDefaults();
    }
    TestFolder folder;
};

TEST_F(LongLog, OfEightHoursOpensInAllThreeSlots) {
    LoadFile(folder.Write("fixed.zrk", EightHoursOf(2)).c_str(), 0);
    LoadFile(folder.Write("masks.zrk", EightHoursOf(4)).c_str(), 1);
    LoadFile(folder.Write("stream.qtw", EightSecondaryHours()).c_str(), 2);
    EXPECT_TRUE(shown.empty());
    EXPECT_EQ(sampleCount[0], sampleLimit + 1);
    EXPECT_EQ(sampleCount[1], sampleLimit + 1);
    EXPECT_EQ(sampleCount[2], sampleLimit);
    // What was ridden in the first minutes is there in the last ones too, and nothing of one slot is in another.
    int differing = 0;
    for (int k = 1; k < minutes - 1; k++)
        for (int i = minuteSamples; i < 2 * minuteSamples; i += 7) {
            const int later = i + (k - 1) * minuteSamples;
            differing += Ne[0][i] != Ne[0][later] || TH[0][i] != TH[0][later] || FSUS[0][i] != FSUS[0][later] ||
                         VFSus[0][i] != VFSus[0][later] || VRW[0][i] != VRW[0][later];
        }
    EXPECT_EQ(differing, 0);
    EXPECT_GT(channelMax[0][chNe], 5000);
    EXPECT_EQ(Ne[2][2], 20);
    EXPECT_EQ(Ne[2][sampleLimit - 1], 20);
    EXPECT_EQ(VFW[2][sampleLimit - 1], 0);
}

#ifdef __linux__
// Bytes of a line of the process' own status, 0 when it is not there.
int64_t StatusBytes(const std::string& name) {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.rfind(name + ":", 0) == 0) return std::strtoll(line.c_str() + name.size() + 1, nullptr, 10) * 1024;
    return 0;
}

TEST_F(LongLog, TakesTheMemoryOfItsFileAndOfATenthMoreThanItsSamples) {
    for (int version : {2, 3, 4}) {
        SCOPED_TRACE(version);
        ReleaseRunStore();
        LoadDefaults();
        std::string path;
        int64_t fileBytes;
        {
            const std::string log = EightHoursOf(version);
            fileBytes = static_cast<int64_t>(log.size());
            path = folder.Write("long.zrk", log);
        }
        const int64_t before = StatusBytes("VmRSS");
        std::ofstream("/proc/self/clear_refs") << 5 << std::flush;  // the peak starts anew
        if (before == 0 || StatusBytes("VmHWM") > before + (1 << 20)) GTEST_SKIP() << "the system does not tell the peak";
        LoadFile(path.c_str(), 1);
        ASSERT_EQ(sampleCount[1], sampleLimit + 1);
        const int64_t taken = StatusBytes("VmHWM") - before;
        EXPECT_LE(taken, fileBytes + int64_t{49} * sampleLimit * 11 / 10);
        EXPECT_GE(taken, fileBytes + int64_t{49} * sampleLimit) << "or something was not measured";
    }
}
#endif

}  // namespace
