#pragma once

#include <cstddef>
#include <cstdint>

#include "diagnostics/log_level.h"
#include "platform/process_info.h"

namespace wex {

// One record as the log system hands it to targets: when (local time), how
// severe, which categories and what. The message is
// zero-terminated, at most 4095 bytes, and lives only for the write call.
struct LogRecord {
    platform::LocalTime time;
    LogLevel level = LogLevel::Okay;
    std::uint64_t categories = 0;
    const char* message = "";
};

// The size of the buffers that a message and a line are formatted into.
inline constexpr std::size_t kLogBufferSize = 4096;

}  // namespace wex
