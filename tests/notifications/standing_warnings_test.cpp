#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "notifications/notification_store.h"
#include "store_fixtures.h"

namespace Orvel::Client::Leagues {
namespace {

using test::Listed;
using Lines = std::vector<std::string>;

LCDS::LeagueItemDTO Entry(LCDS::LeagueTier tier, bool displayDecayWarning, std::string inactivityStatus,
                          std::string progress = "") {
    LCDS::LeagueItemDTO entry;
    entry.playerOrTeamId = "42";
    entry.playerOrTeamName = "Tester";
    entry.queueType = LCDS::QueueType::RANKED_FLEX_TT;
    entry.tier = tier;
    entry.displayDecayWarning = displayDecayWarning;
    entry.inactivityStatus = std::move(inactivityStatus);
    entry.miniSeries.progress = std::move(progress);
    entry.miniSeries.timeLeftToPlayMillis = 5000;
    entry.timeUntilInactivityStatusChanges = 86400000;
    return entry;
}

TEST(UpdateDecayWarnings, TheFirstMatchingRuleGivesTheWarning) {
    using LCDS::LeagueTier;
    struct Row {
        LCDS::LeagueItemDTO entry;
        const char* warning;  // empty for none
    };
    const Row rows[] = {
        {Entry(LeagueTier::SILVER, true, "INACTIVE"), "LEAGUES_SYSTEM_DECAY LEAGUES_SYSTEM_DECAY_TITLE 1300 ALERT"},
        {Entry(LeagueTier::SILVER, true, "INACTIVE", "WN"),
         "LEAGUES_SYSTEM_DECAY LEAGUES_SYSTEM_DECAY_TITLE 1300 ALERT"},
        {Entry(LeagueTier::GOLD, true, "WARNING", "WN"),
         "LEAGUES_SYSTEM_SERIES_INACTIVITY LEAGUES_SYSTEM_SERIES_INACTIVITY_TITLE 1400 ALERT"},
        {Entry(LeagueTier::GOLD, true, "", "N"),
         "LEAGUES_SYSTEM_SERIES_INACTIVITY LEAGUES_SYSTEM_SERIES_INACTIVITY_TITLE 1400 ALERT"},
        {Entry(LeagueTier::PLATINUM, true, "WARNING"),
         "LEAGUES_SYSTEM_DECAY_SOON LEAGUES_SYSTEM_DECAY_SOON_TITLE 1500 ALERT"},
        {Entry(LeagueTier::CHALLENGER, true, "GRACE"),
         "LEAGUES_SYSTEM_DECAY_IMMINENT LEAGUES_SYSTEM_DECAY_IMMINENT_TITLE 1600 ALERT"},
        {Entry(LeagueTier::GOLD, true, ""), ""},
        {Entry(LeagueTier::GOLD, true, "ACTIVE"), ""},
        {Entry(LeagueTier::GOLD, true, "inactive"), ""},
        {Entry(LeagueTier::BRONZE, true, "INACTIVE"), ""},
        {Entry(LeagueTier::BRONZE, true, "GRACE", "WN"), ""},
        {Entry(LeagueTier::SILVER, false, "INACTIVE"), ""},
        {Entry(LeagueTier::SILVER, false, "GRACE", "W"), ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.entry.inactivityStatus + " " + row.entry.miniSeries.progress + " " +
                     std::to_string(static_cast<int>(row.entry.tier)));
        LeagueNotificationStore store;
        store.UpdateDecayWarnings({row.entry});
        // One id goes to the demotion-shield rebuild that follows, after the warning's.
        EXPECT_EQ(Listed(store), *row.warning == '\0' ? Lines{} : Lines{std::string("0 ") + row.warning});
    }
}

TEST(UpdateDecayWarnings, RebuildsTheWholeListAndThenTheDemotionShieldWarnings) {
    LeagueNotificationStore store;
    LCDS::LeagueItemDTO shielded = Entry(LCDS::LeagueTier::GOLD, true, "GRACE");
    shielded.demotionWarning = 2;
    store.UpdateDecayWarnings({Entry(LCDS::LeagueTier::SILVER, true, "INACTIVE"), shielded});
    EXPECT_EQ(Listed(store),
              (Lines{
                  "0 LEAGUES_SYSTEM_DECAY LEAGUES_SYSTEM_DECAY_TITLE 1300 ALERT",
                  "1 LEAGUES_SYSTEM_DECAY_IMMINENT LEAGUES_SYSTEM_DECAY_IMMINENT_TITLE 1600 ALERT",
                  "3 LEAGUES_SYSTEM_DEMOTION_SHIELD_LEVEL_2_WARNING LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE 1800 ALERT",
              }));
    store.UpdateDecayWarnings({});
    EXPECT_TRUE(Listed(store).empty());
}

TEST(MakeStandingMessage, CopiesTheEntrysQueueInactivityAndSeriesTime) {
    LeagueNotificationStore store;
    const SharedNotification record =
        store.MakeStandingMessage(Entry(LCDS::LeagueTier::GOLD, true, "WARNING", "WL"), "TYPE", "TITLE", 1500);
    EXPECT_EQ(record->id, 0u);
    EXPECT_EQ(record->type, "TYPE");
    EXPECT_EQ(record->titleType, "TITLE");
    EXPECT_EQ(record->priority, 1500u);
    EXPECT_EQ(record->severity, Api::Severity::ALERT);
    EXPECT_EQ(record->msgId, "");
    EXPECT_EQ(record->data.queueType, "FLEXTT");
    EXPECT_EQ(record->data.inactivityStatus, "WARNING");
    EXPECT_EQ(record->data.playerOrTeamName, "Tester");
    EXPECT_EQ(record->data.playerOrTeamId, "");
    EXPECT_EQ(record->data.timeUntilInactivityStatusChanges, 86400000u);
    EXPECT_EQ(record->data.miniseriesTimeLeftToPlayMillis, 5000u);
    EXPECT_EQ(record->data.notifyReason, "");
    EXPECT_EQ(record->data.tier, "");
    EXPECT_TRUE(record->data.miniseriesResults.empty());
    EXPECT_EQ(record->data.minGamesForSeeding, -1);
    EXPECT_EQ(store.MakeStandingMessage(LCDS::LeagueItemDTO{}, "", "", 0)->data.queueType, "NONE");
}

TEST(UpdateDemotionShieldWarnings, UsesAnIdPerEntryAndWarnsOfLevelsOneAndTwo) {
    LeagueNotificationStore store;
    std::vector<LCDS::LeagueItemDTO> entries(5);
    const std::uint64_t levels[] = {0, 1, 2, 3, 18446744073709551615u};
    for (std::size_t index = 0; index < entries.size(); ++index) {
        entries[index].demotionWarning = levels[index];
        entries[index].playerOrTeamId = "p" + std::to_string(index);
        entries[index].queueType = static_cast<LCDS::QueueType>(index);
    }
    store.UpdateDemotionShieldWarnings(entries);
    EXPECT_EQ(Listed(store),
              (Lines{
                  "1 LEAGUES_SYSTEM_DEMOTION_SHIELD_LEVEL_1_WARNING LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE 2100 WARNING",
                  "2 LEAGUES_SYSTEM_DEMOTION_SHIELD_LEVEL_2_WARNING LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE 1800 ALERT",
              }));
    const std::vector<Api::LeagueNotificationResource> list = store.GetNotifications();
    EXPECT_EQ(list[0].data.playerOrTeamId, "p1");
    EXPECT_EQ(list[0].data.queueType, "SOLO5V5");
    EXPECT_EQ(list[1].data.queueType, "FLEXSR");
    EXPECT_EQ(list[1].data.playerOrTeamName, "");

    store.UpdateDemotionShieldWarnings({entries[0]});
    EXPECT_TRUE(Listed(store).empty());
    store.UpdateDemotionShieldWarnings({entries[1]});
    EXPECT_EQ(store.GetNotifications().at(0).id, 6u);
}

}  // namespace
}  // namespace Orvel::Client::Leagues
