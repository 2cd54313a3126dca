#pragma once

#include <cstddef>

namespace wex::platform {

// The size the C runtime gave a block that its allocator returned (at least
// the size asked for); 0 for null.
std::size_t AllocatedSize(void* block) noexcept;

}  // namespace wex::platform
