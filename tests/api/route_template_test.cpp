#include <gtest/gtest.h>

#include "api/route_template.h"
#include "api/url_decoding.h"

namespace wex {
namespace {

TEST(RouteTemplate, NormalisesOneTrailingSlash) {
    EXPECT_EQ(NormalizeRouteTemplate("/tav-leagues/v2/tiers/"), "/tav-leagues/v2/tiers");
    EXPECT_EQ(NormalizeRouteTemplate("/a//"), "/a/");
    EXPECT_EQ(NormalizeRouteTemplate("/"), "/");
    EXPECT_EQ(NormalizeRouteTemplate(""), "");
}

TEST(RouteTemplate, CompilesEachParameterKindAndEscapesTheRest) {
    struct Case {
        const char* pathTemplate;
        const char* expression;
        std::vector<std::pair<RouteParameterKind, const char*>> parameters;
    };
    const Case cases[] = {
        {"/tav-leagues/v1/teams/{id}", "/tav-leagues/v1/teams/([^/]*)", {{RouteParameterKind::Plain, "id"}}},
        {"/files/{+path}", "/files/(.*)", {{RouteParameterKind::Reserved, "path"}}},
        {"/page{#section}", "/page#(.*)", {{RouteParameterKind::Fragment, "section"}}},
        {"/{a}.{b}", "/([^/]*)\\.([^/]*)", {{RouteParameterKind::Plain, "a"}, {RouteParameterKind::Plain, "b"}}},
        {"/x^$*+?()[]|\\{y}", "/x\\^\\$\\*\\+\\?\\(\\)\\[\\]\\|\\\\([^/]*)", {{RouteParameterKind::Plain, "y"}}},
        {"/{+#odd+}", "/#(.*)", {{RouteParameterKind::Fragment, "odd+"}}},
        {"/{}", "/([^/]*)", {{RouteParameterKind::Plain, ""}}},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.pathTemplate);
        const CompiledRouteTemplate compiled = CompileRouteTemplate(row.pathTemplate);
        EXPECT_EQ(compiled.expression, row.expression);
        ASSERT_EQ(compiled.parameters.size(), row.parameters.size());
        for (std::size_t index = 0; index < row.parameters.size(); ++index) {
            EXPECT_EQ(compiled.parameters[index].kind, row.parameters[index].first);
            EXPECT_EQ(compiled.parameters[index].name, row.parameters[index].second);
        }
    }
}

TEST(UrlDecoding, DecodesPlusAndPercentEscapesAndKeepsMalformedOnes) {
    const std::pair<const char*, std::string> cases[] = {
        {"a%2Fb+c", "a/b c"},
        {"%2f%2F", "//"},
        {"%41%4a%7E", "AJ~"},
        {"100%", "100%"},
        {"%4", "%4"},
        {"%G1%1G", "%G1%1G"},
        {"%%41", "%A"},
        {"%00", std::string(1, '\0')},
        {"", ""},
        {"%E2%82%AC", "\xE2\x82\xAC"},
    };
    for (const auto& [text, decoded] : cases) {
        SCOPED_TRACE(text);
        EXPECT_EQ(DecodeUrlComponent(text), decoded);
    }
}

}  // namespace
}  // namespace wex
