#include "binding/type_kind.h"

#include <array>

namespace wex {

std::string_view BindingTypeKindName(BindingTypeKind kind) {
    static constexpr std::array<std::string_view, 20> kNames = {
        "",      "bool",   "int8",   "uint8",  "int16", "uint16", "int32", "uint32", "int64",    "uint64",
        "float", "double", "string", "object", "blob",  "vector", "enum",  "struct", "callback", "map"};
    const auto index = static_cast<std::uint32_t>(kind);
    return index < kNames.size() ? kNames[index] : std::string_view();
}

}  // namespace wex
