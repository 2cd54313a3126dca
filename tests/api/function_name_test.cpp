#include "api/function_name.h"

#include <gtest/gtest.h>

namespace wex {
namespace {

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
