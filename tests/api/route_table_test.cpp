#include "api/route_table.h"

#include <gtest/gtest.h>

#include "api/native_handler.h"
#include "boundary/boundary.h"
#include "types/registry.h"

namespace wex {

namespace {

using Answer = MaybeType<Failure, std::string>;

BindingFunctionInfo FunctionOf(std::string tag) {
    BindingFunctionInfo function;
    function.tags = {std::move(tag)};
    function.handler = MakeApiHandler([](std::string value) -> Answer { return value; });
    return function;
}

class RouteTableTest : public ::testing::Test {
  protected:
    // The tag of the function whose route serves the request, or "none".
    std::string Served(std::uint32_t method, std::string_view path, std::string_view methodName = {}) {
        const std::optional<RouteMatch> match = MatchRoute(table_.Routes(), method, methodName, path);
        return match ? match->route->function->tags.front() : "none";
    }

    void Add(const char* pathTemplate, const char* tag) {
        table_.AddRoute(registry_, HostMethodGet, pathTemplate, FunctionOf(tag));
    }

    BindingTypeRegistry registry_;
    RouteTable table_;
};

}  // namespace

}  // namespace wex
