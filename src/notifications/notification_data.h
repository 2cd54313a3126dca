#pragma once

#include <string>
#include <vector>

#include "notifications/notification_resource.h"

namespace Orvel::Client::Leagues {

// Fills a record from the params of a leagues message, each JSON text. Every
// param that is an object with a "notifyReason" is applied in turn: its
// members (the league entry's under "leagueItem") overwrite the data, a
// missing or wrongly kinded one with its default, then the message and title
// keys are chosen. Other params are skipped; with none that counts, the record
// keeps its values. Numbers read as 32-bit keep their low 32 bits with sign
// (4294967295 reads as -1).
void BuildNotificationData(Api::LeagueNotificationResource& record, const std::vector<std::string>& params);

}  // namespace Orvel::Client::Leagues
