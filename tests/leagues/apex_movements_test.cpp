#include "leagues/apex_movements.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

namespace Orvel::Client::Leagues {
namespace {

using Api::LeagueStanding;
using Api::Miniseries;

// What the apex order reads of a standing; the rest stays at its default.
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

LeagueStanding Standing(const Criteria& criteria) {
    LeagueStanding standing;
    standing.name = criteria.name;
    standing.points = criteria.points;
    standing.wins = criteria.wins;
    standing.losses = criteria.losses;
    standing.previousPosition = criteria.previousPosition;
    standing.miniseriesResults = criteria.results;
    standing.miniseriesWins = criteria.seriesWins;
    standing.miniseriesLosses = criteria.seriesLosses;
    return standing;
}

// A standing in a series with the given results and counts.
LeagueStanding InSeries(std::vector<Miniseries> results, std::uint64_t wins, std::uint64_t losses) {
    return Standing({.name = "s", .results = std::move(results), .seriesWins = wins, .seriesLosses = losses});
}

LeagueStanding WithPoints(std::string name, std::int64_t points) {
    return Standing({.name = std::move(name), .points = points});
}

struct OrderRow {
    const char* criterion;
    LeagueStanding above;
    LeagueStanding below;
};

TEST(ApexStandingRanksAbove, EachCriterionDecidesWhenTheEarlierOnesAreEqual) {
    using enum Miniseries;
    const OrderRow rows[] = {
        {"more series games, before points", InSeries({W, L, N}, 1, 1), Standing({.points = 900})},
        {"more series games", InSeries({W, L}, 1, 1), InSeries({W, N}, 1, 0)},
        {"more series wins", InSeries({W, W}, 2, 0), InSeries({W, L}, 1, 1)},
        {"more series results", InSeries({W, N, N}, 1, 0), InSeries({W, N}, 1, 0)},
        {"in a series before an equal standing outside one", InSeries({W}, 0, 0), Standing({.name = "s"})},
        {"series counts count only beside series results", Standing({.points = 10}),
         Standing({.points = 5, .seriesWins = 3})},
        {"more points", Standing({.points = 10}), Standing({.points = -5})},
        {"more points, both negative", Standing({.points = -1}), Standing({.points = -2})},
        {"more wins", Standing({.wins = 11, .losses = 9}), Standing({.wins = 10, .losses = 0})},
        {"fewer losses", Standing({.losses = 1, .previousPosition = 9}),
         Standing({.losses = 2, .previousPosition = 1})},
        {"smaller previous position", Standing({.name = "z", .previousPosition = 3}),
         Standing({.name = "a", .previousPosition = 5})},
        {"unknown previous position first", Standing({.name = "z", .previousPosition = 0}),
         Standing({.name = "a", .previousPosition = 1})},
        {"name in byte order", Standing({.name = "Ab"}), Standing({.name = "a"})},
        {"shorter name first", Standing({.name = "a"}), Standing({.name = "ab"})},
    };
    for (const OrderRow& row : rows) {
        SCOPED_TRACE(row.criterion);
        EXPECT_TRUE(ApexStandingRanksAbove(row.above, row.below));
        EXPECT_FALSE(ApexStandingRanksAbove(row.below, row.above));
    }
}

TEST(ApexStandingRanksAbove, IsFalseBothWaysForEqualStandings) {
    const LeagueStanding a = InSeries({Miniseries::W}, 1, 0);
    EXPECT_FALSE(ApexStandingRanksAbove(a, a));
    const LeagueStanding b = Standing({.name = "same", .points = 7, .wins = 3});
    EXPECT_FALSE(ApexStandingRanksAbove(b, LeagueStanding(b)));
}

Api::League ApexLeague(std::vector<std::int64_t> points, std::uint64_t places, const char* prefix) {
    Api::League league;
    league.maxLeagueSize = places;
    Api::LeagueDivision division;
    for (const std::int64_t value : points) {
        division.standings.push_back(WithPoints(prefix + std::to_string(value), value));
    }
    league.leagues.push_back(std::move(division));
    return league;
}

Api::League Challenger(std::vector<std::int64_t> points, std::uint64_t places) {
    return ApexLeague(std::move(points), places, "C");
}
Api::League Master(std::vector<std::int64_t> points) {
    return ApexLeague(std::move(points), 0, "M");
}

// The first division in its order, "+" after a pending promotion, "-" after a
// pending demotion: "C900 C100-".
std::string Marks(const Api::League& league) {
    std::string text;
    for (const LeagueStanding& standing : league.leagues.at(0).standings) {
        text += (text.empty() ? "" : " ") + standing.name + (standing.pendingPromotion ? "+" : "") +
                (standing.pendingDemotion ? "-" : "");
    }
    return text;
}

struct MovementRow {
    const char* situation;
    std::vector<std::int64_t> challengers;
    std::uint64_t places;
    std::vector<std::int64_t> masters;
    const char* challengerMarks;
    const char* masterMarks;
};

TEST(MarkApexMovements, SortsBothLeaguesAndMarksWhoMoves) {
    const MovementRow rows[] = {
        {"full league", {100, 900, 500}, 3, {50, 700}, "C900 C500 C100-", "M700+ M50"},
        {"places run out with masters left", {900, 800}, 2, {850, 10}, "C900 C800-", "M850+ M10"},
        {"masters below every challenger", {300, 200}, 2, {100}, "C300 C200", "M100"},
        {"short league: challengers run out first", {900}, 4, {800, 700, 600, 500}, "C900", "M800+ M700+ M600+ M500"},
        {"over-full league: masters run out first",
         {900, 800, 700, 600, 500},
         4,
         {850},
         "C900 C800 C700 C600- C500-",
         "M850+"},
        {"no places", {900, 800}, 0, {850}, "C900- C800-", "M850"},
    };
    for (const MovementRow& row : rows) {
        SCOPED_TRACE(row.situation);
        Api::League challenger = Challenger(row.challengers, row.places);
        Api::League master = Master(row.masters);
        MarkApexMovements(challenger, master);
        EXPECT_EQ(Marks(challenger), row.challengerMarks);
        EXPECT_EQ(Marks(master), row.masterMarks);
    }
}

TEST(MarkApexMovements, AMasterEqualToAChallengerInEveryCriterionTakesThePlace) {
    Api::League challenger = Challenger({100}, 1);
    Api::League master = Master({100});
    master.leagues[0].standings[0].name = challenger.leagues[0].standings[0].name;
    MarkApexMovements(challenger, master);
    EXPECT_EQ(Marks(challenger), "C100-");
    EXPECT_EQ(Marks(master), "C100+");
}

TEST(MarkApexMovements, WithAnEmptyChallengerLeagueTheBestMastersFillThePlaces) {
    Api::League challenger = Challenger({}, 2);
    challenger.leagues.clear();
    Api::League master = Master({10, 30, 20});
    MarkApexMovements(challenger, master);
    EXPECT_EQ(Marks(master), "M30+ M20+ M10");

    challenger.maxLeagueSize = 5;
    MarkApexMovements(challenger, master);
    EXPECT_EQ(Marks(master), "M30+ M20+ M10+");
}

TEST(MarkApexMovements, WithAnEmptyMasterLeagueNothingHappens) {
    Api::League challenger = Challenger({100, 900}, 1);
    Api::League master;
    MarkApexMovements(challenger, master);
    EXPECT_EQ(Marks(challenger), "C100 C900");
}

TEST(MarkApexMovements, OnlyTheFirstDivisionsTakePart) {
    Api::League challenger = Challenger({900}, 1);
    challenger.leagues.push_back({Api::LeagueRank::NA, {WithPoints("X1", 1), WithPoints("X5", 5)}});
    Api::League master = Master({950});
    MarkApexMovements(challenger, master);
    EXPECT_EQ(Marks(challenger), "C900-");
    EXPECT_EQ(challenger.leagues[1].standings[0].name, "X1");
    EXPECT_FALSE(challenger.leagues[1].standings[0].pendingDemotion);
    EXPECT_FALSE(challenger.leagues[1].standings[1].pendingDemotion);
}

}  // namespace
}  // namespace Orvel::Client::Leagues
