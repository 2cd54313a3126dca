#include "notifications/held_back_phases.h"

namespace Orvel::Client::Leagues {

using Api::GameflowPhase;

const std::set<GameflowPhase> HeldBackPhases = {
    GameflowPhase::ReadyCheck,      GameflowPhase::ChampSelect,  GameflowPhase::GameStart,
    GameflowPhase::FailedToLaunch,  GameflowPhase::InProgress,   GameflowPhase::Reconnect,
    GameflowPhase::WaitingForStats, GameflowPhase::PreEndOfGame,
};

bool NotificationsAllowedIn(GameflowPhase phase) {
    return !HeldBackPhases.contains(phase);
}

}  // namespace Orvel::Client::Leagues
