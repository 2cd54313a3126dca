#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "binding/failure.h"
#include "binding/maybe_type.h"
#include "binding/property.h"
#include "host/framework_records.h"
#include "leagues/api_types.h"
#include "leagues/league_queries.h"
#include "leagues/server_dtos.h"
#include "notifications/notification_store.h"
#include "plugin/app_module.h"
#include "signed/signed_standings.h"

namespace Orvel::Client::Leagues {

// The league plug-in's module: the one place that composes the league model,
// the notifications and the signed standings on the framework. It registers
// the types and routes, watches the resources of other plug-ins and the
// server's league messages, and keeps the player's session, the notification
// store, the league queries and the signed standings. The routes' handlers
// are its members and hand the work to those parts. [host-thread]
class LeaguesModule : public wex::AppModule {
  public:
    LeaguesModule();
    ~LeaguesModule() override;

    void RegisterRoutesAndTypes() override;
    // Watches the six resources of other plug-ins and the server's league messages.
    bool OnStart() override;

    const PlayerSession& Session() const { return session_; }
    LeagueNotificationStore& Notifications() { return notifications_; }
    LeagueQueries& Queries() { return queries_; }
    SignedStandings& Signed() { return signed_; }

    // ---- Watched resources (watched_resources.cpp) -----------------------------

    // A complete, successful session logs the player in; the ids are taken
    // when the login begins and dropped only when the session is deleted.
    void OnLoginSession(wex::PluginResourceEventType eventType, const Api::LoginSession& session);
    void OnLoginDataPacket(wex::PluginResourceEventType eventType, const Api::LoginDataPacket& packet);
    // Only the first delivery counts, whatever its event type.
    void OnSeasonRewardConfig(wex::PluginResourceEventType eventType, const Api::SeasonRewardConfig& config);
    void OnLeagueServiceEnabled(wex::PluginResourceEventType eventType, const wex::BindingProperty& value);
    void OnJwtEnabled(wex::PluginResourceEventType eventType, const wex::BindingProperty& value);
    // Keeps the phase and holds notifications back during a game's set-up and play.
    void OnGameflowSession(wex::PluginResourceEventType eventType, const Api::GameflowSession& session);

    // ---- Notifications ---------------------------------------------------------

    // A league message that the server pushed: filed, and on a league update
    // the standings reloaded and published. [may yield]
    void HandleLeaguesMessage(const LCDS::SimpleMessage& message);
    // Announces the whole list as an Update of /tav-leagues/v2/notifications.
    void PublishNotifications();
    // Once the player is logged in and the season-reward configuration has
    // come: rebuilds the warnings from the standings (signed ones when they
    // are switched on) and publishes the list, also when the load failed. [may yield]
    void RefreshLeagueNotifications();

    // ---- Routes, in the order of RegisterRoutes: the league queries answer
    // status 500 on failure ------------------------------------------------------

    wex::MaybeType<wex::Failure, std::vector<Api::League>> GetSummonerLeagues(std::uint64_t summonerId);
    wex::MaybeType<wex::Failure, Api::ApexLeagues> GetChallengerLeagues();
    wex::MaybeType<wex::Failure, Api::LeagueTeam> GetTeam(const std::string& id);
    wex::MaybeType<wex::Failure, std::vector<Api::LeagueChampAndStat>> GetSummonerTopChamps(std::uint64_t summonerId);
    // The listed notifications; never fails.
    wex::MaybeType<wex::Failure, std::vector<Api::LeagueNotificationResource>> GetNotifications();
    wex::MaybeType<wex::Failure, LCDS::SignedSummonerLeagueItemsDTO> GetSignedLeagues();
    // Marks a shown notification acknowledged, its server message first; 403
    // when none was marked. [may yield]
    wex::MaybeType<wex::Failure, void> AcknowledgeNotification(std::uint64_t id);
    wex::MaybeType<wex::Failure, std::vector<Api::ParticipantTiers>> GetTiers(
        const std::vector<std::uint64_t>& summonerIds, const std::vector<Api::LeagueQueueType>& queueTypes);

  private:
    void RegisterRoutes();
    template <class T>
    void Watch(const std::string& uri, void (LeaguesModule::*handler)(wex::PluginResourceEventType, const T&));

    PlayerSession session_;
    LeagueNotificationStore notifications_;
    LeagueQueries queries_{*this, session_};
    SignedStandings signed_{*this, session_};
};

}  // namespace Orvel::Client::Leagues
