// sample_log -- the generator of sample logs as a command. See sample_log.h.
#include <algorithm>
#include <charconv>
#include <cstdio>
#include <filesystem>
#include <string>
#include <string_view>

#include "tools/sample_log/corpus.h"
#include "tools/sample_log/sample_log.h"

namespace {

const char help[] =
    "sample_log [OPTION]... OUT.zrk|OUT.zrv|OUT.qtw|OUT.csv   writes a log; its form follows from the name\n"
    "sample_log [--course-name NAME] [--points N] --course OUT.crs   writes a course file\n"
    "sample_log --corpus DIR   writes small files of every kind, one folder for each fuzz target\n"
    "\n"
    "The ride\n"
    "  --laps N             timed laps between the lap out and the lap in; 0: as many as --length holds (6; 0 with --length)\n"
    "  --length TIME        90s, 12m or 8h, 8h at most; what comes first ends the log\n"
    "  --skip TIME          leaves out the beginning\n"
    "  --seed N             another rider on another day (1)\n"
    "  --course-name NAME   sorrel, larch, juniper or tansy (sorrel)\n"
    "  --marks-per-lap N    1, 2 or 3 (1)\n"
    "  --low-battery        a battery that breaks down now and then\n"
    "The file\n"
    "  --memo TEXT          Shift-JIS, \\xNN for a byte; not in CSV\n"
    "  --truncate BYTES     damage: the end is missing\n"
    "  --flip-bits N        damage: bits turned over\n"
    ".zrk, .zrv\n"
    "  --version N          format: 0, 32, 1, 2, 3 or 4 (4)\n"
    "  --early-firmware     version 2 frames under a header that says 3\n"
    "  --ne-divider N       engine pulses a turn, 0 to 4; 0 is half a pulse (2)\n"
    "  --linear-suspension  linear stroke sensors; also .qtw\n"
    "  --volt-inputs        plain volts on AUX1 and AUX2; in .qtw on LAF1 and LAF2\n"
    ".qtw\n"
    "  --interval MS        between readings of every channel (each channel its own)\n"
    "CSV\n"
    "  --step MS            between lines, 5 to 1000 (10)\n"
    "  --titles N           0, 1 or 2: short names, long names in quotes, long names (0)\n"
    "  --lap-distance       distance since the start line in place of lap numbers\n"
    "Course\n"
    "  --points N           3 to 2999 (900)\n"
    "\n"
    "The same options write the same bytes everywhere. Example: sample_log --version 2 --laps 4 --seed 7 run.zrk\n";

struct Arguments {
    SampleLogOptions log;
    std::string      courseFile, corpusFolder, logFile;
    int              points = 900;
    bool             lapsGiven = false;
};

struct NumberOption {
    const char* name;
    int         low, high;
    int SampleLogOptions::*value;
};
constexpr NumberOption numberOptions[] = {
    {"--laps", 0, 100000, &SampleLogOptions::laps},
    {"--marks-per-lap", 1, 3, &SampleLogOptions::marksPerLap},
    {"--truncate", 0, 1 << 30, &SampleLogOptions::truncateBytes},
    {"--flip-bits", 0, 1 << 20, &SampleLogOptions::flipBits},
    {"--version", 0, 32, &SampleLogOptions::version},
    {"--ne-divider", 0, 4, &SampleLogOptions::neDivider},
    {"--interval", 5, 60000, &SampleLogOptions::intervalMs},
    {"--step", 5, 1000, &SampleLogOptions::stepMs},
    {"--titles", 0, 2, &SampleLogOptions::titleStyle},
};

struct SwitchOption {
    const char* name;
    bool SampleLogOptions::*value;
};
constexpr SwitchOption switchOptions[] = {
    {"--low-battery", &SampleLogOptions::lowBattery},
    {"--early-firmware", &SampleLogOptions::earlyFirmware},
    {"--linear-suspension", &SampleLogOptions::linearSuspension},
    {"--volt-inputs", &SampleLogOptions::voltInputs},
    {"--lap-distance", &SampleLogOptions::lapDistance},
};

struct TimeOption {
    const char* name;
    int SampleLogOptions::*seconds;
};
constexpr TimeOption timeOptions[] = {{"--length", &SampleLogOptions::seconds}, {"--skip", &SampleLogOptions::skipSeconds}};

// A whole number at the start of the text; `rest` is what follows it. False when there is none.
template <class Number>
bool TakeNumber(std::string_view text, Number& number, std::string_view& rest) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    rest = text.substr(static_cast<size_t>(end - text.data()));
    return error == std::errc() && number >= 0;
}

bool TakeTime(std::string_view text, int& seconds) {
    std::string_view unit;
    int64_t number;
    if (!TakeNumber(text, number, unit) || number > longestLogSeconds) return false;
    const int size = unit == "h" ? 3600 : unit == "m" ? 60 : unit == "s" || unit.empty() ? 1 : 0;
    seconds = static_cast<int>(number * size);
    return size != 0 && number * size <= longestLogSeconds;
}

bool IsVersion(int number) { return number <= 4 || number == 32; }

bool IsCourse(std::string_view name) {
    for (const std::string& known : CourseNames())
        if (name == known) return true;
    return false;
}

std::string Unescaped(std::string_view text) {
    std::string bytes;
    for (size_t i = 0; i < text.size(); i++) {
        unsigned byte = 0;
        const char* digits = text.data() + i + 2;
        const bool escape = text.substr(i, 2) == "\\x" && i + 4 <= text.size() &&
                            std::from_chars(digits, digits + 2, byte, 16).ptr == digits + 2;
        bytes += escape ? static_cast<char>(byte) : text[i];
        if (escape) i += 3;
    }
    return bytes;
}

