#include "platform/memory_accounting.h"

namespace wex::platform {

MemoryAccounting& MemoryAccounting::Library() {
    // Constant-initialised, so it is ready before the first allocation of the library.
    static constinit MemoryAccounting block;
    return block;
}

void MemoryAccounting::OnAllocate(std::size_t blockSize) {
    allocatedBytes_.fetch_add(blockSize);
    allocations_.fetch_add(1);
    UpdatePeak();
}

void MemoryAccounting::OnReallocate(std::size_t oldSize, std::size_t newSize) {
    freedBytes_.fetch_add(oldSize);
    frees_.fetch_add(1);
    allocatedBytes_.fetch_add(newSize);
    allocations_.fetch_add(1);
    UpdatePeak();
}

void MemoryAccounting::OnRelease(std::size_t blockSize) {
    freedBytes_.fetch_add(blockSize);
    frees_.fetch_add(1);
}

namespace {

// Counters that another thread may move between the two loads, or releases of
// blocks allocated before the counting began, must not make a difference wrap.
std::uint64_t Difference(std::uint64_t added, std::uint64_t taken) {
    return added > taken ? added - taken : 0;
}

}  // namespace

void MemoryAccounting::UpdatePeak() {
    // The freed total first: the allocated total read after it has counted
    // every block whose release the freed total holds.
    const std::uint64_t freed = freedBytes_.load();
    const std::uint64_t live = Difference(allocatedBytes_.load(), freed);
    std::uint64_t peak = peakLiveBytes_.load();
    while (live > peak) {
        if (peakLiveBytes_.compare_exchange_weak(peak, live)) {
            // The pair is not one atomic unit; a racing update may pair it with another peak.
            const std::uint64_t frees = frees_.load();
            liveCountAtPeak_.store(Difference(allocations_.load(), frees));
            return;
        }
    }
}

void MemoryAccounting::Read(MemoryStats& out) const {
    const std::uint64_t counters[6] = {peakLiveBytes_.load(), liveCountAtPeak_.load(), allocatedBytes_.load(),
                                       allocations_.load(),   freedBytes_.load(),      frees_.load()};
    for (int i = 0; i < 6; ++i) {
        out.words[2 * i] = static_cast<std::uint32_t>(counters[i]);
        out.words[2 * i + 1] = static_cast<std::uint32_t>(counters[i] >> 32);
    }
    out.words[12] = 0;
    out.words[13] = 0;
}

}  // namespace wex::platform
