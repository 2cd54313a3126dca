#include "leagues/query_conversion.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace Orvel::Client::Leagues {

namespace {

TEST(StatCount, TruncatesTowardZeroAndSaturatesOutsideTheRange) {
    using Limits = std::numeric_limits<std::int64_t>;
    struct Row {
        float value;
        std::int64_t count;
    };
    const Row rows[] = {
        {0.0f, 0},
        {10.9f, 10},
        {-10.9f, -10},
        {9223371487098961920.0f, 9223371487098961920},  // the largest float below 2^63
        {9223372036854775808.0f, Limits::max()},        // 2^63
        {-9223372036854775808.0f, Limits::min()},       // -2^63 fits
        {-1e19f, Limits::min()},
        {std::numeric_limits<float>::infinity(), Limits::max()},
        {-std::numeric_limits<float>::infinity(), Limits::min()},
        {std::numeric_limits<float>::quiet_NaN(), 0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.value);
        EXPECT_EQ(StatCount(row.value), row.count);
    }
}

LCDS::RosterDTO Roster(std::vector<std::pair<std::uint64_t, const char*>> entries) {
    LCDS::RosterDTO roster;
    for (const auto& [id, name] : entries) {
        roster.memberList.push_back({id, name});
    }
    return roster;
}

LCDS::AggregatedStat Total(const char* statType, float value, std::int32_t championId = 0) {
    LCDS::AggregatedStat stat;
    stat.statType = statType;
    stat.value = value;
    stat.championId = championId;
    return stat;
}

LCDS::PlayerAggregatedStats Player(std::uint64_t id, std::vector<LCDS::AggregatedStat> stats) {
    LCDS::PlayerAggregatedStats player;
    player.playerId = id;
    player.aggregatedStats.lifetimeStatistics = std::move(stats);
    return player;
}

LCDS::TeamAggregatedStats TeamStats(std::vector<LCDS::PlayerAggregatedStats> players) {
    LCDS::TeamAggregatedStats team;
    team.playerAggregatedStatsList = std::move(players);
    return team;
}

// "id name games rate" per member.
std::vector<std::string> Describe(const std::vector<Api::LeagueTeamMember>& members) {
    std::vector<std::string> texts;
    for (const Api::LeagueTeamMember& member : members) {
        texts.push_back(std::to_string(member.id) + " " + member.name + " " + std::to_string(member.totalGamePlayed) +
                        " " + std::to_string(member.winRate));
    }
    return texts;
}

TEST(MakeTeamMembers, KeepsTheFirstRosterEntryOfEachPlayerInRosterOrder) {
    const auto members = MakeTeamMembers(Roster({{7, "Seven"}, {3, "Three"}, {7, "Again"}, {0, "Zero"}}));
    EXPECT_EQ(Describe(members),
              (std::vector<std::string>{"7 Seven 0 0.000000", "3 Three 0 0.000000", "0 Zero 0 0.000000"}));
}

TEST(ApplyTeamMemberStats, FillsGamesAndWinRateFromTheTotalsOverAllChampions) {
    auto members = MakeTeamMembers(Roster({{1, "One"}, {2, "Two"}, {3, "Three"}}));
    ApplyTeamMemberStats({TeamStats({
                             Player(1, {Total("TOTAL_SESSIONS_WON", 4), Total("TOTAL_SESSIONS_PLAYED", 10)}),
                             Player(3, {Total("TOTAL_SESSIONS_PLAYED", 8, 99), Total("TOTAL_SESSIONS_PLAYED", 5)}),
                         })},
                         members);
    EXPECT_EQ(Describe(members),
              (std::vector<std::string>{"1 One 10 40.000000", "2 Two 0 0.000000", "3 Three 5 0.000000"}));
}

TEST(ApplyTeamMemberStats, TheFirstTotalOfEachKindCountsOnceBothAreFound) {
    auto members = MakeTeamMembers(Roster({{1, "One"}, {2, "Two"}}));
    ApplyTeamMemberStats({TeamStats({
                             Player(1, {Total("TOTAL_SESSIONS_PLAYED", 10), Total("TOTAL_SESSIONS_WON", 5),
                                        Total("TOTAL_SESSIONS_PLAYED", 100), Total("TOTAL_SESSIONS_WON", 1)}),
                             // Until both are found, a later total replaces an earlier one of its kind.
                             Player(2, {Total("TOTAL_SESSIONS_PLAYED", 10), Total("TOTAL_SESSIONS_PLAYED", 20),
                                        Total("TOTAL_SESSIONS_WON", 5)}),
                         })},
                         members);
    EXPECT_EQ(Describe(members), (std::vector<std::string>{"1 One 10 50.000000", "2 Two 20 25.000000"}));
}

TEST(ApplyTeamMemberStats, ALaterRecordOfAPlayerOverwritesAndStrangersAreIgnored) {
    auto members = MakeTeamMembers(Roster({{1, "One"}}));
    ApplyTeamMemberStats(
        {
            TeamStats({Player(1, {Total("TOTAL_SESSIONS_PLAYED", 10), Total("TOTAL_SESSIONS_WON", 10)})}),
            TeamStats({Player(9, {Total("TOTAL_SESSIONS_PLAYED", 50)}), Player(1, {Total("TOTAL_SESSIONS_WON", 3)})}),
        },
        members);
    EXPECT_EQ(Describe(members), std::vector<std::string>{"1 One 0 0.000000"});
}

TEST(ApplyTeamMemberStats, TheRateNeedsAtLeastOneGameAndNegativeCountsCountAsNone) {
    auto members = MakeTeamMembers(Roster({{1, "A"}, {2, "B"}, {3, "C"}}));
    ApplyTeamMemberStats({TeamStats({
                             Player(1, {Total("TOTAL_SESSIONS_PLAYED", 0), Total("TOTAL_SESSIONS_WON", 3)}),
                             Player(2, {Total("TOTAL_SESSIONS_PLAYED", 1), Total("TOTAL_SESSIONS_WON", 1)}),
                             Player(3, {Total("TOTAL_SESSIONS_PLAYED", -4), Total("TOTAL_SESSIONS_WON", 2)}),
                         })},
                         members);
    EXPECT_EQ(Describe(members), (std::vector<std::string>{"1 A 0 0.000000", "2 B 1 100.000000", "3 C 0 0.000000"}));
}

TEST(ApplyTeamMemberStats, WithoutStatisticsTheMembersStayAsTheyAre) {
    auto members = MakeTeamMembers(Roster({{1, "One"}}));
    ApplyTeamMemberStats({}, members);
    EXPECT_EQ(Describe(members), std::vector<std::string>{"1 One 0 0.000000"});
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

LCDS::LeagueTierAndRankDTO TierOf(std::string id, LCDS::QueueType queue, LCDS::LeagueTier tier, LCDS::LeagueRank rank) {
    return {std::move(id), "", queue, tier, rank};
}

// "summonerId: queue/tier/division ..." per participant, with the API numbers.
std::vector<std::string> Describe(const std::vector<Api::ParticipantTiers>& participants) {
    std::vector<std::string> texts;
    for (const Api::ParticipantTiers& participant : participants) {
        std::string text = std::to_string(participant.summonerId) + ":";
        for (const Api::AchievedTier& tier : participant.achievedTiers) {
            text += " " + std::to_string(static_cast<int>(tier.queueType)) + "/" +
                    std::to_string(static_cast<int>(tier.tier)) + "/" + std::to_string(tier.division);
        }
        texts.push_back(text);
    }
    return texts;
}

TEST(GroupParticipantTiers, GroupsRepeatedIdsInTheOrderTheyFirstAppear) {
    using enum LCDS::QueueType;
    using enum LCDS::LeagueTier;
    using enum LCDS::LeagueRank;
    const auto participants = GroupParticipantTiers({
        TierOf("12", RANKED_SOLO_5x5, GOLD, II),
        TierOf("34", RANKED_FLEX_SR, MASTER, I),
        TierOf("12", RANKED_FLEX_TT, CHALLENGER, V),
        TierOf(" +012", RANKED_FLEX_SR, BRONZE, V),
    });
    EXPECT_EQ(Describe(participants), (std::vector<std::string>{"12: 1/3/2 2/7/0 3/1/5", "34: 3/6/0"}));
}

TEST(GroupParticipantTiers, UnknownServerValuesMapToTheirFallbacks) {
    const auto participants = GroupParticipantTiers(
        {TierOf("5", static_cast<LCDS::QueueType>(0), static_cast<LCDS::LeagueTier>(0),
                static_cast<LCDS::LeagueRank>(2)),
         TierOf("5", LCDS::QueueType::RANKED_SOLO_5x5, LCDS::LeagueTier::SILVER, static_cast<LCDS::LeagueRank>(5))});
    EXPECT_EQ(Describe(participants), std::vector<std::string>{"5: 0/0/3 1/2/0"});
}

TEST(GroupParticipantTiers, AnEmptyAnswerGivesNoParticipants) {
    EXPECT_TRUE(GroupParticipantTiers({}).empty());
}

TEST(GroupParticipantTiers, AnIdThatIsNotANumberEndsTheWholeConversion) {
    const std::vector<LCDS::LeagueTierAndRankDTO> tiers = {
        TierOf("12", LCDS::QueueType::RANKED_SOLO_5x5, LCDS::LeagueTier::GOLD, LCDS::LeagueRank::I),
        TierOf("team-1", LCDS::QueueType::RANKED_SOLO_5x5, LCDS::LeagueTier::GOLD, LCDS::LeagueRank::I),
    };
    try {
        (void)GroupParticipantTiers(tiers);
        FAIL() << "no exception";
    } catch (const ParticipantIdError& error) {
        EXPECT_STREQ(error.what(), "invalid stoull argument");
    }
}

TEST(ParseParticipantId, ReadsTheLeadingDecimalNumber) {
    const std::pair<std::string, std::uint64_t> rows[] = {
        {"0", 0},
        {"42", 42},
        {"007", 7},
        {" \t\n\v\f\r42", 42},
        {"+42", 42},
        {"42abc", 42},
        {"42 43", 42},
        {"0x1F", 0},
        {"1e3", 1},
        {"18446744073709551615", 18446744073709551615u},
        {"000000000000000000000018446744073709551615", 18446744073709551615u},
        {"-1", 18446744073709551615u},
        {"-18446744073709551615", 1},
        {"-0", 0},
        {std::string("12\0"
                     "34",
                     5),
         12},
    };
    for (const auto& [text, id] : rows) {
        SCOPED_TRACE(text);
        EXPECT_EQ(ParseParticipantId(text), id);
    }
}

TEST(ParseParticipantId, FailsWithTheTextOfItsErrorKind) {
    const std::pair<std::string, const char*> rows[] = {
        {"", "invalid stoull argument"},
        {"   ", "invalid stoull argument"},
        {"abc", "invalid stoull argument"},
        {"+", "invalid stoull argument"},
        {"-", "invalid stoull argument"},
        {"+-1", "invalid stoull argument"},
        {"--1", "invalid stoull argument"},
        {"x12", "invalid stoull argument"},
        {"\xC2\xA0"
         "12",
         "invalid stoull argument"},
        {"18446744073709551616", "stoull argument out of range"},
        {"-18446744073709551616", "stoull argument out of range"},
        {"99999999999999999999", "stoull argument out of range"},
        {"184467440737095516150", "stoull argument out of range"},
    };
    for (const auto& [text, message] : rows) {
        SCOPED_TRACE(text);
        try {
            (void)ParseParticipantId(text);
            ADD_FAILURE() << "no exception";
        } catch (const ParticipantIdError& error) {
            EXPECT_STREQ(error.what(), message);
        }
    }
}

using Api::LeagueQueueType;

TEST(TiersRequestTexts, IdsAreDecimalBetweenBracketsWithoutSpaces) {
    struct Row {
        std::vector<std::uint64_t> ids;
        const char* text;
    };
    const Row rows[] = {
        {{}, "[]"},
        {{0}, "[0]"},
        {{12, 34}, "[12,34]"},
        {{std::numeric_limits<std::uint64_t>::max(), 1}, "[18446744073709551615,1]"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(ParticipantIdListText(row.ids), row.text);
    }
}

TEST(TiersRequestTexts, QueuesAreQuotedServerNamesAndNoneIsInvalid) {
    struct Row {
        std::vector<LeagueQueueType> queues;
        const char* text;
    };
    const Row rows[] = {
        {{}, "[]"},
        {{LeagueQueueType::SOLO5V5, LeagueQueueType::FLEXTT}, R"(["RANKED_SOLO_5x5","RANKED_FLEX_TT"])"},
        {{LeagueQueueType::FLEXSR}, R"(["RANKED_FLEX_SR"])"},
        {{LeagueQueueType::NONE, LeagueQueueType::SOLO5V5}, R"(["INVALID","RANKED_SOLO_5x5"])"},
        {{static_cast<LeagueQueueType>(9)}, R"(["INVALID"])"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(QueueListText(row.queues), row.text);
    }
}

}  // namespace

}  // namespace Orvel::Client::Leagues
