#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "binding/fnv1a.h"

namespace wex {

struct StaticType {
    // The build's own signature text of this function, which spells T out with
    // its full name space. It only names a type in messages and wait labels.
    template <class T>
    static constexpr const char* Name() {
#if defined(_MSC_VER) && !defined(__clang__)
        return __FUNCSIG__;
#else
        return __PRETTY_FUNCTION__;
#endif
    }
};

// The build-time identifier of a native type. Framework types whose
// identifiers are fixed specialise it:
//   template <> struct NativeTypeId<PluginManagerState> : std::integral_constant<std::uint32_t, 0xF4E3B901> {};
template <class T>
struct NativeTypeId {
    static constexpr std::uint32_t value = Fnv1a32(StaticType::Name<T>());
};

// The static identity of a native type: its identifier and its default name,
// the identifier as "#%08X". Lives for the whole process.
struct BindingTypeIdentity {
    // Descriptions without a native type share this identity; it is never
    // entered in a registry's index by identifier.
    static constexpr std::uint32_t kReservedId = 0x1BE7EF8E;

    std::uint32_t id;
    std::array<char, 10> defaultName;  // the nine characters and a zero

    std::string_view DefaultName() const { return {defaultName.data(), 9}; }
    bool IsReserved() const { return id == kReservedId; }

    static constexpr BindingTypeIdentity Make(std::uint32_t id) {
        BindingTypeIdentity identity{id, {'#'}};
        for (int digit = 0; digit < 8; ++digit) {
            identity.defaultName[8 - digit] = "0123456789ABCDEF"[(id >> (4 * digit)) & 0xF];
        }
        return identity;
    }

    template <class T>
    static const BindingTypeIdentity& Of();
    static const BindingTypeIdentity& Reserved();
};

template <class T>
inline constexpr BindingTypeIdentity kBindingTypeIdentityOf = BindingTypeIdentity::Make(NativeTypeId<T>::value);

template <class T>
const BindingTypeIdentity& BindingTypeIdentity::Of() {
    return kBindingTypeIdentityOf<T>;
}

inline const BindingTypeIdentity& BindingTypeIdentity::Reserved() {
    static constexpr BindingTypeIdentity kReserved = Make(kReservedId);
    return kReserved;
}

}  // namespace wex
