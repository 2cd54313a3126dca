#include "leagues/league_queries.h"

#include <algorithm>
#include <string>
#include <vector>

#include "diagnostics/format_message.h"
#include "leagues/mappings.h"
#include "leagues/query_conversion.h"
#include "leagues/standings.h"

namespace Orvel::Client::Leagues {

using wex::Failure;
using wex::FormatMessage;
using wex::MaybeType;

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

MaybeType<Failure, Api::League> LeagueQueries::GetLeague(const std::string& methodName, Api::LeagueQueueType queue,
                                                         const std::vector<std::string>& arguments,
                                                         std::uint64_t requesterId) {
    if (!session_.leagueServiceEnabled) {
        return wex::TextFailure(0, "GetLeague called while League service is not available.");
    }
    const auto answer = module_.Await(module_.CallService<LCDS::LeagueListDTO>("leagues", methodName, arguments));
    if (answer.HasFailure()) {
        const std::string message = FormatMessage("Failed to get leagues %1, api%2: %3",
                                                  {QueueServerName(queue), methodName, answer.GetFailure()});
        LogLeagueError(message);
        return wex::TextFailure(0, message);
    }
    return ConvertLeagueList(answer.Value(), requesterId);
}

void LeagueQueries::GetApexLeagues(Api::LeagueQueueType queue, Api::ApexLeagues& output) {
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

MaybeType<Failure, LCDS::SummonerLeagueItemsDTO> LeagueQueries::LoadSummonerLeaguesData() {
    if (!session_.leagueServiceEnabled) {
        static constexpr char kNotAvailable[] = "LoadSummonerLeaguesData called while League service is not available.";
        LogLeagueWarning(kNotAvailable);
        return wex::TextFailure(0, kNotAvailable);
    }
    auto answer = module_.Await(MyLeaguePositions());
    if (answer.HasFailure()) {
        LogLeagueError(FormatMessage("Failed to get my leagues: %1", {answer.GetFailure()}));
    }
    return answer;
}

std::future<MaybeType<Failure, LCDS::SummonerLeagueItemsDTO>> LeagueQueries::MyLeaguePositions() {
    return module_.CallService<LCDS::SummonerLeagueItemsDTO>("leagues", "getMyLeaguePositions",
                                                             std::vector<std::string>());
}

MaybeType<Failure, std::vector<Api::League>> LeagueQueries::GetSummonerLeagues(std::uint64_t summonerId) {
    if (!session_.leagueServiceEnabled) {
        return wex::ErrorAnswer("League service not available.");
    }
    const auto answer = summonerId == session_.summonerId
                            ? module_.Await(module_.CallService<LCDS::SummonerLeaguesDTO>("leagues", "getAllMyLeagues",
                                                                                          std::vector<std::string>()))
                            : module_.Await(module_.CallService<LCDS::SummonerLeaguesDTO>(
                                  "leagues", "getAllLeaguesForPlayer", std::vector<std::uint64_t>{summonerId}));
    if (answer.HasFailure()) {
        LogLeagueError(FormatMessage("Failed to get leagues: %1", {answer.GetFailure()}));
        return wex::ErrorAnswer(
            FormatMessage("Error requesting league for summoner id: %1, error: %2", {summonerId, answer.GetFailure()}));
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

void LeagueQueries::AddApexMovements(Api::League& league) {
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

MaybeType<Failure, Api::ApexLeagues> LeagueQueries::GetChallengerLeagues() {
    if (!session_.leagueServiceEnabled) {
        return wex::ErrorAnswer("League service not available.");
    }
    Api::ApexLeagues apex;
    for (const Api::LeagueQueueType queue :
         {Api::LeagueQueueType::SOLO5V5, Api::LeagueQueueType::FLEXTT, Api::LeagueQueueType::FLEXSR}) {
        GetApexLeagues(queue, apex);
    }
    return apex;
}

MaybeType<Failure, Api::LeagueTeam> LeagueQueries::GetTeam(const std::string& id) {
    const auto team = module_.Await(module_.InvokeLcds<LCDS::TeamDTO>("summonerTeamService", "findTeamById", id));
    if (team.HasFailure()) {
        LogLeagueError(FormatMessage("Failed to get Team: %1", {team.GetFailure()}));
        return wex::ErrorAnswer(
            FormatMessage("Error requesting team for team id: %1, error: %2", {id, team.GetFailure()}));
    }
    Api::LeagueTeam result{team.Value().teamId.fullId, team.Value().name, MakeTeamMembers(team.Value().roster)};
    const auto stats = module_.Await(
        module_.InvokeLcds<std::vector<LCDS::TeamAggregatedStats>>("playerStatsService", "getTeamAggregatedStats", id));
    if (stats.HasFailure()) {
        // The team is still worth showing, its members without statistics.
        LogLeagueError(FormatMessage("Failed to get Team Static: %1", {stats.GetFailure()}));
    } else {
        ApplyTeamMemberStats(stats.Value(), result.members);
    }
    return result;
}

MaybeType<Failure, std::vector<Api::LeagueChampAndStat>> LeagueQueries::GetSummonerTopChamps(std::uint64_t summonerId) {
    const auto summoner = module_.Request<Api::LeaguesSummoner>(
        HostMethodGet, FormatMessage("/tav-summoner/v1/summoners/%1", {summonerId}));
    if (summoner.HasFailure()) {
        return wex::ErrorAnswer(
            FormatMessage("Error requesting summoner account id for %1: %2", {summonerId, summoner.GetFailure()}));
    }
    const std::uint64_t accountId = summoner.Value().accountId;
    const auto stats = module_.Await(
        module_.InvokeLcds<LCDS::AggregatedStats>("playerStatsService", "getAggregatedStats", accountId, "CLASSIC"));
    if (stats.HasFailure()) {
        LogLeagueError(
            FormatMessage("Failed to get top champions for summoner: %1, %2", {accountId, stats.GetFailure()}));
        return wex::ErrorAnswer(
            FormatMessage("Failed to get top champions for summoner: %1, error: %2", {accountId, stats.GetFailure()}));
    }
    return ConvertTopChampions(stats.Value());
}

MaybeType<Failure, std::vector<Api::ParticipantTiers>> LeagueQueries::GetTiers(
    const std::vector<std::uint64_t>& summonerIds, const std::vector<Api::LeagueQueueType>& queueTypes) {
    const std::vector<std::string> arguments = {ParticipantIdListText(summonerIds), QueueListText(queueTypes)};
    const auto tiers = module_.Await(
        module_.CallService<std::vector<LCDS::LeagueTierAndRankDTO>>("leagues", "getTiersForParticipants", arguments));
    if (tiers.HasFailure()) {
        const std::string text = tiers.GetFailure().ToString();
        LogLeagueError(text);
        return wex::ErrorAnswer(text);
    }
    try {
        return GroupParticipantTiers(tiers.Value());
    } catch (const ParticipantIdError& error) {
        return wex::ErrorAnswer(error.what());
    }
}

}  // namespace Orvel::Client::Leagues
