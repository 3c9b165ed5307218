// main.cpp -- entry point of ZRKA.exe.
#include <windows.h>

#include "app/frame_loop.h"
#include "platform/win32/wide.h"

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) {
    // The run-time library has split the command line already; a path with blanks comes in quotes.
    return RunProgram(__argc > 1 ? Utf8(__wargv[1]).c_str() : nullptr);
}
