#pragma once

#include <string>

#include "league_world.h"
#include "simulated_host.h"

namespace tav::host {

// The other plug-ins' resources that the league plug-in reads, played from a
// league world. Each change reaches the plug-in's subscriptions on the host's
// next turn.
class WorldPlatform {
  public:
    static constexpr const char* kLoginSession = "/tav-login/v1/session";
    static constexpr const char* kLoginDataPacket = "/tav-login/v1/login-data-packet";
    static constexpr const char* kGameflowSession = "/tav-gameflow/v1/session";
    static constexpr const char* kSeasonReward = "/tav-platform-config/v1/namespaces/SeasonReward";
    static constexpr const char* kLeagueServiceEnabled =
        "/tav-platform-config/v1/namespaces/ClientSystemStates/leagueServiceEnabled";
    static constexpr const char* kJwtEnabled = "/tav-platform-config/v1/namespaces/LeagueConfig/JWTEnabled";

    WorldPlatform(SimulatedHost& host, const LeagueWorld& world) : host_(host), world_(world) {}

    // Every resource but the login's as the world's platform section says,
    // and the summoner resource of every player.
    void SetUp();
    // The current player's session, and the login data packet with the stored messages.
    void LogIn();
    void LogOut();
    // phase: a gameflow phase name ("ChampSelect"); queue: a server queue name or empty.
    void SetGameflow(const std::string& phase, const std::string& queue);
    void DeleteGameflow();
    // name: "leagueServiceEnabled" or "JWTEnabled"; false for any other name.
    bool SetSwitch(const std::string& name, bool on);

  private:
    SimulatedHost& host_;
    const LeagueWorld& world_;
};

}  // namespace tav::host
