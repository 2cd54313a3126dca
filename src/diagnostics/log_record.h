#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "platform/process_info.h"

// Lets the compiler check printf-style arguments against their format.
#if defined(__GNUC__) || defined(__clang__)
#define WEX_PRINTF_FORMAT(formatIndex, firstArgument) __attribute__((format(printf, formatIndex, firstArgument)))
#else
#define WEX_PRINTF_FORMAT(formatIndex, firstArgument)
#endif

namespace wex {

enum class LogLevel : std::int32_t { Okay = 0, Warn = 1, Error = 2, Always = 3 };

// The six-character name a log line shows: "  OKAY", "  WARN", " ERROR", "ALWAYS".
const char* LogLevelName(LogLevel level);

// Categories are the bits of a 64-bit mask; the first eight are fixed.
namespace LogCategory {
inline constexpr std::uint64_t Dbg = 1;
inline constexpr std::uint64_t Gen = 2;
inline constexpr std::uint64_t Xtr = 4;
inline constexpr std::uint64_t Prf = 8;
inline constexpr std::uint64_t Mem = 16;
inline constexpr std::uint64_t Dsk = 32;
inline constexpr std::uint64_t Net = 64;
inline constexpr std::uint64_t Tst = 128;
}  // namespace LogCategory

inline constexpr std::size_t kMaxLogCategories = 64;

// The mask of the category named by the first three characters of name,
// registering it under the next free bit when it is new. Any thread may call it.
// Returns 0 once all 64 bits are taken.
std::uint64_t CategoryMask(std::string_view name);

// The name of category bit (0 to 63), zero-terminated; "???" for a bit not registered.
std::array<char, 4> CategoryName(unsigned bit);

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
