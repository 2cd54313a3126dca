#include "leagues/league_list_conversion.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace Orvel::Client::Leagues {
namespace {

using Api::LeagueRank;
using Api::LeagueTier;

LCDS::LeagueItemDTO Entry(std::string id, LCDS::LeagueRank rank, bool inactive = false) {
    LCDS::LeagueItemDTO entry;
    entry.playerOrTeamId = id;
    entry.playerOrTeamName = "Player " + id;
    entry.rank = rank;
    entry.inactive = inactive;
    return entry;
}

LCDS::LeagueListDTO GoldList() {
    LCDS::LeagueListDTO list;
    list.tier = LCDS::LeagueTier::GOLD;
    list.queue = LCDS::QueueType::RANKED_SOLO_5x5;
    list.entries = {Entry("1", LCDS::LeagueRank::II), Entry("2", LCDS::LeagueRank::I), Entry("3", LCDS::LeagueRank::II),
                    Entry("42", LCDS::LeagueRank::III, true)};
    return list;
}

// The divisions' ranks with their standings' ids: "II: 1 3".
std::vector<std::string> Divisions(const Api::League& league) {
    static const char* const kRanks[] = {"I", "II", "III", "IV", "V", "NA"};
    std::vector<std::string> divisions;
    for (const Api::LeagueDivision& division : league.leagues) {
        std::string text = kRanks[static_cast<int>(division.leagueRank)] + std::string(":");
        for (const Api::LeagueStanding& standing : division.standings) {
            text += " " + standing.id;
        }
        divisions.push_back(text);
    }
    return divisions;
}

TEST(ConvertLeagueList, GroupsDivisionsInRankOrderKeepingTheServerOrderAndDropsOthersInactiveEntries) {
    const Api::League league = ConvertLeagueList(GoldList(), 7);
    EXPECT_EQ(Divisions(league), (std::vector<std::string>{"I: 2", "II: 1 3"}));
}

TEST(ConvertLeagueList, KeepsAnInactiveEntryThatIsTheRequesterOwn) {
    EXPECT_EQ(Divisions(ConvertLeagueList(GoldList(), 42)), (std::vector<std::string>{"I: 2", "II: 1 3", "III: 42"}));
    // The id is compared as decimal text: no sign, no leading zeros.
    LCDS::LeagueListDTO padded = GoldList();
    padded.entries.back().playerOrTeamId = "042";
    EXPECT_EQ(Divisions(ConvertLeagueList(padded, 42)), (std::vector<std::string>{"I: 2", "II: 1 3"}));
}

TEST(ConvertLeagueList, KeepsInactiveEntriesOfTheApexTiersInOneNaDivision) {
    for (const LCDS::LeagueTier tier : {LCDS::LeagueTier::MASTER, LCDS::LeagueTier::CHALLENGER}) {
        SCOPED_TRACE(static_cast<int>(tier));
        LCDS::LeagueListDTO list = GoldList();
        list.tier = tier;
        EXPECT_EQ(Divisions(ConvertLeagueList(list, 0)), std::vector<std::string>{"NA: 1 2 3 42"});
    }
}

TEST(ConvertLeagueList, PutsAnUnknownRankIntoTheNaDivisionAfterTheOthers) {
    LCDS::LeagueListDTO list;
    list.tier = LCDS::LeagueTier::PLATINUM;
    list.entries = {Entry("1", static_cast<LCDS::LeagueRank>(7)), Entry("2", LCDS::LeagueRank::V),
                    Entry("3", LCDS::LeagueRank::I)};
    EXPECT_EQ(Divisions(ConvertLeagueList(list, 0)), (std::vector<std::string>{"I: 3", "V: 2", "NA: 1"}));
}

TEST(ConvertLeagueList, ListWithoutEntriesHasNoDivisions) {
    EXPECT_TRUE(ConvertLeagueList(LCDS::LeagueListDTO{}, 0).leagues.empty());
}

TEST(ConvertLeagueList, CopiesTheListsFieldsAndLeavesTheRequesterRankNa) {
    LCDS::LeagueListDTO list;
    list.name = "Blue Owl's Den 2";
    list.tier = LCDS::LeagueTier::CHALLENGER;
    list.queue = LCDS::QueueType::RANKED_FLEX_TT;
    list.requestorsName = "Some One 9";
    list.nextApexUpdate = 1700000000000;
    list.maxLeagueSize = 200;
    const Api::League league = ConvertLeagueList(list, 1);
    EXPECT_EQ(league.queueType, Api::LeagueQueueType::FLEXTT);
    EXPECT_EQ(league.leagueTier, LeagueTier::CHALLENGER);
    EXPECT_EQ(league.requesterLeagueRank, LeagueRank::NA);
    EXPECT_EQ(league.leagueName, "BlueOwlsDen");
    EXPECT_EQ(league.name, "Some One 9");
    EXPECT_EQ(league.challengerNextPromotionUpdateInMs, 1700000000000u);
    EXPECT_EQ(league.maxLeagueSize, 200u);
}

TEST(ConvertLeagueList, FillsEveryFieldOfAStanding) {
    LCDS::LeagueListDTO list;
    list.tier = LCDS::LeagueTier::SILVER;
    LCDS::LeagueItemDTO entry = Entry("12", LCDS::LeagueRank::IV);
    entry.playerOrTeamName = "Twelve";
    entry.previousDayLeaguePosition = 9;
    entry.wins = 30;
    entry.losses = 20;
    entry.veteran = true;
    entry.hotStreak = true;
    entry.miniSeries = {"WLN", 1, 1, 2, 5000};
    entry.leaguePoints = -5;
    entry.inactivityStatus = "ACTIVE";
    entry.apexDaysUntilDecay = -3;
    list.entries = {entry};

    const Api::League league = ConvertLeagueList(list, 0);
    ASSERT_EQ(league.leagues.size(), 1u);
    ASSERT_EQ(league.leagues[0].standings.size(), 1u);
    const Api::LeagueStanding& standing = league.leagues[0].standings[0];
    EXPECT_EQ(standing.id, "12");
    EXPECT_EQ(standing.name, "Twelve");
    EXPECT_EQ(standing.position, 0u);
    EXPECT_EQ(standing.positionDelta, 0);
    EXPECT_EQ(standing.previousPosition, 9u);
    EXPECT_EQ(standing.emblems, (std::vector{Api::LeagueEmblem::HOTSTREAK, Api::LeagueEmblem::VETERAN}));
    EXPECT_EQ(standing.wins, 30u);
    EXPECT_EQ(standing.losses, 20u);
    EXPECT_EQ(standing.miniseriesResults, (std::vector{Api::Miniseries::W, Api::Miniseries::L, Api::Miniseries::N}));
    EXPECT_EQ(standing.points, -5);
    EXPECT_FALSE(standing.inactive);
    EXPECT_FALSE(standing.pendingPromotion);
    EXPECT_FALSE(standing.pendingDemotion);
    EXPECT_EQ(standing.inactivityStatus, "ACTIVE");
    EXPECT_EQ(standing.apexDaysUntilDecay, -3);
    EXPECT_EQ(standing.miniseriesWins, 1u);
    EXPECT_EQ(standing.miniseriesLosses, 1u);
    EXPECT_EQ(standing.leagueTier, LeagueTier::SILVER);
}

TEST(StripLeagueName, KeepsOnlyAsciiLetters) {
    const std::pair<std::string, std::string> rows[] = {
        {"Blue Owl's Den 2", "BlueOwlsDen"},
        {"", ""},
        {"2024 !?", ""},
        {"AZaz@[`{", "AZaz"},
        {"Caf\xC3\xA9 Noir", "CafNoir"},
        {std::string("A\0B", 3), "AB"},
    };
    for (const auto& [name, stripped] : rows) {
        SCOPED_TRACE(name);
        EXPECT_EQ(StripLeagueName(name), stripped);
    }
}

}  // namespace
}  // namespace Orvel::Client::Leagues
