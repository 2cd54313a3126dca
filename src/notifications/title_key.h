#pragma once

#include <functional>
#include <map>
#include <string>

#include "notifications/notification_resource.h"

namespace Orvel::Client::Leagues {

// The title key of each notify reason that has its own; the entry of
// MINISERIES_CANCEL is a prefix that the queue name completes.
extern const std::map<std::string, std::string, std::less<>> TitleKeyByReason;

// The title key of a server notification: its reason's entry, with the API
// queue name after the prefix of MINISERIES_CANCEL
// ("LEAGUES_SYSTEM_SERIES_ENDED_TITLE_SOLO5V5"), and for any other reason
// "LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE".
std::string SelectTitleKey(const Api::LeagueNotificationResource& record);

}  // namespace Orvel::Client::Leagues
