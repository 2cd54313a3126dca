#include "notifications/notification_store.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "notifications/case_table.h"

namespace Orvel::Client::Leagues {

namespace {

using Api::GameflowPhase;
using Lines = std::vector<std::string>;

// A param of a leagues message: a notify reason and a league entry's members.
std::string Param(std::string_view reason, std::string_view leagueItem = "{}") {
    return R"({"notifyReason": ")" + std::string(reason) + R"(", "leagueItem": )" + std::string(leagueItem) + "}";
}

Api::SimpleMessage LeaguesMessage(std::string msgId, std::vector<std::string> params, std::uint64_t accountId = 34) {
    return Api::SimpleMessage{accountId, std::move(msgId), "leagues", std::move(params)};
}

constexpr const char* kSilverDecayDemotion =
    R"({"tier": "SILVER", "rank": "I", "inactivityStatus": "INACTIVE", "displayDecayWarning": true})";
constexpr const char* kGoldSeriesEnded = R"({"tier": "GOLD", "queueType": "RANKED_SOLO_5x5"})";
const std::string kDecay = "LEAGUES_SYSTEM_DECAY LEAGUES_SYSTEM_DECAY_TITLE 1300 ALERT";

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

LCDS::LeagueItemDTO DecayingEntry() {
    return Entry(LCDS::LeagueTier::SILVER, true, "INACTIVE");
}

// The listed notifications, one line each: id, message key, title key,
// priority, severity and, when set, "acknowledged".
Lines Listed(const LeagueNotificationStore& store) {
    Lines lines;
    for (const Api::LeagueNotificationResource& record : store.GetNotifications()) {
        lines.push_back(std::to_string(record.id) + " " + record.type + " " + record.titleType + " " +
                        std::to_string(record.priority) +
                        (record.severity == Api::Severity::ALERT ? " ALERT" : " WARNING") +
                        (record.acknowledgedByPlayer ? " acknowledged" : ""));
    }
    return lines;
}

// A store whose server acknowledgement records each call as "accountId msgId"
// and answers as told.
class StoreTest : public ::testing::Test {
  protected:
    ServerAcknowledgement Server() {
        return [this](std::uint64_t accountId, const std::string& msgId) {
            calls.push_back(std::to_string(accountId) + " " + msgId);
            if (meanwhile) {
                meanwhile();
            }
            return answer;
        };
    }

    // "ok", or the failure's code and message.
    std::string Acknowledge(std::uint64_t id) {
        const auto result = store.AcknowledgeNotification(id, 34, Server());
        return result ? "ok"
                      : std::to_string(result.GetFailure().Code()) + " " + std::string(result.GetFailure().Message());
    }

    static std::string Refusal(std::uint64_t id) {
        return "403 Unable to delete notification with id " + std::to_string(id) +
               ". Either notification is acknowledged or it is not an acknowledgeable notification";
    }

