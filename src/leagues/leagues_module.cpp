#include "leagues/leagues_module.h"

#include "leagues/api_types.h"
#include "leagues/league_dtos.h"
#include "types/native_conversion.h"

namespace Orvel::Client::Leagues {

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
    SubscribeLcdsEvent("com.orvelsoft.platform.messaging.persistence.SimpleDialogMessage",
                       [this](const wex::PluginLcdsEvent& event) {
                           LCDS::SimpleMessage message;
                           wex::BindingProperty status;
                           wex::FromBinding(status, message, event.body, "<value>", *TypeRegistry());
                           if (status.IsValid()) {
                               HandleLeaguesMessage(message);
                           }
                       });
    return true;
}

}  // namespace Orvel::Client::Leagues
