// The cached signed standings: loaded, announced, served, and loaded again
// shortly before their earliest token expires.
#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

#include "binding/failure.h"
#include "diagnostics/format_message.h"
#include "leagues/league_log.h"
#include "leagues/leagues_module.h"
#include "notifications/revalidation_delay.h"
#include "platform/process_info.h"

namespace Orvel::Client::Leagues {

using wex::Failure;
using wex::MaybeType;

namespace {

constexpr const char* kSignedLeaguesUri = "/tav-leagues/v2/summoner-leagues/current-summoner/signed-leagues";

// A monotonic deadline that many nanoseconds from now; a past one counts as 0.
std::uint64_t DeadlineAfter(std::chrono::nanoseconds delay) {
    const std::int64_t now = static_cast<std::int64_t>(wex::platform::MonotonicNanoseconds());
    return delay.count() < -now ? 0 : static_cast<std::uint64_t>(now + delay.count());
}

}  // namespace

MaybeType<Failure, LCDS::SignedSummonerLeagueItemsDTO> LeaguesModule::LoadSignedSummonerLeaguesData() {
    if (!state.leagueServiceEnabled || !state.jwtEnabled) {
        if (!state.signedLeagues.summonerLeagues.empty()) {
            state.signedLeagues = {};
            PublishResourceDeleted(kSignedLeaguesUri);
        }
        static constexpr char kNotAvailable[] =
            "LoadSignedSummonerLeaguesData called while League service is not available.";
        LogLeagueWarning(kNotAvailable);
        return wex::TextFailure(0, kNotAvailable);
    }
    auto answer = Await(CallService<LCDS::SignedSummonerLeagueItemsDTO>("leagues", "getMySignedLeaguePositions",
                                                                        std::vector<std::string>()));
    if (answer.HasFailure()) {
        LogLeagueError(wex::FormatMessage("Failed to get my leagues: %1", {answer.GetFailure()}));
        return answer;
    }
    const bool wasEmpty = state.signedLeagues.summonerLeagues.empty();
    state.signedLeagues = answer.Value();
    UpdateSignedSummonerLeaguesData();
    PublishResourceEvent(wasEmpty ? wex::PluginResourceEventType::Create : wex::PluginResourceEventType::Update,
                         kSignedLeaguesUri, state.signedLeagues);
    return answer;
}

void LeaguesModule::UpdateSignedSummonerLeaguesData() {
    if (state.revalidationArmed || state.signedLeagues.summonerLeagues.empty()) {
        return;
    }
    std::vector<std::string> tokens;
    for (const LCDS::SignedLeagueItemDTO& entry : state.signedLeagues.summonerLeagues) {
        tokens.push_back(entry.jwt);
    }
    const auto delay = RevalidationDelay(tokens, std::chrono::system_clock::now());
    if (!delay) {
        // Without an expiry there is no moment to revalidate at; the next load decides again.
        return;
    }
    state.revalidationArmed = true;
    Schedule(
        "wex-be-tav-leagues:revalidate-jwt", [this] { OnRevalidationTimer(); }, DeadlineAfter(*delay));
}

void LeaguesModule::OnRevalidationTimer() {
    state.revalidationArmed = false;
    static_cast<void>(LoadSignedSummonerLeaguesData());
}

MaybeType<Failure, LCDS::SignedSummonerLeagueItemsDTO> LeaguesModule::GetSignedLeagues() {
    if (state.signedLeagues.summonerLeagues.empty()) {
        const auto loaded = LoadSignedSummonerLeaguesData();
        if (loaded.HasFailure()) {
            return wex::ErrorAnswer(loaded.GetFailure().Message());
        }
    }
    return state.signedLeagues;
}

}  // namespace Orvel::Client::Leagues
