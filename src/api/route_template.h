#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace wex {

// One piece of a compiled template: a literal text, a capture that takes no
// "/" ({name}), or a capture that takes anything but a line break ({+name},
// and {#name} after its literal "#").
struct RoutePatternPiece {
    enum class Kind { Literal, Segment, Anything };
    Kind kind = Kind::Literal;
    std::string literal;
};

// A template's path test against the whole path. Each capture takes the
// longest text after which the rest of the template still matches, so it
// selects exactly what the template's ECMAScript expression selects
// ("{name}" as "([^/]*)", "{+name}" as "(.*)", "{#name}" as "#(.*)").
// Time and memory grow linearly with the path, times the number of pieces,
// and nothing recurses, so a long hostile path costs no stack.
class RoutePattern {
  public:
    explicit RoutePattern(std::vector<RoutePatternPiece> pieces) : pieces_(std::move(pieces)) {}

    // The text of each capture in order, or none when the path does not match.
    std::optional<std::vector<std::string_view>> Match(std::string_view path) const;

  private:
    std::vector<RoutePatternPiece> pieces_;
};

// {name} takes one path segment, {+name} anything with slashes, {#name} a
// "#" and anything after it.
enum class RouteParameterKind { Plain, Reserved, Fragment };

struct RouteTemplateParameter {
    RouteParameterKind kind = RouteParameterKind::Plain;
    std::string name;
};

// A template as routes keep it: one trailing "/" removed, "/" alone kept.
std::string NormalizeRouteTemplate(std::string_view pathTemplate);

// A template turned into its parameters, in the order of their braces, and
// the pieces of the RoutePattern that matches it.
struct CompiledRouteTemplate {
    std::vector<RouteTemplateParameter> parameters;
    std::vector<RoutePatternPiece> pieces;
};

CompiledRouteTemplate CompileRouteTemplate(std::string_view pathTemplate);

}  // namespace wex
