#include "leagues/query_conversion.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "support/case_table.h"

namespace Orvel::Client::Leagues {

namespace {

using Lines = std::vector<std::string>;

TEST(StatCount, TruncatesTowardZeroAndSaturatesOutsideTheRange) {
    const auto rows = tav::test::ReadCases(__FILE__, "stat_counts.tsv");
    ASSERT_EQ(rows.size(), 8u);
    for (const std::vector<std::string>& row : rows) {
        SCOPED_TRACE(row.at(0));
        EXPECT_EQ(StatCount(std::stof(row.at(0))), std::stoll(row.at(1)));
    }
}

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

LCDS::PlayerAggregatedStats Player(std::uint64_t id, std::vector<LCDS::AggregatedStat> stats) {
    LCDS::PlayerAggregatedStats player;
    player.playerId = id;
    player.aggregatedStats.lifetimeStatistics = std::move(stats);
    return player;
}

TEST(TeamMembers, FirstRosterEntryOfEachPlayerWithTheFirstTotalsOverAllChampions) {
    LCDS::RosterDTO roster;
    for (std::uint64_t id : {1, 2, 3, 1, 4, 5, 6, 7, 8}) {
        roster.memberList.push_back({id, "P" + std::to_string(id)});
    }
    roster.memberList[3].playerName = "Again";
    auto members = MakeTeamMembers(roster);
    LCDS::TeamAggregatedStats first;
    first.playerAggregatedStatsList = {
        Player(1, {Played(0, 10), Won(0, 5), Played(0, 100), Won(0, 1)}),
        // Until both are found, a later total replaces an earlier one of its kind.
        Player(2, {Played(0, 10), Played(0, 20), Won(0, 5)}),
        Player(3, {Played(99, 8), Played(0, 5)}),
        Player(4, {Played(0, 0), Won(0, 3)}),
        Player(5, {Played(0, -4), Won(0, 2)}),
        Player(6, {Played(0, 1), Won(0, 1)}),
        Player(7, {Played(0, 10), Won(0, 10)}),
    };
    LCDS::TeamAggregatedStats later;
    later.playerAggregatedStatsList = {Player(9, {Played(0, 50)}), Player(7, {Won(0, 3)})};
    ApplyTeamMemberStats({first, later}, members);
    Lines texts;
    for (const Api::LeagueTeamMember& member : members) {
        texts.push_back(std::to_string(member.id) + " " + member.name + " " + std::to_string(member.totalGamePlayed) +
                        " " + std::to_string(member.winRate));
    }
    EXPECT_EQ(texts, (Lines{"1 P1 10 50.000000", "2 P2 20 25.000000", "3 P3 5 0.000000", "4 P4 0 0.000000",
                            "5 P5 0 0.000000", "6 P6 1 100.000000", "7 P7 0 0.000000", "8 P8 0 0.000000"}));
}

// "champion:games:rate" for each champion, in the answer's order.
Lines TopChampions(std::vector<LCDS::AggregatedStat> stats) {
    LCDS::AggregatedStats aggregated;
    aggregated.lifetimeStatistics = std::move(stats);
    Lines texts;
    for (const Api::LeagueChampAndStat& champion : ConvertTopChampions(aggregated)) {
        texts.push_back(std::to_string(champion.championId) + ":" + std::to_string(champion.totalGamePlayed) + ":" +
                        std::to_string(champion.winRate));
    }
    return texts;
}

TEST(ConvertTopChampions, KeepsTheFiveWithTheMostGamesAndTheRateOfTheFirstWonTotalIgnoringOtherTotals) {
    EXPECT_EQ(TopChampions({Played(1, 3), Played(2, 70), Played(3, 12), Played(4, 5), Played(5, 40), Played(6, 1),
                            Played(7, 25)}),
              (Lines{"2:70:0.000000", "5:40:0.000000", "7:25:0.000000", "3:12:0.000000", "4:5:0.000000"}));
    EXPECT_TRUE(TopChampions({}).empty());
    EXPECT_EQ(TopChampions({Won(9, 4), Played(9, 10), Won(9, 8), Played(17, 20), Played(21, 8), Won(21, 2),
                            Played(0, 500), Stat(3, "TOTAL_SESSIONS_LOST", 50), Stat(4, "total_sessions_played", 60),
                            Stat(5, "TOTAL_SESSIONS_PLAYED ", 70), Played(6, 2.9f)}),
              (Lines{"17:20:0.000000", "9:10:40.000000", "21:8:25.000000", "6:2:0.000000"}));
    // No games with a won count: the division gives a non-finite rate.
    LCDS::AggregatedStats noGames;
    noGames.lifetimeStatistics = {Played(8, 0.5f), Won(8, 1)};
    EXPECT_FALSE(std::isfinite(ConvertTopChampions(noGames).at(0).winRate));
}

TEST(ParseParticipantId, ReadsTheLeadingDecimalNumberOrFailsWithTheTextOfItsErrorKind) {
    const auto rows = tav::test::ReadCases(__FILE__, "participant_ids.tsv");
    ASSERT_EQ(rows.size(), 22u);
    for (const std::vector<std::string>& row : rows) {
        SCOPED_TRACE(row.at(0));
        try {
            EXPECT_EQ(std::to_string(ParseParticipantId(tav::test::Unescape(row.at(0)))), row.at(1));
        } catch (const ParticipantIdError& error) {
            EXPECT_EQ(error.what(), row.at(1));
        }
    }
    // A view ends where it ends, even when digits follow in memory.
    EXPECT_EQ(ParseParticipantId(std::string_view("12345").substr(0, 2)), 12u);
}

TEST(TiersRequestTexts, DecimalIdsAndQuotedServerQueueNamesBetweenBracketsWithoutSpaces) {
    EXPECT_EQ(ParticipantIdListText({}), "[]");
    EXPECT_EQ(ParticipantIdListText({0}), "[0]");
    EXPECT_EQ(ParticipantIdListText({std::numeric_limits<std::uint64_t>::max(), 1}), "[18446744073709551615,1]");
    using Api::LeagueQueueType;
    EXPECT_EQ(QueueListText({}), "[]");
    EXPECT_EQ(QueueListText({LeagueQueueType::NONE, LeagueQueueType::SOLO5V5, LeagueQueueType::FLEXSR}),
              R"(["INVALID","RANKED_SOLO_5x5","RANKED_FLEX_SR"])");
}

}  // namespace

}  // namespace Orvel::Client::Leagues
