// Course files, .qtw and CSV logs and the fuzzers' corpus that sample_log writes.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <map>
#include <set>

#include "settings/profile_file.h"
#include "tests/source_folder.h"
#include "tools/sample_log/corpus.h"
#include "tools/sample_log/ride.h"
#include "tools/sample_log/sample_log.h"

namespace {

SampleLogOptions Seconds(int seconds, int skip = 0) {
    SampleLogOptions options;
    options.laps = 0;
    options.seconds = seconds;
    options.skipSeconds = skip;
    return options;
}

std::vector<std::string> Split(const std::string& text, char separator) {
    std::vector<std::string> parts;
    for (size_t at = 0; at < text.size();) {
        const size_t end = std::min(text.find(separator, at), text.size());
        parts.push_back(text.substr(at, end - at));
        at = end + 1;
    }
    return parts;
}

// ---- courses ----

struct Point {
    double x, y;
};

std::vector<Point> ReadCourse(const std::string& text) {
    std::vector<Point> points;
    for (const std::string& line : Split(text, '\n')) {
        Point point{};
        EXPECT_EQ(std::sscanf(line.c_str(), "%lf,%lf", &point.x, &point.y), 2) << line;
        points.push_back(point);
    }
    return points;
}

TEST(SampleCourse, PointsFillThePanelEvenlyAndClose) {
    for (const std::string& name : CourseNames()) {
        SCOPED_TRACE(name);
        std::vector<Point> points = ReadCourse(MakeCourse(name, 2000));
        std::erase_if(points, [](const Point& p) { return p.x >= 1024; });
        ASSERT_EQ(points.size(), 2000u);
        double reach = 0, shortest = 1e9, longest = 0;
        for (size_t k = 0; k < points.size(); k++) {
            const Point& a = points[k];
            const Point& b = points[(k + 1) % points.size()];
            const double distance = std::hypot(b.x - a.x, b.y - a.y);
            shortest = std::min(shortest, distance);
            longest = std::max(longest, distance);
            reach = std::max({reach, std::fabs(a.x), std::fabs(a.y)});
        }
        EXPECT_NEAR(reach, 250, 0.01);
        EXPECT_LT(longest, shortest * 1.1);  // the closing stretch too
    }
}

TEST(SampleCourse, BendsAreRoundAndTurnOnceRound) {
    for (const std::string& name : CourseNames()) {
        SCOPED_TRACE(name);
        const Circuit circuit = MakeCircuit(name);
        double turn = 0, sharpest = 0;
        for (int i = 0; i < circuit.length; i++) {
            turn += circuit.curvature[i];
            sharpest = std::max(sharpest, std::fabs(circuit.curvature[i] - circuit.curvature[(i + 1) % circuit.length]));
        }
        EXPECT_NEAR(std::fabs(turn), 6.283185, 1e-6);
        EXPECT_LT(sharpest, 0.01);  // no bend begins at once
    }
}

TEST(SampleCourse, OnlyTansyHasSectorBoundaries) {
    for (const std::string& name : CourseNames()) {
        const std::vector<Point> points = ReadCourse(MakeCourse(name));
        const auto markers = std::count_if(points.begin(), points.end(), [](const Point& p) { return p.x >= 1024 && p.y >= 1024; });
        EXPECT_EQ(markers, name == "tansy" ? 3 : 0) << name;
        EXPECT_EQ(points.size(), 900u + markers) << name;
    }
    EXPECT_LT(ReadCourse(MakeCourse("tansy", 3))[0].x, 1024);  // the first line is always a point
}

TEST(SampleCourse, TheCoursesThatComeWithTheProgramAreThoseOfTheBike) {
    for (const std::string& name : CourseNames()) {
        std::ifstream file(SourceFolder() + "/resources/data/" + name + ".crs", std::ios::binary);
        const std::string text{std::istreambuf_iterator<char>(file), {}};
        EXPECT_EQ(text, MakeCourse(name)) << name;
    }
    EXPECT_GE(CourseNames().size(), 4u);
}

TEST(SampleCourse, PointsAreHeldBetween3And2999) {
    EXPECT_EQ(ReadCourse(MakeCourse("sorrel", 0)).size(), 3u);
    EXPECT_EQ(ReadCourse(MakeCourse("sorrel", 5000)).size(), 2999u);
    EXPECT_EQ(MakeCourse("no such course"), MakeCourse("sorrel"));
}

// ---- .qtw ----

struct SecondaryStream {
    const std::vector<uint8_t>& bytes;
    size_t bit = 1152 * 8;

