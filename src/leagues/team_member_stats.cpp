#include "leagues/team_member_stats.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <unordered_map>
#include <unordered_set>

#include "leagues/stat_count.h"

namespace Orvel::Client::Leagues {
namespace {

void ApplyPlayerStats(const LCDS::AggregatedStats& stats, Api::LeagueTeamMember& member) {
    std::optional<std::int64_t> played;
    std::optional<std::int64_t> won;
    for (const LCDS::AggregatedStat& stat : stats.lifetimeStatistics) {
        if (played && won) {
            break;
        }
        if (stat.championId != 0) {
            continue;
        }
        if (stat.statType == "TOTAL_SESSIONS_PLAYED") {
            played = StatCount(stat.value);
        } else if (stat.statType == "TOTAL_SESSIONS_WON") {
            won = StatCount(stat.value);
        }
    }
    // A negative count is no count.
    member.totalGamePlayed = played ? static_cast<std::uint64_t>(std::max<std::int64_t>(*played, 0)) : 0;
    member.winRate =
        played && *played >= 1 && won ? static_cast<float>(*won) / static_cast<float>(*played) * 100.0f : 0.0f;
}

}  // namespace

std::vector<Api::LeagueTeamMember> MakeTeamMembers(const LCDS::RosterDTO& roster) {
    std::vector<Api::LeagueTeamMember> members;
    std::unordered_set<std::uint64_t> seen;
    for (const LCDS::TeamMemberInfoDTO& entry : roster.memberList) {
        if (seen.insert(entry.playerId).second) {
            members.push_back({entry.playerId, entry.playerName, 0, 0.0f});
        }
    }
    return members;
}

void ApplyTeamMemberStats(const std::vector<LCDS::TeamAggregatedStats>& teamStats,
                          std::vector<Api::LeagueTeamMember>& members) {
    std::unordered_map<std::uint64_t, Api::LeagueTeamMember*> membersById;
    for (Api::LeagueTeamMember& member : members) {
        membersById.emplace(member.id, &member);
    }
    for (const LCDS::TeamAggregatedStats& team : teamStats) {
        for (const LCDS::PlayerAggregatedStats& player : team.playerAggregatedStatsList) {
            const auto found = membersById.find(player.playerId);
            if (found != membersById.end()) {
                ApplyPlayerStats(player.aggregatedStats, *found->second);
            }
        }
    }
}

}  // namespace Orvel::Client::Leagues
