#pragma once

#include <cstdint>
#include <string_view>

namespace wex {

// The kind of a BindingProperty. The names appear in conversion messages.
enum class BindingPropertyKind : std::uint8_t {
    Empty = 0,
    Bool = 1,
    Signed = 2,
    Unsigned = 3,
    Float = 4,
    String = 5,
    Blob = 6,
    Enum = 7,
    Collection = 8,
    Structure = 9,
};

// "empty", "bool", ... "structure"; the empty text for a value outside the ten.
std::string_view BindingPropertyKindName(BindingPropertyKind kind);

}  // namespace wex
