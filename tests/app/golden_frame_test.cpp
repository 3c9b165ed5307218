// Whole frames of two made-up logs: their pixels as checksums, their operations as texts beside this file.
// ZRKA_UPDATE_GOLDEN=1 writes the texts anew and prints the checksums; look at the pictures before keeping them.
#include <cstdlib>

#include "draw/surface.h"
#include "graph/color_scheme.h"
#include "graph/grid.h"
#include "tests/program_fixture.h"
#include "tests/source_folder.h"

namespace {

bool Updating() { return std::getenv("ZRKA_UPDATE_GOLDEN") != nullptr; }

// A wave of whole numbers: up for half of a period, then down.
int Wave(int i, int period, int low, int high) {
    const int at = i % period, half = period / 2;
    return low + (high - low) * (at < half ? at : period - at) / half;
}
// A jitter that looks random and is the same everywhere.
int Jitter(int i, int seed, int size) { return static_cast<int>((i * 2654435761u + seed * 40503u) >> 16) % (2 * size + 1) - size; }

void MakeLog(int slot, int samples) {
    FillSlot(slot, samples);
    for (int i = 1; i < samples; i++) {
        const int at = i + slot * 37;
        Ne[slot][i] = static_cast<uint16_t>(Wave(at, 700, 5200, 14500) + Jitter(i, slot, 60));
        TH[slot][i] = Wave(at, 350, 0, 1000);
        VFW[slot][i] = static_cast<uint16_t>(Wave(at, 1400, 600, 2600) + Jitter(i, slot + 1, 8));
        VRW[slot][i] = static_cast<uint16_t>(VFW[slot][i] + 30 + Jitter(i, slot + 2, 25));
        FSUS[slot][i] = static_cast<int16_t>(Wave(at, 500, 1500, 9000) + Jitter(i, slot + 3, 500));
        RSUS[slot][i] = static_cast<int16_t>(Wave(at, 430, 300, 3200) + Jitter(i, slot + 4, 200));
        LAF1[slot][i] = 1250 + Jitter(i, slot + 5, 40);
        LAF2[slot][i] = 1280 + Jitter(i, slot + 6, 30);
        VB[slot][i] = static_cast<uint16_t>(1320 + Jitter(i, slot + 7, 4));
        AUX1[slot][i] = Wave(at, 900, 0, 4000);
        AUX2[slot][i] = Wave(at, 1100, 500, 3000);
        VFSus[slot][i] = static_cast<int16_t>(Jitter(i, slot + 8, 1500));
        VRSus[slot][i] = static_cast<int16_t>(Jitter(i, slot + 9, 800));
        sampleFlag[slot][i] = i % 97 < 4;
    }
}

struct GoldenFrame : ProgramTest {
    // Colours of a scheme, two logs side by side, everything steady, no floating panels nor tags.
    void Prepare(int width, int height, int scheme) {
        colortype = scheme;
        AnimeMode = CourseLayout_on = CursolValueMode = 0;
        ExpertMode = 2;
        OpenWindow(width, height);
        ReadClientSize();
        for (int slot : {0, 1}) MakeLog(slot, 12000);
        SetMarks(0, {2400, 5100, 7700});
        SetMarks(1, {2500, 5000});
        cursorPos[0] = 510000;
        cursorPos[1] = 500050;
        BuildGrid();
    }
    // Letters are the glyph source's business: they stay away.
    uint32_t PictureOf(const std::string& name) {
        labelStrip = summaryPanel = bigFont = smallFont = noHandle;
        DrawFrame();
        const Surface& surface = BackBufferSurface();
        uint32_t sum = 2166136261u;
        for (int y = 0; y < clientHeight; y++)
            for (int x = 0; x < clientWidth; x++) sum = (sum ^ (surface.pixels[y * surface.pitch + x] & 0xFFFFFF)) * 16777619u;
        if (Updating()) {
            SaveDrawTargetBmp((std::filesystem::temp_directory_path() / (name + ".bmp")).string().c_str(), clientWidth, clientHeight);
            std::printf("%s 0x%08Xu\n", name.c_str(), sum);
        }
        return sum;
    }
    void CompareOperations(const std::string& name) {
        const std::string path = SourceFolder() + "/tests/app/golden/" + name + ".txt";
        const std::string drawn = RecordedText(DrawFrame);
        if (Updating()) std::ofstream(path, std::ios::binary) << drawn;
        std::ifstream file(path, std::ios::binary);
        std::istringstream lines(drawn);
        int number = 0;
        for (std::string expected, line; std::getline(file, expected); number++) {
            ASSERT_TRUE(std::getline(lines, line)) << "missing: " << expected;
            ASSERT_EQ(line, expected) << "line " << number + 1;
        }
        EXPECT_GT(number, 50);
        std::string more;
        EXPECT_FALSE(std::getline(lines, more)) << more;
    }
};

TEST_F(GoldenFrame, DarkSchemeAsItOpens) {
    Prepare(1024, 768, 0);
    EXPECT_EQ(PictureOf("dark"), 0xEA692815u);
}

TEST_F(GoldenFrame, LightSchemeWithoutBands) {
    GridFill = 0;
    Prepare(1024, 768, 1);
    EXPECT_EQ(PictureOf("light"), 0xCBBF1A66u);
}

TEST_F(GoldenFrame, AllChannelsAtTwentySamplesAPixel) {
    Prepare(1024, 768, 0);
    for (int slot : {0, 1}) std::fill(std::begin(showChannel[slot]), std::end(showChannel[slot]), 1);
    timeScale = 20;
    fileDim[0] = 1;
    fileBright[0] = 120;
    EXPECT_EQ(PictureOf("dense"), 0xD4E5F4EDu);
}

TEST_F(GoldenFrame, MagnifiedWithAddedTraces) {
    Blend_mode = 1;
    Prepare(1024, 768, 0);
    viewZoom = 2.5;
    scrollY = 700;
    scrollBarGrow = 32;
    EXPECT_EQ(PictureOf("magnified"), 0x103D7CD5u);
}

TEST_F(GoldenFrame, SmoothedAndMarkedInTheLightScheme) {
    Prepare(1024, 768, 1);
    Shifter = ctrlDown = 1;
    timeScale = 1.5;
    EXPECT_EQ(PictureOf("smoothed"), 0xC961A7D2u);
}

TEST_F(GoldenFrame, OperationsInBothSchemes) {
    for (int scheme : {0, 1}) {
        SCOPED_TRACE(scheme);
        Prepare(16, 200, scheme);
        for (int slot : {0, 1}) {
            ShowOnly(slot, chFSUS);
            showChannel[slot][chSlip] = 1;
        }
        timeScale = 7;
        CompareOperations(scheme == 0 ? "frame_dark" : "frame_light");
        ShutDownDrawing();
    }
}

}  // namespace
