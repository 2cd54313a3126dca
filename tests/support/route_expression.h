#pragma once

#include <string>
#include <string_view>

namespace tav::test {

// The ECMAScript expression of a route template, the matcher of record that
// RoutePattern equals; tests and the dispatch benchmark run the two side by
// side. Outside braces, "^$.*+?()[]|\" is escaped; "{name}" becomes "([^/]*)",
// "{+name}" "(.*)" and "{#name}" "#(.*)", a "+" or "#" before the name's first
// character choosing the kind.
inline std::string RouteTemplateExpression(std::string_view pathTemplate) {
    std::string expression;
    bool inside = false;
    bool named = false;
    char kind = 0;
    for (const char c : pathTemplate) {
        if (!inside) {
            if (c == '{') {
                inside = true;
                named = false;
                kind = 0;
                continue;
            }
            if (std::string_view("^$.*+?()[]|\\").find(c) != std::string_view::npos) {
                expression += '\\';
            }
            expression += c;
        } else if (c == '}') {
            expression += kind == '+' ? "(.*)" : kind == '#' ? "#(.*)" : "([^/]*)";
            inside = false;
        } else if (!named && (c == '+' || c == '#')) {
            kind = c;
        } else {
            named = true;
        }
    }
    return expression;
}

}  // namespace tav::test
