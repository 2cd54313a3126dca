#include "notifications/message_key.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "notifications/title_key.h"

namespace Orvel::Client::Leagues {
namespace {

TEST(IsPromoHelperTier, BronzeSilverAndGoldBelowRankOne) {
    struct Row {
        const char* tier;
        const char* rank;
        bool promoHelper;
    };
    const Row rows[] = {
        {"BRONZE", "I", true},  {"BRONZE", "", true},   {"SILVER", "I", true},     {"SILVER", "V", true},
        {"GOLD", "II", true},   {"GOLD", "V", true},    {"GOLD", "", true},        {"GOLD", "i", true},
        {"GOLD", "I ", true},   {"GOLD", "I", false},   {"PLATINUM", "IV", false}, {"DIAMOND", "V", false},
        {"MASTER", "I", false}, {"bronze", "V", false}, {"", "", false},           {"SILVER ", "II", false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.tier) + " " + row.rank);
        EXPECT_EQ(IsPromoHelperTier(row.tier, row.rank), row.promoHelper);
    }
}

struct KeyRow {
    const char* reason;
    const char* tier;
    const char* rank;
    std::uint64_t seriesWins;
    bool displayDecayWarning;
    const char* inactivityStatus;
    const char* key;
};

Api::LeagueNotificationResource RecordOf(const KeyRow& row) {
    Api::LeagueNotificationResource record;
    record.data.notifyReason = row.reason;
    record.data.tier = row.tier;
    record.data.rank = row.rank;
    record.data.miniseriesWins = row.seriesWins;
    record.data.displayDecayWarning = row.displayDecayWarning;
    record.data.inactivityStatus = row.inactivityStatus;
    return record;
}

TEST(SelectMessageKey, FollowsTheReasonAndItsConditionsInOrder) {
    const KeyRow rows[] = {
        {"LEAGUE_DEMOTED", "SILVER", "II", 0, false, "", "LEAGUES_MESSAGE_PROMOHELPER_LEAGUE_DEMOTED"},
        {"LEAGUE_DEMOTED", "GOLD", "I", 0, false, "", "LEAGUES_MESSAGE_LEAGUE_DEMOTED"},
        {"LEAGUE_DEMOTED", "PLATINUM", "IV", 0, false, "", "LEAGUES_MESSAGE_LEAGUE_DEMOTED"},
        {"LEAGUE_DEMOTED", "BRONZE", "V", 0, true, "INACTIVE", "LEAGUES_MESSAGE_PROMOHELPER_LEAGUE_DEMOTED"},
        {"MINISERIES_START", "BRONZE", "V", 1, false, "", "LEAGUES_MESSAGE_PROMOHELPER_MINISERIES_START_SINGULAR"},
        {"MINISERIES_START", "BRONZE", "V", 2, false, "", "LEAGUES_MESSAGE_PROMOHELPER_MINISERIES_START_PLURAL"},
        {"MINISERIES_START", "GOLD", "II", 18446744073709551615u, false, "",
         "LEAGUES_MESSAGE_PROMOHELPER_MINISERIES_START_PLURAL"},
        {"MINISERIES_START", "BRONZE", "V", 0, false, "", "LEAGUES_MESSAGE_MINISERIES_START"},
        {"MINISERIES_START", "GOLD", "I", 1, false, "", "LEAGUES_MESSAGE_MINISERIES_START"},
        {"MINISERIES_START", "DIAMOND", "II", 2, false, "", "LEAGUES_MESSAGE_MINISERIES_START"},
        {"LEAGUE_UPDATE_DECAY", "BRONZE", "I", 3, true, "INACTIVE", "LEAGUES_SYSTEM_DECAY"},
        {"LEAGUE_UPDATE_DECAY", "", "", 0, false, "", "LEAGUES_SYSTEM_DECAY"},
        {"MINISERIES_CANCEL", "GOLD", "II", 0, true, "INACTIVE", "LEAGUES_SYSTEM_SERIES_ENDED_DECAY"},
        {"MINISERIES_CANCEL", "GOLD", "II", 0, false, "INACTIVE", "LEAGUES_SYSTEM_SERIES_ENDED"},
        {"MINISERIES_CANCEL", "GOLD", "II", 0, true, "WARNING", "LEAGUES_SYSTEM_SERIES_ENDED"},
        {"MINISERIES_CANCEL", "GOLD", "II", 0, true, "inactive", "LEAGUES_SYSTEM_SERIES_ENDED"},
        {"MINISERIES_LOST", "GOLD", "III", 0, false, "", "LEAGUES_MESSAGE_PROMOHELPER_MINISERIES_LOST"},
        {"MINISERIES_LOST", "GOLD", "I", 0, false, "", "LEAGUES_MESSAGE_MINISERIES_LOST"},
        {"MINISERIES_LOST", "CHALLENGER", "", 0, false, "", "LEAGUES_MESSAGE_MINISERIES_LOST"},
        {"LEAGUE_PROMOTED", "BRONZE", "V", 1, true, "INACTIVE", "LEAGUES_MESSAGE_LEAGUE_PROMOTED"},
        {"LEAGUE_POINTS_UPDATE", "SILVER", "I", 0, false, "", "LEAGUES_MESSAGE_LEAGUE_POINTS_UPDATE"},
        {"QUEUE_DODGE", "SILVER", "I", 0, false, "", "LEAGUES_MESSAGE_QUEUE_DODGE"},
        {"NOT_YET_SEEDED", "", "", 0, false, "", "LEAGUES_MESSAGE_NOT_YET_SEEDED"},
        {"LEAGUE_RESET", "GOLD", "I", 0, false, "", "LEAGUES_MESSAGE_LEAGUE_RESET"},
        {"league_demoted", "SILVER", "II", 0, false, "", "LEAGUES_MESSAGE_league_demoted"},
        {"", "", "", 0, false, "", "LEAGUES_MESSAGE_"},
    };
    for (const KeyRow& row : rows) {
        SCOPED_TRACE(std::string(row.reason) + " " + row.tier + " " + row.rank);
        EXPECT_EQ(SelectMessageKey(RecordOf(row)), row.key);
    }
}

TEST(SelectTitleKey, GivesTheReasonsOwnTitleOrTheGeneralOne) {
    struct Row {
        const char* reason;
        const char* queueType;
        const char* title;
    };
    const Row rows[] = {
        {"MINISERIES_START", "SOLO5V5", "LEAGUES_GENERAL_LEAGUE_MINISERIES_TITLE"},
        {"QUEUE_DODGE", "SOLO5V5", "LEAGUES_GENERAL_LEAGUE_MINISERIES_TITLE"},
        {"MINISERIES_LOST", "FLEXTT", "LEAGUES_GENERAL_LEAGUE_MINISERIES_TITLE"},
        {"MINISERIES_CANCEL", "SOLO5V5", "LEAGUES_SYSTEM_SERIES_ENDED_TITLE_SOLO5V5"},
        {"MINISERIES_CANCEL", "FLEXSR", "LEAGUES_SYSTEM_SERIES_ENDED_TITLE_FLEXSR"},
        {"MINISERIES_CANCEL", "NONE", "LEAGUES_SYSTEM_SERIES_ENDED_TITLE_NONE"},
        {"MINISERIES_CANCEL", "", "LEAGUES_SYSTEM_SERIES_ENDED_TITLE_"},
        {"LEAGUE_UPDATE_DECAY", "SOLO5V5", "LEAGUES_SYSTEM_DECAY_TITLE"},
        {"LEAGUE_DEMOTED", "SOLO5V5", "LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE"},
        {"LEAGUE_PROMOTED", "SOLO5V5", "LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE"},
        {"LEAGUE_POINTS_UPDATE", "SOLO5V5", "LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE"},
        {"NOT_YET_SEEDED", "SOLO5V5", "LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE"},
        {"MINISERIES_CANCEL ", "SOLO5V5", "LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE"},
        {"", "SOLO5V5", "LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.reason);
        Api::LeagueNotificationResource record;
        record.data.notifyReason = row.reason;
        record.data.queueType = row.queueType;
        EXPECT_EQ(SelectTitleKey(record), row.title);
    }
}

}  // namespace
}  // namespace Orvel::Client::Leagues
