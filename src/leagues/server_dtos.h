#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "leagues/api_types.h"
#include "plugin/app_module.h"
#include "types/registry.h"

// The records that the game server sends and takes, by the local names under
// which they are registered, each entered with its server class name in the
// module's class-name tables. Their fields keep the server's names.
namespace Orvel::Client::Leagues::LCDS {

// The server's queues; there is no 0, and the flex queues are numbered the
// other way round from the API's.
enum class QueueType : std::int32_t { RANKED_SOLO_5x5 = 1, RANKED_FLEX_SR = 2, RANKED_FLEX_TT = 3 };

enum class LeagueTier : std::int32_t {
    BRONZE = 1,
    SILVER = 2,
    GOLD = 3,
    PLATINUM = 4,
    DIAMOND = 5,
    MASTER = 6,
    CHALLENGER = 7,
};

enum class LeagueRank : std::int32_t { I = 0, II = 1, III = 2, IV = 3, V = 4 };

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

struct TeamMemberInfoDTO {
    std::uint64_t playerId = 0;
    std::string playerName;
};

struct RosterDTO {
    std::vector<TeamMemberInfoDTO> memberList;
};

struct TeamIdDTO {
    std::string fullId;
};

struct TeamDTO {
    TeamIdDTO teamId;
    std::string name;
    RosterDTO roster;
};

// One statistic; championId 0 makes it a total over all champions.
struct AggregatedStat {
    std::uint64_t id = 0;
    float value = 0;
    std::string statType;  // "TOTAL_SESSIONS_PLAYED", "TOTAL_SESSIONS_WON", ...
    std::int32_t championId = 0;
};

struct ChampionStatInfo {
    std::int32_t championId = 0;
    std::vector<AggregatedStat> stats;
    std::int32_t totalGamesPlayed = 0;
};

struct AggregatedStatsKey {
    std::uint64_t userId = 0;
    std::string gameMode;
};

struct AggregatedStats {
    AggregatedStatsKey key;
    std::vector<AggregatedStat> lifetimeStatistics;
};

struct PlayerAggregatedStats {
    std::uint64_t playerId = 0;
    AggregatedStats aggregatedStats;
};

struct TeamAggregatedStats {
    TeamIdDTO id;
    std::string queueType;
    std::vector<PlayerAggregatedStats> playerAggregatedStatsList;
};

// A message the server pushes or stores for the player: the same shape as
// the messages of the login data packet, so both are read alike.
struct SimpleMessage : Api::SimpleMessage {};

// The acknowledgement of a stored message.
struct SimpleMessageResponse {
    std::uint64_t accountId = 0;
    std::string msgId;
    std::string command;
};

// One participant's tier in one queue.
struct LeagueTierAndRankDTO {
    std::string playerOrTeamId;  // the summoner id in decimal
    std::string playerOrTeamName;
    QueueType queueType{};
    LeagueTier tier{};
    LeagueRank rank{};
};

}  // namespace Orvel::Client::Leagues::LCDS

namespace Orvel::Client::Leagues {

// Registers the server's records under their fixed local names and enters
// each in the module's class-name tables with the server's class name.
class LcdsTypes {
  public:
    LcdsTypes(wex::AppModule& module, wex::BindingTypeRegistry& registry) : module_(module), registry_(registry) {}

    template <class Structure>
    wex::BindingStructBuilder<Structure> Struct(std::string localName, std::string className) const {
        module_.RegisterLcdsClassName(localName, wex::BindingTypeIdentity::Of<Structure>(), std::move(className));
        return registry_.Struct<Structure>(std::move(localName));
    }

    template <class Enumeration>
    wex::BindingEnumBuilder<Enumeration> Enum(std::string localName, std::string className) const {
        module_.RegisterLcdsClassName(localName, wex::BindingTypeIdentity::Of<Enumeration>(), std::move(className));
        return registry_.Enum<Enumeration>(std::move(localName));
    }

  private:
    wex::AppModule& module_;
    wex::BindingTypeRegistry& registry_;
};

// Registers the server's records under their local names and enters their
// server class names in the module's class-name tables. Runs before the API
// types.
void RegisterLeagueDtos(wex::AppModule& module, wex::BindingTypeRegistry& registry);

}  // namespace Orvel::Client::Leagues
