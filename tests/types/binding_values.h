#pragma once

#include <charconv>
#include <cstdint>
#include <string>
#include <type_traits>

#include "binding/property.h"
#include "types/native_conversion.h"
#include "types/registry.h"

namespace wex::test {

// A canonical text of a tree, to compare whole trees.
inline std::string Describe(const BindingProperty& value) {
    std::string text(BindingPropertyKindName(value.Kind()));
    if (value.Kind() == BindingPropertyKind::Collection) {
        text += "[";
        for (const BindingProperty& element : value.Elements()) {
            text += Describe(element) + ",";
        }
        return text + "]";
    }
    if (value.Kind() == BindingPropertyKind::Structure) {
        text += "{";
        for (const BindingMember member : value.Members()) {
            text += std::string(member.name) + ":" + Describe(member.value) + ",";
        }
        return text + "}";
    }
    return text + "(" + value.ToString() + ")";
}

// Numbers in their shortest exact form, anything else as Describe shows its binding form.
template <class T>
std::string Show(const T& value, const BindingTypeRegistry& registry) {
    if constexpr (std::is_arithmetic_v<T> && !std::is_same_v<T, bool>) {
        char text[40];
        return std::string(text, std::to_chars(text, text + sizeof text, value).ptr);
    }
    return Describe(ToBinding(value, registry));
}

// The value each conversion starts from: 77, which no case converts to, or the type's default.
template <class T>
T Start() {
    if constexpr (std::is_arithmetic_v<T> || std::is_enum_v<T>) {
        return static_cast<T>(77);
    }
    return T{};
}

// Converts input into out under the name "field"; the message, or "" on success.
template <class T>
std::string ConvertInto(T& out, const BindingProperty& input, const BindingTypeRegistry& registry) {
    BindingProperty status;
    FromBinding(status, out, input, "field", registry);
    return std::string(status.GetError());
}

// Converts input under the name "field" into a T holding Start<T>(): the value shown on success, else the
// message, marked when the failure changed the value.
template <class T>
std::string Into(const BindingProperty& input, const BindingTypeRegistry& registry) {
    T out = Start<T>();
    const std::string message = ConvertInto(out, input, registry);
    if (message.empty()) {
        return Show(out, registry);
    }
    return message + (Show(out, registry) == Show(Start<T>(), registry) ? "" : " (changed)");
}

// Into of one type, for tables of several.
using Conversion = std::string (*)(const BindingProperty&, const BindingTypeRegistry&);

}  // namespace wex::test
