#pragma once

#include <string>
#include <vector>

#include "types/registry.h"

namespace Orvel::Client::Leagues::test {

// A registered type's fields as "name: kind", with the element kind of a
// vector and the registered name of an enumeration or structure:
// "emblems: vector of enum TavLeaguesLeagueEmblem".
inline std::vector<std::string> DescribeFields(const wex::BindingTypeInfo& type,
                                               const wex::BindingTypeRegistry& registry) {
    std::vector<std::string> fields;
    for (const wex::BindingFieldInfo& field : type.fields) {
        std::string text = field.name + ": " + std::string(wex::BindingTypeKindName(field.type.kind));
        if (field.type.elementKind != wex::BindingTypeKind::None) {
            text += " of " + std::string(wex::BindingTypeKindName(field.type.elementKind));
        }
        if (field.type.type != nullptr) {
            const wex::BindingTypeInfo* named = registry.FindType(field.type.type->id);
            text += " " + (named != nullptr ? named->name : std::string("<unregistered>"));
        }
        fields.push_back(text);
    }
    return fields;
}

// An enumeration's values as "NAME=value", in name order.
inline std::vector<std::string> DescribeEnumValues(const wex::BindingTypeInfo& type) {
    std::vector<std::string> values;
    for (const auto& [name, value] : type.enumValues) {
        values.push_back(name + "=" + std::to_string(value.value));
    }
    return values;
}

}  // namespace Orvel::Client::Leagues::test
