#include "notifications/notification_store.h"

#include "leagues/server_mappings.h"

namespace Orvel::Client::Leagues {
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
