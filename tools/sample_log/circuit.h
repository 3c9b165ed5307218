// circuit.h -- the closed circuits: where the track runs, how it bends, how rough it is.
#pragma once
#include <string>
#include <vector>

// Node i stands i metres after the start line, in riding direction; node 0 follows the last one.
struct Circuit {
    std::string         name;
    int                 length;     // m, and number of nodes
    std::vector<double> x, y;       // m
    std::vector<double> curvature;  // 1/m, right-hand bends positive
    std::vector<int>    bend;       // number of the bend that the node lies in or leads to, from 0
    int                 bends;
    std::vector<double> road;       // mm, height of the surface, every quarter metre
    std::vector<int>    sectors;    // m, sector boundaries that the course file carries, rising
};

constexpr int roadStepsPerMetre = 4;

// The circuit of that name, or the first one.
Circuit MakeCircuit(const std::string& name);
