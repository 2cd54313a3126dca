#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "api/route_template.h"
#include "types/type_info.h"

namespace wex {

// A module's routes: how a route's function is named, how a request's
// method and path select a route, and the table that registers them.

// "DELETE", "GET", "HEAD", "OPTIONS", "PATCH", "POST" and "PUT" for the codes
// 1 to 7 of HostMethod; the empty text for any other code.
std::string_view MethodName(std::uint32_t code);

// The name under which a route's function is registered and reported:
// GET with "/tav-leagues/v1/summoner-leagues/{summonerId}" gives
// GetTavLeaguesV1SummonerLeaguesBySummonerId. With an empty method name the
// template alone is turned into an identifier ("tav-leagues" gives TavLeagues).
std::string DeriveFunctionName(std::string_view methodName, std::string_view pathTemplate);

// The same rule applied to a text alone.
std::string MakeIdentifier(std::string_view text);

// A path parameter or query piece as its sender meant it: "+" becomes a space
// and "%" with two hexadecimal digits (either case) becomes that byte. A "%"
// without two hexadecimal digits after it is kept as written.
std::string DecodeUrlComponent(std::string_view text);

// Where a request may give an argument.
enum ArgumentLocation : std::int32_t {
    ArgumentLocationAnywhere = 0,  // a header, the path or the query
    ArgumentLocationQuery = 1,
    ArgumentLocationPath = 2,
    ArgumentLocationHeader = 4,  // under the argument's name in lower case
    ArgumentLocationBody = 5,
};

// One endpoint of the module: a method and a path template bound to a
// registered function. Routes live as long as their module; the API table
// points at them.
struct Route {
    const BindingFunctionInfo* function = nullptr;    // in the module's registry
    std::uint32_t method = 0;                         // a HostMethod; 0 accepts every method
    std::string methodName;                           // for method 8
    std::string pathTemplate;                         // normalised
    std::string literalPath;                          // set when the template has no parameter
    std::optional<RoutePattern> pattern;              // set when it has
    std::vector<RouteTemplateParameter> parameters;   // one per capture group
    std::vector<std::int32_t> argumentLocations;      // one per argument, in argument order
    std::uint8_t flag = 0;                            // carried into the API table as it is
    std::vector<std::vector<std::string>> textLists;  // likewise
};

// The routes a request is matched against, in registration order.
using RouteList = std::span<const Route* const>;

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

// Names the arguments of a newly added route's function in order: the n-th
// call describes the handler's n-th argument and sets where requests give it.
// For a function registered before under the same name it does nothing, so
// the first registration's description stands.
class ApiArgumentBuilder {
  public:
    // function is null when the function was registered before.
    ApiArgumentBuilder(BindingFunctionInfo* function, Route& route) : function_(function), route_(&route) {}

    ApiArgumentBuilder& AddPathArgument(std::string name, std::string description);
    ApiArgumentBuilder& AddQueryArgument(std::string name, std::string description);
    // Any ArgumentLocation, for arguments read from a header or the body.
    ApiArgumentBuilder& AddArgument(std::string name, std::string description, std::int32_t location);

  private:
    BindingFunctionInfo* function_;
    Route* route_;
    std::size_t named_ = 0;
};

// A module's routes in registration order. Routes keep their addresses for
// the table's life, so endpoint records can point at them.
class RouteTable {
  public:
    // Normalises the template, names function after method and template,
    // compiles the template, registers function in registry (the handler
    // describes its argument and result types) and appends the route.
    // methodName names a method of code 8.
    ApiArgumentBuilder AddRoute(BindingTypeRegistry& registry, std::uint32_t method, std::string_view pathTemplate,
                                BindingFunctionInfo function, std::string_view methodName = {});

    RouteList Routes() const { return order_; }

  private:
    std::vector<std::unique_ptr<Route>> routes_;
    std::vector<const Route*> order_;
};

}  // namespace wex
