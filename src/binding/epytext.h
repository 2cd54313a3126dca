#pragma once

#include <string>
#include <string_view>

#include "binding/event_info.h"
#include "binding/function_info.h"
#include "binding/type_info.h"

namespace wex {

class BindingTypeRegistry;

// Epytext docstrings of the API description, lines ending with CR LF.
std::string EpytextEscape(std::string_view text);
// "int32", "list[L{Standing}]", "dict[string]", ...; "" for a kind without one.
std::string EpytextType(const BindingTypeIdentifier& type, const BindingTypeRegistry& registry);

std::string EpytextOfFunction(const BindingFunctionInfo& function, const BindingTypeRegistry& registry);
std::string EpytextOfType(const BindingTypeInfo& type, const BindingTypeRegistry& registry);
std::string EpytextOfEvent(const BindingEventInfo& event);

}  // namespace wex
