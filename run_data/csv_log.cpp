#include "run_data/csv_log.h"

#include "platform/boxes.h"
#include "platform/dialogs.h"
#include "resources/resource.h"
#include "run_data/csv_columns.h"
#include "run_data/csv_import.h"
#include "run_data/run_store.h"

namespace {
struct FileAtHand { int slot; CsvText text; };
}
static const FileAtHand* fileAtHand;  // while the dialog is open

void OpenCsvImport(int slot, const uint8_t* buffer, int length) {
    const FileAtHand file = {slot, StartCsv(buffer, length)};
    CsvText text = file.text;
    CsvLine titles;
    const bool readable = ReadLine(text, titles);
    TakeCsvTitles(readable ? titles : CsvLine());
    if (!readable) {
        ShowBox("File Error.", "File Error!!");
        return ResetSlot(slot);
    }
    fileAtHand = &file;
    OpenDialog(dialogCsvImport);
    fileAtHand = nullptr;
}

void AcceptCsvImport(const CsvWindow& window) {
    if (fileAtHand) ImportCsv(fileAtHand->slot, fileAtHand->text, window);
}
