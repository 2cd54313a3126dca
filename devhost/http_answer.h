#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "endpoint_call.h"

namespace tav::host {

// An answer as tav-host writes it over HTTP.
struct HttpAnswer {
    int status = 200;
    std::string contentType = "application/json";
    std::string body;
    std::vector<std::pair<std::string, std::string>> headers;  // besides the content type

    // {"message": message, "status": status} with that status.
    static HttpAnswer Failure(int status, const std::string& message);
    // 405 with an Allow header of the methods that path takes.
    static HttpAnswer NotAllowed(std::string_view method, const std::string& path,
                                 const std::vector<std::string>& allowed);
    static HttpAnswer Json(std::string body, int status = 200);
};

// The HTTP answer to a route's answer: its value as JSON, or its text, with the
// status the plug-in set. A failure without a status is a binding error (400);
// a success without a status is 200, or 204 when it has no value.
HttpAnswer RouteHttpAnswer(const EndpointAnswer& answer);

}  // namespace tav::host
