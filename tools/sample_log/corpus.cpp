#include "tools/sample_log/corpus.h"

#include "tools/sample_log/ride.h"
#include "tools/sample_log/sample_log.h"

namespace {

constexpr int firstGearsAt = 13;  // s after the start, when the bike leaves the pit lane and runs through its gears

void Add(std::vector<CorpusFile>& corpus, const char* folder, const std::string& name, std::vector<uint8_t> bytes) {
    corpus.push_back({folder, name, std::move(bytes)});
}

void AddText(std::vector<CorpusFile>& corpus, const char* folder, const std::string& name, const std::string& text) {
    Add(corpus, folder, name, {text.begin(), text.end()});
}

// The whole second before the first mark of a ride.
int FirstMarkSecond(SampleLogOptions options) {
    options.laps = options.skipSeconds = 0;
    options.seconds = 600;
    Ride ride = StartRide(options);
    int count = 0;
    for (BikeSample sample; NextSample(ride, sample) && !sample.mark;) count++;
    return count / samplesPerSecond;
}

SampleLogOptions Excerpt(int version, int from, int seconds) {
    SampleLogOptions options;
    options.version = version;
    options.laps = 0;
    options.skipSeconds = from;
    options.seconds = seconds;
    return options;
}

using Maker = std::vector<uint8_t> (*)(const SampleLogOptions&);

// An excerpt whole, cut short inside its last samples and inside its header, and with bits turned over.
void AddWithDamage(std::vector<CorpusFile>& corpus, const char* folder, const std::string& name, Maker make,
                   SampleLogOptions options) {
    const std::vector<uint8_t> whole = make(options);
    Add(corpus, folder, name, whole);
    options.truncateBytes = 37;
    Add(corpus, folder, name + "_short", make(options));
    options.truncateBytes = static_cast<int>(whole.size()) - 700;
    Add(corpus, folder, name + "_header", make(options));
    options.truncateBytes = 0;
    for (int bits : {1, 12, 300}) {
        options.flipBits = bits;
        Add(corpus, folder, name + "_bits" + std::to_string(bits), make(options));
    }
}

void AddNativeLogs(std::vector<CorpusFile>& corpus) {
    constexpr const char* folder = "native_log_fuzz";
    for (int version : {0, 32, 1, 2, 3, 4}) {
        const std::string name = "v" + std::to_string(version);
        AddWithDamage(corpus, folder, name, MakeSampleLog, Excerpt(version, firstGearsAt, 1));
        SampleLogOptions options = Excerpt(version, FirstMarkSecond({}), 2);
        Add(corpus, folder, name + "_mark", MakeSampleLog(options));
        options = Excerpt(version, firstGearsAt, 1);
        options.linearSuspension = options.voltInputs = true;
        options.neDivider = 0;
        Add(corpus, folder, name + "_sensors", MakeSampleLog(options));
        options = Excerpt(version, 39, 2);
        options.lowBattery = true;
        Add(corpus, folder, name + "_battery", MakeSampleLog(options));
        options = Excerpt(version, 0, 0);  // the set-up file is a header without samples
        Add(corpus, folder, name + "_setup", MakeSampleLog(options));
    }
    SampleLogOptions early = Excerpt(2, firstGearsAt, 1);
    early.earlyFirmware = true;
    Add(corpus, folder, "early", MakeSampleLog(early));
}

void AddSecondaryLogs(std::vector<CorpusFile>& corpus) {
    constexpr const char* folder = "secondary_log_fuzz";
    AddWithDamage(corpus, folder, "typical", MakeSecondaryLog, Excerpt(4, firstGearsAt, 4));
    SampleLogOptions options = Excerpt(4, FirstMarkSecond({}), 2);
    options.intervalMs = 5;
    options.linearSuspension = options.voltInputs = true;
    AddWithDamage(corpus, folder, "dense", MakeSecondaryLog, options);
}

void AddCsvLogs(std::vector<CorpusFile>& corpus) {
    constexpr const char* folder = "csv_log_fuzz";
    for (int step : {5, 10, 20, 100})
        for (int style = 0; style < 3; style++) {
            SampleLogOptions options = Excerpt(4, FirstMarkSecond({}), step < 100 ? 1 : 4);
            options.stepMs = step;
            options.titleStyle = style;
            options.lapDistance = style == 1;
            const std::string name = "step" + std::to_string(step) + "_titles" + std::to_string(style);
            if (step == 100) AddWithDamage(corpus, folder, name, MakeCsvLog, options);
            else Add(corpus, folder, name, MakeCsvLog(options));
        }
    AddText(corpus, folder, "odd_fields",
        "Time,Ne,,TH,\"LAP\"\r\n0.005,,12,1e3,1\r\n\n0.010,0x10,-7,+.5,2\n\r1e-2,nan,inf,9999999999999999999,3");
    AddText(corpus, folder, "time_jumps", "Time,VFW\n0,1\n.1,2\n.2,3\n.3,4\n.4,5\n.5,6\n.9,7\n.2,8\n");
    AddText(corpus, folder, "long_line", "Time,Ne\n" + std::string(2100, '7') + "\n0.005,100\n");
    AddText(corpus, folder, "longest_line", "Time,Ne\n0.005," + std::string(2038, '7') + "\n0.010,100\n");
    AddText(corpus, folder, "no_titles", ",,\"\"\n1,2\n");
    AddText(corpus, folder, "zero_bytes", std::string("Time,Ne\0000.005,1\n0.010\0\0,2\n", 26));
    AddText(corpus, folder, "decimal_commas", "Time;Ne\n0,005;100\n0,010;200\n");
    AddText(corpus, folder, "numbers", "Time,TH,VFW\n0x1p-8,1e400,-1e-400\n9007199254740993,0.1e1,+-1\n1.2.3,nan(1),infinity\n12 km,0x,.\n");
    // A zero byte, then the items of the sixteen rows as 2 x (item + 1) + 1 and the lap type, then the text.
    const auto answered = [](int timeItem, char lapType, const std::string& text) {
        std::string bytes(18, '\0');
        bytes[1] = static_cast<char>(2 * (timeItem + 1) + 1);
        bytes[17] = lapType;
        return bytes + text;
    };
    AddText(corpus, folder, "fixed_time", answered(1, 3, "Ne,LAP\n1,1\n2,1\n3,2\n"));
    AddText(corpus, folder, "no_time", answered(-1, 1, "Ne,LAP\n1,1\n2,1\n"));
    AddText(corpus, folder, "closed", answered(0, static_cast<char>(250), "Ne,LAP\n1,1\n"));
    std::string titles, line;
    for (int k = 0; k < 101; k++) titles += "c" + std::to_string(k) + ",", line += std::to_string(k) + ",";
    AddText(corpus, folder, "many_columns", answered(0, 1, titles + "\n" + line + "\n" + line + "\n"));
}

void AddProfiles(std::vector<CorpusFile>& corpus) {
    constexpr const char* folder = "profile_fuzz";
    AddText(corpus, folder, "settings",
        "[Path]\r\nData=C:\\logs\r\nBMP=\r\n[Window]\r\nx=-8\r\ny=0\r\nx2=1024\r\ny2=768\r\nzoomed=1\r\nCurse_X=1980\r\n"
        "Curse_Z=500\r\n"
        "[ModeSetting]\r\nCursolValueMode=3\r\nSmoothingSample=12\r\ncolortype=1\r\nExpertMode=2\r\nCourseFile_name=sorrel.crs\r\n"
        "[SPLConfig]\r\nDebug=1\r\nSmoothingSTD=2\r\nLastcono=99999999999\r\n[ViewSetting]\r\nAFmap_SWTHS=250\r\n");
    AddText(corpus, folder, "layout",
        "[GraphSetting]\r\nrpmpos=360\r\nrpmzoom=50000\r\ntpszoom=0\r\nvfwzoom=-1\r\n"
        "GraphGrid_min0=5000\r\nGraphGrid_max0=16000\r\n"
        "GraphGrid_step0=0\r\nGraphGrid_disp0=1\r\nColor_Green0=8\r\nColor_Red13=-4\r\n"
        " VRW_View_Green=0\r\nNE_View_White=1\r\nLap_Point_Red=3\r\n");
    AddText(corpus, folder, "labels", "; titles\n[Time]\n0=Time (s)\n15=\"Elapsed\"\n[LAP]\n1=Distance\n0 = Lap\n[Ne]\n0=\n");
    AddText(corpus, folder, "sectors",
        "[sorrel.crs]\r\nSec1=200\r\nSec2=0\r\nSec7=5000\r\nOffset=12\r\n[larch.crs]\r\nOffset=-3\r\n");
    AddText(corpus, folder, "broken",
        "[Window\nx2\n=5\n[]\n[GraphSetting]x=1\nrpmpos==\"7\n\tzoomed = 1 \n[GraphSetting]\nrpmpos");
}

void AddCourses(std::vector<CorpusFile>& corpus) {
    constexpr const char* folder = "course_fuzz";
    for (const std::string& name : CourseNames()) AddText(corpus, folder, name, MakeCourse(name, 60));
    AddText(corpus, folder, "marks_first_and_last", "1024,0\n10,20\r\n0,1024\n1024,1024\n30,40\n50,-60.5\n2000,2000\n");
    AddText(corpus, folder, "numbers", "nan,inf\n-1e30,1e30\n 1 , 2\n3;4\n5,6\n");
    AddText(corpus, folder, "one_point", "1,2");
}

}  // namespace

std::vector<CorpusFile> MakeCorpus() {
    std::vector<CorpusFile> corpus;
    AddNativeLogs(corpus);
    AddSecondaryLogs(corpus);
    AddCsvLogs(corpus);
    AddProfiles(corpus);
    AddCourses(corpus);
    return corpus;
}
