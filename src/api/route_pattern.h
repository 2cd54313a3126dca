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

// A template's path test. It gives exactly what the template's ECMAScript
// expression gives with greedy captures matched against the whole path,
// without the expression engine's recursion per character, which a long
// hostile path would turn into a stack overflow: time and memory grow
// linearly with the path, times the number of pieces.
class RoutePattern {
  public:
    explicit RoutePattern(std::vector<RoutePatternPiece> pieces) : pieces_(std::move(pieces)) {}

    // The text of each capture in order, or none when the path does not match.
    std::optional<std::vector<std::string_view>> Match(std::string_view path) const;

  private:
    std::vector<RoutePatternPiece> pieces_;
};

}  // namespace wex
