#pragma once

#include <cstddef>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>

#include "diagnostics/format_argument.h"

namespace wex {

// The longest text FormatMessage produces, in bytes.
inline constexpr std::size_t kMaxFormattedMessage = 4095;

// Formats with numbered placeholders ("%1", "%2$5s") and printf-style ones
// ("%s", "%*d"), each argument converted by the rules of its kind. Formatting
// ends at a placeholder whose argument is missing or that is longer than 60
// characters; what was written so far is the result.
std::string FormatMessage(std::string_view format, std::initializer_list<FormatArgument> arguments);
std::string FormatMessage(std::string_view format, std::span<const FormatArgument> arguments);

// The same into a caller's buffer: at most capacity - 1 bytes, always
// terminated (when capacity is not 0). Returns the length written.
std::size_t FormatMessageInto(char* buffer, std::size_t capacity, std::string_view format,
                              std::span<const FormatArgument> arguments);

}  // namespace wex
