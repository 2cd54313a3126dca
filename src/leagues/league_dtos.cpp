#include "leagues/league_dtos.h"

#include "leagues/lcds_enums.h"
#include "leagues/lcds_types.h"
#include "leagues/league_list_dto.h"
#include "leagues/message_dto.h"
#include "leagues/module_types.h"
#include "leagues/statistics_dto.h"
#include "leagues/team_dto.h"
#include "leagues/tier_and_rank_dto.h"

namespace Orvel::Client::Leagues {

void RegisterLeagueDtos(wex::AppModule& module, wex::BindingTypeRegistry& registry) {
    const LcdsTypes lcds(module, registry);
    LCDS::RegisterLcdsEnums(lcds);
    LCDS::RegisterLeagueListDtos(lcds, ModuleTypes(module, registry));
    LCDS::RegisterTeamDtos(lcds);
    LCDS::RegisterStatisticsDtos(lcds);
    LCDS::RegisterMessageDtos(lcds);
    LCDS::RegisterTierAndRankDto(lcds);
}

}  // namespace Orvel::Client::Leagues
