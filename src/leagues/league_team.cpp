#include "leagues/league_team.h"

#include "leagues/module_types.h"

namespace Orvel::Client::Leagues::Api {

void RegisterTeamRecords(const ModuleTypes& types) {
    types.Struct<LeagueTeamMember>("LeagueTeamMember")
        .Field("id", &LeagueTeamMember::id)
        .Field("name", &LeagueTeamMember::name)
        .Field("totalGamePlayed", &LeagueTeamMember::totalGamePlayed)
        .Field("winRate", &LeagueTeamMember::winRate);
    types.Struct<LeagueTeam>("LeagueTeam")
        .Field("id", &LeagueTeam::id)
        .Field("name", &LeagueTeam::name)
        .Field("members", &LeagueTeam::members);
}

}  // namespace Orvel::Client::Leagues::Api
