#include "notifications/title_key.h"

#include "notifications/notify_reason.h"

namespace Orvel::Client::Leagues {

const std::map<std::string, std::string, std::less<>> TitleKeyByReason = {
    {std::string(NotifyReason::MiniseriesStart), "LEAGUES_GENERAL_LEAGUE_MINISERIES_TITLE"},
    {std::string(NotifyReason::QueueDodge), "LEAGUES_GENERAL_LEAGUE_MINISERIES_TITLE"},
    {std::string(NotifyReason::MiniseriesLost), "LEAGUES_GENERAL_LEAGUE_MINISERIES_TITLE"},
    {std::string(NotifyReason::MiniseriesCancel), "LEAGUES_SYSTEM_SERIES_ENDED_TITLE_"},
    {std::string(NotifyReason::LeagueUpdateDecay), "LEAGUES_SYSTEM_DECAY_TITLE"},
};

std::string SelectTitleKey(const Api::LeagueNotificationResource& record) {
    const auto found = TitleKeyByReason.find(record.data.notifyReason);
    if (found == TitleKeyByReason.end()) {
        return "LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE";
    }
    if (found->first == NotifyReason::MiniseriesCancel) {
        return found->second + record.data.queueType;
    }
    return found->second;
}

}  // namespace Orvel::Client::Leagues
