// sample_log -- the generator of sample logs as a command. See sample_log.h.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "tools/sample_log/sample_log.h"

namespace {

const char help[] =
    "sample_log [OPTION VALUE]... OUT.zrk   writes a log\n"
    "sample_log [--course-name NAME] --course OUT.crs   writes the circuit's course file\n"
    "\n"
    "  --version N          format: 0, 32, 1, 2, 3 or 4 (4)\n"
    "  --laps N             timed laps; 0: as many as --length holds (6, or 0 with --length)\n"
    "  --length TIME        90s, 12m or 8h; what comes first ends the log\n"
    "  --seed N             another rider on another day (1)\n"
    "  --marks-per-lap N    1, 2 or 3 (1)\n"
    "  --memo TEXT          Shift-JIS, \\xNN for a byte\n"
    "  --course-name NAME   circuit (sorrel)\n"
    "  --points N           points of the course file, 3 to 2999 (900)\n"
    "  --ne-divider N       pulses a turn, 0 half a pulse (2)\n"
    "  --linear-suspension  linear stroke sensors\n"
    "  --volt-inputs        plain volts on both AUX inputs\n"
    "  --low-battery        a battery that breaks down now and then\n"
    "  --early-firmware     version 2 frames under a header that says 3\n"
    "  --truncate BYTES     damage: the end is missing\n"
    "  --flip-bits N        damage: bits turned over\n"
    "\n"
    "The same options write the same bytes everywhere. Example: sample_log --version 2 --laps 4 --seed 7 run.zrk\n";

struct Arguments {
    SampleLogOptions log;
    std::string      courseFile, logFile;
    int              points = 900;
    bool             lapsGiven = false;
};

struct NumberOption {
    const char* name;
    int SampleLogOptions::*value;
};
constexpr NumberOption numberOptions[] = {
    {"--version", &SampleLogOptions::version},     {"--laps", &SampleLogOptions::laps},
    {"--marks-per-lap", &SampleLogOptions::marksPerLap}, {"--ne-divider", &SampleLogOptions::neDivider},
    {"--truncate", &SampleLogOptions::truncateBytes}, {"--flip-bits", &SampleLogOptions::flipBits},
};

struct SwitchOption {
    const char* name;
    bool SampleLogOptions::*value;
};
constexpr SwitchOption switchOptions[] = {
    {"--linear-suspension", &SampleLogOptions::linearSuspension}, {"--volt-inputs", &SampleLogOptions::voltInputs},
    {"--low-battery", &SampleLogOptions::lowBattery},             {"--early-firmware", &SampleLogOptions::earlyFirmware},
};

int Seconds(const std::string& text) {
    char* unit = nullptr;
    const long number = std::strtol(text.c_str(), &unit, 10);
    return static_cast<int>(number * (*unit == 'h' ? 3600 : *unit == 'm' ? 60 : 1));
}

std::string Unescaped(const std::string& text) {
    std::string bytes;
    for (size_t i = 0; i < text.size(); i++)
        if (text.compare(i, 2, "\\x") == 0 && i + 3 < text.size()) {
            bytes += static_cast<char>(std::stoi(text.substr(i + 2, 2), nullptr, 16));
            i += 3;
        } else bytes += text[i];
    return bytes;
}

// Takes one option; returns how many arguments it used, 0 for an unknown one.
int TakeOption(Arguments& arguments, const char* name, const char* value) {
    for (const SwitchOption& option : switchOptions)
        if (std::strcmp(name, option.name) == 0) return arguments.log.*option.value = true, 1;
    if (value == nullptr) return 0;
    for (const NumberOption& option : numberOptions)
        if (std::strcmp(name, option.name) == 0) {
            arguments.log.*option.value = std::atoi(value);
            if (option.value == &SampleLogOptions::laps) arguments.lapsGiven = true;
            return 2;
        }
    const std::string option = name;
    if (option == "--seed") arguments.log.seed = std::strtoull(value, nullptr, 10);
    else if (option == "--length") arguments.log.seconds = Seconds(value);
    else if (option == "--memo") arguments.log.memo = Unescaped(value);
    else if (option == "--course-name") arguments.log.course = value;
    else if (option == "--points") arguments.points = std::atoi(value);
    else if (option == "--course") arguments.courseFile = value;
    else return 0;
    return 2;
}

int WriteFile(const std::string& path, const void* bytes, size_t size) {
    std::FILE* file = std::fopen(path.c_str(), "wb");
    const bool written = file != nullptr && std::fwrite(bytes, 1, size, file) == size;
    if (file == nullptr || std::fclose(file) != 0 || !written) {
        std::fprintf(stderr, "sample_log: cannot write %s\n", path.c_str());
        return 1;
    }
    return 0;
}

}  // namespace

int main(int count, char** texts) {
    Arguments arguments;
    for (int i = 1; i < count;) {
        if (std::strcmp(texts[i], "--help") == 0) return std::fputs(help, stdout), 0;
        const int used = texts[i][0] == '-' ? TakeOption(arguments, texts[i], texts[i + 1]) : 1;
        if (texts[i][0] != '-') arguments.logFile = texts[i];
        if (used == 0) {
            std::fprintf(stderr, "sample_log: %s is no option, or lacks its value; --help tells them all\n", texts[i]);
            return 2;
        }
        i += used;
    }
    if (arguments.courseFile.empty() && arguments.logFile.empty()) return std::fputs(help, stderr), 2;
    if (arguments.log.seconds > 0 && !arguments.lapsGiven) arguments.log.laps = 0;
    int failed = 0;
    if (!arguments.courseFile.empty()) {
        const std::string course = MakeCourse(arguments.log.course, arguments.points);
        failed |= WriteFile(arguments.courseFile, course.data(), course.size());
    }
    if (!arguments.logFile.empty()) {
        const std::vector<uint8_t> log = MakeSampleLog(arguments.log);
        failed |= WriteFile(arguments.logFile, log.data(), log.size());
    }
    return failed;
}
