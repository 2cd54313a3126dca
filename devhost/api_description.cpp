#include "api_description.h"

#include "api_table_text.h"
#include "value_builders.h"

namespace tav::host {

namespace {

wex::BindingProperty DescribeRoute(const HostEndpointRecord& endpoint) {
    wex::BindingProperty arguments = EmptyCollection();
    const HostLocationRecord* location = endpoint.locations;
    for (const HostArgumentRecord* argument = endpoint.arguments; argument != nullptr; argument = argument->next) {
        arguments.Append() =
            Structure({{"name", String(TextOf(argument->name))},
                       {"type", String(TypeText(argument->kind, argument->elementKind, argument->typeName))},
                       {"location", String(LocationName(location != nullptr ? location->location : 0))}});
        location = location != nullptr ? location->next : nullptr;
    }
    return Structure(
        {{"method", String(EndpointMethod(endpoint))},
         {"path", String(TextOf(endpoint.pathTemplate))},
         {"function", String(TextOf(endpoint.functionName))},
         {"returns", String(TypeText(endpoint.resultKind, endpoint.resultElementKind, endpoint.resultTypeName))},
         {"description", String(TextOf(endpoint.description))},
         {"arguments", arguments}});
}

wex::BindingProperty DescribeType(const HostTypeRecord& type) {
    wex::BindingProperty described =
        Structure({{"name", String(TextOf(type.name))}, {"description", String(TextOf(type.description))}});
    if (type.fields != nullptr) {
        wex::BindingProperty& fields = described.Member("fields");
        fields.MakeCollection();
        for (const HostFieldRecord* field = type.fields; field != nullptr; field = field->next) {
            fields.Append() = Structure({{"name", String(TextOf(field->name))},
                                         {"type", String(TypeText(field->kind, field->elementKind, field->typeName))}});
        }
    } else {
        wex::BindingProperty& enumerators = described.Member("enumerators");
        enumerators.MakeCollection();
        for (const HostEnumeratorRecord* value = type.enumerators; value != nullptr; value = value->next) {
            enumerators.Append() = Structure({{"name", String(TextOf(value->name))}, {"value", Signed(value->value)}});
        }
    }
    return described;
}

}  // namespace

wex::BindingProperty DescribeApiTable(const HostApiTable& table) {
    wex::BindingProperty routes = EmptyCollection();
    for (const HostEndpointRecord* endpoint = table.endpoints; endpoint != nullptr; endpoint = endpoint->next) {
        routes.Append() = DescribeRoute(*endpoint);
    }
    wex::BindingProperty types = EmptyCollection();
    for (const HostTypeRecord* type = table.types; type != nullptr; type = type->next) {
        types.Append() = DescribeType(*type);
    }
    wex::BindingProperty events = EmptyCollection();
    for (const HostEventRecord* event = table.events; event != nullptr; event = event->next) {
        events.Append() = Structure({{"name", String(TextOf(event->name))},
                                     {"payload", String(TextOf(event->payloadTypeName))},
                                     {"description", String(TextOf(event->description))}});
    }
    return Structure({{"routes", routes}, {"types", types}, {"events", events}});
}

}  // namespace tav::host
