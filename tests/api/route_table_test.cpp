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

TEST_F(RouteTableTest, TheFirstRegistrationOfAFunctionNameKeepsItsDescription) {
    table_.AddRoute(registry_, HostMethodGet, "/items/{id}", FunctionOf("first")).AddPathArgument("id", "Item");
    table_.AddRoute(registry_, HostMethodGet, "/items/{id}/", FunctionOf("second")).AddQueryArgument("other", "X");
    table_.AddRoute(registry_, HostMethodGet, "/x", FunctionOf("x"))
        .AddQueryArgument("value", "")
        .AddArgument("extra", "", ArgumentLocationHeader);
    const BindingFunctionInfo* function = registry_.FindFunction("GetItemsById");
    ASSERT_NE(function, nullptr);
    EXPECT_EQ(function->tags.front(), "first");
    ASSERT_EQ(function->arguments.size(), 1u);
    EXPECT_EQ(function->arguments[0].name, "id");
    EXPECT_EQ(function->arguments[0].description, "Item");
    EXPECT_EQ(function->arguments[0].type.kind, BindingTypeKind::String);
    const RouteList routes = table_.Routes();
    ASSERT_EQ(routes.size(), 3u);
    EXPECT_EQ(routes[0]->argumentLocations, std::vector<std::int32_t>{ArgumentLocationPath});
    EXPECT_EQ(routes[1]->argumentLocations, std::vector<std::int32_t>{ArgumentLocationAnywhere});
    EXPECT_EQ(routes[1]->function, function);
    // Arguments named beyond the handler's grow the locations.
    EXPECT_EQ(routes[2]->argumentLocations, (std::vector<std::int32_t>{ArgumentLocationQuery, ArgumentLocationHeader}));
    EXPECT_EQ(registry_.FindFunction("GetX")->arguments.size(), 2u);
}

// Ties go to the shorter capture, then to the earlier route.
TEST_F(RouteTableTest, ServesTheRouteOfTheMethodWithTheBestMatch) {
    table_.AddRoute(registry_, HostMethodGet, "/m/{id}", FunctionOf("get"));
    table_.AddRoute(registry_, HostMethodOther, "/m/{id}", FunctionOf("purge"), "PURGE");
    table_.AddRoute(registry_, HostMethodAny, "/any", FunctionOf("any"));
    Add("/{a}/{b}", "two");
    Add("/p/{rest}", "prefixed");
    Add("/p/{other}", "same");
    Add("/t/{x}", "template");
    Add("/t/fixed", "literal after");
    Add("/l/fixed", "literal before");
    Add("/l/{x}", "template after");
    const std::tuple<std::uint32_t, const char*, const char*, const char*> cases[] = {
        {HostMethodGet, "", "/m/1", "get"},           {HostMethodDelete, "", "/m/1", "none"},
        {HostMethodOther, "PURGE", "/m/1", "purge"},  {HostMethodOther, "purge", "/m/1", "none"},
        {HostMethodOther, "WHATEVER", "/any", "any"}, {HostMethodPut, "", "/any", "any"},
        {HostMethodGet, "", "/p/q", "prefixed"},  // 1 character captured against 2
        {HostMethodGet, "", "/x/q", "two"},           {HostMethodGet, "", "/t/fixed", "literal after"},
        {HostMethodGet, "", "/t/other", "template"},  {HostMethodGet, "", "/l/fixed", "literal before"},
        {HostMethodGet, "", "/l/", "template after"},
    };
    for (const auto& [method, methodName, path, tag] : cases) {
        SCOPED_TRACE(std::string(methodName) + " " + path);
        EXPECT_EQ(Served(method, path, methodName), tag);
    }
    EXPECT_NE(registry_.FindFunction("PurgeMById"), nullptr);
    EXPECT_NE(registry_.FindFunction("Any"), nullptr);
}

// The endpoint table's descriptions hold the names of the usual templates.
TEST(DeriveFunctionName, FollowsMethodAndTemplate) {
    const std::tuple<const char*, const char*, const char*> cases[] = {
        {"DELETE", "/a_b.c!d+e", "DeleteABCDE"},
        {"", "/tav-leagues/v1/teams/{id}", "TavLeaguesV1TeamsById"},
        {"get", "/x", "GetX"},
    };
    for (const auto& [method, pathTemplate, expected] : cases) {
        SCOPED_TRACE(pathTemplate);
        EXPECT_EQ(DeriveFunctionName(method, pathTemplate), expected);
    }
    EXPECT_EQ(MakeIdentifier("tav-leagues"), "TavLeagues");
    EXPECT_EQ(MakeIdentifier(""), "");
    EXPECT_EQ(MakeIdentifier("--"), "");
}

}  // namespace

}  // namespace wex
