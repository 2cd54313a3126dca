#pragma once

#include <functional>
#include <string_view>

#include "binding/property.h"
#include "types/type_info.h"

namespace wex {

class BindingTypeRegistry;

// The server class name of a registered type name; empty when it has none.
using LcdsClassNameLookup = std::function<std::string_view(std::string_view typeName)>;

// Gives every record in value, made from a native value of type, the member
// "__class" with its server class name, nested records and records in
// vectors and maps included. The walk follows the registered descriptions
// alongside the value, without recursion.
void AnnotateLcdsClasses(BindingProperty& value, const BindingTypeIdentifier& type, const BindingTypeRegistry& registry,
                         const LcdsClassNameLookup& classNameOf);

}  // namespace wex
