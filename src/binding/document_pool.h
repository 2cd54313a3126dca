#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "binding/page_store.h"

namespace wex {

// The record sizes of a document pool's size classes: each is the largest
// multiple of 16 of which a page holds a given count, so little of a page is
// left unused.
inline constexpr std::array<std::uint16_t, 24> kPoolRecordSizes = {16,  32,  48,  64,  80,  96,   112,  128,
                                                                   144, 160, 192, 224, 256, 288,  336,  400,
                                                                   448, 496, 576, 672, 800, 1008, 1344, 2016};

// The size class of each size, in units of 16 bytes rounded up.
inline constexpr auto kPoolClassOfUnits = [] {
    std::array<std::uint8_t, kPoolRecordSizes.back() / 16 + 1> classes{};
    std::uint8_t sizeClass = 0;
    for (std::size_t units = 0; units < classes.size(); ++units) {
        while (kPoolRecordSizes[sizeClass] < units * 16) {
            ++sizeClass;
        }
        classes[units] = sizeClass;
    }
    return classes;
}();

// The allocator of one value tree. Records of up to kMaxPooledSize bytes come
// from pages of the page store, each page serving one size class; larger
// blocks come from the general heap. A released record goes back to its page's
// free list, and a page left without records goes back to the page store.
// Destroying the pool hands back every page and block at once: that is how a
// whole tree is released with its root, without walking it.
// Not thread-safe: a tree is used by one thread at a time.
class DocumentPool {
  public:
    static constexpr std::size_t kMaxPooledSize = kPoolRecordSizes.back();

    explicit DocumentPool(PageStore& pages = PageStore::Instance()) : pages_(pages) {}
    ~DocumentPool();
    DocumentPool(const DocumentPool&) = delete;
    DocumentPool& operator=(const DocumentPool&) = delete;

    // 16-byte aligned. Throws std::bad_alloc when no memory is left.
    // Inline where a page of the size class has room, as it mostly has.
    void* Allocate(std::size_t size) {
        if (size <= kMaxPooledSize) {
            if (Page* page = withRoom_[ClassOf(size)]; page != nullptr) {
                return Take(page);
            }
        }
        return AllocateElsewhere(size);
    }

    // size is the size that was given to Allocate.
    void Release(void* record, std::size_t size) noexcept;

    // What an allocation of size really provides, so growing arrays can use all of it.
    static std::size_t UsableSize(std::size_t size) {
        return size > kMaxPooledSize ? size : kPoolRecordSizes[ClassOf(size)];
    }

    std::size_t PageCount() const;
    std::size_t LargeBlockCount() const;

  private:
    struct Page {
        Page* next;  // every page of the pool, linked through its first word as the page store takes them back
        Page* previous;
        Page* nextWithRoom;  // the pages of this size class that have a free record
        Page* previousWithRoom;
        void* freeRecords;  // each holds a pointer to the next
        std::uint16_t used;
        std::uint16_t carved;    // records handed out at least once; the rest lie untouched
        std::uint16_t capacity;  // records the page holds
        std::uint16_t recordSize;
        std::uint8_t sizeClass;
    };
    struct LargeBlock;
    static constexpr std::size_t kClassCount = kPoolRecordSizes.size();

    static std::uint8_t ClassOf(std::size_t size) { return kPoolClassOfUnits[(size + 15) / 16]; }
    void* Take(Page* page) {
        void* record = page->freeRecords;
        if (record != nullptr) {
            page->freeRecords = *static_cast<void**>(record);
        } else {
            record =
                reinterpret_cast<unsigned char*>(page) + kPageHeaderSize + std::size_t{page->carved} * page->recordSize;
            ++page->carved;
        }
        if (++page->used == page->capacity) {
            UnlinkWithRoom(page);
        }
        return record;
    }
    void* AllocateElsewhere(std::size_t size);
    Page* AddPage(std::uint8_t sizeClass);
    void LinkWithRoom(Page* page) noexcept;
    void UnlinkWithRoom(Page* page) noexcept;
    void* AllocateLarge(std::size_t size);
    void ReleaseLarge(void* block) noexcept;

    static constexpr std::size_t kPageHeaderSize = 64;
    static_assert(sizeof(Page) <= kPageHeaderSize);

    PageStore& pages_;
    std::array<Page*, kClassCount> withRoom_{};
    Page* allPages_ = nullptr;
    LargeBlock* largeBlocks_ = nullptr;
};

}  // namespace wex
