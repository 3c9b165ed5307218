// layout_events.cpp -- what a layout file changes above the settings.
#include "settings/layout_events.h"

#include "graph/view_state.h"

void AfterLayoutLoad() {
    afMapOn = 0;
    afProgress = 0;
}
