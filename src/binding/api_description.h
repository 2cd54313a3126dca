#pragma once

#include <vector>

#include "binding/builtin_types.h"
#include "binding/event_info.h"
#include "binding/function_info.h"
#include "binding/property.h"
#include "binding/type_info.h"

namespace wex {

class BindingTypeRegistry;

// The description of a module's API from snapshots of its registry: a result
// with the members "functions", "types" and "events", each sorted by name.
// "Full" gives collections of the help records, converted through registry
// (an unregistered record type fails the result with the conversion's
// message); "Epytext" gives structures mapping each name to its docstring.
BindingProperty BuildApiDescription(const BindingTypeRegistry& registry,
                                    std::vector<const BindingFunctionInfo*> functions,
                                    std::vector<const BindingTypeInfo*> types,
                                    std::vector<const BindingEventInfo*> events, BindingHelpFormat format);

}  // namespace wex
