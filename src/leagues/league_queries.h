#pragma once

#include <cstdint>
#include <future>
#include <string>
#include <string_view>
#include <vector>

#include "binding/failure.h"
#include "binding/maybe_type.h"
#include "diagnostics/log_system.h"
#include "host/plugin_base.h"
#include "leagues/api_types.h"
#include "leagues/server_dtos.h"

namespace Orvel::Client::Leagues {

// Second argument of "getMasterLeagueTopX": how many master places to fetch.
inline constexpr std::uint64_t MaxMasterLeagueEntries = 200;

// What the module knows of the client around it, learnt from the resources it
// watches. No lock: the host delivers one event or request at a time, and
// code that waits reads it again afterwards.
struct PlayerSession {
    std::uint64_t summonerId = 0;             // of the logged-in player; 0 when nobody is logged in
    std::uint64_t accountId = 0;              // of the logged-in player; 0 when nobody is logged in
    bool loggedIn = false;                    // a complete, successful login session is present
    bool seasonRewardConfigReceived = false;  // never false again once true
    bool leagueServiceEnabled = false;
    bool jwtEnabled = false;
    Api::GameflowPhase gameflowPhase = Api::GameflowPhase::None;
};

// The league logic's log lines: category DBG, the text as it is.
inline void LogLeagueError(std::string_view text) {
    const std::string line(text);
    wex::LogMessage(wex::LogLevel::Error, wex::LogCategory::Dbg, "%s", line.c_str());
}
inline void LogLeagueWarning(std::string_view text) {
    const std::string line(text);
    wex::LogMessage(wex::LogLevel::Warn, wex::LogCategory::Dbg, "%s", line.c_str());
}

// What the league service and the statistics and team services answer,
// fetched through the module's server calls and converted for the API: the
// fetches that the routes and the notifications share, and the answers of
// the query routes (each failure of those answers status 500). Failures of
// the server calls are logged as errors where they are met. [host-thread]
class LeagueQueries {
  public:
    LeagueQueries(wex::PluginBase& module, const PlayerSession& session) : module_(module), session_(session) {}

    // ---- Fetches ---------------------------------------------------------------

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
    // The server call of the current player's league entries, not yet awaited.
    std::future<wex::MaybeType<wex::Failure, LCDS::SummonerLeagueItemsDTO>> MyLeaguePositions();

    // ---- Query answers ---------------------------------------------------------

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
    // The challenger league's next update and the apex movements of a
    // player's master or challenger league.
    void AddApexMovements(Api::League& league);

    wex::PluginBase& module_;
    const PlayerSession& session_;
};

}  // namespace Orvel::Client::Leagues
