#include "leagues/team_member_stats.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

namespace Orvel::Client::Leagues {
namespace {

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

}  // namespace
}  // namespace Orvel::Client::Leagues
