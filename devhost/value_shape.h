#pragma once

#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "binding/property.h"

namespace tav::host {

// The shape of the values tav-host reads from its files and control requests: the keys a mapping may
// have, the kind of each value and the names a text may take. Every refusal names the member at fault.

// A value of the wrong shape; what() is "PATH: PROBLEM", as in "leagues[2].tier: missing".
class ShapeError : public std::runtime_error {
  public:
    ShapeError(const std::string& path, const std::string& problem) : std::runtime_error(path + ": " + problem) {}
};

enum class ValueKind { Any, Text, WholeNumber, Integer, Number, Bool, Mapping, List };

struct KeyShape {
    KeyShape(const char* name, ValueKind kind = ValueKind::Any, bool required = false)
        : name(name), kind(kind), required(required) {}

    std::string_view name;
    ValueKind kind;
    bool required;
};

// "parent.name", or name alone at the top.
std::string MemberPath(const std::string& parent, std::string_view name);

// Refuses a value of another kind, as in "wins: expected a whole number, 0 or more".
void CheckKind(const wex::BindingProperty& value, const std::string& path, ValueKind kind);

// Refuses what is not a mapping, a member that none of keys names ("tokenMinuts: unknown key; the keys
// here are ..."), a member of another kind than its key's and a required key that is missing.
void CheckKeys(const wex::BindingProperty& value, const std::string& path, const std::vector<KeyShape>& keys);

// Refuses a text that is none of names, as in "tier: 'GLOD' is none of BRONZE, SILVER, ...".
void CheckName(const wex::BindingProperty& value, const std::string& path, std::span<const std::string_view> names);

}  // namespace tav::host
