#include "run_data/stream_copy.h"

#include <cstdint>
#include <cstring>

#ifdef __SSE2__
#include <emmintrin.h>

void StreamCopy(void* to, const void* from, size_t bytes) {
    auto aligned = [](const void* p) { return reinterpret_cast<uintptr_t>(p) % 16 == 0; };
    size_t whole = aligned(to) && aligned(from) ? bytes / 16 : 0;
    __m128i* target = static_cast<__m128i*>(to);
    const __m128i* source = static_cast<const __m128i*>(from);
    for (size_t i = 0; i < whole; i++) _mm_stream_si128(target + i, _mm_load_si128(source + i));
    std::memcpy(target + whole, source + whole, bytes - whole * 16);
}

void FinishStream() { _mm_sfence(); }
#else
void StreamCopy(void* to, const void* from, size_t bytes) { std::memcpy(to, from, bytes); }
void FinishStream() {}
#endif
