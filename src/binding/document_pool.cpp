#include "binding/document_pool.h"

#include <cstdlib>
#include <new>

#include "platform/page_memory.h"

namespace wex {

namespace {

constexpr std::size_t kPageHeaderSize = 64;
constexpr std::size_t kPageRoom = platform::kPageSize - kPageHeaderSize;

// Each size is the largest multiple of 16 of which a page holds a given count,
// so little of a page is left unused.
constexpr std::array<std::uint16_t, 24> kClassSizes = {16,  32,  48,  64,  80,  96,  112, 128, 144, 160,  192,  224,
                                                       256, 288, 336, 400, 448, 496, 576, 672, 800, 1008, 1344, 2016};

constexpr auto kClassOfSize = [] {
    std::array<std::uint8_t, DocumentPool::kMaxPooledSize / 16 + 1> classes{};
    std::uint8_t sizeClass = 0;
    for (std::size_t units = 0; units < classes.size(); ++units) {
        while (kClassSizes[sizeClass] < units * 16) {
            ++sizeClass;
        }
        classes[units] = sizeClass;
    }
    return classes;
}();

std::uint16_t RecordsPerPage(std::uint8_t sizeClass) {
    return kPageRoom / kClassSizes[sizeClass];
}

}  // namespace

struct DocumentPool::Page {
    Page* previous;  // every page of the pool
    Page* next;
    Page* previousWithRoom;  // the pages of this size class that have a free record
    Page* nextWithRoom;
    void* freeRecords;  // each holds a pointer to the next
    std::uint16_t used;
    std::uint16_t carved;  // records handed out at least once; the rest lie untouched
    std::uint8_t sizeClass;

    unsigned char* Records() { return reinterpret_cast<unsigned char*>(this) + kPageHeaderSize; }
};
static_assert(kClassSizes.back() == DocumentPool::kMaxPooledSize);

struct alignas(16) DocumentPool::LargeBlock {
    LargeBlock* previous;
    LargeBlock* next;
};

DocumentPool::~DocumentPool() {
    // Chain the pages through their first word, as the page store expects.
    Page* first = allPages_;
    for (Page* page = allPages_; page != nullptr;) {
        Page* next = page->next;
        *reinterpret_cast<void**>(page) = next;
        page = next;
    }
    if (first != nullptr) {
        pages_.ReleaseChain(first);
    }
    for (LargeBlock* block = largeBlocks_; block != nullptr;) {
        LargeBlock* next = block->next;
        std::free(block);
        block = next;
    }
}

void* DocumentPool::Allocate(std::size_t size) {
    if (size > kMaxPooledSize) {
        return AllocateLarge(size);
    }
    const std::uint8_t sizeClass = kClassOfSize[(size + 15) / 16];
    Page* page = withRoom_[sizeClass] != nullptr ? withRoom_[sizeClass] : AddPage(sizeClass);
    void* record;
    if (page->freeRecords != nullptr) {
        record = page->freeRecords;
        page->freeRecords = *static_cast<void**>(record);
    } else {
        record = page->Records() + std::size_t{page->carved} * kClassSizes[sizeClass];
        ++page->carved;
    }
    if (++page->used == RecordsPerPage(sizeClass)) {
        UnlinkWithRoom(page);
    }
    return record;
}

void DocumentPool::Release(void* record, std::size_t size) noexcept {
    if (size > kMaxPooledSize) {
        ReleaseLarge(record);
        return;
    }
    auto* page = reinterpret_cast<Page*>(reinterpret_cast<std::uintptr_t>(record) & ~(platform::kPageSize - 1));
    *static_cast<void**>(record) = page->freeRecords;
    page->freeRecords = record;
    if (page->used-- == RecordsPerPage(page->sizeClass)) {
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

std::size_t DocumentPool::UsableSize(std::size_t size) {
    return size > kMaxPooledSize ? size : kClassSizes[kClassOfSize[(size + 15) / 16]];
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
    static_assert(sizeof(Page) <= kPageHeaderSize);
    void* memory = pages_.AcquirePage();
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    auto* page = new (memory) Page{nullptr, allPages_, nullptr, nullptr, nullptr, 0, 0, sizeClass};
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

}  // namespace wex
