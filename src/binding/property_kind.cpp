#include "binding/property_kind.h"

#include <array>

namespace wex {

std::string_view BindingPropertyKindName(BindingPropertyKind kind) {
    static constexpr std::array<std::string_view, 10> kNames = {"empty",  "bool", "signed", "unsigned",   "float",
                                                                "string", "blob", "enum",   "collection", "structure"};
    const auto index = static_cast<std::size_t>(kind);
    return index < kNames.size() ? kNames[index] : std::string_view();
}

}  // namespace wex
