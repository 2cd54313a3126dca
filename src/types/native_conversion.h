#pragma once

#include <cstdint>
#include <limits>
#include <map>
#include <new>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "binding/failure.h"
#include "binding/maybe_type.h"
#include "binding/property.h"
#include "binding/type_identity.h"
#include "diagnostics/format_message.h"
#include "types/native_kind.h"

namespace wex {

class BindingTypeRegistry;

// Conversions between native values and BindingProperty trees, for every type
// that NativeKindOf accepts. The entry points:
//
//   FromBinding(status, out, input, name, registry)
//       Fills out from input. Does nothing when status is already failed; the
//       first error marks status failed with its message, with name as the
//       value's name, and leaves out as it was. Structures, enumerations and
//       their vectors are looked up in registry.
//   ToBinding(result, value, registry), ToBinding(value, registry)
//       Makes a valid result from value, or a failed one.
//   FromBinding<T>(input, name, registry)
//       The value, or the failure with the message that status would carry.
//
// Neither throws: running out of memory also fails the status.

// The conversions that the templates below dispatch to.
void BoolFromBinding(BindingProperty& status, bool& out, const BindingProperty& input, std::string_view name);
// Integers of every width, read as 64 bits and held to the native bounds.
void IntegerFromBinding(BindingProperty& status, std::int64_t& out, const BindingProperty& input, std::string_view name,
                        BindingTypeKind kind, std::int64_t min, std::int64_t max);
void IntegerFromBinding(BindingProperty& status, std::uint64_t& out, const BindingProperty& input,
                        std::string_view name, BindingTypeKind kind, std::uint64_t min, std::uint64_t max);
void FloatingFromBinding(BindingProperty& status, double& out, const BindingProperty& input, std::string_view name,
                         BindingTypeKind kind, double largest);
void StringFromBinding(BindingProperty& status, std::string& out, const BindingProperty& input, std::string_view name,
                       const BindingTypeRegistry& registry);
void BlobFromBinding(BindingProperty& status, std::vector<std::uint8_t>& out, const BindingProperty& input,
                     std::string_view name);
void ObjectFromBinding(BindingProperty& status, BindingProperty& out, const BindingProperty& input);
void EnumFromBinding(BindingProperty& status, std::int32_t& out, const BindingProperty& input, std::string_view name,
                     const BindingTypeIdentity& type, const BindingTypeRegistry& registry);
void StructureFromBinding(BindingProperty& status, void* out, const BindingProperty& input, std::string_view name,
                          const BindingTypeIdentity& type, const BindingTypeRegistry& registry);
void StructureToBinding(BindingProperty& result, const void* value, const BindingTypeIdentity& type,
                        const BindingTypeRegistry& registry);
// Each fails status unless input is a collection, or a structure.
bool CheckCollectionInput(BindingProperty& status, const BindingProperty& input, std::string_view name);
bool CheckMapInput(BindingProperty& status, const BindingProperty& input, std::string_view name);
void FailRequired(BindingProperty& status, std::string_view name);
// Marks status failed with the exception being handled: "Out of memory", the
// text of a standard exception, or "Unknown error". Only inside a catch block.
void FailWithCurrentException(BindingProperty& status) noexcept;

// The failures that several conversions share, each marking status failed
// with its fixed message.

// "Couldn't assign value to '%1' of type %2 because the input is of an invalid type %3."
void FailInvalidType(BindingProperty& status, std::string_view name, std::string_view typeName,
                     const BindingProperty& input);
// "Value %1 for '%2' of type %3 is out of range"
void FailOutOfRange(BindingProperty& status, const FormatArgument& value, std::string_view name,
                    std::string_view typeName);
// "Value %1 for '%2' of type %3 is in an incorrect format"
void FailIncorrectFormat(BindingProperty& status, const FormatArgument& value, std::string_view name,
                         std::string_view typeName);

// The input as "Value %1" shows it: a text as it is, a number in its default form.
FormatArgument InputValueArgument(const BindingProperty& input);

template <class T>
void FromBinding(BindingProperty& status, T& out, const BindingProperty& input, std::string_view name,
                 const BindingTypeRegistry& registry) noexcept;
template <class T>
void ToBinding(BindingProperty& result, const T& value, const BindingTypeRegistry& registry) noexcept;

template <class T>
BindingProperty ToBinding(const T& value, const BindingTypeRegistry& registry) {
    BindingProperty result;
    ToBinding(result, value, registry);
    return result;
}

// The value of input converted to T, or a failure (code 0) with the
// conversion's message, for callers that want the value rather than a status:
//   const auto session = FromBinding<LoginSession>(value, "<value>", registry);
template <class T>
MaybeType<Failure, T> FromBinding(const BindingProperty& input, std::string_view name,
                                  const BindingTypeRegistry& registry) {
    T value{};
    BindingProperty status;
    FromBinding(status, value, input, name, registry);
    if (!status.IsValid()) {
        return TextFailure(0, status.GetError());
    }
    return value;
}

// As FromBinding, but an empty input fails with the required-value message
// whatever the type.
template <class T>
void FromBindingRequired(BindingProperty& status, T& out, const BindingProperty& input, std::string_view name,
                         const BindingTypeRegistry& registry) noexcept {
    if (status.IsValid() && input.IsEmpty()) {
        FailRequired(status, name);
        return;
    }
    FromBinding(status, out, input, name, registry);
}

template <class Element, class Allocator>
void VectorFromBinding(BindingProperty& status, std::vector<Element, Allocator>& out, const BindingProperty& input,
                       std::string_view name, const BindingTypeRegistry& registry) {
    out.clear();
    if (!CheckCollectionInput(status, input, name)) {
        return;
    }
    const std::span<const BindingProperty> elements = input.Elements();
    out.resize(elements.size());
    for (std::size_t index = 0; index < elements.size() && status.IsValid(); ++index) {
        // An empty element keeps its native default.
        if (elements[index].IsEmpty()) {
            continue;
        }
        if constexpr (std::is_same_v<Element, bool>) {
            bool value = out[index];
            FromBinding(status, value, elements[index], name, registry);
            out[index] = value;
        } else {
            FromBinding(status, out[index], elements[index], name, registry);
        }
    }
}

template <class Element>
void MapFromBinding(BindingProperty& status, std::map<std::string, Element>& out, const BindingProperty& input,
                    std::string_view name, const BindingTypeRegistry& registry) {
    out.clear();
    if (!CheckMapInput(status, input, name)) {
        return;
    }
    for (const BindingMember member : input.Members()) {
        if (!status.IsValid()) {
            return;
        }
        Element& element = out[std::string(member.name)];
        if (!member.value.IsEmpty()) {
            FromBinding(status, element, member.value, name, registry);
        }
    }
}

template <class Element, class Allocator>
void VectorToBinding(BindingProperty& result, const std::vector<Element, Allocator>& value,
                     const BindingTypeRegistry& registry) {
    result.Reset();
    result.MarkValid();
    result.MakeCollection();
    result.Reserve(value.size());
    for (std::size_t index = 0; index < value.size(); ++index) {
        BindingProperty& element = result.Append();
        ToBinding(element, static_cast<const Element&>(value[index]), registry);
        if (!element.IsValid()) {
            result.SetError(element.GetError());
            return;
        }
    }
}

template <class Element>
void MapToBinding(BindingProperty& result, const std::map<std::string, Element>& value,
                  const BindingTypeRegistry& registry) {
    result.Reset();
    result.MarkValid();
    result.MakeStructure();
    for (const auto& [key, element] : value) {
        BindingProperty& member = result.Member(key);
        ToBinding(member, element, registry);
        if (!member.IsValid()) {
            result.SetError(member.GetError());
            return;
        }
    }
}

template <class T>
void ConvertFromBinding(BindingProperty& status, T& out, const BindingProperty& input, std::string_view name,
                        const BindingTypeRegistry& registry) {
    using K = BindingTypeKind;
    constexpr K kind = kNativeKind<T>;
    if constexpr (kind == K::Bool) {
        BoolFromBinding(status, out, input, name);
    } else if constexpr (std::is_integral_v<T>) {
        using Wide = std::conditional_t<std::is_signed_v<T>, std::int64_t, std::uint64_t>;
        Wide value = out;
        IntegerFromBinding(status, value, input, name, kind, Wide{std::numeric_limits<T>::min()},
                           Wide{std::numeric_limits<T>::max()});
        out = static_cast<T>(value);
    } else if constexpr (kind == K::Float || kind == K::Double) {
        double value = out;
        FloatingFromBinding(status, value, input, name, kind, std::numeric_limits<T>::max());
        out = static_cast<T>(value);
    } else if constexpr (kind == K::String) {
        StringFromBinding(status, out, input, name, registry);
    } else if constexpr (kind == K::Object) {
        ObjectFromBinding(status, out, input);
    } else if constexpr (kind == K::Blob) {
        BlobFromBinding(status, out, input, name);
    } else if constexpr (kind == K::Enum) {
        auto value = static_cast<std::int32_t>(out);
        EnumFromBinding(status, value, input, name, BindingTypeIdentity::Of<T>(), registry);
        out = static_cast<T>(value);
    } else if constexpr (kind == K::Vector) {
        VectorFromBinding(status, out, input, name, registry);
    } else if constexpr (kind == K::Map) {
        MapFromBinding(status, out, input, name, registry);
    } else {
        StructureFromBinding(status, &out, input, name, BindingTypeIdentity::Of<T>(), registry);
    }
}

template <class T>
void ConvertToBinding(BindingProperty& result, const T& value, const BindingTypeRegistry& registry) {
    using K = BindingTypeKind;
    constexpr K kind = kNativeKind<T>;
    if constexpr (kind == K::Vector) {
        VectorToBinding(result, value, registry);
    } else if constexpr (kind == K::Map) {
        MapToBinding(result, value, registry);
    } else if constexpr (kind == K::Struct) {
        StructureToBinding(result, &value, BindingTypeIdentity::Of<T>(), registry);
    } else {
        if constexpr (kind == K::Bool) {
            result.SetBool(value);
        } else if constexpr (std::is_integral_v<T> && std::is_signed_v<T>) {
            result.SetSigned(value);
        } else if constexpr (std::is_integral_v<T>) {
            result.SetUnsigned(value);
        } else if constexpr (kind == K::Float || kind == K::Double) {
            result.SetFloat(value);
        } else if constexpr (kind == K::String) {
            result.SetString(value);
        } else if constexpr (kind == K::Object) {
            result = value;
        } else if constexpr (kind == K::Blob) {
            result.SetBlob(std::span<const std::uint8_t>(value));
        } else {
            result.SetEnum(static_cast<std::int32_t>(value), BindingTypeIdentity::Of<T>());
        }
        result.MarkValid();
    }
}

template <class T>
void FromBinding(BindingProperty& status, T& out, const BindingProperty& input, std::string_view name,
                 const BindingTypeRegistry& registry) noexcept {
    try {
        ConvertFromBinding(status, out, input, name, registry);
    } catch (...) {
        FailWithCurrentException(status);
    }
}

template <class T>
void ToBinding(BindingProperty& result, const T& value, const BindingTypeRegistry& registry) noexcept {
    try {
        ConvertToBinding(result, value, registry);
    } catch (...) {
        FailWithCurrentException(result);
    }
}

// The conversions of one native type, behind an interface so that a field of
// any type converts through its description. One stateless object per type.
class BindingConverter {
  public:
    // Fills the native value at native from input; the first error marks status failed.
    virtual void FromBinding(BindingProperty& status, void* native, const BindingProperty& input, std::string_view name,
                             const BindingTypeRegistry& registry) const = 0;
    // Makes result from the native value at native, or marks it failed.
    virtual void ToBinding(BindingProperty& result, const void* native, const BindingTypeRegistry& registry) const = 0;
    virtual ~BindingConverter() = default;
};

template <class T>
class TypedBindingConverter final : public BindingConverter {
  public:
    void FromBinding(BindingProperty& status, void* native, const BindingProperty& input, std::string_view name,
                     const BindingTypeRegistry& registry) const override {
        wex::FromBinding(status, *static_cast<T*>(native), input, name, registry);
    }
    void ToBinding(BindingProperty& result, const void* native, const BindingTypeRegistry& registry) const override {
        wex::ToBinding(result, *static_cast<const T*>(native), registry);
    }
};

// The one converter of T.
template <class T>
const BindingConverter& ConverterOf() {
    static const TypedBindingConverter<T> converter;
    return converter;
}

}  // namespace wex
