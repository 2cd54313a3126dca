#pragma once

#include <string>

#include "leagues/lcds_enums.h"

namespace Orvel::Client::Leagues {
class LcdsTypes;
}

namespace Orvel::Client::Leagues::LCDS {

// One participant's tier in one queue.
struct LeagueTierAndRankDTO {
    std::string playerOrTeamId;  // the summoner id in decimal
    std::string playerOrTeamName;
    QueueType queueType{};
    LeagueTier tier{};
    LeagueRank rank{};
};

// LeagueTierAndRankDTO.
void RegisterTierAndRankDto(const LcdsTypes& types);

}  // namespace Orvel::Client::Leagues::LCDS
