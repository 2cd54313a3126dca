#pragma once

#include <cstdint>

namespace wex {

enum class LogLevel : std::int32_t { Okay = 0, Warn = 1, Error = 2, Always = 3 };

// The six-character name a log line shows: "  OKAY", "  WARN", " ERROR", "ALWAYS".
const char* LogLevelName(LogLevel level);

}  // namespace wex
