#include "graph/color_scheme.h"

#include "tests/program_fixture.h"

namespace {

struct ColorScheme : ProgramTest {};

TEST_F(ColorScheme, StartsDarkWhateverTheSettingSays) {
    colortype = 7;
    DefaultColorScheme();
    EXPECT_EQ(backColor, MakeColor(0, 0, 0));
    EXPECT_EQ(cursorColor, MakeColor(255, 255, 255));
    EXPECT_EQ(colortype, 7);
}

TEST_F(ColorScheme, RolesFollowTheScheme) {
    struct Role {
        const char* name;
        const Color* color;
        Color dark, light;
    };
    const Role roles[] = {
        {"backColor", &backColor, MakeColor(0, 0, 0), MakeColor(255, 255, 255)},
        {"panelBackColor", &panelBackColor, MakeColor(0, 0, 0), MakeColor(0, 0, 0)},
        {"cursorColor", &cursorColor, MakeColor(255, 255, 255), MakeColor(0, 0, 0)},
        {"gridMajorColor", &gridMajorColor, MakeColor(0, 0, 200), MakeColor(64, 64, 64)},
        {"gridMinorColor", &gridMinorColor, MakeColor(0, 0, 92), MakeColor(190, 190, 190)},
        {"lapHoverColor", &lapHoverColor, MakeColor(0, 0, 255), MakeColor(0, 0, 255)},
        {"lapBarColor[0]", &lapBarColor[0], MakeColor(0, 255, 0), MakeColor(0, 0, 255)},
        {"lapBarColor[1]", &lapBarColor[1], MakeColor(255, 0, 0), MakeColor(255, 0, 0)},
        {"lapBarColor[2]", &lapBarColor[2], MakeColor(255, 255, 255), MakeColor(255, 255, 255)},
        {"scrollTrackColor", &scrollTrackColor, MakeColor(128, 128, 128), MakeColor(128, 128, 128)},
        {"scrollThumbColor", &scrollThumbColor, MakeColor(128, 128, 32), MakeColor(92, 92, 255)},
        {"scrollEdgeColor", &scrollEdgeColor, MakeColor(255, 255, 64), MakeColor(0, 0, 128)},
        {"debugColor[0]", &debugColor[0], MakeColor(200, 255, 200), MakeColor(128, 128, 255)},
        {"debugColor[1]", &debugColor[1], MakeColor(200, 255, 235), MakeColor(128, 200, 255)},
        {"debugColor[2]", &debugColor[2], MakeColor(255, 200, 235), MakeColor(255, 128, 200)},
        {"fileTextColor[0]", &fileTextColor[0], MakeColor(200, 255, 200), MakeColor(20, 20, 128)},
        {"fileTextColor[1]", &fileTextColor[1], MakeColor(255, 200, 200), MakeColor(128, 20, 20)},
        {"fileTextColor[2]", &fileTextColor[2], MakeColor(200, 200, 200), MakeColor(64, 64, 64)},
        {"lapTextColor[0]", &lapTextColor[0], MakeColor(180, 255, 180), MakeColor(180, 180, 255)},
        {"lapTextColor[1]", &lapTextColor[1], MakeColor(255, 200, 200), MakeColor(255, 200, 200)},
        {"lapTextColor[2]", &lapTextColor[2], MakeColor(200, 200, 200), MakeColor(200, 200, 200)},
        {"lapLineColor[0]", &lapLineColor[0], MakeColor(0, 200, 0), MakeColor(0, 0, 200)},
        {"lapLineColor[1]", &lapLineColor[1], MakeColor(210, 0, 0), MakeColor(200, 0, 0)},
        {"lapLineColor[2]", &lapLineColor[2], MakeColor(210, 210, 210), MakeColor(120, 120, 120)},
        {"panelMask[0]", &panelMask[0], MakeColor(128, 128, 128), MakeColor(192, 192, 192)},
        {"panelMask[2]", &panelMask[2], MakeColor(192, 192, 192), MakeColor(192, 192, 192)},
        {"tagMask[0]", &tagMask[0], MakeColor(192, 192, 192), MakeColor(16, 16, 16)},
        {"tagMask[1]", &tagMask[1], MakeColor(192, 192, 192), MakeColor(64, 64, 64)},
        {"whiteColor", &whiteColor, MakeColor(255, 255, 255), MakeColor(255, 255, 255)},
    };
    for (int scheme : {0, 1}) {
        colortype = scheme;
        BuildColors();
        for (const Role& role : roles) {
            SCOPED_TRACE(std::string(role.name) + (scheme ? " light" : " dark"));
            EXPECT_EQ(*role.color, scheme ? role.light : role.dark);
        }
    }
}

TEST_F(ColorScheme, AnotherColortypeLeavesTheColours) {
    colortype = 1;
    BuildColors();
    colortype = 2;
    colorCurrent[chNe] = 2;
    BuildColors();
    EXPECT_EQ(backColor, MakeColor(255, 255, 255));
    EXPECT_EQ(channelColor[chNe][0], MakeColor(0, 0, 255));
}

TEST_F(ColorScheme, IndicesAboveSevenAndBelowZeroGiveTheLastPaletteRow) {
    BuildColors();
    EXPECT_EQ(PaletteColor(7), MakeColor(140, 140, 140));
    for (int index : {8, 9, 1000, -1}) EXPECT_EQ(PaletteColor(index), MakeColor(255, 255, 255)) << index;
    colortype = 1;
    BuildColors();
    EXPECT_EQ(PaletteColor(0), MakeColor(0, 0, 255));
    EXPECT_EQ(PaletteColor(5), MakeColor(128, 128, 0));
    EXPECT_EQ(PaletteColor(7), MakeColor(100, 100, 100));
    EXPECT_EQ(PaletteColor(8), MakeColor(10, 10, 10));
}

TEST_F(ColorScheme, ChannelColoursComeFromTheRowOfEachFile) {
    colorCurrent[chVB] = 4;
    Color_Red[chVB] = 5;
    Color_White[chVB] = 6;
    BuildColors();
    EXPECT_EQ(channelColor[chVB][0], MakeColor(192, 168, 0));
    EXPECT_EQ(channelColor[chVB][1], MakeColor(192, 255, 0));
    EXPECT_EQ(channelColor[chVB][2], MakeColor(0, 150, 0));
}

TEST_F(ColorScheme, ALoneFile1WearsItsOwnColoursUntilFile2IsLoaded) {
    colorStored[0][chNe] = 0;
    colorStored[1][chNe] = 3;
    ExclusiveF1Color = 1;
    ExpertMode = 2;
    ApplyColorSet(0);
    EXPECT_EQ(channelColor[chNe][0], MakeColor(255, 0, 192));
    slotInUse[1] = 1;
    ApplyColorSet(0);
    EXPECT_EQ(channelColor[chNe][0], MakeColor(0, 255, 0));
}

TEST_F(ColorScheme, TheLoneRowNeedsEveryCondition) {
    struct Case { const char* missing; int exclusive, expert, file2, file3, force; };
    const Case cases[] = {{"the setting", 0, 2, 0, 0, 0}, {"the level", 1, 1, 0, 0, 0}, {"File 2 away", 1, 2, 1, 0, 0},
                          {"File 3 away", 1, 2, 0, 1, 0}, {"no force", 1, 2, 0, 0, 1}};
    colorStored[0][chNe] = 0;
    colorStored[1][chNe] = 3;
    for (const Case& c : cases) {
        SCOPED_TRACE(c.missing);
        ExclusiveF1Color = c.exclusive;
        ExpertMode = c.expert;
        slotInUse[1] = c.file2;
        slotInUse[2] = c.file3;
        ApplyColorSet(c.force);
        EXPECT_EQ(channelColor[chNe][0], MakeColor(0, 255, 0));
    }
}

TEST_F(ColorScheme, RampsRunAsTheirFormulas) {
    BuildColors();
    BuildColorRamp();
    EXPECT_EQ(speedRamp[0], MakeColor(255, 0, 0));
    EXPECT_EQ(speedRamp[13], MakeColor(255 - 255 * 13 / 40, 255 * 13 / 40, 0));
    EXPECT_EQ(coolRamp[0], MakeColor(0, 255, 0));
    EXPECT_EQ(coolRamp[40], MakeColor(0, 0, 255));
    EXPECT_EQ(ColorRamp[0], MakeColor(64, 64, 64)) << "would be 0, 0, 255";
    EXPECT_EQ(ColorRamp[1], MakeColor(0, 6, 255));
    EXPECT_EQ(ColorRamp[64], MakeColor(0, 255, 255));
    EXPECT_EQ(ColorRamp[64 + 21], MakeColor(0, 255, 255 - 127));
    EXPECT_EQ(ColorRamp[128], MakeColor(0, 255, 0));
    EXPECT_EQ(ColorRamp[192], MakeColor(255, 255, 0));
    EXPECT_EQ(ColorRamp[255], MakeColor(255, 1, 0));
}

TEST_F(ColorScheme, TransparentColourIsTheBackground) {
    colortype = 0;
    EXPECT_TRUE(Contains(Recorded(BuildColors), "SetTransparentColor 0 0 0"));
    colortype = 1;
    EXPECT_TRUE(Contains(Recorded(BuildColors), "SetTransparentColor 255 255 255"));
}

}  // namespace
