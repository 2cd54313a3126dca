#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "leagues/api_enums.h"
#include "leagues/module_types.h"

namespace Orvel::Client::Leagues::Api {

// The league facts of a notification.
struct LeagueNotificationItem {
    std::string notifyReason;
    std::int64_t leaguePointsDelta = 0;
    std::uint64_t gameId = 0;
    std::int64_t minGamesForSeeding = -1;  // only a message that carries it sets it
    std::string playerOrTeamId;
    std::string playerOrTeamName;
    std::string leagueName;
    std::string queueType;
    std::string tier;
    std::string rank;
    std::int64_t points = 0;
    std::uint64_t previousPosition = 0;
    std::uint64_t wins = 0;
    std::uint64_t losses = 0;
    std::uint64_t lastPlayed = 0;
    std::int64_t timeUntilDecay = 0;
    std::string inactivityStatus;
    std::uint64_t timeUntilInactivityStatusChanges = 0;
    std::uint64_t timeLastDecayMessageShown = 0;
    std::vector<Miniseries> miniseriesResults;
    bool displayDecayWarning = false;
    std::int64_t demotionWarning = 0;
    std::string seasonEndTier;
    std::string seasonEndRank;
    std::uint64_t seasonEndApexPosition = 0;
    std::vector<LeagueEmblem> emblems;
    bool inactive = false;
    std::uint64_t totalPlayed = 0;
    std::uint64_t miniseriesWins = 0;
    std::uint64_t miniseriesTimeLeftToPlayMillis = 0;
};

// One notification, registered as LeaguesNotification.
struct LeagueNotificationResource {
    std::uint64_t id = 0;
    std::string msgId;  // not registered: the server's id, to acknowledge the message there
    std::string type;
    std::string titleType;
    Severity severity = Severity::ALERT;
    LeagueNotificationItem data;
    std::uint64_t priority = 0;
    bool acknowledgedByPlayer = false;
};

// LeagueNotificationItem, LeaguesNotification.
inline void RegisterNotificationRecords(const ModuleTypes& types) {
    using Item = LeagueNotificationItem;
    types.Struct<Item>("LeagueNotificationItem")
        .Field("notifyReason", &Item::notifyReason)
        .Field("leaguePointsDelta", &Item::leaguePointsDelta)
        .Field("gameId", &Item::gameId)
        .Field("minGamesForSeeding", &Item::minGamesForSeeding)
        .Field("playerOrTeamId", &Item::playerOrTeamId)
        .Field("playerOrTeamName", &Item::playerOrTeamName)
        .Field("leagueName", &Item::leagueName)
        .Field("queueType", &Item::queueType)
        .Field("tier", &Item::tier)
        .Field("rank", &Item::rank)
        .Field("points", &Item::points)
        .Field("previousPosition", &Item::previousPosition)
        .Field("wins", &Item::wins)
        .Field("losses", &Item::losses)
        .Field("lastPlayed", &Item::lastPlayed)
        .Field("timeUntilDecay", &Item::timeUntilDecay)
        .Field("inactivityStatus", &Item::inactivityStatus)
        .Field("timeUntilInactivityStatusChanges", &Item::timeUntilInactivityStatusChanges)
        .Field("timeLastDecayMessageShown", &Item::timeLastDecayMessageShown)
        .Field("miniseriesResults", &Item::miniseriesResults)
        .Field("displayDecayWarning", &Item::displayDecayWarning)
        .Field("demotionWarning", &Item::demotionWarning)
        .Field("seasonEndTier", &Item::seasonEndTier)
        .Field("seasonEndRank", &Item::seasonEndRank)
        .Field("seasonEndApexPosition", &Item::seasonEndApexPosition)
        .Field("emblems", &Item::emblems)
        .Field("inactive", &Item::inactive)
        .Field("totalPlayed", &Item::totalPlayed)
        .Field("miniseriesWins", &Item::miniseriesWins)
        .Field("miniseriesTimeLeftToPlayMillis", &Item::miniseriesTimeLeftToPlayMillis);
    using Resource = LeagueNotificationResource;
    types.Struct<Resource>("LeaguesNotification")
        .Field("id", &Resource::id)
        .Field("type", &Resource::type)
        .Field("titleType", &Resource::titleType)
        .Field("severity", &Resource::severity)
        .Field("data", &Resource::data)
        .Field("priority", &Resource::priority)
        .Field("acknowledgedByPlayer", &Resource::acknowledgedByPlayer);
}

}  // namespace Orvel::Client::Leagues::Api
