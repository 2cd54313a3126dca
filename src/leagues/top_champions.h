#pragma once

#include <cstddef>
#include <vector>

#include "leagues/champion_stats.h"
#include "leagues/statistics_dto.h"

namespace Orvel::Client::Leagues {

inline constexpr std::size_t TopChampionCount = 5;

// The champions with the most games in a player's lifetime statistics, most
// games first, at most TopChampionCount, each with its win rate in percent
// (0 when no won statistic exists for it). Totals over all champions
// (championId 0) are not champions.
std::vector<Api::LeagueChampAndStat> ConvertTopChampions(const LCDS::AggregatedStats& stats);

}  // namespace Orvel::Client::Leagues
