#include "platform/memory_accounting.h"

#include <gtest/gtest.h>

namespace wex::platform {
namespace {

std::uint64_t Counter(const MemoryStats& stats, int index) {
    return stats.words[2 * index] | (static_cast<std::uint64_t>(stats.words[2 * index + 1]) << 32);
}

TEST(MemoryAccounting, StartsAtFourteenZeroWords) {
    MemoryAccounting accounting;
    MemoryStats stats;
    std::fill(std::begin(stats.words), std::end(stats.words), 0xFFFFFFFFu);
    accounting.Read(stats);
    for (std::uint32_t word : stats.words) {
        EXPECT_EQ(word, 0u);
    }
}

TEST(MemoryAccounting, OneAllocationSetsPeakTotalAndCount) {
    MemoryAccounting accounting;
    accounting.OnAllocate(24);
    MemoryStats stats;
    accounting.Read(stats);
    EXPECT_EQ(Counter(stats, 0), 24u);
    EXPECT_EQ(Counter(stats, 1), 1u);
    EXPECT_EQ(Counter(stats, 2), 24u);
    EXPECT_EQ(Counter(stats, 3), 1u);
    EXPECT_EQ(Counter(stats, 4), 0u);
    EXPECT_EQ(Counter(stats, 5), 0u);
}

TEST(MemoryAccounting, ReleaseKeepsThePeakAndItsCount) {
    MemoryAccounting accounting;
    accounting.OnAllocate(100);
    accounting.OnAllocate(50);
    accounting.OnRelease(100);
    accounting.OnAllocate(80);  // live 130 stays below the peak of 150
    EXPECT_EQ(accounting.PeakLiveBytes(), 150u);
    EXPECT_EQ(accounting.LiveCountAtPeak(), 2u);
    EXPECT_EQ(accounting.AllocatedBytes(), 230u);
    EXPECT_EQ(accounting.Allocations(), 3u);
    EXPECT_EQ(accounting.FreedBytes(), 100u);
    EXPECT_EQ(accounting.Frees(), 1u);
}

TEST(MemoryAccounting, ReallocationCountsAFreeAndAnAllocation) {
    MemoryAccounting accounting;
    accounting.OnAllocate(16);
    accounting.OnReallocate(16, 64);
    EXPECT_EQ(accounting.AllocatedBytes(), 80u);
    EXPECT_EQ(accounting.Allocations(), 2u);
    EXPECT_EQ(accounting.FreedBytes(), 16u);
    EXPECT_EQ(accounting.Frees(), 1u);
    EXPECT_EQ(accounting.PeakLiveBytes(), 64u);
    EXPECT_EQ(accounting.LiveCountAtPeak(), 1u);
}

TEST(MemoryAccounting, CountersAboveFourGigabytesKeepTheirHighWord) {
    MemoryAccounting accounting;
    // Three blocks of 2 GiB + 3: the total passes 4 GiB with 32-bit sizes too.
    for (int i = 0; i < 3; ++i) {
        accounting.OnAllocate(0x80000003u);
    }
    MemoryStats stats;
    accounting.Read(stats);
    EXPECT_EQ(stats.words[4], 0x80000009u);
    EXPECT_EQ(stats.words[5], 1u);
}

TEST(MemoryAccounting, ReleasesOfBlocksCountedNowhereNeverMakeLiveFiguresWrap) {
    MemoryAccounting accounting;
    accounting.OnRelease(100);       // allocated before the counting began
    accounting.OnReallocate(0, 16);  // a reallocation from no block counts a release of nothing
    accounting.OnRelease(16);
    accounting.OnAllocate(10);
    EXPECT_EQ(accounting.PeakLiveBytes(), 0u);
    EXPECT_EQ(accounting.LiveCountAtPeak(), 0u);
}

}  // namespace
}  // namespace wex::platform
