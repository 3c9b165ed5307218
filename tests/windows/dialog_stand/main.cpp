// The whole program, which opens one of its modal dialogs as soon as it stands, and ends as usual when that is closed.
// For the tests of dialogs whose way through other dialogs is long.    dialog_stand ID [ARGUMENT [LOG]]
#include <windows.h>

#include <cstdlib>

#include "app/frame_loop.h"
#include "platform/dialogs.h"
#include "platform/win32/wide.h"

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) {
    const auto number = [](int i) { return __argc > i ? std::atoi(Utf8(__wargv[i]).c_str()) : 0; };
    if (StartProgram(__argc > 3 ? Utf8(__wargv[3]).c_str() : nullptr) != 0) return 1;
    OpenDialog(number(1), number(2));
    ShutDownProgram();
    return 0;
}
