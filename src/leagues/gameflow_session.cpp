#include "leagues/gameflow_session.h"

#include "leagues/module_types.h"

namespace Orvel::Client::Leagues::Api {

void RegisterGameflowRecords(const ModuleTypes& types) {
    types.Enum<GameflowPhase>("GameflowPhase")
        .Value("None", GameflowPhase::None)
        .Value("Lobby", GameflowPhase::Lobby)
        .Value("Matchmaking", GameflowPhase::Matchmaking)
        .Value("CheckedIntoTournament", GameflowPhase::CheckedIntoTournament)
        .Value("ReadyCheck", GameflowPhase::ReadyCheck)
        .Value("ChampSelect", GameflowPhase::ChampSelect)
        .Value("GameStart", GameflowPhase::GameStart)
        .Value("FailedToLaunch", GameflowPhase::FailedToLaunch)
        .Value("InProgress", GameflowPhase::InProgress)
        .Value("Reconnect", GameflowPhase::Reconnect)
        .Value("WaitingForStats", GameflowPhase::WaitingForStats)
        .Value("PreEndOfGame", GameflowPhase::PreEndOfGame)
        .Value("EndOfGame", GameflowPhase::EndOfGame)
        .Value("TerminatedInError", GameflowPhase::TerminatedInError);
    types.Struct<Queue>("Queue").Field("type", &Queue::type);
    types.Struct<GameflowGameData>("GameflowGameData").Field("queue", &GameflowGameData::queue);
    types.Struct<GameflowSession>("GameflowSession")
        .Field("phase", &GameflowSession::phase)
        .Field("gameData", &GameflowSession::gameData);
}

}  // namespace Orvel::Client::Leagues::Api
