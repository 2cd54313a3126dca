// The league query routes of the built library, answered by a simulated game
// server, compared whole: answers, failures, server calls and log lines.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "codec/json_writer.h"
#include "league_json.h"
#include "support/started_league_plugin.h"

namespace tav::test {
namespace {

using host::EndpointAnswer;
using host::ScriptedAnswer;
using host::ServerAnswer;
using Lines = std::vector<std::string>;

constexpr long long kNextApexUpdate = 1700000000000;

class LeagueQueriesTest : public ::testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(plugin.started()) << plugin.error();
        plugin.LogIn(42, 4242);
        plugin.SetLeagueService(true);
        plugin.host().ClearRecords();
    }

    // The apex leagues of every queue: one challenger over one place and two
    // masters; "getMasterLeagueTopX" fails for failingMasterQueue.
    void ScriptApexLeagues(const std::string& failingMasterQueue = "") {
        plugin.host().SetServerResponder([failingMasterQueue](std::string_view destination, std::string_view method,
                                                              const wex::BindingProperty& arguments) {
            const std::string queue = arguments.Size() > 0 ? std::string(arguments.At(0).AsString()) : "";
            if (destination == "leagues" && method == "getChallengerLeague") {
                return ServerAnswer::Json(
                    kLeagueListClass,
                    ListJson("Apex Kings", "CHALLENGER", queue, {{"5", "Cat", 450, 30, 10}}, 1, kNextApexUpdate),
                    StartedLeaguePlugin::kServerTurns);
            }
            if (destination == "leagues" && method == "getMasterLeagueTopX" && queue != failingMasterQueue) {
                return ServerAnswer::Json(
                    kLeagueListClass,
                    ListJson("Iron Wall 2", "MASTER", queue, {{"8", "Dan", 400, 20, 10}, {"7", "Bob", 500, 25, 5}}),
                    StartedLeaguePlugin::kServerTurns);
            }
            return ServerAnswer::Failure("Service unavailable", 503, StartedLeaguePlugin::kServerTurns);
        });
    }

    static std::string ApexPair(const std::string& queue) {
        return LeagueJson("ApexKings", "CHALLENGER", queue, "NA",
                          {{.id = "5",
                            .name = "Cat",
                            .position = 1,
                            .points = 450,
                            .wins = 30,
                            .losses = 10,
                            .pendingDemotion = true}},
                          "NA", kNextApexUpdate);
    }
    static std::string MasterOf(const std::string& queue) {
        return LeagueJson("IronWall", "MASTER", queue, "NA",
                          {{.id = "7",
                            .name = "Bob",
                            .position = 2,
                            .points = 500,
                            .wins = 25,
                            .losses = 5,
                            .pendingPromotion = true},
                           {.id = "8", .name = "Dan", .position = 3, .points = 400, .wins = 20, .losses = 10}});
    }

    StartedLeaguePlugin plugin;
};

// A failed server call through the invoke endpoint, as a failure prints in
// messages: with its code and fields, a JSON object.
std::string InvokeFailure(const std::string& error) {
    return R"({"message":"Error response for POST /tav-login/v1/session/invoke: )" + error +
           R"(","errorCode_int":500,"method":"POST","url":"/tav-login/v1/session/invoke","error":")" + error + R"("})";
}

void ExpectFailure(const EndpointAnswer& answer, std::uint32_t status, const std::string& error) {
    EXPECT_EQ(answer.status, status);
    EXPECT_TRUE(answer.failed);
    EXPECT_EQ(answer.error, error);
    EXPECT_EQ(answer.json, "");
}

// ---- The route table ------------------------------------------------------------

