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
    const char* text;  // not zero-terminated; 8 bytes can be read
    int length;        // 0 to csvFieldLimit
};

struct CsvLine {
    int fields = 0;                  // found, at most csvColumnLimit
    CsvField field[csvColumnLimit];
};

// A text and how far it has been read. Its bytes are sorted out in blocks of 64, one bit a byte.
struct CsvText {
    const char* bytes;  // `length` of them and 1024 zero bytes behind
    int length;
    int64_t cursor;     // start of the next line
    int64_t block;      // byte of bit 0
    uint64_t separators, ends;  // from the cursor on; ends are those that end a line, separators are all
};

// At the start of the text.
CsvText StartCsv(const uint8_t* bytes, int length);
// Reads the next line and splits it into at most `most` fields (0 to csvColumnLimit). False when there is none; the line
// then holds nothing of use.
bool ReadLine(CsvText& text, CsvLine& line, int most = csvColumnLimit);

// A field that the line lacks is empty. `column` is 0 or more, or negative for a field that no line has.
inline CsvField FieldAt(const CsvLine& line, int column) {
    return column >= 0 && column < line.fields ? line.field[column] : CsvField{"\0\0\0\0\0\0\0", 0};
}
