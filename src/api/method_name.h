#pragma once

#include <cstdint>
#include <string_view>

namespace wex {

// "DELETE", "GET", "HEAD", "OPTIONS", "PATCH", "POST" and "PUT" for the codes
// 1 to 7 of HostMethod; the empty text for any other code.
std::string_view MethodName(std::uint32_t code);

}  // namespace wex
