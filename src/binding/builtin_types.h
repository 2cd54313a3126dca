#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "binding/property.h"

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

}  // namespace wex
