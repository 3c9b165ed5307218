// A CSV text in memory to a filled slot: a million lines of twelve columns, 70 MB, without the derived steps and the pause.
// Floors: a copy of the text, and the same three passes in the plainest way with atof (plain_csv_import.h).
#include <cstdio>
#include <cstring>
#include <string>

#include "app/frame_loop.h"
#include "bench/plain_csv_import.h"
#include "bench/ratio.h"
#include "platform/headless/script.h"
#include "run_data/csv_columns.h"
#include "run_data/csv_import.h"
#include "run_data/run_store.h"
#include "tools/sample_log/bike.h"
#include "tools/sample_log/ride.h"

namespace {

constexpr int lineTotal = 1000000;  // the titles among them

// A ride at 200 Hz as a logger writes it: time, eleven channels; the twelfth column is the laps' or AUX2.
std::string MillionLines() {
    SampleLogOptions options;
    options.laps = 0;
    options.seconds = lineTotal / 200;
    std::string text = "Time,Ne,TH,VFW,VRW,FrSUS,RrSUS,LAF1,LAF2,VB,AUX1,LAP\n";
    int i = 0, lap = 1;
    bool marked = false;
    for (const BikeSample& bike : SimulateRide(options)) {
        if (i == lineTotal - 1) break;
        if (bike.mark && !marked) lap++;
        marked = bike.mark;
        char line[160];
        text.append(line, static_cast<size_t>(std::snprintf(
            line, sizeof line, "%.3f,%d,%.1f,%.1f,%.1f,%.2f,%.2f,%.2f,%.2f,%.2f,%.3f,%d\n", i++ * 0.005, bike.ne, bike.th * 0.1,
            bike.vfw * 0.1, bike.vrw * 0.1, bike.fsus * 0.01, bike.rsus * 0.01, bike.laf1 * 0.01, bike.laf2 * 0.01, bike.vb * 0.01,
            bike.aux1 * 0.01, lap)));
    }
    return text;
}

struct LongText {
    std::string bytes = MillionLines();
    int length = static_cast<int>(bytes.size());
    std::vector<char> copy;

    LongText() {
        bytes.append(1024, '\0');
        copy.assign(bytes.size(), 1);
        DefaultScript();
        LoadDefaults();
        std::memset(csvTitle, 0, sizeof csvTitle);
        csvTitles = 12;
        for (int row = 0; row < csvRows; row++) csvRow[row] = csvTitles;
        csvRow[rowTime] = fixedTimeBases;
        for (int row = rowNe; row <= rowAUX1; row++) csvRow[row] = row;
        csvRow[rowLap] = 11;
        lapByNumber = 1;
    }
    CsvText Text() const { return StartCsv(reinterpret_cast<const uint8_t*>(bytes.data()), length); }
};

// Without the derived steps.
void Import(const LongText& text) { FillFromCsv(0, text.Text(), {nullptr, nullptr}); }

void CheckImported(benchmark::State& state, const LongText& text) {
    state.counters["text_MB"] = text.length / 1e6;
    if (sampleCount[0] != lineTotal + 1 || lapCount[0] < 10 || timeFactor[0] != 1.0) state.SkipWithError("the text was not read whole");
}

void AgainstCopy(benchmark::State& state) {
    LongText text;
    Import(text);
    CompareToFloor(state, [] {}, [&] { std::memcpy(text.copy.data(), text.bytes.data(), text.bytes.size()); }, [&] { Import(text); });
    CheckImported(state, text);
}

void AgainstPlainPasses(benchmark::State& state) {
    LongText text;
    Import(text);
    const auto plain = [&] {
        static PlainCsv csv;
        PlainCsv asked;
        for (int row = rowTime; row <= rowAUX1; row++) asked.column[row] = row;
        asked.column[rowLap] = 11;
        asked.columns = 12;
        asked.byNumber = true;
        csv.lines = csv.auxMax[0] = csv.auxMax[1] = 0;
        csv.step = 0;
        std::copy(asked.column, asked.column + 16, csv.column);
        csv.columns = asked.columns;
        csv.byNumber = true;
        PlainImport(text.bytes.data(), text.length, csv);
        if (csv.ne[5000] != Ne[0][5000] || csv.lapDistance[900000] != lapDistance[0][900000]) state.SkipWithError("the passes differ");
    };
    CompareToFloor(state, [] {}, plain, [&] { Import(text); });
    CheckImported(state, text);
}

BENCHMARK(AgainstCopy)->Name("CsvImport/copy")->UseManualTime()->Iterations(9)->Unit(benchmark::kMillisecond);
BENCHMARK(AgainstPlainPasses)->Name("CsvImport/plain")->UseManualTime()->Iterations(7)->Unit(benchmark::kMillisecond);

}  // namespace
