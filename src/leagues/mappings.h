#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "leagues/api_types.h"
#include "leagues/server_dtos.h"

// The tables between the server's enumerations and the API's. Each form has
// its own fallback for a value it does not know.
namespace Orvel::Client::Leagues {

// RANKED_SOLO_5x5 to SOLO5V5, RANKED_FLEX_SR to FLEXSR, RANKED_FLEX_TT to
// FLEXTT; any other number to NONE.
Api::LeagueQueueType LeagueQueueTypeOf(LCDS::QueueType queue);
// The same as the API queue's name; "NONE" for any other number.
std::string_view LeagueQueueNameOf(LCDS::QueueType queue);
// The same from the server queue's name, compared exactly; "NONE" for any other text.
std::string_view LeagueQueueNameOf(std::string_view serverQueueName);
// The server queue's name of an API queue; "INVALID" for NONE and unknown values.
std::string_view QueueServerName(Api::LeagueQueueType queue);

// The tier of the same number; NONE outside 1 to 7.
Api::LeagueTier LeagueTierOf(LCDS::LeagueTier tier);

// The division of a standing in a league of the given tier: NA in the apex
// tiers, else I to V for the server ranks I to V and NA for any other number.
Api::LeagueRank LeagueRankOf(LCDS::LeagueRank rank, Api::LeagueTier tier);
// The division as a number: 1 to 5 for I to V below MASTER; 0 for the apex
// tiers and for any other rank.
std::uint64_t DivisionNumberOf(LCDS::LeagueRank rank, Api::LeagueTier tier);

bool IsApexTier(Api::LeagueTier tier);

// One result per character of a series' progress: W won, L lost, anything else N.
std::vector<Api::Miniseries> ParseMiniseriesProgress(std::string_view progress);
// The emblems of the set flags, always in the order HOTSTREAK, VETERAN, FRESHBLOOD.
std::vector<Api::LeagueEmblem> MakeLeagueEmblems(bool hotStreak, bool veteran, bool freshBlood);

}  // namespace Orvel::Client::Leagues
