// Linked into the shared library only, beside allocation_wrappers.cpp:
// the aligned allocation functions that the C library has on POSIX systems
// (the C++ runtime's aligned new goes through aligned_alloc). Windows has none
// of them.
#include <cstddef>

#include "platform/memory_accounting.h"

extern "C" {
int __real_posix_memalign(void** block, std::size_t alignment, std::size_t size);
void* __real_aligned_alloc(std::size_t alignment, std::size_t size);

int __wrap_posix_memalign(void** block, std::size_t alignment, std::size_t size) {
    const int result = __real_posix_memalign(block, alignment, size);
    wex::platform::MemoryAccounting::Library().OnAllocate(wex::platform::AllocatedSize(result == 0 ? *block : nullptr));
    return result;
}

void* __wrap_aligned_alloc(std::size_t alignment, std::size_t size) {
    void* block = __real_aligned_alloc(alignment, size);
    wex::platform::MemoryAccounting::Library().OnAllocate(wex::platform::AllocatedSize(block));
    return block;
}
}
