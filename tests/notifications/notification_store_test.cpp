#include "notifications/notification_store.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "store_fixtures.h"

namespace Orvel::Client::Leagues {
namespace {

using test::LeaguesMessage;
using test::Listed;
using test::Param;
using Lines = std::vector<std::string>;

constexpr const char* kSilverDecayDemotion =
    R"({"tier": "SILVER", "rank": "I", "inactivityStatus": "INACTIVE", "displayDecayWarning": true})";

TEST(AddLeagueMessage, FilesLeaguesMessagesWithIdsFromZero) {
    LeagueNotificationStore store;
    EXPECT_TRUE(store.AddLeagueMessage(LeaguesMessage("a", {Param("LEAGUE_PROMOTED", R"({"tier": "GOLD"})")})));
    EXPECT_TRUE(store.AddLeagueMessage(LeaguesMessage("b", {Param("LEAGUE_UPDATE_DECAY")})));
    EXPECT_TRUE(store.AddLeagueMessage(LeaguesMessage("c", {"no param counts"})));
    EXPECT_EQ(Listed(store), (Lines{
                                 "0 LEAGUES_MESSAGE_LEAGUE_PROMOTED LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE 0 ALERT",
                                 "1 LEAGUES_SYSTEM_DECAY LEAGUES_SYSTEM_DECAY_TITLE 0 ALERT",
                                 "2   0 ALERT",
                             }));
    const std::vector<Api::LeagueNotificationResource> list = store.GetNotifications();
    EXPECT_EQ(list[0].msgId, "a");
    EXPECT_EQ(list[2].msgId, "c");
    EXPECT_EQ(list[2].data.minGamesForSeeding, -1);
}

TEST(AddLeagueMessage, IgnoresOtherTypesWithoutUsingAnId) {
    LeagueNotificationStore store;
    Api::SimpleMessage other = LeaguesMessage("x", {Param("LEAGUE_PROMOTED")});
    other.type = "Leagues";
    EXPECT_FALSE(store.AddLeagueMessage(other));
    EXPECT_TRUE(store.GetNotifications().empty());
    EXPECT_TRUE(store.AddLeagueMessage(LeaguesMessage("a", {Param("QUEUE_DODGE")})));
    EXPECT_EQ(store.GetNotifications().at(0).id, 0u);
}

TEST(AddLeagueMessage, ListsServerNotificationsInAscendingIdOrder) {
    LeagueNotificationStore store;
    for (int index = 0; index < 50; ++index) {
        ASSERT_TRUE(store.AddLeagueMessage(LeaguesMessage("m" + std::to_string(index), {Param("QUEUE_DODGE")})));
    }
    const std::vector<Api::LeagueNotificationResource> list = store.GetNotifications();
    ASSERT_EQ(list.size(), 50u);
    for (std::size_t index = 0; index < list.size(); ++index) {
        EXPECT_EQ(list[index].id, index);
        EXPECT_EQ(list[index].msgId, "m" + std::to_string(index));
    }
}

TEST(DeriveSystemMessages, ASeriesEndedOutsideBronzeIsListedTwiceWithItsPriority) {
    LeagueNotificationStore store;
    ASSERT_TRUE(store.AddLeagueMessage(
        LeaguesMessage("a", {Param("MINISERIES_CANCEL", R"({"tier": "SILVER", "queueType": "RANKED_FLEX_SR"})")})));
    ASSERT_TRUE(store.AddLeagueMessage(
        LeaguesMessage("b", {Param("MINISERIES_CANCEL", R"({"tier": "BRONZE", "queueType": "RANKED_FLEX_SR"})")})));
    EXPECT_EQ(Listed(store), (Lines{
                                 "0 LEAGUES_SYSTEM_SERIES_ENDED LEAGUES_SYSTEM_SERIES_ENDED_TITLE_FLEXSR 1100 ALERT",
                                 "1 LEAGUES_SYSTEM_SERIES_ENDED LEAGUES_SYSTEM_SERIES_ENDED_TITLE_FLEXSR 0 ALERT",
                                 "0 LEAGUES_SYSTEM_SERIES_ENDED LEAGUES_SYSTEM_SERIES_ENDED_TITLE_FLEXSR 1100 ALERT",
                             }));
}

TEST(DeriveSystemMessages, ADemotionByDecayGetsACopyWithTheNextId) {
    LeagueNotificationStore store;
    ASSERT_TRUE(store.AddLeagueMessage(LeaguesMessage("a", {Param("LEAGUE_DEMOTED", kSilverDecayDemotion)})));
    ASSERT_TRUE(store.AddLeagueMessage(LeaguesMessage("b", {Param("QUEUE_DODGE")})));
    EXPECT_EQ(Listed(store),
              (Lines{
                  "0 LEAGUES_MESSAGE_PROMOHELPER_LEAGUE_DEMOTED LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE 0 ALERT",
                  "2 LEAGUES_MESSAGE_QUEUE_DODGE LEAGUES_GENERAL_LEAGUE_MINISERIES_TITLE 0 ALERT",
                  "1 LEAGUES_SYSTEM_DECAY_DEMOTION LEAGUES_SYSTEM_DECAY_TITLE 1200 ALERT",
              }));
    const std::vector<Api::LeagueNotificationResource> list = store.GetNotifications();
    EXPECT_EQ(list[2].msgId, "a");
    EXPECT_EQ(list[2].data.tier, "SILVER");
    EXPECT_EQ(list[2].data.notifyReason, "LEAGUE_DEMOTED");
}

TEST(DeriveSystemMessages, DerivesNothingElse) {
    const std::string rows[] = {
        Param("LEAGUE_DEMOTED", R"({"tier": "BRONZE", "inactivityStatus": "INACTIVE", "displayDecayWarning": true})"),
        Param("LEAGUE_DEMOTED", R"({"tier": "SILVER", "inactivityStatus": "INACTIVE"})"),
        Param("LEAGUE_DEMOTED", R"({"tier": "SILVER", "inactivityStatus": "GRACE", "displayDecayWarning": true})"),
        Param("LEAGUE_UPDATE_DECAY", kSilverDecayDemotion),
        Param("MINISERIES_LOST", kSilverDecayDemotion),
        Param("LEAGUE_PROMOTED", kSilverDecayDemotion),
    };
    for (const std::string& param : rows) {
        SCOPED_TRACE(param);
        LeagueNotificationStore store;
        ASSERT_TRUE(store.AddLeagueMessage(LeaguesMessage("a", {param})));
        ASSERT_EQ(store.GetNotifications().size(), 1u);
        EXPECT_EQ(store.GetNotifications()[0].priority, 0u);
    }
}

TEST(AddLoginMessages, ReadsTheGatingStateForEachMessage) {
    LeagueNotificationStore store;
    test::RecordedAcknowledgements server;
    // The game flow enters champion select while the first acknowledgement is awaited.
    server.meanwhile = [&store] { store.SetNotificationsAllowed(false); };
    store.AddLoginMessages({LeaguesMessage("first", {Param("LEAGUE_POINTS_UPDATE")}),
                            LeaguesMessage("second", {Param("LEAGUE_PROMOTED")})},
                           server.Callable());
    EXPECT_EQ(Listed(store),
              Lines{"0 LEAGUES_MESSAGE_LEAGUE_POINTS_UPDATE LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE 0 ALERT"});
    EXPECT_TRUE(store.SetNotificationsAllowed(true));
    EXPECT_EQ(Listed(store).size(), 2u);
}

}  // namespace
}  // namespace Orvel::Client::Leagues
