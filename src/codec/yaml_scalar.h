#pragma once

#include <string_view>

#include "binding/property.h"

namespace wex {

// Sets slot, a new empty node, from a YAML scalar in a value position, by its explicit tag
// (empty when it has none) and how it was written. text must be followed by a
// zero byte.
//
// Tagged scalars: "tag:yaml.org,2002:str" gives a "string"; ":int" a "signed"
// (text beginning with "-") or "unsigned"; ":float" a "float"; ":bool" a
// "bool" for the true and false words and leaves the slot "empty" otherwise.
// Untagged quoted scalars are strings. Untagged plain, literal and folded
// scalars resolve in order: null words to "empty", finite numbers that the
// runtime's string-to-double conversion reads whole to "unsigned" or "signed"
// when integral (a "float" when beyond 64 bits) and to "float" otherwise, bool
// words to "bool", anything else to "string".
//
// A number that does not convert, or another tag, fails status with its
// message; the slot is then left as it was.
void SetYamlScalar(BindingProperty& status, BindingProperty& slot, std::string_view tag, std::string_view text,
                   bool quoted);

}  // namespace wex
