// The fetches from the league service that the routes and the notifications share.
#include <string>
#include <vector>

#include "binding/failure.h"
#include "diagnostics/format_message.h"
#include "leagues/apex_movements.h"
#include "leagues/league_list_conversion.h"
#include "leagues/league_log.h"
#include "leagues/leagues_module.h"
#include "leagues/server_mappings.h"
#include "leagues/standing_positions.h"

namespace Orvel::Client::Leagues {

using wex::Failure;
using wex::MaybeType;

MaybeType<Failure, Api::League> LeaguesModule::GetLeague(const std::string& methodName, Api::LeagueQueueType queue,
                                                         const std::vector<std::string>& arguments,
                                                         std::uint64_t requesterId) {
    if (!state.leagueServiceEnabled) {
        return wex::TextFailure(0, "GetLeague called while League service is not available.");
    }
    const auto answer = Await(CallService<LCDS::LeagueListDTO>("leagues", methodName, arguments));
    if (answer.HasFailure()) {
        const std::string message = wex::FormatMessage("Failed to get leagues %1, api%2: %3",
                                                       {QueueServerName(queue), methodName, answer.GetFailure()});
        LogLeagueError(message);
        return wex::TextFailure(0, message);
    }
    return ConvertLeagueList(answer.Value(), requesterId);
}

void LeaguesModule::GetApexLeagues(Api::LeagueQueueType queue, Api::ApexLeagues& output) {
    const std::string serverQueue(QueueServerName(queue));
    const auto challenger = GetLeague("getChallengerLeague", queue, {serverQueue}, 0);
    const auto master =
        GetLeague("getMasterLeagueTopX", queue, {serverQueue, std::to_string(MaxMasterLeagueEntries)}, 0);
    if (challenger.HasFailure() || master.HasFailure()) {
        return;
    }
    Api::League challengerLeague = challenger.Value();
    Api::League masterLeague = master.Value();
    MarkApexMovements(challengerLeague, masterLeague);
    // Master places continue after the challenger places.
    AssignStandingPositions(masterLeague, challengerLeague);
    AssignStandingPositions(challengerLeague, challengerLeague);
    output.masters.push_back(std::move(masterLeague));
    output.challengers.push_back(std::move(challengerLeague));
}

MaybeType<Failure, LCDS::SummonerLeagueItemsDTO> LeaguesModule::LoadSummonerLeaguesData() {
    if (!state.leagueServiceEnabled) {
        static constexpr char kNotAvailable[] = "LoadSummonerLeaguesData called while League service is not available.";
        LogLeagueWarning(kNotAvailable);
        return wex::TextFailure(0, kNotAvailable);
    }
    auto answer = Await(MyLeaguePositions());
    if (answer.HasFailure()) {
        LogLeagueError(wex::FormatMessage("Failed to get my leagues: %1", {answer.GetFailure()}));
    }
    return answer;
}

std::future<MaybeType<Failure, LCDS::SummonerLeagueItemsDTO>> LeaguesModule::MyLeaguePositions() {
    return CallService<LCDS::SummonerLeagueItemsDTO>("leagues", "getMyLeaguePositions", std::vector<std::string>());
}

}  // namespace Orvel::Client::Leagues
