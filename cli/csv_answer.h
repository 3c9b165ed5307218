// csv_answer.h -- who answers the selection dialog of a CSV log where there is no screen: its own preselection, and what the
// command line changes in it.
#pragma once
#include "cli/arguments.h"

// The options --csv-row and --csv-lap, for the commands that take them.
constexpr const char* csvRowOption = "--csv-row";
constexpr const char* csvLapOption = "--csv-lap";

// Takes the options of an invocation, for all CSV logs until the next call. exitDone or exitUnusable.
int TakeCsvOptions(const Invocation& invocation);
// Presses OK in the dialog that is open. Nobody reads its notes, so the pause for them takes no time.
void AnswerCsvDialog();
