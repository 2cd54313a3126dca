#pragma once

#include <cstdint>

namespace Orvel::Client::Leagues {
class LcdsTypes;
}

namespace Orvel::Client::Leagues::LCDS {

// The server's queues; there is no 0, and the flex queues are numbered the
// other way round from the API's.
enum class QueueType : std::int32_t { RANKED_SOLO_5x5 = 1, RANKED_FLEX_SR = 2, RANKED_FLEX_TT = 3 };

enum class LeagueTier : std::int32_t {
    BRONZE = 1,
    SILVER = 2,
    GOLD = 3,
    PLATINUM = 4,
    DIAMOND = 5,
    MASTER = 6,
    CHALLENGER = 7,
};

enum class LeagueRank : std::int32_t { I = 0, II = 1, III = 2, IV = 3, V = 4 };

// LeaguesLcdsQueueType, LeaguesLcdsLeagueTier, LeaguesLcdsLeagueRank.
void RegisterLcdsEnums(const LcdsTypes& types);

}  // namespace Orvel::Client::Leagues::LCDS
