#include "leagues/top_champions.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

namespace Orvel::Client::Leagues {
namespace {

LCDS::AggregatedStat Stat(std::int32_t championId, const char* statType, float value) {
    LCDS::AggregatedStat stat;
    stat.championId = championId;
    stat.statType = statType;
    stat.value = value;
    return stat;
}

LCDS::AggregatedStat Played(std::int32_t championId, float games) {
    return Stat(championId, "TOTAL_SESSIONS_PLAYED", games);
}
LCDS::AggregatedStat Won(std::int32_t championId, float games) {
    return Stat(championId, "TOTAL_SESSIONS_WON", games);
}

LCDS::AggregatedStats Lifetime(std::vector<LCDS::AggregatedStat> stats) {
    LCDS::AggregatedStats aggregated;
    aggregated.lifetimeStatistics = std::move(stats);
    return aggregated;
}

// "champion:games:rate" for each champion, in the answer's order.
std::vector<std::string> Describe(const std::vector<Api::LeagueChampAndStat>& champions) {
    std::vector<std::string> texts;
    for (const Api::LeagueChampAndStat& champion : champions) {
        texts.push_back(std::to_string(champion.championId) + ":" + std::to_string(champion.totalGamePlayed) + ":" +
                        std::to_string(champion.winRate));
    }
    return texts;
}

TEST(ConvertTopChampions, KeepsTheFiveWithTheMostGamesMostFirst) {
    std::vector<LCDS::AggregatedStat> stats;
    const float games[] = {3, 70, 12, 5, 40, 1, 25};
    for (std::int32_t champion = 1; champion <= 7; ++champion) {
        stats.push_back(Played(champion, games[champion - 1]));
    }
    EXPECT_EQ(
        Describe(ConvertTopChampions(Lifetime(stats))),
        (std::vector<std::string>{"2:70:0.000000", "5:40:0.000000", "7:25:0.000000", "3:12:0.000000", "4:5:0.000000"}));
}

TEST(ConvertTopChampions, TheWinRateComesFromTheFirstWonStatisticOfTheChampionWhereverItIs) {
    const auto champions = ConvertTopChampions(Lifetime({
        Won(9, 4),
        Played(9, 10),
        Won(9, 8),
        Played(17, 20),
        Played(21, 8),
        Won(21, 2),
    }));
    EXPECT_EQ(Describe(champions), (std::vector<std::string>{"17:20:0.000000", "9:10:40.000000", "21:8:25.000000"}));
}

TEST(ConvertTopChampions, IgnoresTotalsOtherTypesAndInexactNames) {
    const auto champions = ConvertTopChampions(Lifetime({
        Played(0, 500),
        Stat(3, "TOTAL_SESSIONS_LOST", 50),
        Stat(4, "total_sessions_played", 60),
        Stat(5, "TOTAL_SESSIONS_PLAYED ", 70),
        Played(6, 2.9f),
    }));
    EXPECT_EQ(Describe(champions), std::vector<std::string>{"6:2:0.000000"});
}

TEST(ConvertTopChampions, FewerThanFiveAreAllKeptAndNoneGiveAnEmptyList) {
    EXPECT_EQ(ConvertTopChampions(Lifetime({Played(1, 1), Played(2, 2)})).size(), 2u);
    EXPECT_TRUE(ConvertTopChampions(Lifetime({})).empty());
}

TEST(ConvertTopChampions, ChampionsWithEqualGamesAreAllKeptUpToTheLimit) {
    const auto champions = ConvertTopChampions(
        Lifetime({Played(1, 5), Played(2, 9), Played(3, 5), Played(4, 5), Played(5, 5), Played(6, 5)}));
    ASSERT_EQ(champions.size(), 5u);
    EXPECT_EQ(champions[0].championId, 2);
    for (std::size_t index = 1; index < champions.size(); ++index) {
        EXPECT_EQ(champions[index].totalGamePlayed, 5);
    }
}

TEST(ConvertTopChampions, NoGamesWithAWonCountGiveANonFiniteRate) {
    const auto champions = ConvertTopChampions(Lifetime({Played(8, 0.5f), Won(8, 1)}));
    ASSERT_EQ(champions.size(), 1u);
    EXPECT_EQ(champions[0].totalGamePlayed, 0);
    EXPECT_FALSE(std::isfinite(champions[0].winRate));
}

}  // namespace
}  // namespace Orvel::Client::Leagues
