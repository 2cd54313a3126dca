#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "api/route.h"

namespace wex {

struct RouteMatch {
    const Route* route = nullptr;
    std::map<std::string, std::string> parameters;  // name to decoded value
};

// The route that serves method and path (the path without its query), or
// none. A later route replaces an earlier one that passes only when the
// earlier one has parameters and the later one's decoded values are shorter
// in sum, so literal routes and tighter captures win, and ties go to the
// earlier registration.
std::optional<RouteMatch> MatchRoute(RouteList routes, std::uint32_t method, std::string_view methodName,
                                     std::string_view path);

}  // namespace wex
