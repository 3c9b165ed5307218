// table_bench [ROUNDS [TURNS]] -- time from the command that opens the lap table, dialog 1023, to its first complete
// paint: on the program without a log, with three logs of 20 laps, and with one of 8 hours; and what a scrolling step
// paints.
//
// Each round starts one process for each of the three, in turns. A process is the whole program, with its windows, its
// course and its tool bar, to which the command is sent; the tool bar is the dialog's owner, as ever. The dialog counts as
// painted when its message loop reports to the owner that nothing waits in the queue, and no window of the program waits
// to be painted. Then it is closed, and the next turn opens it.
//
// Three ways to open are told apart:
//   first   the first dialog of the process: its statistics, and what the system does once in a process
//   open    with the statistics to be computed, as after a load
//   again   with the statistics kept from the last time
// `statistics` is that pass alone, timed before each `open` in the same process. For each kind of log follow the medians
// and the minima over all rounds, and the ratio of (opening - statistics) to the same way of opening without a log; there
// nothing is taken off, and `again` has no statistics in it.
//
// Then a process scrolls by bar and wheel and sorts by each header. `step` is the time until all is painted; beside it the
// cells whose text or colour changed, those painted, and, which should be none, cells painted without need, cells that
// changed and were not painted, and erasures of the dialog.
//
// Under Wine nearly all of the time is spent between the program and the server of the windows, another process. On one
// core the figures are steady; on several they double when the two happen to run on different ones. Hence
//   sh tools/wine.sh stop; taskset -c 1 sh tools/wine.sh run build/windows/table_bench.exe
// which starts server and screen on that core, too.
//
// The processes run in a temporary folder made for this run and removed at its end, with a copy of this program, a course,
// and the logs. Status 0 after the figures; 1, with a line that says why, when a process did not measure, or when a step
// did not paint what had changed, and that alone.
#include <windows.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string_view>

#include "bench/start/scratch_folder.h"
#include "bench/table/table_stand.h"
#include "tools/sample_log/sample_log.h"

namespace fs = std::filesystem;

constexpr DWORD giveUpMs = 120000;

struct Kind {
    const char *name, *files;
    std::vector<double> figures[figureTotal];
};

static void WriteLog(const fs::path& file, int laps, int seconds, int seed) {
    SampleLogOptions options;
    options.laps = laps;
    options.seconds = seconds;
    options.seed = static_cast<uint64_t>(seed);
    const std::vector<uint8_t> bytes = MakeSampleLog(options);
    std::ofstream(file, std::ios::binary) << std::string(bytes.begin(), bytes.end());
}

static void Furnish(const fs::path& folder) {
    fs::copy_file(OwnPath(), folder / "ZRKA.exe");
    std::ofstream(folder / "sorrel.crs", std::ios::binary) << MakeCourse("sorrel");
    for (int i = 1; i <= 3; i++) WriteLog(folder / ("short" + std::to_string(i) + ".zrk"), 20, 0, i);
    WriteLog(folder / "long.zrk", 0, longestLogSeconds, 4);
}

// The exit status, or -1 when it cannot be started or does not end.
static int RunToItsEnd(const fs::path& folder, const std::string& arguments) {
    std::wstring command = L"\"" + (folder / "ZRKA.exe").wstring() + L"\" " + std::wstring(arguments.begin(), arguments.end());
    STARTUPINFOW start = {};
    start.cb = sizeof start;
    PROCESS_INFORMATION process;
    if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, folder.c_str(), &start, &process))
        return -1;
    DWORD status = 1;
    const bool ended = WaitForSingleObject(process.hProcess, giveUpMs) == WAIT_OBJECT_0;
    if (ended) GetExitCodeProcess(process.hProcess, &status);
    TerminateProcess(process.hProcess, 1);            // one that has ended is past that
    WaitForSingleObject(process.hProcess, INFINITE);  // its file is removed with the folder
    CloseHandle(process.hProcess);
    CloseHandle(process.hThread);
    return ended ? static_cast<int>(status) : -1;
}

