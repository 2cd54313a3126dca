#include "notifications/league_message.h"

#include <algorithm>
#include <array>

#include "codec/json_reader.h"
#include "notifications/notify_reason.h"

namespace Orvel::Client::Leagues {
namespace {

constexpr std::array kUpdateReasons = {
    NotifyReason::LeaguePointsUpdate, NotifyReason::LeaguePromoted,  NotifyReason::LeagueDemoted,
    NotifyReason::LeagueUpdateDecay,  NotifyReason::MiniseriesStart, NotifyReason::MiniseriesLost,
    NotifyReason::MiniseriesCancel,   NotifyReason::QueueDodge,
};

bool IsUpdateReason(std::string_view reason) {
    return std::find(kUpdateReasons.begin(), kUpdateReasons.end(), reason) != kUpdateReasons.end();
}

}  // namespace

bool IsLeaguesMessage(const Api::SimpleMessage& message) {
    return message.type == "leagues";
}

wex::BindingProperty ReadNotifyParam(const std::string& param) {
    wex::BindingProperty value = wex::ParseJson(param);
    if (!value.IsValid() || value.Kind() != wex::BindingPropertyKind::Structure || !value.HasMember("notifyReason")) {
        return {};
    }
    return value;
}

bool IsLeagueUpdateMessage(const Api::SimpleMessage& message) {
    if (!IsLeaguesMessage(message)) {
        return false;
    }
    return std::any_of(message.params.begin(), message.params.end(), [](const std::string& param) {
        return IsUpdateReason(ReadNotifyParam(param).Member("notifyReason").AsString());
    });
}

}  // namespace Orvel::Client::Leagues
