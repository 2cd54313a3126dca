// The notification list: served on its route and announced as a resource.
#include "leagues/leagues_module.h"

namespace Orvel::Client::Leagues {

void LeaguesModule::PublishNotifications() {
    PublishResourceEvent(wex::PluginResourceEventType::Update, "/tav-leagues/v2/notifications",
                         state.notifications.GetNotifications());
}

wex::MaybeType<wex::Failure, std::vector<Api::LeagueNotificationResource>> LeaguesModule::GetNotifications() {
    return state.notifications.GetNotifications();
}

}  // namespace Orvel::Client::Leagues
