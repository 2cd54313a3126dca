#include "api_table_text.h"

#include <iterator>

#include "method_text.h"

namespace tav::host {

namespace {

const char* KindName(std::uint32_t kind) {
    static const char* const kNames[] = {"",       "bool",   "int8",   "uint8",  "int16",    "uint16", "int32",
                                         "uint32", "int64",  "uint64", "float",  "double",   "string", "object",
                                         "blob",   "vector", "enum",   "struct", "callback", "map"};
    return kind < std::size(kNames) ? kNames[kind] : "";
}

}  // namespace

const char* TextOf(const char* text) {
    return text != nullptr ? text : "";
}

const char* LocationName(std::uint32_t location) {
    switch (location) {
        case 1:
            return "query";
        case 2:
            return "path";
        case 4:
            return "header";
        case 5:
            return "body";
        default:
            return "anywhere";
    }
}

std::string TypeText(std::uint32_t kind, std::uint32_t elementKind, const char* typeName) {
    if (kind == 0) {
        return "none";
    }
    std::string text = KindName(kind);
    if (elementKind != 0) {
        text += std::string(" of ") + KindName(elementKind);
    }
    if (*TextOf(typeName) != '\0') {
        text += std::string(" ") + typeName;
    }
    return text;
}

const char* EndpointMethod(const HostEndpointRecord& endpoint) {
    return endpoint.method == 8 ? TextOf(endpoint.methodName) : MethodText(endpoint.method);
}

}  // namespace tav::host
