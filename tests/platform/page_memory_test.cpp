#include "platform/page_memory.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>

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

}  // namespace
}  // namespace wex::platform
