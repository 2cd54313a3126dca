#include "notifications/notification_store.h"

#include <algorithm>
#include <iterator>

#include "diagnostics/format_message.h"
#include "diagnostics/log_system.h"
#include "leagues/mappings.h"
#include "notifications/league_messages.h"

namespace Orvel::Client::Leagues {

using Api::GameflowPhase;

const std::set<GameflowPhase> HeldBackPhases = {
    GameflowPhase::ReadyCheck,      GameflowPhase::ChampSelect,  GameflowPhase::GameStart,
    GameflowPhase::FailedToLaunch,  GameflowPhase::InProgress,   GameflowPhase::Reconnect,
    GameflowPhase::WaitingForStats, GameflowPhase::PreEndOfGame,
};

bool NotificationsAllowedIn(GameflowPhase phase) {
    return !HeldBackPhases.contains(phase);
}

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

namespace {

struct WarningKind {
    std::string_view type;
    std::string_view titleType;
    std::uint64_t priority;
};

constexpr WarningKind kDecaying{"LEAGUES_SYSTEM_DECAY", "LEAGUES_SYSTEM_DECAY_TITLE", 1300};
constexpr WarningKind kSeriesInactivity{"LEAGUES_SYSTEM_SERIES_INACTIVITY", "LEAGUES_SYSTEM_SERIES_INACTIVITY_TITLE",
                                        1400};
constexpr WarningKind kDecaySoon{"LEAGUES_SYSTEM_DECAY_SOON", "LEAGUES_SYSTEM_DECAY_SOON_TITLE", 1500};
constexpr WarningKind kDecayImminent{"LEAGUES_SYSTEM_DECAY_IMMINENT", "LEAGUES_SYSTEM_DECAY_IMMINENT_TITLE", 1600};

// The decay warning an entry gives, by the first rule that matches; null for none.
const WarningKind* DecayWarningOf(const LCDS::LeagueItemDTO& entry) {
    if (!entry.displayDecayWarning || entry.tier == LCDS::LeagueTier::BRONZE) {
        return nullptr;
    }
    if (entry.inactivityStatus == "INACTIVE") {
        return &kDecaying;
    }
    if (!entry.miniSeries.progress.empty()) {
        return &kSeriesInactivity;
    }
    if (entry.inactivityStatus == "WARNING") {
        return &kDecaySoon;
    }
    if (entry.inactivityStatus == "GRACE") {
        return &kDecayImminent;
    }
    return nullptr;
}

}  // namespace

void LeagueNotificationStore::UpdateDecayWarnings(const std::vector<LCDS::LeagueItemDTO>& entries) {
    Records& target = notificationsAllowed ? decayWarnings : pendingDecayWarnings;
    target.clear();
    for (const LCDS::LeagueItemDTO& entry : entries) {
        if (const WarningKind* kind = DecayWarningOf(entry)) {
            target.push_back(MakeStandingMessage(entry, kind->type, kind->titleType, kind->priority));
        }
    }
    UpdateDemotionShieldWarnings(entries);
}

void LeagueNotificationStore::UpdateDemotionShieldWarnings(const std::vector<LCDS::LeagueItemDTO>& entries) {
    Records& target = notificationsAllowed ? demotionShieldWarnings : pendingDemotionShieldWarnings;
    target.clear();
    for (const LCDS::LeagueItemDTO& entry : entries) {
        const SharedNotification record = NewRecord();
        record->data.playerOrTeamId = entry.playerOrTeamId;
        record->data.queueType = LeagueQueueNameOf(entry.queueType);
        record->titleType = "LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE";
        if (entry.demotionWarning == 1) {
            record->type = "LEAGUES_SYSTEM_DEMOTION_SHIELD_LEVEL_1_WARNING";
            record->priority = 2100;
            record->severity = Api::Severity::WARNING;
        } else if (entry.demotionWarning == 2) {
            record->type = "LEAGUES_SYSTEM_DEMOTION_SHIELD_LEVEL_2_WARNING";
            record->priority = 1800;
            record->severity = Api::Severity::ALERT;
        } else {
            continue;
        }
        target.push_back(record);
    }
}

SharedNotification LeagueNotificationStore::MakeStandingMessage(const LCDS::LeagueItemDTO& entry, std::string_view type,
                                                                std::string_view titleType, std::uint64_t priority) {
    const SharedNotification record = NewRecord();
    record->data.queueType = LeagueQueueNameOf(entry.queueType);
    record->type = type;
    record->data.timeUntilInactivityStatusChanges = entry.timeUntilInactivityStatusChanges;
    record->data.playerOrTeamName = entry.playerOrTeamName;
    record->data.miniseriesTimeLeftToPlayMillis = entry.miniSeries.timeLeftToPlayMillis;
    record->titleType = titleType;
    record->priority = priority;
    record->data.inactivityStatus = entry.inactivityStatus;
    return record;
}

}  // namespace Orvel::Client::Leagues
