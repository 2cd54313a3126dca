#include "leagues/team_dto.h"

#include "leagues/lcds_types.h"

namespace Orvel::Client::Leagues::LCDS {

void RegisterTeamDtos(const LcdsTypes& types) {
    types.Struct<TeamMemberInfoDTO>("LeaguesLcdsTeamMemberInfoDTO", "com.orvelsoft.team.dto.TeamMemberInfoDTO")
        .Field("playerId", &TeamMemberInfoDTO::playerId)
        .Field("playerName", &TeamMemberInfoDTO::playerName);
    types.Struct<RosterDTO>("LeaguesLcdsRosterDTO", "com.orvelsoft.team.dto.RosterDTO")
        .Field("memberList", &RosterDTO::memberList);
    types
        .Struct<TeamIdDTO>("LeaguesLcdsTeamIdDTO", "com.orvelsoft.team.TeamId")  //
        .Field("fullId", &TeamIdDTO::fullId);
    types.Struct<TeamDTO>("LeaguesLcdsTeamDTO", "com.orvelsoft.team.dto.TeamDTO")
        .Field("teamId", &TeamDTO::teamId)
        .Field("name", &TeamDTO::name)
        .Field("roster", &TeamDTO::roster);
}

}  // namespace Orvel::Client::Leagues::LCDS
