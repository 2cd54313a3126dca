#include "signed/signed_standings.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <ratio>
#include <string>
#include <vector>

#include "diagnostics/format_message.h"
#include "diagnostics/log_system.h"
#include "platform/process_info.h"
#include "signed/jwt_token.h"

namespace Orvel::Client::Leagues {

using wex::Failure;
using wex::MaybeType;

namespace {

using Ticks = std::chrono::duration<std::int64_t, std::ratio<1, 10'000'000>>;

// Keeps the delay, and a deadline made from it, well inside the nanosecond range.
constexpr std::chrono::seconds kLongestDelay = std::chrono::hours(24 * 365 * 100);

std::optional<double> EarliestExpiry(std::span<const std::string> tokens) {
    std::optional<double> earliest;
    for (const std::string& token : tokens) {
        const wex::BindingProperty claims = JwtToken(token).Claims();
        if (!claims.HasMember("exp")) {
            wex::LogMessage(wex::LogLevel::Error, wex::LogCategory::Dbg,
                            "UpdateSignedSummonerLeaguesData: JWT did not contain an expiration date.");
            continue;
        }
        const double expiry = claims.Member("exp").AsDouble(0.0);
        earliest = earliest ? std::min(*earliest, expiry) : expiry;
    }
    return earliest;
}

constexpr const char* kSignedLeaguesUri = "/tav-leagues/v2/summoner-leagues/current-summoner/signed-leagues";

// A monotonic deadline that many nanoseconds from now; a past one counts as 0.
std::uint64_t DeadlineAfter(std::chrono::nanoseconds delay) {
    const std::int64_t now = static_cast<std::int64_t>(wex::platform::MonotonicNanoseconds());
    return delay.count() < -now ? 0 : static_cast<std::uint64_t>(now + delay.count());
}

}  // namespace

std::optional<std::chrono::nanoseconds> RevalidationDelay(std::span<const std::string> tokens,
                                                          std::chrono::system_clock::time_point now) {
    const std::optional<double> earliest = EarliestExpiry(tokens);
    if (!earliest) {
        return std::nullopt;
    }
    const Ticks present = std::chrono::floor<Ticks>(now.time_since_epoch());
    const double presentSeconds = std::chrono::duration<double>(present).count();
    const double longest = std::chrono::duration<double>(kLongestDelay).count();
    // Bounded while still a double, so that the conversion to an integer is defined.
    const double expiry = std::clamp(std::trunc(*earliest), presentSeconds - longest, presentSeconds + longest);
    const std::chrono::seconds expirySeconds(static_cast<std::int64_t>(expiry));
    return std::chrono::duration_cast<std::chrono::nanoseconds>(expirySeconds - present - kRevalidationMargin);
}

MaybeType<Failure, LCDS::SignedSummonerLeagueItemsDTO> SignedStandings::LoadSignedSummonerLeaguesData() {
    if (!session_.leagueServiceEnabled || !session_.jwtEnabled) {
        if (!signedLeagues_.summonerLeagues.empty()) {
            signedLeagues_ = {};
            module_.PublishResourceDeleted(kSignedLeaguesUri);
        }
        static constexpr char kNotAvailable[] =
            "LoadSignedSummonerLeaguesData called while League service is not available.";
        LogLeagueWarning(kNotAvailable);
        return wex::TextFailure(0, kNotAvailable);
    }
    auto answer = module_.Await(module_.CallService<LCDS::SignedSummonerLeagueItemsDTO>(
        "leagues", "getMySignedLeaguePositions", std::vector<std::string>()));
    if (answer.HasFailure()) {
        LogLeagueError(wex::FormatMessage("Failed to get my leagues: %1", {answer.GetFailure()}));
        return answer;
    }
    const bool wasEmpty = signedLeagues_.summonerLeagues.empty();
    signedLeagues_ = answer.Value();
    UpdateSignedSummonerLeaguesData();
    module_.PublishResourceEvent(wasEmpty ? wex::PluginResourceEventType::Create : wex::PluginResourceEventType::Update,
                                 kSignedLeaguesUri, signedLeagues_);
    return answer;
}

void SignedStandings::UpdateSignedSummonerLeaguesData() {
    if (revalidationArmed_ || signedLeagues_.summonerLeagues.empty()) {
        return;
    }
    std::vector<std::string> tokens;
    for (const LCDS::SignedLeagueItemDTO& entry : signedLeagues_.summonerLeagues) {
        tokens.push_back(entry.jwt);
    }
    const auto delay = RevalidationDelay(tokens, std::chrono::system_clock::now());
    if (!delay) {
        // Without an expiry there is no moment to revalidate at; the next load decides again.
        return;
    }
    revalidationArmed_ = true;
    module_.Schedule(
        "wex-be-tav-leagues:revalidate-jwt", [this] { OnRevalidationTimer(); }, DeadlineAfter(*delay));
}

void SignedStandings::OnRevalidationTimer() {
    revalidationArmed_ = false;
    static_cast<void>(LoadSignedSummonerLeaguesData());
}

MaybeType<Failure, LCDS::SignedSummonerLeagueItemsDTO> SignedStandings::GetSignedLeagues() {
    if (signedLeagues_.summonerLeagues.empty()) {
        const auto loaded = LoadSignedSummonerLeaguesData();
        if (loaded.HasFailure()) {
            return wex::ErrorAnswer(loaded.GetFailure().Message());
        }
    }
    return signedLeagues_;
}

void SignedStandings::PassSignedLeaguesToTeamBuilder(LCDS::QueueType queue) {
    const auto& entries = signedLeagues_.summonerLeagues;
    const auto entry = std::find_if(entries.begin(), entries.end(),
                                    [queue](const LCDS::SignedLeagueItemDTO& item) { return item.queueType == queue; });
    if (entry == entries.end()) {
        return;
    }
    wex::BindingProperty arguments;
    arguments.MakeCollection();
    wex::BindingProperty& customization = arguments.Append();
    customization.MakeStructure();
    customization.Member("prefix").SetString("leagues");
    customization.Member("signedJWT").SetString(entry->jwt);
    const auto answer = module_.Await(
        module_.CallService<wex::BindingProperty>("teambuilder-draft", "setJwtAsGameCustomizationV1", arguments));
    if (answer.HasFailure()) {
        wex::LogMessage(wex::LogLevel::Error, wex::LogCategory::Dbg,
                        "Failed to pass signed leagues game customization to TB");
        const std::string message(answer.GetFailure().Message());
        wex::Trace("TeamBuilder service error msg: %s", message.c_str());
        return;
    }
    wex::LogMessage(wex::LogLevel::Okay, wex::LogCategory::Gen,
                    "Successfully passed signed leagues game customization to TB");
}

}  // namespace Orvel::Client::Leagues
