#pragma once

#include <chrono>
#include <cstdint>
#include <string>

namespace wex::platform {

// The calling thread's id as the operating system knows it, in a pointer-sized
// value so that log lines can print it with "%p".
const void* CurrentThreadId();

// The file name of the running process's executable, as the log shows it: the
// full path on Windows (the log keeps what follows the last backslash), the
// base name elsewhere. Empty when it cannot be read.
std::string ExecutableName();

// A moment of the local wall clock, to the millisecond. month 1 to 12, day 1 to 31.
struct LocalTime {
    std::int32_t year = 0;
    std::int32_t month = 0;
    std::int32_t day = 0;
    std::int32_t hour = 0;
    std::int32_t minute = 0;
    std::int32_t second = 0;
    std::int32_t millisecond = 0;
};

LocalTime CurrentLocalTime();

// Nanoseconds of the platform's high-resolution monotonic counter (the
// performance counter on Windows); only differences are meaningful.
inline std::uint64_t MonotonicNanoseconds() {
    const auto since = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<std::uint64_t>(std::chrono::duration_cast<std::chrono::nanoseconds>(since).count());
}

}  // namespace wex::platform
