#include <gtest/gtest.h>

#include "codec/json_writer.h"
#include "league_world.h"
#include "support/case_table.h"

namespace {

using tav::host::ReadLeagueWorld;

constexpr const char* kPlayers = "currentPlayer: 1\nplayers: [{summonerId: 1, accountId: 11, name: One}]\n";

TEST(LeagueWorld, CompletesListedEntriesSortsThemBestFirstAndGeneratesTheSameListForASeed) {
    const std::string text = std::string(kPlayers) +
                             "leagues: [{name: L, queue: RANKED_FLEX_SR, tier: GOLD, entries: [\n"
                             "  {player: 1, leaguePoints: 5}, {player: 1, rank: IV, leaguePoints: 70}]},\n"
                             "  {name: C, queue: RANKED_SOLO_5x5, tier: CHALLENGER, generate: {count: 3, seed: 5}}]\n";
    const auto reading = ReadLeagueWorld(text);
    ASSERT_EQ(reading.error, "");
    const auto& entries = reading.world.leagues.at(0).entries;
    ASSERT_EQ(entries.size(), 2u);
    EXPECT_EQ(wex::WriteJson(entries[0]), R"({"leaguePoints":70,"playerOrTeamId":"1","playerOrTeamName":"One",)"
                                          R"("queueType":"RANKED_FLEX_SR","rank":"IV","tier":"GOLD"})");
    EXPECT_EQ(entries[1].Member("rank").AsString(), "I");
    const auto again = ReadLeagueWorld(text);
    ASSERT_EQ(reading.world.leagues.at(1).entries.size(), 3u);
    // What the generator invents for a seed is part of the world a user sees.
    EXPECT_EQ(wex::WriteJson(reading.world.leagues[1].entries[0]),
              R"({"freshBlood":false,"hotStreak":false,"inactive":false,"leaguePoints":1398,"losses":112,)"
              R"("playerOrTeamId":"9000100000","playerOrTeamName":"Kestvale1","previousDayLeaguePosition":1,)"
              R"("queueType":"RANKED_SOLO_5x5","rank":"I","tier":"CHALLENGER","veteran":true,"wins":129})");
    for (std::size_t index = 0; index < 3; ++index) {
        EXPECT_EQ(wex::WriteJson(reading.world.leagues[1].entries[index]),
                  wex::WriteJson(again.world.leagues[1].entries[index]));
    }
}

TEST(LeagueWorld, NamesTheMemberAtFaultAndTakesTheBoundaryValues) {
    // A row's error without ';' stands for the text before the first ';'.
    for (const auto& row : tav::test::ReadCaseTable(__FILE__, "world_cases.tsv", 2)) {
        SCOPED_TRACE(row[0]);
        const std::string error = ReadLeagueWorld(row[0]).error;
        EXPECT_EQ(error.substr(0, row[1].find(';') == std::string::npos ? error.find(';') : std::string::npos), row[1]);
    }
    EXPECT_NE(ReadLeagueWorld("players: [unclosed\n").error, "");
    EXPECT_EQ(ReadLeagueWorld(std::string(kPlayers) + "tokenMinutes: 2.5\n").world.tokenMinutes, 2.5);
}

}  // namespace
