#include <windows.h>

#include <cstdint>

#include "platform/thread_id.h"

namespace wex::platform {

const void* CurrentThreadId() {
    return reinterpret_cast<const void*>(static_cast<std::uintptr_t>(GetCurrentThreadId()));
}

}  // namespace wex::platform
