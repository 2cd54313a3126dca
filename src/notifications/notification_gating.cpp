#include "notifications/notification_store.h"

#include <algorithm>
#include <iterator>

#include "diagnostics/format_message.h"
#include "diagnostics/trace.h"

namespace Orvel::Client::Leagues {
namespace {

void MoveAllTo(std::vector<SharedNotification>& shown, std::vector<SharedNotification>& pending) {
    shown.insert(shown.end(), std::make_move_iterator(pending.begin()), std::make_move_iterator(pending.end()));
    pending.clear();
}

// The first record of an id in a list; null when there is none.
SharedNotification FindById(const std::vector<SharedNotification>& records, std::uint64_t id) {
    const auto found = std::find_if(records.begin(), records.end(),
                                    [id](const SharedNotification& record) { return record->id == id; });
    return found == records.end() ? nullptr : *found;
}

wex::Failure Refusal(std::uint64_t id) {
    return wex::Failure(403,
                        wex::FormatMessage("Unable to delete notification with id %1. Either notification is "
                                           "acknowledged or it is not an acknowledgeable notification",
                                           {id}),
                        {});
}

}  // namespace

bool LeagueNotificationStore::SetNotificationsAllowed(bool allowed) {
    if (allowed == notificationsAllowed) {
        return false;
    }
    notificationsAllowed = allowed;
    if (allowed) {
        MoveAllTo(derivedMessages, pendingDerivedMessages);
        MoveAllTo(decayWarnings, pendingDecayWarnings);
        MoveAllTo(demotionShieldWarnings, pendingDemotionShieldWarnings);
        for (const SharedNotification& record : pendingNotifications) {
            notificationsById.emplace(record->id, record);
        }
        pendingNotifications.clear();
    }
    wex::Trace("league notifications set to: %s",
               allowed ? "allowed." : "disallowed. notifications will queue until next allowed.");
    return allowed;
}

// Records are held by shared pointer and every list is searched afresh: the
// server acknowledgement yields, and the lists may change meanwhile.
wex::MaybeType<wex::Failure, void> LeagueNotificationStore::AcknowledgeNotification(
    std::uint64_t id, std::uint64_t accountId, const ServerAcknowledgement& acknowledgeOnServer) {
    if (const auto found = notificationsById.find(id); found != notificationsById.end()) {
        const SharedNotification record = found->second;
        if (!record->msgId.empty() && !acknowledgeOnServer(accountId, record->msgId)) {
            return Refusal(id);
        }
        record->acknowledgedByPlayer = true;
        return {};
    }
    for (const Records* records : {&derivedMessages, &decayWarnings, &demotionShieldWarnings}) {
        const SharedNotification record = FindById(*records, id);
        if (record && (record->msgId.empty() || acknowledgeOnServer(accountId, record->msgId))) {
            record->acknowledgedByPlayer = true;
            return {};
        }
    }
    return Refusal(id);
}

}  // namespace Orvel::Client::Leagues
