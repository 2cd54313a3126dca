// What the watched resources of other plug-ins mean for the module: each
// handler keeps its part of the player's session as its resource changes.
#include "module/watched_resources.h"

#include <string>

#include "diagnostics/log_system.h"
#include "module/leagues_module.h"
#include "notifications/league_messages.h"
#include "notifications/notification_store.h"
#include "types/native_conversion.h"

namespace Orvel::Client::Leagues {

namespace {

std::optional<LCDS::QueueType> ServerQueueOf(const wex::BindingProperty& type,
                                             const wex::BindingTypeRegistry& registry) {
    const wex::MaybeType<wex::Failure, LCDS::QueueType> queue =
        wex::FromBinding<LCDS::QueueType>(type, "<value>", registry);
    // A missing type converts to nothing at all, which is no queue either.
    if (queue.HasFailure() || queue.Value() == LCDS::QueueType{}) {
        wex::Trace("queue type %s unsupported for challenger recall, no signed leagues data will be sent to TB",
                   type.ToString().c_str());
        return std::nullopt;
    }
    return queue.Value();
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

using wex::PluginResourceEventType;

void LeaguesModule::OnLoginSession(PluginResourceEventType eventType, const Api::LoginSession& session) {
    if (eventType == PluginResourceEventType::Delete) {
        session_.loggedIn = false;
        session_.summonerId = 0;
        session_.accountId = 0;
        return;
    }
    const bool loggedIn =
        session.state == Api::LoginSessionStates::SUCCEEDED && session.summonerId != 0 && session.accountId != 0;
    if (loggedIn && !session_.loggedIn) {
        session_.summonerId = session.summonerId;
        session_.accountId = session.accountId;
    }
    session_.loggedIn = loggedIn;
}

void LeaguesModule::OnLoginDataPacket(PluginResourceEventType eventType, const Api::LoginDataPacket& packet) {
    if (eventType == PluginResourceEventType::Delete) {
        return;
    }
    notifications_.AddLoginMessages(packet.simpleMessages, [this](std::uint64_t accountId, const std::string& msgId) {
        return AcknowledgeOnServer(*this, accountId, msgId);
    });
    RefreshLeagueNotifications();
}

void LeaguesModule::OnSeasonRewardConfig(PluginResourceEventType /*eventType*/, const Api::SeasonRewardConfig& config) {
    if (session_.seasonRewardConfigReceived) {
        return;
    }
    session_.seasonRewardConfigReceived = true;
    notifications_.SetQualificationWarningEnabled(config.QualificationWarningEnabled);
    RefreshLeagueNotifications();
}

void LeaguesModule::OnLeagueServiceEnabled(PluginResourceEventType eventType, const wex::BindingProperty& value) {
    session_.leagueServiceEnabled = eventType != PluginResourceEventType::Delete && value.ToBool();
}

void LeaguesModule::OnJwtEnabled(PluginResourceEventType eventType, const wex::BindingProperty& value) {
    session_.jwtEnabled = eventType != PluginResourceEventType::Delete && value.ToBool();
}

void LeaguesModule::OnGameflowSession(PluginResourceEventType eventType, const Api::GameflowSession& session) {
    const GameflowChange change = ReadGameflowChange(session_.gameflowPhase, eventType, session, *TypeRegistry());
    session_.gameflowPhase = change.phase;
    if (notifications_.SetNotificationsAllowed(change.notificationsAllowed)) {
        PublishNotifications();
    }
    if (change.handsOffSignedLeagues) {
        signed_.PassSignedLeaguesToTeamBuilder(*change.queue);
    }
}

}  // namespace Orvel::Client::Leagues
