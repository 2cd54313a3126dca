#pragma once

#include <string_view>

namespace wex {

class BindingProperty;
class BindingTypeRegistry;

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

}  // namespace wex
