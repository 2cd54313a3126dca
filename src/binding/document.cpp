#include "binding/document.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>
#include <utility>

#include "binding/fnv1a.h"
#include "platform/page_memory.h"

namespace wex {

struct alignas(16) DocumentPool::LargeBlock {
    LargeBlock* previous;
    LargeBlock* next;
};

DocumentPool::~DocumentPool() {
    if (allPages_ != nullptr) {
        pages_.ReleaseChain(allPages_);
    }
    for (LargeBlock* block = largeBlocks_; block != nullptr;) {
        LargeBlock* next = block->next;
        std::free(block);
        block = next;
    }
}

void* DocumentPool::AllocateElsewhere(std::size_t size) {
    return size > kMaxPooledSize ? AllocateLarge(size) : Take(AddPage(ClassOf(size)));
}

void DocumentPool::Release(void* record, std::size_t size) noexcept {
    if (size > kMaxPooledSize) {
        ReleaseLarge(record);
        return;
    }
    auto* page = reinterpret_cast<Page*>(reinterpret_cast<std::uintptr_t>(record) & ~(platform::kPageSize - 1));
    *static_cast<void**>(record) = page->freeRecords;
    page->freeRecords = record;
    if (page->used-- == page->capacity) {
        LinkWithRoom(page);
    }
    if (page->used == 0) {
        UnlinkWithRoom(page);
        (page->previous != nullptr ? page->previous->next : allPages_) = page->next;
        if (page->next != nullptr) {
            page->next->previous = page->previous;
        }
        pages_.ReleasePage(page);
    }
}

std::size_t DocumentPool::PageCount() const {
    std::size_t count = 0;
    for (const Page* page = allPages_; page != nullptr; page = page->next) {
        ++count;
    }
    return count;
}

std::size_t DocumentPool::LargeBlockCount() const {
    std::size_t count = 0;
    for (const LargeBlock* block = largeBlocks_; block != nullptr; block = block->next) {
        ++count;
    }
    return count;
}

DocumentPool::Page* DocumentPool::AddPage(std::uint8_t sizeClass) {
    void* memory = pages_.AcquirePage();
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    const std::uint16_t recordSize = kPoolRecordSizes[sizeClass];
    const auto capacity = static_cast<std::uint16_t>((platform::kPageSize - kPageHeaderSize) / recordSize);
    auto* page =
        new (memory) Page{allPages_, nullptr, nullptr, nullptr, nullptr, 0, 0, capacity, recordSize, sizeClass};
    if (allPages_ != nullptr) {
        allPages_->previous = page;
    }
    allPages_ = page;
    LinkWithRoom(page);
    return page;
}

void DocumentPool::LinkWithRoom(Page* page) noexcept {
    Page*& head = withRoom_[page->sizeClass];
    page->previousWithRoom = nullptr;
    page->nextWithRoom = head;
    if (head != nullptr) {
        head->previousWithRoom = page;
    }
    head = page;
}

void DocumentPool::UnlinkWithRoom(Page* page) noexcept {
    (page->previousWithRoom != nullptr ? page->previousWithRoom->nextWithRoom : withRoom_[page->sizeClass]) =
        page->nextWithRoom;
    if (page->nextWithRoom != nullptr) {
        page->nextWithRoom->previousWithRoom = page->previousWithRoom;
    }
    page->previousWithRoom = nullptr;
    page->nextWithRoom = nullptr;
}

void* DocumentPool::AllocateLarge(std::size_t size) {
    void* memory = std::malloc(sizeof(LargeBlock) + size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    auto* block = new (memory) LargeBlock{nullptr, largeBlocks_};
    if (largeBlocks_ != nullptr) {
        largeBlocks_->previous = block;
    }
    largeBlocks_ = block;
    return block + 1;
}

void DocumentPool::ReleaseLarge(void* memory) noexcept {
    LargeBlock* block = static_cast<LargeBlock*>(memory) - 1;
    (block->previous != nullptr ? block->previous->next : largeBlocks_) = block->next;
    if (block->next != nullptr) {
        block->next->previous = block->previous;
    }
    std::free(block);
}

namespace {

template <class Word>
Word LoadBytes(const char* bytes) {
    Word word;
    std::memcpy(&word, bytes, sizeof word);
    return word;
}

struct EmptyEntryStorage {
    StringEntry entry;
    char text;
};
constinit EmptyEntryStorage emptyEntry{{nullptr, 0, 2166136261u, 0, 0}, '\0'};
static_assert(offsetof(EmptyEntryStorage, text) == sizeof(StringEntry));

// Whether two texts of the same length hold the same bytes. Names and short
// values are found far more often than they are added, so short texts are
// compared inline, not by a library call: up to 16 bytes with two
// overlapping loads of each.
bool SameBytes(const char* first, const char* second, std::size_t length) {
    if (length > 16) {
        return std::memcmp(first, second, length) == 0;
    }
    if (length >= 8) {
        return LoadBytes<std::uint64_t>(first) == LoadBytes<std::uint64_t>(second) &&
               LoadBytes<std::uint64_t>(first + length - 8) == LoadBytes<std::uint64_t>(second + length - 8);
    }
    for (std::size_t index = 0; index < length; ++index) {
        if (first[index] != second[index]) {
            return false;
        }
    }
    return true;
}

// Width bytes at the start and width at the end of a text into memory apart
// from it: the whole text for any length from width to twice width, in four
// moves that the compiler makes inline.
template <std::size_t Width>
void CopyEnds(char* target, const char* source, std::size_t length) {
    std::memcpy(target, source, Width);
    std::memcpy(target + length - Width, source + length - Width, Width);
}

// Copies the bytes of a text into a new entry. Most texts are short, and a
// library call costs more than their bytes.
void CopyBytes(char* target, const char* source, std::size_t length) {
    if (length > 32) {
        std::memcpy(target, source, length);
    } else if (length > 16) {
        CopyEnds<16>(target, source, length);
    } else if (length >= 8) {
        CopyEnds<8>(target, source, length);
    } else if (length >= 4) {
        CopyEnds<4>(target, source, length);
    } else {
        for (std::size_t index = 0; index < length; ++index) {
            target[index] = source[index];
        }
    }
}

std::size_t EntrySize(std::size_t length) {
    return sizeof(StringEntry) + length + 1;
}

}  // namespace

StringEntry* StringEntry::Empty() {
    return &emptyEntry.entry;
}

StringEntry* StringInternTable::Intern(std::string_view text) {
    return text.empty() ? StringEntry::Empty() : Intern(text, Fnv1a32(text));
}

StringEntry* StringInternTable::Intern(std::string_view text, std::uint32_t hash) {
    if (text.empty()) {
        return StringEntry::Empty();
    }
    StringEntry** bucket = &buckets_[hash & (bucketCount_ - 1)];
    for (StringEntry* entry = *bucket; entry != nullptr; entry = entry->next) {
        if (entry->hash == hash && entry->length == text.size() && SameBytes(entry->Text(), text.data(), text.size())) {
            ++entry->references;
            return entry;
        }
    }
    if (text.size() > std::numeric_limits<std::uint32_t>::max() - sizeof(StringEntry) - 1) {
        throw std::bad_alloc();
    }
    auto* entry = static_cast<StringEntry*>(pool_.Allocate(EntrySize(text.size())));
    entry->prefix = TextPrefix(text);
    entry->hash = hash;
    entry->references = 1;
    entry->length = static_cast<std::uint32_t>(text.size());
    CopyBytes(entry->Text(), text.data(), text.size());
    entry->Text()[text.size()] = '\0';
    if (count_ + 1 > bucketCount_) {
        try {
            Rehash(bucketCount_ * 2);
        } catch (const std::bad_alloc&) {
            // Past the load factor is still a working table.
        }
        bucket = &buckets_[hash & (bucketCount_ - 1)];
    }
    entry->next = *bucket;
    *bucket = entry;
    ++count_;
    return entry;
}

// The length and the first and last four bytes, spread by one multiply: cheap
// to read, and enough to tell apart the hundred or so names that the records
// of a document repeat.
std::size_t StringInternTable::RecentSlot(std::string_view text) {
    std::uint32_t bytes = static_cast<std::uint32_t>(text.size());
    if (text.size() >= 4) {
        bytes ^= LoadBytes<std::uint32_t>(text.data()) + 31 * LoadBytes<std::uint32_t>(text.data() + text.size() - 4);
    } else {
        for (const char byte : text) {
            bytes = bytes * 31 + static_cast<unsigned char>(byte);
        }
    }
    return (bytes * 0x9E3779B1u) >> (32 - kRecentBits);
}

StringEntry* StringInternTable::InternRecent(std::string_view text) {
    if (text.empty()) {
        return StringEntry::Empty();
    }
    if (recent_ == nullptr) {
        recent_ = static_cast<StringEntry**>(pool_.Allocate(kRecentSlots * sizeof(StringEntry*)));
        std::fill(recent_, recent_ + kRecentSlots, nullptr);
    }
    StringEntry*& recent = recent_[RecentSlot(text)];
    if (recent != nullptr && recent->length == text.size() && SameBytes(recent->Text(), text.data(), text.size())) {
        ++recent->references;
        return recent;
    }
    recent = Intern(text);
    return recent;
}

void StringInternTable::Release(StringEntry* entry) noexcept {
    if (entry == StringEntry::Empty() || --entry->references != 0) {
        return;
    }
    if (recent_ != nullptr) {
        if (StringEntry*& recent = recent_[RecentSlot(entry->View())]; recent == entry) {
            recent = nullptr;
        }
    }
    StringEntry** link = &buckets_[entry->hash & (bucketCount_ - 1)];
    while (*link != entry) {
        link = &(*link)->next;
    }
    *link = entry->next;
    --count_;
    pool_.Release(entry, EntrySize(entry->length));
}

void StringInternTable::Reserve(std::uint32_t additional) {
    std::uint32_t wanted = bucketCount_;
    while (wanted < count_ + std::uint64_t{additional} && wanted < (1u << 31)) {
        wanted *= 2;
    }
    if (wanted != bucketCount_) {
        Rehash(wanted);
    }
}

void StringInternTable::Rehash(std::uint32_t newCount) {
    auto** newBuckets = static_cast<StringEntry**>(pool_.Allocate(newCount * sizeof(StringEntry*)));
    std::fill(newBuckets, newBuckets + newCount, nullptr);
    // The entries lie all over the pool: asking for those of later buckets
    // early lets their loads overlap instead of waiting one by one.
    constexpr std::uint32_t kPrefetchDistance = 8;
    for (std::uint32_t index = 0; index < bucketCount_; ++index) {
        if (index + kPrefetchDistance < bucketCount_) {
            __builtin_prefetch(buckets_[index + kPrefetchDistance]);
        }
        for (StringEntry* entry = buckets_[index]; entry != nullptr;) {
            StringEntry* next = entry->next;
            StringEntry*& bucket = newBuckets[entry->hash & (newCount - 1)];
            entry->next = bucket;
            bucket = entry;
            entry = next;
        }
    }
    if (buckets_ != initialBuckets_) {
        pool_.Release(buckets_, bucketCount_ * sizeof(StringEntry*));
    }
    buckets_ = newBuckets;
    bucketCount_ = newCount;
}

BindingDocument::~BindingDocument() {
    for (BlobRecord* blob = blobs_; blob != nullptr;) {
        BlobRecord* next = blob->next;
        blob->~BlobRecord();
        blob = next;
    }
}

BlobRecord* BindingDocument::NewBlob(std::vector<std::uint8_t>&& bytes) {
    void* memory = pool_.Allocate(sizeof(BlobRecord));
    auto* blob = new (memory) BlobRecord{nullptr, blobs_, std::move(bytes)};
    if (blobs_ != nullptr) {
        blobs_->previous = blob;
    }
    blobs_ = blob;
    return blob;
}

void BindingDocument::DeleteBlob(BlobRecord* blob) noexcept {
    (blob->previous != nullptr ? blob->previous->next : blobs_) = blob->next;
    if (blob->next != nullptr) {
        blob->next->previous = blob->previous;
    }
    blob->~BlobRecord();
    pool_.Release(blob, sizeof(BlobRecord));
}

}  // namespace wex
