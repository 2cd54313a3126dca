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

using test::Listed;
using Lines = std::vector<std::string>;

LCDS::LeagueItemDTO Entry(LCDS::LeagueTier tier, bool displayDecayWarning, std::string inactivityStatus,
                          std::string progress = "") {
    LCDS::LeagueItemDTO entry;
    entry.playerOrTeamId = "42";
    entry.playerOrTeamName = "Tester";
    entry.queueType = LCDS::QueueType::RANKED_FLEX_TT;
    entry.tier = tier;
    entry.displayDecayWarning = displayDecayWarning;
    entry.inactivityStatus = std::move(inactivityStatus);
    entry.miniSeries.progress = std::move(progress);
    entry.miniSeries.timeLeftToPlayMillis = 5000;
    entry.timeUntilInactivityStatusChanges = 86400000;
    return entry;
}

TEST(UpdateDecayWarnings, TheFirstMatchingRuleGivesTheWarning) {
    using LCDS::LeagueTier;
    struct Row {
        LCDS::LeagueItemDTO entry;
        const char* warning;  // empty for none
    };
    const Row rows[] = {
        {Entry(LeagueTier::SILVER, true, "INACTIVE"), "LEAGUES_SYSTEM_DECAY LEAGUES_SYSTEM_DECAY_TITLE 1300 ALERT"},
        {Entry(LeagueTier::SILVER, true, "INACTIVE", "WN"),
         "LEAGUES_SYSTEM_DECAY LEAGUES_SYSTEM_DECAY_TITLE 1300 ALERT"},
        {Entry(LeagueTier::GOLD, true, "WARNING", "WN"),
         "LEAGUES_SYSTEM_SERIES_INACTIVITY LEAGUES_SYSTEM_SERIES_INACTIVITY_TITLE 1400 ALERT"},
        {Entry(LeagueTier::GOLD, true, "", "N"),
         "LEAGUES_SYSTEM_SERIES_INACTIVITY LEAGUES_SYSTEM_SERIES_INACTIVITY_TITLE 1400 ALERT"},
        {Entry(LeagueTier::PLATINUM, true, "WARNING"),
         "LEAGUES_SYSTEM_DECAY_SOON LEAGUES_SYSTEM_DECAY_SOON_TITLE 1500 ALERT"},
        {Entry(LeagueTier::CHALLENGER, true, "GRACE"),
         "LEAGUES_SYSTEM_DECAY_IMMINENT LEAGUES_SYSTEM_DECAY_IMMINENT_TITLE 1600 ALERT"},
        {Entry(LeagueTier::GOLD, true, ""), ""},
        {Entry(LeagueTier::GOLD, true, "ACTIVE"), ""},
        {Entry(LeagueTier::GOLD, true, "inactive"), ""},
        {Entry(LeagueTier::BRONZE, true, "INACTIVE"), ""},
        {Entry(LeagueTier::BRONZE, true, "GRACE", "WN"), ""},
        {Entry(LeagueTier::SILVER, false, "INACTIVE"), ""},
        {Entry(LeagueTier::SILVER, false, "GRACE", "W"), ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.entry.inactivityStatus + " " + row.entry.miniSeries.progress + " " +
                     std::to_string(static_cast<int>(row.entry.tier)));
        LeagueNotificationStore store;
        store.UpdateDecayWarnings({row.entry});
        // One id goes to the demotion-shield rebuild that follows, after the warning's.
        EXPECT_EQ(Listed(store), *row.warning == '\0' ? Lines{} : Lines{std::string("0 ") + row.warning});
    }
}

