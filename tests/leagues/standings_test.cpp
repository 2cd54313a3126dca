#include "leagues/standings.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <sstream>
#include <string>
#include <vector>

#include "leagues/mappings.h"
#include "support/case_table.h"

namespace Orvel::Client::Leagues {

namespace {

using Api::LeagueRank;
using Api::LeagueStanding;
using Api::LeagueTier;
using Api::Miniseries;
using Lines = std::vector<std::string>;

LCDS::LeagueItemDTO Entry(std::string id, std::int32_t rank, bool inactive = false) {
    LCDS::LeagueItemDTO entry;
    entry.playerOrTeamId = id;
    entry.rank = static_cast<LCDS::LeagueRank>(rank);
    entry.inactive = inactive;
    return entry;
}

// The divisions' ranks with their standings' ids: "II: 1 3".
Lines Divisions(LCDS::LeagueTier tier, std::uint64_t requesterId, std::string inactiveId = "42") {
    LCDS::LeagueListDTO list;
    list.tier = tier;
    list.entries = {Entry("1", 1), Entry("2", 0), Entry("3", 1), Entry(inactiveId, 2, true), Entry("9", 7)};
    static const char* const kRanks[] = {"I", "II", "III", "IV", "V", "NA"};
    Lines divisions;
    for (const Api::LeagueDivision& division : ConvertLeagueList(list, requesterId).leagues) {
        std::string text = kRanks[static_cast<int>(division.leagueRank)] + std::string(":");
        for (const Api::LeagueStanding& standing : division.standings) {
            text += " " + standing.id;
        }
        divisions.push_back(text);
    }
    return divisions;
}

TEST(ConvertLeagueList, GroupsDivisionsInRankOrderAndDropsOthersInactiveEntriesBelowTheApexTiers) {
    EXPECT_EQ(Divisions(LCDS::LeagueTier::GOLD, 7), (Lines{"I: 2", "II: 1 3", "NA: 9"}));
    EXPECT_EQ(Divisions(LCDS::LeagueTier::GOLD, 42), (Lines{"I: 2", "II: 1 3", "III: 42", "NA: 9"}));
    // The requester's id is compared as decimal text: no sign, no leading zeros.
    EXPECT_EQ(Divisions(LCDS::LeagueTier::GOLD, 42, "042"), (Lines{"I: 2", "II: 1 3", "NA: 9"}));
    EXPECT_EQ(Divisions(LCDS::LeagueTier::MASTER, 0), Lines{"NA: 1 2 3 42 9"});
    EXPECT_EQ(Divisions(LCDS::LeagueTier::CHALLENGER, 0), Lines{"NA: 1 2 3 42 9"});
    EXPECT_TRUE(ConvertLeagueList(LCDS::LeagueListDTO{}, 0).leagues.empty());
}

TEST(ConvertLeagueList, KeepsTheMaximumSizeAndFillsEveryFieldOfAStanding) {
    LCDS::LeagueListDTO list;
    list.name = "AZaz@[`{ Caf\xC3\xA9's 2";
    list.tier = LCDS::LeagueTier::SILVER;
    list.maxLeagueSize = 200;
    LCDS::LeagueItemDTO entry = Entry("12", 3);
    entry.playerOrTeamName = "Twelve";
    entry.previousDayLeaguePosition = 9;
    entry.wins = 30;
    entry.losses = 20;
    entry.veteran = true;
    entry.hotStreak = true;
    entry.miniSeries = {"WLN", 1, 2, 2, 5000};
    entry.leaguePoints = -5;
    entry.inactivityStatus = "ACTIVE";
    entry.apexDaysUntilDecay = -3;
    list.entries = {entry};
    const Api::League league = ConvertLeagueList(list, 1);
    EXPECT_EQ(league.leagueName, "AZazCafs");
    EXPECT_EQ(league.maxLeagueSize, 200u);
    ASSERT_EQ(league.leagues.size(), 1u);
    EXPECT_EQ(league.leagues[0].leagueRank, LeagueRank::IV);
    const LeagueStanding& s = league.leagues[0].standings.at(0);
    EXPECT_EQ(s.id + " " + s.name + " " + std::to_string(s.position) + " " + std::to_string(s.positionDelta) + " " +
                  std::to_string(s.previousPosition) + " " + std::to_string(s.wins) + " " + std::to_string(s.losses) +
                  " " + std::to_string(s.points) + " " + std::to_string(s.miniseriesWins) + " " +
                  std::to_string(s.miniseriesLosses) + " " + s.inactivityStatus + " " +
                  std::to_string(s.apexDaysUntilDecay) + " " + std::to_string(static_cast<int>(s.leagueTier)),
              "12 Twelve 0 0 9 30 20 -5 1 2 ACTIVE -3 2");
    EXPECT_EQ(s.emblems, (std::vector{Api::LeagueEmblem::HOTSTREAK, Api::LeagueEmblem::VETERAN}));
    EXPECT_EQ(s.miniseriesResults, (std::vector{Miniseries::W, Miniseries::L, Miniseries::N}));
    EXPECT_FALSE(s.inactive || s.pendingPromotion || s.pendingDemotion);
    EXPECT_EQ(StripLeagueName(std::string("A\0z", 3)), "Az");
}

// Each division's "position/delta" pairs, numbered against a reference league of the given places.
Lines Positions(LeagueTier tier, std::vector<std::vector<std::uint64_t>> previousPositions, std::uint64_t places) {
    Api::League league;
    league.leagueTier = tier;
    for (const std::vector<std::uint64_t>& previous : previousPositions) {
        league.leagues.emplace_back();
        for (const std::uint64_t position : previous) {
            league.leagues.back().standings.emplace_back().previousPosition = position;
            league.leagues.back().standings.back().positionDelta = 7;
        }
    }
    Api::League reference;
    reference.maxLeagueSize = places;
    AssignStandingPositions(league, reference);
    Lines divisions;
    for (const Api::LeagueDivision& division : league.leagues) {
        std::string text;
        for (const LeagueStanding& standing : division.standings) {
            text += (text.empty() ? "" : " ") + std::to_string(standing.position) + "/" +
                    std::to_string(standing.positionDelta);
        }
        divisions.push_back(text);
    }
    return divisions;
}

TEST(AssignStandingPositions, OnlyTheFirstMasterDivisionContinuesAfterTheReferencesPlaces) {
    EXPECT_EQ(Positions(LeagueTier::MASTER, {{0, 0}, {0}}, 200), (Lines{"201/7 202/7", "0/7"}));
    EXPECT_EQ(Positions(LeagueTier::MASTER, {{0}}, 0), Lines{"1/7"});
    EXPECT_TRUE(Positions(LeagueTier::MASTER, {}, 200).empty());
    // Without a previous position the delta keeps its value; otherwise previous minus new.
    for (const LeagueTier tier : {LeagueTier::GOLD, LeagueTier::CHALLENGER, LeagueTier::NONE}) {
        SCOPED_TRACE(static_cast<int>(tier));
        EXPECT_EQ(Positions(tier, {{0, 9, 3, 1, 4}, {0, 0}}, 200), (Lines{"1/7 2/7 3/0 4/-3 5/-1", "1/7 2/7"}));
    }
}

// A standing from "name points wins losses previous-position series-results series-wins series-losses", "-"
// for no name or no results.
LeagueStanding Standing(const std::string& text) {
    LeagueStanding standing;
    std::string results;
    std::istringstream fields(text);
    fields >> standing.name >> standing.points >> standing.wins >> standing.losses >> standing.previousPosition >>
        results >> standing.miniseriesWins >> standing.miniseriesLosses;
    standing.name = standing.name == "-" ? "" : standing.name;
    standing.miniseriesResults = ParseMiniseriesProgress(results == "-" ? "" : results);
    return standing;
}

TEST(ApexStandingRanksAbove, EachCriterionDecidesWhenTheEarlierOnesAreEqual) {
    const auto rows = tav::test::ReadCases(__FILE__, "apex_order.tsv");
    ASSERT_EQ(rows.size(), 12u);
    for (const std::vector<std::string>& row : rows) {
        SCOPED_TRACE(row.at(0));
        const LeagueStanding above = Standing(row.at(1));
        const LeagueStanding below = Standing(row.at(2));
        EXPECT_TRUE(ApexStandingRanksAbove(above, below));
        EXPECT_FALSE(ApexStandingRanksAbove(below, above));
        EXPECT_FALSE(ApexStandingRanksAbove(above, above));
    }
}

// The first division of each league after marking, "+" after a pending
// promotion, "-" after a pending demotion: "C900 C100- | M50+".
std::string Marks(const std::string& challengers, std::uint64_t places, const std::string& masters,
                  const char* masterPrefix = "M") {
    Api::League apex[2];
    apex[0].maxLeagueSize = places;
    const std::string* points[] = {&challengers, &masters};
    for (int index = 0; index < 2; ++index) {
        if (!points[index]->empty()) {
            apex[index].leagues.emplace_back();
        }
        std::istringstream values(*points[index]);
        for (std::string value; values >> value;) {
            const std::string name = (index == 0 ? "C" : masterPrefix) + value;
            apex[index].leagues.back().standings.push_back(Standing(name + " " + value + " 0 0 0 - 0 0"));
        }
    }
    MarkApexMovements(apex[0], apex[1]);
    std::string text;
    for (int index = 0; index < 2; ++index) {
        text += index == 0 ? "" : " |";
        for (const Api::LeagueDivision& division : apex[index].leagues) {
            for (const LeagueStanding& s : division.standings) {
                text += " " + s.name + (s.pendingPromotion ? "+" : "") + (s.pendingDemotion ? "-" : "");
            }
        }
    }
    return text;
}

TEST(MarkApexMovements, SortsBothLeaguesAndMarksWhoMovesInTheFirstDivisionsOnly) {
    const auto rows = tav::test::ReadCases(__FILE__, "apex_movements.tsv");
    ASSERT_EQ(rows.size(), 10u);
    for (const std::vector<std::string>& row : rows) {
        EXPECT_EQ(Marks(row.at(0), std::stoull(row.at(1)), row.at(2)), " " + row.at(3));
    }
    // A master equal in every criterion takes the place.
    EXPECT_EQ(Marks("100", 1, "100", "C"), " C100- | C100+");

    Api::League challenger;
    challenger.maxLeagueSize = 1;
    challenger.leagues = {{LeagueRank::NA, {Standing("- 900 0 0 0 - 0 0")}},
                          {LeagueRank::NA, {Standing("X1 1 0 0 0 - 0 0"), Standing("- 5 0 0 0 - 0 0")}}};
    Api::League master;
    master.leagues = {{LeagueRank::NA, {Standing("- 950 0 0 0 - 0 0")}}};
    MarkApexMovements(challenger, master);
    EXPECT_TRUE(challenger.leagues[0].standings[0].pendingDemotion);
    EXPECT_EQ(challenger.leagues[1].standings[0].name, "X1");
    EXPECT_FALSE(challenger.leagues[1].standings[0].pendingDemotion ||
                 challenger.leagues[1].standings[1].pendingDemotion);
}

}  // namespace

}  // namespace Orvel::Client::Leagues
