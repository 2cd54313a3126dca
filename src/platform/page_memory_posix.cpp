#include "platform/page_memory.h"

#include <sys/mman.h>

namespace wex::platform {

void* AllocatePages(std::size_t size) noexcept {
    void* pages = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    return pages == MAP_FAILED ? nullptr : pages;
}

void FreePages(void* pages, std::size_t size) noexcept {
    munmap(pages, size);
}

}  // namespace wex::platform
