// stream_copy.h -- a copy into memory that is not read again soon.
#pragma once
#include <cstddef>

// Copies like memcpy, but past the caches where the machine can: lines that are written whole need not be read first, and
// what the caches hold stays there. Fast when `to` and `from` are multiples of 16. Other threads see the bytes after
// FinishStream.
void StreamCopy(void* to, const void* from, size_t bytes);
void FinishStream();
