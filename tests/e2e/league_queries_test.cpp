// The league query routes of the built library, answered by a simulated game
// server, compared whole: answers, failures, server calls and log lines.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "league_plugin_fixture.h"

namespace tav::test {
namespace {

using host::ScriptedAnswer;
using host::ServerAnswer;

constexpr long long kNextApexUpdate = 1700000000000;

// One entry of a server league list.
std::string Item(const std::string& id, const std::string& name, int points, int wins, int losses,
                 int previousPosition = 0) {
    return R"({"__class":"com.orvelsoft.leagues.pojo.LeagueItemDTO","playerOrTeamId":")" + id +
           R"(","playerOrTeamName":")" + name + R"(","leaguePoints":)" + std::to_string(points) + R"(,"wins":)" +
           std::to_string(wins) + R"(,"losses":)" + std::to_string(losses) +
           R"(,"rank":"I","previousDayLeaguePosition":)" + std::to_string(previousPosition) + R"(,"inactive":false})";
}

// A server league list; requestorsRank only where the answer carries one.
std::string ListJson(const std::string& name, const std::string& tier, const std::string& queue,
                     const std::vector<std::string>& items, int maxLeagueSize = 0, long long nextApexUpdate = 0,
                     const std::string& requestorsRank = "") {
    std::string json = R"({"name":")" + name + R"(","tier":")" + tier + R"(","queue":")" + queue +
                       R"(","requestorsName":"Ann","maxLeagueSize":)" + std::to_string(maxLeagueSize) +
                       R"(,"nextApexUpdate":)" + std::to_string(nextApexUpdate);
    if (!requestorsRank.empty()) {
        json += R"(,"requestorsRank":")" + requestorsRank + R"(")";
    }
    json += R"(,"entries":[)";
    for (std::size_t index = 0; index < items.size(); ++index) {
        json += (index != 0 ? "," : "") + items[index];
    }
    return json + "]}";
}

class LeagueQueriesTest : public LeaguePluginTest {
  protected:
    // The apex leagues of every queue: one challenger over one place and two
    // masters; "getMasterLeagueTopX" fails for failingMasterQueue.
    void ScriptApexLeagues(const std::string& failingMasterQueue = "") {
        plugin.host().SetServerResponder([failingMasterQueue](std::string_view destination, std::string_view method,
                                                              const wex::BindingProperty& arguments) {
            const std::string queue = arguments.Size() > 0 ? std::string(arguments.At(0).AsString()) : "";
            const int turns = StartedLeaguePlugin::kServerTurns;
            if (destination == "leagues" && method == "getChallengerLeague") {
                return ServerAnswer::Json(
                    kLeagueListClass,
                    ListJson("Apex Kings", "CHALLENGER", queue, {Item("5", "Cat", 450, 30, 10)}, 1, kNextApexUpdate),
                    turns);
            }
            if (destination == "leagues" && method == "getMasterLeagueTopX" && queue != failingMasterQueue) {
                return ServerAnswer::Json(kLeagueListClass,
                                          ListJson("Iron Wall 2", "MASTER", queue,
                                                   {Item("8", "Dan", 400, 20, 10), Item("7", "Bob", 500, 25, 5)}),
                                          turns);
            }
            return ServerAnswer::Failure("Service unavailable", 503, turns);
        });
    }

    // The answers for the apex leagues above, as the API writes them.
    static std::string Challengers(const std::string& queue) {
        return LeagueJson("ApexKings", "CHALLENGER", queue,
                          R"({"apexDaysUntilDecay":0,"emblems":[],"id":"5","inactive":false,"inactivityStatus":"",)"
                          R"("losses":10,"miniseriesResults":[],"name":"Cat","pendingDemotion":true,)"
                          R"("pendingPromotion":false,"points":450,"position":1,"positionDelta":0,)"
                          R"("previousPosition":0,"wins":30})",
                          kNextApexUpdate);
    }
    static std::string Masters(const std::string& queue) {
        return LeagueJson("IronWall", "MASTER", queue,
                          Bob(2) + R"(,{"apexDaysUntilDecay":0,"emblems":[],"id":"8","inactive":false,)"
                                   R"("inactivityStatus":"","losses":10,"miniseriesResults":[],"name":"Dan",)"
                                   R"("pendingDemotion":false,"pendingPromotion":false,"points":400,"position":3,)"
                                   R"("positionDelta":0,"previousPosition":0,"wins":20})");
    }
    // Bob's standing, who would be promoted, at his place.
    static std::string Bob(int position) {
        return R"({"apexDaysUntilDecay":0,"emblems":[],"id":"7","inactive":false,"inactivityStatus":"","losses":5,)"
               R"("miniseriesResults":[],"name":"Bob","pendingDemotion":false,"pendingPromotion":true,"points":500,)"
               R"("position":)" +
               std::to_string(position) + R"(,"positionDelta":0,"previousPosition":0,"wins":25})";
    }
    // A league of one division holding the standings, as the API writes it.
    static std::string LeagueJson(const std::string& leagueName, const std::string& tier, const std::string& queue,
                                  const std::string& standings, long long nextUpdate = 0) {
        return R"({"challengerNextPromotionUpdateInMs":)" + std::to_string(nextUpdate) + R"(,"leagueName":")" +
               leagueName + R"(","leagueTier":")" + tier + R"(","leagues":[{"leagueRank":"NA","standings":[)" +
               standings + R"(]}],"name":"Ann","queueType":")" + queue + R"(","requesterLeagueRank":"NA"})";
    }
};

// A failed server call through the invoke endpoint, as a failure prints in
// messages: with its code and fields, a JSON object.
std::string InvokeFailure(const std::string& error) {
    return R"({"message":"Error response for POST /tav-login/v1/session/invoke: )" + error +
           R"(","errorCode_int":500,"method":"POST","url":"/tav-login/v1/session/invoke","error":")" + error + R"("})";
}

