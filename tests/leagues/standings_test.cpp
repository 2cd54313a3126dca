#include "leagues/standings.h"

#include <gtest/gtest.h>

#include <cstdint>
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

using Api::LeagueTier;

Api::LeagueDivision Division(std::vector<std::uint64_t> previousPositions) {
    Api::LeagueDivision division;
    for (const std::uint64_t previous : previousPositions) {
        Api::LeagueStanding standing;
        standing.previousPosition = previous;
        division.standings.push_back(standing);
    }
    return division;
}

Api::League League(LeagueTier tier, std::vector<Api::LeagueDivision> divisions, std::uint64_t maxLeagueSize = 0) {
    Api::League league;
    league.leagueTier = tier;
    league.leagues = std::move(divisions);
    league.maxLeagueSize = maxLeagueSize;
    return league;
}

// Each division's "position/delta" pairs.
std::vector<std::string> Positions(const Api::League& league) {
    std::vector<std::string> divisions;
    for (const Api::LeagueDivision& division : league.leagues) {
        std::string text;
        for (const Api::LeagueStanding& standing : division.standings) {
            text += (text.empty() ? "" : " ") + std::to_string(standing.position) + "/" +
                    std::to_string(standing.positionDelta);
        }
        divisions.push_back(text);
    }
    return divisions;
}

TEST(AssignStandingPositions, MasterPlacesContinueAfterTheReferenceLeaguesPlaces) {
    const Api::League challenger = League(LeagueTier::CHALLENGER, {}, 200);
    Api::League master = League(LeagueTier::MASTER, {Division({0, 0, 0})});
    AssignStandingPositions(master, challenger);
    EXPECT_EQ(Positions(master), std::vector<std::string>{"201/0 202/0 203/0"});

    AssignStandingPositions(master, Api::League{});
    EXPECT_EQ(Positions(master), std::vector<std::string>{"1/0 2/0 3/0"});
}

TEST(AssignStandingPositions, OnlyTheFirstMasterDivisionIsNumbered) {
    Api::League master = League(LeagueTier::MASTER, {Division({0, 0}), Division({0})});
    AssignStandingPositions(master, League(LeagueTier::CHALLENGER, {}, 3));
    EXPECT_EQ(Positions(master), (std::vector<std::string>{"4/0 5/0", "0/0"}));
}

TEST(AssignStandingPositions, EveryOtherDivisionCountsFromOneWhateverTheReference) {
    const Api::League reference = League(LeagueTier::CHALLENGER, {}, 200);
    for (const LeagueTier tier : {LeagueTier::GOLD, LeagueTier::CHALLENGER, LeagueTier::NONE}) {
        SCOPED_TRACE(static_cast<int>(tier));
        Api::League league = League(tier, {Division({0, 0}), Division({0, 0, 0})});
        AssignStandingPositions(league, reference);
        EXPECT_EQ(Positions(league), (std::vector<std::string>{"1/0 2/0", "1/0 2/0 3/0"}));
    }
}

TEST(AssignStandingPositions, TheDeltaIsThePreviousPositionMinusTheNewOne) {
    Api::League league = League(LeagueTier::GOLD, {Division({0, 9, 3, 1, 4})});
    AssignStandingPositions(league, Api::League{});
    EXPECT_EQ(Positions(league), std::vector<std::string>{"1/0 2/7 3/0 4/-3 5/-1"});
}

TEST(AssignStandingPositions, WithoutAPreviousPositionTheDeltaKeepsItsValue) {
    Api::League league = League(LeagueTier::GOLD, {Division({0})});
    league.leagues[0].standings[0].positionDelta = 7;
    AssignStandingPositions(league, Api::League{});
    EXPECT_EQ(Positions(league), std::vector<std::string>{"1/7"});
}

TEST(AssignStandingPositions, ALeagueWithoutDivisionsIsLeftAsItIs) {
    Api::League master = League(LeagueTier::MASTER, {});
    AssignStandingPositions(master, League(LeagueTier::CHALLENGER, {}, 200));
    EXPECT_TRUE(master.leagues.empty());
}

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
