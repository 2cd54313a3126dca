#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "notifications/held_back_phases.h"
#include "notifications/notification_store.h"
#include "store_fixtures.h"

namespace Orvel::Client::Leagues {
namespace {

using Api::GameflowPhase;
using test::LeaguesMessage;
using test::Listed;
using test::Param;
using Lines = std::vector<std::string>;

constexpr const char* kGoldSeriesEnded = R"({"tier": "GOLD", "queueType": "RANKED_SOLO_5x5"})";

LCDS::LeagueItemDTO DecayingEntry(std::string id) {
    LCDS::LeagueItemDTO entry;
    entry.playerOrTeamId = std::move(id);
    entry.tier = LCDS::LeagueTier::SILVER;
    entry.displayDecayWarning = true;
    entry.inactivityStatus = "INACTIVE";
    return entry;
}

TEST(NotificationsAllowedIn, HoldsBackFromReadyCheckToPreEndOfGame) {
    for (int phase = 0; phase <= 13; ++phase) {
        SCOPED_TRACE(phase);
        EXPECT_EQ(NotificationsAllowedIn(static_cast<GameflowPhase>(phase)), phase < 4 || phase > 11);
    }
    EXPECT_EQ(HeldBackPhases.size(), 8u);
}

TEST(SetNotificationsAllowed, ReportsOnlyAChangeToAllowed) {
    LeagueNotificationStore store;
    EXPECT_FALSE(store.SetNotificationsAllowed(true));
    EXPECT_FALSE(store.SetNotificationsAllowed(false));
    EXPECT_FALSE(store.SetNotificationsAllowed(false));
    EXPECT_TRUE(store.SetNotificationsAllowed(true));
    EXPECT_FALSE(store.SetNotificationsAllowed(true));
}

TEST(SetNotificationsAllowed, HoldsNewRecordsBackAcrossAGameAndReleasesThemInOrder) {
    LeagueNotificationStore store;
    ASSERT_TRUE(store.AddLeagueMessage(LeaguesMessage("before", {Param("LEAGUE_PROMOTED")})));
    const Lines before = Listed(store);

    const GameflowPhase game[] = {GameflowPhase::Lobby, GameflowPhase::ChampSelect, GameflowPhase::InProgress,
                                  GameflowPhase::EndOfGame};
    std::vector<bool> justAllowed;
    for (const GameflowPhase phase : game) {
        justAllowed.push_back(store.SetNotificationsAllowed(NotificationsAllowedIn(phase)));
        if (phase == GameflowPhase::ChampSelect) {
            ASSERT_TRUE(
                store.AddLeagueMessage(LeaguesMessage("during", {Param("MINISERIES_CANCEL", kGoldSeriesEnded)})));
            ASSERT_TRUE(store.AddLeagueMessage(LeaguesMessage("later", {Param("QUEUE_DODGE")})));
        }
        if (phase == GameflowPhase::InProgress) {
            EXPECT_EQ(Listed(store), before);
        }
    }
    EXPECT_EQ(justAllowed, (std::vector<bool>{false, false, false, true}));
    EXPECT_EQ(Listed(store), (Lines{
                                 "0 LEAGUES_MESSAGE_LEAGUE_PROMOTED LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE 0 ALERT",
                                 "1 LEAGUES_SYSTEM_SERIES_ENDED LEAGUES_SYSTEM_SERIES_ENDED_TITLE_SOLO5V5 1100 ALERT",
                                 "2 LEAGUES_MESSAGE_QUEUE_DODGE LEAGUES_GENERAL_LEAGUE_MINISERIES_TITLE 0 ALERT",
                                 "1 LEAGUES_SYSTEM_SERIES_ENDED LEAGUES_SYSTEM_SERIES_ENDED_TITLE_SOLO5V5 1100 ALERT",
                             }));
}

TEST(SetNotificationsAllowed, WarningRebuildsWhileHeldBackAreAppendedAtRelease) {
    LeagueNotificationStore store;
    store.UpdateDecayWarnings({DecayingEntry("1")});
    ASSERT_FALSE(store.SetNotificationsAllowed(false));
    store.UpdateDecayWarnings({DecayingEntry("1")});
    store.UpdateDecayWarnings({DecayingEntry("2")});  // replaces the pending warnings, not the shown ones
    EXPECT_EQ(Listed(store), Lines{"0 LEAGUES_SYSTEM_DECAY LEAGUES_SYSTEM_DECAY_TITLE 1300 ALERT"});
    ASSERT_TRUE(store.SetNotificationsAllowed(true));
    EXPECT_EQ(Listed(store), (Lines{"0 LEAGUES_SYSTEM_DECAY LEAGUES_SYSTEM_DECAY_TITLE 1300 ALERT",
                                    "4 LEAGUES_SYSTEM_DECAY LEAGUES_SYSTEM_DECAY_TITLE 1300 ALERT"}));
    store.UpdateDecayWarnings({DecayingEntry("3")});
    EXPECT_EQ(Listed(store), Lines{"6 LEAGUES_SYSTEM_DECAY LEAGUES_SYSTEM_DECAY_TITLE 1300 ALERT"});
}

TEST(SetNotificationsAllowed, ReleasesDemotionShieldWarnings) {
    LeagueNotificationStore store;
    ASSERT_FALSE(store.SetNotificationsAllowed(false));
    LCDS::LeagueItemDTO entry;
    entry.demotionWarning = 1;
    store.UpdateDemotionShieldWarnings({entry});
    EXPECT_TRUE(Listed(store).empty());
    ASSERT_TRUE(store.SetNotificationsAllowed(true));
    EXPECT_EQ(Listed(store),
              Lines{"0 LEAGUES_SYSTEM_DEMOTION_SHIELD_LEVEL_1_WARNING LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE "
                    "2100 WARNING"});
}

constexpr const char* kRefusal =
    "Unable to delete notification with id %1. Either notification is acknowledged or it is not an acknowledgeable "
    "notification";

std::string RefusalOf(std::uint64_t id) {
    std::string message = kRefusal;
    return message.replace(message.find("%1"), 2, std::to_string(id));
}

// The outcome of an acknowledgement: "ok", or the failure's code and message.
std::string Outcome(const wex::MaybeType<wex::Failure, void>& result) {
    if (result) {
        return "ok";
    }
    return std::to_string(result.GetFailure().Code()) + " " + std::string(result.GetFailure().Message());
}

class AcknowledgeNotificationTest : public ::testing::Test {
  protected:
    std::string Acknowledge(std::uint64_t id) {
        return Outcome(store.AcknowledgeNotification(id, 34, server.Callable()));
    }

