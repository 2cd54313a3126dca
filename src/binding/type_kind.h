#pragma once

#include <cstdint>
#include <string_view>

namespace wex {

// The kind of a field, argument or result in a type description.
enum class BindingTypeKind : std::int32_t {
    None = 0,
    Bool = 1,
    Int8 = 2,
    UInt8 = 3,
    Int16 = 4,
    UInt16 = 5,
    Int32 = 6,
    UInt32 = 7,
    Int64 = 8,
    UInt64 = 9,
    Float = 10,
    Double = 11,
    String = 12,
    Object = 13,  // a BindingProperty held unchanged
    Blob = 14,
    Vector = 15,
    Enum = 16,
    Struct = 17,
    Callback = 18,
    Map = 19,
};

// "bool", "int8", ... "map"; the empty text for any other value.
std::string_view BindingTypeKindName(BindingTypeKind kind);

}  // namespace wex
