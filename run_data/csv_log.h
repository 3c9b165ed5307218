// csv_log.h -- opens CSV logs: titles, then dialog 1027, which starts the import.
//
// Input    any bytes: comma separated text, the first line holds the column titles. csv_text.h has its lines and fields,
//          csv_number.h its numbers, csv_columns.h which column is which channel, csv_import.h what becomes of them.
#pragma once
#include <cstdint>

#include "run_data/csv_window.h"

// Asks for the columns of the file in `buffer` (`length` bytes, and at least 1024 zero bytes behind them) and imports it into
// the slot, lap table and derived channels included. A failure has been shown to the user and leaves the slot reset; a
// dialog that was closed without OK leaves it as it was.
void OpenCsvImport(int slot, const uint8_t* buffer, int length);
// The dialog's OK: imports the file that OpenCsvImport asks for, with the selection as it is.
void AcceptCsvImport(const CsvWindow& window);
