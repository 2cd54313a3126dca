#pragma once

#include <cstdint>
#include <string_view>

namespace tav::host {

// "ANY", "DELETE", "GET", "HEAD", "OPTIONS", "PATCH", "POST" or "PUT" for the
// method codes 0 to 7; the empty text for any other code.
const char* MethodText(std::uint32_t method);

// The code of another method, named beside it.
constexpr std::uint32_t kOtherMethod = 8;
// The code of "DELETE" to "PUT" (1 to 7); kOtherMethod for any other text.
std::uint32_t MethodCode(std::string_view text);

}  // namespace tav::host
