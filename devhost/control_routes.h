#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host_session.h"
#include "http_answer.h"

namespace tav::host {

// A query argument of a control route, for its description.
struct ControlQueryArgument {
    const char* name;
    const char* schema;  // JSON Schema text
    const char* description;
};

// One of tav-host's own routes under /devhost/, as its table describes it: GET /devhost/openapi.json
// tells them all with their bodies and answers.
struct ControlRouteInfo {
    const char* method;
    const char* path;  // "/devhost/faults/{destination}/{method}"; "{+uri}" takes slashes
    const char* summary;
    const char* bodySchema;    // JSON Schema text of the body; null: no body
    const char* answerSchema;  // JSON Schema text of a 200 answer; null: 204 without a body
    std::vector<ControlQueryArgument> query = {};
    const char* answerType = "application/json";
};

std::span<const ControlRouteInfo> ControlRoutes();
// The methods that some control route takes on path, as MethodsMatching.
std::vector<std::string> ControlMethods(const std::string& path);

// Serves one of tav-host's own routes on the host's thread. target is the path with its query. A path
// that a route takes with other methods answers 405 with an Allow header; anything else under /devhost/
// answers 404.
HttpAnswer ServeControl(HostSession& session, std::string_view method, const std::string& target,
                        const std::string& body);

constexpr std::string_view kControlPrefix = "/devhost/";

}  // namespace tav::host
