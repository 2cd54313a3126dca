#include "leagues/participant_tiers_conversion.h"

#include <cstddef>
#include <cstdint>
#include <unordered_map>

#include "leagues/participant_id.h"
#include "leagues/server_mappings.h"

namespace Orvel::Client::Leagues {

std::vector<Api::ParticipantTiers> GroupParticipantTiers(const std::vector<LCDS::LeagueTierAndRankDTO>& tiers) {
    std::vector<Api::ParticipantTiers> participants;
    std::unordered_map<std::uint64_t, std::size_t> indexById;
    for (const LCDS::LeagueTierAndRankDTO& entry : tiers) {
        const Api::LeagueTier tier = LeagueTierOf(entry.tier);
        const Api::AchievedTier achieved{LeagueQueueTypeOf(entry.queueType), tier, DivisionNumberOf(entry.rank, tier)};
        const std::uint64_t summonerId = ParseParticipantId(entry.playerOrTeamId);
        const auto [found, isNew] = indexById.try_emplace(summonerId, participants.size());
        if (isNew) {
            participants.push_back({summonerId, {}});
        }
        participants[found->second].achievedTiers.push_back(achieved);
    }
    return participants;
}

}  // namespace Orvel::Client::Leagues
