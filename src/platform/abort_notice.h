#pragma once

#include <string_view>

namespace wex::platform {

// Writes a text to standard error when the process aborts while the notice
// lives; abort then ends the process as it would have. One notice at a time.
class AbortNotice {
  public:
    explicit AbortNotice(std::string_view text);
    ~AbortNotice();
    AbortNotice(const AbortNotice&) = delete;
    AbortNotice& operator=(const AbortNotice&) = delete;
};

}  // namespace wex::platform
