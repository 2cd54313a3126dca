#pragma once

#include <cstdint>
#include <future>
#include <string>
#include <vector>

#include "binding/failure.h"
#include "binding/maybe_type.h"
#include "binding/property.h"
#include "host/framework_records.h"
#include "leagues/champion_stats.h"
#include "leagues/gameflow_session.h"
#include "leagues/league.h"
#include "leagues/league_list_dto.h"
#include "leagues/league_state.h"
#include "leagues/league_team.h"
#include "leagues/login_records.h"
#include "leagues/message_dto.h"
#include "leagues/participant_tiers.h"
#include "notifications/notification_resource.h"
#include "plugin/app_module.h"

namespace Orvel::Client::Leagues {

// Second argument of "getMasterLeagueTopX": how many master places to fetch.
inline constexpr std::uint64_t MaxMasterLeagueEntries = 200;

// The league plug-in's module: its types and routes, the watched state and
// the league logic on top of the framework. [host-thread]
class LeaguesModule : public wex::AppModule {
  public:
    LeaguesModule();
    ~LeaguesModule() override;

    void RegisterRoutesAndTypes() override;
    // Watches the six resources of other plug-ins and the server's league messages.
    bool OnStart() override;

    LeagueState& WatchedState() { return state; }

    // ---- Watched resources ---------------------------------------------------

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
    // A league message that the server pushed: filed, and on a league update
    // the standings reloaded and published. [may yield]
    void HandleLeaguesMessage(const LCDS::SimpleMessage& message);

    // ---- Notifications ---------------------------------------------------------

    // Announces the whole list as an Update of /tav-leagues/v2/notifications.
    void PublishNotifications();
    // Route: the listed notifications; never fails.
    wex::MaybeType<wex::Failure, std::vector<Api::LeagueNotificationResource>> GetNotifications();
    // Route: marks a shown notification acknowledged, its server message
    // first; 403 when none was marked. [may yield]
    wex::MaybeType<wex::Failure, void> AcknowledgeNotification(std::uint64_t id);
    // Acknowledges one stored message on the server; false, logged, when that
    // failed. [may yield]
    bool AcknowledgeOnServer(std::uint64_t accountId, const std::string& msgId);
    // Once the player is logged in and the season-reward configuration has
    // come: rebuilds the warnings from the standings (signed ones when they
    // are switched on) and publishes the list, also when the load failed. [may yield]
    void RefreshLeagueNotifications();

    // ---- Signed standings ------------------------------------------------------

    // Replaces the cache from the server and announces it; with either switch
    // off, empties it instead and fails. [may yield]
    wex::MaybeType<wex::Failure, LCDS::SignedSummonerLeagueItemsDTO> LoadSignedSummonerLeaguesData();
    // Arms the revalidation timer from the cached tokens, unless one is pending.
    void UpdateSignedSummonerLeaguesData();
    void OnRevalidationTimer();
    // Hands the cached token of the queue to the matchmaking service. [may yield]
    void PassSignedLeaguesToTeamBuilder(LCDS::QueueType queue);
    // Route: the cache, loaded first when it is empty. [may yield]
    wex::MaybeType<wex::Failure, LCDS::SignedSummonerLeagueItemsDTO> GetSignedLeagues();

    // ---- Fetching from the league service --------------------------------------
    // Failures of the server calls are logged as errors where they are met.

    // One league list of the "leagues" service, converted for the requester.
    // Fails without a code, and without a log line when the service is off.
    wex::MaybeType<wex::Failure, Api::League> GetLeague(const std::string& methodName, Api::LeagueQueueType queue,
                                                        const std::vector<std::string>& arguments,
                                                        std::uint64_t requesterId);
    // Appends the challenger and the master league of a queue, their apex
    // movements marked and their places numbered, or nothing when either
    // cannot be fetched.
    void GetApexLeagues(Api::LeagueQueueType queue, Api::ApexLeagues& output);
    // The current player's league entries.
    wex::MaybeType<wex::Failure, LCDS::SummonerLeagueItemsDTO> LoadSummonerLeaguesData();

    // ---- Routes: each failure answers status 500 ------------------------------

    // A player's leagues (the current player's own, or another's), the apex
    // ones with their movements, every one numbered from 1.
    wex::MaybeType<wex::Failure, std::vector<Api::League>> GetSummonerLeagues(std::uint64_t summonerId);
    // The apex leagues of the three ranked queues, those that could be fetched.
    wex::MaybeType<wex::Failure, Api::ApexLeagues> GetChallengerLeagues();
    // A team and its members' statistics, which may be missing.
    wex::MaybeType<wex::Failure, Api::LeagueTeam> GetTeam(const std::string& id);
    wex::MaybeType<wex::Failure, std::vector<Api::LeagueChampAndStat>> GetSummonerTopChamps(std::uint64_t summonerId);
    wex::MaybeType<wex::Failure, std::vector<Api::ParticipantTiers>> GetTiers(
        const std::vector<std::uint64_t>& summonerIds, const std::vector<Api::LeagueQueueType>& queueTypes);

  private:
    void RegisterRoutes();
    template <class T>
    void Watch(const std::string& uri, void (LeaguesModule::*handler)(wex::PluginResourceEventType, const T&));
    // The challenger league's next update and the apex movements of a
    // player's master or challenger league.
    void AddApexMovements(Api::League& league);
    // The server call of the current player's league entries, not yet awaited.
    std::future<wex::MaybeType<wex::Failure, LCDS::SummonerLeagueItemsDTO>> MyLeaguePositions();

    LeagueState state;
};

}  // namespace Orvel::Client::Leagues
