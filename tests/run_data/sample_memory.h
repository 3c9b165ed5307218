// sample_memory.h -- the memory of the sample arrays, counted and, on demand, refused.
#pragma once
#include <algorithm>
#include <cstdint>

#include "run_data/run_store.h"

// While one of these lives, the arrays take their memory through it.
struct CountedMemory {
    static constexpr int always = -1;
    int     calls = 0;            // of take
    int     failAt = 0;           // the call that gets none, from 1; or always
    int64_t inUse = 0, peak = 0;  // bytes, relative to the start; below 0 when older memory was given back

    CountedMemory() {
        current = this;
        sampleMemory = {Take, GiveBack};
    }
    ~CountedMemory() {
        sampleMemory = systemMemory;
        current = nullptr;
    }
    CountedMemory(const CountedMemory&) = delete;
    CountedMemory& operator=(const CountedMemory&) = delete;

  private:
    static inline CountedMemory* current = nullptr;
    static void* Take(size_t bytes) {
        CountedMemory& m = *current;
        if (m.failAt == always || ++m.calls == m.failAt) return nullptr;
        void* memory = systemMemory.take(bytes);
        if (memory) m.peak = std::max(m.peak, m.inUse += static_cast<int64_t>(bytes));
        return memory;
    }
    static void GiveBack(void* memory, size_t bytes) {
        current->inUse -= static_cast<int64_t>(bytes);
        systemMemory.giveBack(memory, bytes);
    }
};
