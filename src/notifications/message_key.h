#pragma once

#include <string>
#include <string_view>

#include "notifications/notification_resource.h"

namespace Orvel::Client::Leagues {

// The tiers in which a demotion or a lost series shows the promotion helper
// text: BRONZE, SILVER, and GOLD below rank I. Compared exactly.
bool IsPromoHelperTier(std::string_view tier, std::string_view rank);

// The key of the text the front end shows for a server notification, by its
// notify reason, tier and rank, series wins and decay state:
// "LEAGUES_MESSAGE_<reason>" unless a rule picks a promotion helper, decay or
// series-ended key.
std::string SelectMessageKey(const Api::LeagueNotificationResource& record);

}  // namespace Orvel::Client::Leagues
