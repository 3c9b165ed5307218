// console.h -- where the command line writes, and what its exit status says.
#pragma once
#include <cstdio>
#include <string_view>

constexpr int exitDone     = 0;
constexpr int exitFailed   = 1;  // the operation failed; why is on consoleErr
constexpr int exitUnusable = 2;  // the arguments cannot be used; one line on consoleErr says what is accepted

extern FILE* consoleOut;  // standard output, or a test's file
extern FILE* consoleErr;  // standard error, or a test's file

// Writes text as it stands to consoleOut.
void Print(std::string_view text);
// One line `zrka_cli: ...` to consoleErr; they return exitFailed and exitUnusable.
int Fail(const char* format, ...) __attribute__((format(printf, 1, 2)));
int Refuse(const char* format, ...) __attribute__((format(printf, 1, 2)));
