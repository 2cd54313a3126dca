#include <pthread.h>
#include <unistd.h>

#include <cstdint>

#include "platform/thread_id.h"

namespace wex::platform {

const void* CurrentThreadId() {
#ifdef __linux__
    // The kernel's id, the one that debuggers and process tools show.
    return reinterpret_cast<const void*>(static_cast<std::uintptr_t>(gettid()));
#else
    return reinterpret_cast<const void*>(pthread_self());
#endif
}

}  // namespace wex::platform
