#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "leagues/team_dto.h"

namespace Orvel::Client::Leagues {
class LcdsTypes;
}

namespace Orvel::Client::Leagues::LCDS {

// One statistic; championId 0 makes it a total over all champions.
struct AggregatedStat {
    std::uint64_t id = 0;
    float value = 0;
    std::string statType;  // "TOTAL_SESSIONS_PLAYED", "TOTAL_SESSIONS_WON", ...
    std::int32_t championId = 0;
};

struct ChampionStatInfo {
    std::int32_t championId = 0;
    std::vector<AggregatedStat> stats;
    std::int32_t totalGamesPlayed = 0;
};

struct AggregatedStatsKey {
    std::uint64_t userId = 0;
    std::string gameMode;
};

struct AggregatedStats {
    AggregatedStatsKey key;
    std::vector<AggregatedStat> lifetimeStatistics;
};

struct PlayerAggregatedStats {
    std::uint64_t playerId = 0;
    AggregatedStats aggregatedStats;
};

struct TeamAggregatedStats {
    TeamIdDTO id;
    std::string queueType;
    std::vector<PlayerAggregatedStats> playerAggregatedStatsList;
};

// LeaguesLcdsAggregatedStat, LeaguesLcdsChampionStatInfo,
// LeaguesLcdsAggregatedStatsKey, LeaguesLcdsAggregatedStats,
// LeaguesLcdsPlayerAggregatedStats, LeaguesLcdsTeamAggregatedStats.
void RegisterStatisticsDtos(const LcdsTypes& types);

}  // namespace Orvel::Client::Leagues::LCDS
