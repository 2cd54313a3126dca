#include "host/events.h"

#include <gtest/gtest.h>

namespace wex {

namespace {

TEST(ResourceEventName, TakesTheFirstThreeSegmentsOrFiveUnderThePlatformConfiguration) {
    const struct {
        const char* uri;
        const char* name;
    } rows[] = {
        {"/tav-login/v1/session", "OnJsonApiEvent_tav-login_v1_session"},
        {"/tav-login/v1/session/anything/deeper", "OnJsonApiEvent_tav-login_v1_session"},
        {"tav-login/v1/session", "OnJsonApiEvent_tav-login_v1_session"},
        {"//tav-login//v1///session/", "OnJsonApiEvent_tav-login_v1_session"},
        {"/tav-login/v1", "OnJsonApiEvent_tav-login_v1"},
        {"/", "OnJsonApiEvent"},
        {"", "OnJsonApiEvent"},
        {"/tav-platform-config/v1/namespaces/LeagueConfig/JWTEnabled",
         "OnJsonApiEvent_tav-platform-config_v1_namespaces_LeagueConfig_JWTEnabled"},
        {"/tav-platform-config/v1/namespaces/LeagueConfig/JWTEnabled/x",
         "OnJsonApiEvent_tav-platform-config_v1_namespaces_LeagueConfig_JWTEnabled"},
        {"/tav-platform-config/v1/namespaces/SeasonReward",
         "OnJsonApiEvent_tav-platform-config_v1_namespaces_SeasonReward"},
        {"/tav-platform-config/v1", "OnJsonApiEvent_tav-platform-config_v1"},
        {"/x/tav-platform-config/a/b/c", "OnJsonApiEvent_x_tav-platform-config_a"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.uri);
        EXPECT_EQ(ResourceEventName(row.uri), row.name);
    }
}

TEST(LcdsEventName, ReplacesEveryDotOfTheTypeName) {
    EXPECT_EQ(LcdsEventName("com.orvelsoft.platform.messaging.persistence.SimpleDialogMessage"),
              "OnLcdsEvent_com_orvelsoft_platform_messaging_persistence_SimpleDialogMessage");
    EXPECT_EQ(LcdsEventName(""), "OnLcdsEvent_");
    EXPECT_EQ(LcdsEventName(".."), "OnLcdsEvent___");
}

TEST(MatchesUriPattern, AStarTakesOneSegment) {
    const struct {
        const char* pattern;
        const char* uri;
        bool matches;
    } rows[] = {
        {"/tav-summoner/v1/summoners/*", "/tav-summoner/v1/summoners/42", true},
        {"/tav-summoner/v1/summoners/*", "/tav-summoner/v1/summoners/42/icon", false},
        {"/tav-summoner/v1/summoners/*", "/tav-summoner/v1/summoners/", false},
        {"/tav-summoner/v1/summoners/*", "/tav-summoner/v1/summoners", false},
        {"/tav-summoner/v1/summoners/*/icon", "/tav-summoner/v1/summoners/42/icon", true},
        {"/tav-summoner/v1/summoners/*/icon", "/tav-summoner/v1/summoners//icon", true},
        {"/tav-summoner/v1/summoners/*/icon", "/tav-summoner/v1/summoners/42/icons", false},
        {"/a/*x", "/a/bx", false},  // the star takes the whole run
        {"/a/*/*", "/a/b/c", true},
        {"/a/*/*", "/a/b/", false},
        {"*", "anything", true},
        {"*", "", false},
        {"*", "/", false},
        {"/exact", "/exact", true},
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
