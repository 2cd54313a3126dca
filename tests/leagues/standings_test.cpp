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

}  // namespace

}  // namespace Orvel::Client::Leagues