    int Bits(int count) {
        int value = 0;
        for (; count > 0; count--, bit++) value = value << 1 | (bit / 8 < bytes.size() ? bytes[bit / 8] >> (7 - bit % 8) & 1 : 0);
        return value;
    }
};

// Takes one code: a change is added to `last`, a value replaces it.
void TakeCode(SecondaryStream& stream, int& last) {
    int ones = 0;
    while (ones < 31 && stream.Bits(1)) ones++;
    if (ones == 31) return TakeCode(stream, last);  // filler
    const int read = ones + 1;
    struct Row { int most, bits, low, least; };
    constexpr Row rows[] = {{3, 4, 3, 1}, {7, 8, 5, 4}, {15, 16, 9, 19}};
    if (read == 1) return;
    for (const Row& row : rows)
        if (read <= row.most) {
            stream.bit -= read;
            const int u = stream.Bits(row.bits) & ((1 << row.low) - 1);
            last += u % 2 ? -(u / 2) - row.least : u / 2 + row.least;
            return;
        }
    stream.bit -= read;
    last = stream.Bits(31) & 0xFFFF;
}

int Number(const std::vector<uint8_t>& bytes, int at) { return bytes[at] << 8 | bytes[at + 1]; }

struct SecondaryLog {
    std::map<int, std::vector<int>> readings;  // by the header offset of the channel's interval: one for each sample
    std::vector<int>                marks;     // sample numbers from 1
    int                             samples;
    size_t                          bytesLeft;  // of the stream, behind the last sample
};

SecondaryLog Decode(const std::vector<uint8_t>& bytes) {
    constexpr int intervalsAt[] = {7, 11, 13, 9, 19, 21, 23, 25, 27, 15, 17};
    SecondaryLog log;
    log.samples = 200 * (bytes[84] << 16 | bytes[85] << 8 | bytes[86]);
    SecondaryStream stream{bytes};
    for (int at : intervalsAt) log.readings[at].assign(log.samples, 0);
    for (int i = 1; i < log.samples; i++) {
        for (int at : intervalsAt) {
            std::vector<int>& readings = log.readings[at];
            readings[i] = readings[i - 1];
            if (i % (Number(bytes, at) / 5) == 0) TakeCode(stream, readings[i]);
        }
        int ago = 0;
        if (i % 60 == 0) TakeCode(stream, ago);
        if (ago > 0) log.marks.push_back(i - ago);
    }
    log.bytesLeft = (bytes.size() * 8 - stream.bit) / 8;
    return log;
}

// Every reading that the interval lets through, against the simulation.
void ExpectReadings(const std::vector<uint8_t>& bytes, const SecondaryLog& log, const std::vector<BikeSample>& samples) {
    struct Row { int at; int BikeSample::*channel; double scale, offset, step; };
    const Row rows[] = {
        {7, &BikeSample::ne, 20, 0, 20},   {11, &BikeSample::vfw, 10, 0, 10},  {13, &BikeSample::vrw, 10, 0, 10},
        {9, &BikeSample::th, 5, -140, 5},
        {19, &BikeSample::vb, 10, 0, 10},
        {21, &BikeSample::fsus, -18769 / 1024.0, 900 * 18769 / 1024.0, 19},
        {23, &BikeSample::rsus, -12500 / 1023.0, 940 * 12500 / 1023.0, 13},
        {25, &BikeSample::laf1, 1000 / 1140.0, 900, 1},
        {27, &BikeSample::laf2, 1000 / 1140.0, 900, 1},
    };
    for (const Row& row : rows) {
        const int every = Number(bytes, row.at) / 5;
        const std::vector<int>& readings = log.readings.at(row.at);
        for (int i = every; i < log.samples; i += every)
            ASSERT_NEAR(readings[i] * row.scale + row.offset, samples[i].*row.channel, row.step) << row.at << " " << i;
    }
}

TEST(SampleSecondaryLog, ReadsBackWithinOneRawStepAtItsOwnIntervals) {
    const std::vector<uint8_t> bytes = MakeSecondaryLog(Seconds(60));
    EXPECT_EQ(Number(bytes, 7), 10);
    EXPECT_EQ(Number(bytes, 19), 1000);
    const SecondaryLog log = Decode(bytes);
    ExpectReadings(bytes, log, SimulateRide(Seconds(60)));
    EXPECT_LE(log.bytesLeft, 4u);
}

TEST(SampleSecondaryLog, ReadsBackWithinOneRawStepAtOneInterval) {
    for (int interval : {5, 40}) {
        SampleLogOptions options = Seconds(60);
        options.intervalMs = interval;
        const std::vector<uint8_t> bytes = MakeSecondaryLog(options);
        EXPECT_EQ(Number(bytes, 27), interval);
        ExpectReadings(bytes, Decode(bytes), SimulateRide(options));
    }
}

TEST(SampleSecondaryLog, MarksStandAtTheSamplesWhereTheyFell) {
    SampleLogOptions options;
    options.laps = 2;
    options.marksPerLap = 3;
    const std::vector<BikeSample> samples = SimulateRide(options);
    std::vector<int> marks;
    for (size_t k = 1; k < samples.size(); k++)
        if (samples[k].mark && !samples[k - 1].mark) marks.push_back(static_cast<int>(k) + 1);
    EXPECT_EQ(marks.size(), 9u);
    EXPECT_EQ(Decode(MakeSecondaryLog(options)).marks, marks);
}

TEST(SampleSecondaryLog, HeaderTellsMemoAndSensors) {
    SampleLogOptions options = Seconds(3);
    options.memo = "wet";
    std::vector<uint8_t> bytes = MakeSecondaryLog(options);
    EXPECT_EQ(std::string(bytes.begin() + 320, bytes.begin() + 324), std::string("wet\0", 4));
    EXPECT_EQ(bytes[6], 0x13);
    EXPECT_EQ(bytes[79], 3);
    EXPECT_EQ(bytes[86], 3);
    EXPECT_EQ(Number(bytes, 39), frontWheelMm / 10);
    options.linearSuspension = options.voltInputs = true;
    bytes = MakeSecondaryLog(options);
    EXPECT_EQ(bytes[6], 0x10);
    EXPECT_EQ(bytes[79], 0);
}

// ---- CSV ----

std::vector<std::string> Lines(const SampleLogOptions& options) {
    const std::vector<uint8_t> bytes = MakeCsvLog(options);
    std::vector<std::string> lines = Split({bytes.begin(), bytes.end()}, '\n');
    for (std::string& line : lines)
        if (!line.empty() && line.back() == '\r') line.pop_back();
    return lines;
}

std::vector<std::string> Titles(const SampleLogOptions& options) {
    std::vector<std::string> titles = Split(Lines(options)[0], ',');
    for (std::string& title : titles) std::erase(title, '"');
    return titles;
}

TEST(SampleCsvLog, LinesHoldTheSimulationAtEveryStep) {
    for (int step : {5, 10, 20, 100}) {
        SCOPED_TRACE(step);
        SampleLogOptions options = Seconds(20, 10);
        options.stepMs = step;
        const std::vector<BikeSample> samples = SimulateRide(options);
        const std::vector<std::string> lines = Lines(options);
        ASSERT_EQ(lines.size(), 1u + 20000 / step);
        for (size_t k = 1; k < lines.size(); k++) {
            const BikeSample& s = samples[(k - 1) * step / 5];
            char expected[200];
            std::snprintf(expected, sizeof expected, "%.3f,%d,%.1f,%.1f,%.1f,%.2f,%.2f,%.2f,%.2f,%.2f,%.2f,%.2f,1",
                          (k - 1) * step / 1000.0, s.ne, s.th / 10.0, s.vfw / 10.0, s.vrw / 10.0, s.fsus / 100.0, s.rsus / 100.0,
                          s.laf1 / 100.0, s.laf2 / 100.0, s.vb / 100.0, s.aux1 / 100.0, s.aux2 / 100.0);
            ASSERT_EQ(lines[k], expected);
        }
    }
}

TEST(SampleCsvLog, LapColumnCountsLapsOrFallsBackToZero) {
    for (int step : {5, 100})
        for (bool distance : {false, true}) {
            SampleLogOptions options;
            options.laps = 1;
            options.stepMs = step;
            options.lapDistance = distance;
            int marks = 0, last = distance ? 0 : 1;
            const std::vector<std::string> lines = Lines(options);
            for (size_t k = 1; k < lines.size(); k++) {
                const int now = static_cast<int>(std::atof(lines[k].substr(lines[k].rfind(',') + 1).c_str()));
                marks += distance ? last > 0 && now == 0 : now != last;
                last = now;
            }
            EXPECT_EQ(marks, 2) << step << distance;
        }
}

constexpr const char* sections[] = {"Time",  "Ne",   "TH",   "VFW", "VRW",  "FRSUS", "RRSUS",
                                    "LAF1", "LAF2", "VB",   "AUX1", "AUX2", "LAP"};

TEST(SampleCsvLog, LabelsOfTheProgramKnowEveryTitle) {
    ProfileText labels;
    ASSERT_EQ(LoadProfile((SourceFolder() + "/resources/data/csvlabel.ini").c_str(), labels), 0);
    const auto keyOf = [&](const char* section, const std::string& title) {
        for (int key = 0; key < 16; key++)
            if (ProfileString(labels, section, std::to_string(key), "") == title) return key;
        return -1;
    };
    for (int style = 0; style < 3; style++)
        for (bool distance : {false, true}) {
            SampleLogOptions options = Seconds(1);
            options.titleStyle = style;
            options.lapDistance = distance;
            const std::vector<std::string> titles = Titles(options);
            ASSERT_EQ(titles.size(), std::size(sections));
            for (size_t k = 0; k < titles.size(); k++) {
                const int key = keyOf(sections[k], titles[k]);
                EXPECT_GE(key, 0) << titles[k];
                if (k == 12) {
                    EXPECT_EQ(key % 2, distance ? 1 : 0) << titles[k];  // odd keys are distances
                }
            }
        }
}

TEST(SampleCsvLog, LabelsAreWholeAndNoTitleStandsForTwoChannels) {
    ProfileText labels;
    ASSERT_EQ(LoadProfile((SourceFolder() + "/resources/data/csvlabel.ini").c_str(), labels), 0);
    std::set<std::string> titles;
    for (const char* section : sections)
        for (int key = 0; key < 16; key++) {
            const std::string title(ProfileString(labels, section, std::to_string(key), ""));
            EXPECT_TRUE(!title.empty() && title.size() <= 63) << section << key;
            EXPECT_TRUE(titles.insert(title).second) << title;
        }
}

// ---- corpus ----

TEST(SampleCorpus, HasSmallFilesOfEveryKind) {
    std::map<std::string, int> files;
    std::set<std::string> names;
    std::set<int> versions;
    for (const CorpusFile& file : MakeCorpus()) {
        files[file.folder]++;
        EXPECT_TRUE(names.insert(file.folder + "/" + file.name).second) << file.name;
        EXPECT_TRUE(!file.bytes.empty() && file.bytes.size() < 16000) << file.name << " " << file.bytes.size();
        if (file.folder == "native_log_fuzz" && file.name.find('_') == std::string::npos) versions.insert(file.bytes[15]);
    }
    EXPECT_EQ(versions, (std::set<int>{0, 1, 2, 3, 4, 32}));
    EXPECT_GE(files["native_log_fuzz"], 60);
    EXPECT_GE(files["secondary_log_fuzz"], 12);
    EXPECT_GE(files["csv_log_fuzz"], 25);
    EXPECT_GE(files["profile_fuzz"], 5);
    EXPECT_GE(files["course_fuzz"], 7);
}

}  // namespace
