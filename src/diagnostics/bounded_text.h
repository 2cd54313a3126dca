#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <string_view>

namespace wex {

// Appends text to a caller's buffer up to a limit and drops what does not fit.
// The buffer holds at least limit + 1 bytes, so the terminator always fits.
// Nothing here allocates: log records are formatted with it.
class BoundedText {
  public:
    BoundedText(char* buffer, std::size_t limit) : buffer_(buffer), limit_(limit) {}

    bool Full() const { return length_ >= limit_; }
    std::size_t Length() const { return length_; }

    void Append(std::string_view text) {
        std::size_t count = std::min(text.size(), limit_ - length_);
        std::memcpy(buffer_ + length_, text.data(), count);
        length_ += count;
    }

    void AppendRepeated(char c, std::size_t count) {
        count = std::min(count, limit_ - length_);
        std::memset(buffer_ + length_, c, count);
        length_ += count;
    }

    // printf-style into the rest of the buffer, cut at the limit.
    template <class... Values>
    void Print(const char* format, Values... values) {
        int written = std::snprintf(buffer_ + length_, limit_ - length_ + 1, format, values...);
        if (written > 0) {
            length_ += std::min(static_cast<std::size_t>(written), limit_ - length_);
        }
    }

    // Writes the terminator after the text; returns the text's length.
    std::size_t Terminate() {
        buffer_[length_] = '\0';
        return length_;
    }

  private:
    char* buffer_;
    std::size_t limit_;
    std::size_t length_ = 0;
};

}  // namespace wex
