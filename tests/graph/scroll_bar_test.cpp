#include "graph/scroll_bar.h"

#include "tests/graph/readouts_fixture.h"

namespace {

using ScrollBar = ReadOuts;

TEST_F(ScrollBar, TrackThumbAndOutlineGrowAndBrightenTogether) {
    cursorPos[0] = 150000;  // a quarter of the file
    const int centre = 256, half = 5 * (512 * 1024 / 6000);
    const struct { int grow, scheme, edgeMode, edgeAlpha; } rows[] = {{0, 0, 1, 152}, {32, 0, 1, 216}, {0, 1, 0, 255}, {31, 1, 0, 255}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.grow * 10 + row.scheme);
        mouseY = 768 - 24;  // not near enough
        scrollBarGrow = row.grow + 1;
        if (row.grow == 0) scrollBarGrow = 0;
        if (row.grow == 32) mouseY = 768 - 23;
        colortype = row.scheme;
        const int u = row.grow / 3;
        EXPECT_TRUE(Draws(Record(DrawScrollBar),
                          Blend(4, row.grow * 5 + 48) + Box(0, 768 - u - 13, 1024, 768, scrollTrackColor) + Blend(1, row.grow * 2 + 92) +
                              Box(centre - half, 768 - u - 11, centre + half, 768 - 3, scrollThumbColor) + Blend(row.edgeMode, row.edgeAlpha) +
                              Outline(centre - half - 1, 768 - u - 12, centre + half + 1, 768 - 2, scrollEdgeColor) + Blend(0, 255)));
        EXPECT_EQ(scrollBarGrow, row.grow);
    }
}

TEST_F(ScrollBar, GrowsByTwoUpToItsFullSize) {
    mouseY = 768 - 23;
    scrollBarGrow = 31;
    DrawScrollBar();
    EXPECT_EQ(scrollBarGrow, 32);
    DrawScrollBar();
    EXPECT_EQ(scrollBarGrow, 32);
}

TEST_F(ScrollBar, TheThumbShowsWhatLiesLeftOfTheCursorLine) {
    BaseLinePos = -256;
    timeScale = 20.0;
    const int half = 20 * (256 * 1024 / 6000);
    EXPECT_TRUE(Draws(Record(DrawScrollBar), Box(-half, 757, half, 765, scrollThumbColor)));
}

TEST_F(ScrollBar, AThumbOfAVeryShortLogIsHeld) {
    sampleCount[0] = 1;
    timeScale = 200.0;
    EXPECT_TRUE(Draws(Record(DrawScrollBar), Box(-65536, 757, 65536, 765, scrollThumbColor)));
}

}  // namespace
