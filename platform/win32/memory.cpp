#include "platform/memory.h"

#include <windows.h>

void* TakePages(size_t bytes) { return VirtualAlloc(nullptr, bytes, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE); }

void GivePagesBack(void* pages, size_t) { VirtualFree(pages, 0, MEM_RELEASE); }
