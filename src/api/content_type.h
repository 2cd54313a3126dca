#pragma once

#include <string_view>

namespace wex {

// True when contentType begins with prefix, letters compared without case,
// so that parameters such as "; charset=utf-8" after it do not matter.
bool HasContentType(std::string_view contentType, std::string_view prefix);

}  // namespace wex
