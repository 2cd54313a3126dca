#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "leagues/api_enums.h"

namespace Orvel::Client::Leagues {
class ModuleTypes;
}

namespace Orvel::Client::Leagues::Api {

// One player's (or team's) row in a division.
struct LeagueStanding {
    std::string id;
    std::string name;
    std::uint64_t position = 0;  // 1-based place in its division; 0 until numbered
    std::int64_t positionDelta = 0;
    std::uint64_t previousPosition = 0;  // 0 when unknown
    std::vector<LeagueEmblem> emblems;
    std::uint64_t wins = 0;
    std::uint64_t losses = 0;
    std::vector<Miniseries> miniseriesResults;
    std::int64_t points = 0;
    bool inactive = false;
    bool pendingPromotion = false;
    bool pendingDemotion = false;
    std::string inactivityStatus;
    std::int64_t apexDaysUntilDecay = 0;

    // Not registered: the apex order reads the series counts.
    std::uint64_t miniseriesWins = 0;
    std::uint64_t miniseriesLosses = 0;
    LeagueTier leagueTier = LeagueTier::NONE;
};

struct LeagueDivision {
    LeagueRank leagueRank = LeagueRank::I;
    std::vector<LeagueStanding> standings;  // in place order
};

struct League {
    LeagueQueueType queueType = LeagueQueueType::NONE;
    LeagueTier leagueTier = LeagueTier::NONE;
    LeagueRank requesterLeagueRank = LeagueRank::NA;
    std::string leagueName;
    std::string name;                     // the requester's name
    std::vector<LeagueDivision> leagues;  // ascending by rank
    std::uint64_t challengerNextPromotionUpdateInMs = 0;

    // Not registered: the number of places, which bounds the challenger league
    // and after which master places are numbered.
    std::uint64_t maxLeagueSize = 0;
};

struct ApexLeagues {
    std::vector<League> challengers;
    std::vector<League> masters;  // in the same queue order
};

// LeagueStanding, LeagueDivision, League, ApexLeagues.
void RegisterLeagueRecords(const ModuleTypes& types);

}  // namespace Orvel::Client::Leagues::Api
