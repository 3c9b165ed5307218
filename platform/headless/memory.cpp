#include "platform/memory.h"

#include <sys/mman.h>

void* TakePages(size_t bytes) {
    void* pages = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (pages == MAP_FAILED) return nullptr;
#ifdef MADV_HUGEPAGE
    madvise(pages, bytes, MADV_HUGEPAGE);  // without large pages the small ones do as well
#endif
    return pages;
}

void GivePagesBack(void* pages, size_t bytes) { munmap(pages, bytes); }
