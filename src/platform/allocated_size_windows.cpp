#include <malloc.h>

#include "platform/allocated_size.h"

namespace wex::platform {

std::size_t AllocatedSize(void* block) noexcept {
    return block != nullptr ? _msize(block) : 0;
}

}  // namespace wex::platform
