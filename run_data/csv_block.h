// csv_block.h -- the lines of a CSV text, some at a time, and where their fields are.
//
// Lines and fields are those of csv_text.h. With SSE2 the separators of a piece of the text are found and noted down first,
// without a branch that depends on the text; lines without an empty field are then put together eight fields at a time.
#pragma once
#include "run_data/csv_text.h"

constexpr int csvBlockLines   = 128;
constexpr int csvPieceBytes   = 4096;                          // more than a line may have
constexpr int csvPlacesAtOnce = 8;
constexpr int csvSpans        = (csvColumnLimit + csvPlacesAtOnce - 1) / csvPlacesAtOnce * csvPlacesAtOnce;

// The separators of a piece of the text, and those that end lines: bytes from the piece's start, in rising order. Some of
// them stand up to 64 bytes behind the piece; what the lists hold behind their ends is of no use.
struct CsvPiece {
    int64_t start;           // in the text
    int next, nextEnd;       // indices of the next line's first separator and of its end
    int placesEnd, endsEnd;  // behind the last ones
    int perLine;             // separators of the last line, its end included
    uint16_t place[csvPlacesAtOnce + csvPieceBytes + 2 * 64];  // from csvPlacesAtOnce on
    uint16_t end[csvPieceBytes + 2 * 64];
};

// A field: bytes from the start of its line.
struct CsvSpan {
    uint16_t end;
    uint16_t length;  // 0 to csvFieldLimit; 0 for a field that the line lacks
};

struct CsvBlock {
    CsvText text;  // the cursor stands behind the lines at hand
    int columns;   // fields of a line that are of use, 0 to csvColumnLimit
    CsvPiece piece;

    // The lines at hand.
    int lines;
    int64_t start[csvBlockLines + 1];        // of each line, and of the next one: bytes from the start of the text
    int step;                                // spans of a line, at least `columns`
    CsvSpan span[csvBlockLines * csvSpans];
};

// To read the text from its cursor on.
void StartBlocks(CsvBlock& block, const CsvText& text, int columns);
// Takes up to `wanted` lines in hand, at most csvBlockLines: fewer only where the text is over. The same without vectors, line
// by line.
void ReadBlock(CsvBlock& block, int wanted);
void ReadBlockPlain(CsvBlock& block, int wanted);

inline CsvField FieldOf(const CsvBlock& block, int line, int column) {
    const CsvSpan span = block.span[line * block.step + column];
    return {block.text.bytes + block.start[line] + span.end - span.length, span.length};
}
