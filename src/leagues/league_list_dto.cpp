#include "leagues/league_list_dto.h"

#include "leagues/lcds_types.h"
#include "leagues/module_types.h"

namespace Orvel::Client::Leagues::LCDS {
namespace {

// The entry's fields, for the entry and for the signed entry that extends it.
template <class Item>
wex::BindingStructBuilder<Item> AddLeagueItemFields(wex::BindingStructBuilder<Item> item) {
    using Base = LeagueItemDTO;
    item.Field("playerOrTeamId", Inherited<Item>(&Base::playerOrTeamId))
        .Field("playerOrTeamName", Inherited<Item>(&Base::playerOrTeamName))
        .Field("previousDayLeaguePosition", Inherited<Item>(&Base::previousDayLeaguePosition))
        .Field("wins", Inherited<Item>(&Base::wins))
        .Field("losses", Inherited<Item>(&Base::losses))
        .Field("hotStreak", Inherited<Item>(&Base::hotStreak))
        .Field("veteran", Inherited<Item>(&Base::veteran))
        .Field("freshBlood", Inherited<Item>(&Base::freshBlood))
        .Field("miniSeries", Inherited<Item>(&Base::miniSeries))
        .Field("leaguePoints", Inherited<Item>(&Base::leaguePoints))
        .Field("queueType", Inherited<Item>(&Base::queueType))
        .Field("tier", Inherited<Item>(&Base::tier))
        .Field("rank", Inherited<Item>(&Base::rank))
        .Field("inactive", Inherited<Item>(&Base::inactive))
        .Field("displayDecayWarning", Inherited<Item>(&Base::displayDecayWarning))
        .Field("inactivityStatus", Inherited<Item>(&Base::inactivityStatus))
        .Field("timeUntilInactivityStatusChanges", Inherited<Item>(&Base::timeUntilInactivityStatusChanges))
        .Field("demotionWarning", Inherited<Item>(&Base::demotionWarning))
        .Field("apexDaysUntilDecay", Inherited<Item>(&Base::apexDaysUntilDecay));
    return item;
}

// The fields that every description of a league list has.
template <class List>
wex::BindingStructBuilder<List> AddLeagueListFields(wex::BindingStructBuilder<List> list) {
    using Base = LeagueListDTO;
    list.Field("name", Inherited<List>(&Base::name))
        .Field("tier", Inherited<List>(&Base::tier))
        .Field("queue", Inherited<List>(&Base::queue))
        .Field("requestorsName", Inherited<List>(&Base::requestorsName))
        .Field("entries", Inherited<List>(&Base::entries))
        .Field("nextApexUpdate", Inherited<List>(&Base::nextApexUpdate));
    return list;
}

constexpr const char* kLeagueListClass = "com.orvelsoft.leagues.pojo.LeagueListDTO";

}  // namespace

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

}  // namespace Orvel::Client::Leagues::LCDS
