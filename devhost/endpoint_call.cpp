#include "endpoint_call.h"

#include <array>
#include <string_view>

#include "api/route_table.h"
#include "api/route_template.h"
#include "host_value_json.h"
#include "method_text.h"

namespace tav::host {

namespace {

// A route as the plug-in's route table builds it, less the function, which stays on the plug-in's side.
wex::Route RouteOf(const HostEndpointRecord& endpoint) {
    return RouteOfTemplate(
        endpoint.method,
        endpoint.method == HostMethodOther && endpoint.methodName != nullptr ? endpoint.methodName : "",
        endpoint.pathTemplate != nullptr ? endpoint.pathTemplate : "");
}

std::string ReadStreamedBody(const HostResponse& response) {
    std::string body;
    std::array<char, 4096> chunk;
    bool more = true;
    while (more) {
        std::uint32_t size = chunk.size();
        if (!response.streamRead(response.streamProducer, chunk.data(), &size, &more) || size > chunk.size()) {
            break;
        }
        body.append(chunk.data(), size);
    }
    if (response.streamClose != nullptr) {
        response.streamClose(response.streamProducer);
    }
    return body;
}

EndpointAnswer ReadAnswer(const HostResponse& response) {
    EndpointAnswer answer;
    answer.status = response.status;
    answer.failed = response.error != nullptr;
    answer.error = response.error != nullptr ? response.error : "";
    const HostValue result = response.result;
    answer.json = result.tag != HostValueNone ? HostValueJson(result) : "";
    answer.text = response.streamRead != nullptr ? ReadStreamedBody(response)
                  : response.text != nullptr     ? response.text
                                                 : "";
    for (std::uint32_t index = 0; index < response.headerCount; ++index) {
        answer.headers[response.headers[index].name] = response.headers[index].value;
    }
    return answer;
}

}  // namespace

wex::Route RouteOfTemplate(std::uint32_t method, std::string_view methodName, std::string_view pathTemplate) {
    wex::Route route;
    route.method = method;
    route.methodName = methodName;
    route.pathTemplate = wex::NormalizeRouteTemplate(std::string(pathTemplate));
    if (route.pathTemplate.find('{') == std::string::npos) {
        route.literalPath = route.pathTemplate;
    } else {
        wex::CompiledRouteTemplate compiled = wex::CompileRouteTemplate(route.pathTemplate);
        route.pattern.emplace(std::move(compiled.pieces));
        route.parameters = std::move(compiled.parameters);
    }
    return route;
}

EndpointRoutes::EndpointRoutes(const HostApiTable& table) {
    for (const HostEndpointRecord* endpoint = table.endpoints; endpoint != nullptr; endpoint = endpoint->next) {
        routes_.push_back(RouteOf(*endpoint));
        endpoints_.push_back(endpoint);
    }
    for (const wex::Route& route : routes_) {
        order_.push_back(&route);
    }
}

// A method of code 8 comes without its name, so it finds only the routes for any method.
const HostEndpointRecord* EndpointRoutes::Find(std::uint32_t method, std::string_view path) const {
    const std::optional<wex::RouteMatch> match = wex::MatchRoute(order_, method, {}, path);
    return match ? endpoints_[static_cast<std::size_t>(match->route - routes_.data())] : nullptr;
}

std::vector<std::string> EndpointRoutes::AllowedMethods(std::string_view path) const {
    return MethodsMatching(order_, path);
}

std::vector<std::string> MethodsMatching(wex::RouteList routes, std::string_view path) {
    std::vector<std::string> methods;
    for (const std::uint32_t method :
         {HostMethodDelete, HostMethodGet, HostMethodPatch, HostMethodPost, HostMethodPut}) {
        if (wex::MatchRoute(routes, method, {}, path)) {
            methods.push_back(MethodText(method));
        }
    }
    return methods;
}

EndpointAnswer CallEndpoint(const EndpointRoutes& routes, std::uint32_t hostContext, std::uint32_t method,
                            const std::string& pathWithQuery, const std::string& body, const std::string& contentType) {
    const std::string path = pathWithQuery.substr(0, pathWithQuery.find('?'));
    const HostEndpointRecord* endpoint = routes.Find(method, path);
    if (endpoint == nullptr) {
        EndpointAnswer answer;
        answer.status = 404;
        answer.failed = true;
        answer.error = "No endpoint for " + pathWithQuery;
        return answer;
    }
    HostRequest request{};
    request.method = method;
    request.path = pathWithQuery.c_str();
    request.endpointContext = endpoint->context;
    request.contentType = contentType.empty() ? nullptr : contentType.c_str();
    request.body = body.empty() ? nullptr : body.data();
    request.bodyLength = static_cast<std::uint32_t>(body.size());
    request.context = hostContext;
    HostResponse response{};
    endpoint->entry(&response, &request);
    EndpointAnswer answer = ReadAnswer(response);
    if (response.release != nullptr) {
        response.release(&response);
    }
    return answer;
}

}  // namespace tav::host
