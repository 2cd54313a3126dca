#include "notifications/message_key.h"

#include "diagnostics/format_message.h"
#include "notifications/notify_reason.h"

namespace Orvel::Client::Leagues {
namespace {

std::string KeyOf(std::string_view format, std::string_view reason) {
    return wex::FormatMessage(format, {reason});
}

}  // namespace

bool IsPromoHelperTier(std::string_view tier, std::string_view rank) {
    return tier == "BRONZE" || tier == "SILVER" || (tier == "GOLD" && rank != "I");
}

std::string SelectMessageKey(const Api::LeagueNotificationResource& record) {
    const Api::LeagueNotificationItem& data = record.data;
    const std::string_view reason = data.notifyReason;
    const bool promoHelper = IsPromoHelperTier(data.tier, data.rank);
    if (reason == NotifyReason::LeagueDemoted || reason == NotifyReason::MiniseriesLost) {
        return KeyOf(promoHelper ? "LEAGUES_MESSAGE_PROMOHELPER_%1" : "LEAGUES_MESSAGE_%1", reason);
    }
    if (reason == NotifyReason::MiniseriesStart) {
        if (!promoHelper || data.miniseriesWins == 0) {
            return KeyOf("LEAGUES_MESSAGE_%1", reason);
        }
        return KeyOf(data.miniseriesWins == 1 ? "LEAGUES_MESSAGE_PROMOHELPER_%1_SINGULAR"
                                              : "LEAGUES_MESSAGE_PROMOHELPER_%1_PLURAL",
                     reason);
    }
    if (reason == NotifyReason::LeagueUpdateDecay) {
        return "LEAGUES_SYSTEM_DECAY";
    }
    if (reason == NotifyReason::MiniseriesCancel) {
        const bool decayed = data.displayDecayWarning && data.inactivityStatus == "INACTIVE";
        return decayed ? "LEAGUES_SYSTEM_SERIES_ENDED_DECAY" : "LEAGUES_SYSTEM_SERIES_ENDED";
    }
    return KeyOf("LEAGUES_MESSAGE_%1", reason);
}

}  // namespace Orvel::Client::Leagues
