#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "api/argument_builder.h"
#include "api/route.h"
#include "types/type_info.h"

namespace wex {

class BindingTypeRegistry;

// A module's routes in registration order. Routes keep their addresses for
// the table's life, so endpoint records can point at them.
class RouteTable {
  public:
    // Normalises the template, names function after method and template,
    // compiles the template, registers function in registry (the handler
    // describes its argument and result types) and appends the route.
    // methodName names a method of code 8.
    ApiArgumentBuilder AddRoute(BindingTypeRegistry& registry, std::uint32_t method, std::string_view pathTemplate,
                                BindingFunctionInfo function, std::string_view methodName = {});

    RouteList Routes() const { return order_; }

  private:
    std::vector<std::unique_ptr<Route>> routes_;
    std::vector<const Route*> order_;
};

}  // namespace wex
