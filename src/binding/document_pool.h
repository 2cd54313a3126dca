#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "binding/page_store.h"

namespace wex {

// The allocator of one value tree. Records of up to kMaxPooledSize bytes come
// from pages of the page store, each page serving one size class; larger
// blocks come from the general heap. A released record goes back to its page's
// free list, and a page left without records goes back to the page store.
// Destroying the pool hands back every page and block at once: that is how a
// whole tree is released with its root, without walking it.
// Not thread-safe: a tree is used by one thread at a time.
class DocumentPool {
  public:
    static constexpr std::size_t kMaxPooledSize = 2016;

    explicit DocumentPool(PageStore& pages = PageStore::Instance()) : pages_(pages) {}
    ~DocumentPool();
    DocumentPool(const DocumentPool&) = delete;
    DocumentPool& operator=(const DocumentPool&) = delete;

    // 16-byte aligned. Throws std::bad_alloc when no memory is left.
    void* Allocate(std::size_t size);

    // size is the size that was given to Allocate.
    void Release(void* record, std::size_t size) noexcept;

    // What an allocation of size really provides, so growing arrays can use all of it.
    static std::size_t UsableSize(std::size_t size);

    std::size_t PageCount() const;
    std::size_t LargeBlockCount() const;

  private:
    struct Page;
    struct LargeBlock;
    static constexpr std::size_t kClassCount = 24;

    Page* AddPage(std::uint8_t sizeClass);
    void LinkWithRoom(Page* page) noexcept;
    void UnlinkWithRoom(Page* page) noexcept;
    void* AllocateLarge(std::size_t size);
    void ReleaseLarge(void* block) noexcept;

    PageStore& pages_;
    std::array<Page*, kClassCount> withRoom_{};
    Page* allPages_ = nullptr;
    LargeBlock* largeBlocks_ = nullptr;
};

}  // namespace wex
