#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstring>
#include <ctime>
#include <set>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "platform/debugger_output.h"
#include "platform/memory_accounting.h"
#include "platform/page_memory.h"
#include "platform/process_info.h"
#include "support/debugger_capture.h"

namespace wex::platform {
namespace {

TEST(DebuggerOutput, EachTextGoesWholeToTheInnermostSinkAndNowhereWithoutOne) {
    tav::test::DebuggerCapture outer;
    {
        tav::test::DebuggerCapture inner;
        OutputDebugText("first line\n");
        OutputDebugText("");
        EXPECT_EQ(inner.Texts(), (std::vector<std::string>{"first line\n", ""}));
    }
    OutputDebugText("outer");
    DebuggerSink previous = nullptr;
    void* previousContext = nullptr;
    SetDebuggerSink(nullptr, nullptr, &previous, &previousContext);
    OutputDebugText("nowhere");
    SetDebuggerSink(previous, previousContext);
    OutputDebugText("back");
    EXPECT_EQ(outer.Texts(), (std::vector<std::string>{"outer", "back"}));
}

TEST(MemoryAccounting, KeepsThePeakAndItsCountNeverWrapsAndGivesSixCountersLowWordFirstThenTwoZeroWords) {
    MemoryAccounting accounting;
    accounting.OnAllocate(100);
    accounting.OnReallocate(100, 160);
    accounting.OnAllocate(50);
    accounting.OnRelease(160);
    accounting.OnAllocate(80);  // live 130 stays below the peak of 210
    EXPECT_EQ((std::vector<std::uint64_t>{accounting.PeakLiveBytes(), accounting.LiveCountAtPeak(),
                                          accounting.AllocatedBytes(), accounting.Allocations(),
                                          accounting.FreedBytes(), accounting.Frees()}),
              (std::vector<std::uint64_t>{210, 2, 390, 4, 260, 2}));
    // Blocks of 2 GiB + 3: the totals pass 4 GiB with 32-bit sizes too.
    for (int i = 0; i < 3; ++i) {
        accounting.OnAllocate(0x80000003u);
    }
    MemoryStats stats;
    std::fill(std::begin(stats.words), std::end(stats.words), 0xFFFFFFFFu);
    accounting.Read(stats);
    EXPECT_EQ(std::vector<std::uint32_t>(std::begin(stats.words), std::end(stats.words)),
              (std::vector<std::uint32_t>{0x8000008B, 1, 5, 0, 0x8000018F, 1, 7, 0, 260, 0, 2, 0, 0, 0}));

    // Releases of blocks counted nowhere never make the live figures wrap.
    MemoryAccounting late;
    late.OnRelease(100);       // allocated before the counting began
    late.OnReallocate(0, 16);  // a reallocation from no block counts a release of nothing
    late.OnRelease(16);
    late.OnAllocate(10);
    EXPECT_EQ(late.PeakLiveBytes(), 0u);
    EXPECT_EQ(late.LiveCountAtPeak(), 0u);
}

TEST(PageMemory, GivesZeroedWritablePagesAlignedToThePageSizeAlsoWhenTakenAgain) {
    std::vector<void*> pages;
    std::set<std::uintptr_t> granules;
    for (int i = 0; i < 64; ++i) {
        pages.push_back(AllocatePages(kPageSize));
        ASSERT_NE(pages.back(), nullptr);
        granules.insert(reinterpret_cast<std::uintptr_t>(pages.back()) / (64 * 1024));
        std::memset(pages.back(), 0xCD, kPageSize);
    }
#ifdef _WIN32
    // Windows maps memory in granules of 64 KiB: single pages must share them, or
    // a 32-bit process runs out of address space sixteen times too early.
    EXPECT_LE(granules.size(), 5u);
#endif
    FreePages(pages[3], kPageSize);
    pages[3] = AllocatePages(kPageSize);
    void* block = AllocatePages(3 * kPageSize);
    for (const auto& [at, size] : {std::pair{pages[3], kPageSize}, std::pair{block, 3 * kPageSize}}) {
        ASSERT_NE(at, nullptr);
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(at) % kPageSize, 0u);
        const auto* bytes = static_cast<const unsigned char*>(at);
        EXPECT_TRUE(std::all_of(bytes, bytes + size, [](unsigned char byte) { return byte == 0; }));
    }
    std::memset(block, 0xAB, 3 * kPageSize);
    FreePages(block, 3 * kPageSize);
    for (void* page : pages) {
        FreePages(page, kPageSize);
    }
}

// The executable's name is the log tests' (log_system_test.cpp).
TEST(CurrentThreadId, IsStableOnAThreadAndDiffersBetweenThreads) {
    const void* mine = CurrentThreadId();
    const void* other = nullptr;
    std::thread([&other] { other = CurrentThreadId(); }).join();
    EXPECT_EQ(CurrentThreadId(), mine);
    EXPECT_NE(other, mine);
}

// The bounds come from the precise system clock: time() may read a coarse
// one that lags it by a tick, and so fall a second behind at a boundary.
TEST(CurrentLocalTime, AgreesWithTheCLibrary) {
    const std::time_t before = std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
    const LocalTime now = CurrentLocalTime();
    const std::time_t after = std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
    std::tm parts{};
    parts.tm_year = now.year - 1900;
    parts.tm_mon = now.month - 1;
    parts.tm_mday = now.day;
    parts.tm_hour = now.hour;
    parts.tm_min = now.minute;
    parts.tm_sec = now.second;
    parts.tm_isdst = -1;
    const std::time_t seen = std::mktime(&parts);
    EXPECT_GE(seen, before);
    EXPECT_LE(seen, after);
    EXPECT_LE(now.millisecond, 999);
}

TEST(MonotonicNanoseconds, MovesWithTime) {
    const std::uint64_t first = MonotonicNanoseconds();
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
    EXPECT_GE(MonotonicNanoseconds() - first, 2'000'000u);
}

}  // namespace
}  // namespace wex::platform
