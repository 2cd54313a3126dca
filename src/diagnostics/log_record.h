#pragma once

#include <cstdint>

#include "diagnostics/log_level.h"

namespace wex {

// One record as the log system hands it to targets. The message is
// zero-terminated, at most 4095 bytes, and lives only for the write call.
struct LogRecord {
    std::int32_t year = 0;
    std::int32_t month = 0;
    std::int32_t day = 0;
    std::int32_t hour = 0;
    std::int32_t minute = 0;
    std::int32_t second = 0;
    std::int32_t millisecond = 0;
    LogLevel level = LogLevel::Okay;
    std::uint64_t categories = 0;
    const char* message = "";
};

// The size of the buffers that a message and a line are formatted into.
inline constexpr std::size_t kLogBufferSize = 4096;

}  // namespace wex
