#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "leagues/api_enums.h"

namespace Orvel::Client::Leagues {

// The two list texts that "getTiersForParticipants" takes.

// The ids in decimal, in brackets: [12,34]; [] for none.
std::string ParticipantIdListText(const std::vector<std::uint64_t>& summonerIds);
// The server names of the queues, quoted, in brackets:
// ["RANKED_SOLO_5x5","RANKED_FLEX_SR"]; NONE is "INVALID".
std::string QueueListText(const std::vector<Api::LeagueQueueType>& queueTypes);

}  // namespace Orvel::Client::Leagues
