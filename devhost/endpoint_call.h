#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "boundary/boundary.h"

namespace tav::host {

// The plug-in's answer to one call of its local API, read from the response
// record before it was released.
struct EndpointAnswer {
    std::uint32_t status = 0;
    bool failed = false;  // the record carried an error text
    std::string error;
    std::string json;  // the result value as JSON text; empty when there is none
    std::string text;  // the response's text, or its streamed body
    std::map<std::string, std::string> headers;
};

// The endpoint of table that serves method and path (the query cut off), as a
// C host finds it: the method must match and the path the record's template,
// where "{name}" stands for a non-empty run of characters without "/" and
// other text for itself. A template without parameters wins over others;
// otherwise the first in table order. Null when none matches.
const HostEndpointRecord* FindEndpoint(const HostApiTable& table, std::uint32_t method, std::string_view path);

// Calls the endpoint that serves the request through its entry function and
// releases the response. No endpoint: status 404 with an error naming the request.
EndpointAnswer CallEndpoint(const HostApiTable& table, std::uint32_t hostContext, std::uint32_t method,
                            const std::string& pathWithQuery, const std::string& body, const std::string& contentType);

}  // namespace tav::host
