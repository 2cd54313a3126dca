#include "leagues/gameflow_change.h"

#include "diagnostics/trace.h"
#include "notifications/held_back_phases.h"
#include "types/native_conversion.h"

namespace Orvel::Client::Leagues {

namespace {

std::optional<LCDS::QueueType> ServerQueueOf(const wex::BindingProperty& type,
                                             const wex::BindingTypeRegistry& registry) {
    LCDS::QueueType queue{};
    wex::BindingProperty status;
    wex::FromBinding(status, queue, type, "<value>", registry);
    // A missing type converts to nothing at all, which is no queue either.
    if (!status.IsValid() || queue == LCDS::QueueType{}) {
        wex::Trace("queue type %s unsupported for challenger recall, no signed leagues data will be sent to TB",
                   type.ToString().c_str());
        return std::nullopt;
    }
    return queue;
}

}  // namespace

GameflowChange ReadGameflowChange(Api::GameflowPhase previous, wex::PluginResourceEventType eventType,
                                  const Api::GameflowSession& session, const wex::BindingTypeRegistry& registry) {
    GameflowChange change;
    if (eventType == wex::PluginResourceEventType::Delete) {
        return change;
    }
    change.phase = session.phase;
    change.queue = ServerQueueOf(session.gameData.queue.type, registry);
    change.notificationsAllowed = NotificationsAllowedIn(change.phase);
    change.handsOffSignedLeagues = change.queue.has_value() && previous != Api::GameflowPhase::ChampSelect &&
                                   change.phase == Api::GameflowPhase::ChampSelect;
    return change;
}

}  // namespace Orvel::Client::Leagues
