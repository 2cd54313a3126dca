#pragma once

#include <cstdio>
#include <string>
#include <vector>

#include "binding/property.h"
#include "binding/string_entry.h"

namespace wex {

// The counted entry behind a string node's text.
inline const StringEntry* EntryOf(const BindingProperty& node) {
    return reinterpret_cast<const StringEntry*>(node.AsString().data()) - 1;
}

inline std::vector<std::string> MemberNames(const BindingProperty& node) {
    std::vector<std::string> names;
    for (const BindingMember member : node.Members()) {
        names.emplace_back(member.name);
    }
    return names;
}

// "m00000" onwards, in sorted order.
inline std::vector<std::string> NumberedNames(int count) {
    std::vector<std::string> names;
    for (int index = 0; index < count; ++index) {
        char name[16];
        std::snprintf(name, sizeof name, "m%05d", index);
        names.emplace_back(name);
    }
    return names;
}

}  // namespace wex
