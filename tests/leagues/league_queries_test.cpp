// The shared fetches without the league service: what they answer and log
// there is not visible through the routes, which answer with their own text.
#include "leagues/league_queries.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "module/leagues_module.h"
#include "support/host_record_lines.h"
#include "support/hosted_module.h"

namespace Orvel::Client::Leagues {
namespace {

using Lines = std::vector<std::string>;

class LeagueFetchTest : public ::testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(hosted.Start());
        hosted.host().ClearRecords();
    }
    LeaguesModule& module() { return hosted.module(); }
    Lines LogLines() const { return tav::test::WarningAndErrorLines(hosted.records()); }

    tav::test::HostedModule<LeaguesModule> hosted;
};

TEST_F(LeagueFetchTest, MyLeaguePositionsNeedTheLeagueServiceAndSayWhenItIsOff) {
    const auto answer = module().Queries().LoadSummonerLeaguesData();
    ASSERT_TRUE(answer.HasFailure());
    EXPECT_EQ(answer.GetFailure().Code(), 0);
    EXPECT_EQ(answer.GetFailure().Message(), "LoadSummonerLeaguesData called while League service is not available.");
    EXPECT_EQ(LogLines(), Lines{"  WARN| DBG| LoadSummonerLeaguesData called while League service is not available."});
    EXPECT_EQ(tav::test::ServerCalls(hosted.records()), Lines{});
}

TEST_F(LeagueFetchTest, GetLeagueFailsQuietlyWithoutTheLeagueService) {
    const auto answer =
        module().Queries().GetLeague("getChallengerLeague", Api::LeagueQueueType::SOLO5V5, {"RANKED_SOLO_5x5"}, 0);
    ASSERT_TRUE(answer.HasFailure());
    EXPECT_EQ(answer.GetFailure().ToString(), "GetLeague called while League service is not available.");
    EXPECT_EQ(LogLines(), Lines{});
    EXPECT_EQ(tav::test::ServerCalls(hosted.records()), Lines{});
}

}  // namespace
}  // namespace Orvel::Client::Leagues
