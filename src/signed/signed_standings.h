#pragma once

#include <chrono>
#include <optional>
#include <span>
#include <string>

#include "binding/failure.h"
#include "binding/maybe_type.h"
#include "host/plugin_base.h"
#include "leagues/league_queries.h"
#include "leagues/server_dtos.h"

namespace Orvel::Client::Leagues {

// The player's signed standings: a cached copy of the tokens that the server
// signs for each ranked queue, announced as a resource, loaded again shortly
// before the earliest token expires, and handed to the matchmaking service as
// the player enters champion select. Both switches of the session (the league
// service and JWTEnabled) must be on. [host-thread]
class SignedStandings {
  public:
    SignedStandings(wex::PluginBase& module, const PlayerSession& session) : module_(module), session_(session) {}

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

    const LCDS::SignedSummonerLeagueItemsDTO& Cached() const { return signedLeagues_; }
    bool RevalidationArmed() const { return revalidationArmed_; }

  private:
    wex::PluginBase& module_;
    const PlayerSession& session_;
    LCDS::SignedSummonerLeagueItemsDTO signedLeagues_;
    bool revalidationArmed_ = false;
};

// Signed standings are loaded again this long before their earliest token expires.
inline constexpr std::chrono::seconds kRevalidationMargin{60};

// The time from now until the signed standings must be loaded again: the
// earliest "exp" of the tokens' claims (seconds since 1970, truncated toward
// zero), minus now taken at 100-nanosecond resolution, minus the margin.
// Negative once that moment has passed. A token without "exp" is logged and
// skipped; an "exp" that is no number counts as 0. None when no token has
// one. A delay beyond a century either way counts as a century.
std::optional<std::chrono::nanoseconds> RevalidationDelay(std::span<const std::string> tokens,
                                                          std::chrono::system_clock::time_point now);

}  // namespace Orvel::Client::Leagues
