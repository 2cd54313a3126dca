#pragma once

#include "leagues/league.h"

namespace Orvel::Client::Leagues {

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
