#include "tools/sample_log/circuit.h"

#include <algorithm>
#include <cmath>

#include "tools/sample_log/numbers.h"
#include "tools/sample_log/random.h"
#include "tools/sample_log/sample_log.h"

namespace {

constexpr double pi = 3.14159265358979323846;

// A straight of `metres` when degrees is 0, else a bend of that radius; right-hand bends are positive. The turns of a
// circuit sum up to 360 degrees either way and it closes within a few metres; what is left is spread over the lap.
struct Stretch {
    double metres;
    double degrees;
};

struct CircuitPlan {
    const char*          name;
    std::vector<Stretch> stretches;
    std::vector<int>     sectors;
};

const std::vector<CircuitPlan>& CircuitPlans() {
    static const std::vector<CircuitPlan> plans = {
        {"sorrel",
         {{552, 0}, {66, 98}, {110, 0}, {130, -48}, {190, 0}, {90, 68}, {440, 0}, {24, 162}, {300, 0}, {62, -118},
          {150, 0}, {190, 56}, {260, 0}, {36, 50}, {34, -92}, {40, 42}, {355.9, 0}, {60, 142}, {360, 0}},
         {}},
        {"larch",  // long, fast, and ridden to the left
         {{300, 0}, {101, -90}, {216, 0}, {67.5, 80}, {81, -95}, {405, 0}, {297, -45}, {440.6, 0}, {121.5, -70},
          {175.5, 0}, {60.75, 105}, {351, 0},
          {40.5, -175}, {445.5, 0}, {202.5, 70}, {283.5, 0}, {108, -100}, {675, 0}, {148.5, -40}, {206.4, 0}},
         {}},
        {"juniper",  // short and narrow
         {{200, 0}, {30, 110}, {60, 0}, {22, -120}, {208.2, 0}, {18, 160}, {120, 0}, {40, -50}, {70, 0}, {26, 100}, {40, 0},
          {28, -85}, {60, 0}, {34, 120}, {370.1, 0}, {36, 125}, {60, 0}},
         {}},
        {"tansy",  // with sector boundaries
         {{420, 0}, {48, 112}, {230, 0}, {140, -38}, {160, 0}, {45, 96}, {160, 0}, {70, -92}, {120, 0}, {60, 128}, {200, 0},
          {100, -48}, {90, 0}, {40, 80}, {530.5, 0}, {38, -60}, {40, 60}, {220, 0}, {85, 122}, {679.6, 0}},
         {930, 1830, 2790}},
    };
    return plans;
}

double StretchLength(const Stretch& stretch) {
    return stretch.degrees == 0 ? stretch.metres : stretch.metres * std::fabs(stretch.degrees) * (pi / 180);
}

// Curvature of each metre as the stretches have it, and the bend that it belongs to.
void LayStretches(const CircuitPlan& plan, Circuit& circuit) {
    double total = 0;
    for (const Stretch& stretch : plan.stretches) total += StretchLength(stretch);
    circuit.length = static_cast<int>(total);
    circuit.curvature.assign(circuit.length, 0);
    circuit.bend.assign(circuit.length, 0);
    double end = 0;
    int node = 0, bend = 0;
    for (const Stretch& stretch : plan.stretches) {
        end += StretchLength(stretch);
        const double curvature = stretch.degrees == 0 ? 0 : (stretch.degrees > 0 ? 1 : -1) / stretch.metres;
        for (; node < circuit.length && node < end; node++) {
            circuit.curvature[node] = curvature;
            circuit.bend[node] = bend;
        }
        if (stretch.degrees != 0) bend++;
    }
    circuit.bends = bend + 1;
}

// A track leads into its bends: the mean over a window, taken twice, gives every bend its ramps.
void SmoothCurvature(Circuit& circuit) {
    constexpr int halfWindow = 7;
    const int n = circuit.length;
    for (int pass = 0; pass < 2; pass++) {
        const std::vector<double> before = circuit.curvature;
        for (int i = 0; i < n; i++) {
            double sum = 0;
            for (int j = -halfWindow; j <= halfWindow; j++) sum += before[(i + j + n) % n];
            circuit.curvature[i] = sum / (2 * halfWindow + 1);
        }
    }
    double turn = 0;
    for (double curvature : circuit.curvature) turn += curvature;
    for (double& curvature : circuit.curvature) curvature += ((turn > 0 ? 2 : -2) * pi - turn) / n;
}

// Walks the curvature. A turn of one metre is a few hundredths, where four terms of the series are exact to 1e-12.
void WalkTrack(Circuit& circuit) {
    const int n = circuit.length;
    circuit.x.assign(n, 0);
    circuit.y.assign(n, 0);
    double c = 1, s = 0, x = 0, y = 0;
    for (int i = 0; i < n; i++) {
        circuit.x[i] = x;
        circuit.y[i] = y;
        const double a = circuit.curvature[i], a2 = a * a;
        const double sine = a * (1 - a2 / 6 * (1 - a2 / 20)), cosine = 1 - a2 / 2 * (1 - a2 / 12);
        x += c;
        y += s;
        const double turned = c * cosine - s * sine;
        s = s * cosine + c * sine;
        c = turned;
    }
    for (int i = 0; i < n; i++) {
        circuit.x[i] -= x * i / n;
        circuit.y[i] -= y * i / n;
    }
}

// Surface height: long waves and short ripples, each a leaking random walk along the track, and a few worn places. It
// belongs to the circuit, so that every lap of every log meets the same bumps.
void LayRoad(Circuit& circuit) {
    const int n = circuit.length * roadStepsPerMetre;
    circuit.road.assign(n, 0);
    Random random{static_cast<uint64_t>(n)};
    double wave = 0, ripple = 0;
    for (int lap = 0; lap < 2; lap++)  // the second round starts as the first ended, so that the ends meet
        for (int i = 0; i < n; i++) {
            wave = wave * 0.985 + RandomSigned(random) * 3;
            ripple = ripple * 0.6 + RandomSigned(random) * 2.4;
            circuit.road[i] = wave + ripple;
        }
    for (int place = 0; place < circuit.length / 120; place++) {
        const int at = static_cast<int>(RandomBelow(random, n)), size = 6 + static_cast<int>(RandomBelow(random, 14));
        const double height = 8 * RandomSigned(random);
        for (int i = 0; i < size; i++) circuit.road[(at + i) % n] += height * 4 * i * (size - i) / (size * size);
    }
}

int64_t Hundredths(double value) { return static_cast<int64_t>(std::floor(value * 100 + 0.5)); }

}  // namespace