    LeagueNotificationStore store;
    test::RecordedAcknowledgements server;
};

TEST_F(AcknowledgeNotificationTest, MarksAServerNotificationAfterTheServerAcknowledgedIt) {
    ASSERT_TRUE(store.AddLeagueMessage(LeaguesMessage("m0", {Param("LEAGUE_PROMOTED")}, 99)));
    EXPECT_EQ(Acknowledge(0), "ok");
    EXPECT_EQ(server.calls, Lines{"34 m0"});  // the module's account, not the message's
    EXPECT_EQ(Listed(store),
              Lines{"0 LEAGUES_MESSAGE_LEAGUE_PROMOTED LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE 0 ALERT acknowledged"});
    // Nothing stops a second acknowledgement; the server is asked again.
    EXPECT_EQ(Acknowledge(0), "ok");
    EXPECT_EQ(server.calls, (Lines{"34 m0", "34 m0"}));
}

TEST_F(AcknowledgeNotificationTest, ARecordWithoutServerMessageIsMarkedWithoutAsking) {
    ASSERT_TRUE(store.AddLeagueMessage(LeaguesMessage("", {Param("LEAGUE_PROMOTED")})));
    store.UpdateDecayWarnings({DecayingEntry("1")});
    EXPECT_EQ(Acknowledge(0), "ok");
    EXPECT_EQ(Acknowledge(1), "ok");
    EXPECT_TRUE(server.calls.empty());
    EXPECT_EQ(Listed(store),
              (Lines{
                  "0 LEAGUES_MESSAGE_LEAGUE_PROMOTED LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE 0 ALERT acknowledged",
                  "1 LEAGUES_SYSTEM_DECAY LEAGUES_SYSTEM_DECAY_TITLE 1300 ALERT acknowledged",
              }));
}

TEST_F(AcknowledgeNotificationTest, FailsWith403ForUnknownAndPendingIds) {
    EXPECT_EQ(Acknowledge(0), "403 " + RefusalOf(0));
    EXPECT_EQ(Acknowledge(18446744073709551615u), "403 " + RefusalOf(18446744073709551615u));
    ASSERT_FALSE(store.SetNotificationsAllowed(false));
    ASSERT_TRUE(store.AddLeagueMessage(LeaguesMessage("m0", {Param("MINISERIES_CANCEL", kGoldSeriesEnded)})));
    store.UpdateDecayWarnings({DecayingEntry("1")});
    EXPECT_EQ(Acknowledge(0), "403 " + RefusalOf(0));
    EXPECT_EQ(Acknowledge(1), "403 " + RefusalOf(1));
    EXPECT_TRUE(server.calls.empty());
}

TEST_F(AcknowledgeNotificationTest, ASeriesEndedRecordIsFoundInTheMapFirst) {
    ASSERT_TRUE(store.AddLeagueMessage(LeaguesMessage("ended", {Param("MINISERIES_CANCEL", kGoldSeriesEnded)})));
    server.answer = false;
    EXPECT_EQ(Acknowledge(0), "403 " + RefusalOf(0));
    // Refused in the map, the search ends there: the derived messages are not tried.
    EXPECT_EQ(server.calls, Lines{"34 ended"});
}

TEST_F(AcknowledgeNotificationTest, ARefusedDerivedMessageStaysUnacknowledged) {
    ASSERT_TRUE(store.AddLeagueMessage(
        LeaguesMessage("demoted", {Param("LEAGUE_DEMOTED", R"({"tier": "GOLD", "inactivityStatus": "INACTIVE",
                                               "displayDecayWarning": true})")})));
    server.answer = false;
    EXPECT_EQ(Acknowledge(1), "403 " + RefusalOf(1));
    EXPECT_EQ(server.calls, Lines{"34 demoted"});
    EXPECT_FALSE(store.GetNotifications().at(1).acknowledgedByPlayer);
}

TEST_F(AcknowledgeNotificationTest, HoldsTheRecordWhileTheListsChangeDuringTheServerCall) {
    ASSERT_TRUE(store.AddLeagueMessage(
        LeaguesMessage("demoted", {Param("LEAGUE_DEMOTED", R"({"tier": "GOLD", "inactivityStatus": "INACTIVE",
                                               "displayDecayWarning": true})")})));
    ASSERT_FALSE(store.SetNotificationsAllowed(false));
    for (int index = 0; index < 20; ++index) {
        ASSERT_TRUE(store.AddLeagueMessage(LeaguesMessage("pending", {Param("MINISERIES_CANCEL", kGoldSeriesEnded)})));
    }
    // The release while the server is awaited grows the derived messages under the search.
    server.meanwhile = [this] { store.SetNotificationsAllowed(true); };
    EXPECT_EQ(Acknowledge(1), "ok");
    EXPECT_TRUE(store.GetNotifications().at(21).acknowledgedByPlayer);
    EXPECT_EQ(store.GetNotifications().size(), 42u);
}

}  // namespace
}  // namespace Orvel::Client::Leagues
