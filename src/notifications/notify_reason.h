#pragma once

#include <string_view>

// The notify reasons of league messages that the plug-in knows.
namespace Orvel::Client::Leagues::NotifyReason {

inline constexpr std::string_view LeaguePointsUpdate = "LEAGUE_POINTS_UPDATE";
inline constexpr std::string_view LeaguePromoted = "LEAGUE_PROMOTED";
inline constexpr std::string_view LeagueDemoted = "LEAGUE_DEMOTED";
inline constexpr std::string_view LeagueUpdateDecay = "LEAGUE_UPDATE_DECAY";
inline constexpr std::string_view MiniseriesStart = "MINISERIES_START";
inline constexpr std::string_view MiniseriesLost = "MINISERIES_LOST";
inline constexpr std::string_view MiniseriesCancel = "MINISERIES_CANCEL";
inline constexpr std::string_view QueueDodge = "QUEUE_DODGE";
inline constexpr std::string_view NotYetSeeded = "NOT_YET_SEEDED";

}  // namespace Orvel::Client::Leagues::NotifyReason
