// League messages pushed by the simulated game server to the built library:
// the notifications they file, the system messages they derive, and what is
// published, called and logged for them.
#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "notifications_fixture.h"

namespace tav::test {
namespace {

using Lines = std::vector<std::string>;

class LeagueMessagesTest : public NotificationsTest {};

constexpr const char* kFullEntry =
    R"({"leaguePoints":75,"playerOrTeamId":"42","playerOrTeamName":"Ann","leagueName":"Iron Wall 2",)"
    R"("queueType":"RANKED_FLEX_SR","tier":"SILVER","rank":"II","previousDayLeaguePosition":3,"wins":10,)"
    R"("losses":8,"lastPlayed":1700000000000,"timeUntilDecay":-3,"inactivityStatus":"ACTIVE",)"
    R"("timeUntilInactivityStatusChanges":5,"timeLastDecayMessageShown":6,"miniSeries":{"progress":"WLN","wins":1},)"
    R"("demotionWarning":2,"seasonEndTier":"GOLD","seasonEndRank":"IV","seasonEndApexPosition":9,"totalPlayed":18,)"
    R"("inactive":true,"displayDecayWarning":false,"freshBlood":true,"veteran":false,"hotStreak":true})";

TEST_F(LeagueMessagesTest, APushedPromotionIsListedWithEveryFactOfItsParams) {
    Push("m1", {Param("LEAGUE_PROMOTED", kFullEntry, R"("leaguePointsDelta":4294967295,"gameId":123456789012,)")});
    EXPECT_EQ(
        plugin.Get(kNotificationsUri).json,
        R"([{"acknowledgedByPlayer":false,"data":{"demotionWarning":2,"displayDecayWarning":false,)"
        R"("emblems":["HOTSTREAK","FRESHBLOOD"],"gameId":123456789012,"inactive":true,"inactivityStatus":"ACTIVE",)"
        R"("lastPlayed":1700000000000,"leagueName":"IronWall","leaguePointsDelta":-1,"losses":8,)"
        R"("minGamesForSeeding":-1,"miniseriesResults":["W","L","N"],"miniseriesTimeLeftToPlayMillis":0,)"
        R"("miniseriesWins":1,"notifyReason":"LEAGUE_PROMOTED","playerOrTeamId":"42","playerOrTeamName":"Ann",)"
        R"("points":75,"previousPosition":3,"queueType":"FLEXSR","rank":"II","seasonEndApexPosition":9,)"
        R"("seasonEndRank":"IV","seasonEndTier":"GOLD","tier":"SILVER","timeLastDecayMessageShown":6,)"
        R"("timeUntilDecay":-3,"timeUntilInactivityStatusChanges":5,"totalPlayed":18,"wins":10},"id":0,)"
        R"("priority":0,"severity":"ALERT","titleType":"LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE",)"
        R"("type":"LEAGUES_MESSAGE_LEAGUE_PROMOTED"}])");
}

struct KeyRow {
    std::string reason;
    std::string leagueItem;
    Lines listed;
};

void PrintTo(const KeyRow& row, std::ostream* out) {
    *out << row.reason << " " << row.leagueItem;
}

class LeagueMessageKeysTest : public NotificationsTest, public ::testing::WithParamInterface<KeyRow> {};

TEST_P(LeagueMessageKeysTest, EachReasonAndTierGivesItsKeysAndDerivedMessages) {
    Push("m", {Param(GetParam().reason, GetParam().leagueItem)});
    EXPECT_EQ(Listed(), GetParam().listed);
}

const std::string kGeneral = " LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE 0 ALERT";
const std::string kSeries = " LEAGUES_GENERAL_LEAGUE_MINISERIES_TITLE 0 ALERT";
const std::string kDecayed = R"(,"inactivityStatus":"INACTIVE","displayDecayWarning":true})";

// The key tables themselves are the unit tests' concern; these rows show the
// entry's members reaching them and the derived copies being listed.
INSTANTIATE_TEST_SUITE_P(
    Rows, LeagueMessageKeysTest,
    ::testing::Values(
        KeyRow{"LEAGUE_DEMOTED",
               R"({"tier":"SILVER","rank":"II"})",
               {"0 LEAGUES_MESSAGE_PROMOHELPER_LEAGUE_DEMOTED" + kGeneral}},
        KeyRow{"MINISERIES_START",
               R"({"tier":"BRONZE","rank":"V","miniSeries":{"progress":"WNN","wins":1}})",
               {"0 LEAGUES_MESSAGE_PROMOHELPER_MINISERIES_START_SINGULAR" + kSeries}},
        KeyRow{"MINISERIES_CANCEL",
               R"({"tier":"GOLD","queueType":"RANKED_SOLO_5x5")" + kDecayed,
               {"0 LEAGUES_SYSTEM_SERIES_ENDED_DECAY LEAGUES_SYSTEM_SERIES_ENDED_TITLE_SOLO5V5 1100 ALERT",
                "0 LEAGUES_SYSTEM_SERIES_ENDED_DECAY LEAGUES_SYSTEM_SERIES_ENDED_TITLE_SOLO5V5 1100 ALERT"}},
        KeyRow{"MINISERIES_CANCEL",
               R"({"tier":"BRONZE","queueType":"RANKED_TEAM_3x3"})",
               {"0 LEAGUES_SYSTEM_SERIES_ENDED LEAGUES_SYSTEM_SERIES_ENDED_TITLE_NONE 0 ALERT"}}));

// ---- What a message sets off ----------------------------------------------------

TEST_F(LeagueMessagesTest, ALeagueUpdateReloadsAndPublishesTheStandingsThenTheList) {
    Push("m1", {Param("LEAGUE_PROMOTED", R"({"tier":"GOLD"})")});
    EXPECT_EQ(plugin.ServerCalls(), (Lines{"leagues.getMyLeaguePositions []", "leagues.getAllMyLeagues []"}));
    EXPECT_EQ(ResourceEvents(plugin.records(), "/tav-leagues/v1/summoner-leagues/42"), (Lines{"Update []"}));
    EXPECT_EQ(PublishedLists(),
              (Lines{"Update: 0 LEAGUES_MESSAGE_LEAGUE_PROMOTED LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE 0 ALERT"}));
    // The signed standings are reloaded too, which their switch forbids here.
    EXPECT_EQ(plugin.WarningAndErrorLines(),
              (Lines{"  WARN| DBG| LoadSignedSummonerLeaguesData called while League service is not available."}));
    Lines order;
    for (const host::RecordedEvent& event : plugin.records().events) {
        order.push_back(std::string(wex::ParseJson(event.payload).Member("uri").AsString()));
    }
    EXPECT_EQ(order, (Lines{"/tav-leagues/v1/summoner-leagues/42", kNotificationsUri}));
}

TEST_F(LeagueMessagesTest, AMessageArrivingWhileARouteWaitsForTheServerIsFiledAndTheRouteAnswers) {
    // The first host turn of the route's wait for the server delivers the message.
    bool pushed = false;
    plugin.host().SetTurnHook([this, &pushed] {
        if (!std::exchange(pushed, true)) {
            plugin.host().PushServerMessage(kSimpleDialogMessage, MessageJson("m1", {Param("LEAGUE_RESET")}, "leagues"));
        }
    });
    const host::EndpointAnswer answer = plugin.Get("/tav-leagues/v1/summoner-leagues/42");
    plugin.host().SetTurnHook(nullptr);
    ASSERT_TRUE(pushed);
    EXPECT_FALSE(answer.failed) << answer.error;
    EXPECT_EQ(answer.json, "[]");
    const std::string reset = "0 LEAGUES_MESSAGE_LEAGUE_RESET LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE 0 ALERT";
    EXPECT_EQ(PublishedLists(), (Lines{"Update: " + reset}));
    EXPECT_EQ(Listed(), (Lines{reset}));
    EXPECT_EQ(plugin.ServerCalls(), (Lines{"leagues.getAllMyLeagues []"}));
}

TEST_F(LeagueMessagesTest, AMessageWithoutALeagueUpdateIsPublishedWithoutReloading) {
    Push("m1", {Param("NOT_YET_SEEDED", "{}", R"("minGamesForSeeding":4294967295,)"), "not json"});
    EXPECT_EQ(plugin.ServerCalls(), Lines{});
    EXPECT_EQ(PublishedLists(),
              (Lines{"Update: 0 LEAGUES_MESSAGE_NOT_YET_SEEDED LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE 0 ALERT"}));
    EXPECT_NE(plugin.Get(kNotificationsUri).json.find(R"("minGamesForSeeding":-1,)"), std::string::npos);
    EXPECT_EQ(plugin.WarningAndErrorLines(), Lines{});
}

TEST_F(LeagueMessagesTest, AMessageOfAnotherTypeIsNeitherFiledNorPublished) {
    Push("m1", {Param("LEAGUE_PROMOTED")}, "LEAGUES");
    Push("m2", {Param("LEAGUE_PROMOTED")}, "mail");
    EXPECT_EQ(plugin.ServerCalls(), Lines{});
    EXPECT_EQ(plugin.records().events.size(), 0u);
    EXPECT_EQ(Listed(), Lines{});
}

TEST_F(LeagueMessagesTest, WithTheLeagueServiceOffAnUpdateIsFiledButNotPublished) {
    plugin.SetLeagueService(false);
    Push("m1", {Param("LEAGUE_PROMOTED")});
    EXPECT_EQ(plugin.ServerCalls(), Lines{});
    EXPECT_EQ(PublishedLists(), Lines{});
    EXPECT_EQ(plugin.WarningAndErrorLines(),
              (Lines{"  WARN| DBG| HandleLeaguesMessage called while League service is not available."}));
    Push("m2", {Param("QUEUE_DODGE")}, "leagues");
    Push("m3", {Param("LEAGUE_RESET")});
    EXPECT_EQ(PublishedLists(),
              (Lines{"Update: 0 LEAGUES_MESSAGE_LEAGUE_PROMOTED LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE 0 ALERT | "
                     "1 LEAGUES_MESSAGE_QUEUE_DODGE LEAGUES_GENERAL_LEAGUE_MINISERIES_TITLE 0 ALERT | "
                     "2 LEAGUES_MESSAGE_LEAGUE_RESET LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE 0 ALERT"}));
}

TEST_F(LeagueMessagesTest, AFailedPositionsCallIsLoggedAndNothingIsPublished) {
    plugin.FailServer("leagues", "getMyLeaguePositions", "timed out");
    Push("m1", {Param("LEAGUE_PROMOTED")});
    EXPECT_EQ(plugin.ServerCalls(), (Lines{"leagues.getMyLeaguePositions []"}));
    EXPECT_EQ(plugin.records().events.size(), 0u);
    EXPECT_EQ(plugin.WarningAndErrorLines(),
              (Lines{" ERROR| DBG| Failed to get my league positions and progress: timed out"}));
    EXPECT_EQ(Listed(), (Lines{"0 LEAGUES_MESSAGE_LEAGUE_PROMOTED LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE 0 ALERT"}));
}

TEST_F(LeagueMessagesTest, AFailedStandingsReloadIsLoggedAndTheListStillPublished) {
    plugin.FailServer("leagues", "getAllMyLeagues", "timed out");
    Push("m1", {Param("LEAGUE_PROMOTED")});
    EXPECT_EQ(plugin.ServerCalls(), (Lines{"leagues.getMyLeaguePositions []", "leagues.getAllMyLeagues []"}));
    EXPECT_EQ(ResourceEvents(plugin.records(), "/tav-leagues/v1/summoner-leagues/42"), Lines{});
    EXPECT_EQ(PublishedLists(),
              (Lines{"Update: 0 LEAGUES_MESSAGE_LEAGUE_PROMOTED LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE 0 ALERT"}));
    EXPECT_EQ(plugin.WarningAndErrorLines(),
              (Lines{" ERROR| DBG| Failed to get leagues: timed out",
                     " ERROR| DBG| Failed to get leagues for summoner: Error requesting league for summoner id: 42, "
                     "error: timed out"}));
}

TEST_F(LeagueMessagesTest, AnUpdateRebuildsTheDemotionShieldWarningsEachEntryTakingAnId) {
    ScriptPositions(R"({"summonerLeagues":[)"
                    R"({"playerOrTeamId":"42","queueType":"RANKED_SOLO_5x5","demotionWarning":0},)"
                    R"({"playerOrTeamId":"42","queueType":"RANKED_FLEX_SR","demotionWarning":1},)"
                    R"({"playerOrTeamId":"42","queueType":"RANKED_FLEX_TT","demotionWarning":2}]})");
    Push("m1", {Param("LEAGUE_POINTS_UPDATE")});
    Push("m2", {Param("LEAGUE_POINTS_UPDATE")});
    EXPECT_EQ(Listed(),
              (Lines{
                  "0 LEAGUES_MESSAGE_LEAGUE_POINTS_UPDATE LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE 0 ALERT",
                  "4 LEAGUES_MESSAGE_LEAGUE_POINTS_UPDATE LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE 0 ALERT",
                  "6 LEAGUES_SYSTEM_DEMOTION_SHIELD_LEVEL_1_WARNING LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE 2100 WARNING",
                  "7 LEAGUES_SYSTEM_DEMOTION_SHIELD_LEVEL_2_WARNING LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE 1800 ALERT",
              }));
}

TEST_F(LeagueMessagesTest, HostileParamsAreSkippedAndTheMessageStillFiled) {
    const std::string deep = std::string(100000, '[') + std::string(100000, ']');
    const std::string deepObject =
        R"({"notifyReason":"QUEUE_DODGE","leagueItem":)" + std::string(50000, '[') + std::string(50000, ']') + "}";
    const std::string huge = Param(std::string(1 << 20, 'X'));
    Push("m1", {"", "not json", "[1,2]", "\"text\"", R"({"leagueItem":{}})", deep, R"({"notifyReason":5})"});
    Push("m2",
         {deepObject, R"({"notifyReason":"LEAGUE_RESET","leagueItem":"text","gameId":"7","leaguePointsDelta":true})"});
    Push("m3", {huge});
    const Lines listed = Listed();
    ASSERT_EQ(listed.size(), 3u);
    EXPECT_EQ(listed[0], "0 LEAGUES_MESSAGE_ LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE 0 ALERT");
    EXPECT_EQ(listed[1], "1 LEAGUES_MESSAGE_LEAGUE_RESET LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE 0 ALERT");
    // Its key, formatted like every text, is cut at 4095 bytes.
    EXPECT_EQ(listed[2],
              "2 LEAGUES_MESSAGE_" + std::string(4095 - 16, 'X') + " LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE 0 ALERT");
}

TEST_F(LeagueMessagesTest, AMessageThatDoesNotConvertIsDropped) {
    plugin.host().PushServerMessage(kSimpleDialogMessage, R"({"msgId":"m1","type":"leagues","params":"text"})");
    plugin.host().RunUntilIdle();
    EXPECT_EQ(plugin.records().events.size(), 0u);
    EXPECT_EQ(Listed(), Lines{});
}

}  // namespace
}  // namespace tav::test
