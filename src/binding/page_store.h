#pragma once

#include <cstddef>
#include <mutex>

namespace wex {

// The process-wide source of the pages that value trees allocate from. Pages
// handed back are cached, so building and dropping trees does not call the OS
// each time. The cache always keeps up to keptPages; beyond that it keeps
// pages only while trees go on using them: when a tree hands its pages back,
// the cached pages that no tree took since the previous tree came back go to
// the OS first. So a run of large trees reuses its pages, and one large tree
// among small ones leaves no more than keptPages behind once the next tree is
// dropped. The cache never holds more than maxCachedPages.
// Any thread may call it; one mutex guards it.
class PageStore {
  public:
    static constexpr std::size_t kKeptPages = 1024;        // 4 MiB
    static constexpr std::size_t kMaxCachedPages = 65536;  // 256 MiB

    PageStore() = default;
    PageStore(std::size_t keptPages, std::size_t maxCachedPages)
        : keptPages_(keptPages), maxCachedPages_(maxCachedPages) {}
    ~PageStore();
    PageStore(const PageStore&) = delete;
    PageStore& operator=(const PageStore&) = delete;

    // One page of platform::kPageSize bytes, aligned to its size; null when the
    // OS has none to give.
    void* AcquirePage() noexcept;

    // A single page that a tree no longer needs, while the tree lives on.
    void ReleasePage(void* page) noexcept;

    // The pages of a dropped tree, each holding a pointer to the next in its
    // first bytes, under one lock; trims the idle pages first, as above.
    void ReleaseChain(void* first) noexcept;

    std::size_t CachedPages() const;

    // Never destroyed: trees held in static objects may release pages at exit.
    static PageStore& Instance();

  private:
    struct FreePage {
        FreePage* next;
    };

    // Caches the chain up to the bound and strings the rest onto excess.
    void Keep(FreePage* chain, FreePage*& excess) noexcept;
    static void FreeToOs(FreePage* chain) noexcept;

    const std::size_t keptPages_ = kKeptPages;
    const std::size_t maxCachedPages_ = kMaxCachedPages;
    mutable std::mutex mutex_;
    FreePage* cached_ = nullptr;
    std::size_t cachedCount_ = 0;
    std::size_t fewestSinceLastTree_ = 0;  // the least cachedCount_ since a chain came back
};

}  // namespace wex
