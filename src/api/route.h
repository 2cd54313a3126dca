#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "api/route_pattern.h"
#include "api/route_template.h"

namespace wex {

struct BindingFunctionInfo;

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

}  // namespace wex
