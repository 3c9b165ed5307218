#include "platform/memory.h"

#include <sys/mman.h>

#include <cstdint>

static constexpr size_t smallPage = 4096, largePage = 2 << 20;  // bytes

static constexpr size_t RoundUp(size_t bytes, size_t unit) { return (bytes + unit - 1) / unit * unit; }

// Filled up to whole large pages where that wastes at most a tenth; otherwise the end is small pages.
static size_t MappedBytes(size_t bytes) {
    const size_t whole = RoundUp(bytes, largePage);
    return whole - bytes <= bytes / 10 ? whole : RoundUp(bytes, smallPage);
}

void* TakePages(size_t bytes) {
    if (bytes > PTRDIFF_MAX - 2 * largePage) return nullptr;
    const size_t mapped = MappedBytes(bytes);
    void* area = mmap(nullptr, mapped + largePage, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (area == MAP_FAILED) return nullptr;
    // Large pages lie at multiples of their size; what is left over in front and behind goes back.
    const uintptr_t at = reinterpret_cast<uintptr_t>(area);
    const size_t before = RoundUp(at, largePage) - at, behind = largePage - before;
    char* pages = static_cast<char*>(area) + before;
    if (before > 0) munmap(area, before);
    if (behind > 0) munmap(pages + mapped, behind);
#ifdef MADV_HUGEPAGE
    madvise(pages, mapped, MADV_HUGEPAGE);  // without large pages the small ones do as well
#endif
    return pages;
}

void GivePagesBack(void* pages, size_t bytes) { munmap(pages, MappedBytes(bytes)); }
