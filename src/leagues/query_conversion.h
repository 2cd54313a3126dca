#pragma once

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "leagues/api_types.h"
#include "leagues/server_dtos.h"

namespace Orvel::Client::Leagues {

// A statistic's float value as a whole count, truncated toward zero. Values
// beyond the 64-bit range saturate and NaN counts as 0, so no server value
// makes the conversion undefined.
std::int64_t StatCount(float value);

// One member per distinct player of the roster, in roster order (the first
// entry of a player wins), with no games and no win rate yet.
std::vector<Api::LeagueTeamMember> MakeTeamMembers(const LCDS::RosterDTO& roster);

// Fills each member's games and win rate from the team's statistics, read
// from the totals over all champions. A later record of a player overwrites
// an earlier one; players who are not members are ignored.
void ApplyTeamMemberStats(const std::vector<LCDS::TeamAggregatedStats>& teamStats,
                          std::vector<Api::LeagueTeamMember>& members);

inline constexpr std::size_t TopChampionCount = 5;

// The champions with the most games in a player's lifetime statistics, most
// games first, at most TopChampionCount, each with its win rate in percent
// (0 when no won statistic exists for it). Totals over all champions
// (championId 0) are not champions.
std::vector<Api::LeagueChampAndStat> ConvertTopChampions(const LCDS::AggregatedStats& stats);

// Raised when a participant id is not a number; it ends the conversion of the
// whole tiers answer, and the request fails with its text.
class ParticipantIdError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// Reads the leading unsigned decimal number of a participant id: white space
// and one sign may precede the digits (a minus negates modulo 2^64), and
// reading stops at the first character that is not a digit. Throws
// ParticipantIdError with "invalid stoull argument" when no digit comes first
// and with "stoull argument out of range" when the number exceeds 64 bits.
std::uint64_t ParseParticipantId(std::string_view text);

// Groups the tiers answer by participant: one ParticipantTiers per distinct
// summoner id, in the order the ids first appear, each with its tiers in
// answer order. Throws ParticipantIdError when an id is not a number.
std::vector<Api::ParticipantTiers> GroupParticipantTiers(const std::vector<LCDS::LeagueTierAndRankDTO>& tiers);

// The two list texts that "getTiersForParticipants" takes.

// The ids in decimal, in brackets: [12,34]; [] for none.
std::string ParticipantIdListText(const std::vector<std::uint64_t>& summonerIds);
// The server names of the queues, quoted, in brackets:
// ["RANKED_SOLO_5x5","RANKED_FLEX_SR"]; NONE is "INVALID".
std::string QueueListText(const std::vector<Api::LeagueQueueType>& queueTypes);

}  // namespace Orvel::Client::Leagues
