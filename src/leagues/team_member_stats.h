#pragma once

#include <vector>

#include "leagues/league_team.h"
#include "leagues/statistics_dto.h"
#include "leagues/team_dto.h"

namespace Orvel::Client::Leagues {

// One member per distinct player of the roster, in roster order (the first
// entry of a player wins), with no games and no win rate yet.
std::vector<Api::LeagueTeamMember> MakeTeamMembers(const LCDS::RosterDTO& roster);

// Fills each member's games and win rate from the team's statistics, read
// from the totals over all champions. A later record of a player overwrites
// an earlier one; players who are not members are ignored.
void ApplyTeamMemberStats(const std::vector<LCDS::TeamAggregatedStats>& teamStats,
                          std::vector<Api::LeagueTeamMember>& members);

}  // namespace Orvel::Client::Leagues
