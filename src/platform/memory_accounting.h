#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>

#include "boundary/boundary.h"

namespace wex::platform {

// The size the C runtime gave a block that its allocator returned (at least
// the size asked for); 0 for null.
std::size_t AllocatedSize(void* block) noexcept;

// The library's allocation counters. One process-wide block counts every
// allocation the library makes (see allocation_wrappers.cpp); tests make
// blocks of their own. Any thread may update or read them.
class MemoryAccounting {
  public:
    static MemoryAccounting& Library();

    // blockSize is the runtime's size of the new block, 0 when allocation failed.
    void OnAllocate(std::size_t blockSize);
    // oldSize is 0 when there was no old block, newSize 0 when the result is null.
    void OnReallocate(std::size_t oldSize, std::size_t newSize);
    // For a non-null block only.
    void OnRelease(std::size_t blockSize);

    // Six counters, low word first, then two zero words.
    void Read(MemoryStats& out) const;

    std::uint64_t PeakLiveBytes() const { return peakLiveBytes_.load(); }
    std::uint64_t LiveCountAtPeak() const { return liveCountAtPeak_.load(); }
    std::uint64_t AllocatedBytes() const { return allocatedBytes_.load(); }
    std::uint64_t Allocations() const { return allocations_.load(); }
    std::uint64_t FreedBytes() const { return freedBytes_.load(); }
    std::uint64_t Frees() const { return frees_.load(); }

  private:
    void UpdatePeak();

    std::atomic<std::uint64_t> peakLiveBytes_{0};
    std::atomic<std::uint64_t> liveCountAtPeak_{0};
    std::atomic<std::uint64_t> allocatedBytes_{0};
    std::atomic<std::uint64_t> allocations_{0};
    std::atomic<std::uint64_t> freedBytes_{0};
    std::atomic<std::uint64_t> frees_{0};
};

}  // namespace wex::platform
