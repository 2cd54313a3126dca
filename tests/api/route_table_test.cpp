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

    BindingTypeRegistry registry_;
    RouteTable table_;
};

TEST_F(RouteTableTest, TheFirstRegistrationOfAFunctionNameKeepsItsDescription) {
    table_.AddRoute(registry_, HostMethodGet, "/items/{id}", FunctionOf("first")).AddPathArgument("id", "Item");
    table_.AddRoute(registry_, HostMethodGet, "/items/{id}/", FunctionOf("second")).AddQueryArgument("other", "X");
    const BindingFunctionInfo* function = registry_.FindFunction("GetItemsById");
    ASSERT_NE(function, nullptr);
    EXPECT_EQ(function->tags.front(), "first");
    ASSERT_EQ(function->arguments.size(), 1u);
    EXPECT_EQ(function->arguments[0].name, "id");
    EXPECT_EQ(function->arguments[0].description, "Item");
    EXPECT_EQ(function->arguments[0].type.kind, BindingTypeKind::String);
    const RouteList routes = table_.Routes();
    ASSERT_EQ(routes.size(), 2u);
    EXPECT_EQ(routes[0]->argumentLocations, std::vector<std::int32_t>{ArgumentLocationPath});
    EXPECT_EQ(routes[1]->argumentLocations, std::vector<std::int32_t>{ArgumentLocationAnywhere});
    EXPECT_EQ(routes[1]->function, function);
}

TEST_F(RouteTableTest, ArgumentsNamedBeyondTheHandlersGrowTheLocations) {
    table_.AddRoute(registry_, HostMethodGet, "/x", FunctionOf("x"))
        .AddQueryArgument("value", "")
        .AddArgument("extra", "", ArgumentLocationHeader);
    EXPECT_EQ(table_.Routes()[0]->argumentLocations,
              (std::vector<std::int32_t>{ArgumentLocationQuery, ArgumentLocationHeader}));
    EXPECT_EQ(registry_.FindFunction("GetX")->arguments.size(), 2u);
}

TEST_F(RouteTableTest, TheMethodMustMatchAndNamesMatterForOtherMethods) {
    table_.AddRoute(registry_, HostMethodGet, "/m/{id}", FunctionOf("get"));
    table_.AddRoute(registry_, HostMethodOther, "/m/{id}", FunctionOf("purge"), "PURGE");
    table_.AddRoute(registry_, HostMethodAny, "/any", FunctionOf("any"));
    EXPECT_EQ(Served(HostMethodGet, "/m/1"), "get");
    EXPECT_EQ(Served(HostMethodDelete, "/m/1"), "none");
    EXPECT_EQ(Served(HostMethodOther, "/m/1", "PURGE"), "purge");
    EXPECT_EQ(Served(HostMethodOther, "/m/1", "purge"), "none");
    EXPECT_EQ(Served(HostMethodOther, "/any", "WHATEVER"), "any");
    EXPECT_EQ(Served(HostMethodPut, "/any"), "any");
    EXPECT_NE(registry_.FindFunction("PurgeMById"), nullptr);
    EXPECT_NE(registry_.FindFunction("Any"), nullptr);
}

TEST_F(RouteTableTest, PathsMatchWholeAndLiterallyOutsideParameters) {
    table_.AddRoute(registry_, HostMethodGet, "/tav-leagues/v1/teams/{id}", FunctionOf("team"));
    table_.AddRoute(registry_, HostMethodGet, "/files/{+path}", FunctionOf("files"));
    table_.AddRoute(registry_, HostMethodGet, "/doc{#part}", FunctionOf("doc"));
    table_.AddRoute(registry_, HostMethodGet, "/tav-leagues/v2/tiers/", FunctionOf("tiers"));
    const std::pair<const char*, const char*> cases[] = {
        {"/tav-leagues/v1/teams/TEAM-1", "team"},
        {"/tav-leagues/v1/teams/", "team"},
        {"/tav-leagues/v1/teams/a/b", "none"},
        {"/tav-leagues/v1/teams/x/", "none"},
        {"/TAV-LEAGUES/v1/teams/x", "none"},
        {"/files/", "files"},
        {"/files/a/b/c", "files"},
        {"/doc#", "doc"},
        {"/doc", "none"},
        {"/docx", "none"},
        {"/tav-leagues/v2/tiers", "tiers"},
        {"/tav-leagues/v2/tiers/", "none"},
        {"", "none"},
    };
    for (const auto& [path, tag] : cases) {
        SCOPED_TRACE(path);
        EXPECT_EQ(Served(HostMethodGet, path), tag);
    }
    const std::optional<RouteMatch> match = MatchRoute(table_.Routes(), HostMethodGet, "", "/files/a%2Fb+c/d");
    ASSERT_TRUE(match);
    EXPECT_EQ(match->parameters, (std::map<std::string, std::string>{{"path", "a/b c/d"}}));
}

TEST_F(RouteTableTest, TiesGoToTheShorterCaptureThenTheEarlierRoute) {
    table_.AddRoute(registry_, HostMethodGet, "/{a}/{b}", FunctionOf("two"));
    table_.AddRoute(registry_, HostMethodGet, "/p/{rest}", FunctionOf("prefixed"));
    table_.AddRoute(registry_, HostMethodGet, "/p/{other}", FunctionOf("same"));
    EXPECT_EQ(Served(HostMethodGet, "/p/q"), "prefixed");  // 1 character captured against 2
    EXPECT_EQ(Served(HostMethodGet, "/x/q"), "two");

    // A literal route registered first is never replaced: it has no parameters.
    RouteTable literalFirst;
    literalFirst.AddRoute(registry_, HostMethodGet, "/l/fixed", FunctionOf("literal"));
    literalFirst.AddRoute(registry_, HostMethodGet, "/l/{x}", FunctionOf("template"));
    EXPECT_EQ(MatchRoute(literalFirst.Routes(), HostMethodGet, "", "/l/fixed")->route->function->tags.front(),
              "literal");
    EXPECT_EQ(MatchRoute(literalFirst.Routes(), HostMethodGet, "", "/l/")->route->function->tags.front(), "template");
}

TEST(DeriveFunctionName, FollowsMethodAndTemplate) {
    struct Case {
        const char* method;
        const char* pathTemplate;
        const char* expected;
    };
    const Case cases[] = {
        {"GET", "/tav-leagues/v1/summoner-leagues/{summonerId}", "GetTavLeaguesV1SummonerLeaguesBySummonerId"},
        {"POST", "/tav-leagues/v2/notifications/{id}/acknowledge", "PostTavLeaguesV2NotificationsByIdAcknowledge"},
        {"DELETE", "/a_b.c!d+e", "DeleteABCDE"},
        {"GET", "/tav-leagues/v2/tiers/", "GetTavLeaguesV2Tiers"},
        {"GET", "/x/{+rest}", "GetXByRest"},
        {"", "/tav-leagues/v1/teams/{id}", "TavLeaguesV1TeamsById"},
        {"get", "/x", "GetX"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.pathTemplate);
        EXPECT_EQ(DeriveFunctionName(c.method, c.pathTemplate), c.expected);
    }
}

TEST(MakeIdentifier, TurnsTheShortNameIntoTheTypeNamespace) {
    EXPECT_EQ(MakeIdentifier("tav-leagues"), "TavLeagues");
    EXPECT_EQ(MakeIdentifier(""), "");
    EXPECT_EQ(MakeIdentifier("--"), "");
}

}  // namespace

}  // namespace wex
