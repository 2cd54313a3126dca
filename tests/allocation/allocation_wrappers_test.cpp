// This binary is linked as the plug-in is: the runtime's allocation functions
// wrapped, the C++ runtime linked in, so every allocation of its own code
// passes through the library's counters.
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <latch>
#include <thread>

#include "address_sanitizer.h"
#include "platform/memory_accounting.h"

namespace wex {
namespace {

struct Counts {
    std::uint64_t allocations;
    std::uint64_t frees;
    std::uint64_t allocatedBytes;
    std::uint64_t freedBytes;
};

Counts Now() {
    const platform::MemoryAccounting& library = platform::MemoryAccounting::Library();
    return {library.Allocations(), library.Frees(), library.AllocatedBytes(), library.FreedBytes()};
}

struct alignas(64) AlignedBlock {
    char bytes[64];
};

// Hides a pointer from the compiler, which would otherwise drop an allocation
// paired with its release or turn a reallocation of null into an allocation.
template <class T>
T* Kept(T* block) {
    asm volatile("" : "+r"(block) : : "memory");
    return block;
}

// Allocates and releases a block through every form the runtime offers.
// Each form counts one allocation and one release, except the reallocations:
// growing a block counts a release and an allocation, and growing from no
// block counts a release of nothing.
constexpr std::uint64_t kAllocationsPerRound = 10;
constexpr std::uint64_t kFreesPerRound = 11;

void EveryForm() {
    std::free(Kept(std::malloc(100)));
    std::free(Kept(std::realloc(Kept(std::calloc(10, 10)), 1000)));
    std::free(Kept(std::realloc(Kept<void>(nullptr), 10)));
    std::free(Kept(strdup("text")));
    void* aligned = nullptr;
    if (posix_memalign(&aligned, 64, 100) == 0) {
        std::free(Kept(aligned));
    }
    std::free(Kept(std::aligned_alloc(64, 128)));
    delete Kept(new int(1));
    delete[] Kept(new int[10]);
    delete Kept(new AlignedBlock);
    std::free(Kept<void>(nullptr));
}

TEST(AllocationWrappers, CountEveryFormOnEveryThread) {
    if (tav::host::kUnderAddressSanitizer) {
        GTEST_SKIP() << "the sanitizer's operator new serves the program before the counting wrappers see a call";
    }
    constexpr int kRounds = 1000;
    std::latch start(1);
    std::latch done(2);
    std::latch finish(1);
    const auto work = [&] {
        start.wait();
        for (int round = 0; round < kRounds; ++round) {
            EveryForm();
        }
        done.count_down();
        finish.wait();
    };
    // The threads exist before the first count and end after the last one,
    // so that only their rounds fall in between.
    std::thread first(work);
    std::thread second(work);
    const Counts before = Now();
    start.count_down();
    done.wait();
    const Counts after = Now();
    finish.count_down();
    first.join();
    second.join();

    EXPECT_EQ(after.allocations - before.allocations, 2 * kRounds * kAllocationsPerRound);
    EXPECT_EQ(after.frees - before.frees, 2 * kRounds * kFreesPerRound);
    EXPECT_EQ(after.allocatedBytes - before.allocatedBytes, after.freedBytes - before.freedBytes);
    EXPECT_GE(after.allocatedBytes - before.allocatedBytes, 2 * kRounds * 1000u);
}

}  // namespace
}  // namespace wex
