#include "run_data/csv_text.h"

#include <algorithm>

CsvText StartCsv(const uint8_t* bytes, int length) { return {reinterpret_cast<const char*>(bytes), length, 0}; }

bool ReadLine(CsvText& text, CsvLine& line, int most) {
    if (!CsvLineBegins(text)) {
        if (text.cursor > text.length) text.cursor = 0;
        return false;
    }
    const char *const start = text.bytes + text.cursor, *begin = start, *at = start;
    line.fields = 0;
    for (;; at++) {
        if (at - start >= csvLineLimit) return false;
        if (!EndsCsvField(*at)) continue;
        if (at > begin && line.fields < most)
            line.field[line.fields++] = {begin, static_cast<int>(std::min<int64_t>(at - begin, csvFieldLimit))};
        begin = at + 1;
        if (EndsCsvLine(*at)) break;
    }
    text.cursor = at - text.bytes + CsvLineEndBytes(at);
    return true;
}
