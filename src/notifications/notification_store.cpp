#include "notifications/notification_store.h"

#include <algorithm>

#include "notifications/league_message.h"
#include "notifications/notification_data.h"
#include "notifications/notify_reason.h"

namespace Orvel::Client::Leagues {

SharedNotification LeagueNotificationStore::NewRecord() {
    auto record = std::make_shared<Api::LeagueNotificationResource>();
    record->id = nextId++;
    return record;
}

SharedNotification LeagueNotificationStore::MakeMessageRecord(const Api::SimpleMessage& message) {
    SharedNotification record = NewRecord();
    BuildNotificationData(*record, message.params);
    record->msgId = message.msgId;
    return record;
}

void LeagueNotificationStore::File(const SharedNotification& record) {
    if (notificationsAllowed) {
        notificationsById.emplace(record->id, record);
    } else {
        pendingNotifications.push_back(record);
    }
}

bool LeagueNotificationStore::AddLeagueMessage(const Api::SimpleMessage& message) {
    if (!IsLeaguesMessage(message)) {
        return false;
    }
    const SharedNotification record = MakeMessageRecord(message);
    DeriveSystemMessages(record);
    File(record);
    return true;
}

void LeagueNotificationStore::AddLoginMessages(const std::vector<Api::SimpleMessage>& simpleMessages,
                                               const ServerAcknowledgement& acknowledgeOnServer) {
    for (const Api::SimpleMessage& message : simpleMessages) {
        if (!IsLeaguesMessage(message)) {
            continue;
        }
        const SharedNotification record = MakeMessageRecord(message);
        File(record);
        const std::string_view reason = record->data.notifyReason;
        if (reason == NotifyReason::LeaguePointsUpdate || reason == NotifyReason::NotYetSeeded) {
            acknowledgeOnServer(message.accountId, message.msgId);
        }
    }
}

void LeagueNotificationStore::DeriveSystemMessages(const SharedNotification& record) {
    Records& target = notificationsAllowed ? derivedMessages : pendingDerivedMessages;
    const Api::LeagueNotificationItem& data = record->data;
    if (data.tier == "BRONZE") {
        return;
    }
    if (data.notifyReason == NotifyReason::MiniseriesCancel) {
        record->priority = 1100;
        target.push_back(record);
        return;
    }
    const bool demotedByDecay = data.notifyReason == NotifyReason::LeagueDemoted &&
                                data.inactivityStatus == "INACTIVE" && data.displayDecayWarning;
    if (demotedByDecay) {
        auto copy = std::make_shared<Api::LeagueNotificationResource>(*record);
        copy->id = nextId++;
        copy->priority = 1200;
        copy->titleType = "LEAGUES_SYSTEM_DECAY_TITLE";
        copy->type = "LEAGUES_SYSTEM_DECAY_DEMOTION";
        target.push_back(copy);
    }
}

std::vector<Api::LeagueNotificationResource> LeagueNotificationStore::GetNotifications() const {
    std::vector<Api::LeagueNotificationResource> list;
    list.reserve(notificationsById.size() + derivedMessages.size() + decayWarnings.size() +
                 demotionShieldWarnings.size());
    for (const auto& [id, record] : notificationsById) {
        list.push_back(*record);
    }
    std::sort(list.begin(), list.end(), [](const auto& left, const auto& right) { return left.id < right.id; });
    for (const Records* records : {&derivedMessages, &decayWarnings, &demotionShieldWarnings}) {
        for (const SharedNotification& record : *records) {
            list.push_back(*record);
        }
    }
    return list;
}

}  // namespace Orvel::Client::Leagues
