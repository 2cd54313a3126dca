#include "platform/page_memory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <set>
#include <vector>

namespace wex::platform {
namespace {

TEST(PageMemory, GivesZeroedWritablePagesAlignedToThePageSize) {
    void* pages = AllocatePages(3 * kPageSize);
    ASSERT_NE(pages, nullptr);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(pages) % kPageSize, 0u);
    auto* bytes = static_cast<unsigned char*>(pages);
    for (std::size_t at = 0; at < 3 * kPageSize; ++at) {
        ASSERT_EQ(bytes[at], 0) << "at " << at;
    }
    std::memset(bytes, 0xAB, 3 * kPageSize);
    EXPECT_EQ(bytes[3 * kPageSize - 1], 0xAB);
    FreePages(pages, 3 * kPageSize);
}

TEST(PageMemory, APageFreedAndTakenAgainIsZeroFilled) {
    std::vector<void*> pages;
    for (int i = 0; i < 20; ++i) {
        pages.push_back(AllocatePages(kPageSize));
        ASSERT_NE(pages.back(), nullptr);
        std::memset(pages.back(), 0xCD, kPageSize);
    }
    FreePages(pages[3], kPageSize);
    pages[3] = AllocatePages(kPageSize);
    ASSERT_NE(pages[3], nullptr);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(pages[3]) % kPageSize, 0u);
    const auto* bytes = static_cast<const unsigned char*>(pages[3]);
    EXPECT_EQ(std::count(bytes, bytes + kPageSize, 0), static_cast<std::ptrdiff_t>(kPageSize));
    for (void* page : pages) {
        FreePages(page, kPageSize);
    }
}

#ifdef _WIN32
// Windows maps memory in granules of 64 KiB: single pages must share them, or
// a 32-bit process runs out of address space sixteen times too early.
TEST(PageMemory, SinglePagesShareTheSystemsAllocationGranules) {
    std::vector<void*> pages;
    std::set<std::uintptr_t> granules;
    for (int i = 0; i < 64; ++i) {
        pages.push_back(AllocatePages(kPageSize));
        ASSERT_NE(pages.back(), nullptr);
        granules.insert(reinterpret_cast<std::uintptr_t>(pages.back()) / (64 * 1024));
    }
    EXPECT_LE(granules.size(), 5u);
    for (void* page : pages) {
        FreePages(page, kPageSize);
    }
}
#endif

}  // namespace
}  // namespace wex::platform
