#include "leagues/tier_and_rank_dto.h"

#include "leagues/lcds_types.h"

namespace Orvel::Client::Leagues::LCDS {

void RegisterTierAndRankDto(const LcdsTypes& types) {
    types.Struct<LeagueTierAndRankDTO>("LeagueTierAndRankDTO", "com.orvelsoft.leagues.pojo.LeagueTierAndRankDTO")
        .Field("playerOrTeamId", &LeagueTierAndRankDTO::playerOrTeamId)
        .Field("playerOrTeamName", &LeagueTierAndRankDTO::playerOrTeamName)
        .Field("queueType", &LeagueTierAndRankDTO::queueType)
        .Field("tier", &LeagueTierAndRankDTO::tier)
        .Field("rank", &LeagueTierAndRankDTO::rank);
}

}  // namespace Orvel::Client::Leagues::LCDS
