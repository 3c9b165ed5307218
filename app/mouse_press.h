// press_repeat.h -- a held button acts in the first pass, then from the seventh on.
#pragma once
#include <algorithm>

struct PressRepeat {
    int passes = 0;  // of this press, up to 100
};
// Counts a pass of the press; whether the pass acts. The release puts the counter back to {}.
inline bool Repeats(PressRepeat& press) {
    press.passes = std::min(press.passes + 1, 100);
    return press.passes == 1 || press.passes > 6;
}
