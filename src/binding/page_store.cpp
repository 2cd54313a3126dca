#include "binding/page_store.h"

#include <algorithm>

#include "platform/page_memory.h"

namespace wex {

PageStore::~PageStore() {
    FreeToOs(cached_);
}

void* PageStore::AcquirePage() noexcept {
    {
        std::lock_guard lock(mutex_);
        if (cached_ != nullptr) {
            FreePage* page = cached_;
            cached_ = page->next;
            --cachedCount_;
            fewestSinceLastTree_ = std::min(fewestSinceLastTree_, cachedCount_);
            return page;
        }
    }
    return platform::AllocatePages(platform::kPageSize);
}

void PageStore::ReleasePage(void* page) noexcept {
    auto* single = static_cast<FreePage*>(page);
    single->next = nullptr;
    FreePage* excess = nullptr;
    {
        std::lock_guard lock(mutex_);
        Keep(single, excess);
    }
    FreeToOs(excess);
}

void PageStore::ReleaseChain(void* first) noexcept {
    FreePage* excess = nullptr;
    {
        std::lock_guard lock(mutex_);
        for (std::size_t idle = fewestSinceLastTree_; idle > keptPages_; --idle) {
            FreePage* page = cached_;
            cached_ = page->next;
            --cachedCount_;
            page->next = excess;
            excess = page;
        }
        Keep(static_cast<FreePage*>(first), excess);
        fewestSinceLastTree_ = cachedCount_;
    }
    // The OS calls happen outside the lock.
    FreeToOs(excess);
}

void PageStore::Keep(FreePage* chain, FreePage*& excess) noexcept {
    for (FreePage* page = chain; page != nullptr;) {
        FreePage* next = page->next;
        if (cachedCount_ < maxCachedPages_) {
            page->next = cached_;
            cached_ = page;
            ++cachedCount_;
        } else {
            page->next = excess;
            excess = page;
        }
        page = next;
    }
}

void PageStore::FreeToOs(FreePage* chain) noexcept {
    while (chain != nullptr) {
        FreePage* next = chain->next;
        platform::FreePages(chain, platform::kPageSize);
        chain = next;
    }
}

std::size_t PageStore::CachedPages() const {
    std::lock_guard lock(mutex_);
    return cachedCount_;
}

PageStore& PageStore::Instance() {
    static PageStore* const store = new PageStore();
    return *store;
}

}  // namespace wex
