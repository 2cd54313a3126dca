// The resources the built library watches, set and changed on the simulated
// platform, and what the league routes then do.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "league_plugin_fixture.h"

namespace tav::test {
namespace {

using Lines = std::vector<std::string>;

class WatchedResourcesTest : public ::testing::Test {
  protected:
    void SetUp() override {
        plugin.ScriptServer("leagues", "getAllMyLeagues", kSummonerLeaguesClass, R"({"summonerLeagues":[]})");
        plugin.ScriptServer("leagues", "getAllLeaguesForPlayer", kSummonerLeaguesClass, R"({"summonerLeagues":[]})");
    }

    // The server method that asking for a player's leagues calls.
    std::string LeaguesMethodFor(std::uint64_t summonerId) {
        plugin.host().ClearRecords();
        const host::EndpointAnswer answer =
            plugin.Get("/tav-leagues/v1/summoner-leagues/" + std::to_string(summonerId));
        if (answer.failed) {
            return answer.error;
        }
        const Lines calls = plugin.ServerCalls();
        return calls.size() == 1 ? calls[0].substr(0, calls[0].find(' ')) : "calls: " + std::to_string(calls.size());
    }

    void SetSession(const std::string& state, std::uint64_t summonerId, std::uint64_t accountId) {
        plugin.SetResource(StartedLeaguePlugin::kLoginSession, R"({"state":")" + state + R"(","summonerId":)" +
                                                                   std::to_string(summonerId) + R"(,"accountId":)" +
                                                                   std::to_string(accountId) + "}");
    }

    StartedLeaguePlugin plugin{false};
};

TEST_F(WatchedResourcesTest, ValuesPresentBeforeStartAreTakenAtOnceAndTheLoginKeepsItsIdsUntilDeleted) {
    plugin.host().SetResource(StartedLeaguePlugin::kLeagueServiceEnabled, "true");
    plugin.host().SetResource(StartedLeaguePlugin::kLoginSession,
                              R"({"state":"SUCCEEDED","summonerId":12,"accountId":34})");
    plugin.Start();
    ASSERT_TRUE(plugin.started()) << plugin.error();
    EXPECT_EQ(LeaguesMethodFor(12), "leagues.getAllMyLeagues");
    SetSession("SUCCEEDED", 56, 78);
    EXPECT_EQ(LeaguesMethodFor(12), "leagues.getAllMyLeagues");
    EXPECT_EQ(LeaguesMethodFor(56), "leagues.getAllLeaguesForPlayer");
    // One that does not convert is dropped; had it counted as a log-out, the next login would bring new ids.
    plugin.SetResource(StartedLeaguePlugin::kLoginSession, R"({"state":"SUCCEEDED","summonerId":"twelve"})");
    SetSession("SUCCEEDED", 56, 78);
    EXPECT_EQ(LeaguesMethodFor(12), "leagues.getAllMyLeagues");
    SetSession("LOGGING_OUT", 56, 78);
    EXPECT_EQ(LeaguesMethodFor(12), "leagues.getAllMyLeagues");
    plugin.DeleteResource(StartedLeaguePlugin::kLoginSession);
    EXPECT_EQ(LeaguesMethodFor(12), "leagues.getAllLeaguesForPlayer");
    EXPECT_EQ(LeaguesMethodFor(0), "leagues.getAllMyLeagues");
    // Only a complete successful session brings ids.
    SetSession("SUCCEEDED", 12, 0);
    EXPECT_EQ(LeaguesMethodFor(12), "leagues.getAllLeaguesForPlayer");
    SetSession("ERROR", 12, 34);
    EXPECT_EQ(LeaguesMethodFor(12), "leagues.getAllLeaguesForPlayer");
    SetSession("SUCCEEDED", 12, 34);
    EXPECT_EQ(LeaguesMethodFor(12), "leagues.getAllMyLeagues");
}

}  // namespace
}  // namespace tav::test