// "method template argument:location ...", for the league routes in table order.
Lines LeagueRoutes(const HostApiTable& table) {
    Lines routes;
    for (const HostEndpointRecord* endpoint = table.endpoints; endpoint != nullptr; endpoint = endpoint->next) {
        const char* const pathTemplate = endpoint->pathTemplate;
        if (pathTemplate == nullptr || std::string_view(pathTemplate).rfind("/tav-leagues/", 0) != 0) {
            continue;
        }
        const std::uint32_t method = endpoint->method;
        std::string route = std::to_string(method) + " " + pathTemplate;
        const HostLocationRecord* location = endpoint->locations;
        for (const HostArgumentRecord* argument = endpoint->arguments; argument != nullptr; argument = argument->next) {
            const std::uint32_t where = location != nullptr ? location->location : 0;
            route += std::string(" ") + argument->name + ":" + std::to_string(where);
            location = location != nullptr ? location->next : nullptr;
        }
        routes.push_back(route);
    }
    return routes;
}

TEST_F(LeagueQueriesTest, TheEightRoutesStandInTheirOrderWithTheirArgumentsAndLocations) {
    const HostApiTable* const table = plugin.apiTable();
    ASSERT_NE(table, nullptr);
    EXPECT_EQ(LeagueRoutes(*table), (Lines{
                                        "2 /tav-leagues/v1/summoner-leagues/{summonerId} summonerId:2",
                                        "2 /tav-leagues/v1/challenger-leagues",
                                        "2 /tav-leagues/v1/teams/{id} id:2",
                                        "2 /tav-leagues/v1/summoner-top-champs/{summonerId} summonerId:2",
                                        "2 /tav-leagues/v2/notifications",
                                        "2 /tav-leagues/v2/summoner-leagues/current-summoner/signed-leagues",
                                        "6 /tav-leagues/v2/notifications/{id}/acknowledge id:2",
                                        "2 /tav-leagues/v2/tiers summonerIds:1 queueTypes:1",
                                    }));
}

// ---- The league service switch ----------------------------------------------

TEST_F(LeagueQueriesTest, WithoutTheLeagueServiceTheLeagueRoutesFailWhileTeamsStillWork) {
    plugin.ScriptServer("summonerTeamService", "findTeamById", "com.orvelsoft.team.dto.TeamDTO",
                        R"({"teamId":{"fullId":"x"},"name":"Blue","roster":{"memberList":[]}})");
    plugin.ScriptServer("playerStatsService", "getTeamAggregatedStats", "", "[]");
    struct Row {
        const char* name;
        void (*setSwitch)(StartedLeaguePlugin&);
    };
    const Row rows[] = {
        {"switched off", [](StartedLeaguePlugin& p) { p.SetLeagueService(false); }},
        {"switch deleted",
         [](StartedLeaguePlugin& p) { p.DeleteResource(StartedLeaguePlugin::kLeagueServiceEnabled); }},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        plugin.SetLeagueService(true);
        row.setSwitch(plugin);
        plugin.host().ClearRecords();
        ExpectFailure(plugin.Get("/tav-leagues/v1/summoner-leagues/1"), 500, "League service not available.");
        ExpectFailure(plugin.Get("/tav-leagues/v1/challenger-leagues"), 500, "League service not available.");
        const EndpointAnswer team = plugin.Get("/tav-leagues/v1/teams/x");
        EXPECT_EQ(team.json, R"({"id":"x","members":[],"name":"Blue"})");
        EXPECT_EQ(plugin.ServerCalls(), (Lines{R"(summonerTeamService.findTeamById ["x"])",
                                               R"(playerStatsService.getTeamAggregatedStats ["x"])"}));
        EXPECT_EQ(plugin.WarningAndErrorLines(), Lines{});
    }
}

// ---- Summoner leagues --------------------------------------------------------

