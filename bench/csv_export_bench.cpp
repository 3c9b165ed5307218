// A million rows of all columns as a text table. The peer writes the same rows with snprintf and fwrite.
#include <unistd.h>

#include <cstdio>
#include <filesystem>

#include "analysis/csv_rows.h"
#include "app/frame_loop.h"
#include "bench/ratio.h"
#include "settings/settings.h"
#include "tests/analysis/csv_reference.h"
#include "tests/analysis/random_log.h"

namespace {

constexpr int rows = 1000000;

struct Folder {
    std::filesystem::path path = std::filesystem::temp_directory_path() / ("zrka_csv_export_bench_" + std::to_string(getpid()));
    Folder() { std::filesystem::create_directories(path); }
    ~Folder() { std::filesystem::remove_all(path); }
    std::string File(const char* name) const { return (path / name).string(); }
};

// Believable numbers of digits in all channels, and a mark every 20000 samples.
void FillLog() {
    LoadDefaults();
    std::vector<uint32_t> marks;
    for (uint32_t mark = 20000; mark < rows; mark += 20000) marks.push_back(mark);
    MakeRandomLog(0, rows + 2, marks);
    for (int i = 0; i < rows + 2; i++) {
        TH[0][i] = i % 1001;
        VB[0][i] = static_cast<uint16_t>(1200 + i % 97);
    }
    ExpertMode = 2;
    for (const CsvColumn& column : csvColumns) *column.on = 1;
}

void WriteOurs(const std::string& path) {
    CsvFile csv;
    BeginCsv(csv, path.c_str(), 1, {});
    WriteCsvRows(csv, 1, rows, false);
    FinishCsv(csv);
}

void WritePlain(const std::string& path) {
    FILE* file = std::fopen(path.c_str(), "wb");
    int counter = 0, lap = 0;
    WriteReferenceRows([file](const char* text, size_t length) { std::fwrite(text, 1, length, file); }, 1, rows, 1, counter, lap);
    std::fclose(file);
}

// ratio is the export's time in that of the plain version. Part of the export's are the flush to the disk and the rename,
// which the plain version does without.
void CsvExport(benchmark::State& state) {
    const Folder folder;
    FillLog();
    CompareToFloor(state, [] {}, [&] { WritePlain(folder.File("plain.csv")); }, [&] { WriteOurs(folder.File("ours.csv")); });
    state.counters["bytes"] = static_cast<double>(std::filesystem::file_size(folder.File("ours.csv")));
}
BENCHMARK(CsvExport)->UseManualTime()->Iterations(5)->Unit(benchmark::kMillisecond);

}  // namespace
