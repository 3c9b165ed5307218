// allocation_count.h -- counts what the thread takes from the heap: new, malloc and their kin, also inside of libraries where
// the system lets a program stand in for malloc.
#pragma once

// While one lives, allocations of its thread count. One at a time.
struct AllocationCount {
    AllocationCount();
    ~AllocationCount();
    AllocationCount(const AllocationCount&) = delete;
    AllocationCount& operator=(const AllocationCount&) = delete;
    int Taken() const;  // blocks since the start
};

// How many blocks a call takes.
template <class Call>
int AllocationsOf(Call call) {
    const AllocationCount count;
    call();
    return count.Taken();
}
