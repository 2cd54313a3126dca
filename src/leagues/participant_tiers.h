#pragma once

#include <cstdint>
#include <vector>

#include "leagues/api_enums.h"

namespace Orvel::Client::Leagues {
class ModuleTypes;
}

namespace Orvel::Client::Leagues::Api {

struct AchievedTier {
    LeagueQueueType queueType = LeagueQueueType::NONE;
    LeagueTier tier = LeagueTier::NONE;
    std::uint64_t division = 0;  // 1 for I to 5 for V; 0 for the apex tiers and unknown ranks
};

struct ParticipantTiers {
    std::uint64_t summonerId = 0;
    std::vector<AchievedTier> achievedTiers;
};

// AchievedTier, ParticipantTiers.
void RegisterParticipantTierRecords(const ModuleTypes& types);

}  // namespace Orvel::Client::Leagues::Api
