#include "openapi.h"

#include <algorithm>
#include <cctype>
#include <iterator>
#include <map>

#include "api_table_text.h"
#include "codec/json_reader.h"
#include "codec/json_writer.h"
#include "control_routes.h"
#include "value_builders.h"

namespace tav::host {

namespace {

using wex::BindingProperty;

constexpr const char* kPluginTag = "tav-leagues";
constexpr const char* kHostTag = "tav-host";
constexpr std::uint32_t kVector = 15;
constexpr std::uint32_t kEnum = 16;
constexpr std::uint32_t kStruct = 17;
constexpr std::uint32_t kMap = 19;

BindingProperty Schema(const char* json) {
    return wex::ParseJson(json);
}

BindingProperty Ref(const std::string& component) {
    return Structure({{"$ref", String("#/components/schemas/" + component)}});
}

// Registered type names as component keys, which allow letters, digits, '.', '-' and '_' only.
class SchemaNames {
  public:
    explicit SchemaNames(const HostApiTable* table) {
        for (const HostTypeRecord* type = table != nullptr ? table->types : nullptr; type != nullptr;
             type = type->next) {
            std::string key = TextOf(type->name);
            for (char& c : key) {
                if (!std::isalnum(static_cast<unsigned char>(c)) && c != '.' && c != '-' && c != '_') {
                    c = '_';
                }
            }
            while (used_.count(key) != 0) {
                key += "_";
            }
            used_.insert({key, TextOf(type->name)});
            keys_.insert({TextOf(type->name), key});
        }
    }
    // Empty for a name that the table does not register.
    std::string Key(const char* name) const {
        const auto found = keys_.find(TextOf(name));
        return found != keys_.end() ? found->second : std::string();
    }

