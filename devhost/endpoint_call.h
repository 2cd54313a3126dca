#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "api/route_table.h"
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

// The endpoints of an API table as the framework's routes, so that the host picks for a request the
// endpoint that the plug-in's own dispatcher would (parameters may be empty, {+name} takes slashes, the
// shortest capture wins). The table must outlive it.
class EndpointRoutes {
  public:
    explicit EndpointRoutes(const HostApiTable& table);

    // The endpoint that serves method and path (the query cut off); null when none does.
    const HostEndpointRecord* Find(std::uint32_t method, std::string_view path) const;
    // The methods that some endpoint serves on path, as MethodsMatching.
    std::vector<std::string> AllowedMethods(std::string_view path) const;

  private:
    std::vector<wex::Route> routes_;
    std::vector<const wex::Route*> order_;
    std::vector<const HostEndpointRecord*> endpoints_;  // beside routes_
};

// A route of a method and a path template, matched as the plug-in's dispatcher matches its own.
wex::Route RouteOfTemplate(std::uint32_t method, std::string_view methodName, std::string_view pathTemplate);
// The methods among DELETE, GET, PATCH, POST and PUT for which one of routes serves path, in that order.
std::vector<std::string> MethodsMatching(wex::RouteList routes, std::string_view path);

// Calls the endpoint that serves the request through its entry function and
// releases the response. No endpoint: status 404 with an error naming the request.
EndpointAnswer CallEndpoint(const EndpointRoutes& routes, std::uint32_t hostContext, std::uint32_t method,
                            const std::string& pathWithQuery, const std::string& body, const std::string& contentType);

}  // namespace tav::host
