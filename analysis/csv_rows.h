// csv_rows.h -- the text table of an export: its columns, and the rows of a stretch of File 1.
//
// Layout   a header line, then a line per exported sample. Fields have commas between, lines end with CR LF. The first field
//          is always the time; then those of csvColumns that are on, in their order. This is not the form that csv_log reads.
//   FIELD       HEADER     TEXT    VALUE
//   time        Time       %.3f    s: number of samples written or skipped before x 0.005
//   Distance    Distance   %d      m since the stretch's first sample, along the CoursePosSource wheel
//   Lap         LAP        %d      marks passed within what was exported, from 0
//   Ne          Ne         %d      rpm as logged, without neFactor
//   TH          TH         %d      %, cut
//   VFW, VRW    VFW, VRW   %.1f    km/h
//   FrSUS       FRSUS      %d      mm, cut
//   RrSUS       RRSUS      %d
//   LAF1, LAF2  LAF1, LAF2 %.1f    stored count x 0.01
//   VB          VB         %.1f    V
//   AUX1, AUX2  AUX1, AUX2 %.1f    stored count x 0.01, without auxDivider
//   SlipRatio   Slip       %.1f    0.1 %; these three with ExpertMode 2 only
//   FrSusSpeed  vFSus      %d      mm/s
//   RrSusSpeed  vRSus      %d
#pragma once
#include <cstdint>
#include <memory>
#include <vector>

#include "platform/files.h"

struct CsvRow {
    int sample, first;  // first: of the stretch
    int counter;        // samples gone through since the file's start
    int lapNumber;
};
struct CsvColumn {
    const char *caption, *header;
    int* on;          // 0 or 1: the flag that shows the channel of File 1 on the graph, but for Distance and Lap
    bool expertOnly;
    char* (*put)(char* to, const CsvRow& row);
};
constexpr int csvColumnTotal = 16;
extern const CsvColumn csvColumns[csvColumnTotal];
extern int csvDistanceOn, csvLapOn;

// What a dialog shows while rows are written; without functions nothing.
struct CsvProgress {
    void* window = nullptr;
    void (*range)(void* window, int low, int high) = nullptr;
    void (*position)(void* window, int at) = nullptr;
};

// A file that is being written.
struct CsvFile {
    FileReplacement file;
    CsvProgress progress;
    int step = 1;           // every step-th sample is written
    bool failed = false;    // a write failed: nothing more is written
    int counter = 0, lapNumber = 0;
    int64_t served = INT64_MIN / 2;  // SteadyMs at which window messages were last served
    std::vector<uint32_t> marks;     // rising
    std::vector<const CsvColumn*> columns;
    std::unique_ptr<char[]> buffer;
    size_t used = 0;
};

// 0 done, and the header line is on its way; 1: the file cannot be made.
int BeginCsv(CsvFile& csv, const char* path, int step, const CsvProgress& progress);
// The samples from first to last of File 1. Kept: the last sample of the log is never written. Window messages are served
// every 50 ms; with showsSample the progress goes to the sample at hand.
void WriteCsvRows(CsvFile& csv, int64_t first, int64_t last, bool showsSample);
// Puts the file in place. 0 done; 1: something could not be written, and what stood there before stands.
int FinishCsv(CsvFile& csv);