TEST_F(LeagueQueriesTest, ApexPlayersLeaguesAreSetAgainstTheOtherApexTierAndNumberedFromOne) {
    ScriptApexLeagues();
    plugin.ScriptServer("leagues", "getAllMyLeagues", kSummonerLeaguesClass,
                        R"({"summonerLeagues":[)" +
                            ListJson("Zed's Warriors", "MASTER", "RANKED_SOLO_5x5",
                                     {Item("7", "Bob", 500, 25, 5), Item("42", "Ann", 300, 15, 10, 1)}, 0, 0, "I") +
                            "]}");
    EXPECT_EQ(plugin.Get("/tav-leagues/v1/summoner-leagues/42").json,
              "[" +
                  LeagueJson("ZedsWarriors", "MASTER", "SOLO5V5",
                             Bob(1) + R"(,{"apexDaysUntilDecay":0,"emblems":[],"id":"42","inactive":false,)"
                                      R"("inactivityStatus":"","losses":10,"miniseriesResults":[],"name":"Ann",)"
                                      R"("pendingDemotion":false,"pendingPromotion":false,"points":300,)"
                                      R"("position":2,"positionDelta":-1,"previousPosition":1,"wins":15})",
                             kNextApexUpdate) +
                  "]");
    EXPECT_EQ(plugin.ServerCalls(),
              (Lines{"leagues.getAllMyLeagues []", R"(leagues.getChallengerLeague ["RANKED_SOLO_5x5"])",
                     R"(leagues.getMasterLeagueTopX ["RANKED_SOLO_5x5","200"])"}));
}

TEST_F(LeagueQueriesTest, ChallengerLeaguesHoldEveryQueueThatCouldBeFetched) {
    ScriptApexLeagues("RANKED_FLEX_TT");
    EXPECT_EQ(plugin.Get("/tav-leagues/v1/challenger-leagues").json,
              R"({"challengers":[)" + Challengers("SOLO5V5") + "," + Challengers("FLEXSR") + R"(],"masters":[)" +
                  Masters("SOLO5V5") + "," + Masters("FLEXSR") + "]}");
    EXPECT_EQ(plugin.ServerCalls().size(), 6u);
    // Each answer came turns later: one wait per call, each of the same length.
    EXPECT_EQ(plugin.records().waits.size(), 6u);
    EXPECT_EQ(plugin.records().yields, 6u * StartedLeaguePlugin::kServerTurns);
    EXPECT_EQ(plugin.WarningAndErrorLines(),
              Lines{" ERROR| DBG| Failed to get leagues RANKED_FLEX_TT, apigetMasterLeagueTopX: Service unavailable"});
}

TEST_F(LeagueQueriesTest, ATeamHasItsMembersWithTheirStatisticsAndAFailedFetchAnswers500) {
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

TEST_F(LeagueQueriesTest, TopChampionsComeFromTheSummonersAccountStatistics) {
    plugin.host().Answer(HostMethodGet, "/tav-summoner/v1/summoners/43",
                         ScriptedAnswer::Json(R"({"summonerId":43,"accountId":4343})"));
    plugin.ScriptServer("playerStatsService", "getAggregatedStats", "com.orvelsoft.platform.statistics.AggregatedStats",
                        R"({"lifetimeStatistics":[{"statType":"TOTAL_SESSIONS_PLAYED","value":10,"championId":1},)"
                        R"({"statType":"TOTAL_SESSIONS_WON","value":5,"championId":1}]})");
    EXPECT_EQ(plugin.Get("/tav-leagues/v1/summoner-top-champs/43").json,
              R"([{"championId":1,"totalGamePlayed":10,"winRate":50.0}])");
    EXPECT_EQ(plugin.ServerCalls(), Lines{R"(playerStatsService.getAggregatedStats [4343,"CLASSIC"])"});

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

TEST_F(LeagueQueriesTest, TiersSendTheIdAndQueueListTextsGroupTheAnswerAndFailWithTheServersOrTheIdsText) {
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
