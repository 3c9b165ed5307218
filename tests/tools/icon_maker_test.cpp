#include "tools/icon_maker/icon_maker.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "tests/source_folder.h"

namespace {

std::string ReadFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

IconDrawing Parsed(const std::string& shapes) {
    IconDrawing drawing;
    std::string message;
    EXPECT_EQ(ParseIcon("<svg viewBox=\"0 0 4 4\">" + shapes + "</svg>", drawing, message), 0) << message;
    return drawing;
}

TEST(IconMaker, TheIconsOfTheProgramAreWhatItsSourcesGive) {
    int icons = 0;
    for (const auto& entry : std::filesystem::directory_iterator(SourceFolder() + "/resources/icons")) {
        if (entry.path().extension() != ".svg") continue;
        SCOPED_TRACE(entry.path().filename().string());
        IconDrawing drawing;
        std::string message;
        ASSERT_EQ(ParseIcon(ReadFile(entry.path()), drawing, message), 0) << message;
        EXPECT_TRUE(PackIcon(drawing) == ReadFile(std::filesystem::path(entry.path()).replace_extension(".ico")))
            << "run icon_maker resources/icons";
        ++icons;
    }
    EXPECT_EQ(icons, 15);
}

TEST(IconMaker, AFilledRectCoversItsPixelsAndLeavesTheOthersClear) {
    const auto pixels = DrawIcon(Parsed("<rect x=\"1\" y=\"1\" width=\"2\" height=\"1\" fill=\"#102030\"/>"), 4);
    for (int i = 0; i < 16; ++i) EXPECT_EQ(pixels[i], i == 5 || i == 6 ? 0xFF102030u : 0u) << i;
}

TEST(IconMaker, HalfAPixelIsHalfCovered) {
    const auto pixels = DrawIcon(Parsed("<rect x=\"0\" y=\"0\" width=\"0.5\" height=\"1\" fill=\"#ffffff\"/>"), 4);
    EXPECT_EQ(pixels[0], 0x80FFFFFFu);
}

TEST(IconMaker, ALineIsAsWideAsItsStrokeAndASecondOutlineCutsAHole) {
    const auto line = DrawIcon(Parsed("<line x1=\"-1\" y1=\"2\" x2=\"5\" y2=\"2\" stroke=\"#ff0000\" stroke-width=\"2\"/>"), 4);
    for (int i = 0; i < 16; ++i) EXPECT_EQ(line[i], i / 4 == 1 || i / 4 == 2 ? 0xFFFF0000u : 0u) << i;
    const auto ring = DrawIcon(Parsed("<path d=\"M0 0 H4 V4 H0 Z M1 1 H3 V3 H1 Z\" fill=\"#00ff00\"/>"), 4);
    EXPECT_EQ(ring[0], 0xFF00FF00u);
    EXPECT_EQ(ring[5], 0u);
}

TEST(IconMaker, AFileHoldsEachSizeWithItsMask) {
    const std::string bytes = PackIcon(Parsed("<rect x=\"0\" y=\"0\" width=\"4\" height=\"2\" fill=\"#000000\"/>"));
    EXPECT_EQ(bytes.substr(0, 6), std::string("\0\0\1\0\3\0", 6));
    size_t expected = 6;
    for (int size : iconSizes) expected += 16 + 40 + size * size * 4 + (size + 31) / 32 * 4 * size;
    EXPECT_EQ(bytes.size(), expected);
    // The mask of the first image, bottom row first: the lower half is clear.
    const size_t mask = 6 + 16 * 3 + 40 + 16 * 16 * 4;
    EXPECT_EQ(bytes.substr(mask, 4), std::string("\xFF\xFF\0\0", 4));
    EXPECT_EQ(bytes.substr(mask + 15 * 4, 4), std::string(4, '\0'));
}

TEST(IconMaker, WhatItCannotDrawIsRefused) {
    IconDrawing drawing;
    std::string message;
    EXPECT_EQ(ParseIcon("<svg><ellipse/></svg>", drawing, message), 1);
    EXPECT_EQ(message, "cannot draw <ellipse>");
    for (const char* source : {"", "<svg></svg>", "<svg><path d=\"L1 1\"/>", "<svg><path d=\"M0 0 A1\"/>", "<!-- ", "<"})
        EXPECT_EQ(ParseIcon(source, drawing, message), 1) << source;
}

}  // namespace
