#include "leagues/api_types.h"

#include "leagues/api_enums.h"
#include "leagues/champion_stats.h"
#include "leagues/gameflow_session.h"
#include "leagues/league.h"
#include "leagues/league_team.h"
#include "leagues/login_records.h"
#include "leagues/module_types.h"
#include "leagues/participant_tiers.h"
#include "notifications/notification_resource.h"

namespace Orvel::Client::Leagues {

void RegisterLeagueApiTypes(const wex::AppModule& module, wex::BindingTypeRegistry& registry) {
    const ModuleTypes types(module, registry);
    Api::RegisterApiEnums(types);
    Api::RegisterLeagueRecords(types);
    Api::RegisterTeamRecords(types);
    Api::RegisterChampionStatRecords(types);
    Api::RegisterNotificationRecords(types);
    Api::RegisterLoginRecords(types);
    Api::RegisterParticipantTierRecords(types);
    Api::RegisterGameflowRecords(types);
}

}  // namespace Orvel::Client::Leagues
