// The league query routes of the built library, answered by a simulated game
// server, compared whole: answers, failures, server calls and log lines. The
// apex lists are left to the scenario replays and the league unit tests.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "league_plugin_fixture.h"

namespace tav::test {
namespace {

using host::ScriptedAnswer;
using LeagueQueries = LeaguePluginTest;

// A failed server call through the invoke endpoint, as a failure prints in
// messages: with its code and fields, a JSON object.
std::string InvokeFailure(const std::string& error) {
    return R"({"message":"Error response for POST /tav-login/v1/session/invoke: )" + error +
           R"(","errorCode_int":500,"method":"POST","url":"/tav-login/v1/session/invoke","error":")" + error + R"("})";
}

TEST_F(LeagueQueries, ATeamHasItsMembersWithTheirStatisticsAndAFailedFetchAnswers500) {
    plugin.ScriptServer("summonerTeamService", "findTeamById", "com.orvelsoft.team.dto.TeamDTO",
                        R"({"teamId":{"fullId":"TEAM-1"},"name":"Blue","roster":{"memberList":[)"
                        R"({"playerId":1,"playerName":"Ann"},{"playerId":2,"playerName":"Bob"},)"
                        R"({"playerId":1,"playerName":"Ann again"}]}})");
    plugin.ScriptServer("playerStatsService", "getTeamAggregatedStats", "",
                        R"([{"playerAggregatedStatsList":[{"playerId":2,"aggregatedStats":{"lifetimeStatistics":[)"
                        R"({"statType":"TOTAL_SESSIONS_PLAYED","value":4,"championId":0},)"
                        R"({"statType":"TOTAL_SESSIONS_WON","value":3,"championId":0}]}}]}])");
    EXPECT_EQ(plugin.Get("/tav-leagues/v1/teams/TEAM-1").json,
              R"({"id":"TEAM-1","members":[{"id":1,"name":"Ann","totalGamePlayed":0,"winRate":0.0},)"
              R"({"id":2,"name":"Bob","totalGamePlayed":4,"winRate":75.0}],"name":"Blue"})");
    EXPECT_EQ(plugin.ServerCalls(), (Lines{R"(summonerTeamService.findTeamById ["TEAM-1"])",
                                           R"(playerStatsService.getTeamAggregatedStats ["TEAM-1"])"}));

    // A failed team fetch asks for no statistics.
    plugin.host().ClearRecords();
    plugin.FailServer("summonerTeamService", "findTeamById", "no such team");
    ExpectFailure(plugin.Get("/tav-leagues/v1/teams/TEAM-9"), 500,
                  "Error requesting team for team id: TEAM-9, error: " + InvokeFailure("no such team"));
    EXPECT_EQ(plugin.WarningAndErrorLines(),
              Lines{" ERROR| DBG| Failed to get Team: " + InvokeFailure("no such team")});
    EXPECT_EQ(plugin.ServerCalls(), Lines{R"(summonerTeamService.findTeamById ["TEAM-9"])"});
}

TEST_F(LeagueQueries, TopChampionsFailWithTheStatisticsLoggedOrTheSummonerLookupUnlogged) {
    plugin.host().Answer(HostMethodGet, "/tav-summoner/v1/summoners/43",
                         ScriptedAnswer::Json(R"({"summonerId":43,"accountId":4343})"));
    // A failed summoner lookup is not logged; failed statistics are.
    plugin.FailServer("playerStatsService", "getAggregatedStats", "busy");
    ExpectFailure(plugin.Get("/tav-leagues/v1/summoner-top-champs/43"), 500,
                  "Failed to get top champions for summoner: 4343, error: " + InvokeFailure("busy"));
    EXPECT_EQ(plugin.WarningAndErrorLines(),
              Lines{" ERROR| DBG| Failed to get top champions for summoner: 4343, " + InvokeFailure("busy")});
    plugin.host().ClearRecords();
    plugin.host().Answer(HostMethodGet, "/tav-summoner/v1/summoners/43", ScriptedAnswer::Failure(404, "Not found"));
    ExpectFailure(plugin.Get("/tav-leagues/v1/summoner-top-champs/43"), 500,
                  "Error requesting summoner account id for 43: "
                  R"({"message":"Error response for GET /tav-summoner/v1/summoners/43: Not found",)"
                  R"("errorCode_int":404,"method":"GET","url":"/tav-summoner/v1/summoners/43","error":"Not found"})");
    EXPECT_EQ(plugin.ServerCalls(), Lines{});
    EXPECT_EQ(plugin.WarningAndErrorLines(), Lines{});
}

TEST_F(LeagueQueries, TiersSendTheIdAndQueueListTextsGroupTheAnswerAndFailWithTheServersOrTheIdsText) {
    plugin.SetLeagueService(false);  // tiers do not need it
    plugin.ScriptServer("leagues", "getTiersForParticipants", "",
                        R"([{"playerOrTeamId":"1","queueType":"RANKED_SOLO_5x5","tier":"GOLD","rank":"II"},)"
                        R"({"playerOrTeamId":"2","queueType":"RANKED_FLEX_TT","tier":"MASTER","rank":"I"},)"
                        R"({"playerOrTeamId":"1","queueType":"RANKED_FLEX_TT","tier":"SILVER","rank":"V"}])");
    EXPECT_EQ(plugin.Get("/tav-leagues/v2/tiers?summonerIds=[1,2]&queueTypes.0=SOLO5V5&queueTypes.1=FLEXTT").json,
              R"([{"achievedTiers":[{"division":2,"queueType":"SOLO5V5","tier":"GOLD"},)"
              R"({"division":5,"queueType":"FLEXTT","tier":"SILVER"}],"summonerId":1},)"
              R"({"achievedTiers":[{"division":0,"queueType":"FLEXTT","tier":"MASTER"}],"summonerId":2}])");
    EXPECT_EQ(plugin.ServerCalls(),
              Lines{R"(leagues.getTiersForParticipants ["[1,2]","[\"RANKED_SOLO_5x5\",\"RANKED_FLEX_TT\"]"])"});
    // The answer came turns later: the route waited as long.
    EXPECT_EQ(plugin.records().waits.size(), 1u);
    EXPECT_EQ(plugin.records().yields, 1u * StartedLeaguePlugin::kServerTurns);

    plugin.host().ClearRecords();
    plugin.FailServer("leagues", "getTiersForParticipants", "tiers offline");
    ExpectFailure(plugin.Get("/tav-leagues/v2/tiers?summonerIds=[1]&queueTypes.0=SOLO5V5"), 500, "tiers offline");
    EXPECT_EQ(plugin.WarningAndErrorLines(), Lines{" ERROR| DBG| tiers offline"});
    // An id that is no number fails without a log line.
    plugin.host().ClearRecords();
    plugin.ScriptServer("leagues", "getTiersForParticipants", "", R"([{"playerOrTeamId":"team-1"}])");
    ExpectFailure(plugin.Get("/tav-leagues/v2/tiers?summonerIds=[1]&queueTypes.0=SOLO5V5"), 500,
                  "invalid stoull argument");
    EXPECT_EQ(plugin.WarningAndErrorLines(), Lines{});
}

}  // namespace
}  // namespace tav::test
