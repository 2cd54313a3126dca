// A league message that the server pushes while the player plays.
#include "diagnostics/format_message.h"
#include "leagues/league_log.h"
#include "leagues/leagues_module.h"
#include "notifications/league_message.h"

namespace Orvel::Client::Leagues {

void LeaguesModule::HandleLeaguesMessage(const LCDS::SimpleMessage& message) {
    const bool stored = state.notifications.AddLeagueMessage(message);
    if (!IsLeagueUpdateMessage(message)) {
        if (stored) {
            PublishNotifications();
        }
        return;
    }
    if (!state.leagueServiceEnabled) {
        LogLeagueWarning("HandleLeaguesMessage called while League service is not available.");
        return;
    }
    const auto positions = Await(MyLeaguePositions());
    if (positions.HasFailure()) {
        LogLeagueError(
            wex::FormatMessage("Failed to get my league positions and progress: %1", {positions.GetFailure()}));
        return;
    }
    state.notifications.UpdateDemotionShieldWarnings(positions.Value().summonerLeagues);
    // The id asked for names the published resource, whatever logs in meanwhile.
    const std::uint64_t summonerId = state.summonerId;
    const auto leagues = GetSummonerLeagues(summonerId);
    if (leagues.HasFailure()) {
        LogLeagueError(std::string("Failed to get leagues for summoner: ").append(leagues.GetFailure().Message()));
    } else {
        static_cast<void>(LoadSignedSummonerLeaguesData());
        PublishResourceEvent(wex::PluginResourceEventType::Update,
                             wex::FormatMessage("/tav-leagues/v1/summoner-leagues/%1", {summonerId}), leagues.Value());
    }
    PublishNotifications();
}

}  // namespace Orvel::Client::Leagues
