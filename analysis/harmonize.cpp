#include "analysis/harmonize.h"

#include "graph/view_state.h"
#include "platform/boxes.h"
#include "run_data/fixed_point.h"
#include "run_data/run_store.h"

constexpr int shortestTyre = 100;  // mm

// In integers, truncated, stored to 16 bits.
static void Rescale(SampleArray<uint16_t>& speed, int& tyreMm, int newTyreMm) {
    for (int sample = 0; sample < sampleCount[0]; sample++)
        speed[sample] = WrapU16(int64_t{speed[sample]} * newTyreMm / tyreMm);
    tyreMm = newTyreMm;
}

void HarmonizeTyreLength() {
    // No message: a File 1 without tyres has no speeds that could be compared.
    if (!slotInUse[1] || frontTyreMm[0] < shortestTyre || rearTyreMm[0] < shortestTyre) return;
    Rescale(VFW[0], frontTyreMm[0], frontTyreMm[1]);
    Rescale(VRW[0], rearTyreMm[0], rearTyreMm[1]);
    dataVersion[0]++;
    activityCount = 150;
    ShowBox("arranged adjusted VFW & VRW to file 2", "arrange", BoxOwner::toolbar);
}
