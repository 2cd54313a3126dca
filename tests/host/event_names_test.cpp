#include "host/events.h"

#include <gtest/gtest.h>

namespace wex {

namespace {

TEST(ResourceEventName, TakesTheFirstThreeSegmentsOrFiveUnderThePlatformConfiguration) {
    const struct {
        const char* uri;
        const char* name;
    } rows[] = {
        {"/tav-login/v1/session/anything/deeper", "OnJsonApiEvent_tav-login_v1_session"},
        {"//tav-login//v1///session/", "OnJsonApiEvent_tav-login_v1_session"},
        {"tav-login/v1", "OnJsonApiEvent_tav-login_v1"},
        {"/", "OnJsonApiEvent"},
        {"/tav-platform-config/v1/namespaces/LeagueConfig/JWTEnabled/x",
         "OnJsonApiEvent_tav-platform-config_v1_namespaces_LeagueConfig_JWTEnabled"},
        {"/tav-platform-config/v1/namespaces/SeasonReward",
         "OnJsonApiEvent_tav-platform-config_v1_namespaces_SeasonReward"},
        {"/x/tav-platform-config/a/b/c", "OnJsonApiEvent_x_tav-platform-config_a"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.uri);
        EXPECT_EQ(ResourceEventName(row.uri), row.name);
    }
    // Every dot of a server message's type becomes an underscore.
    EXPECT_EQ(LcdsEventName(".a.b"), "OnLcdsEvent__a_b");
}

TEST(MatchesUriPattern, AStarTakesOneSegment) {
    const struct {
        const char* pattern;
        const char* uri;
        bool matches;
    } rows[] = {
        {"/summoners/*", "/summoners/42", true},
        {"/summoners/*", "/summoners/42/icon", false},
        {"/summoners/*", "/summoners/", false},
        {"/summoners/*", "/summoners", false},
        {"/summoners/*/icon", "/summoners//icon", true},
        {"/summoners/*/icon", "/summoners/42/icons", false},
        {"/a/*x", "/a/bx", false},  // the star takes the whole run
        {"/a/*/*", "/a/b/c", true},
        {"*", "", false},
        {"/exact", "/exactly", false},
        {"", "", true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.pattern) + " against " + row.uri);
        EXPECT_EQ(MatchesUriPattern(row.pattern, row.uri), row.matches);
    }
}

}  // namespace

}  // namespace wex
