#pragma once

#include <cstddef>

namespace wex::platform {

// The unit in which value trees take memory from the OS.
inline constexpr std::size_t kPageSize = 4096;

// Maps size bytes (a multiple of kPageSize) of zero-filled read-write memory,
// aligned to kPageSize. Null when the OS refuses.
void* AllocatePages(std::size_t size) noexcept;

// Unmaps memory that AllocatePages returned, given the same size.
void FreePages(void* pages, std::size_t size) noexcept;

}  // namespace wex::platform
