// start_bench [RUNS] -- time from the start of a process to its first drawn frame, for the program without a log and for
// the smallest window program, in turns, and the ratio of the medians.
//
// Both are watched in the same way from outside: the first frame is there when the pixel in the middle of the window's
// top half is white. There stands the program's cursor line, and the other window is white all over.
#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

static double NowMs() {
    LARGE_INTEGER count, frequency;
    QueryPerformanceCounter(&count);
    QueryPerformanceFrequency(&frequency);
    return count.QuadPart * 1000.0 / frequency.QuadPart;
}

static std::wstring OwnFolder() {
    std::wstring path(32768, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    return path.substr(0, path.find_last_of(L"\\/") + 1);
}

constexpr double giveUpMs = 30000;

static bool FirstFrameIsThere(HWND window) {
    const HDC screen = GetDC(window);  // anew each time: one from before the window was shown stays empty
    const bool there = GetPixel(screen, 512, 192) == RGB(255, 255, 255);
    ReleaseDC(window, screen);
    return there;
}

// The time, or -1 when no frame came. The window has a class of its own.
static double StartOnce(const std::wstring& program, const wchar_t* windowClass) {
    std::wstring command = L"\"" + program + L"\"";
    STARTUPINFOW start = {};
    start.cb = sizeof start;
    PROCESS_INFORMATION process;
    const double begin = NowMs();
    if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start, &process)) return -1;
    HWND window = nullptr;
    while (!window && NowMs() - begin < giveUpMs) {
        window = FindWindowW(windowClass, nullptr);
        if (!window) Sleep(1);
    }
    while (!FirstFrameIsThere(window) && NowMs() - begin < giveUpMs) Sleep(1);
    const double elapsed = NowMs() - begin;
    PostMessageW(window, WM_CLOSE, 0, 0);
    WaitForSingleObject(process.hProcess, static_cast<DWORD>(giveUpMs));
    CloseHandle(process.hProcess);
    CloseHandle(process.hThread);
    return window && elapsed < giveUpMs ? elapsed : -1;
}

static double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

int main(int argc, char** argv) {
    const int runs = argc > 1 ? std::max(1, std::atoi(argv[1])) : 21;
    const struct {
        const char* name;
        std::wstring program;
        const wchar_t* windowClass;
    } candidates[] = {{"smallest window", OwnFolder() + L"smallest_window.exe", L"smallest"},
                      {"ZRKA", OwnFolder() + L"ZRKA.exe", L"ZRKA"}};
    std::vector<double> times[2];
    for (int run = -1; run < runs; ++run) {  // the first round warms the caches up
        for (int i = 0; i < 2; ++i) {
            const double elapsed = StartOnce(candidates[i].program, candidates[i].windowClass);
            if (elapsed < 0) {
                std::fprintf(stderr, "%s drew no frame\n", candidates[i].name);
                return 1;
            }
            if (run >= 0) times[i].push_back(elapsed);
        }
    }
    for (int i = 0; i < 2; ++i) std::printf("%-16s %6.1f ms\n", candidates[i].name, Median(times[i]));
    std::printf("ratio            %6.2f\n", Median(times[1]) / Median(times[0]));
    return 0;
}
