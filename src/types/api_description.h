#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "binding/property.h"
#include "types/type_info.h"

namespace wex {

class BindingTypeRegistry;

enum class BindingHelpFormat : std::int32_t { Full = 1, Epytext = 2 };

// The records of the API description in the "Full" format.
struct BindingFullTypeIdentifier {
    std::string type;
    std::string elementType;
};

struct BindingFullArgumentHelp {
    std::string name;
    std::string description;
    BindingFullTypeIdentifier type;
    bool optional = false;
};

struct BindingFullFunctionHelp {
    std::string name;
    std::string nameSpace;
    std::vector<BindingFullArgumentHelp> arguments;
    BindingFullTypeIdentifier returns;
    std::string description;
    std::string help;
    bool threadSafe = false;
    std::string async;  // the result type's name for an asynchronous function
    std::vector<std::string> tags;
};

struct BindingFullEnumValueHelp {
    std::string name;
    std::string description;
    std::int32_t value = 0;
};

struct BindingFullFieldHelp {
    std::string name;
    std::string description;
    std::uint32_t offset = 0;
    BindingFullTypeIdentifier type;
    bool optional = false;
};

struct BindingFullTypeHelp {
    std::string name;
    std::string nameSpace;
    std::uint32_t size = 0;
    std::string description;
    std::vector<std::string> tags;
    std::vector<BindingFullFieldHelp> fields;
    std::vector<BindingFullEnumValueHelp> values;
};

struct BindingFullEventHelp {
    std::string name;
    std::string nameSpace;
    BindingFullTypeIdentifier type;
    std::string description;
    std::vector<std::string> tags;
};

struct BindingFullApiHelp {
    std::vector<BindingFullFunctionHelp> functions;
    std::vector<BindingFullTypeHelp> types;
    std::vector<BindingFullEventHelp> events;
};

// The framework's types for asynchronous operations and callbacks.
enum class BindingAsyncState : std::int32_t {
    None = 0,
    Running = 1,
    Cancelling = 2,
    Cancelled = 3,
    Succeeded = 4,
    Failed = 5
};

struct BindingGenericEvent {
    BindingProperty data;
};

struct BindingCallbackEvent {
    std::uint32_t id = 0;
    std::vector<BindingProperty> parameters;
};

struct BindingGenericAsyncEvent {
    std::uint32_t asyncToken = 0;
    BindingProperty data;
};

struct BindingAsyncFailureEvent {
    std::uint32_t asyncToken = 0;
    std::string error;
};

struct BindingAsyncCancelEvent {
    std::uint32_t asyncToken = 0;
};

// Registers the help format, the description records, the asynchronous and
// callback types and the event "OnCallback". Names registered before are
// left as they are.
void RegisterBuiltinTypes(BindingTypeRegistry& registry);

// The description of a module's API from snapshots of its registry: a result
// with the members "functions", "types" and "events", each sorted by name.
// "Full" gives collections of the help records, converted through registry
// (an unregistered record type fails the result with the conversion's
// message); "Epytext" gives structures mapping each name to its docstring.
BindingProperty BuildApiDescription(const BindingTypeRegistry& registry,
                                    std::vector<const BindingFunctionInfo*> functions,
                                    std::vector<const BindingTypeInfo*> types,
                                    std::vector<const BindingEventInfo*> events, BindingHelpFormat format);

// Epytext docstrings of the API description, lines ending with CR LF.
std::string EpytextEscape(std::string_view text);
// "int32", "list[L{Standing}]", "dict[string]", ...; "" for a kind without one.
std::string EpytextType(const BindingTypeIdentifier& type, const BindingTypeRegistry& registry);

std::string EpytextOfFunction(const BindingFunctionInfo& function, const BindingTypeRegistry& registry);
std::string EpytextOfType(const BindingTypeInfo& type, const BindingTypeRegistry& registry);
std::string EpytextOfEvent(const BindingEventInfo& event);

}  // namespace wex
