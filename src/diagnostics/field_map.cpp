#include "diagnostics/field_map.h"

#include <algorithm>

namespace wex {

void FieldMap::Set(std::string name, FieldValue value) {
    auto found = std::find_if(entries_.begin(), entries_.end(), [&](const Entry& e) { return e.first == name; });
    if (found != entries_.end()) {
        found->second = std::move(value);
        return;
    }
    entries_.emplace_back(std::move(name), std::move(value));
}

const FieldValue* FieldMap::Find(std::string_view name) const {
    auto found = std::find_if(entries_.begin(), entries_.end(), [&](const Entry& e) { return e.first == name; });
    return found == entries_.end() ? nullptr : &found->second;
}

}  // namespace wex
