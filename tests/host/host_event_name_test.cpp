#include "host/host_event_name.h"

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

}  // namespace
}  // namespace wex
