#pragma once

#include <optional>

#include "host/framework_records.h"
#include "leagues/api_types.h"
#include "leagues/server_dtos.h"
#include "types/registry.h"

namespace Orvel::Client::Leagues {

// What one change of the gameflow session means for the module.
struct GameflowChange {
    Api::GameflowPhase phase = Api::GameflowPhase::None;
    // The session's server queue; none when its queue type is none of the
    // server's ranked queues, or the session is gone.
    std::optional<LCDS::QueueType> queue;
    // False from the ready check to the end of a game.
    bool notificationsAllowed = true;
    // Entering champion select in a ranked queue: the signed standing of that
    // queue goes to the matchmaking service.
    bool handsOffSignedLeagues = false;
};

// The change from the phase before it to the session delivered with
// eventType (a Delete ends the session). A queue type that is not a server
// queue is reported on the trace channel.
GameflowChange ReadGameflowChange(Api::GameflowPhase previous, wex::PluginResourceEventType eventType,
                                  const Api::GameflowSession& session, const wex::BindingTypeRegistry& registry);

}  // namespace Orvel::Client::Leagues
