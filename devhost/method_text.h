#pragma once

#include <cstdint>

namespace tav::host {

// "ANY", "DELETE", "GET", "HEAD", "OPTIONS", "PATCH", "POST" or "PUT" for the
// method codes 0 to 7; the empty text for any other code.
const char* MethodText(std::uint32_t method);

}  // namespace tav::host