// The figures of one process join those of its kind. False, after telling why, when it has none.
static bool RunKind(const fs::path& folder, Kind& kind, int turns) {
    fs::remove(folder / figuresFile);
    const int status = RunToItsEnd(folder, "--measure " + std::to_string(turns) + " " + kind.files);
    std::ifstream lines(folder / figuresFile);
    double number;
    bool whole = status == 0;
    for (std::string name; lines >> name >> number;) {
        whole = whole && number >= 0;
        for (int figure = 0; figure < figureTotal; figure++)
            if (name == figureNames[figure]) kind.figures[figure].push_back(number);
    }
    for (const std::vector<double>& numbers : kind.figures) whole = whole && !numbers.empty();
    whole = whole && kind.figures[openMs].size() % static_cast<size_t>(turns) == 0;
    if (!whole) std::fprintf(stderr, "table_bench: %s did not measure (status %d)\n", kind.name, status);
    return whole;
}

static double Smallest(const std::vector<double>& values) { return *std::min_element(values.begin(), values.end()); }
static double Largest(const std::vector<double>& values) { return *std::max_element(values.begin(), values.end()); }

template <class Summary>
static void PrintOpening(const char* title, const std::vector<Kind>& kinds, Summary of) {
    std::printf("%-22s     first      open     again  statistics | ratio: first   open  again\n", title);
    for (const Kind& kind : kinds) {
        std::printf("%-22s", kind.name);
        for (const Figure figure : {firstMs, openMs, againMs, statisticsMs}) std::printf("%10.2f", of(kind.figures[figure]));
        std::printf("  |      ");
        for (const Figure figure : {firstMs, openMs, againMs}) {
            const bool computes = figure != againMs && &kind != &kinds[0];
            const double rest = of(kind.figures[figure]) - (computes ? of(kind.figures[statisticsMs]) : 0);
            std::printf("%7.2f", rest / of(kinds[0].figures[figure]));
        }
        std::printf("\n");
    }
}

// False when a step painted without need or not what it had to.
static bool PrintSteps(const std::vector<Kind>& kinds) {
    bool right = true;
    std::printf("scrolling and sorting       step   changed   painted  | most spare, missed cells, erasures\n");
    for (const Kind& kind : kinds) {
        std::printf("%-22s", kind.name);
        for (const Figure figure : {stepMs, changedCells, paintedCells}) std::printf("%10.2f", Median(kind.figures[figure]));
        const double spare = Largest(kind.figures[sparePaints]), erased = Largest(kind.figures[dialogErasures]);
        const double missed = Largest(kind.figures[missedCells]);
        std::printf("  | %8.0f %8.0f %8.0f\n", spare, missed, erased);
        const bool moves = *kind.files == 0 || Largest(kind.figures[changedCells]) > 0;
        right = right && spare == 0 && missed == 0 && erased == 0 && moves;
    }
    if (!right) std::fprintf(stderr, "table_bench: a step did not paint what had changed, and that alone\n");
    return right;
}

int main(int argc, char** argv) {
    if (argc > 2 && std::string_view(argv[1]) == "--measure") return MeasureTable(std::atoi(argv[2]), argc - 3, argv + 3);
    const int rounds = argc > 1 ? std::max(1, std::atoi(argv[1])) : 7;
    const int turns = argc > 2 ? std::max(1, std::atoi(argv[2])) : 9;
    const ScratchFolder folder("table_bench");
    Furnish(folder.path);
    std::vector<Kind> kinds = {{"no log", "", {}},
                               {"three logs of 20 laps", "short1.zrk short2.zrk short3.zrk", {}},
                               {"one log of 8 hours", "long.zrk", {}}};
    for (int round = 0; round < rounds; round++)
        for (Kind& kind : kinds)
            if (!RunKind(folder.path, kind, turns)) return 1;
    PrintOpening("medians, ms", kinds, Median);
    PrintOpening("minima, ms", kinds, Smallest);
    return PrintSteps(kinds) ? 0 : 1;
}
