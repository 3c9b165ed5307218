#include "platform/memory.h"

#include <new>

static constexpr std::align_val_t alignment{memoryAlignment};

void* TakeMemory(size_t bytes) {
    return bytes < ownPagesFrom ? ::operator new(bytes, alignment, std::nothrow) : TakePages(bytes);
}

void GiveMemory(void* memory, size_t bytes) {
    if (bytes < ownPagesFrom) ::operator delete(memory, alignment);
    else GivePagesBack(memory, bytes);
}
