#pragma once

#include <cstdint>
#include <string_view>

#include "binding/failure.h"

namespace wex {

// A failure whose message is text as it is: braces in it are not
// placeholders and it adds no fields beyond the code's.
Failure TextFailure(std::int32_t code, std::string_view text);

// The answer of a request handler that met an unexpected failure: status 500
// with the failure's message, or "Internal server error" when it has none.
Failure ErrorAnswer(std::string_view message);

}  // namespace wex
