#include "app/toolbar.h"

#include <initializer_list>

#include "settings/settings.h"

static ToolbarHands hands;
static bool checked[lastCheckButton - firstCheckButton + 1];

void RegisterToolbarHands(const ToolbarHands& registered) { hands = registered; }

void CreateToolbarWindow() {
    if (hands.create) hands.create();
}

void DestroyToolbarWindow() {
    if (hands.destroy) hands.destroy();
}

void* ToolbarWindowHandle() { return hands.window ? hands.window() : nullptr; }

void PlaceToolbar(int fromMainWindow) {
    if (hands.place) hands.place(fromMainWindow);
}

void CheckButton(int id, bool on) {
    if (id < firstCheckButton || id > lastCheckButton) return;
    checked[id - firstCheckButton] = on;
    if (hands.showChecked) hands.showChecked(id, on);
}

bool ButtonChecked(int id) { return id >= firstCheckButton && id <= lastCheckButton && checked[id - firstCheckButton]; }

void DefaultToolbar() {
    for (int id = firstCheckButton; id <= lastCheckButton; id++) CheckButton(id, false);
    for (int id : {buttonMoveFile1, buttonMoveFile2, buttonGraphs}) CheckButton(id, true);
    CheckButton(buttonAnime, AnimeMode != 0);
}
