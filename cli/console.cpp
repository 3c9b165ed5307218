#include "cli/console.h"

#include <cstdarg>

FILE* consoleOut = stdout;
FILE* consoleErr = stderr;

void Print(std::string_view text) { fwrite(text.data(), 1, text.size(), consoleOut); }

static void Complain(const char* format, va_list arguments) {
    fputs("zrka_cli: ", consoleErr);
    vfprintf(consoleErr, format, arguments);
    fputc('\n', consoleErr);
}

int Fail(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    Complain(format, arguments);
    va_end(arguments);
    return exitFailed;
}

int Refuse(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    Complain(format, arguments);
    va_end(arguments);
    return exitUnusable;
}
