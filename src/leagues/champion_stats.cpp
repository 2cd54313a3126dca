#include "leagues/champion_stats.h"

#include "leagues/module_types.h"

namespace Orvel::Client::Leagues::Api {

void RegisterChampionStatRecords(const ModuleTypes& types) {
    types.Struct<LeagueChampAndStat>("LeagueChampAndStat")
        .Field("championId", &LeagueChampAndStat::championId)
        .Field("totalGamePlayed", &LeagueChampAndStat::totalGamePlayed)
        .Field("winRate", &LeagueChampAndStat::winRate);
    types.Struct<LeaguesSummoner>("LeaguesSummoner")
        .Field("summonerId", &LeaguesSummoner::summonerId)
        .Field("accountId", &LeaguesSummoner::accountId);
}

}  // namespace Orvel::Client::Leagues::Api
