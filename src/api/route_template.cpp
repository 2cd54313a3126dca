#include "api/route_template.h"

namespace wex {

namespace {

bool IsExpressionSpecial(char c) {
    return std::string_view("^$.*+?()[]|\\").find(c) != std::string_view::npos;
}

const char* CaptureOf(RouteParameterKind kind) {
    switch (kind) {
        case RouteParameterKind::Reserved:
            return "(.*)";
        case RouteParameterKind::Fragment:
            return "#(.*)";
        case RouteParameterKind::Plain:
            break;
    }
    return "([^/]*)";
}

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
                if (IsExpressionSpecial(c)) {
                    compiled.expression += '\\';
                }
                compiled.expression += c;
                AppendLiteral(compiled.pieces, c);
            }
        } else if (c == '}') {
            compiled.expression += CaptureOf(parameter.kind);
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
