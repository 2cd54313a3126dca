#pragma once

#include <string>

#include "binding/property.h"

namespace wex {

// Reads one JSON value of standard JSON (no comments, trailing commas or NaN)
// into a result value. A blank text is a valid "empty" value. Non-negative
// integers that fit 64 bits become "unsigned", negative ones "signed", every
// other number "float"; object members end up in name order, a repeated key
// keeping its last value; a string ends at an escaped NUL. Containers nest at
// most kMaxNestingDepth levels. On failure the result holds
// "Error: <message> at offset <n>." with the byte offset counted from the
// first byte of text. Throws std::bad_alloc when memory runs out.
BindingProperty ParseJson(const char* text);
inline BindingProperty ParseJson(const std::string& text) {
    return ParseJson(text.c_str());
}

}  // namespace wex
