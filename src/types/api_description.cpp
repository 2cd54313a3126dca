#include "types/api_description.h"

#include <algorithm>
#include <string>
#include <vector>

#include "types/native_conversion.h"
#include "types/registry.h"

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

namespace {

std::string RegisteredNameOr(const BindingTypeIdentity* identity, std::string_view unknown,
                             const BindingTypeRegistry& registry) {
    const BindingTypeInfo* type = identity != nullptr ? registry.FindType(identity->id) : nullptr;
    return type != nullptr ? type->name : std::string(unknown);
}

std::string KindTypeText(BindingTypeKind kind, const BindingTypeIdentity* identity,
                         const BindingTypeRegistry& registry) {
    if (kind == BindingTypeKind::Enum) {
        return RegisteredNameOr(identity, "enum", registry);
    }
    if (kind == BindingTypeKind::Struct) {
        return RegisteredNameOr(identity, "struct", registry);
    }
    return std::string(BindingTypeKindName(kind));
}

BindingFullTypeIdentifier FullTypeOf(const BindingTypeIdentifier& type, const BindingTypeRegistry& registry) {
    if (type.kind == BindingTypeKind::Vector || type.kind == BindingTypeKind::Map) {
        return {std::string(BindingTypeKindName(type.kind)), KindTypeText(type.elementKind, type.type, registry)};
    }
    return {KindTypeText(type.kind, type.type, registry), {}};
}

BindingFullFunctionHelp FunctionHelpOf(const BindingFunctionInfo& function, const BindingTypeRegistry& registry) {
    BindingFullFunctionHelp help{function.name,
                                 function.nameSpace,
                                 {},
                                 FullTypeOf(function.result, registry),
                                 function.description,
                                 function.help,
                                 function.threadSafe,
                                 {},
                                 function.tags};
    for (const BindingArgumentInfo& argument : function.arguments) {
        help.arguments.push_back(
            {argument.name, argument.description, FullTypeOf(argument.type, registry), argument.optional});
    }
    if (function.async) {
        help.async = RegisteredNameOr(function.result.type, "", registry);
    }
    return help;
}

BindingFullTypeHelp TypeHelpOf(const BindingTypeInfo& type, const BindingTypeRegistry& registry) {
    BindingFullTypeHelp help{type.name, type.nameSpace, type.size, type.description, type.tags, {}, {}};
    for (const BindingFieldInfo& field : type.fields) {
        help.fields.push_back(
            {field.name, field.description, field.offset, FullTypeOf(field.type, registry), field.optional});
    }
    for (const auto& [name, enumerator] : type.enumValues) {
        help.values.push_back({name, enumerator.description, enumerator.value});
    }
    return help;
}

BindingFullEventHelp EventHelpOf(const BindingEventInfo& event, const BindingTypeRegistry& registry) {
    return {event.name, event.nameSpace, FullTypeOf(event.payload, registry), event.description, event.tags};
}

template <class Record>
void SortByName(std::vector<const Record*>& records) {
    std::sort(records.begin(), records.end(),
              [](const Record* left, const Record* right) { return left->name < right->name; });
}

// Appends each record's help, converted, to member; false once a conversion failed result.
template <class Record, class MakeHelp>
bool AppendFull(BindingProperty& result, std::string_view member, const std::vector<const Record*>& records,
                const BindingTypeRegistry& registry, MakeHelp makeHelp) {
    BindingProperty& list = result.Member(member);
    list.MakeCollection();
    for (const Record* record : records) {
        BindingProperty converted;
        ToBinding(converted, makeHelp(*record, registry), registry);
        if (!converted.IsValid()) {
            result.SetError(converted.GetError());
            return false;
        }
        list.Append() = std::move(converted);
    }
    return true;
}

template <class Record, class MakeText>
void AppendEpytext(BindingProperty& result, std::string_view member, const std::vector<const Record*>& records,
                   MakeText makeText) {
    BindingProperty& map = result.Member(member);
    map.MakeStructure();
    for (const Record* record : records) {
        map.Member(record->name).SetString(makeText(*record));
    }
}

}  // namespace

BindingProperty BuildApiDescription(const BindingTypeRegistry& registry,
                                    std::vector<const BindingFunctionInfo*> functions,
                                    std::vector<const BindingTypeInfo*> types,
                                    std::vector<const BindingEventInfo*> events, BindingHelpFormat format) {
    SortByName(functions);
    SortByName(types);
    SortByName(events);
    BindingProperty result;
    result.MakeStructure();
    if (format == BindingHelpFormat::Epytext) {
        AppendEpytext(result, "functions", functions,
                      [&](const BindingFunctionInfo& function) { return EpytextOfFunction(function, registry); });
        AppendEpytext(result, "types", types,
                      [&](const BindingTypeInfo& type) { return EpytextOfType(type, registry); });
        AppendEpytext(result, "events", events, [](const BindingEventInfo& event) { return EpytextOfEvent(event); });
        return result;
    }
    if (AppendFull(result, "functions", functions, registry, FunctionHelpOf) &&
        AppendFull(result, "types", types, registry, TypeHelpOf)) {
        AppendFull(result, "events", events, registry, EventHelpOf);
    }
    return result;
}

