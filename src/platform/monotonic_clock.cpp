#include "platform/monotonic_clock.h"

#include <chrono>

namespace wex::platform {

std::uint64_t MonotonicNanoseconds() {
    auto since = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<std::uint64_t>(std::chrono::duration_cast<std::chrono::nanoseconds>(since).count());
}

}  // namespace wex::platform
