#pragma once

#include <string>
#include <string_view>

namespace wex {

// A path parameter or query piece as its sender meant it: "+" becomes a space
// and "%" with two hexadecimal digits (either case) becomes that byte. A "%"
// without two hexadecimal digits after it is kept as written.
std::string DecodeUrlComponent(std::string_view text);

}  // namespace wex
