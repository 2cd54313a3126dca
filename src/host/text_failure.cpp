#include "host/text_failure.h"

#include <string>

namespace wex {

Failure TextFailure(std::int32_t code, std::string_view text) {
    // A printf placeholder takes the text without naming a field.
    return Failure(code, "%s", {std::string(text)});
}

Failure ErrorAnswer(std::string_view message) {
    return TextFailure(500, message.empty() ? std::string_view("Internal server error") : message);
}

}  // namespace wex
