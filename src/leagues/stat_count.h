#pragma once

#include <cstdint>

namespace Orvel::Client::Leagues {

// A statistic's float value as a whole count, truncated toward zero. Values
// beyond the 64-bit range saturate and NaN counts as 0, so no server value
// makes the conversion undefined.
std::int64_t StatCount(float value);

}  // namespace Orvel::Client::Leagues