TEST_F(LeagueQueriesTest, OwnLeaguesComeFromGetAllMyLeaguesAndAnothersFromGetAllLeaguesForPlayer) {
    const std::string answer = R"({"summonerLeagues":[)" +
                               ListJson("Gold's Knights 3", "GOLD", "RANKED_SOLO_5x5",
                                        {{"42", "Ann", 75, 10, 5, "II", 2, false, "WLN"},
                                         {"7", "Bob", 80, 12, 3, "II"},
                                         {"9", "Cid", 10, 1, 9, "I", 0, true}},
                                        0, 0, "II") +
                               "]}";
    plugin.ScriptServer("leagues", "getAllMyLeagues", kSummonerLeaguesClass, answer);
    plugin.ScriptServer("leagues", "getAllLeaguesForPlayer", kSummonerLeaguesClass, answer);

    const std::string expected =
        "[" +
        LeagueJson("GoldsKnights", "GOLD", "SOLO5V5", "II",
                   {{.id = "42",
                     .name = "Ann",
                     .position = 1,
                     .points = 75,
                     .wins = 10,
                     .losses = 5,
                     .previousPosition = 2,
                     .positionDelta = 1,
                     .miniseries = R"(["W","L","N"])"},
                    {.id = "7", .name = "Bob", .position = 2, .points = 80, .wins = 12, .losses = 3}},
                   "II") +
        "]";
    EXPECT_EQ(plugin.Get("/tav-leagues/v1/summoner-leagues/42").json, expected);
    EXPECT_EQ(plugin.Get("/tav-leagues/v1/summoner-leagues/43").json, expected);
    EXPECT_EQ(plugin.ServerCalls(), (Lines{"leagues.getAllMyLeagues []", "leagues.getAllLeaguesForPlayer [43]"}));
}

TEST_F(LeagueQueriesTest, AMasterPlayersLeagueIsSetAgainstTheChallengersAndNumberedFromOne) {
    ScriptApexLeagues();
    plugin.ScriptServer(
        "leagues", "getAllMyLeagues", kSummonerLeaguesClass,
        R"({"summonerLeagues":[)" +
            ListJson("Zed's Warriors", "MASTER", "RANKED_SOLO_5x5",
                     {{"7", "Bob", 500, 25, 5}, {"42", "Ann", 300, 15, 10, "I", 1}, {"8", "Dan", 400, 20, 10}}, 0, 0,
                     "I") +
            "," + ListJson("Gold Gang", "GOLD", "RANKED_FLEX_SR", {{"42", "Ann", 60, 8, 8, "III"}}, 0, 0, "III") +
            "]}");

    const EndpointAnswer answer = plugin.Get("/tav-leagues/v1/summoner-leagues/42");
    EXPECT_EQ(
        answer.json,
        "[" +
            LeagueJson("ZedsWarriors", "MASTER", "SOLO5V5", "NA",
                       {{.id = "7",
                         .name = "Bob",
                         .position = 1,
                         .points = 500,
                         .wins = 25,
                         .losses = 5,
                         .pendingPromotion = true},
                        {.id = "8", .name = "Dan", .position = 2, .points = 400, .wins = 20, .losses = 10},
                        {.id = "42",
                         .name = "Ann",
                         .position = 3,
                         .points = 300,
                         .wins = 15,
                         .losses = 10,
                         .previousPosition = 1,
                         .positionDelta = -2}},
                       "NA", kNextApexUpdate) +
            "," +
            LeagueJson("GoldGang", "GOLD", "FLEXSR", "III",
                       {{.id = "42", .name = "Ann", .position = 1, .points = 60, .wins = 8, .losses = 8}}, "III") +
            "]");
    EXPECT_EQ(plugin.ServerCalls(),
              (Lines{"leagues.getAllMyLeagues []", R"(leagues.getChallengerLeague ["RANKED_SOLO_5x5"])",
                     R"(leagues.getMasterLeagueTopX ["RANKED_SOLO_5x5","200"])"}));
}

