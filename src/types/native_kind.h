#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <type_traits>
#include <vector>

#include "binding/property.h"
#include "binding/type_identity.h"
#include "types/type_info.h"

namespace wex {

template <class T>
struct IsBindingVector : std::false_type {};
template <class Element, class Allocator>
struct IsBindingVector<std::vector<Element, Allocator>> : std::true_type {};

template <class T>
struct IsBindingMap : std::false_type {};
template <class Element>
struct IsBindingMap<std::map<std::string, Element>> : std::true_type {};

// The element type of a vector or a map.
template <class T>
struct BindingElementOf {
    using type = void;
};
template <class Element, class Allocator>
struct BindingElementOf<std::vector<Element, Allocator>> {
    using type = Element;
};
template <class Element>
struct BindingElementOf<std::map<std::string, Element>> {
    using type = Element;
};

template <class T>
inline constexpr bool kAlwaysFalse = false;

// The kind under which a native type is described and converted: bool, the
// integers of 8 to 64 bits, float, double, std::string, BindingProperty
// ("object"), std::vector<std::uint8_t> ("blob"), other std::vector ("vector"),
// std::map<std::string, E> ("map"), enumerations and, for every other class,
// "struct".
template <class T>
consteval BindingTypeKind NativeKindOf() {
    using K = BindingTypeKind;
    if constexpr (std::is_same_v<T, bool>) {
        return K::Bool;
    } else if constexpr (std::is_integral_v<T>) {
        static_assert(!std::is_same_v<T, char>, "plain char is neither int8 nor uint8");
        constexpr bool isSigned = std::is_signed_v<T>;
        if constexpr (sizeof(T) == 1) {
            return isSigned ? K::Int8 : K::UInt8;
        } else if constexpr (sizeof(T) == 2) {
            return isSigned ? K::Int16 : K::UInt16;
        } else if constexpr (sizeof(T) == 4) {
            return isSigned ? K::Int32 : K::UInt32;
        } else {
            static_assert(sizeof(T) == 8);
            return isSigned ? K::Int64 : K::UInt64;
        }
    } else if constexpr (std::is_same_v<T, float>) {
        return K::Float;
    } else if constexpr (std::is_same_v<T, double>) {
        return K::Double;
    } else if constexpr (std::is_same_v<T, std::string>) {
        return K::String;
    } else if constexpr (std::is_same_v<T, BindingProperty>) {
        return K::Object;
    } else if constexpr (std::is_same_v<T, std::vector<std::uint8_t>>) {
        return K::Blob;
    } else if constexpr (IsBindingVector<T>::value) {
        return K::Vector;
    } else if constexpr (IsBindingMap<T>::value) {
        return K::Map;
    } else if constexpr (std::is_enum_v<T>) {
        static_assert(sizeof(T) <= sizeof(std::int32_t), "enumerators are signed 32-bit values");
        return K::Enum;
    } else if constexpr (std::is_class_v<T>) {
        return K::Struct;
    } else {
        static_assert(kAlwaysFalse<T>, "no binding conversion for this type");
    }
}

template <class T>
inline constexpr BindingTypeKind kNativeKind = NativeKindOf<T>();

// The description of a native type as a field, argument or result.
template <class T>
BindingTypeIdentifier TypeIdentifierOf() {
    constexpr BindingTypeKind kind = kNativeKind<T>;
    if constexpr (kind == BindingTypeKind::Vector || kind == BindingTypeKind::Map) {
        using Element = typename BindingElementOf<T>::type;
        constexpr BindingTypeKind elementKind = kNativeKind<Element>;
        if constexpr (elementKind == BindingTypeKind::Enum || elementKind == BindingTypeKind::Struct) {
            return {kind, elementKind, &BindingTypeIdentity::Of<Element>()};
        } else {
            return {kind, elementKind, nullptr};
        }
    } else if constexpr (kind == BindingTypeKind::Enum || kind == BindingTypeKind::Struct) {
        return {kind, BindingTypeKind::None, &BindingTypeIdentity::Of<T>()};
    } else {
        return {kind, BindingTypeKind::None, nullptr};
    }
}

}  // namespace wex
