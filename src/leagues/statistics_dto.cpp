#include "leagues/statistics_dto.h"

#include "leagues/lcds_types.h"

namespace Orvel::Client::Leagues::LCDS {

void RegisterStatisticsDtos(const LcdsTypes& types) {
    types.Struct<AggregatedStat>("LeaguesLcdsAggregatedStat", "com.orvelsoft.platform.statistics.AggregatedStat")
        .Field("id", &AggregatedStat::id)
        .Field("value", &AggregatedStat::value)
        .Field("statType", &AggregatedStat::statType)
        .Field("championId", &AggregatedStat::championId);
    types.Struct<ChampionStatInfo>("LeaguesLcdsChampionStatInfo", "com.orvelsoft.platform.statistics.ChampionStatInfo")
        .Field("championId", &ChampionStatInfo::championId)
        .Field("stats", &ChampionStatInfo::stats)
        .Field("totalGamesPlayed", &ChampionStatInfo::totalGamesPlayed);
    types
        .Struct<AggregatedStatsKey>("LeaguesLcdsAggregatedStatsKey",
                                    "com.orvelsoft.platform.statistics.AggregatedStatsKey")
        .Field("userId", &AggregatedStatsKey::userId)
        .Field("gameMode", &AggregatedStatsKey::gameMode);
    types.Struct<AggregatedStats>("LeaguesLcdsAggregatedStats", "com.orvelsoft.platform.statistics.AggregatedStats")
        .Field("key", &AggregatedStats::key)
        .Field("lifetimeStatistics", &AggregatedStats::lifetimeStatistics);
    types
        .Struct<PlayerAggregatedStats>("LeaguesLcdsPlayerAggregatedStats",
                                       "com.orvelsoft.platform.statistics.PlayerAggregatedStats")
        .Field("playerId", &PlayerAggregatedStats::playerId)
        .Field("aggregatedStats", &PlayerAggregatedStats::aggregatedStats);
    types
        .Struct<TeamAggregatedStats>("LeaguesLcdsTeamAggregatedStats",
                                     "com.orvelsoft.platform.statistics.TeamAggregatedStats")
        .Field("id", &TeamAggregatedStats::id)
        .Field("queueType", &TeamAggregatedStats::queueType)
        .Field("playerAggregatedStatsList", &TeamAggregatedStats::playerAggregatedStatsList);
}

}  // namespace Orvel::Client::Leagues::LCDS
