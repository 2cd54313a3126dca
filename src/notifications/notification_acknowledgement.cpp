// The player's acknowledgement of a notification, passed on to the server for
// the messages that it stored.
#include <string>

#include "diagnostics/log_system.h"
#include "leagues/leagues_module.h"
#include "leagues/message_dto.h"

namespace Orvel::Client::Leagues {

wex::MaybeType<wex::Failure, void> LeaguesModule::AcknowledgeNotification(std::uint64_t id) {
    return state.notifications.AcknowledgeNotification(
        id, state.accountId,
        [this](std::uint64_t accountId, const std::string& msgId) { return AcknowledgeOnServer(accountId, msgId); });
}

bool LeaguesModule::AcknowledgeOnServer(std::uint64_t accountId, const std::string& msgId) {
    const LCDS::SimpleMessageResponse response{accountId, msgId, "ack"};
    const auto answer =
        Await(InvokeLcds<wex::BindingProperty>("clientFacadeService", "callPersistenceMessaging", response));
    if (answer.HasFailure()) {
        const std::string message(answer.GetFailure().Message());
        wex::LogMessage(wex::LogLevel::Error, wex::LogCategory::Dbg,
                        "Failed to acknowledge leagues notification '%s': %d - %s", msgId.c_str(),
                        static_cast<int>(answer.GetFailure().Code()), message.c_str());
        return false;
    }
    wex::LogMessage(wex::LogLevel::Always, wex::LogCategory::Dbg, "Acknowledged leagues notification '%s'",
                    msgId.c_str());
    return true;
}

}  // namespace Orvel::Client::Leagues
