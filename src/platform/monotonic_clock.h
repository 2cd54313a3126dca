#pragma once

#include <cstdint>

namespace wex::platform {

// Nanoseconds of the platform's high-resolution monotonic counter (the
// performance counter on Windows); only differences are meaningful.
std::uint64_t MonotonicNanoseconds();

}  // namespace wex::platform
