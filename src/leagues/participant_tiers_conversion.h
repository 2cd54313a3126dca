#pragma once

#include <vector>

#include "leagues/participant_tiers.h"
#include "leagues/tier_and_rank_dto.h"

namespace Orvel::Client::Leagues {

// Groups the tiers answer by participant: one ParticipantTiers per distinct
// summoner id, in the order the ids first appear, each with its tiers in
// answer order. Throws ParticipantIdError when an id is not a number.
std::vector<Api::ParticipantTiers> GroupParticipantTiers(const std::vector<LCDS::LeagueTierAndRankDTO>& tiers);

}  // namespace Orvel::Client::Leagues
