// Any bytes as a course file, and the second half of the same bytes as "Sector.ini": the chain is closed, every coordinate,
// length and boundary lies in its range, and what is drawn, hit and stepped from it stays inside.
#include <unistd.h>

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include "app/frame_loop.h"
#include "draw/draw_layer.h"
#include "graph/view_state.h"
#include "platform/files.h"
#include "platform/headless/script.h"
#include "run_data/run_store.h"
#include "views/course_file.h"
#include "views/course_image.h"
#include "views/course_map.h"

namespace {

void Require(bool holds) {
    if (!holds) std::abort();
}

// The folder of this run's files; it goes when the fuzzer ends.
struct RunFolder {
    std::filesystem::path path = std::filesystem::temp_directory_path() / ("course_fuzz_" + std::to_string(getpid()));
    RunFolder() { std::filesystem::create_directories(path); }
    ~RunFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }
    void Write(const char* name, std::string_view bytes) const {
        std::ofstream(path / name, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    }
};

void Start(const RunFolder& folder) {
    DefaultScript();
    LoadDefaults();
    SetProgramFolder((folder.path.string() + "/").c_str());
    SetVideoMode(32, 640, 480, 60);
    Require(InitDrawing() == 0);
    folder.Write("sorrel.crs", "0,0\n");
    RebuildResources();
    clientWidth = 640;
    clientHeight = 480;
}

void RequireHeld() {
    Require(coursePointCount >= 1 && coursePointCount <= coursePointLimit);
    Require(courseOffset >= 0 && courseOffset <= coursePointCount);
    for (int point = 0; point <= coursePointCount; point++) {
        Require(std::abs(courseX[point]) <= 1023 && std::abs(courseY[point]) <= 1023);
        Require(std::isfinite(courseLen[point]) && courseLen[point] >= 0);
    }
    for (const auto& row : sectorMark)
        for (int mark : row) Require(mark >= 0 && mark <= noSectorMark);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const RunFolder folder;
    static const std::filesystem::path current = std::filesystem::current_path();
    static const bool started = (Start(folder), true);
    static_cast<void>(started);
    if (size > 1 << 16) return 0;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    folder.Write("sorrel.crs", bytes);
    folder.Write("Sector.ini", bytes.substr(size / 2));
    shown.clear();
    Require(LoadCourse() == 1);
    RequireHeld();
    for (int step : {-1, 10, -10, 1}) {
        courseOffset += step;
        ApplyCourseOffset();
        RequireHeld();
    }
    courseColorChannel = size ? data[0] : 0;
    RedrawCourseImage(0);
    mouseX = size > 1 ? data[1] * 2 : 0;
    mouseY = size > 2 ? data[2] * 2 : 0;
    mouseButtons = 2;
    CourseClick();
    DrawCourseMap();
    std::filesystem::current_path(current);  // the fuzzer reads its corpus from there
    return 0;
}
