#include "platform/page_memory.h"

#include <windows.h>

namespace wex::platform {

// Each call reserves a whole allocation granule (64 KiB) of address space for
// what may be a single page; the page store's cache keeps the calls rare.
void* AllocatePages(std::size_t size) noexcept {
    return VirtualAlloc(nullptr, size, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
}

void FreePages(void* pages, std::size_t /*size*/) noexcept {
    VirtualFree(pages, 0, MEM_RELEASE);
}

}  // namespace wex::platform
