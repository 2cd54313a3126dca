#include "leagues/standing_positions.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

namespace Orvel::Client::Leagues {
namespace {

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

}  // namespace
}  // namespace Orvel::Client::Leagues