TEST_F(LeagueQueriesTest, AChallengerPlayersLeagueMarksWhoWouldDropToTheMasters) {
    ScriptApexLeagues();
    plugin.ScriptServer("leagues", "getAllLeaguesForPlayer", kSummonerLeaguesClass,
                        R"({"summonerLeagues":[)" +
                            ListJson("Apex Kings", "CHALLENGER", "RANKED_FLEX_TT", {{"5", "Cat", 450, 30, 10}}, 1,
                                     kNextApexUpdate + 5, "IV") +
                            "]}");
    EXPECT_EQ(plugin.Get("/tav-leagues/v1/summoner-leagues/5").json,
              "[" +
                  LeagueJson("ApexKings", "CHALLENGER", "FLEXTT", "NA",
                             {{.id = "5",
                               .name = "Cat",
                               .position = 1,
                               .points = 450,
                               .wins = 30,
                               .losses = 10,
                               .pendingDemotion = true}},
                             "NA", kNextApexUpdate) +
                  "]");
}

TEST_F(LeagueQueriesTest, AFailedLeagueFetchAnswers500AndLogsTheFailure) {
    plugin.FailServer("leagues", "getAllLeaguesForPlayer", "timed out");
    ExpectFailure(plugin.Get("/tav-leagues/v1/summoner-leagues/43"), 500,
                  "Error requesting league for summoner id: 43, error: timed out");
    EXPECT_EQ(plugin.WarningAndErrorLines(), Lines{" ERROR| DBG| Failed to get leagues: timed out"});
}

// ---- Challenger leagues -------------------------------------------------------

TEST_F(LeagueQueriesTest, ChallengerLeaguesHoldEveryQueueThatCouldBeFetched) {
    ScriptApexLeagues("RANKED_FLEX_TT");
    const EndpointAnswer answer = plugin.Get("/tav-leagues/v1/challenger-leagues");
    EXPECT_EQ(answer.status, 0u);
    EXPECT_EQ(answer.json, R"({"challengers":[)" + ApexPair("SOLO5V5") + "," + ApexPair("FLEXSR") + R"(],"masters":[)" +
                               MasterOf("SOLO5V5") + "," + MasterOf("FLEXSR") + "]}");
    EXPECT_EQ(plugin.ServerCalls(), (Lines{
                                        R"(leagues.getChallengerLeague ["RANKED_SOLO_5x5"])",
                                        R"(leagues.getMasterLeagueTopX ["RANKED_SOLO_5x5","200"])",
                                        R"(leagues.getChallengerLeague ["RANKED_FLEX_TT"])",
                                        R"(leagues.getMasterLeagueTopX ["RANKED_FLEX_TT","200"])",
                                        R"(leagues.getChallengerLeague ["RANKED_FLEX_SR"])",
                                        R"(leagues.getMasterLeagueTopX ["RANKED_FLEX_SR","200"])",
                                    }));
    // Each answer came turns later: one wait per call, each of the same length.
    EXPECT_EQ(plugin.records().waits.size(), 6u);
    EXPECT_EQ(plugin.records().yields, 6u * StartedLeaguePlugin::kServerTurns);
    EXPECT_EQ(plugin.WarningAndErrorLines(),
              Lines{" ERROR| DBG| Failed to get leagues RANKED_FLEX_TT, apigetMasterLeagueTopX: Service unavailable"});
}

TEST_F(LeagueQueriesTest, ChallengerLeaguesAreEmptyWhenNoQueueCanBeFetched) {
    plugin.FailServer("leagues", "getChallengerLeague", "down");
    plugin.FailServer("leagues", "getMasterLeagueTopX", "down");
    EXPECT_EQ(plugin.Get("/tav-leagues/v1/challenger-leagues").json, R"({"challengers":[],"masters":[]})");
    EXPECT_EQ(plugin.WarningAndErrorLines().size(), 6u);
}

// ---- Teams --------------------------------------------------------------------

class TeamQueryTest : public LeagueQueriesTest {
  protected:
    void SetUp() override {
        LeagueQueriesTest::SetUp();
        plugin.ScriptServer("summonerTeamService", "findTeamById", "com.orvelsoft.team.dto.TeamDTO",
                            R"({"teamId":{"fullId":"TEAM-1"},"name":"Blue","roster":{"memberList":[)"
                            R"({"playerId":1,"playerName":"Ann"},{"playerId":2,"playerName":"Bob"},)"
                            R"({"playerId":1,"playerName":"Ann again"}]}})");
    }
};

