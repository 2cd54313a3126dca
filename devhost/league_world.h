#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "binding/property.h"

namespace tav::host {

struct WorldPlayer {
    std::uint64_t summonerId = 0;
    std::uint64_t accountId = 0;
    std::string name;
};

// One league list: its entries are complete server league entries
// ("playerOrTeamId", "queueType", "tier" and the rest, by their wire names).
struct WorldLeague {
    std::string name;
    std::string queue;  // server queue name, "RANKED_SOLO_5x5"
    std::string tier;   // server tier name, "GOLD"
    std::uint64_t nextApexUpdate = 0;
    std::vector<wex::BindingProperty> entries;
};

struct WorldTeamMember {
    std::uint64_t summonerId = 0;
    std::uint64_t played = 0;
    std::uint64_t won = 0;
};

struct WorldTeam {
    std::string id;
    std::string name;
    std::string queueType;
    std::vector<WorldTeamMember> members;
};

struct WorldChampion {
    std::int32_t championId = 0;
    std::uint64_t played = 0;
    std::uint64_t won = 0;
};

struct WorldChampionStats {
    std::uint64_t summonerId = 0;
    std::vector<WorldChampion> champions;
};

// A message that the server stored for the current player; params as JSON texts.
struct WorldMessage {
    std::string msgId;
    std::string type;
    std::vector<std::string> params;
};

// The phases of the gameflow session that the plug-in knows.
constexpr std::array<std::string_view, 14> kGameflowPhases = {"None",
                                                              "Lobby",
                                                              "Matchmaking",
                                                              "CheckedIntoTournament",
                                                              "ReadyCheck",
                                                              "ChampSelect",
                                                              "GameStart",
                                                              "FailedToLaunch",
                                                              "InProgress",
                                                              "Reconnect",
                                                              "WaitingForStats",
                                                              "PreEndOfGame",
                                                              "EndOfGame",
                                                              "TerminatedInError"};

// How the platform stands when the host starts.
struct PlatformSettings {
    bool loggedIn = true;
    std::string gameflowPhase = "Lobby";
    std::string gameflowQueue = "RANKED_SOLO_5x5";
    bool leagueServiceEnabled = true;
    bool jwtEnabled = true;
    bool qualificationWarningEnabled = false;
};

// The players, standings, teams, statistics and stored messages that the
// simulated platform and game server answer from.
struct LeagueWorld {
    std::uint64_t currentPlayer = 0;  // the summoner id of the player who logs in
    double tokenMinutes = 10.0;       // signed tokens expire this long after they are handed out
    std::vector<WorldPlayer> players;
    std::vector<WorldLeague> leagues;
    std::vector<WorldTeam> teams;
    std::vector<WorldChampionStats> championStats;
    std::vector<WorldMessage> messages;
    PlatformSettings platform;

    const WorldPlayer* FindPlayer(std::uint64_t summonerId) const;
    const WorldPlayer* FindAccount(std::uint64_t accountId) const;
    const WorldPlayer& Current() const { return *FindPlayer(currentPlayer); }
};

// A world read from a YAML text, or the reason it could not be.
struct WorldReading {
    LeagueWorld world;
    std::string error;  // empty on success
};

// Reads a world. Errors name the member at fault, as in
// "leagues[0].entries[2].player: 77 is not a player of the world".
WorldReading ReadLeagueWorld(std::string_view yaml);

}  // namespace tav::host
