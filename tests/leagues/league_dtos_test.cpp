#include "leagues/league_dtos.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "leagues/league.h"
#include "loaded_module.h"
#include "type_description.h"

namespace Orvel::Client::Leagues {
namespace {

using test::DescribeEnumValues;
using test::DescribeFields;

struct DtoRow {
    const char* name;
    const char* className;  // empty for the module's own signed variants
    std::vector<std::string> fields;
};

const std::vector<std::string> kLeagueItemFields = {
    "playerOrTeamId: string",
    "playerOrTeamName: string",
    "previousDayLeaguePosition: uint64",
    "wins: uint64",
    "losses: uint64",
    "hotStreak: bool",
    "veteran: bool",
    "freshBlood: bool",
    "miniSeries: struct LeaguesLcdsMiniSeriesDTO",
    "leaguePoints: int32",
    "queueType: enum LeaguesLcdsQueueType",
    "tier: enum LeaguesLcdsLeagueTier",
    "rank: enum LeaguesLcdsLeagueRank",
    "inactive: bool",
    "displayDecayWarning: bool",
    "inactivityStatus: string",
    "timeUntilInactivityStatusChanges: uint64",
    "demotionWarning: uint64",
    "apexDaysUntilDecay: int32",
};

std::vector<std::string> SignedItemFields() {
    std::vector<std::string> fields = kLeagueItemFields;
    fields.push_back("jwt: string");
    return fields;
}

const std::vector<DtoRow> kDtoRecords = {
    {"LeaguesLcdsMiniSeriesDTO",
     "com.orvelsoft.leagues.pojo.MiniSeriesDTO",
     {"progress: string", "wins: uint64", "losses: uint64", "target: uint64", "timeLeftToPlayMillis: uint64"}},
    {"LeaguesLcdsLeagueItemDTO", "com.orvelsoft.leagues.pojo.LeagueItemDTO", kLeagueItemFields},
    {"TavLeaguesSignedLeagueItemDTO", "", SignedItemFields()},
    {"LeaguesLcdsLeagueListDTO",
     "com.orvelsoft.leagues.pojo.LeagueListDTO",
     {"name: string", "tier: enum LeaguesLcdsLeagueTier", "queue: enum LeaguesLcdsQueueType", "requestorsName: string",
      "entries: vector of struct LeaguesLcdsLeagueItemDTO", "nextApexUpdate: uint64", "maxLeagueSize: uint64"}},
    {"LeaguesLcdsSummonerLeagueListDTO",
     "com.orvelsoft.leagues.pojo.SummonerLeagueListDTO",
     {"name: string", "tier: enum LeaguesLcdsLeagueTier", "queue: enum LeaguesLcdsQueueType", "requestorsName: string",
      "entries: vector of struct LeaguesLcdsLeagueItemDTO", "nextApexUpdate: uint64",
      "requestorsRank: enum LeaguesLcdsLeagueRank"}},
    {"LeaguesLcdsSummonerLeaguesDTO",
     "com.orvelsoft.platform.leagues.client.dto.SummonerLeaguesDTO",
     {"summonerLeagues: vector of struct LeaguesLcdsSummonerLeagueListDTO"}},
    {"LeaguesLcdsSummonerLeagueItemsDTO",
     "com.orvelsoft.platform.leagues.client.dto.SummonerLeagueItemsDTO",
     {"summonerLeagues: vector of struct LeaguesLcdsLeagueItemDTO"}},
    {"TavLeaguesSignedSummonerLeagueItemsDTO", "", {"summonerLeagues: vector of struct TavLeaguesSignedLeagueItemDTO"}},
    {"LeagueTierAndRankDTO",
     "com.orvelsoft.leagues.pojo.LeagueTierAndRankDTO",
     {"playerOrTeamId: string", "playerOrTeamName: string", "queueType: enum LeaguesLcdsQueueType",
      "tier: enum LeaguesLcdsLeagueTier", "rank: enum LeaguesLcdsLeagueRank"}},
    {"LeaguesLcdsTeamMemberInfoDTO",
     "com.orvelsoft.team.dto.TeamMemberInfoDTO",
     {"playerId: uint64", "playerName: string"}},
    {"LeaguesLcdsRosterDTO",
     "com.orvelsoft.team.dto.RosterDTO",
     {"memberList: vector of struct LeaguesLcdsTeamMemberInfoDTO"}},
    {"LeaguesLcdsTeamIdDTO", "com.orvelsoft.team.TeamId", {"fullId: string"}},
    {"LeaguesLcdsTeamDTO",
     "com.orvelsoft.team.dto.TeamDTO",
     {"teamId: struct LeaguesLcdsTeamIdDTO", "name: string", "roster: struct LeaguesLcdsRosterDTO"}},
    {"LeaguesLcdsAggregatedStat",
     "com.orvelsoft.platform.statistics.AggregatedStat",
     {"id: uint64", "value: float", "statType: string", "championId: int32"}},
    {"LeaguesLcdsChampionStatInfo",
     "com.orvelsoft.platform.statistics.ChampionStatInfo",
     {"championId: int32", "stats: vector of struct LeaguesLcdsAggregatedStat", "totalGamesPlayed: int32"}},
    {"LeaguesLcdsAggregatedStatsKey",
     "com.orvelsoft.platform.statistics.AggregatedStatsKey",
     {"userId: uint64", "gameMode: string"}},
    {"LeaguesLcdsAggregatedStats",
     "com.orvelsoft.platform.statistics.AggregatedStats",
     {"key: struct LeaguesLcdsAggregatedStatsKey", "lifetimeStatistics: vector of struct LeaguesLcdsAggregatedStat"}},
    {"LeaguesLcdsPlayerAggregatedStats",
     "com.orvelsoft.platform.statistics.PlayerAggregatedStats",
     {"playerId: uint64", "aggregatedStats: struct LeaguesLcdsAggregatedStats"}},
    {"LeaguesLcdsTeamAggregatedStats",
     "com.orvelsoft.platform.statistics.TeamAggregatedStats",
     {"id: struct LeaguesLcdsTeamIdDTO", "queueType: string",
      "playerAggregatedStatsList: vector of struct LeaguesLcdsPlayerAggregatedStats"}},
    {"LeaguesLcdsSimpleMessage",
     "com.orvelsoft.platform.messaging.persistence.SimpleDialogMessage",
     {"accountId: uint64", "msgId: string", "type: string", "params: vector of string"}},
    {"LeaguesSimpleMessageResponse",
     "com.orvelsoft.platform.messaging.persistence.SimpleDialogMessageResponse",
     {"accountId: uint64", "msgId: string", "command: string"}},
};

const std::vector<DtoRow> kDtoEnums = {
    {"LeaguesLcdsQueueType",
     "com.orvelsoft.leagues.pojo.QueueType",
     {"RANKED_FLEX_SR=2", "RANKED_FLEX_TT=3", "RANKED_SOLO_5x5=1"}},
    {"LeaguesLcdsLeagueTier",
     "com.orvelsoft.leagues.pojo.LeagueTier",
     {"BRONZE=1", "CHALLENGER=7", "DIAMOND=5", "GOLD=3", "MASTER=6", "PLATINUM=4", "SILVER=2"}},
    {"LeaguesLcdsLeagueRank", "com.orvelsoft.leagues.pojo.LeagueRank", {"I=0", "II=1", "III=2", "IV=3", "V=4"}},
};

class LeagueDtos : public ::testing::Test {
  protected:
    // The server's records carry no tags; the signed variants are the module's own.
    std::vector<std::string> ExpectedTags(const DtoRow& row) const {
        return *row.className == '\0' ? std::vector<std::string>{"Plugins", "Plugin tav-leagues"}
                                      : std::vector<std::string>{};
    }

