#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "binding/property.h"
#include "host/plugin_base.h"
#include "leagues/api_types.h"

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

namespace Orvel::Client::Leagues {

// Whether a simple message concerns the leagues: its type is exactly "leagues".
bool IsLeaguesMessage(const Api::SimpleMessage& message);

// The JSON object of a message param that counts, one with a member
// "notifyReason"; an empty value for a param that is not JSON, not an
// object, or has no such member.
wex::BindingProperty ReadNotifyParam(const std::string& param);

// Whether a leagues message tells of a change of standing: one of its params
// has a notify reason other than NOT_YET_SEEDED among those the plug-in knows.
bool IsLeagueUpdateMessage(const Api::SimpleMessage& message);

// Fills a record from the params of a leagues message, each JSON text. Every
// param that is an object with a "notifyReason" is applied in turn: its
// members (the league entry's under "leagueItem") overwrite the data, a
// missing or wrongly kinded one with its default, then the message and title
// keys are chosen. Other params are skipped; with none that counts, the record
// keeps its values. Numbers read as 32-bit keep their low 32 bits with sign
// (4294967295 reads as -1).
void BuildNotificationData(Api::LeagueNotificationResource& record, const std::vector<std::string>& params);

// The tiers in which a demotion or a lost series shows the promotion helper
// text: BRONZE, SILVER, and GOLD below rank I. Compared exactly.
bool IsPromoHelperTier(std::string_view tier, std::string_view rank);

// The key of the text the front end shows for a server notification, by its
// notify reason, tier and rank, series wins and decay state:
// "LEAGUES_MESSAGE_<reason>" unless a rule picks a promotion helper, decay or
// series-ended key.
std::string SelectMessageKey(const Api::LeagueNotificationResource& record);

// The title key of each notify reason that has its own; the entry of
// MINISERIES_CANCEL is a prefix that the queue name completes.
extern const std::map<std::string, std::string, std::less<>> TitleKeyByReason;

// The title key of a server notification: its reason's entry, with the API
// queue name after the prefix of MINISERIES_CANCEL
// ("LEAGUES_SYSTEM_SERIES_ENDED_TITLE_SOLO5V5"), and for any other reason
// "LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE".
std::string SelectTitleKey(const Api::LeagueNotificationResource& record);

// Acknowledges one stored message on the server, for the player of
// accountId; false, logged, when that failed. [may yield]
bool AcknowledgeOnServer(wex::PluginBase& module, std::uint64_t accountId, const std::string& msgId);

}  // namespace Orvel::Client::Leagues
