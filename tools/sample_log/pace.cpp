#include "tools/sample_log/pace.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double topSpeed = 70;  // m/s, beyond what the engine reaches

// Acceleration at a speed: first the rear tyre and the front wheel in the air set the limit, then the power.
double Pull(double speed) { return std::min(8.0, 330 / std::max(speed, 1.0)) - Drag(speed); }

// The share of the grip that is left for going straight when some of it holds the bike in the bend.
double GripLeft(double speed, double curvature, double grip) {
    const double used = std::min(1.0, speed * speed * std::fabs(curvature) / grip);
    return std::sqrt(1 - used * used);
}

// What the rider makes of each bend: grip used, m/s2. The lap out is slow, tyres and rider come up to pace over three
// laps, and one bend in forty goes wrong.
std::vector<double> BendGrips(const Circuit& circuit, int lap, Random& random) {
    const double pace = lap == 0 ? 0.62 : lap == 1 ? 0.93 : lap == 2 ? 0.97 : 0.985 + 0.015 * RandomSigned(random);
    std::vector<double> grips(circuit.bends);
    for (double& grip : grips) {
        grip = gripLimit * pace * (1 + 0.025 * RandomSigned(random));
        if (RandomBelow(random, 40) == 0) grip *= 0.86;
    }
    return grips;
}

}  // namespace

void SetPace(const Circuit& circuit, int lap, Random& random, std::vector<double>& pace) {
    const std::vector<double> grips = BendGrips(circuit, lap, random);
    const double effort = lap == 0 ? 0.6 : 1;
    const int n = circuit.length;
    std::vector<double> grip(n);
    pace.resize(n);
    for (int i = 0; i < n; i++) {
        grip[i] = grips[circuit.bend[i]];
        const double bend = std::fabs(circuit.curvature[i]);
        pace[i] = bend * topSpeed * topSpeed > grip[i] ? std::sqrt(grip[i] / bend) : topSpeed;
    }
    // v2^2 = v1^2 + 2 a over one metre; twice round, since the lap closes.
    for (int k = 0; k < 2 * n; k++) {
        const int from = k % n, to = (k + 1) % n;
        const double gain = effort * Pull(pace[from]) * GripLeft(pace[from], circuit.curvature[from], grip[from]);
        pace[to] = std::min(pace[to], std::sqrt(pace[from] * pace[from] + 2 * std::max(0.0, gain)));
    }
    // Braking starts hardest, where the air helps and the bike stands upright.
    for (int k = 2 * n; k > 0; k--) {
        const int from = k % n, to = (k - 1) % n;
        const double left = 0.15 + 0.85 * GripLeft(pace[from], circuit.curvature[from], grip[from]);
        const double loss = effort * (5.9 + 0.085 * pace[from]) * left;
        pace[to] = std::min(pace[to], std::sqrt(pace[from] * pace[from] + 2 * loss));
    }
}
