#include "leagues/top_champions.h"

#include <algorithm>
#include <string_view>

#include "leagues/stat_count.h"

namespace Orvel::Client::Leagues {
namespace {

const LCDS::AggregatedStat* FindStat(const std::vector<LCDS::AggregatedStat>& stats, std::string_view statType,
                                     std::int32_t championId) {
    const auto found = std::find_if(stats.begin(), stats.end(), [&](const LCDS::AggregatedStat& stat) {
        return stat.statType == statType && stat.championId == championId;
    });
    return found != stats.end() ? &*found : nullptr;
}

}  // namespace

std::vector<Api::LeagueChampAndStat> ConvertTopChampions(const LCDS::AggregatedStats& stats) {
    const std::vector<LCDS::AggregatedStat>& lifetime = stats.lifetimeStatistics;
    std::vector<Api::LeagueChampAndStat> champions;
    for (const LCDS::AggregatedStat& played : lifetime) {
        if (played.championId == 0 || played.statType != "TOTAL_SESSIONS_PLAYED") {
            continue;
        }
        const std::int64_t games = StatCount(played.value);
        const LCDS::AggregatedStat* won = FindStat(lifetime, "TOTAL_SESSIONS_WON", played.championId);
        // No games and a won count gives infinity or NaN, as the division says.
        const float winRate = won != nullptr ? won->value / static_cast<float>(games) * 100.0f : 0.0f;
        champions.push_back({played.championId, games, winRate});
    }
    std::stable_sort(champions.begin(), champions.end(),
                     [](const Api::LeagueChampAndStat& a, const Api::LeagueChampAndStat& b) {
                         return a.totalGamePlayed > b.totalGamePlayed;
                     });
    if (champions.size() > TopChampionCount) {
        champions.resize(TopChampionCount);
    }
    return champions;
}

}  // namespace Orvel::Client::Leagues
