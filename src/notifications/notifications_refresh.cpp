// The warnings rebuilt from the player's standings after login.
#include <vector>

#include "leagues/leagues_module.h"

namespace Orvel::Client::Leagues {

void LeaguesModule::RefreshLeagueNotifications() {
    if (!state.loggedIn || !state.seasonRewardConfigReceived) {
        return;
    }
    if (state.jwtEnabled) {
        const auto signedLeagues = LoadSignedSummonerLeaguesData();
        if (!signedLeagues.HasFailure()) {
            const auto& entries = signedLeagues.Value().summonerLeagues;
            state.notifications.UpdateDecayWarnings(std::vector<LCDS::LeagueItemDTO>(entries.begin(), entries.end()));
        }
    } else {
        const auto plainLeagues = LoadSummonerLeaguesData();
        if (!plainLeagues.HasFailure()) {
            state.notifications.UpdateDecayWarnings(plainLeagues.Value().summonerLeagues);
        }
    }
    // Also after a failed load: login messages filed before wait for this.
    PublishNotifications();
}

}  // namespace Orvel::Client::Leagues
