#include "api/route_match.h"

#include "api/url_decoding.h"

namespace wex {

namespace {

bool MethodPasses(const Route& route, std::uint32_t method, std::string_view methodName) {
    if (route.method == 0) {
        return true;
    }
    return route.method == method && (method != 8 || route.methodName == methodName);
}

struct PathMatch {
    RouteMatch match;
    std::size_t capturedLength = 0;  // of the decoded values, in sum
};

// The decoded parameters of route for path, or none when the path does not match.
std::optional<PathMatch> MatchPath(const Route& route, std::string_view path) {
    if (!route.pattern) {
        if (path != route.literalPath) {
            return std::nullopt;
        }
        return PathMatch{RouteMatch{&route, {}}, 0};
    }
    const std::optional<std::vector<std::string_view>> captures = route.pattern->Match(path);
    if (!captures) {
        return std::nullopt;
    }
    PathMatch found{RouteMatch{&route, {}}, 0};
    for (std::size_t index = 0; index < route.parameters.size() && index < captures->size(); ++index) {
        std::string value = DecodeUrlComponent((*captures)[index]);
        found.capturedLength += value.size();
        found.match.parameters[route.parameters[index].name] = std::move(value);
    }
    return found;
}

}  // namespace

std::optional<RouteMatch> MatchRoute(RouteList routes, std::uint32_t method, std::string_view methodName,
                                     std::string_view path) {
    std::optional<RouteMatch> candidate;
    std::size_t candidateLength = 0;
    for (const Route* route : routes) {
        if (!MethodPasses(*route, method, methodName)) {
            continue;
        }
        std::optional<PathMatch> found = MatchPath(*route, path);
        if (!found) {
            continue;
        }
        if (!candidate || (!candidate->route->parameters.empty() && found->capturedLength < candidateLength)) {
            candidate = std::move(found->match);
            candidateLength = found->capturedLength;
        }
    }
    return candidate;
}

}  // namespace wex
