// memory.h -- memory in whole pages, for arrays of megabytes.
#pragma once
#include <cstddef>

// Pages for `bytes` bytes, all zero; nullptr when there are none. They count as used once they are written. Large pages
// where the system has them: the first touch of a page costs more than what is then put into it.
void* TakePages(size_t bytes);
// Gives the pages of TakePages(bytes) back to the system.
void GivePagesBack(void* pages, size_t bytes);
