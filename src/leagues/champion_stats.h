#pragma once

#include <cstdint>

namespace Orvel::Client::Leagues {
class ModuleTypes;
}

namespace Orvel::Client::Leagues::Api {

// One of a player's most played champions.
struct LeagueChampAndStat {
    std::int32_t championId = 0;
    std::int64_t totalGamePlayed = 0;
    float winRate = 0;  // percent
};

// The part of the summoner plug-in's summoner resource that is read to find
// the account whose statistics name the top champions.
struct LeaguesSummoner {
    std::uint64_t summonerId = 0;
    std::uint64_t accountId = 0;
};

// LeagueChampAndStat, LeaguesSummoner.
void RegisterChampionStatRecords(const ModuleTypes& types);

}  // namespace Orvel::Client::Leagues::Api
