#include "plugin/memory_accounting.h"

namespace wex {

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

void MemoryAccounting::UpdatePeak() {
    const std::uint64_t live = allocatedBytes_.load() - freedBytes_.load();
    std::uint64_t peak = peakLiveBytes_.load();
    while (live > peak) {
        if (peakLiveBytes_.compare_exchange_weak(peak, live)) {
            // The pair is not one atomic unit; a racing update may pair it with another peak.
            liveCountAtPeak_.store(allocations_.load() - frees_.load());
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

}  // namespace wex
