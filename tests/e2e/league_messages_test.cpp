// League messages pushed by the simulated game server to the built library:
// the notifications they file, what is published, called and logged for
// them, and their acknowledgement.
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "league_plugin_fixture.h"

namespace tav::test {
namespace {

class LeagueMessagesTest : public LeaguePluginTest {};

const std::string kPromoted = "LEAGUES_MESSAGE_LEAGUE_PROMOTED LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE 0 ALERT";
const std::string kReset = "LEAGUES_MESSAGE_LEAGUE_RESET LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE 0 ALERT";

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

TEST_F(LeagueMessagesTest, AMessageArrivingWhileARouteWaitsForTheServerIsFiledAndTheRouteAnswers) {
    // The first host turn of the route's wait for the server delivers the message.
    bool pushed = false;
    plugin.host().SetTurnHook([this, &pushed] {
        if (!std::exchange(pushed, true)) {
            plugin.host().PushServerMessage(kSimpleDialogMessage,
                                            MessageJson("m1", {Param("LEAGUE_RESET")}, "leagues"));
        }
    });
    const host::EndpointAnswer answer = plugin.Get("/tav-leagues/v1/summoner-leagues/42");
    plugin.host().SetTurnHook(nullptr);
    ASSERT_TRUE(pushed);
    EXPECT_FALSE(answer.failed) << answer.error;
    EXPECT_EQ(answer.json, "[]");
    EXPECT_EQ(PublishedLists(), (Lines{"Update: 0 " + kReset}));
    EXPECT_EQ(Listed(), (Lines{"0 " + kReset}));
    EXPECT_EQ(plugin.ServerCalls(), (Lines{"leagues.getAllMyLeagues []"}));
}

TEST_F(LeagueMessagesTest, FailedReloadsAreLoggedAndPublishOnlyAfterThePositions) {
    plugin.FailServer("leagues", "getMyLeaguePositions", "timed out");
    Push("m1", {Param("LEAGUE_PROMOTED")});
    EXPECT_EQ(plugin.ServerCalls(), (Lines{"leagues.getMyLeaguePositions []"}));
    EXPECT_EQ(plugin.records().events.size(), 0u);
    EXPECT_EQ(plugin.WarningAndErrorLines(),
              (Lines{" ERROR| DBG| Failed to get my league positions and progress: timed out"}));
    EXPECT_EQ(Listed(), (Lines{"0 " + kPromoted}));

    ScriptPositions(R"({"summonerLeagues":[]})");
    plugin.FailServer("leagues", "getAllMyLeagues", "timed out");
    plugin.host().ClearRecords();
    Push("m2", {Param("LEAGUE_PROMOTED")});
    EXPECT_EQ(plugin.ServerCalls(), (Lines{"leagues.getMyLeaguePositions []", "leagues.getAllMyLeagues []"}));
    EXPECT_EQ(ResourceEvents(plugin.records(), "/tav-leagues/v1/summoner-leagues/42"), Lines{});
    EXPECT_EQ(PublishedLists(), (Lines{"Update: 0 " + kPromoted + " | 1 " + kPromoted}));
    EXPECT_EQ(plugin.WarningAndErrorLines(),
              (Lines{" ERROR| DBG| Failed to get leagues: timed out",
                     " ERROR| DBG| Failed to get leagues for summoner: Error requesting league for summoner id: 42, "
                     "error: timed out"}));
}

TEST_F(LeagueMessagesTest, AFailedServerAcknowledgementRefusesAndLeavesTheNotification) {
    Push("m7", {Param("LEAGUE_RESET")});
    plugin.FailServer("clientFacadeService", "callPersistenceMessaging", "no such message");
    plugin.host().ClearRecords();
    ExpectFailure(plugin.host().CallEndpoint(HostMethodPost, "/tav-leagues/v2/notifications/0/acknowledge"), 403,
                  "Unable to delete notification with id 0. Either notification is acknowledged or it is not an "
                  "acknowledgeable notification");
    EXPECT_EQ(plugin.WarningAndErrorLines(),
              (Lines{" ERROR| DBG| Failed to acknowledge leagues notification 'm7': 500 - Error response for POST "
                     "/tav-login/v1/session/invoke: no such message"}));
    EXPECT_EQ(Listed(), (Lines{"0 " + kReset}));
}

}  // namespace
}  // namespace tav::test
