#include "platform/memory.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <numeric>

TEST(Memory, PagesAreZeroAndCanBeWrittenToTheLastByte) {
    for (size_t bytes : {size_t{1}, size_t{4097}, size_t{3} << 20}) {
        auto* pages = static_cast<uint8_t*>(TakePages(bytes));
        ASSERT_NE(pages, nullptr);
        EXPECT_EQ(std::accumulate(pages, pages + bytes, uint64_t{0}), 0u);
        std::fill(pages, pages + bytes, uint8_t{255});
        EXPECT_EQ(std::accumulate(pages, pages + bytes, uint64_t{0}), uint64_t{255} * bytes);
        GivePagesBack(pages, bytes);
    }
}

TEST(Memory, PagesBeyondTheAddressSpaceAreRefused) { EXPECT_EQ(TakePages(SIZE_MAX / 2), nullptr); }
