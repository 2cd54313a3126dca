#include "diagnostics/line_pattern.h"

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstring>
#include <string_view>

#include "diagnostics/log_category.h"
#include "diagnostics/log_system.h"
#include "platform/monotonic_clock.h"
#include "platform/thread_id.h"

namespace wex {
namespace {

// Appends up to a limit that leaves room for the closing newline and terminator.
class LineWriter {
  public:
    LineWriter(char* buffer, std::size_t textLimit) : buffer_(buffer), limit_(textLimit) {}

    void Append(std::string_view text) {
        std::size_t count = std::min(text.size(), limit_ - length_);
        std::memcpy(buffer_ + length_, text.data(), count);
        length_ += count;
    }

    template <class... Values>
    void Print(const char* format, Values... values) {
        char piece[64];
        int written = std::snprintf(piece, sizeof piece, format, values...);
        if (written > 0) {
            Append(std::string_view(piece, std::min(static_cast<std::size_t>(written), sizeof piece - 1)));
        }
    }

    std::size_t Finish() {
        if (length_ == 0 || buffer_[length_ - 1] != '\n') {
            buffer_[length_++] = '\n';
        }
        buffer_[length_] = '\0';
        return length_;
    }

  private:
    char* buffer_;
    std::size_t limit_;
    std::size_t length_ = 0;
};

std::uint64_t NanosecondsSinceFirstRead() {
    static std::atomic<std::uint64_t> first{0};
    std::uint64_t now = platform::MonotonicNanoseconds();
    std::uint64_t expected = 0;
    if (first.compare_exchange_strong(expected, now)) {
        return 0;
    }
    return now - expected;
}

void AppendCategories(LineWriter& line, std::uint64_t categories) {
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

void AppendCode(LineWriter& line, char code, const LogRecord& record) {
    switch (code) {
        case 'D':
            line.Print("%04d-%02d-%02dT%02d:%02d:%02d.%03d", record.year, record.month, record.day, record.hour,
                       record.minute, record.second, record.millisecond);
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
    LineWriter line(buffer, capacity - 2);
    std::string_view text = pattern == nullptr ? "" : pattern;
    for (std::size_t i = 0; i < text.size(); ++i) {
        // A lone "#" at the end is kept as written.
        if (text[i] == '#' && i + 1 < text.size()) {
            AppendCode(line, text[++i], record);
        } else {
            line.Append(text.substr(i, 1));
        }
    }
    return line.Finish();
}

}  // namespace wex
