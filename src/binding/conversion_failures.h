#pragma once

#include <string_view>

#include "diagnostics/format_argument.h"

namespace wex {

class BindingProperty;

// The failures that several conversions share, each marking status failed
// with its fixed message.

// "Couldn't assign value to '%1' of type %2 because the input is of an invalid type %3."
void FailInvalidType(BindingProperty& status, std::string_view name, std::string_view typeName,
                     const BindingProperty& input);
// "Value %1 for '%2' of type %3 is out of range"
void FailOutOfRange(BindingProperty& status, const FormatArgument& value, std::string_view name,
                    std::string_view typeName);
// "Value %1 for '%2' of type %3 is in an incorrect format"
void FailIncorrectFormat(BindingProperty& status, const FormatArgument& value, std::string_view name,
                         std::string_view typeName);

// The input as "Value %1" shows it: a text as it is, a number in its default form.
FormatArgument InputValueArgument(const BindingProperty& input);

}  // namespace wex
