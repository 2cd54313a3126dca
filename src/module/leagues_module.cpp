#include "module/leagues_module.h"

#include "diagnostics/format_message.h"
#include "notifications/league_messages.h"

namespace Orvel::Client::Leagues {

using wex::Failure;
using wex::MaybeType;

LeaguesModule::LeaguesModule() : AppModule("tav-leagues") {}

LeaguesModule::~LeaguesModule() = default;

void LeaguesModule::RegisterRoutesAndTypes() {
    RegisterLeagueDtos(*this, *TypeRegistry());
    RegisterLeagueApiTypes(*this, *TypeRegistry());
    RegisterRoutes();
}

void LeaguesModule::RegisterRoutes() {
    AddRoute(HostMethodGet, "/tav-leagues/v1/summoner-leagues/{summonerId}", &LeaguesModule::GetSummonerLeagues)
        .AddPathArgument("summonerId", "");
    AddRoute(HostMethodGet, "/tav-leagues/v1/challenger-leagues", &LeaguesModule::GetChallengerLeagues);
    AddRoute(HostMethodGet, "/tav-leagues/v1/teams/{id}", &LeaguesModule::GetTeam).AddPathArgument("id", "");
    AddRoute(HostMethodGet, "/tav-leagues/v1/summoner-top-champs/{summonerId}", &LeaguesModule::GetSummonerTopChamps)
        .AddPathArgument("summonerId", "");
    AddRoute(HostMethodGet, "/tav-leagues/v2/notifications", &LeaguesModule::GetNotifications);
    AddRoute(HostMethodGet, "/tav-leagues/v2/summoner-leagues/current-summoner/signed-leagues",
             &LeaguesModule::GetSignedLeagues);
    AddRoute(HostMethodPost, "/tav-leagues/v2/notifications/{id}/acknowledge", &LeaguesModule::AcknowledgeNotification)
        .AddPathArgument("id", "");
    AddRoute(HostMethodGet, "/tav-leagues/v2/tiers", &LeaguesModule::GetTiers)
        .AddQueryArgument("summonerIds", "")
        .AddQueryArgument("queueTypes", "");
}

template <class T>
void LeaguesModule::Watch(const std::string& uri,
                          void (LeaguesModule::*handler)(wex::PluginResourceEventType, const T&)) {
    Observe<T>(uri, [this, handler](wex::PluginResourceEventType eventType, const T& value) {
        (this->*handler)(eventType, value);
    });
}

bool LeaguesModule::OnStart() {
    Watch<Api::LoginSession>("/tav-login/v1/session", &LeaguesModule::OnLoginSession);
    Watch<Api::LoginDataPacket>("/tav-login/v1/login-data-packet", &LeaguesModule::OnLoginDataPacket);
    Watch<Api::SeasonRewardConfig>("/tav-platform-config/v1/namespaces/SeasonReward",
                                   &LeaguesModule::OnSeasonRewardConfig);
    Watch<wex::BindingProperty>("/tav-platform-config/v1/namespaces/ClientSystemStates/leagueServiceEnabled",
                                &LeaguesModule::OnLeagueServiceEnabled);
    Watch<Api::GameflowSession>("/tav-gameflow/v1/session", &LeaguesModule::OnGameflowSession);
    Watch<wex::BindingProperty>("/tav-platform-config/v1/namespaces/LeagueConfig/JWTEnabled",
                                &LeaguesModule::OnJwtEnabled);
    ObserveLcdsMessages<LCDS::SimpleMessage>(
        "com.orvelsoft.platform.messaging.persistence.SimpleDialogMessage",
        [this](const LCDS::SimpleMessage& message) { HandleLeaguesMessage(message); });
    return true;
}

// ---- Notifications --------------------------------------------------------

void LeaguesModule::HandleLeaguesMessage(const LCDS::SimpleMessage& message) {
    const bool stored = notifications_.AddLeagueMessage(message);
    if (!IsLeagueUpdateMessage(message)) {
        if (stored) {
            PublishNotifications();
        }
        return;
    }
    if (!session_.leagueServiceEnabled) {
        LogLeagueWarning("HandleLeaguesMessage called while League service is not available.");
        return;
    }
    const auto positions = Await(queries_.MyLeaguePositions());
    if (positions.HasFailure()) {
        LogLeagueError(
            wex::FormatMessage("Failed to get my league positions and progress: %1", {positions.GetFailure()}));
        return;
    }
    notifications_.UpdateDemotionShieldWarnings(positions.Value().summonerLeagues);
    // The id asked for names the published resource, whatever logs in meanwhile.
    const std::uint64_t summonerId = session_.summonerId;
    const auto leagues = queries_.GetSummonerLeagues(summonerId);
    if (leagues.HasFailure()) {
        LogLeagueError(std::string("Failed to get leagues for summoner: ").append(leagues.GetFailure().Message()));
    } else {
        static_cast<void>(signed_.LoadSignedSummonerLeaguesData());
        PublishResourceEvent(wex::PluginResourceEventType::Update,
                             wex::FormatMessage("/tav-leagues/v1/summoner-leagues/%1", {summonerId}), leagues.Value());
    }
    PublishNotifications();
}

void LeaguesModule::PublishNotifications() {
    PublishResourceEvent(wex::PluginResourceEventType::Update, "/tav-leagues/v2/notifications",
                         notifications_.GetNotifications());
}

void LeaguesModule::RefreshLeagueNotifications() {
    if (!session_.loggedIn || !session_.seasonRewardConfigReceived) {
        return;
    }
    if (session_.jwtEnabled) {
        const auto signedLeagues = signed_.LoadSignedSummonerLeaguesData();
        if (!signedLeagues.HasFailure()) {
            const auto& entries = signedLeagues.Value().summonerLeagues;
            notifications_.UpdateDecayWarnings(std::vector<LCDS::LeagueItemDTO>(entries.begin(), entries.end()));
        }
    } else {
        const auto plainLeagues = queries_.LoadSummonerLeaguesData();
        if (!plainLeagues.HasFailure()) {
            notifications_.UpdateDecayWarnings(plainLeagues.Value().summonerLeagues);
        }
    }
    // Also after a failed load: login messages filed before wait for this.
    PublishNotifications();
}

// ---- Routes ---------------------------------------------------------------

MaybeType<Failure, std::vector<Api::League>> LeaguesModule::GetSummonerLeagues(std::uint64_t summonerId) {
    return queries_.GetSummonerLeagues(summonerId);
}

MaybeType<Failure, Api::ApexLeagues> LeaguesModule::GetChallengerLeagues() {
    return queries_.GetChallengerLeagues();
}

MaybeType<Failure, Api::LeagueTeam> LeaguesModule::GetTeam(const std::string& id) {
    return queries_.GetTeam(id);
}

MaybeType<Failure, std::vector<Api::LeagueChampAndStat>> LeaguesModule::GetSummonerTopChamps(std::uint64_t summonerId) {
    return queries_.GetSummonerTopChamps(summonerId);
}

MaybeType<Failure, std::vector<Api::LeagueNotificationResource>> LeaguesModule::GetNotifications() {
    return notifications_.GetNotifications();
}

MaybeType<Failure, LCDS::SignedSummonerLeagueItemsDTO> LeaguesModule::GetSignedLeagues() {
    return signed_.GetSignedLeagues();
}

MaybeType<Failure, void> LeaguesModule::AcknowledgeNotification(std::uint64_t id) {
    return notifications_.AcknowledgeNotification(id, session_.accountId,
                                                  [this](std::uint64_t accountId, const std::string& msgId) {
                                                      return AcknowledgeOnServer(*this, accountId, msgId);
                                                  });
}

MaybeType<Failure, std::vector<Api::ParticipantTiers>> LeaguesModule::GetTiers(
    const std::vector<std::uint64_t>& summonerIds, const std::vector<Api::LeagueQueueType>& queueTypes) {
    return queries_.GetTiers(summonerIds, queueTypes);
}

}  // namespace Orvel::Client::Leagues
