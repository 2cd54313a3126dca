#include "leagues/server_dtos.h"

namespace Orvel::Client::Leagues {

namespace {

using namespace LCDS;

void RegisterLcdsEnums(const LcdsTypes& types) {
    types.Enum<QueueType>("LeaguesLcdsQueueType", "com.orvelsoft.leagues.pojo.QueueType")
        .Value("RANKED_SOLO_5x5", QueueType::RANKED_SOLO_5x5)
        .Value("RANKED_FLEX_SR", QueueType::RANKED_FLEX_SR)
        .Value("RANKED_FLEX_TT", QueueType::RANKED_FLEX_TT);
    types.Enum<LeagueTier>("LeaguesLcdsLeagueTier", "com.orvelsoft.leagues.pojo.LeagueTier")
        .Value("BRONZE", LeagueTier::BRONZE)
        .Value("SILVER", LeagueTier::SILVER)
        .Value("GOLD", LeagueTier::GOLD)
        .Value("PLATINUM", LeagueTier::PLATINUM)
        .Value("DIAMOND", LeagueTier::DIAMOND)
        .Value("MASTER", LeagueTier::MASTER)
        .Value("CHALLENGER", LeagueTier::CHALLENGER);
    types.Enum<LeagueRank>("LeaguesLcdsLeagueRank", "com.orvelsoft.leagues.pojo.LeagueRank")
        .Value("I", LeagueRank::I)
        .Value("II", LeagueRank::II)
        .Value("III", LeagueRank::III)
        .Value("IV", LeagueRank::IV)
        .Value("V", LeagueRank::V);
}

// The entry's fields, for the entry and for the signed entry that extends it.
template <class Item>
wex::BindingStructBuilder<Item> AddLeagueItemFields(wex::BindingStructBuilder<Item> item) {
    using Base = LeagueItemDTO;
    item.Field("playerOrTeamId", &Base::playerOrTeamId)
        .Field("playerOrTeamName", &Base::playerOrTeamName)
        .Field("previousDayLeaguePosition", &Base::previousDayLeaguePosition)
        .Field("wins", &Base::wins)
        .Field("losses", &Base::losses)
        .Field("hotStreak", &Base::hotStreak)
        .Field("veteran", &Base::veteran)
        .Field("freshBlood", &Base::freshBlood)
        .Field("miniSeries", &Base::miniSeries)
        .Field("leaguePoints", &Base::leaguePoints)
        .Field("queueType", &Base::queueType)
        .Field("tier", &Base::tier)
        .Field("rank", &Base::rank)
        .Field("inactive", &Base::inactive)
        .Field("displayDecayWarning", &Base::displayDecayWarning)
        .Field("inactivityStatus", &Base::inactivityStatus)
        .Field("timeUntilInactivityStatusChanges", &Base::timeUntilInactivityStatusChanges)
        .Field("demotionWarning", &Base::demotionWarning)
        .Field("apexDaysUntilDecay", &Base::apexDaysUntilDecay);
    return item;
}

// The fields that every description of a league list has.
template <class List>
wex::BindingStructBuilder<List> AddLeagueListFields(wex::BindingStructBuilder<List> list) {
    using Base = LeagueListDTO;
    list.Field("name", &Base::name)
        .Field("tier", &Base::tier)
        .Field("queue", &Base::queue)
        .Field("requestorsName", &Base::requestorsName)
        .Field("entries", &Base::entries)
        .Field("nextApexUpdate", &Base::nextApexUpdate);
    return list;
}

constexpr const char* kLeagueListClass = "com.orvelsoft.leagues.pojo.LeagueListDTO";

void RegisterLeagueListDtos(const LcdsTypes& lcds, const ModuleTypes& module) {
    lcds.Struct<MiniSeriesDTO>("LeaguesLcdsMiniSeriesDTO", "com.orvelsoft.leagues.pojo.MiniSeriesDTO")
        .Field("progress", &MiniSeriesDTO::progress)
        .Field("wins", &MiniSeriesDTO::wins)
        .Field("losses", &MiniSeriesDTO::losses)
        .Field("target", &MiniSeriesDTO::target)
        .Field("timeLeftToPlayMillis", &MiniSeriesDTO::timeLeftToPlayMillis);
    AddLeagueItemFields(
        lcds.Struct<LeagueItemDTO>("LeaguesLcdsLeagueItemDTO", "com.orvelsoft.leagues.pojo.LeagueItemDTO"));
    AddLeagueItemFields(module.Struct<SignedLeagueItemDTO>("SignedLeagueItemDTO"))
        .Field("jwt", &SignedLeagueItemDTO::jwt);
    AddLeagueListFields(lcds.Struct<LeagueListDTO>("LeaguesLcdsLeagueListDTO", kLeagueListClass))
        .Field("maxLeagueSize", &LeagueListDTO::maxLeagueSize);
    AddLeagueListFields(lcds.Struct<SummonerLeagueListDTO>("LeaguesLcdsSummonerLeagueListDTO",
                                                           "com.orvelsoft.leagues.pojo.SummonerLeagueListDTO"))
        .Field("requestorsRank", &SummonerLeagueListDTO::requestorsRank);
    // Described a second time without the maximum size; the registry keeps the
    // first description, so a league list still reads its maximum size.
    AddLeagueListFields(lcds.Struct<LeagueListDTO>("LeaguesLcdsLeagueListDTO", kLeagueListClass));
    lcds.Struct<SummonerLeaguesDTO>("LeaguesLcdsSummonerLeaguesDTO",
                                    "com.orvelsoft.platform.leagues.client.dto.SummonerLeaguesDTO")
        .Field("summonerLeagues", &SummonerLeaguesDTO::summonerLeagues);
    lcds.Struct<SummonerLeagueItemsDTO>("LeaguesLcdsSummonerLeagueItemsDTO",
                                        "com.orvelsoft.platform.leagues.client.dto.SummonerLeagueItemsDTO")
        .Field("summonerLeagues", &SummonerLeagueItemsDTO::summonerLeagues);
    module.Struct<SignedSummonerLeagueItemsDTO>("SignedSummonerLeagueItemsDTO")
        .Field("summonerLeagues", &SignedSummonerLeagueItemsDTO::summonerLeagues);
}

void RegisterTeamDtos(const LcdsTypes& types) {
    types.Struct<TeamMemberInfoDTO>("LeaguesLcdsTeamMemberInfoDTO", "com.orvelsoft.team.dto.TeamMemberInfoDTO")
        .Field("playerId", &TeamMemberInfoDTO::playerId)
        .Field("playerName", &TeamMemberInfoDTO::playerName);
    types.Struct<RosterDTO>("LeaguesLcdsRosterDTO", "com.orvelsoft.team.dto.RosterDTO")
        .Field("memberList", &RosterDTO::memberList);
    types
        .Struct<TeamIdDTO>("LeaguesLcdsTeamIdDTO", "com.orvelsoft.team.TeamId")  //
        .Field("fullId", &TeamIdDTO::fullId);
    types.Struct<TeamDTO>("LeaguesLcdsTeamDTO", "com.orvelsoft.team.dto.TeamDTO")
        .Field("teamId", &TeamDTO::teamId)
        .Field("name", &TeamDTO::name)
        .Field("roster", &TeamDTO::roster);
}

void RegisterStatisticsDtos(const LcdsTypes& types) {
    types.Struct<AggregatedStat>("LeaguesLcdsAggregatedStat", "com.orvelsoft.platform.statistics.AggregatedStat")
        .Field("id", &AggregatedStat::id)
        .Field("value", &AggregatedStat::value)
        .Field("statType", &AggregatedStat::statType)
        .Field("championId", &AggregatedStat::championId);
    types.Struct<ChampionStatInfo>("LeaguesLcdsChampionStatInfo", "com.orvelsoft.platform.statistics.ChampionStatInfo")
        .Field("championId", &ChampionStatInfo::championId)
        .Field("stats", &ChampionStatInfo::stats)
        .Field("totalGamesPlayed", &ChampionStatInfo::totalGamesPlayed);
    types
        .Struct<AggregatedStatsKey>("LeaguesLcdsAggregatedStatsKey",
                                    "com.orvelsoft.platform.statistics.AggregatedStatsKey")
        .Field("userId", &AggregatedStatsKey::userId)
        .Field("gameMode", &AggregatedStatsKey::gameMode);
    types.Struct<AggregatedStats>("LeaguesLcdsAggregatedStats", "com.orvelsoft.platform.statistics.AggregatedStats")
        .Field("key", &AggregatedStats::key)
        .Field("lifetimeStatistics", &AggregatedStats::lifetimeStatistics);
    types
        .Struct<PlayerAggregatedStats>("LeaguesLcdsPlayerAggregatedStats",
                                       "com.orvelsoft.platform.statistics.PlayerAggregatedStats")
        .Field("playerId", &PlayerAggregatedStats::playerId)
        .Field("aggregatedStats", &PlayerAggregatedStats::aggregatedStats);
    types
        .Struct<TeamAggregatedStats>("LeaguesLcdsTeamAggregatedStats",
                                     "com.orvelsoft.platform.statistics.TeamAggregatedStats")
        .Field("id", &TeamAggregatedStats::id)
        .Field("queueType", &TeamAggregatedStats::queueType)
        .Field("playerAggregatedStatsList", &TeamAggregatedStats::playerAggregatedStatsList);
}

void RegisterMessageDtos(const LcdsTypes& types) {
    using Base = Api::SimpleMessage;
    types
        .Struct<SimpleMessage>("LeaguesLcdsSimpleMessage",
                               "com.orvelsoft.platform.messaging.persistence.SimpleDialogMessage")
        .Field("accountId", &Base::accountId)
        .Field("msgId", &Base::msgId)
        .Field("type", &Base::type)
        .Field("params", &Base::params);
    types
        .Struct<SimpleMessageResponse>("LeaguesSimpleMessageResponse",
                                       "com.orvelsoft.platform.messaging.persistence.SimpleDialogMessageResponse")
        .Field("accountId", &SimpleMessageResponse::accountId)
        .Field("msgId", &SimpleMessageResponse::msgId)
        .Field("command", &SimpleMessageResponse::command);
}

void RegisterTierAndRankDto(const LcdsTypes& types) {
    types.Struct<LeagueTierAndRankDTO>("LeagueTierAndRankDTO", "com.orvelsoft.leagues.pojo.LeagueTierAndRankDTO")
        .Field("playerOrTeamId", &LeagueTierAndRankDTO::playerOrTeamId)
        .Field("playerOrTeamName", &LeagueTierAndRankDTO::playerOrTeamName)
        .Field("queueType", &LeagueTierAndRankDTO::queueType)
        .Field("tier", &LeagueTierAndRankDTO::tier)
        .Field("rank", &LeagueTierAndRankDTO::rank);
}

}  // namespace

void RegisterLeagueDtos(wex::AppModule& module, wex::BindingTypeRegistry& registry) {
    const LcdsTypes lcds(module, registry);
    RegisterLcdsEnums(lcds);
    RegisterLeagueListDtos(lcds, ModuleTypes(module, registry));
    RegisterTeamDtos(lcds);
    RegisterStatisticsDtos(lcds);
    RegisterMessageDtos(lcds);
    RegisterTierAndRankDto(lcds);
}

}  // namespace Orvel::Client::Leagues
