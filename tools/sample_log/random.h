// random.h -- random numbers that are the same on every compiler and library.
#pragma once
#include <cstdint>

struct Random {
    uint64_t state;
};

constexpr uint64_t NextRandom(Random& random) {
    uint64_t z = random.state += 0x9E3779B97F4A7C15u;
    z = (z ^ z >> 30) * 0xBF58476D1CE4E5B9u;
    z = (z ^ z >> 27) * 0x94D049BB133111EBu;
    return z ^ z >> 31;
}
// 0 to limit - 1.
constexpr uint64_t RandomBelow(Random& random, uint64_t limit) { return NextRandom(random) % limit; }
// -1 to 1, flat; every value is exact in a double.
constexpr double SignedUnit(uint16_t bits) { return static_cast<int16_t>(bits) / 32768.0; }
constexpr double RandomSigned(Random& random) { return SignedUnit(static_cast<uint16_t>(NextRandom(random) >> 40)); }
