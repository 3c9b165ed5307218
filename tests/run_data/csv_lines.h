// csv_lines.h -- CSV texts with the margin that their readers are promised, and their lines as the plain reader finds them.
#pragma once
#include <cstdint>
#include <string>
#include <vector>

#include "bench/plain_csv_import.h"
#include "run_data/csv_text.h"

using CsvLines = std::vector<std::vector<std::string>>;

// The text with exactly the margin that is promised behind it.
struct PaddedCsv {
    std::vector<uint8_t> bytes;
    int length;
    explicit PaddedCsv(const std::string& text) : bytes(text.begin(), text.end()), length(static_cast<int>(text.size())) {
        bytes.resize(text.size() + 1024, 0);
        bytes.shrink_to_fit();
    }
    CsvText Start() const { return StartCsv(bytes.data(), length); }
};

inline CsvLines PlainCsvLines(const std::string& bytes, int most = csvColumnLimit) {
    const PaddedCsv padded(bytes);
    PlainCsvReader reader{reinterpret_cast<const char*>(padded.bytes.data()), padded.length};
    CsvLines lines;
    while (reader.ReadLine()) {
        const int fields = reader.Split(most);
        lines.emplace_back(reader.field, reader.field + fields);
    }
    return lines;
}