TEST(UpdateDecayWarnings, RebuildsTheWholeListAndThenTheDemotionShieldWarnings) {
    LeagueNotificationStore store;
    LCDS::LeagueItemDTO shielded = Entry(LCDS::LeagueTier::GOLD, true, "GRACE");
    shielded.demotionWarning = 2;
    store.UpdateDecayWarnings({Entry(LCDS::LeagueTier::SILVER, true, "INACTIVE"), shielded});
    EXPECT_EQ(Listed(store),
              (Lines{
                  "0 LEAGUES_SYSTEM_DECAY LEAGUES_SYSTEM_DECAY_TITLE 1300 ALERT",
                  "1 LEAGUES_SYSTEM_DECAY_IMMINENT LEAGUES_SYSTEM_DECAY_IMMINENT_TITLE 1600 ALERT",
                  "3 LEAGUES_SYSTEM_DEMOTION_SHIELD_LEVEL_2_WARNING LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE 1800 ALERT",
              }));
    store.UpdateDecayWarnings({});
    EXPECT_TRUE(Listed(store).empty());
}

TEST(MakeStandingMessage, CopiesTheEntrysQueueInactivityAndSeriesTime) {
    LeagueNotificationStore store;
    const SharedNotification record =
        store.MakeStandingMessage(Entry(LCDS::LeagueTier::GOLD, true, "WARNING", "WL"), "TYPE", "TITLE", 1500);
    EXPECT_EQ(record->id, 0u);
    EXPECT_EQ(record->type, "TYPE");
    EXPECT_EQ(record->titleType, "TITLE");
    EXPECT_EQ(record->priority, 1500u);
    EXPECT_EQ(record->severity, Api::Severity::ALERT);
    EXPECT_EQ(record->msgId, "");
    EXPECT_EQ(record->data.queueType, "FLEXTT");
    EXPECT_EQ(record->data.inactivityStatus, "WARNING");
    EXPECT_EQ(record->data.playerOrTeamName, "Tester");
    EXPECT_EQ(record->data.playerOrTeamId, "");
    EXPECT_EQ(record->data.timeUntilInactivityStatusChanges, 86400000u);
    EXPECT_EQ(record->data.miniseriesTimeLeftToPlayMillis, 5000u);
    EXPECT_EQ(record->data.notifyReason, "");
    EXPECT_EQ(record->data.tier, "");
    EXPECT_TRUE(record->data.miniseriesResults.empty());
    EXPECT_EQ(record->data.minGamesForSeeding, -1);
    EXPECT_EQ(store.MakeStandingMessage(LCDS::LeagueItemDTO{}, "", "", 0)->data.queueType, "NONE");
}

TEST(UpdateDemotionShieldWarnings, UsesAnIdPerEntryAndWarnsOfLevelsOneAndTwo) {
    LeagueNotificationStore store;
    std::vector<LCDS::LeagueItemDTO> entries(5);
    const std::uint64_t levels[] = {0, 1, 2, 3, 18446744073709551615u};
    for (std::size_t index = 0; index < entries.size(); ++index) {
        entries[index].demotionWarning = levels[index];
        entries[index].playerOrTeamId = "p" + std::to_string(index);
        entries[index].queueType = static_cast<LCDS::QueueType>(index);
    }
    store.UpdateDemotionShieldWarnings(entries);
    EXPECT_EQ(Listed(store),
              (Lines{
                  "1 LEAGUES_SYSTEM_DEMOTION_SHIELD_LEVEL_1_WARNING LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE 2100 WARNING",
                  "2 LEAGUES_SYSTEM_DEMOTION_SHIELD_LEVEL_2_WARNING LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE 1800 ALERT",
              }));
    const std::vector<Api::LeagueNotificationResource> list = store.GetNotifications();
    EXPECT_EQ(list[0].data.playerOrTeamId, "p1");
    EXPECT_EQ(list[0].data.queueType, "SOLO5V5");
    EXPECT_EQ(list[1].data.queueType, "FLEXSR");
    EXPECT_EQ(list[1].data.playerOrTeamName, "");

    store.UpdateDemotionShieldWarnings({entries[0]});
    EXPECT_TRUE(Listed(store).empty());
    store.UpdateDemotionShieldWarnings({entries[1]});
    EXPECT_EQ(store.GetNotifications().at(0).id, 6u);
}

}  // namespace

}  // namespace Orvel::Client::Leagues
