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

TEST(LeagueFetch, NeedsTheLeagueServiceAndOnlyTheOwnPositionsSayWhenItIsOff) {
    tav::test::HostedModule<LeaguesModule> hosted;
    ASSERT_TRUE(hosted.Start());
    hosted.host().ClearRecords();
    LeagueQueries& queries = hosted.module().Queries();
    const auto positions = queries.LoadSummonerLeaguesData();
    ASSERT_TRUE(positions.HasFailure());
    EXPECT_EQ(positions.GetFailure().Code(), 0);
    EXPECT_EQ(positions.GetFailure().Message(),
              "LoadSummonerLeaguesData called while League service is not available.");
    const auto league = queries.GetLeague("getChallengerLeague", Api::LeagueQueueType::SOLO5V5, {"RANKED_SOLO_5x5"}, 0);
    ASSERT_TRUE(league.HasFailure());
    EXPECT_EQ(league.GetFailure().ToString(), "GetLeague called while League service is not available.");
    EXPECT_EQ(tav::test::WarningAndErrorLines(hosted.records()),
              Lines{"  WARN| DBG| LoadSummonerLeaguesData called while League service is not available."});
    EXPECT_EQ(tav::test::ServerCalls(hosted.records()), Lines{});
}

}  // namespace
}  // namespace Orvel::Client::Leagues
