// mouse_press.h -- what the left and the right button have in common: who takes a press, and how a held one repeats.
#pragma once
#include <algorithm>
#include <span>

// A press goes to the first row that takes it.
struct PressRow {
    bool (*takes)();
    void (*act)();
};
inline void GivePress(std::span<const PressRow> rows) {
    for (const PressRow& row : rows)
        if (row.takes()) return row.act();
}

// A held button acts in the first pass, then from the seventh on.
struct PressRepeat {
    int passes = 0;  // of this press, up to 100
};
// Counts a pass of the press; whether the pass acts. The release puts the counter back to {}.
inline bool Repeats(PressRepeat& press) {
    press.passes = std::min(press.passes + 1, 100);
    return press.passes == 1 || press.passes > 6;
}
