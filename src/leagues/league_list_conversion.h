#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "leagues/league.h"
#include "leagues/league_list_dto.h"

namespace Orvel::Client::Leagues {

// The API league of a server league list (or of a summoner league list, whose
// maximum size is 0): its divisions in rank order, each with its standings in
// the server's order, unnumbered. Inactive entries are dropped below the apex
// tiers, except the requester's own. The requester rank stays NA.
Api::League ConvertLeagueList(const LCDS::LeagueListDTO& list, std::uint64_t requesterId);

// The name without every character that is not an ASCII letter.
std::string StripLeagueName(std::string_view name);

}  // namespace Orvel::Client::Leagues
