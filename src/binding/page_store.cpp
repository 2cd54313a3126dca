#include "binding/page_store.h"

#include "platform/page_memory.h"

namespace wex {

void* PageStore::AcquirePage() noexcept {
    {
        std::lock_guard lock(mutex_);
        if (cached_ != nullptr) {
            FreePage* page = cached_;
            cached_ = page->next;
            --cachedCount_;
            return page;
        }
    }
    return platform::AllocatePages(platform::kPageSize);
}

void PageStore::ReleasePage(void* page) noexcept {
    static_cast<FreePage*>(page)->next = nullptr;
    ReleaseChain(page);
}

void PageStore::ReleaseChain(void* first) noexcept {
    FreePage* excess = nullptr;
    {
        std::lock_guard lock(mutex_);
        for (auto* page = static_cast<FreePage*>(first); page != nullptr;) {
            FreePage* next = page->next;
            if (cachedCount_ < kMaxCachedPages) {
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
    // The OS calls happen outside the lock.
    while (excess != nullptr) {
        FreePage* next = excess->next;
        platform::FreePages(excess, platform::kPageSize);
        excess = next;
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
