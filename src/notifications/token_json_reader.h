#pragma once

#include <string_view>

#include "binding/property.h"

namespace Orvel::Client::Leagues::json {

// Reads text as one JSON object, the form of a token segment. Numbers become
// doubles, null an empty value. Throws ScanException or ParseException (both
// json::Exception) at the first error, with its message:
//   "Unrecognized escape sequence found in string: \x"
//   "Unexpected character in NUMBER token: <run>"
//   "Expected string: true" (or false, null)
//   "Unexpected character in stream: <c>"
//   "Duplicate object member token: <name>"
//   "Unexpected token: <token>"
//   "Unexpected end of token stream" (a value was needed)
//   "Unexpected End of token stream" (punctuation or a member name was needed)
//   "Expected End of token stream; found <token>"
// Nesting is bounded only by the text, without recursion.
wex::BindingProperty ReadObject(std::string_view text);

}  // namespace Orvel::Client::Leagues::json