TEST_F(TeamQueryTest, ATeamHasItsMembersInRosterOrderWithTheirStatistics) {
    plugin.ScriptServer("playerStatsService", "getTeamAggregatedStats", "",
                        R"([{"playerAggregatedStatsList":[{"playerId":2,"aggregatedStats":{"lifetimeStatistics":[)"
                        R"({"statType":"TOTAL_SESSIONS_PLAYED","value":4,"championId":0},)"
                        R"({"statType":"TOTAL_SESSIONS_WON","value":3,"championId":0}]}}]}])");
    EXPECT_EQ(plugin.Get("/tav-leagues/v1/teams/TEAM-1").json,
              R"({"id":"TEAM-1","members":[{"id":1,"name":"Ann","totalGamePlayed":0,"winRate":0.0},)"
              R"({"id":2,"name":"Bob","totalGamePlayed":4,"winRate":75.0}],"name":"Blue"})");
    EXPECT_EQ(plugin.ServerCalls(), (Lines{R"(summonerTeamService.findTeamById ["TEAM-1"])",
                                           R"(playerStatsService.getTeamAggregatedStats ["TEAM-1"])"}));
}

TEST_F(TeamQueryTest, ATeamWithoutStatisticsIsStillAnswered) {
    plugin.FailServer("playerStatsService", "getTeamAggregatedStats", "stats offline");
    EXPECT_EQ(plugin.Get("/tav-leagues/v1/teams/TEAM-1").json,
              R"({"id":"TEAM-1","members":[{"id":1,"name":"Ann","totalGamePlayed":0,"winRate":0.0},)"
              R"({"id":2,"name":"Bob","totalGamePlayed":0,"winRate":0.0}],"name":"Blue"})");
    EXPECT_EQ(plugin.WarningAndErrorLines(),
              Lines{" ERROR| DBG| Failed to get Team Static: " + InvokeFailure("stats offline")});
}

TEST_F(TeamQueryTest, AFailedTeamFetchAnswers500AndAsksForNoStatistics) {
    plugin.FailServer("summonerTeamService", "findTeamById", "no such team");
    ExpectFailure(plugin.Get("/tav-leagues/v1/teams/TEAM-9"), 500,
                  "Error requesting team for team id: TEAM-9, error: " + InvokeFailure("no such team"));
    EXPECT_EQ(plugin.WarningAndErrorLines(),
              Lines{" ERROR| DBG| Failed to get Team: " + InvokeFailure("no such team")});
    EXPECT_EQ(plugin.ServerCalls(), Lines{R"(summonerTeamService.findTeamById ["TEAM-9"])"});
}

// ---- Top champions ------------------------------------------------------------

TEST_F(LeagueQueriesTest, TopChampionsComeFromTheSummonersAccountStatistics) {
    plugin.host().Answer(HostMethodGet, "/tav-summoner/v1/summoners/43",
                         ScriptedAnswer::Json(R"({"summonerId":43,"accountId":4343})"));
    plugin.ScriptServer("playerStatsService", "getAggregatedStats", "com.orvelsoft.platform.statistics.AggregatedStats",
                        R"({"lifetimeStatistics":[{"statType":"TOTAL_SESSIONS_PLAYED","value":10,"championId":1},)"
                        R"({"statType":"TOTAL_SESSIONS_WON","value":5,"championId":1},)"
                        R"({"statType":"TOTAL_SESSIONS_PLAYED","value":30,"championId":0},)"
                        R"({"statType":"TOTAL_SESSIONS_PLAYED","value":20,"championId":2},)"
                        R"({"statType":"TOTAL_SESSIONS_WON","value":15,"championId":2}]})");
    EXPECT_EQ(plugin.Get("/tav-leagues/v1/summoner-top-champs/43").json,
              R"([{"championId":2,"totalGamePlayed":20,"winRate":75.0},)"
              R"({"championId":1,"totalGamePlayed":10,"winRate":50.0}])");
    EXPECT_EQ(plugin.ServerCalls(), Lines{R"(playerStatsService.getAggregatedStats [4343,"CLASSIC"])"});
}

