#pragma once

#include <string_view>

#include "binding/property.h"
#include "boundary/boundary.h"

namespace wex {

class BindingTypeRegistry;

// The value that the host handed over, as a result node: tags 5 and 6 read as
// zero-terminated texts, an object's repeated member name keeps the last
// value. Any other tag fails the result with "Couldn't assign value to '%1' of
// type object because the input is of an incompatible type ''." (name as %1);
// so does an array or object reached twice, which would never end. The host
// keeps ownership of value.
BindingProperty HostValueToBinding(const HostValue& value, std::string_view name);

// The value as the plug-in hands it to the host: owned copies of texts and
// bytes (tags 6 and 8), newly allocated items and members, members in name
// order with their names copied, enumerators by name when a registry knows
// them and by number otherwise. False, with out left as tag 0, when memory
// runs out. Release out with ReleaseHostValue.
[[nodiscard]] bool BindingToHostValue(const BindingProperty& value, HostValue& out,
                                      const BindingTypeRegistry* registry);

// Frees what BindingToHostValue allocated in value, however deep, and leaves
// value as tag 0. Only for values that BindingToHostValue made.
void ReleaseHostValue(HostValue& value) noexcept;

}  // namespace wex
