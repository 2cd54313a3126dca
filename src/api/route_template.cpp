#include "api/route_template.h"

#include <cstdint>

namespace wex {

namespace {

using Kind = RoutePatternPiece::Kind;

bool Takes(Kind kind, char c) {
    return kind == Kind::Segment ? c != '/' : c != '\n' && c != '\r';
}

}  // namespace

std::optional<std::vector<std::string_view>> RoutePattern::Match(std::string_view path) const {
    // Most routes fail on their leading literal; that costs no table.
    if (!pieces_.empty() && pieces_.front().kind == Kind::Literal && !path.starts_with(pieces_.front().literal)) {
        return std::nullopt;
    }
    const std::size_t length = path.size();
    const std::size_t width = length + 1;
    // fits[i * width + at]: pieces i and after match the path from at to its end.
    std::vector<std::uint8_t> fits((pieces_.size() + 1) * width, 0);
    fits[pieces_.size() * width + length] = 1;
    for (std::size_t piece = pieces_.size(); piece-- > 0;) {
        const RoutePatternPiece& current = pieces_[piece];
        std::uint8_t* row = &fits[piece * width];
        const std::uint8_t* next = &fits[(piece + 1) * width];
        for (std::size_t at = width; at-- > 0;) {
            if (current.kind == Kind::Literal) {
                const std::size_t end = at + current.literal.size();
                row[at] = end <= length && path.compare(at, current.literal.size(), current.literal) == 0 && next[end];
            } else {
                row[at] = next[at] || (at < length && Takes(current.kind, path[at]) && row[at + 1]);
            }
        }
    }
    if (!fits[0]) {
        return std::nullopt;
    }
    // Each capture takes the longest text after which the rest still matches.
    std::vector<std::string_view> captures;
    std::size_t at = 0;
    for (std::size_t piece = 0; piece < pieces_.size(); ++piece) {
        const RoutePatternPiece& current = pieces_[piece];
        if (current.kind == Kind::Literal) {
            at += current.literal.size();
            continue;
        }
        const std::uint8_t* next = &fits[(piece + 1) * width];
        std::size_t end = at;
        for (std::size_t probe = at;; ++probe) {
            if (next[probe]) {
                end = probe;
            }
            if (probe == length || !Takes(current.kind, path[probe])) {
                break;
            }
        }
        captures.push_back(path.substr(at, end - at));
        at = end;
    }
    return captures;
}

namespace {

void AppendLiteral(std::vector<RoutePatternPiece>& pieces, char c) {
    if (pieces.empty() || pieces.back().kind != RoutePatternPiece::Kind::Literal) {
        pieces.push_back({RoutePatternPiece::Kind::Literal, {}});
    }
    pieces.back().literal += c;
}

void AppendCapture(std::vector<RoutePatternPiece>& pieces, RouteParameterKind kind) {
    if (kind == RouteParameterKind::Fragment) {
        AppendLiteral(pieces, '#');
    }
    const auto captureKind =
        kind == RouteParameterKind::Plain ? RoutePatternPiece::Kind::Segment : RoutePatternPiece::Kind::Anything;
    pieces.push_back({captureKind, {}});
}

}  // namespace

std::string NormalizeRouteTemplate(std::string_view pathTemplate) {
    if (pathTemplate.size() > 1 && pathTemplate.back() == '/') {
        pathTemplate.remove_suffix(1);
    }
    return std::string(pathTemplate);
}

CompiledRouteTemplate CompileRouteTemplate(std::string_view pathTemplate) {
    CompiledRouteTemplate compiled;
    bool inside = false;
    RouteTemplateParameter parameter;
    for (const char c : pathTemplate) {
        if (!inside) {
            if (c == '{') {
                inside = true;
                parameter = {};
            } else {
                AppendLiteral(compiled.pieces, c);
            }
        } else if (c == '}') {
            AppendCapture(compiled.pieces, parameter.kind);
            compiled.parameters.push_back(std::move(parameter));
            inside = false;
        } else if (parameter.name.empty() && (c == '+' || c == '#')) {
            parameter.kind = c == '+' ? RouteParameterKind::Reserved : RouteParameterKind::Fragment;
        } else {
            parameter.name += c;
        }
    }
    return compiled;
}

}  // namespace wex
