// csv_text.h -- lines and fields of a CSV text, found where they lie; nothing is copied.
//
// Line     ends at LF, CR or a zero byte; CR LF and LF CR are one end. A line that would begin with a zero byte is none:
//          there the text is over. So it is where csvLineLimit bytes come without an end.
// Field    what stands between separators, which are comma and double quote. Kept: a run of separators counts as one, so
//          that an empty field does not count and the fields behind it move to the left.
#pragma once
#include <cstddef>
#include <cstdint>

constexpr int csvLineLimit   = 2045;  // bytes; a line must be shorter
constexpr int csvFieldLimit  = 127;   // bytes of a field that count
constexpr int csvColumnLimit = 100;   // fields of a line that count

struct CsvField {
    const char* text;  // not zero-terminated; 9 bytes can be read
    int length;        // 0 to csvFieldLimit
};

struct CsvLine {
    int fields = 0;                  // found, at most csvColumnLimit
    CsvField field[csvColumnLimit];
};

// A text and how far it has been read.
struct CsvText {
    const char* bytes;  // `length` of them and 1024 zero bytes behind
    int length;
    int64_t cursor;     // start of the next line
};

inline bool EndsCsvLine(char c) { return c == '\n' || c == '\r' || c == 0; }
inline bool EndsCsvField(char c) { return c == ',' || c == '"' || EndsCsvLine(c); }
// Bytes of the line end that starts here, 1 or 2.
inline int CsvLineEndBytes(const char* end) {
    return (end[0] == '\r' && end[1] == '\n') || (end[0] == '\n' && end[1] == '\r') ? 2 : 1;
}

// At the start of the text.
CsvText StartCsv(const uint8_t* bytes, int length);
inline bool CsvLineBegins(const CsvText& text) { return text.cursor <= text.length && text.bytes[text.cursor] != 0; }
// Reads the next line and splits it into at most `most` fields (0 to csvColumnLimit). False when there is none; the line
// then holds nothing of use. One by one, for the titles: csv_block.h reads the many lines.
bool ReadLine(CsvText& text, CsvLine& line, int most = csvColumnLimit);
