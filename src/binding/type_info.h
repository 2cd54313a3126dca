#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "binding/type_identity.h"
#include "binding/type_kind.h"

namespace wex {

class BindingConverter;
class BindingTypeRegistry;
struct BindingTypeInfo;

// The type of one field, argument or result.
struct BindingTypeIdentifier {
    BindingTypeKind kind = BindingTypeKind::None;
    // For "vector" and "map": the kind of the elements, whose own element kind is none.
    BindingTypeKind elementKind = BindingTypeKind::None;
    // For "enum" and "struct", and for a "vector" or "map" of them: the registered type.
    const BindingTypeIdentity* type = nullptr;
};

struct BindingFieldFlags {
    static constexpr std::uint32_t OmitWhenDefault = 1;  // on output, left out when it holds nothing
    static constexpr std::uint32_t Required = 2;         // on input, missing or empty fails
};

struct BindingFieldInfo {
    std::string name;            // the member name, case-sensitive
    std::uint32_t nameHash = 0;  // FNV-1a of the name
    std::string description;
    std::uint32_t offset = 0;  // in the native structure
    BindingTypeIdentifier type;
    std::uint32_t flags = 0;  // BindingFieldFlags
    const BindingConverter* converter = nullptr;
    bool optional = false;  // shown in API descriptions; conversions do not read it
};

struct BindingEnumValueInfo {
    std::string name;
    std::int32_t value = 0;
    std::string description;
    const BindingTypeInfo* owner = nullptr;
};

// The description of one registered structure or enumeration. Not changed
// once registration is over, so conversions read it without a lock.
struct BindingTypeInfo {
    std::uint32_t size = 0;  // of the native type: the stride of a native vector of it
    bool isEnum = false;
    std::string name;  // unique in its registry
    const BindingTypeIdentity* identity = nullptr;
    std::string nameSpace;
    std::string description;
    std::vector<std::string> tags;
    std::vector<BindingFieldInfo> fields;                    // in registration order
    std::map<std::string, BindingEnumValueInfo> enumValues;  // in byte order of the names
    const BindingTypeRegistry* registry = nullptr;
};

}  // namespace wex
