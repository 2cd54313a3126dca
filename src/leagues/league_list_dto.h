#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "leagues/lcds_enums.h"

namespace Orvel::Client::Leagues {
class LcdsTypes;
class ModuleTypes;
}  // namespace Orvel::Client::Leagues

namespace Orvel::Client::Leagues::LCDS {

// A running promotion series; empty when there is none.
struct MiniSeriesDTO {
    std::string progress;  // one character per game: W won, L lost, N not played
    std::uint64_t wins = 0;
    std::uint64_t losses = 0;
    std::uint64_t target = 0;
    std::uint64_t timeLeftToPlayMillis = 0;
};

// One player or team in a league list.
struct LeagueItemDTO {
    std::string playerOrTeamId;
    std::string playerOrTeamName;
    std::uint64_t previousDayLeaguePosition = 0;
    std::uint64_t wins = 0;
    std::uint64_t losses = 0;
    bool hotStreak = false;
    bool veteran = false;
    bool freshBlood = false;
    MiniSeriesDTO miniSeries;
    std::int32_t leaguePoints = 0;
    QueueType queueType{};
    LeagueTier tier{};
    LeagueRank rank{};
    bool inactive = false;
    bool displayDecayWarning = false;
    std::string inactivityStatus;
    std::uint64_t timeUntilInactivityStatusChanges = 0;
    std::uint64_t demotionWarning = 0;
    std::int32_t apexDaysUntilDecay = 0;
};

// A league entry with the server's signed token of it.
struct SignedLeagueItemDTO : LeagueItemDTO {
    std::string jwt;
};

struct LeagueListDTO {
    std::string name;
    LeagueTier tier{};
    QueueType queue{};
    std::string requestorsName;
    std::vector<LeagueItemDTO> entries;
    std::uint64_t nextApexUpdate = 0;
    std::uint64_t maxLeagueSize = 0;
};

// A league list as the requester's own: its description leaves out
// maxLeagueSize, which therefore stays 0.
struct SummonerLeagueListDTO : LeagueListDTO {
    LeagueRank requestorsRank{};
};

struct SummonerLeaguesDTO {
    std::vector<SummonerLeagueListDTO> summonerLeagues;
};

struct SummonerLeagueItemsDTO {
    std::vector<LeagueItemDTO> summonerLeagues;
};

struct SignedSummonerLeagueItemsDTO {
    std::vector<SignedLeagueItemDTO> summonerLeagues;
};

// The series record, the league entries, the league lists and the league
// service's answers made of them. The signed variants are the module's own
// types, without a server class.
void RegisterLeagueListDtos(const LcdsTypes& lcds, const ModuleTypes& module);

}  // namespace Orvel::Client::Leagues::LCDS
