#pragma once

#include <cstdint>

namespace Orvel::Client::Leagues {
class ModuleTypes;
}

namespace Orvel::Client::Leagues::Api {

enum class Severity : std::int32_t { WARNING = 0, ALERT = 1 };

// Numbered apart from the server's queues: the two flex queues swap places.
enum class LeagueQueueType : std::int32_t { NONE = 0, SOLO5V5 = 1, FLEXTT = 2, FLEXSR = 3 };

enum class LeagueTier : std::int32_t {
    NONE = 0,
    BRONZE = 1,
    SILVER = 2,
    GOLD = 3,
    PLATINUM = 4,
    DIAMOND = 5,
    MASTER = 6,
    CHALLENGER = 7,
};

// The division inside a tier; NA is no division (the apex tiers, unknown ranks).
enum class LeagueRank : std::int32_t { I = 0, II = 1, III = 2, IV = 3, V = 4, NA = 5 };

// One game of a promotion series: won, lost, not yet played.
enum class Miniseries : std::int32_t { W = 0, L = 1, N = 2 };

enum class LeagueEmblem : std::int32_t { VETERAN = 0, HOTSTREAK = 1, FRESHBLOOD = 2 };

// Severity, LeagueQueueType, LeagueTier, LeagueRank, Miniseries, LeagueEmblem.
void RegisterApiEnums(const ModuleTypes& types);

}  // namespace Orvel::Client::Leagues::Api
