#include "platform/memory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <numeric>

TEST(Memory, PagesAreZeroAndCanBeWrittenToTheLastByte) {
    for (size_t bytes : {size_t{1}, size_t{4097}, size_t{3} << 20, size_t{11520032}}) {
        auto* pages = static_cast<uint8_t*>(TakePages(bytes));
        ASSERT_NE(pages, nullptr);
        EXPECT_EQ(std::accumulate(pages, pages + bytes, uint64_t{0}), 0u);
        std::fill(pages, pages + bytes, uint8_t{255});
        EXPECT_EQ(std::accumulate(pages, pages + bytes, uint64_t{0}), uint64_t{255} * bytes);
        GivePagesBack(pages, bytes);
    }
}

TEST(Memory, PagesBeyondTheAddressSpaceAreRefused) { EXPECT_EQ(TakePages(SIZE_MAX / 2), nullptr); }

TEST(Memory, OfEverySizeIsAlignedAndCanBeWrittenWhole) {
    for (size_t bytes : {size_t{0}, size_t{1}, size_t{64}, ownPagesFrom - 1, ownPagesFrom, ownPagesFrom + 1}) {
        SCOPED_TRACE(bytes);
        auto* memory = static_cast<uint8_t*>(TakeMemory(bytes));
        ASSERT_NE(memory, nullptr);
        EXPECT_EQ(reinterpret_cast<uintptr_t>(memory) % memoryAlignment, 0u);
        std::fill(memory, memory + bytes, uint8_t{1});
        EXPECT_EQ(std::accumulate(memory, memory + bytes, uint64_t{0}), bytes);
        GiveMemory(memory, bytes);
    }
}

TEST(Memory, GivenBackLeavesItsNeighboursWhole) {
    constexpr size_t bytes = (11 << 20) + 12345;
    uint8_t* pages[3];
    for (uint8_t*& each : pages) {
        each = static_cast<uint8_t*>(TakePages(bytes));
        ASSERT_NE(each, nullptr);
        std::fill(each, each + bytes, uint8_t{7});
    }
    GivePagesBack(pages[1], bytes);
    for (int k : {0, 2}) {
        EXPECT_EQ(std::count(pages[k], pages[k] + bytes, 7), static_cast<ptrdiff_t>(bytes));
        GivePagesBack(pages[k], bytes);
    }
}
