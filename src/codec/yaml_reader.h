#pragma once

#include <string_view>

#include "binding/property.h"

namespace wex {

// Reads one YAML document into a result value. Mappings become structures
// whose keys must be string scalars, sequences collections, and scalars are
// typed by their tags and, untagged, by how they read (see SetYamlScalar). An
// alias copies its anchor's value; such copies make a million nodes at most
// in all, and containers nest at most kMaxNestingDepth levels. Empty documents
// may precede the one with a value; a second value is refused. A text with no value is a valid "empty"
// value. Failures carry their line and column, counted from 1, except for
// the parser's own errors, which keep its positions, counted from 0. Throws
// std::bad_alloc when memory runs out; the parser is released on every path.
BindingProperty ReadYaml(std::string_view text);

}  // namespace wex