enum class Taken { unknown, unusable, alone, withValue };

Taken TakeNumberOption(Arguments& arguments, const NumberOption& option, std::string_view value) {
    std::string_view rest;
    int& number = arguments.log.*option.value;
    const bool good = TakeNumber(value, number, rest) && rest.empty() && number >= option.low && number <= option.high;
    if (option.value == &SampleLogOptions::laps) arguments.lapsGiven = true;
    return good && (option.value != &SampleLogOptions::version || IsVersion(number)) ? Taken::withValue : Taken::unusable;
}

Taken TakeTextOption(Arguments& arguments, std::string_view name, std::string_view value) {
    std::string_view rest;
    if (name == "--memo") arguments.log.memo = Unescaped(value);
    else if (name == "--course") arguments.courseFile = value;
    else if (name == "--corpus") arguments.corpusFolder = value;
    else if (name == "--course-name") {
        if (!IsCourse(value)) return Taken::unusable;
        arguments.log.course = value;
    } else if (name == "--seed") {
        if (!TakeNumber(value, arguments.log.seed, rest) || !rest.empty()) return Taken::unusable;
    } else if (name == "--points") {
        if (!TakeNumber(value, arguments.points, rest) || !rest.empty()) return Taken::unusable;
        if (arguments.points < 3 || arguments.points > 2999) return Taken::unusable;
    } else return Taken::unknown;
    return Taken::withValue;
}

Taken TakeOption(Arguments& arguments, std::string_view name, const char* value) {
    for (const SwitchOption& option : switchOptions)
        if (name == option.name) return arguments.log.*option.value = true, Taken::alone;
    if (value == nullptr) return Taken::unknown;
    for (const NumberOption& option : numberOptions)
        if (name == option.name) return TakeNumberOption(arguments, option, value);
    for (const TimeOption& option : timeOptions)
        if (name == option.name) return TakeTime(value, arguments.log.*option.seconds) ? Taken::withValue : Taken::unusable;
    return TakeTextOption(arguments, name, value);
}

// 0 done, 2 after the user was told what is wrong.
int TakeArguments(Arguments& arguments, int count, char** texts) {
    for (int i = 1; i < count; i++) {
        if (texts[i][0] != '-') {
            arguments.logFile = texts[i];
            continue;
        }
        const Taken taken = TakeOption(arguments, texts[i], texts[i + 1]);
        if (taken == Taken::unknown || taken == Taken::unusable) {
            const bool unknown = taken == Taken::unknown;
            std::fprintf(stderr, unknown ? "sample_log: %s is no option or lacks its value" : "sample_log: %s cannot be %s", texts[i],
                         texts[i + 1]);
            std::fputs("; --help tells them all\n", stderr);
            return 2;
        }
        if (taken == Taken::withValue) i++;
    }
    if (arguments.log.seconds > 0 && !arguments.lapsGiven) arguments.log.laps = 0;
    return 0;
}

int WriteFile(const std::filesystem::path& path, const void* bytes, size_t size) {
    std::FILE* file = std::fopen(path.string().c_str(), "wb");
    const bool written = file != nullptr && std::fwrite(bytes, 1, size, file) == size;
    if (file != nullptr && std::fclose(file) == 0 && written) return 0;
    std::fprintf(stderr, "sample_log: cannot write %s\n", path.string().c_str());
    return 1;
}

int WriteCourse(const Arguments& arguments) {
    const std::string course = MakeCourse(arguments.log.course, arguments.points);
    return WriteFile(arguments.courseFile, course.data(), course.size());
}

int WriteLog(const Arguments& arguments) {
    struct Form { const char* extension; std::vector<uint8_t> (*make)(const SampleLogOptions&); };
    constexpr Form forms[] = {{".zrk", MakeSampleLog}, {".zrv", MakeSampleLog}, {".qtw", MakeSecondaryLog}, {".csv", MakeCsvLog}};
    const std::string extension = std::filesystem::path(arguments.logFile).extension().string();
    for (const Form& form : forms)
        if (extension == form.extension) {
            const std::vector<uint8_t> log = form.make(arguments.log);
            return WriteFile(arguments.logFile, log.data(), log.size());
        }
    std::fprintf(stderr, "sample_log: %s ends in none of .zrk, .zrv, .qtw and .csv\n", arguments.logFile.c_str());
    return 2;
}

int WriteCorpus(const std::string& folder) {
    int failed = 0;
    for (const CorpusFile& file : MakeCorpus()) {
        std::error_code ignored;  // a missing folder shows when its files are written
        std::filesystem::create_directories(std::filesystem::path(folder) / file.folder, ignored);
        failed |= WriteFile(std::filesystem::path(folder) / file.folder / file.name, file.bytes.data(), file.bytes.size());
    }
    return failed;
}

}  // namespace

int main(int count, char** texts) {
    for (int i = 1; i < count; i++)
        if (std::string_view(texts[i]) == "--help") return std::fputs(help, stdout), 0;
    Arguments arguments;
    if (TakeArguments(arguments, count, texts) != 0) return 2;
    const bool nothing = arguments.courseFile.empty() && arguments.corpusFolder.empty() && arguments.logFile.empty();
    if (nothing) return std::fputs(help, stderr), 2;
    int failed = 0;
    if (!arguments.courseFile.empty()) failed = std::max(failed, WriteCourse(arguments));
    if (!arguments.corpusFolder.empty()) failed = std::max(failed, WriteCorpus(arguments.corpusFolder));
    if (!arguments.logFile.empty()) failed = std::max(failed, WriteLog(arguments));
    return failed;
}
