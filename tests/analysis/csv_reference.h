// csv_reference.h -- the text table of an export by printf, a row at a time: what the bytes are compared with.
#pragma once
#include <cstdint>
#include <cstdio>
#include <string>

#include "analysis/csv_rows.h"
#include "analysis/lap_stats.h"
#include "run_data/fixed_point.h"
#include "run_data/run_store.h"
#include "settings/settings.h"

// Calls write(format, value) for each field of a row but the time, as the flags say.
template <class Write>
void WriteReferenceFields(Write write, int first, int s, int lap) {
    const SampleArray<uint32_t>& sum = CoursePosSource == 1 ? distRear[0] : distFront[0];
    const int* show = showChannel[0];
    if (csvDistanceOn) write(",%d", TruncToInt(static_cast<float>(sum[s] - sum[first]) / (timeFactor[0] * 7200.0)));
    if (csvLapOn) write(",%d", lap);
    if (show[chNe]) write(",%d", int{Ne[0][s]});
    if (show[chTH]) write(",%d", TH[0][s] / 10);
    if (show[chVFW]) write(",%.1f", VFW[0][s] * 0.1);
    if (show[chVRW]) write(",%.1f", VRW[0][s] * 0.1);
    if (show[chFSUS]) write(",%d", FSUS[0][s] / 100);
    if (show[chRSUS]) write(",%d", RSUS[0][s] / 100);
    if (show[chLAF1]) write(",%.1f", LAF1[0][s] * 0.01);
    if (show[chLAF2]) write(",%.1f", LAF2[0][s] * 0.01);
    if (show[chVB]) write(",%.1f", VB[0][s] * 0.01);
    if (show[chAUX1]) write(",%.1f", AUX1[0][s] * 0.01);
    if (show[chAUX2]) write(",%.1f", AUX2[0][s] * 0.01);
    if (ExpertMode != 2) return;
    const float slip = VFW[0][s] > 50 ? static_cast<float>((VRW[0][s] - VFW[0][s]) * 1000) / static_cast<float>(VFW[0][s]) : 0.0f;
    if (show[chSlip]) write(",%.1f", slip);
    if (show[chVFSus]) write(",%d", int{VFSus[0][s]});
    if (show[chVRSus]) write(",%d", int{VRSus[0][s]});
}

// Hands every row of samples first to last to put(text, length), counter and lap number going on.
template <class Put>
void WriteReferenceRows(Put put, int first, int last, int step, int& counter, int& lap) {
    char line[512];
    for (int s = first; s <= last && s < sampleCount[0] - 1; s++) {
        for (int i = 1; i < lapCount[0]; i++) lap += lapStart[0][i] == static_cast<uint32_t>(s);
        if (counter % step != 0) {
            counter++;
            continue;
        }
        int length = std::snprintf(line, sizeof line, "%.3f", counter++ * 0.005);
        WriteReferenceFields([&](const char* format, auto value) { length += std::snprintf(line + length, sizeof line - length, format, value); },
                             first, s, lap);
        line[length++] = '\r';
        line[length++] = '\n';
        put(line, static_cast<size_t>(length));
    }
}
