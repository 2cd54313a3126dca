#pragma once

#include <string>
#include <string_view>

namespace wex {

// The name under which a route's function is registered and reported:
// GET with "/tav-leagues/v1/summoner-leagues/{summonerId}" gives
// GetTavLeaguesV1SummonerLeaguesBySummonerId. With an empty method name the
// template alone is turned into an identifier ("tav-leagues" gives TavLeagues).
std::string DeriveFunctionName(std::string_view methodName, std::string_view pathTemplate);

// The same rule applied to a text alone.
std::string MakeIdentifier(std::string_view text);

}  // namespace wex
