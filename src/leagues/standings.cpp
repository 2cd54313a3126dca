#include "leagues/standings.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <vector>

#include "leagues/mappings.h"

namespace Orvel::Client::Leagues {

namespace {

bool IsAsciiLetter(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

Api::LeagueStanding MakeStanding(const LCDS::LeagueItemDTO& entry, Api::LeagueTier tier) {
    Api::LeagueStanding standing;
    standing.id = entry.playerOrTeamId;
    standing.name = entry.playerOrTeamName;
    standing.emblems = MakeLeagueEmblems(entry.hotStreak, entry.veteran, entry.freshBlood);
    standing.wins = entry.wins;
    standing.losses = entry.losses;
    standing.previousPosition = entry.previousDayLeaguePosition;
    standing.points = entry.leaguePoints;
    standing.miniseriesResults = ParseMiniseriesProgress(entry.miniSeries.progress);
    standing.miniseriesWins = entry.miniSeries.wins;
    standing.miniseriesLosses = entry.miniSeries.losses;
    standing.inactive = entry.inactive;
    standing.leagueTier = tier;
    standing.inactivityStatus = entry.inactivityStatus;
    standing.apexDaysUntilDecay = entry.apexDaysUntilDecay;
    return standing;
}

}  // namespace

std::string StripLeagueName(std::string_view name) {
    std::string letters;
    letters.reserve(name.size());
    for (const char c : name) {
        if (IsAsciiLetter(c)) {
            letters.push_back(c);
        }
    }
    return letters;
}

Api::League ConvertLeagueList(const LCDS::LeagueListDTO& list, std::uint64_t requesterId) {
    Api::League league;
    league.queueType = LeagueQueueTypeOf(list.queue);
    league.leagueTier = LeagueTierOf(list.tier);
    league.leagueName = StripLeagueName(list.name);
    league.name = list.requestorsName;
    league.maxLeagueSize = list.maxLeagueSize;
    league.challengerNextPromotionUpdateInMs = list.nextApexUpdate;

    const bool apex = IsApexTier(league.leagueTier);
    const std::string requester = std::to_string(requesterId);
    // One list of standings per rank, I to NA, in the order of the rank values.
    std::array<std::vector<Api::LeagueStanding>, static_cast<std::size_t>(Api::LeagueRank::NA) + 1> byRank;
    for (const LCDS::LeagueItemDTO& entry : list.entries) {
        if (entry.inactive && !apex && entry.playerOrTeamId != requester) {
            continue;
        }
        const Api::LeagueRank rank = LeagueRankOf(entry.rank, league.leagueTier);
        byRank[static_cast<std::size_t>(rank)].push_back(MakeStanding(entry, league.leagueTier));
    }
    for (std::size_t rank = 0; rank < byRank.size(); ++rank) {
        if (!byRank[rank].empty()) {
            league.leagues.push_back({static_cast<Api::LeagueRank>(rank), std::move(byRank[rank])});
        }
    }
    return league;
}

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
