// The query routes on the apex leagues, teams, top champions and tiers.
#include <string>
#include <vector>

#include "binding/failure.h"
#include "diagnostics/format_message.h"
#include "leagues/league_log.h"
#include "leagues/leagues_module.h"
#include "leagues/participant_id.h"
#include "leagues/participant_tiers_conversion.h"
#include "leagues/team_member_stats.h"
#include "leagues/tiers_request_texts.h"
#include "leagues/top_champions.h"

namespace Orvel::Client::Leagues {

using wex::Failure;
using wex::FormatMessage;
using wex::MaybeType;

MaybeType<Failure, Api::ApexLeagues> LeaguesModule::GetChallengerLeagues() {
    if (!state.leagueServiceEnabled) {
        return wex::ErrorAnswer("League service not available.");
    }
    Api::ApexLeagues apex;
    for (const Api::LeagueQueueType queue :
         {Api::LeagueQueueType::SOLO5V5, Api::LeagueQueueType::FLEXTT, Api::LeagueQueueType::FLEXSR}) {
        GetApexLeagues(queue, apex);
    }
    return apex;
}

MaybeType<Failure, Api::LeagueTeam> LeaguesModule::GetTeam(const std::string& id) {
    const auto team = Await(InvokeLcds<LCDS::TeamDTO>("summonerTeamService", "findTeamById", id));
    if (team.HasFailure()) {
        LogLeagueError(FormatMessage("Failed to get Team: %1", {team.GetFailure()}));
        return wex::ErrorAnswer(
            FormatMessage("Error requesting team for team id: %1, error: %2", {id, team.GetFailure()}));
    }
    Api::LeagueTeam result{team.Value().teamId.fullId, team.Value().name, MakeTeamMembers(team.Value().roster)};
    const auto stats =
        Await(InvokeLcds<std::vector<LCDS::TeamAggregatedStats>>("playerStatsService", "getTeamAggregatedStats", id));
    if (stats.HasFailure()) {
        // The team is still worth showing, its members without statistics.
        LogLeagueError(FormatMessage("Failed to get Team Static: %1", {stats.GetFailure()}));
    } else {
        ApplyTeamMemberStats(stats.Value(), result.members);
    }
    return result;
}

MaybeType<Failure, std::vector<Api::LeagueChampAndStat>> LeaguesModule::GetSummonerTopChamps(std::uint64_t summonerId) {
    const auto summoner =
        Request<Api::LeaguesSummoner>(HostMethodGet, FormatMessage("/tav-summoner/v1/summoners/%1", {summonerId}));
    if (summoner.HasFailure()) {
        return wex::ErrorAnswer(
            FormatMessage("Error requesting summoner account id for %1: %2", {summonerId, summoner.GetFailure()}));
    }
    const std::uint64_t accountId = summoner.Value().accountId;
    const auto stats =
        Await(InvokeLcds<LCDS::AggregatedStats>("playerStatsService", "getAggregatedStats", accountId, "CLASSIC"));
    if (stats.HasFailure()) {
        LogLeagueError(
            FormatMessage("Failed to get top champions for summoner: %1, %2", {accountId, stats.GetFailure()}));
        return wex::ErrorAnswer(
            FormatMessage("Failed to get top champions for summoner: %1, error: %2", {accountId, stats.GetFailure()}));
    }
    return ConvertTopChampions(stats.Value());
}

MaybeType<Failure, std::vector<Api::ParticipantTiers>> LeaguesModule::GetTiers(
    const std::vector<std::uint64_t>& summonerIds, const std::vector<Api::LeagueQueueType>& queueTypes) {
    const std::vector<std::string> arguments = {ParticipantIdListText(summonerIds), QueueListText(queueTypes)};
    const auto tiers =
        Await(CallService<std::vector<LCDS::LeagueTierAndRankDTO>>("leagues", "getTiersForParticipants", arguments));
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
