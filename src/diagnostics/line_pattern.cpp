#include "diagnostics/line_pattern.h"

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstring>
#include <string_view>

#include "diagnostics/bounded_text.h"
#include "diagnostics/log_category.h"
#include "diagnostics/log_system.h"
#include "platform/process_info.h"

namespace wex {
namespace {

std::uint64_t NanosecondsSinceFirstRead() {
    static std::atomic<std::uint64_t> first{0};
    std::uint64_t now = platform::MonotonicNanoseconds();
    std::uint64_t expected = 0;
    if (first.compare_exchange_strong(expected, now)) {
        return 0;
    }
    return now - expected;
}

void AppendCategories(BoundedText& line, std::uint64_t categories) {
    bool first = true;
    for (unsigned bit = 0; bit < kMaxLogCategories; ++bit) {
        if ((categories & (std::uint64_t{1} << bit)) == 0) {
            continue;
        }
        if (!first) {
            line.Append(";");
        }
        first = false;
        line.Append(CategoryName(bit).data());
    }
}

void AppendCode(BoundedText& line, char code, const LogRecord& record) {
    switch (code) {
        case 'D':
            line.Print("%04d-%02d-%02dT%02d:%02d:%02d.%03d", record.time.year, record.time.month, record.time.day,
                       record.time.hour, record.time.minute, record.time.second, record.time.millisecond);
            break;
        case 'E':
            line.Append(LogExecutableName());
            break;
        case 'G':
            AppendCategories(line, record.categories);
            break;
        case 'H': {
            std::uint64_t milliseconds = NanosecondsSinceFirstRead() / 1'000'000;
            line.Print("%06d.%03d", static_cast<int>(milliseconds / 1000), static_cast<int>(milliseconds % 1000));
            break;
        }
        case 'L':
            line.Append(LogLevelName(record.level));
            break;
        case 'M':
            line.Append(record.message == nullptr ? "" : record.message);
            break;
        case 'T':
            line.Print("%p", platform::CurrentThreadId());
            break;
        default:
            line.Append(std::string_view(&code, 1));
    }
}

}  // namespace

std::size_t FormatLine(const char* pattern, const LogRecord& record, char* buffer, std::size_t capacity) {
    if (capacity < 2) {
        if (capacity == 1) {
            buffer[0] = '\0';
        }
        return 0;
    }
    // Room is kept for the closing newline and the terminator.
    BoundedText line(buffer, capacity - 2);
    std::string_view text = pattern == nullptr ? "" : pattern;
    for (std::size_t i = 0; i < text.size(); ++i) {
        // A lone "#" at the end is kept as written.
        if (text[i] == '#' && i + 1 < text.size()) {
            AppendCode(line, text[++i], record);
        } else {
            line.Append(text.substr(i, 1));
        }
    }
    std::size_t length = line.Length();
    if (length == 0 || buffer[length - 1] != '\n') {
        buffer[length++] = '\n';
    }
    buffer[length] = '\0';
    return length;
}

}  // namespace wex
