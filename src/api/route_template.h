#pragma once

#include <string>
#include <string_view>
#include <vector>

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
// path, one capture group per parameter in the order of their braces.
struct CompiledRouteTemplate {
    std::string expression;
    std::vector<RouteTemplateParameter> parameters;
};

CompiledRouteTemplate CompileRouteTemplate(std::string_view pathTemplate);

}  // namespace wex
