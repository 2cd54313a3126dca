// A player's leagues: the current player's own or another player's, each
// with the requester's division, the apex ones set against the other apex
// league of their queue.
#include <algorithm>
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

namespace {

std::vector<Api::League> ConvertSummonerLeagues(const LCDS::SummonerLeaguesDTO& answer, std::uint64_t summonerId) {
    std::vector<Api::League> leagues;
    for (const LCDS::SummonerLeagueListDTO& list : answer.summonerLeagues) {
        Api::League league = ConvertLeagueList(list, summonerId);
        league.requesterLeagueRank = LeagueRankOf(list.requestorsRank, league.leagueTier);
        leagues.push_back(std::move(league));
    }
    return leagues;
}

// The first league of the queue; null when there is none.
Api::League* FindQueue(std::vector<Api::League>& leagues, Api::LeagueQueueType queue) {
    const auto found = std::find_if(leagues.begin(), leagues.end(),
                                    [queue](const Api::League& league) { return league.queueType == queue; });
    return found != leagues.end() ? &*found : nullptr;
}

}  // namespace

wex::MaybeType<wex::Failure, std::vector<Api::League>> LeaguesModule::GetSummonerLeagues(std::uint64_t summonerId) {
    if (!state.leagueServiceEnabled) {
        return wex::ErrorAnswer("League service not available.");
    }
    const auto answer =
        summonerId == state.summonerId
            ? Await(CallService<LCDS::SummonerLeaguesDTO>("leagues", "getAllMyLeagues", std::vector<std::string>()))
            : Await(CallService<LCDS::SummonerLeaguesDTO>("leagues", "getAllLeaguesForPlayer",
                                                          std::vector<std::uint64_t>{summonerId}));
    if (answer.HasFailure()) {
        LogLeagueError(wex::FormatMessage("Failed to get leagues: %1", {answer.GetFailure()}));
        return wex::ErrorAnswer(wex::FormatMessage("Error requesting league for summoner id: %1, error: %2",
                                                   {summonerId, answer.GetFailure()}));
    }
    std::vector<Api::League> leagues = ConvertSummonerLeagues(answer.Value(), summonerId);
    for (Api::League& league : leagues) {
        if (IsApexTier(league.leagueTier)) {
            AddApexMovements(league);
        }
    }
    for (Api::League& league : leagues) {
        AssignStandingPositions(league, Api::League());
    }
    return leagues;
}

void LeaguesModule::AddApexMovements(Api::League& league) {
    Api::ApexLeagues apex;
    GetApexLeagues(league.queueType, apex);
    Api::League* const challenger = FindQueue(apex.challengers, league.queueType);
    if (challenger != nullptr) {
        league.challengerNextPromotionUpdateInMs = challenger->challengerNextPromotionUpdateInMs;
    }
    if (league.leagueTier == Api::LeagueTier::MASTER) {
        if (challenger != nullptr) {
            MarkApexMovements(*challenger, league);
        }
    } else if (Api::League* const master = FindQueue(apex.masters, league.queueType); master != nullptr) {
        MarkApexMovements(league, *master);
    }
}

}  // namespace Orvel::Client::Leagues
