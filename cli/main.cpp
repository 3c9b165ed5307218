// The companion command line: the program's own code without its window.
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "cli/commands.h"
#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
// Paths are UTF-8 everywhere; the wide arguments are the only ones that carry every name. Output stays byte for byte.
#define MAIN wmain
using Argument = wchar_t*;
static void PrepareConsole() { _setmode(_fileno(stdout), _O_BINARY); }
#else
#define MAIN main
using Argument = char*;
static void PrepareConsole() {}
#endif

int MAIN(int count, Argument* arguments) {
    PrepareConsole();
    std::vector<std::string> words;
    for (int i = 1; i < count; i++) {
        const std::u8string word = std::filesystem::path(arguments[i]).u8string();
        words.emplace_back(word.begin(), word.end());
    }
    return RunCommandLine(words);
}
