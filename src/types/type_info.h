#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "binding/type_identity.h"

namespace wex {

class ApiFunctionHandler;
class BindingConverter;
class BindingTypeRegistry;
struct BindingTypeInfo;

// The descriptions that a module registers: the types of fields, arguments
// and results, its native types, its functions and its events.

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
inline std::string_view BindingTypeKindName(BindingTypeKind kind) {
    static constexpr std::array<std::string_view, 20> kNames = {
        "",      "bool",   "int8",   "uint8",  "int16", "uint16", "int32", "uint32", "int64",    "uint64",
        "float", "double", "string", "object", "blob",  "vector", "enum",  "struct", "callback", "map"};
    const auto index = static_cast<std::uint32_t>(kind);
    return index < kNames.size() ? kNames[index] : std::string_view();
}

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
    std::vector<std::uint32_t> fieldsByName;                 // indices of fields, in byte order of their names
    std::map<std::string, BindingEnumValueInfo> enumValues;  // in byte order of the names
    const BindingTypeRegistry* registry = nullptr;
};

struct BindingArgumentInfo {
    std::string name;
    std::string description;
    bool optional = false;
    BindingTypeIdentifier type;
    std::int32_t location = 0;  // where a request may give it: 0 anywhere, 1 query, 2 path, 4 header, 5 body
};

// A function of the module's local API, as registered with its route.
struct BindingFunctionInfo {
    std::string name;
    std::string nameSpace;
    std::string description;
    std::string help;
    std::vector<BindingArgumentInfo> arguments;
    BindingTypeIdentifier result;
    bool threadSafe = false;
    bool async = false;
    std::vector<std::string> tags;
    // What a request to the function runs; shared by every route of the function.
    std::shared_ptr<const ApiFunctionHandler> handler;
    // The registry that converts its arguments and result.
    const BindingTypeRegistry* registry = nullptr;

    // The index of the argument of exactly that name, or -1.
    std::ptrdiff_t FindArgument(std::string_view argumentName) const {
        for (std::size_t index = 0; index < arguments.size(); ++index) {
            if (arguments[index].name == argumentName) {
                return static_cast<std::ptrdiff_t>(index);
            }
        }
        return -1;
    }
    bool HasTag(std::string_view tag) const {
        for (const std::string& own : tags) {
            if (own == tag) {
                return true;
            }
        }
        return false;
    }
};

// An event that the module publishes or receives, with the type of its payload.
struct BindingEventInfo {
    std::string name;
    std::string nameSpace;
    std::string description;
    BindingTypeIdentifier payload;
    std::vector<std::string> tags;
};

}  // namespace wex
