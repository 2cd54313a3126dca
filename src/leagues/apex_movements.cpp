#include "leagues/apex_movements.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace Orvel::Client::Leagues {
namespace {

using Standings = std::vector<Api::LeagueStanding>;

std::uint64_t SeriesGamesPlayed(const Api::LeagueStanding& standing) {
    return standing.miniseriesWins + standing.miniseriesLosses;
}

// A standing without series results may still carry series counts, and then
// the apex order can run in a circle; a merge sort stays within the list
// whatever the comparisons answer, where a quicksort could run past its ends.
void SortByApexOrder(Standings& standings) {
    std::stable_sort(standings.begin(), standings.end(), ApexStandingRanksAbove);
}

}  // namespace

bool ApexStandingRanksAbove(const Api::LeagueStanding& a, const Api::LeagueStanding& b) {
    if (!a.miniseriesResults.empty() || !b.miniseriesResults.empty()) {
        if (SeriesGamesPlayed(a) != SeriesGamesPlayed(b)) {
            return SeriesGamesPlayed(a) > SeriesGamesPlayed(b);
        }
        if (a.miniseriesWins != b.miniseriesWins) {
            return a.miniseriesWins > b.miniseriesWins;
        }
        if (a.miniseriesLosses != b.miniseriesLosses) {
            return a.miniseriesLosses < b.miniseriesLosses;
        }
        if (a.miniseriesResults.size() != b.miniseriesResults.size()) {
            return a.miniseriesResults.size() > b.miniseriesResults.size();
        }
    }
    if (a.points != b.points) {
        return a.points > b.points;
    }
    if (a.wins != b.wins) {
        return a.wins > b.wins;
    }
    if (a.losses != b.losses) {
        return a.losses < b.losses;
    }
    if (a.previousPosition != b.previousPosition) {
        return a.previousPosition < b.previousPosition;
    }
    return a.name < b.name;
}

void MarkApexMovements(Api::League& challenger, Api::League& master) {
    if (master.leagues.empty()) {
        return;
    }
    const std::uint64_t places = challenger.maxLeagueSize;
    Standings& masters = master.leagues.front().standings;
    SortByApexOrder(masters);
    if (challenger.leagues.empty()) {
        for (std::size_t m = 0; m < masters.size() && m < places; ++m) {
            masters[m].pendingPromotion = true;
        }
        return;
    }
    Standings& challengers = challenger.leagues.front().standings;
    SortByApexOrder(challengers);

    // Hand out the places, best first, from the two sorted lists.
    std::size_t c = 0;
    std::size_t m = 0;
    std::uint64_t taken = 0;
    for (; taken < places && c < challengers.size() && m < masters.size(); ++taken) {
        if (ApexStandingRanksAbove(challengers[c], masters[m])) {
            ++c;
        } else {
            masters[m++].pendingPromotion = true;
        }
    }
    if (taken == places) {
        for (; c < challengers.size(); ++c) {
            challengers[c].pendingDemotion = true;
        }
        return;
    }
    // One list ran out first: the other fills the places that are left.
    for (; c < challengers.size(); ++c, ++taken) {
        if (taken >= places) {
            challengers[c].pendingDemotion = true;
        }
    }
    for (; m < masters.size() && taken < places; ++m, ++taken) {
        masters[m].pendingPromotion = true;
    }
}

}  // namespace Orvel::Client::Leagues