    // Both class-name tables agree on the type's class name.
    void ExpectClassName(const DtoRow& row, const wex::BindingTypeInfo& type) const {
        EXPECT_EQ(loaded.Module().FindLcdsClassName(row.name), row.className);
        EXPECT_EQ(loaded.Module().FindLcdsClassName(*type.identity), row.className);
    }

    test::LoadedModule loaded;
};

TEST_F(LeagueDtos, EveryRecordHasItsFieldsAndItsClassNameInBothTables) {
    for (const DtoRow& row : kDtoRecords) {
        SCOPED_TRACE(row.name);
        const wex::BindingTypeInfo* type = loaded.Registry().FindType(row.name);
        ASSERT_NE(type, nullptr);
        EXPECT_FALSE(type->isEnum);
        EXPECT_EQ(DescribeFields(*type, loaded.Registry()), row.fields);
        EXPECT_EQ(type->tags, ExpectedTags(row));
        ExpectClassName(row, *type);
    }
}

TEST_F(LeagueDtos, EveryEnumerationHasItsValuesAndItsClassName) {
    for (const DtoRow& row : kDtoEnums) {
        SCOPED_TRACE(row.name);
        const wex::BindingTypeInfo* type = loaded.Registry().FindType(row.name);
        ASSERT_NE(type, nullptr);
        EXPECT_TRUE(type->isEnum);
        EXPECT_EQ(DescribeEnumValues(*type), row.fields);
        EXPECT_TRUE(type->tags.empty());
        ExpectClassName(row, *type);
    }
}

TEST_F(LeagueDtos, TheClassNameTablesKnowNoOtherType) {
    EXPECT_EQ(loaded.Module().FindLcdsClassName("TavLeaguesLeague"), "");
    EXPECT_EQ(loaded.Module().FindLcdsClassName("LeaguesLcds"), "");
    EXPECT_EQ(loaded.Module().FindLcdsClassName(wex::BindingTypeIdentity::Of<Api::League>()), "");
}

}  // namespace
}  // namespace Orvel::Client::Leagues
