// debug_line.h -- what the setting Debug shows at the top of the view.
#pragma once

// elapsedMs: of the pass so far; lastFrameMs: duration of the pass before.
void DrawDebugLine(int elapsedMs, int lastFrameMs);
void DefaultDebugLine();
