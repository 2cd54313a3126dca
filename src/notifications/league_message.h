#pragma once

#include <string_view>

#include "binding/property.h"
#include "leagues/login_records.h"

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

}  // namespace Orvel::Client::Leagues
