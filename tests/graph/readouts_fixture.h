// readouts_fixture.h -- a window with one log whose values are known, for tests of the read-outs; and the lines that the
// recorder writes, to compare with.
#pragma once
#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "app/frame_loop.h"
#include "draw/draw_layer.h"
#include "draw/recorder.h"
#include "graph/color_scheme.h"
#include "graph/lap_list.h"
#include "graph/rest_panels.h"
#include "graph/ruler.h"
#include "graph/scroll_bar.h"
#include "graph/value_readout.h"
#include "graph/value_rows.h"
#include "graph/view_state.h"
#include "platform/headless/script.h"
#include "run_data/run_store.h"
#include "settings/settings.h"

// A window of 1024 x 768 at viewZoom 1, with one log of 30 s: every channel holds its sample number, unless said otherwise.
class ReadOuts : public testing::Test {
  protected:
    void SetUp() override {
        DefaultScript();
        LoadDefaults();
        SetVideoMode(32, 1024, 768, 60);
        ASSERT_EQ(InitDrawing(), 0);
        RebuildResources();
        clientWidth = 1024;
        clientHeight = 768;
        halfWidth = 512;
        viewZoom = 1.0;
        ExpertMode = 2;
        MakeLog(0, 6000);
        mouseX = BaseLineX() + 100;
        mouseY = 300;
    }
    void TearDown() override { ShutDownDrawing(); }

    static void MakeLog(int slot, int samples) {
        EnsureChannels(slot, samples + 16);
        ClearChannels(slot, samples + 16);
        slotInUse[slot] = 1;
        sampleCount[slot] = samples;
        lapCount[slot] = 1;
        FillLapEnd(slot);
        for (int channel = 0; channel < channelTotal; channel++) showChannel[slot][channel] = 1;
        for (int i = 0; i < samples; i++) {
            Ne[slot][i] = static_cast<uint16_t>(i);
            VFW[slot][i] = static_cast<uint16_t>(i);
            VRW[slot][i] = static_cast<uint16_t>(i);
            TH[slot][i] = i;
            FSUS[slot][i] = static_cast<int16_t>(i);
            RSUS[slot][i] = static_cast<int16_t>(i);
            LAF1[slot][i] = LAF2[slot][i] = AUX1[slot][i] = AUX2[slot][i] = i;
            VB[slot][i] = static_cast<uint16_t>(i);
        }
    }
};

template <class Draw>
inline std::string Record(Draw draw) {
    std::string lines;
    RecordOperations(&lines);
    draw();
    RecordOperations(nullptr);
    return lines;
}

inline bool Has(const std::string& lines, const std::string& text) { return lines.find(text) != std::string::npos; }

inline int Count(const std::string& lines, const std::string& text) {
    int count = 0;
    for (size_t at = lines.find(text); at != std::string::npos; at = lines.find(text, at + 1)) count++;
    return count;
}

inline ValueTexts Texts(int channel, int sample, int base = 0, int slot = 0) {
    ValueTexts texts{"before", "before"};
    WriteValueTexts(slot, channel, sample, base, texts);
    return texts;
}


// Lines of the recorder.
inline std::string Numbers(std::initializer_list<double> numbers) {
    std::string text;
    for (const double number : numbers) {
        char one[32];
        std::snprintf(one, sizeof one, " %.9g", number);
        text += one;
    }
    return text;
}
inline std::string Hue(Color color) {
    char text[16];
    std::snprintf(text, sizeof text, " #%06X", static_cast<unsigned>(color) & 0xFFFFFF);
    return text;
}
inline std::string Blend(int mode, int parameter) { return "SetBlend" + Numbers({double(mode), double(parameter)}) + "\n"; }
inline std::string Box(int left, int top, int right, int bottom, Color color) {
    return "FillRect" + Numbers({double(left), double(top), double(right), double(bottom)}) + Hue(color) + "\n";
}
inline std::string Outline(int left, int top, int right, int bottom, Color color) {
    return "DrawBoxOutline" + Numbers({double(left), double(top), double(right), double(bottom)}) + Hue(color) + "\n";
}
inline std::string Line(double x1, double y1, double x2, double y2, Color color) {
    return "DrawLineF" + Numbers({x1, y1, x2, y2}) + Hue(color) + " 1\n";
}
inline std::string ShortLine(double x1, double y1, double x2, double y2, Color color) {
    return "DrawLineI" + Numbers({x1, y1, x2, y2}) + Hue(color) + "\n";
}
inline std::string TextAt(int x, int y, const std::string& text, Color color, const char* font) {
    return "DrawTextAt" + Numbers({double(x), double(y)}) + " \"" + text + "\"" + Hue(color) + " " + font + "\n";
}
inline std::string TextF(int x, int y, Color color, const char* font, const std::string& text) {
    return "DrawTextF" + Numbers({double(x), double(y)}) + Hue(color) + " " + font + " \"" + text + "\"\n";
}
// Whether these lines were drawn, one behind the other.
inline testing::AssertionResult Draws(const std::string& lines, const std::string& wanted) {
    if (lines.find(wanted) != std::string::npos) return testing::AssertionSuccess();
    return testing::AssertionFailure() << "wanted:\n" << wanted << "drawn:\n" << lines;
}
