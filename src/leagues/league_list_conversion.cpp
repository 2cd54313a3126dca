#include "leagues/league_list_conversion.h"

#include <array>
#include <vector>

#include "leagues/server_mappings.h"

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

}  // namespace Orvel::Client::Leagues
