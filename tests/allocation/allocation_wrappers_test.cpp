// This binary is linked as the plug-in is: the runtime's allocation functions
// wrapped, the C++ runtime linked in, so every allocation of its own code
// passes through the library's counters.
#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <cstring>
#include <latch>
#include <thread>

#include "address_sanitizer.h"
#include "platform/memory_accounting.h"

namespace {

// Over-aligned, for the aligned forms of new and delete.
using AlignedBlock = struct alignas(64) { char bytes[64]; };

// Allocations, releases, bytes allocated, bytes released.
std::array<std::uint64_t, 4> Now() {
    const wex::platform::MemoryAccounting& library = wex::platform::MemoryAccounting::Library();
    return {library.Allocations(), library.Frees(), library.AllocatedBytes(), library.FreedBytes()};
}

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
// block counts a release of nothing: ten allocations and eleven releases.
void EveryForm() {
    std::free(Kept(std::malloc(100)));
    std::free(Kept(std::realloc(Kept(std::calloc(10, 10)), 1000)));
    std::free(Kept(std::realloc(Kept<void>(nullptr), 10)));
    std::free(Kept(strdup("text")));
    void* aligned = nullptr;
    EXPECT_EQ(posix_memalign(&aligned, 64, 100), 0);
    std::free(Kept(aligned));
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
    std::latch start(1), done(2), finish(1);
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
    std::jthread first(work), second(work);
    const auto before = Now();
    start.count_down();
    done.wait();
    const auto after = Now();
    finish.count_down();

    EXPECT_EQ(after[0] - before[0], 2 * kRounds * 10u);
    EXPECT_EQ(after[1] - before[1], 2 * kRounds * 11u);
    EXPECT_EQ(after[2] - before[2], after[3] - before[3]);
    EXPECT_GE(after[2] - before[2], 2 * kRounds * 1000u);
}

}  // namespace
