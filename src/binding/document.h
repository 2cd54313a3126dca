#pragma once

// The store that one value tree shares: the pool its heap parts come from,
// its interned strings and its blobs.

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "binding/page_store.h"
#include "binding/string_entry.h"

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

// The strings of one document, each stored once with a reference count: a hash
// set keyed by the FNV-1a hash of the bytes, starting with 8 buckets and
// growing to keep at most one entry per bucket on average.
class StringInternTable {
  public:
    explicit StringInternTable(DocumentPool& pool) : pool_(pool) {}
    StringInternTable(const StringInternTable&) = delete;
    StringInternTable& operator=(const StringInternTable&) = delete;

    // Counts one more reference on the entry of text, making it when there is
    // none; the empty text gives the shared empty entry. Throws std::bad_alloc.
    StringEntry* Intern(std::string_view text);
    // The same, for a text whose hash is already known.
    StringEntry* Intern(std::string_view text, std::uint32_t hash);
    // The same, for texts that mostly repeat, as member names do: a text met
    // lately is found in a small cache, by a slot that a few of its bytes
    // choose, without hashing it.
    StringEntry* InternRecent(std::string_view text);

    // Counts one reference off; the entry is removed when none is left.
    void Release(StringEntry* entry) noexcept;

    // Starts loading the bucket and first entry that a text of that hash will
    // meet, so that a walk interning many known texts waits on several at once.
    void Prefetch(std::uint32_t hash) const { __builtin_prefetch(buckets_[hash & (bucketCount_ - 1)]); }

    // Grows the table at once for that many more entries. Throws std::bad_alloc.
    void Reserve(std::uint32_t additional);

    std::uint32_t Count() const { return count_; }
    std::uint32_t BucketCount() const { return bucketCount_; }

  private:
    static constexpr unsigned kRecentBits = 8;
    static constexpr std::size_t kRecentSlots = std::size_t{1} << kRecentBits;

    void Rehash(std::uint32_t newCount);
    static std::size_t RecentSlot(std::string_view text);

    DocumentPool& pool_;
    // Entries met lately through InternRecent, made on its first call; an
    // entry leaves its slot when it is removed.
    StringEntry** recent_ = nullptr;
    StringEntry* initialBuckets_[8] = {};
    StringEntry** buckets_ = initialBuckets_;
    std::uint32_t bucketCount_ = 8;
    std::uint32_t count_ = 0;
};

// The bytes of a "blob" node. The vector keeps its bytes on the general heap so
// that a blob can be moved in, so the document lists its blobs to free them.
struct BlobRecord {
    BlobRecord* previous;
    BlobRecord* next;
    std::vector<std::uint8_t> bytes;
};

// The shared store of one value tree: its interned strings and the pool of its
// heap parts. Made by the root when the tree first needs heap memory and
// destroyed with the root, which releases the whole tree at once.
class BindingDocument {
  public:
    BindingDocument() = default;
    ~BindingDocument();
    BindingDocument(const BindingDocument&) = delete;
    BindingDocument& operator=(const BindingDocument&) = delete;

    DocumentPool& Pool() { return pool_; }
    StringInternTable& Strings() { return strings_; }

    // Throws std::bad_alloc; bytes is then left as it was.
    BlobRecord* NewBlob(std::vector<std::uint8_t>&& bytes);
    void DeleteBlob(BlobRecord* blob) noexcept;

  private:
    DocumentPool pool_;
    StringInternTable strings_{pool_};
    BlobRecord* blobs_ = nullptr;
};

}  // namespace wex
