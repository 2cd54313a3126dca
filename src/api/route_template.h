#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "api/route_pattern.h"

namespace wex {

// {name} takes one path segment, {+name} anything with slashes, {#name} a
// "#" and anything after it.
enum class RouteParameterKind { Plain, Reserved, Fragment };

struct RouteTemplateParameter {
    RouteParameterKind kind = RouteParameterKind::Plain;
    std::string name;
};

// A template as routes keep it: one trailing "/" removed, "/" alone kept.
std::string NormalizeRouteTemplate(std::string_view pathTemplate);

// A template turned into an ECMAScript expression that matches the whole
// path, one capture group per parameter in the order of their braces, and
// into the pieces of the RoutePattern that matches the same paths.
struct CompiledRouteTemplate {
    std::string expression;
    std::vector<RouteTemplateParameter> parameters;
    std::vector<RoutePatternPiece> pieces;
};

CompiledRouteTemplate CompileRouteTemplate(std::string_view pathTemplate);

}  // namespace wex
