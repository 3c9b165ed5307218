// plain_csv_import.h -- the three passes over a CSV text in the plainest way: every line and every field copied, every number
// through atof. What the import is timed against, and what its results are compared with in tests.
#pragma once
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

// atof as the language has it: the older C library of Windows knows neither hexadecimal numbers nor "inf".
inline double StandardAtof(const char* text) {
#ifdef __MINGW32__
    return __mingw_strtod(text, nullptr);
#else
    return std::atof(text);
#endif
}

struct PlainCsv {
    // What is asked for: the column of each row of the dialog, -1 for none, and what the lap column holds.
    int column[16] = {-1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1};
    int columns = 0;
    bool byNumber = false;

    // What was found.
    int lines = 0;
    int64_t step = 0;
    bool irregular = false;
    int auxMax[2] = {0, 0}, auxDivider[2] = {1, 1};
    std::vector<uint16_t> ne, vfw, vrw, vb;
    std::vector<int16_t> fsus, rsus;
    std::vector<int32_t> th, laf1, laf2, aux1, aux2;
    std::vector<uint32_t> lapDistance, distFront, distRear, lapStart, lapLength;
};

struct PlainCsvReader {
    const char* bytes;
    int length;
    int cursor = 0;
    char line[2048] = "";
    char field[100][128] = {};

    bool ReadLine() {
        if (bytes[cursor] == 0) return false;
        for (int i = 0; i < 2045; i++) {
            if (cursor > length) {
                cursor = 0;
                return false;
            }
            const char c = bytes[cursor++];
            line[i] = c;
            if (c != 0 && c != '\n' && c != '\r') continue;
            line[i] = 0;
            if ((c == '\n' && bytes[cursor] == '\r') || (c == '\r' && bytes[cursor] == '\n')) cursor++;
            return true;
        }
        return false;
    }
    // Fields that the line lacks are empty.
    int Split(int most) {
        int fields = 0;
        for (int k = 0; k < most; k++) field[k][0] = 0;
        const char* at = line;
        while (fields < most) {
            while (*at == ',' || *at == '"') at++;
            if (*at == 0) break;
            int i = 0;
            for (; *at != 0 && *at != ',' && *at != '"'; at++)
                if (i < 127) field[fields][i++] = *at;
            field[fields++][i] = 0;
        }
        return fields;
    }
    const char* Field(int column) const { return column < 0 ? "" : field[column]; }
};

inline int PlainCut(double value) {
    if (!(value == value)) return 0;
    return value >= 2147483647.0 ? 2147483647 : value <= -2147483648.0 ? -2147483647 - 1 : static_cast<int>(value);
}

inline void PlainMeasure(const char* bytes, int length, PlainCsv& csv) {
    PlainCsvReader reader{bytes, length};
    int64_t before = 0;
    while (reader.ReadLine()) {
        reader.Split(csv.columns);
        if (csv.column[0] >= 0) {
            const double seconds = std::clamp(StandardAtof(reader.Field(csv.column[0])), -2e6, 2e6);
            const int64_t time = int64_t{PlainCut(seconds * 1000 + (seconds < 0 ? -1e-6 : 1e-6))} * 100, step = time - before;
            if (step > 0) {
                if (step != csv.step && csv.step != 0 && csv.lines > 5) csv.irregular = true;
                csv.step = step;
            }
            before = time;
        }
        for (int k = 0; k < 2; k++)
            csv.auxMax[k] = std::max(csv.auxMax[k], PlainCut(StandardAtof(reader.Field(csv.column[10 + k])) * 100));
        csv.lines++;
    }
    for (int k = 0; k < 2; k++) csv.auxDivider[k] = csv.auxMax[k] > 327670 ? 100 : csv.auxMax[k] <= 32767 ? 1 : 10;
}

inline void PlainMakeRoom(PlainCsv& csv) {
    const auto clear = [&](auto& array) { array.assign(csv.lines + 32, 0); };
    clear(csv.ne), clear(csv.vfw), clear(csv.vrw), clear(csv.vb), clear(csv.fsus), clear(csv.rsus), clear(csv.th);
    clear(csv.laf1), clear(csv.laf2), clear(csv.aux1), clear(csv.aux2);
    clear(csv.lapDistance), clear(csv.distFront), clear(csv.distRear);
}

inline void PlainValues(const char* bytes, int length, PlainCsv& csv) {
    PlainCsvReader reader{bytes, length};
    reader.ReadLine();
    const auto cut = [&](int row, double scale) { return PlainCut(StandardAtof(reader.Field(csv.column[row])) * scale); };
    csv.lapStart.assign(1, 0);
    int lapBefore = 0;
    for (int i = 1; i <= csv.lines; i++) {
        if (i < csv.lines) reader.ReadLine();
        reader.Split(csv.columns);
        csv.ne[i] = static_cast<uint16_t>(std::atoi(reader.Field(csv.column[1])));
        csv.th[i] = cut(2, 10);
        csv.vfw[i] = static_cast<uint16_t>(cut(3, 10));
        csv.vrw[i] = static_cast<uint16_t>(cut(4, 10));
        csv.fsus[i] = static_cast<int16_t>(cut(5, 100));
        csv.rsus[i] = static_cast<int16_t>(cut(6, 100));
        csv.laf1[i] = cut(7, 100);
        csv.laf2[i] = cut(8, 100);
        csv.vb[i] = static_cast<uint16_t>(cut(9, 100));
        csv.aux1[i] = PlainCut(StandardAtof(reader.Field(csv.column[10])) * 100 / csv.auxDivider[0]);
        csv.aux2[i] = PlainCut(StandardAtof(reader.Field(csv.column[11])) * 100 / csv.auxDivider[1]);
        const int lap = cut(12, 1);
        if (i == 1) lapBefore = lap;
        const bool mark = csv.byNumber ? lap != lapBefore : lapBefore > 0 && lap == 0;
        if (mark && csv.lapStart.size() < 510) csv.lapStart.push_back(static_cast<uint32_t>(i));
        lapBefore = lap;
    }
    csv.lapStart.push_back(static_cast<uint32_t>(csv.lines + 1));
}

inline void PlainDistances(PlainCsv& csv) {
    csv.lapLength.assign(csv.lapStart.size(), 0);
    size_t mark = 1;
    for (int j = 1; j <= csv.lines + 1; j++) {
        if (csv.column[3] >= 0) {
            csv.lapDistance[j] = csv.lapDistance[j - 1] + csv.vfw[j - 1];
            csv.distFront[j] = csv.distFront[j - 1] + csv.vfw[j - 1];
        } else if (csv.column[4] >= 0) {
            csv.lapDistance[j] = csv.lapDistance[j - 1] + csv.vrw[j - 1];
        }
        if (csv.column[4] >= 0) csv.distRear[j] = csv.distRear[j - 1] + csv.vrw[j - 1];
        if (mark < csv.lapStart.size() && csv.lapStart[mark] == static_cast<uint32_t>(j)) {
            csv.lapLength[mark++] = csv.lapDistance[j];
            csv.lapDistance[j] = 0;
        }
    }
}

// The text has 1024 zero bytes behind its end.
inline void PlainImport(const char* bytes, int length, PlainCsv& csv) {
    PlainMeasure(bytes, length, csv);
    PlainMakeRoom(csv);
    PlainValues(bytes, length, csv);
    PlainDistances(csv);
}
