// rest_panels.h -- the two panels that slide in when the view has come to rest: the summary of the run and the memo.
#pragma once
#include <cstdint>

#include "run_data/channels.h"

extern int32_t summaryFade, memoFade;  // 0 fully shown, 20 hidden

// Where the memo of File 1 and of File 2 is being typed.
struct MemoCursor {
    int32_t index;        // of the next byte in memoText
    int32_t row, column;  // column in cells; a double-byte character takes two
    int32_t x;            // pixels from the left edge of the text
};
extern MemoCursor memoCursor[2];

// Draws the summary's image; after every change of a log.
void DrawSummaryImage();
// Each frame.
void DrawSummaryPanel();
void DrawMemoPanel();
void DefaultRestPanels();
