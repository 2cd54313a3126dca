#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "leagues/api_types.h"
#include "leagues/server_dtos.h"

namespace Orvel::Client::Leagues {

// The API league of a server league list (or of a summoner league list, whose
// maximum size is 0): its divisions in rank order, each with its standings in
// the server's order, unnumbered. Inactive entries are dropped below the apex
// tiers, except the requester's own. The requester rank stays NA.
Api::League ConvertLeagueList(const LCDS::LeagueListDTO& list, std::uint64_t requesterId);

// The name without every character that is not an ASCII letter.
std::string StripLeagueName(std::string_view name);

// Numbers the standings of a league in their current order and sets each
// position delta where a previous position is known. Every division counts
// from 1, except a master league's: only its first division is numbered,
// continuing after the reference league's maximum size (the challenger places).
void AssignStandingPositions(Api::League& league, const Api::League& reference);

// The order of apex standings: true when a is placed before b. Between
// standings of which one is in a promotion series, the series decides first
// (more games played, more won, fewer lost, more results); then more points,
// more wins, fewer losses, the smaller previous position and the name in byte
// order. False for standings equal in all of these.
bool ApexStandingRanksAbove(const Api::LeagueStanding& a, const Api::LeagueStanding& b);

// Sorts the first division of a challenger and of a master league of one
// queue by the apex order and marks who moves: the challenger league's
// maximum size is its number of places; masters who would take one get
// pendingPromotion, challengers who would lose theirs pendingDemotion.
void MarkApexMovements(Api::League& challenger, Api::League& master);

}  // namespace Orvel::Client::Leagues
