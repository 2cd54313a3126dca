#pragma once

#include "leagues/league.h"

namespace Orvel::Client::Leagues {

// Numbers the standings of a league in their current order and sets each
// position delta where a previous position is known. Every division counts
// from 1, except a master league's: only its first division is numbered,
// continuing after the reference league's maximum size (the challenger places).
void AssignStandingPositions(Api::League& league, const Api::League& reference);

}  // namespace Orvel::Client::Leagues
