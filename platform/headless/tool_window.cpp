#include "platform/tool_window.h"

#include "platform/headless/script_state.h"

int OpenToolWindow(const ToolWindowEvents& events) {
    script.toolWindowOpen = true;
    script.toolEvents     = events;
    script.toolChecked.clear();
    script.toolIcon.clear();
    script.toolTip.clear();
    return 0;
}

void CloseToolWindow() {
    if (!script.toolWindowOpen) return;
    script.toolWindowOpen = false;
    script.toolEvents.gone();
}

void* ToolWindowHandle() { return script.toolWindowOpen ? &script.toolEvents : nullptr; }

void SetToolButton(int id, bool checked) {
    if (script.toolWindowOpen) script.toolChecked[id] = checked;
}

void SetToolButtonIcon(int id, int iconResource) {
    if (script.toolWindowOpen) script.toolIcon[id] = iconResource;
}

void SetToolButtonTip(int id, const char* text) {
    if (script.toolWindowOpen) script.toolTip[id] = text;
}

ScreenRect ToolWindowRect() { return script.toolRect; }

void PlaceToolWindow(int left, int top) {
    const ScreenRect old = script.toolRect;
    script.toolRect = {left, top, left + old.right - old.left, top + old.bottom - old.top};
}

void ScriptToolPress(int id, bool checked) {
    if (!script.toolWindowOpen) return;
    SetToolButton(id, checked);
    script.toolEvents.pressed(id, checked);
}

void ScriptToolClose() {
    if (script.toolWindowOpen) script.toolEvents.closed();
}

bool ShownToolButton(int id) { return script.toolChecked.contains(id) && script.toolChecked[id]; }
std::string ShownToolTip(int id) { return script.toolTip.contains(id) ? script.toolTip[id] : ""; }
int ShownToolIcon(int id) { return script.toolIcon.contains(id) ? script.toolIcon[id] : 0; }
void ScriptToolRect(const ScreenRect& rect) { script.toolRect = rect; }
