// test_folder.h -- a folder of its own for a test, empty at first and gone at the end, when the current folder is again what
// it was. Paths are UTF-8.
#pragma once
#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

struct TestFolder {
    std::filesystem::path path;
    std::filesystem::path before = std::filesystem::current_path();

    TestFolder() {
        const auto* test = testing::UnitTest::GetInstance()->current_test_info();
        path = std::filesystem::temp_directory_path() /
               (std::string("zrka_") + test->test_suite_name() + "_" + test->name() + "_" + std::to_string(UniqueNumber()));
        std::filesystem::remove_all(path);
        std::filesystem::create_directories(path);
    }
    ~TestFolder() {
        std::error_code ignored;
        std::filesystem::current_path(before, ignored);
        std::filesystem::remove_all(path, ignored);
    }
    TestFolder(const TestFolder&) = delete;
    TestFolder& operator=(const TestFolder&) = delete;

    static std::filesystem::path FromUtf8(const std::string& name) { return std::u8string(name.begin(), name.end()); }
    std::string Path(const std::string& name = "") const {
        const std::u8string full = (name.empty() ? path : path / FromUtf8(name)).u8string();
        return {full.begin(), full.end()};
    }
    std::string Write(const std::string& name, std::string_view bytes) const {
        std::ofstream(path / FromUtf8(name), std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        return Path(name);
    }
    std::string Read(const std::string& name) const {
        std::ifstream file(path / FromUtf8(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    int EntryCount() const {
        using Entries = std::filesystem::directory_iterator;
        return static_cast<int>(std::distance(Entries(path), Entries()));
    }

  private:
    // Two runs of the tests may share the temporary folder of the system.
    static uint64_t UniqueNumber() {
        static const uint64_t start =
            static_cast<uint64_t>(std::filesystem::file_time_type::clock::now().time_since_epoch().count()) ^
            reinterpret_cast<uintptr_t>(&start);
        return start;
    }
};
