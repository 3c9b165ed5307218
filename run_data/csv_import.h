// csv_import.h -- brings a CSV text into a slot: three passes over it, of which the dialog shows the progress.
//
// Passes   measure (csv_measure.h), values, distances. The text is read again instead of being kept in rows, and memory is
//          sized once.
// Samples  sample 1 is the first line behind the titles. Kept: the last line counts twice.
// Values   a field x 10 (TH, VFW, VRW) or x 100, truncated as computed in double (csv_number.h), then kept to the width of
//          the array. Ne is the integer that its field begins with. auxDivider makes large AUX values fit.
#pragma once
#include "run_data/csv_text.h"
#include "run_data/csv_window.h"

// The three passes, as csvRow and lapByNumber tell; serves messages now and then. 0 done; 1 after the user was told what is
// wrong, and the caller resets the slot.
int FillFromCsv(int slot, CsvText text, const CsvWindow& window);
// The whole import: the passes, a pause so that the notes can be read, the derived channels. A failure resets the slot.
void ImportCsv(int slot, CsvText text, const CsvWindow& window);
