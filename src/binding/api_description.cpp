#include "binding/api_description.h"

#include <algorithm>
#include <string>

#include "binding/epytext.h"
#include "binding/native_conversion.h"
#include "binding/registry.h"

namespace wex {

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

}  // namespace wex
