#include "leagues/standing_positions.h"

#include <cstdint>
#include <vector>

namespace Orvel::Client::Leagues {
namespace {

void NumberFrom(std::uint64_t first, std::vector<Api::LeagueStanding>& standings) {
    std::uint64_t position = first;
    for (Api::LeagueStanding& standing : standings) {
        standing.position = position++;
        if (standing.previousPosition != 0) {
            // Positive when the player climbed; modular, so any two positions give a value.
            standing.positionDelta = static_cast<std::int64_t>(standing.previousPosition - standing.position);
        }
    }
}

}  // namespace

void AssignStandingPositions(Api::League& league, const Api::League& reference) {
    if (league.leagueTier == Api::LeagueTier::MASTER && !league.leagues.empty()) {
        NumberFrom(reference.maxLeagueSize + 1, league.leagues.front().standings);
        return;
    }
    for (Api::LeagueDivision& division : league.leagues) {
        NumberFrom(1, division.standings);
    }
}

}  // namespace Orvel::Client::Leagues
