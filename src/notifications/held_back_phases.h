#pragma once

#include <set>

#include "leagues/gameflow_session.h"

namespace Orvel::Client::Leagues {

// The phases from the ready check to the end of a game, during which new
// notifications wait: ReadyCheck to PreEndOfGame.
extern const std::set<Api::GameflowPhase> HeldBackPhases;

// Whether notifications may show in a phase: in every phase outside HeldBackPhases.
bool NotificationsAllowedIn(Api::GameflowPhase phase);

}  // namespace Orvel::Client::Leagues
