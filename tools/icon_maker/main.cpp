// icon_maker FOLDER   draws every NAME.svg of the folder into NAME.ico beside it.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "tools/icon_maker/icon_maker.h"

namespace fs = std::filesystem;

static int MakeIcon(const fs::path& svg) {
    std::ifstream file(svg, std::ios::binary);
    const std::string source{std::istreambuf_iterator<char>(file), {}};
    IconDrawing drawing;
    std::string message;
    if (ParseIcon(source, drawing, message) != 0) {
        std::fprintf(stderr, "icon_maker: %s: %s\n", svg.string().c_str(), message.c_str());
        return 1;
    }
    const std::string bytes = PackIcon(drawing);
    std::ofstream out(fs::path(svg).replace_extension(".ico"), std::ios::binary);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return out.flush() ? 0 : 1;
}

int main(int argc, char** argv) {
    std::error_code error;
    if (argc != 2 || !fs::is_directory(argv[1], error)) {
        std::fprintf(stderr, "usage: icon_maker FOLDER   draws every NAME.svg there into NAME.ico\n");
        return 2;
    }
    int failures = 0;
    for (const auto& entry : fs::directory_iterator(argv[1]))
        if (entry.path().extension() == ".svg") failures += MakeIcon(entry.path());
    return failures ? 1 : 0;
}
