#pragma once

#include <string>
#include <string_view>

#include "binding/property.h"

namespace wex {

class BindingTypeRegistry;

// The JSON text of a value. An "empty" value gives the empty text at the top
// and null inside containers; a non-finite "float" gives null; a blob is
// written as the base64 of its bytes. An enumerator is written by name when a
// registry is given and knows a name for its value, else as its number.
// Members come in their stored order, ascending byte order of the names.
//
// An empty lineBreak gives compact output without white space. Any other text
// gives indented output, four spaces per level, with lineBreak ending each
// line. Trees of any depth are written without recursion.
std::string WriteJson(const BindingProperty& value, const BindingTypeRegistry* registry = nullptr,
                      std::string_view lineBreak = {});

}  // namespace wex
