#include "run_data/secondary_log.h"

#include "platform/boxes.h"

int ReadSecondaryLog(int, const uint8_t*, int) {
    ShowBox("Not support File Type", "File Error");
    return 1;
}
