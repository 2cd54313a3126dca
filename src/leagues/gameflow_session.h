#pragma once

#include <cstdint>

#include "binding/property.h"

namespace Orvel::Client::Leagues {
class ModuleTypes;
}

namespace Orvel::Client::Leagues::Api {

enum class GameflowPhase : std::int32_t {
    None = 0,
    Lobby = 1,
    Matchmaking = 2,
    CheckedIntoTournament = 3,
    ReadyCheck = 4,
    ChampSelect = 5,
    GameStart = 6,
    FailedToLaunch = 7,
    InProgress = 8,
    Reconnect = 9,
    WaitingForStats = 10,
    PreEndOfGame = 11,
    EndOfGame = 12,
    TerminatedInError = 13,
};

struct Queue {
    wex::BindingProperty type;  // held as received; read as a server queue where needed
};

struct GameflowGameData {
    Queue queue;
};

// The part of the gameflow plug-in's session that the plug-in reads.
struct GameflowSession {
    GameflowPhase phase = GameflowPhase::None;
    GameflowGameData gameData;
};

// GameflowPhase, Queue, GameflowGameData, GameflowSession.
void RegisterGameflowRecords(const ModuleTypes& types);

}  // namespace Orvel::Client::Leagues::Api
