// start_bench [RUNS] -- time from the start of a process to its first drawn frame, for the program without a log and for
// the smallest window program, in turns, and the ratio of the medians.
//
// Both are watched in the same way from outside: the first frame is there when the pixel in the middle of the window's
// top half is white. There stands the program's cursor line, and the other window is white all over.
//
// Both run in a temporary folder made for this run and removed at its end, which holds a copy of each and the course of
// the standard settings: without a course the program shows a box before its first frame. The settings file that the
// program leaves there at the end of one run is read by the next.
//
// Status 0 after the figures; 1, with a line that says why, when there is no program to start or one draws no frame.
#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "bench/start/scratch_folder.h"
#include "tools/sample_log/sample_log.h"

namespace fs = std::filesystem;

constexpr double giveUpMs = 15000;

// --- the folder --------------------------------------------------------------------------------------------------------

static bool Furnish(const fs::path& folder) {
    for (const char* name : {"smallest_window.exe", "ZRKA.exe"}) {
        std::error_code failure;
        fs::copy_file(OwnPath().parent_path() / name, folder / name, failure);
        if (failure) {
            std::fprintf(stderr, "start_bench: %s does not stand beside this program\n", name);
            return false;
        }
    }
    std::ofstream(folder / "sorrel.crs", std::ios::binary) << MakeCourse("sorrel");
    return true;
}

// --- one start -----------------------------------------------------------------------------------------------------------

struct Candidate {
    const char* name;
    const wchar_t *file, *windowClass;
};

static HWND WindowOf(DWORD process, const wchar_t* windowClass) {
    for (HWND window = nullptr; (window = FindWindowExW(nullptr, window, windowClass, nullptr));) {
        DWORD owner = 0;
        GetWindowThreadProcessId(window, &owner);
        if (owner == process) return window;
    }
    return nullptr;
}

static bool FirstFrameIsThere(HWND window) {
    const HDC screen = GetDC(window);  // anew each time: one from before the window was shown stays empty
    const bool there = GetPixel(screen, 512, 192) == RGB(255, 255, 255);
    ReleaseDC(window, screen);
    return there;
}

// What keeps a program from drawing: its end, a box in front of it, or nothing that can be seen.
static void TellWhatStands(const Candidate& candidate, const PROCESS_INFORMATION& process) {
    std::fprintf(stderr, "start_bench: %s drew no frame", candidate.name);
    DWORD code = 0;
    if (WaitForSingleObject(process.hProcess, 0) == WAIT_OBJECT_0 && GetExitCodeProcess(process.hProcess, &code))
        std::fprintf(stderr, "; it ended with status %lu", code);
    if (const HWND box = WindowOf(process.dwProcessId, L"#32770")) {
        wchar_t text[256] = L"";
        for (HWND line = nullptr; !text[0] && (line = FindWindowExW(box, line, L"Static", nullptr));)  // the first is the icon
            SendMessageTimeoutW(line, WM_GETTEXT, std::size(text), reinterpret_cast<LPARAM>(text), SMTO_ABORTIFHUNG, 2000, nullptr);
        std::fprintf(stderr, "; a box stands there: \"%ls\"", text);
    }
    std::fprintf(stderr, "\n");
}

// Milliseconds until the first frame, or -1 after telling why there was none.
static double StartOnce(const fs::path& folder, const Candidate& candidate) {
    std::wstring command = L"\"" + (folder / candidate.file).wstring() + L"\"";
    STARTUPINFOW start = {};
    start.cb = sizeof start;
    PROCESS_INFORMATION process;
    const double begin = NowMs();
    if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, folder.c_str(), &start, &process)) {
        std::fprintf(stderr, "start_bench: %s cannot be started (error %lu)\n", candidate.name, GetLastError());
        return -1;
    }
    const auto goesOn = [&] {
        return NowMs() - begin < giveUpMs && WaitForSingleObject(process.hProcess, 0) == WAIT_TIMEOUT;
    };
    HWND window = nullptr;
    while (!(window = WindowOf(process.dwProcessId, candidate.windowClass)) && goesOn()) Sleep(1);
    bool drawn = false;
    while (window && !(drawn = FirstFrameIsThere(window)) && goesOn()) Sleep(1);
    const double elapsed = NowMs() - begin;
    if (drawn) {
        PostMessageW(window, WM_CLOSE, 0, 0);
        WaitForSingleObject(process.hProcess, static_cast<DWORD>(giveUpMs));
    } else {
        TellWhatStands(candidate, process);
    }
    TerminateProcess(process.hProcess, 1);  // one that has ended is past that
    WaitForSingleObject(process.hProcess, INFINITE);  // its file is removed with the folder
    CloseHandle(process.hProcess);
    CloseHandle(process.hThread);
    return drawn ? elapsed : -1;
}

int main(int argc, char** argv) {
    const int runs = argc > 1 ? std::max(1, std::atoi(argv[1])) : 21;
    const Candidate candidates[] = {{"smallest window", L"smallest_window.exe", L"smallest"}, {"ZRKA", L"ZRKA.exe", L"ZRKA"}};
    const ScratchFolder folder("start_bench");
    if (!Furnish(folder.path)) return 1;
    std::vector<double> times[2];
    for (int run = -1; run < runs; ++run) {  // the first round warms the caches up
        for (int i = 0; i < 2; ++i) {
            const double elapsed = StartOnce(folder.path, candidates[i]);
            if (elapsed < 0) return 1;
            if (run >= 0) times[i].push_back(elapsed);
        }
    }
    for (int i = 0; i < 2; ++i) std::printf("%-16s %6.1f ms\n", candidates[i].name, Median(times[i]));
    std::printf("ratio            %6.2f\n", Median(times[1]) / Median(times[0]));
    return 0;
}
