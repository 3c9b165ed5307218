#include "analysis/final_simulation.h"

#include <algorithm>
#include <cstdio>

#include "graph/view_state.h"
#include "run_data/run_store.h"
#include "run_data/typed_number.h"
#include "settings/settings.h"

int simFront, simRear;
int simTireLength;

constexpr int fewestTeeth = 10;                        // of a log with sprocket data
constexpr int shortestTyre = 10, longestTyre = 3000;  // mm, as typed

static bool SprocketsLogged() { return frontSprocket[0] >= fewestTeeth && rearSprocket[0] >= fewestTeeth; }

// Both, as a ratio of one known and one unknown sprocket would say nothing.
static void ForceLoggedTeeth() {
    if (!SprocketsLogged()) frontSprocket[0] = rearSprocket[0] = 1;
}

static void ForceSimulatedTeeth() {
    if (simFront < 1 || simRear < 1) simFront = simRear = 1;
}

// In float throughout. Without a tyre length the factor stays.
static void ComputeFactor() {
    if (!SprocketsLogged()) simFront = simRear = 1;
    ForceLoggedTeeth();
    ForceSimulatedTeeth();
    if (simTireLength < 1) return;
    const float simulated = static_cast<float>(simRear) / static_cast<float>(simFront);
    const float logged = static_cast<float>(rearSprocket[0]) / static_cast<float>(frontSprocket[0]);
    neFactor[0] = simulated / logged * (static_cast<float>(rearTyreMm[0]) / static_cast<float>(simTireLength));
}

void OpenFinalSimulation() {
    ForceLoggedTeeth();
    ForceSimulatedTeeth();
}

struct ListRange {
    int *teeth, first, last;
};
static ListRange RangeOf(TeethList list) {
    if (list == TeethList::front) return {&simFront, frontTeethFirst, frontTeethLast};
    return {&simRear, rearTeethFirst, rearTeethLast};
}

void ChooseTeeth(TeethList list, int item) {
    const ListRange range = RangeOf(list);
    if (item >= 0) *range.teeth = std::min(range.first + item, range.last);
    ComputeFactor();
}

int TeethItem(TeethList list) {
    const ListRange range = RangeOf(list);
    return *range.teeth >= range.first && *range.teeth <= range.last ? *range.teeth - range.first : -1;
}

void LeaveTireLength(const char* typed) {
    simTireLength = std::clamp(TruncToInt(TypedNumber(typed)), shortestTyre, longestTyre);
    ComputeFactor();
}

struct ArrowStep {
    int *teeth, step;
    int limit, wrap;  // a step past the limit leads to the other end
};

void StepLoggedTeeth(TeethArrow arrow) {
    if (!Finalchg && !Debug) return;
    // Kept: the rear teeth leave the range below 33, yet come back at 30 from the other end.
    static constexpr ArrowStep steps[] = {
        {frontSprocket, +1, 22, 13},
        {frontSprocket, -1, 13, 22},
        {rearSprocket, +1, 60, 30},
        {rearSprocket, -1, 33, 60},
    };
    const ArrowStep& row = steps[static_cast<int>(arrow)];
    const int teeth = row.teeth[0] + row.step;
    row.teeth[0] = (teeth - row.limit) * row.step > 0 ? row.wrap : teeth;
}

void ResetFinalSimulation() {
    ForceLoggedTeeth();
    simFront = frontSprocket[0];
    simRear = rearSprocket[0];
    simTireLength = rearTyreMm[0];
    neFactor[0] = 1.0f;
}

static void WriteRatio(char* text, int rear, int front) {
    std::snprintf(text, ratioTextSize, "%4.3f", static_cast<double>(static_cast<float>(rear) / static_cast<float>(front)));
}

void LoggedRatioText(char text[ratioTextSize]) { WriteRatio(text, rearSprocket[0], frontSprocket[0]); }
void SimulatedRatioText(char text[ratioTextSize]) { WriteRatio(text, simRear, simFront); }

void DefaultFinalSimulation() {
    simFront = 15;
    simRear = 43;
    simTireLength = 2010;
}
