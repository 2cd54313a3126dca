#include "api/route_table.h"

#include <array>
#include <cctype>
#include <utility>

#include "api/api_handler.h"
#include "boundary/boundary.h"
#include "types/registry.h"
#include "types/type_info.h"

namespace wex {

std::string_view MethodName(std::uint32_t code) {
    static constexpr std::array<std::string_view, 8> kNames = {"",        "DELETE", "GET",  "HEAD",
                                                               "OPTIONS", "PATCH",  "POST", "PUT"};
    return code < kNames.size() ? kNames[code] : std::string_view();
}

namespace {

bool IsSeparator(char c) {
    return c == '!' || c == '+' || c == '-' || c == '.' || c == '/' || c == '_';
}

char Upper(char c) {
    return static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
}

char Lower(char c) {
    return static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
}

}  // namespace

std::string MakeIdentifier(std::string_view text) {
    std::string name;
    name.reserve(text.size());
    bool capitalizeNext = true;
    for (char c : text) {
        if (IsSeparator(c)) {
            capitalizeNext = true;
        } else if (c == '{') {
            name += "By";
            capitalizeNext = true;
        } else if (c != '}') {
            name += capitalizeNext ? Upper(c) : c;
            capitalizeNext = false;
        }
    }
    return name;
}

std::string DeriveFunctionName(std::string_view methodName, std::string_view pathTemplate) {
    std::string source;
    if (!methodName.empty()) {
        source += methodName.front();
        for (char c : methodName.substr(1)) {
            source += Lower(c);
        }
        source += '/';
    }
    source += pathTemplate;
    return MakeIdentifier(source);
}

namespace {

int HexValue(char c) {
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    if (c >= 'a' && c <= 'f') {
        return c - 'a' + 10;
    }
    if (c >= 'A' && c <= 'F') {
        return c - 'A' + 10;
    }
    return -1;
}

}  // namespace

std::string DecodeUrlComponent(std::string_view text) {
    std::string decoded;
    decoded.reserve(text.size());
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char c = text[at];
        if (c == '+') {
            decoded += ' ';
            continue;
        }
        if (c == '%' && at + 2 < text.size()) {
            const int high = HexValue(text[at + 1]);
            const int low = HexValue(text[at + 2]);
            if (high >= 0 && low >= 0) {
                decoded += static_cast<char>(high * 16 + low);
                at += 2;
                continue;
            }
        }
        decoded += c;
    }
    return decoded;
}

namespace {

bool MethodPasses(const Route& route, std::uint32_t method, std::string_view methodName) {
    if (route.method == 0) {
        return true;
    }
    return route.method == method && (method != 8 || route.methodName == methodName);
}

struct PathMatch {
    RouteMatch match;
    std::size_t capturedLength = 0;  // of the decoded values, in sum
};

// The decoded parameters of route for path, or none when the path does not match.
std::optional<PathMatch> MatchPath(const Route& route, std::string_view path) {
    if (!route.pattern) {
        if (path != route.literalPath) {
            return std::nullopt;
        }
        return PathMatch{RouteMatch{&route, {}}, 0};
    }
    const std::optional<std::vector<std::string_view>> captures = route.pattern->Match(path);
    if (!captures) {
        return std::nullopt;
    }
    PathMatch found{RouteMatch{&route, {}}, 0};
    for (std::size_t index = 0; index < route.parameters.size() && index < captures->size(); ++index) {
        std::string value = DecodeUrlComponent((*captures)[index]);
        found.capturedLength += value.size();
        found.match.parameters[route.parameters[index].name] = std::move(value);
    }
    return found;
}

}  // namespace

std::optional<RouteMatch> MatchRoute(RouteList routes, std::uint32_t method, std::string_view methodName,
                                     std::string_view path) {
    std::optional<RouteMatch> candidate;
    std::size_t candidateLength = 0;
    for (const Route* route : routes) {
        if (!MethodPasses(*route, method, methodName)) {
            continue;
        }
        std::optional<PathMatch> found = MatchPath(*route, path);
        if (!found) {
            continue;
        }
        if (!candidate || (!candidate->route->parameters.empty() && found->capturedLength < candidateLength)) {
            candidate = std::move(found->match);
            candidateLength = found->capturedLength;
        }
    }
    return candidate;
}

ApiArgumentBuilder& ApiArgumentBuilder::AddPathArgument(std::string name, std::string description) {
    return AddArgument(std::move(name), std::move(description), ArgumentLocationPath);
}

ApiArgumentBuilder& ApiArgumentBuilder::AddQueryArgument(std::string name, std::string description) {
    return AddArgument(std::move(name), std::move(description), ArgumentLocationQuery);
}

ApiArgumentBuilder& ApiArgumentBuilder::AddArgument(std::string name, std::string description, std::int32_t location) {
    if (function_ == nullptr) {
        return *this;
    }
    const std::size_t index = named_++;
    if (index >= function_->arguments.size()) {
        function_->arguments.resize(index + 1);
    }
    function_->arguments[index].name = std::move(name);
    function_->arguments[index].description = std::move(description);
    if (index >= route_->argumentLocations.size()) {
        route_->argumentLocations.resize(index + 1, ArgumentLocationAnywhere);
    }
    route_->argumentLocations[index] = location;
    return *this;
}

ApiArgumentBuilder RouteTable::AddRoute(BindingTypeRegistry& registry, std::uint32_t method,
                                        std::string_view pathTemplate, BindingFunctionInfo function,
                                        std::string_view methodName) {
    auto route = std::make_unique<Route>();
    route->method = method;
    if (method == HostMethodOther) {
        route->methodName = methodName;
    }
    route->pathTemplate = NormalizeRouteTemplate(pathTemplate);
    if (route->pathTemplate.find('{') == std::string::npos) {
        route->literalPath = route->pathTemplate;
    } else {
        CompiledRouteTemplate compiled = CompileRouteTemplate(route->pathTemplate);
        route->pattern.emplace(std::move(compiled.pieces));
        route->parameters = std::move(compiled.parameters);
    }

    function.name =
        DeriveFunctionName(method == HostMethodOther ? methodName : MethodName(method), route->pathTemplate);
    function.registry = &registry;
    if (function.handler != nullptr) {
        function.handler->Describe(function);
    }
    const auto [registered, isNew] = registry.AddFunction(std::move(function));
    route->function = registered;
    route->argumentLocations.assign(registered->arguments.size(), ArgumentLocationAnywhere);

    routes_.push_back(std::move(route));
    order_.push_back(routes_.back().get());
    return ApiArgumentBuilder(isNew ? registered : nullptr, *routes_.back());
}

}  // namespace wex
