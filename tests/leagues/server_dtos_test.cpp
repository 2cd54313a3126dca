#include "leagues/server_dtos.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "codec/json_reader.h"
#include "codec/json_writer.h"
#include "leagues/api_types.h"
#include "support/loaded_module.h"
#include "type_description.h"
#include "types/native_conversion.h"

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

// Server answers as JSON text, read into the DTOs through the module's
// registry.
namespace {

class DtoFromJson : public ::testing::Test {
  protected:
    // The DTO read from json; the failure message, if any, in error.
    template <class Dto>
    Dto Read(const char* json, std::string& error) const {
        const wex::BindingProperty input = wex::ParseJson(json);
        EXPECT_TRUE(input.IsValid()) << input.GetError();
        Dto dto{};
        wex::BindingProperty status;
        wex::FromBinding(status, dto, input, "<value>", loaded.Registry());
        error = status.GetError();
        return dto;
    }

    template <class Dto>
    Dto Read(const char* json) const {
        std::string error;
        Dto dto = Read<Dto>(json, error);
        EXPECT_EQ(error, "");
        return dto;
    }

    template <class Value>
    std::string Write(const Value& value) const {
        const wex::BindingProperty binding = wex::ToBinding(value, loaded.Registry());
        EXPECT_TRUE(binding.IsValid()) << binding.GetError();
        return wex::WriteJson(binding, &loaded.Registry());
    }

    test::LoadedModule loaded;
};

// "progress wins losses target timeLeft" of an entry's series.
std::string SeriesOf(const LCDS::LeagueItemDTO& item) {
    const LCDS::MiniSeriesDTO& series = item.miniSeries;
    return series.progress + " " + std::to_string(series.wins) + " " + std::to_string(series.losses) + " " +
           std::to_string(series.target) + " " + std::to_string(series.timeLeftToPlayMillis);
}

TEST_F(DtoFromJson, ASeriesIsReadWithItsCountsAndANullOneLeavesTheRecordEmpty) {
    const auto item = Read<LCDS::LeagueItemDTO>(R"({"playerOrTeamId": "7", "miniSeries": null, "wins": 3})");
    EXPECT_EQ(item.playerOrTeamId, "7");
    EXPECT_EQ(item.wins, 3u);
    EXPECT_EQ(SeriesOf(item), " 0 0 0 0");
    EXPECT_EQ(SeriesOf(Read<LCDS::LeagueItemDTO>(R"({"miniSeries": {"progress": "WLN", "wins": 1, "losses": 1,)"
                                                 R"( "target": 2, "timeLeftToPlayMillis": 9}})")),
              "WLN 1 1 2 9");
}

TEST_F(DtoFromJson, OnlyALeagueListReadsItsMaximumSize) {
    const char* json = R"({"name": "N", "queue": "RANKED_SOLO_5x5", "requestorsRank": "III", "maxLeagueSize": 300})";
    EXPECT_EQ(Read<LCDS::LeagueListDTO>(json).maxLeagueSize, 300u);
    const auto summoner = Read<LCDS::SummonerLeagueListDTO>(json);
    EXPECT_EQ(summoner.maxLeagueSize, 0u);
    EXPECT_EQ(summoner.name, "N");
    EXPECT_EQ(summoner.requestorsRank, LCDS::LeagueRank::III);
}

TEST_F(DtoFromJson, AnUnknownEnumeratorNameFailsNamingTheServerEnumeration) {
    struct Row {
        const char* json;
        const char* error;
    };
    const Row rows[] = {
        {R"({"queue": "RANKED_TEAM_3x3"})",
         "RANKED_TEAM_3x3 is not a valid LeaguesLcdsQueueType enumeration value for 'queue'."},
        {R"({"queue": "ranked_solo_5x5"})",
         "ranked_solo_5x5 is not a valid LeaguesLcdsQueueType enumeration value for 'queue'."},
        {R"({"queue": 0})", "0 is not a valid LeaguesLcdsQueueType enumeration value for 'queue'."},
        {R"({"tier": "IRON"})", "IRON is not a valid LeaguesLcdsLeagueTier enumeration value for 'tier'."},
        {R"({"entries": [{"rank": "VI"}]})", "VI is not a valid LeaguesLcdsLeagueRank enumeration value for 'rank'."},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.json);
        std::string error;
        (void)Read<LCDS::LeagueListDTO>(row.json, error);
        EXPECT_EQ(error, row.error);
    }
}

TEST_F(DtoFromJson, ServerQueueNumbersAreAcceptedByValue) {
    EXPECT_EQ(Read<LCDS::LeagueListDTO>(R"({"queue": 3})").queue, LCDS::QueueType::RANKED_FLEX_TT);
    EXPECT_EQ(Read<LCDS::LeagueListDTO>(R"({"queue": "2"})").queue, LCDS::QueueType::RANKED_FLEX_SR);
}

TEST_F(DtoFromJson, ASignedEntryWritesTheEntryMembersAndItsToken) {
    LCDS::SignedLeagueItemDTO signedItem;
    signedItem.playerOrTeamId = "7";
    signedItem.tier = LCDS::LeagueTier::GOLD;
    signedItem.queueType = LCDS::QueueType::RANKED_SOLO_5x5;
    signedItem.rank = LCDS::LeagueRank::II;
    signedItem.jwt = "a.b.c";
    wex::BindingProperty value = wex::ToBinding(signedItem, loaded.Registry());
    ASSERT_TRUE(value.IsValid()) << value.GetError();
    EXPECT_EQ(value.Member("jwt").AsString(), "a.b.c");
    ASSERT_TRUE(value.RemoveMember("jwt"));
    EXPECT_EQ(wex::WriteJson(value, &loaded.Registry()), Write(static_cast<const LCDS::LeagueItemDTO&>(signedItem)));
}

}  // namespace

}  // namespace Orvel::Client::Leagues
