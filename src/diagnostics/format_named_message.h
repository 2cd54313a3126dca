#pragma once

#include <initializer_list>
#include <span>
#include <string>
#include <string_view>

#include "diagnostics/field_map.h"

namespace wex {

// Formats a template with named placeholders ("Error response for {method} {url}: {error}").
// Each "{name}" takes the next value in order, is written in the value's default
// form (a bool as "true" or "false") and stores the value in fields under the name; "{#name}" stores it under
// the name with its kind's suffix ("_bool", "_int", "_float", "_str") unless the
// name already ends in a kind suffix. "{{" and "}}" give braces, a lone "}" gives
// "}", "%%" gives "%", and any other "%" placeholder takes the next value in order
// as printf would. The text is cut at 4095 bytes.
std::string FormatNamedMessage(std::string_view templateText, std::span<const FieldValue> values, FieldMap& fields);
std::string FormatNamedMessage(std::string_view templateText, std::initializer_list<FieldValue> values,
                               FieldMap& fields);

}  // namespace wex
