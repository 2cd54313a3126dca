// The fetches that the routes and the notifications share, with the module
// started by a simulated host whose server answers a few turns later.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "leagues/leagues_module.h"
#include "support/host_record_lines.h"
#include "support/hosted_module.h"

namespace Orvel::Client::Leagues {
namespace {

using Lines = std::vector<std::string>;
using tav::host::ServerAnswer;

class LeagueFetchTest : public ::testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(hosted.Start());
        hosted.host().ClearRecords();
    }
    LeaguesModule& module() { return hosted.module(); }
    void SetLeagueService(bool enabled) {
        wex::BindingProperty value;
        value.SetBool(enabled);
        module().OnLeagueServiceEnabled(wex::PluginResourceEventType::Update, value);
    }
    Lines LogLines() const { return tav::test::WarningAndErrorLines(hosted.records()); }

    tav::test::HostedModule<LeaguesModule> hosted;
};

TEST_F(LeagueFetchTest, MyLeaguePositionsNeedTheLeagueServiceAndSayWhenItIsOff) {
    const auto answer = module().LoadSummonerLeaguesData();
    ASSERT_TRUE(answer.HasFailure());
    EXPECT_EQ(answer.GetFailure().Code(), 0);
    EXPECT_EQ(answer.GetFailure().Message(), "LoadSummonerLeaguesData called while League service is not available.");
    EXPECT_EQ(LogLines(), Lines{"  WARN| DBG| LoadSummonerLeaguesData called while League service is not available."});
    EXPECT_EQ(tav::test::ServerCalls(hosted.records()), Lines{});
}

TEST_F(LeagueFetchTest, MyLeaguePositionsAreTheServersEntries) {
    SetLeagueService(true);
    hosted.host().ScriptServer(
        "leagues", "getMyLeaguePositions",
        ServerAnswer::Json("com.orvelsoft.platform.leagues.client.dto.SummonerLeagueItemsDTO",
                           R"({"summonerLeagues":[{"playerOrTeamId":"42","leaguePoints":17,"tier":"GOLD"}]})", 3));
    const auto answer = module().LoadSummonerLeaguesData();
    ASSERT_FALSE(answer.HasFailure()) << answer.GetFailure().ToString();
    ASSERT_EQ(answer.Value().summonerLeagues.size(), 1u);
    EXPECT_EQ(answer.Value().summonerLeagues[0].playerOrTeamId, "42");
    EXPECT_EQ(answer.Value().summonerLeagues[0].leaguePoints, 17);
    EXPECT_EQ(answer.Value().summonerLeagues[0].tier, LCDS::LeagueTier::GOLD);
    EXPECT_EQ(tav::test::ServerCalls(hosted.records()), Lines{"leagues.getMyLeaguePositions []"});
    EXPECT_EQ(hosted.records().yields, 3u);
    EXPECT_EQ(LogLines(), Lines{});
}

TEST_F(LeagueFetchTest, AFailedPositionsFetchIsLoggedAndPassedOnUnchanged) {
    SetLeagueService(true);
    hosted.host().ScriptServer("leagues", "getMyLeaguePositions", ServerAnswer::Failure("positions offline", 500, 2));
    const auto answer = module().LoadSummonerLeaguesData();
    ASSERT_TRUE(answer.HasFailure());
    EXPECT_EQ(answer.GetFailure().ToString(), "positions offline");
    EXPECT_EQ(LogLines(), Lines{" ERROR| DBG| Failed to get my leagues: positions offline"});
}

TEST_F(LeagueFetchTest, GetLeagueFailsQuietlyWithoutTheLeagueService) {
    const auto answer =
        module().GetLeague("getChallengerLeague", Api::LeagueQueueType::SOLO5V5, {"RANKED_SOLO_5x5"}, 0);
    ASSERT_TRUE(answer.HasFailure());
    EXPECT_EQ(answer.GetFailure().ToString(), "GetLeague called while League service is not available.");
    EXPECT_EQ(LogLines(), Lines{});
    EXPECT_EQ(tav::test::ServerCalls(hosted.records()), Lines{});
}

TEST_F(LeagueFetchTest, ApexLeaguesOfAQueueAreAppendedOnlyWhenBothCouldBeFetched) {
    SetLeagueService(true);
    hosted.host().ScriptServer("leagues", "getChallengerLeague",
                               ServerAnswer::Json("com.orvelsoft.leagues.pojo.LeagueListDTO",
                                                  R"({"tier":"CHALLENGER","queue":"RANKED_FLEX_SR"})", 2));
    hosted.host().ScriptServer("leagues", "getMasterLeagueTopX", ServerAnswer::Failure("too many", 500, 2));
    Api::ApexLeagues apex;
    module().GetApexLeagues(Api::LeagueQueueType::FLEXSR, apex);
    EXPECT_TRUE(apex.challengers.empty());
    EXPECT_TRUE(apex.masters.empty());
    EXPECT_EQ(LogLines(), Lines{" ERROR| DBG| Failed to get leagues RANKED_FLEX_SR, apigetMasterLeagueTopX: too many"});
}

}  // namespace
}  // namespace Orvel::Client::Leagues
