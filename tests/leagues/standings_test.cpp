#include "leagues/standings.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

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

struct Criteria {
    std::string name = "";
    std::int64_t points = 0;
    std::uint64_t wins = 0;
    std::uint64_t losses = 0;
    std::uint64_t previousPosition = 0;
    std::vector<Miniseries> results = {};
    std::uint64_t seriesWins = 0;
    std::uint64_t seriesLosses = 0;
};

LeagueStanding Standing(const Criteria& c) {
    LeagueStanding standing;
    standing.name = c.name;
    standing.points = c.points;
    standing.wins = c.wins;
    standing.losses = c.losses;
    standing.previousPosition = c.previousPosition;
    standing.miniseriesResults = c.results;
    standing.miniseriesWins = c.seriesWins;
    standing.miniseriesLosses = c.seriesLosses;
    return standing;
}

LeagueStanding InSeries(std::vector<Miniseries> results, std::uint64_t wins, std::uint64_t losses) {
    return Standing({.name = "s", .results = std::move(results), .seriesWins = wins, .seriesLosses = losses});
}

TEST(ApexStandingRanksAbove, EachCriterionDecidesWhenTheEarlierOnesAreEqual) {
    using enum Miniseries;
    const struct {
        const char* criterion;
        LeagueStanding above;
        LeagueStanding below;
    } rows[] = {
        {"more series games, before points", InSeries({W, L, N}, 1, 1), Standing({.points = 900})},
        {"more series games", InSeries({W, L}, 1, 1), InSeries({W, N}, 1, 0)},
        {"more series wins", InSeries({W, W}, 2, 0), InSeries({W, L}, 1, 1)},
        {"more series results", InSeries({W, N, N}, 1, 0), InSeries({W, N}, 1, 0)},
        {"in a series before an equal standing outside one", InSeries({W}, 0, 0), Standing({.name = "s"})},
        {"series counts count only beside series results", Standing({.points = 10}),
         Standing({.points = 5, .seriesWins = 3})},
        {"more points, both negative", Standing({.points = -1}), Standing({.points = -2})},
        {"more wins", Standing({.wins = 11, .losses = 9}), Standing({.wins = 10, .losses = 0})},
        {"fewer losses", Standing({.losses = 1, .previousPosition = 9}),
         Standing({.losses = 2, .previousPosition = 1})},
        {"unknown previous position first", Standing({.name = "z", .previousPosition = 0}),
         Standing({.name = "a", .previousPosition = 1})},
        {"name in byte order", Standing({.name = "Ab"}), Standing({.name = "a"})},
        {"shorter name first", Standing({.name = "a"}), Standing({.name = "ab"})},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.criterion);
        EXPECT_TRUE(ApexStandingRanksAbove(row.above, row.below));
        EXPECT_FALSE(ApexStandingRanksAbove(row.below, row.above));
        EXPECT_FALSE(ApexStandingRanksAbove(row.above, row.above));
    }
}

// The first division of each league after marking, "+" after a pending
// promotion, "-" after a pending demotion: "C900 C100- | M50+".
std::string Marks(std::vector<std::int64_t> challengers, std::uint64_t places, std::vector<std::int64_t> masters,
                  const char* masterPrefix = "M") {
    Api::League apex[2];
    apex[0].maxLeagueSize = places;
    const std::vector<std::int64_t>* points[] = {&challengers, &masters};
    for (int index = 0; index < 2; ++index) {
        if (!points[index]->empty()) {
            apex[index].leagues.emplace_back();
        }
        for (const std::int64_t value : *points[index]) {
            const std::string name = (index == 0 ? "C" : masterPrefix) + std::to_string(value);
            apex[index].leagues.back().standings.push_back(Standing({.name = name, .points = value}));
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

TEST(MarkApexMovements, SortsBothLeaguesAndMarksWhoMoves) {
    const std::pair<std::string, const char*> rows[] = {
        {Marks({100, 900, 500}, 3, {50, 700}), " C900 C500 C100- | M700+ M50"},
        {Marks({900, 800}, 2, {850, 10}), " C900 C800- | M850+ M10"},
        {Marks({300, 200}, 2, {100}), " C300 C200 | M100"},
        // Short league: challengers run out first; over-full: masters do.
        {Marks({900}, 4, {800, 700, 600, 500}), " C900 | M800+ M700+ M600+ M500"},
        {Marks({900, 800, 700, 600, 500}, 4, {850}), " C900 C800 C700 C600- C500- | M850+"},
        // Both run out before the places do (the sanitizer build sees a step past the masters).
        {Marks({900}, 5, {800}), " C900 | M800+"},
        {Marks({900, 800}, 0, {850}), " C900- C800- | M850"},
        // An empty challenger league: the best masters fill the places.
        {Marks({}, 2, {10, 30, 20}), " | M30+ M20+ M10"},
        {Marks({}, 5, {10, 30, 20}), " | M30+ M20+ M10+"},
        // An empty master league: nothing happens, not even sorting.
        {Marks({100, 900}, 1, {}), " C100 C900 |"},
        // A master equal in every criterion takes the place.
        {Marks({100}, 1, {100}, "C"), " C100- | C100+"},
    };
    for (const auto& [actual, expected] : rows) {
        EXPECT_EQ(actual, expected);
    }
}

TEST(MarkApexMovements, OnlyTheFirstDivisionsTakePart) {
    Api::League challenger;
    challenger.maxLeagueSize = 1;
    challenger.leagues = {{LeagueRank::NA, {Standing({.points = 900})}},
                          {LeagueRank::NA, {Standing({.name = "X1", .points = 1}), Standing({.points = 5})}}};
    Api::League master;
    master.leagues = {{LeagueRank::NA, {Standing({.points = 950})}}};
    MarkApexMovements(challenger, master);
    EXPECT_TRUE(challenger.leagues[0].standings[0].pendingDemotion);
    EXPECT_EQ(challenger.leagues[1].standings[0].name, "X1");
    EXPECT_FALSE(challenger.leagues[1].standings[0].pendingDemotion ||
                 challenger.leagues[1].standings[1].pendingDemotion);
}

}  // namespace

}  // namespace Orvel::Client::Leagues
