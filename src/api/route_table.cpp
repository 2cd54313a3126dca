#include "api/route_table.h"

#include <utility>

#include "api/api_function_handler.h"
#include "api/function_name.h"
#include "api/method_name.h"
#include "boundary/boundary.h"
#include "types/registry.h"

namespace wex {

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