    LeagueNotificationStore store;
    Lines calls;
    bool answer = true;
    // Runs during a server call, as other handlers may run while the server is awaited.
    std::function<void()> meanwhile;
};

TEST_F(StoreTest, FilesLeaguesMessagesWithIdsFromZeroAndIgnoresOtherTypesWithoutUsingAnId) {
    Api::SimpleMessage other = LeaguesMessage("x", {Param("LEAGUE_PROMOTED")});
    other.type = "Leagues";
    EXPECT_FALSE(store.AddLeagueMessage(other));
    EXPECT_TRUE(store.AddLeagueMessage(LeaguesMessage("a", {Param("LEAGUE_PROMOTED", R"({"tier": "GOLD"})")})));
    EXPECT_TRUE(store.AddLeagueMessage(LeaguesMessage("b", {Param("LEAGUE_UPDATE_DECAY")})));
    EXPECT_TRUE(store.AddLeagueMessage(LeaguesMessage("c", {"no param counts"})));
    EXPECT_EQ(Listed(store), (Lines{"0 LEAGUES_MESSAGE_LEAGUE_PROMOTED LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE 0 ALERT",
                                    "1 LEAGUES_SYSTEM_DECAY LEAGUES_SYSTEM_DECAY_TITLE 0 ALERT", "2   0 ALERT"}));
    EXPECT_EQ(store.GetNotifications()[2].msgId, "c");
    EXPECT_EQ(store.GetNotifications()[2].data.minGamesForSeeding, -1);
}

TEST_F(StoreTest, ASeriesEndedOutsideBronzeIsListedTwiceAndADecayDemotionGetsACopyWithTheNextId) {
    ASSERT_TRUE(store.AddLeagueMessage(
        LeaguesMessage("a", {Param("MINISERIES_CANCEL", R"({"tier": "SILVER", "queueType": "RANKED_FLEX_SR"})")})));
    ASSERT_TRUE(store.AddLeagueMessage(
        LeaguesMessage("b", {Param("MINISERIES_CANCEL", R"({"tier": "BRONZE", "queueType": "RANKED_FLEX_SR"})")})));
    ASSERT_TRUE(store.AddLeagueMessage(LeaguesMessage("c", {Param("LEAGUE_DEMOTED", kSilverDecayDemotion)})));
    ASSERT_TRUE(store.AddLeagueMessage(LeaguesMessage("d", {Param("QUEUE_DODGE")})));
    const std::string ended = " LEAGUES_SYSTEM_SERIES_ENDED LEAGUES_SYSTEM_SERIES_ENDED_TITLE_FLEXSR ";
    EXPECT_EQ(Listed(store),
              (Lines{
                  "0" + ended + "1100 ALERT",
                  "1" + ended + "0 ALERT",
                  "2 LEAGUES_MESSAGE_PROMOHELPER_LEAGUE_DEMOTED LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE 0 ALERT",
                  "4 LEAGUES_MESSAGE_QUEUE_DODGE LEAGUES_GENERAL_LEAGUE_MINISERIES_TITLE 0 ALERT",
                  "0" + ended + "1100 ALERT",
                  "3 LEAGUES_SYSTEM_DECAY_DEMOTION LEAGUES_SYSTEM_DECAY_TITLE 1200 ALERT",
              }));
    const Api::LeagueNotificationResource copy = store.GetNotifications().at(5);
    EXPECT_EQ(copy.msgId + " " + copy.data.tier + " " + copy.data.notifyReason, "c SILVER LEAGUE_DEMOTED");
}

TEST(DeriveSystemMessages, DerivesNothingElse) {
    const std::string rows[] = {
        Param("LEAGUE_DEMOTED", R"({"tier": "BRONZE", "inactivityStatus": "INACTIVE", "displayDecayWarning": true})"),
        Param("LEAGUE_DEMOTED", R"({"tier": "SILVER", "inactivityStatus": "INACTIVE"})"),
        Param("LEAGUE_DEMOTED", R"({"tier": "SILVER", "inactivityStatus": "GRACE", "displayDecayWarning": true})"),
        Param("LEAGUE_UPDATE_DECAY", kSilverDecayDemotion),
        Param("MINISERIES_LOST", kSilverDecayDemotion),
    };
    for (const std::string& param : rows) {
        SCOPED_TRACE(param);
        LeagueNotificationStore store;
        ASSERT_TRUE(store.AddLeagueMessage(LeaguesMessage("a", {param})));
        ASSERT_EQ(store.GetNotifications().size(), 1u);
        EXPECT_EQ(store.GetNotifications()[0].priority, 0u);
    }
}

TEST_F(StoreTest, LoginMessagesReadTheGatingStateForEachMessage) {
    // The game flow enters champion select while the first acknowledgement is awaited.
    meanwhile = [this] { store.SetNotificationsAllowed(false); };
    store.AddLoginMessages({LeaguesMessage("first", {Param("LEAGUE_POINTS_UPDATE")}),
                            LeaguesMessage("second", {Param("LEAGUE_PROMOTED")})},
                           Server());
    EXPECT_EQ(Listed(store),
              Lines{"0 LEAGUES_MESSAGE_LEAGUE_POINTS_UPDATE LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE 0 ALERT"});
    EXPECT_TRUE(store.SetNotificationsAllowed(true));
    EXPECT_EQ(Listed(store).size(), 2u);
}

TEST(NotificationsAllowedIn, HoldsBackFromReadyCheckToPreEndOfGame) {
    for (int phase = 0; phase <= 13; ++phase) {
        SCOPED_TRACE(phase);
        EXPECT_EQ(NotificationsAllowedIn(static_cast<GameflowPhase>(phase)), phase < 4 || phase > 11);
    }
    EXPECT_EQ(HeldBackPhases.size(), 8u);
}

TEST_F(StoreTest, HoldsNewRecordsBackAcrossAGameAndReleasesThemInOrder) {
    ASSERT_TRUE(store.AddLeagueMessage(LeaguesMessage("before", {Param("LEAGUE_PROMOTED")})));
    const Lines before = Listed(store);
    std::vector<bool> justAllowed;
    for (const bool allowed : {true, false, false, true, true}) {
        justAllowed.push_back(store.SetNotificationsAllowed(allowed));
        if (justAllowed.size() == 2) {
            ASSERT_TRUE(
                store.AddLeagueMessage(LeaguesMessage("during", {Param("MINISERIES_CANCEL", kGoldSeriesEnded)})));
            ASSERT_TRUE(store.AddLeagueMessage(LeaguesMessage("later", {Param("QUEUE_DODGE")})));
            LCDS::LeagueItemDTO shielded;
            shielded.demotionWarning = 1;
            store.UpdateDemotionShieldWarnings({shielded});
            EXPECT_EQ(Listed(store), before);
        }
    }
    EXPECT_EQ(justAllowed, (std::vector<bool>{false, false, false, true, false}));
    const std::string ended = " LEAGUES_SYSTEM_SERIES_ENDED LEAGUES_SYSTEM_SERIES_ENDED_TITLE_SOLO5V5 1100 ALERT";
    EXPECT_EQ(Listed(store), (Lines{
                                 "0 LEAGUES_MESSAGE_LEAGUE_PROMOTED LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE 0 ALERT",
                                 "1" + ended,
                                 "2 LEAGUES_MESSAGE_QUEUE_DODGE LEAGUES_GENERAL_LEAGUE_MINISERIES_TITLE 0 ALERT",
                                 "1" + ended,
                                 "3 LEAGUES_SYSTEM_DEMOTION_SHIELD_LEVEL_1_WARNING LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE "
                                 "2100 WARNING",
                             }));
}

TEST_F(StoreTest, WarningRebuildsWhileHeldBackAreAppendedAtRelease) {
    store.UpdateDecayWarnings({DecayingEntry()});
    ASSERT_FALSE(store.SetNotificationsAllowed(false));
    store.UpdateDecayWarnings({DecayingEntry()});
    store.UpdateDecayWarnings({DecayingEntry()});  // replaces the pending warnings, not the shown ones
    EXPECT_EQ(Listed(store), Lines{"0 " + kDecay});
    ASSERT_TRUE(store.SetNotificationsAllowed(true));
    EXPECT_EQ(Listed(store), (Lines{"0 " + kDecay, "4 " + kDecay}));
    store.UpdateDecayWarnings({DecayingEntry()});
    EXPECT_EQ(Listed(store), Lines{"6 " + kDecay});
}

TEST_F(StoreTest, AcknowledgesAfterTheServerDidWithTheModulesAccountAndMarksOthersWithoutAsking) {
    ASSERT_TRUE(store.AddLeagueMessage(LeaguesMessage("m0", {Param("LEAGUE_PROMOTED")}, 99)));
    ASSERT_TRUE(store.AddLeagueMessage(LeaguesMessage("", {Param("LEAGUE_PROMOTED")})));
    store.UpdateDecayWarnings({DecayingEntry()});
    for (const std::uint64_t id : {0, 0, 1, 2}) {
        EXPECT_EQ(Acknowledge(id), "ok");
    }
    // Nothing stops a second acknowledgement; the server is asked again.
    EXPECT_EQ(calls, (Lines{"34 m0", "34 m0"}));
    const std::string promoted =
        " LEAGUES_MESSAGE_LEAGUE_PROMOTED LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE 0 ALERT acknowledged";
    EXPECT_EQ(Listed(store), (Lines{"0" + promoted, "1" + promoted, "2 " + kDecay + " acknowledged"}));
}

TEST_F(StoreTest, RefusesUnknownAndPendingIdsAndWhatTheServerRefused) {
    EXPECT_EQ(Acknowledge(18446744073709551615u), Refusal(18446744073709551615u));
    ASSERT_TRUE(store.AddLeagueMessage(LeaguesMessage("ended", {Param("MINISERIES_CANCEL", kGoldSeriesEnded)})));
    ASSERT_TRUE(store.AddLeagueMessage(
        LeaguesMessage("demoted", {Param("LEAGUE_DEMOTED", R"({"tier": "GOLD", "inactivityStatus": "INACTIVE",
                                               "displayDecayWarning": true})")})));
    ASSERT_FALSE(store.SetNotificationsAllowed(false));
    ASSERT_TRUE(store.AddLeagueMessage(LeaguesMessage("m3", {Param("MINISERIES_CANCEL", kGoldSeriesEnded)})));
    store.UpdateDecayWarnings({DecayingEntry()});
    EXPECT_EQ(Acknowledge(3), Refusal(3));
    EXPECT_EQ(Acknowledge(5), Refusal(5));
    EXPECT_TRUE(calls.empty());
    answer = false;
    // Refused in the map, the search ends there: the derived messages are not tried.
    EXPECT_EQ(Acknowledge(0), Refusal(0));
    EXPECT_EQ(calls, Lines{"34 ended"});
    EXPECT_EQ(Acknowledge(2), Refusal(2));
    EXPECT_EQ(calls, (Lines{"34 ended", "34 demoted"}));
    EXPECT_FALSE(store.GetNotifications().at(2).acknowledgedByPlayer);
}

TEST_F(StoreTest, HoldsTheRecordWhileTheListsChangeDuringTheServerCall) {
    ASSERT_TRUE(store.AddLeagueMessage(
        LeaguesMessage("demoted", {Param("LEAGUE_DEMOTED", R"({"tier": "GOLD", "inactivityStatus": "INACTIVE",
                                               "displayDecayWarning": true})")})));
    ASSERT_FALSE(store.SetNotificationsAllowed(false));
    for (int index = 0; index < 20; ++index) {
        ASSERT_TRUE(store.AddLeagueMessage(LeaguesMessage("pending", {Param("MINISERIES_CANCEL", kGoldSeriesEnded)})));
    }
    // The release while the server is awaited grows the derived messages under the search.
    meanwhile = [this] { store.SetNotificationsAllowed(true); };
    EXPECT_EQ(Acknowledge(1), "ok");
    EXPECT_TRUE(store.GetNotifications().at(21).acknowledgedByPlayer);
    EXPECT_EQ(store.GetNotifications().size(), 42u);
}

TEST(UpdateDecayWarnings, TheFirstMatchingRuleGivesTheWarning) {
    const std::string tiers[] = {"NONE", "BRONZE", "SILVER", "GOLD", "PLATINUM", "DIAMOND", "MASTER", "CHALLENGER"};
    const auto rows = test::ReadCases("decay_warnings.tsv");
    ASSERT_EQ(rows.size(), 10u);
    for (const std::vector<std::string>& row : rows) {
        SCOPED_TRACE(::testing::PrintToString(row));
        const auto tier = static_cast<LCDS::LeagueTier>(std::find(tiers, std::end(tiers), row.at(0)) - tiers);
        LeagueNotificationStore store;
        store.UpdateDecayWarnings({Entry(tier, row.at(1) == "1", row.at(2), row.at(3))});
        EXPECT_EQ(Listed(store), row.at(4) == "-" ? Lines{} : Lines{"0 " + row.at(4)});
    }
}

TEST_F(StoreTest, RebuildsTheWholeListAndThenTheDemotionShieldWarningsOfLevelsOneAndTwo) {
    LCDS::LeagueItemDTO shielded = Entry(LCDS::LeagueTier::GOLD, true, "GRACE");
    shielded.demotionWarning = 2;
    store.UpdateDecayWarnings({DecayingEntry(), shielded});
    EXPECT_EQ(Listed(store),
              (Lines{
                  "0 " + kDecay,
                  "1 LEAGUES_SYSTEM_DECAY_IMMINENT LEAGUES_SYSTEM_DECAY_IMMINENT_TITLE 1600 ALERT",
                  "3 LEAGUES_SYSTEM_DEMOTION_SHIELD_LEVEL_2_WARNING LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE 1800 ALERT",
              }));
    store.UpdateDecayWarnings({});
    EXPECT_TRUE(Listed(store).empty());

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
                  "5 LEAGUES_SYSTEM_DEMOTION_SHIELD_LEVEL_1_WARNING LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE 2100 WARNING",
                  "6 LEAGUES_SYSTEM_DEMOTION_SHIELD_LEVEL_2_WARNING LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE 1800 ALERT",
              }));
    const std::vector<Api::LeagueNotificationResource> list = store.GetNotifications();
    EXPECT_EQ(list[0].data.playerOrTeamId + " " + list[0].data.queueType + " " + list[1].data.queueType,
              "p1 SOLO5V5 FLEXSR");
}

TEST_F(StoreTest, AStandingMessageCopiesTheEntrysQueueInactivityAndSeriesTime) {
    const SharedNotification record =
        store.MakeStandingMessage(Entry(LCDS::LeagueTier::GOLD, true, "WARNING", "WL"), "TYPE", "TITLE", 1500);
    const Api::LeagueNotificationItem& data = record->data;
    EXPECT_EQ(std::to_string(record->id) + " " + record->type + " " + record->titleType + " " +
                  std::to_string(record->priority) + " [" + record->msgId + "] " + data.queueType + " " +
                  data.inactivityStatus + " " + data.playerOrTeamName + " [" + data.playerOrTeamId + data.notifyReason +
                  data.tier + "] " + std::to_string(data.timeUntilInactivityStatusChanges) + " " +
                  std::to_string(data.miniseriesTimeLeftToPlayMillis) + " " + std::to_string(data.minGamesForSeeding),
              "0 TYPE TITLE 1500 [] FLEXTT WARNING Tester [] 86400000 5000 -1");
    EXPECT_EQ(record->severity, Api::Severity::ALERT);
    EXPECT_TRUE(data.miniseriesResults.empty());
    EXPECT_EQ(store.MakeStandingMessage(LCDS::LeagueItemDTO{}, "", "", 0)->data.queueType, "NONE");
}

}  // namespace

}  // namespace Orvel::Client::Leagues
