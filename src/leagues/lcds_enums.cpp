#include "leagues/lcds_enums.h"

#include "leagues/lcds_types.h"

namespace Orvel::Client::Leagues::LCDS {

void RegisterLcdsEnums(const LcdsTypes& types) {
    types.Enum<QueueType>("LeaguesLcdsQueueType", "com.orvelsoft.leagues.pojo.QueueType")
        .Value("RANKED_SOLO_5x5", QueueType::RANKED_SOLO_5x5)
        .Value("RANKED_FLEX_SR", QueueType::RANKED_FLEX_SR)
        .Value("RANKED_FLEX_TT", QueueType::RANKED_FLEX_TT);
    types.Enum<LeagueTier>("LeaguesLcdsLeagueTier", "com.orvelsoft.leagues.pojo.LeagueTier")
        .Value("BRONZE", LeagueTier::BRONZE)
        .Value("SILVER", LeagueTier::SILVER)
        .Value("GOLD", LeagueTier::GOLD)
        .Value("PLATINUM", LeagueTier::PLATINUM)
        .Value("DIAMOND", LeagueTier::DIAMOND)
        .Value("MASTER", LeagueTier::MASTER)
        .Value("CHALLENGER", LeagueTier::CHALLENGER);
    types.Enum<LeagueRank>("LeaguesLcdsLeagueRank", "com.orvelsoft.leagues.pojo.LeagueRank")
        .Value("I", LeagueRank::I)
        .Value("II", LeagueRank::II)
        .Value("III", LeagueRank::III)
        .Value("IV", LeagueRank::IV)
        .Value("V", LeagueRank::V);
}

}  // namespace Orvel::Client::Leagues::LCDS
