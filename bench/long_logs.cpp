#include "bench/long_logs.h"

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <map>

#include "tools/sample_log/sample_log.h"

static SampleLogOptions EightHours() {
    SampleLogOptions options;
    options.laps = 0;
    options.seconds = longestLogSeconds;
    return options;
}

const std::vector<uint8_t>& LongNativeLog(int version) {
    static std::map<int, std::vector<uint8_t>> logs;
    std::vector<uint8_t>& log = logs[version];
    if (log.empty()) {
        SampleLogOptions options = EightHours();
        options.version = version;
        log = MakeSampleLog(options);
    }
    return log;
}

const std::vector<uint8_t>& LongSecondaryLog(int intervalMs) {
    static std::map<int, std::vector<uint8_t>> logs;
    std::vector<uint8_t>& log = logs[intervalMs];
    if (log.empty()) {
        SampleLogOptions options = EightHours();
        options.intervalMs = intervalMs;
        log = MakeSecondaryLog(options);
    }
    return log;
}

namespace {
struct Folder {
    std::filesystem::path path = std::filesystem::temp_directory_path() / ("zrka_long_logs_" + std::to_string(getpid()));
    Folder() { std::filesystem::create_directories(path); }
    ~Folder() {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }
};
}  // namespace

const std::string& LongNativeFile(int version) {
    static Folder folder;
    static std::map<int, std::string> files;
    std::string& file = files[version];
    if (file.empty()) {
        const std::vector<uint8_t>& log = LongNativeLog(version);
        file = (folder.path / ("version" + std::to_string(version) + ".zrk")).string();
        std::ofstream(file, std::ios::binary).write(reinterpret_cast<const char*>(log.data()), static_cast<std::streamsize>(log.size()));
    }
    return file;
}
