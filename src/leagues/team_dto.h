#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace Orvel::Client::Leagues {
class LcdsTypes;
}

namespace Orvel::Client::Leagues::LCDS {

struct TeamMemberInfoDTO {
    std::uint64_t playerId = 0;
    std::string playerName;
};

struct RosterDTO {
    std::vector<TeamMemberInfoDTO> memberList;
};

struct TeamIdDTO {
    std::string fullId;
};

struct TeamDTO {
    TeamIdDTO teamId;
    std::string name;
    RosterDTO roster;
};

// LeaguesLcdsTeamMemberInfoDTO, LeaguesLcdsRosterDTO, LeaguesLcdsTeamIdDTO, LeaguesLcdsTeamDTO.
void RegisterTeamDtos(const LcdsTypes& types);

}  // namespace Orvel::Client::Leagues::LCDS
