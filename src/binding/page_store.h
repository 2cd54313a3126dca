#pragma once

#include <cstddef>
#include <mutex>

namespace wex {

// The process-wide source of the pages that value trees allocate from. Pages
// handed back are cached up to a limit, so building and dropping trees does not
// call the OS each time; beyond the limit they go back to the OS.
// Any thread may call it; one mutex guards it.
class PageStore {
  public:
    static constexpr std::size_t kMaxCachedPages = 1024;

    // One page of platform::kPageSize bytes, aligned to its size; null when the
    // OS has none to give.
    void* AcquirePage() noexcept;

    void ReleasePage(void* page) noexcept;

    // Releases a chain of pages, each holding a pointer to the next in its
    // first bytes, under one lock.
    void ReleaseChain(void* first) noexcept;

    std::size_t CachedPages() const;

    // Never destroyed: trees held in static objects may release pages at exit.
    static PageStore& Instance();

  private:
    struct FreePage {
        FreePage* next;
    };

    mutable std::mutex mutex_;
    FreePage* cached_ = nullptr;
    std::size_t cachedCount_ = 0;
};

}  // namespace wex
