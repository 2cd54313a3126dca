#pragma once

#include <cstdint>

#include "leagues/gameflow_session.h"
#include "leagues/league_list_dto.h"
#include "notifications/notification_store.h"

namespace Orvel::Client::Leagues {

// What the module knows of the client around it, learnt from the resources it
// watches, and what it keeps between requests. No lock: the host delivers one
// event or request at a time, and code that waits reads it again afterwards.
struct LeagueState {
    std::uint64_t summonerId = 0;  // of the logged-in player; 0 when nobody is logged in
    std::uint64_t accountId = 0;   // of the logged-in player; 0 when nobody is logged in
    LeagueNotificationStore notifications;
    bool seasonRewardConfigReceived = false;  // never false again once true
    bool leagueServiceEnabled = false;
    bool loggedIn = false;  // a complete, successful login session is present
    bool jwtEnabled = false;
    LCDS::SignedSummonerLeagueItemsDTO signedLeagues;
    Api::GameflowPhase gameflowPhase = Api::GameflowPhase::None;
    bool revalidationArmed = false;
};

}  // namespace Orvel::Client::Leagues
