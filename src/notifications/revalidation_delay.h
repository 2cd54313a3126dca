#pragma once

#include <chrono>
#include <optional>
#include <span>
#include <string>

namespace Orvel::Client::Leagues {

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
