#include "run_data/csv_log.h"

#include "platform/boxes.h"

int ReadCsvLog(int, const uint8_t*, int) {
    ShowBox("Not support File Type", "File Error");
    return 1;
}
