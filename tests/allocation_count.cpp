#include "tests/allocation_count.h"

#include <cerrno>
#include <cstddef>

// Per thread, but not on Windows, where a variable of that kind takes memory itself; no other thread runs beside a test.
#ifdef _WIN32
#define EACH_THREADS
#else
#define EACH_THREADS thread_local
#endif
static EACH_THREADS bool counting;
static EACH_THREADS int taken;

AllocationCount::AllocationCount() {
    taken = 0;
    counting = true;
}
AllocationCount::~AllocationCount() { counting = false; }
int AllocationCount::Taken() const { return taken; }

static void Count() {
    if (counting) taken++;
}

#if defined(__SANITIZE_ADDRESS__)
// The sanitizer has a malloc of its own and tells of each block.
extern "C" void __sanitizer_malloc_hook(const volatile void*, size_t) { Count(); }
extern "C" void __sanitizer_free_hook(const volatile void*) {}

#elif defined(__GLIBC__)
// These stand in for the ones of the C library, for every library of the process.
extern "C" {
void* __libc_malloc(size_t);
void* __libc_calloc(size_t, size_t);
void* __libc_realloc(void*, size_t);
void* __libc_memalign(size_t, size_t);

void* malloc(size_t bytes) noexcept {
    Count();
    return __libc_malloc(bytes);
}
void* calloc(size_t items, size_t bytes) noexcept {
    Count();
    return __libc_calloc(items, bytes);
}
void* realloc(void* block, size_t bytes) noexcept {
    Count();
    return __libc_realloc(block, bytes);
}
void* memalign(size_t alignment, size_t bytes) noexcept {
    Count();
    return __libc_memalign(alignment, bytes);
}
void* aligned_alloc(size_t alignment, size_t bytes) noexcept { return memalign(alignment, bytes); }
int posix_memalign(void** block, size_t alignment, size_t bytes) noexcept {
    *block = memalign(alignment, bytes);
    return *block ? 0 : ENOMEM;
}
}

#else
// The linker sends every call here (--wrap), also those of the C++ library. Its aligned new goes past malloc and is named
// as the linker knows it.
extern "C" {
void* __real_malloc(size_t);
void* __real_calloc(size_t, size_t);
void* __real_realloc(void*, size_t);
void* __real__ZnwySt11align_val_t(size_t, size_t);

void* __wrap_malloc(size_t bytes) {
    Count();
    return __real_malloc(bytes);
}
void* __wrap_calloc(size_t items, size_t bytes) {
    Count();
    return __real_calloc(items, bytes);
}
void* __wrap_realloc(void* block, size_t bytes) {
    Count();
    return __real_realloc(block, bytes);
}
void* __wrap__ZnwySt11align_val_t(size_t bytes, size_t alignment) {
    Count();
    return __real__ZnwySt11align_val_t(bytes, alignment);
}
}
#endif