TEST_F(LeagueQueriesTest, TopChampionsFailWithTheSummonerLookupAndLogNothing) {
    plugin.host().Answer(HostMethodGet, "/tav-summoner/v1/summoners/43", ScriptedAnswer::Failure(404, "Not found"));
    ExpectFailure(plugin.Get("/tav-leagues/v1/summoner-top-champs/43"), 500,
                  "Error requesting summoner account id for 43: "
                  R"({"message":"Error response for GET /tav-summoner/v1/summoners/43: Not found",)"
                  R"("errorCode_int":404,"method":"GET","url":"/tav-summoner/v1/summoners/43","error":"Not found"})");
    EXPECT_EQ(plugin.ServerCalls(), Lines{});
    EXPECT_EQ(plugin.WarningAndErrorLines(), Lines{});
}

TEST_F(LeagueQueriesTest, TopChampionsFailWithTheStatisticsAndLogIt) {
    plugin.host().Answer(HostMethodGet, "/tav-summoner/v1/summoners/43",
                         ScriptedAnswer::Json(R"({"summonerId":43,"accountId":4343})"));
    plugin.FailServer("playerStatsService", "getAggregatedStats", "busy");
    const std::string failure = InvokeFailure("busy");
    ExpectFailure(plugin.Get("/tav-leagues/v1/summoner-top-champs/43"), 500,
                  "Failed to get top champions for summoner: 4343, error: " + failure);
    EXPECT_EQ(plugin.WarningAndErrorLines(),
              Lines{" ERROR| DBG| Failed to get top champions for summoner: 4343, " + failure});
}

// ---- Tiers --------------------------------------------------------------------

TEST_F(LeagueQueriesTest, TiersSendTheIdAndQueueListTextsAndGroupTheAnswerByParticipant) {
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
}

TEST_F(LeagueQueriesTest, TiersDoNotNeedTheLeagueService) {
    plugin.SetLeagueService(false);
    plugin.ScriptServer("leagues", "getTiersForParticipants", "", "[]");
    EXPECT_EQ(plugin.Get("/tav-leagues/v2/tiers?summonerIds=[]&queueTypes=[]").json, "[]");
    EXPECT_EQ(plugin.ServerCalls(), Lines{R"(leagues.getTiersForParticipants ["[]","[]"])"});
}

TEST_F(LeagueQueriesTest, TiersFailWithTheServersTextOrABadId) {
    struct Row {
        const char* name;
        ServerAnswer server;
        const char* error;
        Lines log;
    };
    const Row rows[] = {
        {"server failure",
         ServerAnswer::Failure("tiers offline", 500, StartedLeaguePlugin::kServerTurns),
         "tiers offline",
         {" ERROR| DBG| tiers offline"}},
        {"id not a number",
         ServerAnswer::Json("", R"([{"playerOrTeamId":"team-1"}])", 2),
         "invalid stoull argument",
         {}},
        {"id too large",
         ServerAnswer::Json("", R"([{"playerOrTeamId":"18446744073709551616"}])", 2),
         "stoull argument out of range",
         {}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        plugin.host().ClearRecords();
        plugin.host().ScriptServer("leagues", "getTiersForParticipants", row.server);
        ExpectFailure(plugin.Get("/tav-leagues/v2/tiers?summonerIds=[1]&queueTypes.0=SOLO5V5"), 500, row.error);
        EXPECT_EQ(plugin.WarningAndErrorLines(), row.log);
    }
}

}  // namespace
}  // namespace tav::test
