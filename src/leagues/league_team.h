#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace Orvel::Client::Leagues {
class ModuleTypes;
}

namespace Orvel::Client::Leagues::Api {

struct LeagueTeamMember {
    std::uint64_t id = 0;
    std::string name;
    std::uint64_t totalGamePlayed = 0;  // 0 when unknown
    float winRate = 0;                  // percent, 0 when unknown
};

struct LeagueTeam {
    std::string id;  // the team's full id
    std::string name;
    std::vector<LeagueTeamMember> members;  // in roster order
};

// LeagueTeamMember, LeagueTeam.
void RegisterTeamRecords(const ModuleTypes& types);

}  // namespace Orvel::Client::Leagues::Api
