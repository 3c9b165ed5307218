// pace.h -- how fast each metre of a lap is ridden.
#pragma once
#include <vector>

#include "tools/sample_log/circuit.h"
#include "tools/sample_log/random.h"

constexpr double gripLimit  = 12.2;  // m/s2, sideways
constexpr double brakeLimit = 10.5;  // m/s2, both brakes pulled as hard as the front wheel stands

// Air resistance in m/s2 at a speed in m/s, and what the closed throttle takes.
constexpr double Drag(double speed) { return 0.00085 * speed * speed + 0.12; }
constexpr double EngineBrake(double speed) { return speed > 3 ? 1.3 : 0.43 * speed; }

// Fills `pace` (m/s for each node) for lap number `lap`; lap 0 is the slow lap out.
void SetPace(const Circuit& circuit, int lap, Random& random, std::vector<double>& pace);
