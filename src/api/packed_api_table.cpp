#include "api/packed_api_table.h"

#include "api/dispatcher.h"
#include "api/live_addresses.h"
#include "types/registry.h"

namespace wex {

namespace {

// Links each record of a contiguous array to the next; the last to none.
template <class Record>
const Record* Chain(std::vector<Record>& records) {
    for (std::size_t index = 0; index + 1 < records.size(); ++index) {
        records[index].next = &records[index + 1];
    }
    return records.empty() ? nullptr : records.data();
}

std::uint32_t KindCode(BindingTypeKind kind) {
    const auto code = static_cast<std::int32_t>(kind);
    return code >= 1 && code <= 19 ? static_cast<std::uint32_t>(code) : 0;
}

std::uint32_t LocationCode(std::int32_t location) {
    return location >= 1 && location <= 5 ? static_cast<std::uint32_t>(location) : 0;
}

const char* TypeNameOf(const BindingTypeIdentifier& type, const BindingTypeRegistry& registry) {
    const BindingTypeKind kind = type.kind;
    const bool refers = kind == BindingTypeKind::Vector || kind == BindingTypeKind::Enum ||
                        kind == BindingTypeKind::Struct || kind == BindingTypeKind::Map;
    const BindingTypeInfo* info = refers && type.type != nullptr ? registry.FindType(type.type->id) : nullptr;
    return info != nullptr ? info->name.c_str() : "";
}

std::uint32_t Count(std::size_t size) {
    return static_cast<std::uint32_t>(size);
}

}  // namespace

void PackedApiTable::Build(const BindingTypeRegistry& registry, RouteList routes, void* module) {
    BuildTypes(registry);
    BuildEvents(registry);
    BuildEndpoints(registry, routes, module);
    header_ = {Chain(endpoints_),    Count(endpoints_.size()), Chain(types_),
               Count(types_.size()), Chain(events_),           Count(events_.size())};
}

const char* const* PackedApiTable::KeepTexts(const std::vector<std::string>& texts) {
    std::vector<const char*>& kept = texts_.emplace_back();
    for (const std::string& text : texts) {
        kept.push_back(text.c_str());
    }
    return kept.empty() ? nullptr : kept.data();
}

void PackedApiTable::BuildTypes(const BindingTypeRegistry& registry) {
    for (const BindingTypeInfo* type : registry.Types()) {
        HostTypeRecord record{nullptr,
                              type->name.c_str(),
                              type->nameSpace.c_str(),
                              type->size,
                              type->description.c_str(),
                              KeepTexts(type->tags),
                              Count(type->tags.size()),
                              nullptr,
                              nullptr,
                              0};
        if (!type->fields.empty()) {
            std::vector<HostFieldRecord>& fields = fields_.emplace_back();
            for (const BindingFieldInfo& field : type->fields) {
                fields.push_back({nullptr, field.name.c_str(), field.description.c_str(), field.offset,
                                  KindCode(field.type.kind), KindCode(field.type.elementKind),
                                  TypeNameOf(field.type, registry), static_cast<std::uint8_t>(field.optional)});
            }
            record.fields = Chain(fields);
            record.count = Count(fields.size());
        } else {
            std::vector<HostEnumeratorRecord>& enumerators = enumerators_.emplace_back();
            for (const auto& [name, enumerator] : type->enumValues) {
                enumerators.push_back({nullptr, name.c_str(), enumerator.description.c_str(), enumerator.value});
            }
            record.enumerators = Chain(enumerators);
            record.count = Count(enumerators.size());
        }
        types_.push_back(record);
    }
}

void PackedApiTable::BuildEvents(const BindingTypeRegistry& registry) {
    for (const BindingEventInfo* event : registry.Events()) {
        events_.push_back({nullptr, event->name.c_str(), event->nameSpace.c_str(), TypeNameOf(event->payload, registry),
                           event->description.c_str(), KeepTexts(event->tags), Count(event->tags.size())});
    }
}

HostEndpointRecord PackedApiTable::DescribeFunction(const BindingTypeRegistry& registry,
                                                    const BindingFunctionInfo& function) {
    HostEndpointRecord record{};
    std::vector<HostArgumentRecord>& arguments = arguments_.emplace_back();
    for (const BindingArgumentInfo& argument : function.arguments) {
        arguments.push_back({nullptr, argument.name.c_str(), argument.description.c_str(), KindCode(argument.type.kind),
                             KindCode(argument.type.elementKind), TypeNameOf(argument.type, registry),
                             static_cast<std::uint8_t>(argument.optional)});
    }
    const BindingTypeInfo* result =
        function.result.type != nullptr ? registry.FindType(function.result.type->id) : nullptr;
    record.functionName = function.name.c_str();
    record.nameSpace = function.nameSpace.c_str();
    record.arguments = Chain(arguments);
    record.argumentCount = Count(arguments.size());
    record.resultKind = KindCode(function.result.kind);
    record.resultElementKind = KindCode(function.result.elementKind);
    record.resultTypeName = TypeNameOf(function.result, registry);
    record.description = function.description.c_str();
    record.help = function.help.c_str();
    record.threadSafe = static_cast<std::uint8_t>(function.threadSafe);
    record.asyncResultTypeName = function.async && result != nullptr ? result->name.c_str() : "";
    record.tags = KeepTexts(function.tags);
    record.tagCount = Count(function.tags.size());
    return record;
}

PackedApiTable::~PackedApiTable() {
    for (const HostEndpointContext& context : contexts_) {
        LiveEndpointContexts().Remove(&context);
    }
}

void PackedApiTable::BuildEndpoints(const BindingTypeRegistry& registry, RouteList routes, void* module) {
    for (const Route* route : routes) {
        HostEndpointRecord record = DescribeFunction(registry, *route->function);
        record.context = &contexts_.emplace_back(HostEndpointContext{module, route});
        LiveEndpointContexts().Add(record.context);
        record.entry = &EndpointEntry;
        std::vector<HostLocationRecord>& locations = locations_.emplace_back();
        for (const std::int32_t location : route->argumentLocations) {
            locations.push_back({nullptr, LocationCode(location)});
        }
        record.locations = Chain(locations);
        record.pathTemplate = route->pathTemplate.c_str();
        record.method = route->method;
        record.flag = route->flag;
        std::vector<HostTextListRecord>& textLists = textLists_.emplace_back();
        for (const std::vector<std::string>& texts : route->textLists) {
            textLists.push_back({nullptr, KeepTexts(texts), Count(texts.size())});
        }
        record.textLists = Chain(textLists);
        record.textListCount = Count(textLists.size());
        record.methodName = route->methodName.c_str();
        endpoints_.push_back(record);
    }
}

}  // namespace wex
