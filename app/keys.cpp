// keys.cpp -- what each key does.
#include <cctype>

#include "app/input_step.h"
#include "app/toolbar.h"
#include "draw/draw_layer.h"
#include "graph/view_state.h"
#include "platform/window.h"
#include "run_data/load_pipeline.h"

constexpr int keyEscape = 27;

static void OpenLog(int slot) {
    LoadFile(askRequest, slot);
    BringMainWindowToFront();
}

static void ShowNormalGraphs() {
    afMapOn = graphPositionOn = realTimePlayOn = 0;
    rulerFade = 5;
    CheckButton(buttonGraphs, true);
    for (int id : {buttonPosition, buttonPlay, buttonAfMap}) CheckButton(id, false);
    activityCount = 100;
    BringMainWindowToFront();
}

// Rows are tried from the top; letters in upper case.
struct KeyRow {
    int key;
    bool (*when)();  // nullptr: always
    void (*act)();
};
static const KeyRow keyRows[] = {
    {'1', nullptr, [] { OpenLog(0); }},
    {'2', nullptr, [] { OpenLog(1); }},
    {keyEscape, nullptr, ShowNormalGraphs},
};

void HandleKey() {
    const int key = std::toupper(TakeChar() & 0xFF);
    if (key == 0) return;
    for (const KeyRow& row : keyRows) {
        if (row.key != key || (row.when && !row.when())) continue;
        row.act();
        return;
    }
}
