#pragma once

#include <cstdint>
#include <vector>

#include "binding/property.h"
#include "league_world.h"

namespace tav::host {

// count league entries of invented players for a league list, the same for
// the same seed on every machine: ids from firstId on, league points falling
// from the tier's top, a few streaks, veterans and newcomers.
std::vector<wex::BindingProperty> GenerateEntries(const WorldLeague& league, std::uint32_t count, std::uint64_t seed,
                                                  std::uint64_t firstId);

}  // namespace tav::host
