#pragma once

#include <cstddef>

#include "diagnostics/log_record.h"

namespace wex {

// Formats one line from a pattern into buffer. "#" and a letter are replaced:
// #D the record's time (2024-05-01T13:02:03.004), #E the executable name, #G the
// category names joined by ";", #H seconds since the log's clock was first read
// (000012.345), #L the level name, #M the message, #T the current thread's id;
// "#" and any other character give that character. The line ends with exactly
// one newline (none is added when the text already ends with one) and is cut to
// fit capacity - 1 bytes, keeping the newline, then terminated. Allocates nothing.
std::size_t FormatLine(const char* pattern, const LogRecord& record, char* buffer, std::size_t capacity);

}  // namespace wex
