#include "binding/builtin_types.h"

#include "binding/registry.h"

namespace wex {

namespace {

void RegisterHelpTypes(BindingTypeRegistry& registry) {
    const std::vector<std::string> tags = {"$builtin", "help"};
    registry.Enum<BindingHelpFormat>("BindingHelpFormat", tags)
        .Description("Help format for binding functions and types.")
        .Value("Full", BindingHelpFormat::Full, "Native help format")
        .Value("Epytext", BindingHelpFormat::Epytext, "Python epytext format");
    registry.Struct<BindingFullTypeIdentifier>("BindingFullTypeIdentifier", tags)
        .Description("Describes the type of a value.")
        .Field("type", &BindingFullTypeIdentifier::type)
        .Field("elementType", &BindingFullTypeIdentifier::elementType);
    registry.Struct<BindingFullArgumentHelp>("BindingFullArgumentHelp", tags)
        .Description("Describes a function parameter.")
        .Field("name", &BindingFullArgumentHelp::name)
        .Field("description", &BindingFullArgumentHelp::description)
        .Field("type", &BindingFullArgumentHelp::type)
        .Field("optional", &BindingFullArgumentHelp::optional);
    registry.Struct<BindingFullFunctionHelp>("BindingFullFunctionHelp", tags)
        .Description("Describes a function.")
        .Field("name", &BindingFullFunctionHelp::name)
        .Field("nameSpace", &BindingFullFunctionHelp::nameSpace)
        .Field("arguments", &BindingFullFunctionHelp::arguments)
        .Field("returns", &BindingFullFunctionHelp::returns)
        .Field("description", &BindingFullFunctionHelp::description)
        .Field("help", &BindingFullFunctionHelp::help)
        .Field("threadSafe", &BindingFullFunctionHelp::threadSafe)
        .Field("async", &BindingFullFunctionHelp::async)
        .Field("tags", &BindingFullFunctionHelp::tags);
    registry.Struct<BindingFullEnumValueHelp>("BindingFullEnumValueHelp", tags)
        .Description("Describes an enumerator.")
        .Field("name", &BindingFullEnumValueHelp::name)
        .Field("description", &BindingFullEnumValueHelp::description)
        .Field("value", &BindingFullEnumValueHelp::value);
    registry.Struct<BindingFullFieldHelp>("BindingFullFieldHelp", tags)
        .Description("Describes a member of a struct.")
        .Field("name", &BindingFullFieldHelp::name)
        .Field("description", &BindingFullFieldHelp::description)
        .Field("offset", &BindingFullFieldHelp::offset)
        .Field("type", &BindingFullFieldHelp::type)
        .Field("optional", &BindingFullFieldHelp::optional);
    registry.Struct<BindingFullTypeHelp>("BindingFullTypeHelp", tags)
        .Description("Describes a struct or enum type.")
        .Field("name", &BindingFullTypeHelp::name)
        .Field("nameSpace", &BindingFullTypeHelp::nameSpace)
        .Field("size", &BindingFullTypeHelp::size)
        .Field("description", &BindingFullTypeHelp::description)
        .Field("tags", &BindingFullTypeHelp::tags)
        .Field("fields", &BindingFullTypeHelp::fields)
        .Field("values", &BindingFullTypeHelp::values);
    registry.Struct<BindingFullEventHelp>("BindingFullEventHelp", tags)
        .Description("Describes an event.")
        .Field("name", &BindingFullEventHelp::name)
        .Field("nameSpace", &BindingFullEventHelp::nameSpace)
        .Field("type", &BindingFullEventHelp::type)
        .Field("description", &BindingFullEventHelp::description)
        .Field("tags", &BindingFullEventHelp::tags);
    registry.Struct<BindingFullApiHelp>("BindingFullApiHelp", tags)
        .Description("Describes the exposed native API.")
        .Field("functions", &BindingFullApiHelp::functions)
        .Field("types", &BindingFullApiHelp::types)
        .Field("events", &BindingFullApiHelp::events);
}

void RegisterAsyncTypes(BindingTypeRegistry& registry) {
    const std::vector<std::string> tags = {"$builtin", "async"};
    constexpr auto none = BindingFieldOption::None;
    registry.Enum<BindingAsyncState>("BindingAsyncState", tags)
        .Description("Possible states of an asynchronous operation.")
        .Value("None", BindingAsyncState::None, "Invalid state")
        .Value("Running", BindingAsyncState::Running, "The operation is in flight")
        .Value("Cancelling", BindingAsyncState::Cancelling, "A request to cancel the operation has been made")
        .Value("Cancelled", BindingAsyncState::Cancelled, "The operation was cancelled")
        .Value("Succeeded", BindingAsyncState::Succeeded, "The operation completed successfully")
        .Value("Failed", BindingAsyncState::Failed, "The operation encountered an error");
    registry.Struct<BindingGenericEvent>("BindingGenericEvent", tags)
        .Description("Represents generic data for an event.")
        .Field("data", &BindingGenericEvent::data, none, "Event data");
    registry.Struct<BindingCallbackEvent>("BindingCallbackEvent", tags)
        .Description("Represents the parameters of a call to a provided callback.")
        .Field("id", &BindingCallbackEvent::id, none, "ID of the callback being invoked")
        .Field("parameters", &BindingCallbackEvent::parameters, none, "Callback parameters");
    registry.Struct<BindingGenericAsyncEvent>("BindingGenericAsyncEvent", tags)
        .Description("Represents generic data for an asynchronous event.")
        .Field("asyncToken", &BindingGenericAsyncEvent::asyncToken, none, "Asynchronous operation token")
        .Field("data", &BindingGenericAsyncEvent::data, none, "Event data");
    registry.Struct<BindingAsyncFailureEvent>("BindingAsyncFailureEvent", tags)
        .Description("Represents a failed asynchronous operation.")
        .Field("asyncToken", &BindingAsyncFailureEvent::asyncToken, none, "Asynchronous operation token")
        .Field("error", &BindingAsyncFailureEvent::error, none, "Error message");
    registry.Struct<BindingAsyncCancelEvent>("BindingAsyncCancelEvent", tags)
        .Description("Represents a cancelled asynchronous operation.")
        .Field("asyncToken", &BindingAsyncCancelEvent::asyncToken, none, "Asynchronous operation token");
    registry.AddEvent({"OnCallback",
                       "",
                       "Fired when a callback is invoked.",
                       TypeIdentifierOf<BindingCallbackEvent>(),
                       {"$builtin"}});
}

}  // namespace

void RegisterBuiltinTypes(BindingTypeRegistry& registry) {
    RegisterHelpTypes(registry);
    RegisterAsyncTypes(registry);
}

}  // namespace wex