namespace {

constexpr std::string_view kLineEnd = "\r\n";

std::string RegisteredName(const BindingTypeIdentity* identity, const BindingTypeRegistry& registry) {
    const BindingTypeInfo* type = identity != nullptr ? registry.FindType(identity->id) : nullptr;
    return type != nullptr ? type->name : std::string();
}

std::string KindText(BindingTypeKind kind, const BindingTypeIdentity* identity, const BindingTypeRegistry& registry) {
    switch (kind) {
        case BindingTypeKind::Blob:
            return "bytearray";
        case BindingTypeKind::Enum:
        case BindingTypeKind::Struct:
            return "L{" + RegisteredName(identity, registry) + "}";
        case BindingTypeKind::Vector:
        case BindingTypeKind::Map:
        case BindingTypeKind::None:
            return {};
        default:
            return std::string(BindingTypeKindName(kind));
    }
}

// The description and the blank line after it.
std::string Heading(std::string_view description) {
    return EpytextEscape(description) + std::string(kLineEnd) + std::string(kLineEnd);
}

std::string TagsLine(const std::vector<std::string>& tags) {
    if (tags.empty()) {
        return {};
    }
    std::string line = "@tags: ";
    for (std::size_t index = 0; index < tags.size(); ++index) {
        line += (index != 0 ? "," : "") + tags[index];
    }
    return line + std::string(kLineEnd);
}

}  // namespace

std::string EpytextEscape(std::string_view text) {
    std::string escaped;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char c = text[at];
        if (at == 0 && c == '-') {
            escaped += "E{-}";
        } else if (c == '{') {
            escaped += "E{lb}";
        } else if (c == '}') {
            escaped += "E{rb}";
        } else {
            escaped += c;
        }
    }
    return escaped;
}

std::string EpytextType(const BindingTypeIdentifier& type, const BindingTypeRegistry& registry) {
    if (type.kind == BindingTypeKind::Vector || type.kind == BindingTypeKind::Map) {
        const std::string element = KindText(type.elementKind, type.type, registry);
        return (type.kind == BindingTypeKind::Vector ? "list[" : "dict[") + element + "]";
    }
    return KindText(type.kind, type.type, registry);
}

std::string EpytextOfFunction(const BindingFunctionInfo& function, const BindingTypeRegistry& registry) {
    std::string text;
    if (!function.description.empty()) {
        text += Heading(function.description);
    }
    if (!function.help.empty()) {
        text += Heading(function.help);
    }
    for (const BindingArgumentInfo& argument : function.arguments) {
        if (!argument.description.empty()) {
            text += "@param " + argument.name + ": " + (argument.optional ? "(optional) " : "") +
                    EpytextEscape(argument.description) + std::string(kLineEnd);
        }
    }
    for (const BindingArgumentInfo& argument : function.arguments) {
        text += "@type " + argument.name + ": " + EpytextType(argument.type, registry) + std::string(kLineEnd);
    }
    const std::string resultType = EpytextType(function.result, registry);
    if (function.result.kind != BindingTypeKind::None) {
        text += "@rtype: " + resultType + std::string(kLineEnd);
    }
    text += TagsLine(function.tags);
    if (function.threadSafe) {
        text += "@threadsafe: true" + std::string(kLineEnd);
    }
    if (function.async) {
        text += "@async: " + resultType + std::string(kLineEnd);
    }
    return text;
}

std::string EpytextOfType(const BindingTypeInfo& type, const BindingTypeRegistry& registry) {
    std::string text = Heading(type.description);
    if (!type.isEnum) {
        for (const BindingFieldInfo& field : type.fields) {
            text += "@ivar " + field.name + ": " + EpytextEscape(field.description) + std::string(kLineEnd);
            text += "@type " + field.name + ": " + EpytextType(field.type, registry) + std::string(kLineEnd);
        }
        return text + TagsLine(type.tags);
    }
    std::vector<const BindingEnumValueInfo*> enumerators;
    for (const auto& [name, enumerator] : type.enumValues) {
        enumerators.push_back(&enumerator);
    }
    std::stable_sort(enumerators.begin(), enumerators.end(),
                     [](const auto* left, const auto* right) { return left->value < right->value; });
    for (const BindingEnumValueInfo* enumerator : enumerators) {
        text += "@cvar " + enumerator->name + ": (" + std::to_string(enumerator->value) + ")";
        if (!enumerator->description.empty()) {
            text += " " + EpytextEscape(enumerator->description);
        }
        text += kLineEnd;
    }
    text += TagsLine(type.tags);
    return text + "@size: " + std::to_string(type.size) + std::string(kLineEnd);
}

std::string EpytextOfEvent(const BindingEventInfo& event) {
    return Heading(event.description) + TagsLine(event.tags);
}

}  // namespace wex