  private:
    std::map<std::string, std::string> keys_;
    std::map<std::string, std::string> used_;
};

// The schemas of the scalar kinds, by kind number; an empty text is any JSON value (object, callback).
constexpr const char* kScalarSchemas[] = {
    "",
    R"({"type":"boolean"})",
    R"({"type":"integer","minimum":-128,"maximum":127})",
    R"({"type":"integer","minimum":0,"maximum":255})",
    R"({"type":"integer","minimum":-32768,"maximum":32767})",
    R"({"type":"integer","minimum":0,"maximum":65535})",
    R"({"type":"integer","format":"int32"})",
    R"({"type":"integer","minimum":0,"maximum":4294967295})",
    R"({"type":"integer","format":"int64"})",
    R"({"type":"integer","minimum":0,"format":"uint64"})",
    R"({"type":"number","format":"float"})",
    R"({"type":"number","format":"double"})",
    R"({"type":"string"})",
    "",
    R"({"type":"string","contentEncoding":"base64"})",
};

BindingProperty KindSchema(std::uint32_t kind, const char* typeName, const SchemaNames& names) {
    if (kind == kEnum || kind == kStruct) {
        const std::string key = names.Key(typeName);
        return !key.empty() ? Ref(key) : Schema(kind == kEnum ? R"({"type":"string"})" : R"({"type":"object"})");
    }
    if (kind < std::size(kScalarSchemas) && *kScalarSchemas[kind] != '\0') {
        return Schema(kScalarSchemas[kind]);
    }
    return Structure({});  // what the table does not name: any JSON value
}

// The schema of a value of kind, with its element's kind and type for a vector or a map.
BindingProperty TypeSchema(std::uint32_t kind, std::uint32_t elementKind, const char* typeName,
                           const SchemaNames& names) {
    if (kind == kVector) {
        return Structure({{"type", String("array")}, {"items", KindSchema(elementKind, typeName, names)}});
    }
    if (kind == kMap) {
        return Structure(
            {{"type", String("object")}, {"additionalProperties", KindSchema(elementKind, typeName, names)}});
    }
    return KindSchema(kind, typeName, names);
}

BindingProperty TypeComponent(const HostTypeRecord& type, const SchemaNames& names) {
    BindingProperty schema = Structure({{"description", String(TextOf(type.description))}});
    if (type.fields == nullptr) {
        schema.Member("type") = String("string");
        BindingProperty& values = schema.Member("enum");
        values.MakeCollection();
        BindingProperty& numbers = schema.Member("x-enum-values");
        numbers.MakeStructure();
        for (const HostEnumeratorRecord* value = type.enumerators; value != nullptr; value = value->next) {
            values.Append() = String(TextOf(value->name));
            numbers.Member(TextOf(value->name)) = Signed(value->value);
        }
        return schema;
    }
    schema.Member("type") = String("object");
    BindingProperty& properties = schema.Member("properties");
    properties.MakeStructure();
    BindingProperty required = EmptyCollection();
    for (const HostFieldRecord* field = type.fields; field != nullptr; field = field->next) {
        BindingProperty property = TypeSchema(field->kind, field->elementKind, field->typeName, names);
        if (*TextOf(field->description) != '\0') {
            property.Member("description") = String(TextOf(field->description));
        }
        properties.Member(TextOf(field->name)) = property;
        if (field->optional == 0) {
            required.Append() = String(TextOf(field->name));
        }
    }
    if (required.Size() != 0) {
        schema.Member("required") = required;
    }
    return schema;
}

BindingProperty JsonContent(const BindingProperty& schema) {
    return Structure({{"application/json", Structure({{"schema", schema}})}});
}

BindingProperty FailureAnswer() {
    return Structure({{"description", String("A failure, with the status of the answer")},
                      {"content", JsonContent(Ref("Failure"))}});
}

// "/devhost/resources/{+uri}" is "/devhost/resources/{uri}" in OpenAPI, which has no form for a
// parameter that takes slashes; the names of the parameters go to names.
std::string OpenApiPath(std::string_view path, std::vector<std::string>* names = nullptr) {
    std::string converted;
    for (std::size_t at = 0; at < path.size(); ++at) {
        if (path[at] == '{') {
            const std::size_t end = path.find('}', at);
            std::string_view name = path.substr(at + 1, end - at - 1);
            if (!name.empty() && name.front() == '+') {
                name.remove_prefix(1);
            }
            if (names != nullptr) {
                names->emplace_back(name);
            }
            converted += '{';
            converted += name;
            converted += '}';
            at = end;
        } else {
            converted += path[at];
        }
    }
    return converted;
}

BindingProperty PathParameter(const std::string& name, BindingProperty schema, const std::string& description) {
    BindingProperty parameter = Structure(
        {{"name", String(name)}, {"in", String("path")}, {"required", Bool(true)}, {"schema", std::move(schema)}});
    if (!description.empty()) {
        parameter.Member("description") = String(description);
    }
    return parameter;
}

BindingProperty PluginOperation(const HostEndpointRecord& endpoint, const SchemaNames& names) {
    std::vector<std::string> inPath;
    (void)OpenApiPath(TextOf(endpoint.pathTemplate), &inPath);
    BindingProperty parameters = EmptyCollection();
    BindingProperty operation =
        Structure({{"operationId", String(TextOf(endpoint.functionName))}, {"tags", EmptyCollection()}});
    operation.Member("tags").Append() = String(kPluginTag);
    if (*TextOf(endpoint.description) != '\0') {
        operation.Member("summary") = String(TextOf(endpoint.description));
    }
    if (*TextOf(endpoint.help) != '\0') {
        operation.Member("description") = String(TextOf(endpoint.help));
    }
    const HostLocationRecord* location = endpoint.locations;
    for (const HostArgumentRecord* argument = endpoint.arguments; argument != nullptr; argument = argument->next) {
        const std::string name = TextOf(argument->name);
        const std::uint32_t where = location != nullptr ? location->location : 0;
        location = location != nullptr ? location->next : nullptr;
        BindingProperty schema = TypeSchema(argument->kind, argument->elementKind, argument->typeName, names);
        if (where == 5) {
            operation.Member("requestBody") =
                Structure({{"required", Bool(argument->optional == 0)}, {"content", JsonContent(schema)}});
            continue;
        }
        if (std::find(inPath.begin(), inPath.end(), name) != inPath.end()) {
            parameters.Append() = PathParameter(name, schema, TextOf(argument->description));
            continue;
        }
        BindingProperty parameter = Structure({{"name", String(name)},
                                               {"in", String(where == 4 ? "header" : "query")},
                                               {"required", Bool(argument->optional == 0)}});
        std::string description = TextOf(argument->description);
        // A collection goes as JSON text ("[1001,1002]"), or element by element as name.0=...&name.1=...
        if (argument->kind == kVector || argument->kind == kMap || argument->kind == kStruct) {
            parameter.Member("content") = JsonContent(schema);
            description += std::string(description.empty() ? "" : ". ") + "As JSON text, or member by member: " + name +
                           (argument->kind == kVector ? ".0=...&" + name + ".1=..." : ".member=...");
        } else {
            parameter.Member("schema") = schema;
        }
        if (!description.empty()) {
            parameter.Member("description") = String(description);
        }
        parameters.Append() = parameter;
    }
    if (parameters.Size() != 0) {
        operation.Member("parameters") = parameters;
    }
    BindingProperty& responses = operation.Member("responses");
    if (endpoint.resultKind == 0) {
        responses.Member("204") = Structure({{"description", String("Done, without a value")}});
    } else {
        responses.Member("200") =
            Structure({{"description",
                        String(TypeText(endpoint.resultKind, endpoint.resultElementKind, endpoint.resultTypeName))},
                       {"content", JsonContent(TypeSchema(endpoint.resultKind, endpoint.resultElementKind,
                                                          endpoint.resultTypeName, names))}});
    }
    responses.Member("default") = FailureAnswer();
    return operation;
}

// "GET /devhost/faults/{destination}/{method}" is "getDevhostFaultsByDestinationByMethod".
std::string OperationId(std::string_view method, std::string_view path) {
    std::string id;
    for (const char c : method) {
        id += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
    bool upper = true;
    for (std::size_t at = 0; at < path.size(); ++at) {
        const char c = path[at];
        if (c == '{') {
            id += "By";
            upper = true;
        } else if (std::isalnum(static_cast<unsigned char>(c))) {
            id += upper ? static_cast<char>(std::toupper(static_cast<unsigned char>(c))) : c;
            upper = false;
        } else {
            upper = true;
        }
    }
    return id;
}

BindingProperty ControlOperation(const ControlRouteInfo& route) {
    BindingProperty operation = Structure({{"operationId", String(OperationId(route.method, route.path))},
                                           {"tags", EmptyCollection()},
                                           {"summary", String(route.summary)}});
    operation.Member("tags").Append() = String(kHostTag);
    std::vector<std::string> inPath;
    (void)OpenApiPath(route.path, &inPath);
    BindingProperty parameters = EmptyCollection();
    for (const std::string& name : inPath) {
        parameters.Append() = PathParameter(
            name, Schema(R"({"type":"string"})"),
            std::string(route.path).find("{+" + name + "}") != std::string::npos ? "May hold slashes" : "");
    }
    for (const ControlQueryArgument& argument : route.query) {
        parameters.Append() = Structure({{"name", String(argument.name)},
                                         {"in", String("query")},
                                         {"description", String(argument.description)},
                                         {"schema", Schema(argument.schema)}});
    }
    if (parameters.Size() != 0) {
        operation.Member("parameters") = parameters;
    }
    if (route.bodySchema != nullptr) {
        operation.Member("requestBody") =
            Structure({{"required", Bool(true)}, {"content", JsonContent(Schema(route.bodySchema))}});
    }
    BindingProperty& responses = operation.Member("responses");
    if (route.answerSchema == nullptr) {
        responses.Member("204") = Structure({{"description", String("Done")}});
    } else {
        responses.Member("200") = Structure(
            {{"description", String("The answer")},
             {"content", Structure({{route.answerType, Structure({{"schema", Schema(route.answerSchema)}})}})}});
    }
    responses.Member("default") = FailureAnswer();
    return operation;
}

std::string Lower(const char* method) {
    std::string lower = method;
    for (char& c : lower) {
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
    return lower;
}

}  // namespace

std::string OpenApiDocument(const HostApiTable* table) {
    const SchemaNames names(table);
    BindingProperty paths;
    paths.MakeStructure();
    BindingProperty schemas = Structure(
        {{"Failure", Schema(R"({"type":"object","description":"Every failure of tav-host and of the plug-in",)"
                            R"("properties":{"message":{"type":"string"},"status":{"type":"integer"}},)"
                            R"("required":["message","status"]})")}});
    BindingProperty webhooks;
    webhooks.MakeStructure();
    if (table != nullptr) {
        for (const HostEndpointRecord* endpoint = table->endpoints; endpoint != nullptr; endpoint = endpoint->next) {
            const char* method = EndpointMethod(*endpoint);
            paths.Member(OpenApiPath(TextOf(endpoint->pathTemplate))).Member(Lower(method)) =
                PluginOperation(*endpoint, names);
        }
        for (const HostTypeRecord* type = table->types; type != nullptr; type = type->next) {
            schemas.Member(names.Key(type->name)) = TypeComponent(*type, names);
        }
        for (const HostEventRecord* event = table->events; event != nullptr; event = event->next) {
            const std::string key = names.Key(event->payloadTypeName);
            webhooks.Member(TextOf(event->name)) = Structure(
                {{"post",
                  Structure(
                      {{"summary", String(TextOf(event->description))},
                       {"description", String(std::string("Published by the plug-in; GET /devhost/events "
                                                          "streams it as \"event: ") +
                                              TextOf(event->name) + "\" with the payload as data")},
                       {"operationId", String(std::string("event") + TextOf(event->name))},
                       {"requestBody", Structure({{"content", JsonContent(!key.empty() ? Ref(key) : Structure({}))}})},
                       {"responses", Structure({{"200", Structure({{"description", String("Seen")}})}})}})}});
        }
    }
    for (const ControlRouteInfo& route : ControlRoutes()) {
        paths.Member(OpenApiPath(route.path)).Member(Lower(route.method)) = ControlOperation(route);
    }
    BindingProperty tags = EmptyCollection();
    tags.Append() =
        Structure({{"name", String(kPluginTag)},
                   {"description", String("The plug-in's routes, read from the API table it handed over")}});
    tags.Append() = Structure({{"name", String(kHostTag)},
                               {"description", String("tav-host's own routes: the simulated platform, game server "
                                                      "and clock, and what the plug-in did")}});
    BindingProperty servers = EmptyCollection();
    servers.Append() = Structure({{"url", String("/")}});
    return wex::WriteJson(Structure(
        {{"openapi", String("3.1.0")},
         {"info", Structure({{"title", String("tav-leagues on tav-host")},
                             {"version", String(table != nullptr ? "api-table" : "no-plug-in")},
                             {"description", String("Made by tav-host from the plug-in's API table and its own "
                                                    "table of control routes.")}})},
         {"servers", servers},
         {"tags", tags},
         {"paths", paths},
         {"webhooks", webhooks},
         {"components", Structure({{"schemas", schemas}})}}));
}

}  // namespace tav::host
