// scratch_folder.h -- what the benchmarks that start Windows programs share: the clock, and a folder made for one run.
#pragma once
#include <windows.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

inline double NowMs() {
    LARGE_INTEGER count, frequency;
    QueryPerformanceCounter(&count);
    QueryPerformanceFrequency(&frequency);
    return count.QuadPart * 1000.0 / frequency.QuadPart;
}

inline double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

inline std::filesystem::path OwnPath() {
    std::wstring path(32768, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    return path;
}

// Removed with all that is in it.
struct ScratchFolder {
    std::filesystem::path path;
    explicit ScratchFolder(const std::string& name)
        : path(std::filesystem::temp_directory_path() / (name + "_" + std::to_string(GetCurrentProcessId()))) {
        std::filesystem::create_directories(path);
    }
    ~ScratchFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }
    ScratchFolder(const ScratchFolder&) = delete;
};