Circuit MakeCircuit(const std::string& name) {
    const std::vector<CircuitPlan>& plans = CircuitPlans();
    auto plan = std::find_if(plans.begin(), plans.end(), [&](const CircuitPlan& p) { return name == p.name; });
    if (plan == plans.end()) plan = plans.begin();
    Circuit circuit;
    circuit.name = plan->name;
    circuit.sectors = plan->sectors;
    LayStretches(*plan, circuit);
    SmoothCurvature(circuit);
    WalkTrack(circuit);
    LayRoad(circuit);
    return circuit;
}

std::vector<std::string> CourseNames() {
    std::vector<std::string> names;
    for (const CircuitPlan& plan : CircuitPlans()) names.push_back(plan.name);
    return names;
}

std::string MakeCourse(const std::string& name, int points) {
    constexpr double reach = 250;  // of 266 usable; the dots have a radius
    const Circuit circuit = MakeCircuit(name);
    const int total = std::clamp(points, 3, 2999);
    const auto [left, right] = std::minmax_element(circuit.x.begin(), circuit.x.end());
    const auto [top, bottom] = std::minmax_element(circuit.y.begin(), circuit.y.end());
    const double scale = 2 * reach / std::max(*right - *left, *bottom - *top);
    const double middleX = (*left + *right) / 2, middleY = (*top + *bottom) / 2;
    std::string text;
    size_t sector = 0;
    for (int k = 0; k < total; k++) {
        const double at = static_cast<double>(k) * circuit.length / total;
        const int i = static_cast<int>(at), next = (i + 1) % circuit.length;
        for (; sector < circuit.sectors.size() && circuit.sectors[sector] <= at; sector++) text += "1024.00,1024.00\n";
        const double x = circuit.x[i] + (circuit.x[next] - circuit.x[i]) * (at - i);
        const double y = circuit.y[i] + (circuit.y[next] - circuit.y[i]) * (at - i);
        AppendDecimal(text, Hundredths((x - middleX) * scale), 2);
        text += ',';
        AppendDecimal(text, Hundredths((y - middleY) * scale), 2);
        text += '\n';
    }
    return text;
}
