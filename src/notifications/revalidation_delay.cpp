#include "notifications/revalidation_delay.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <ratio>

#include "diagnostics/log_category.h"
#include "diagnostics/log_system.h"
#include "notifications/jwt_token.h"

namespace Orvel::Client::Leagues {
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

}  // namespace Orvel::Client::Leagues
