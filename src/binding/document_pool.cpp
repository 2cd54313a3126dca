#include "binding/document_pool.h"

#include <cstdlib>
#include <new>

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

}  // namespace wex
