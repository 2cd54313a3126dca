// The handlers of the watched resources: each keeps its part of the league
// state as its resource changes.
#include <string>

#include "leagues/gameflow_change.h"
#include "leagues/leagues_module.h"

namespace Orvel::Client::Leagues {

using wex::PluginResourceEventType;

void LeaguesModule::OnLoginSession(PluginResourceEventType eventType, const Api::LoginSession& session) {
    if (eventType == PluginResourceEventType::Delete) {
        state.loggedIn = false;
        state.summonerId = 0;
        state.accountId = 0;
        return;
    }
    const bool loggedIn =
        session.state == Api::LoginSessionStates::SUCCEEDED && session.summonerId != 0 && session.accountId != 0;
    if (loggedIn && !state.loggedIn) {
        state.summonerId = session.summonerId;
        state.accountId = session.accountId;
    }
    state.loggedIn = loggedIn;
}

void LeaguesModule::OnLoginDataPacket(PluginResourceEventType eventType, const Api::LoginDataPacket& packet) {
    if (eventType == PluginResourceEventType::Delete) {
        return;
    }
    state.notifications.AddLoginMessages(
        packet.simpleMessages,
        [this](std::uint64_t accountId, const std::string& msgId) { return AcknowledgeOnServer(accountId, msgId); });
    RefreshLeagueNotifications();
}

void LeaguesModule::OnSeasonRewardConfig(PluginResourceEventType /*eventType*/, const Api::SeasonRewardConfig& config) {
    if (state.seasonRewardConfigReceived) {
        return;
    }
    state.seasonRewardConfigReceived = true;
    state.notifications.SetQualificationWarningEnabled(config.QualificationWarningEnabled);
    RefreshLeagueNotifications();
}

void LeaguesModule::OnLeagueServiceEnabled(PluginResourceEventType eventType, const wex::BindingProperty& value) {
    state.leagueServiceEnabled = eventType != PluginResourceEventType::Delete && value.ToBool();
}

void LeaguesModule::OnJwtEnabled(PluginResourceEventType eventType, const wex::BindingProperty& value) {
    state.jwtEnabled = eventType != PluginResourceEventType::Delete && value.ToBool();
}

void LeaguesModule::OnGameflowSession(PluginResourceEventType eventType, const Api::GameflowSession& session) {
    const GameflowChange change = ReadGameflowChange(state.gameflowPhase, eventType, session, *TypeRegistry());
    state.gameflowPhase = change.phase;
    if (state.notifications.SetNotificationsAllowed(change.notificationsAllowed)) {
        PublishNotifications();
    }
    if (change.handsOffSignedLeagues) {
        PassSignedLeaguesToTeamBuilder(*change.queue);
    }
}

}  // namespace Orvel::Client::Leagues
