// memory.h -- memory for the samples of a log, and for the file they come from.
//
// Fresh pages cost more than the decoding of what is put into them, as the system hands them out one by one at their
// first touch. So memory of megabytes comes in pages of its own, the largest that the system lends.
#pragma once
#include <cstddef>

constexpr size_t memoryAlignment = 64;       // bytes
constexpr size_t ownPagesFrom    = 1 << 20;  // bytes; less than that shares pages

// Not cleared; nullptr when there is none.
void* TakeMemory(size_t bytes);
// Gives the memory of TakeMemory(bytes) back, and pages of its own to the system at once.
void GiveMemory(void* memory, size_t bytes);

// The system's part. Pages for `bytes` bytes, all zero; nullptr when there are none. They count as used once they are
// written, and are at most a tenth more than is asked for.
void* TakePages(size_t bytes);
void GivePagesBack(void* pages, size_t bytes);
