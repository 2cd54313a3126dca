// Linked into the shared library only. The link wraps the runtime's
// allocation functions (-Wl,--wrap=...), so every allocation made by code
// inside the library (its own, the statically linked C++ runtime's and
// libyaml's) passes through these functions and the library's counters,
// while the host's allocations do not. The aligned allocation functions that
// only some systems have are wrapped in aligned_allocation_wrappers_posix.cpp.
#include <cstdlib>
#include <cstring>

#include "platform/memory_accounting.h"

extern "C" {
void* __real_malloc(std::size_t size);
void* __real_calloc(std::size_t count, std::size_t size);
void* __real_realloc(void* block, std::size_t size);
void __real_free(void* block);
char* __real_strdup(const char* text);
}

namespace {

std::size_t BlockSize(void* block) {
    return wex::platform::AllocatedSize(block);
}

void* CountAllocation(void* block) {
    wex::platform::MemoryAccounting::Library().OnAllocate(BlockSize(block));
    return block;
}

}  // namespace

extern "C" {

void* __wrap_malloc(std::size_t size) {
    return CountAllocation(__real_malloc(size));
}

void* __wrap_calloc(std::size_t count, std::size_t size) {
    return CountAllocation(__real_calloc(count, size));
}

char* __wrap_strdup(const char* text) {
    return static_cast<char*>(CountAllocation(__real_strdup(text)));
}

void* __wrap_realloc(void* block, std::size_t size) {
    const std::size_t oldSize = BlockSize(block);
    void* result = __real_realloc(block, size);
    wex::platform::MemoryAccounting::Library().OnReallocate(oldSize, BlockSize(result));
    return result;
}

void __wrap_free(void* block) {
    if (block == nullptr) {
        return;
    }
    const std::size_t size = BlockSize(block);
    __real_free(block);
    wex::platform::MemoryAccounting::Library().OnRelease(size);
}

}  // extern "C"
