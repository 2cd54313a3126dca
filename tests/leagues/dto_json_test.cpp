// Server answers as JSON text, read into the DTOs through the module's
// registry and converted on to API records.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "binding/native_conversion.h"
#include "codec/json_reader.h"
#include "codec/json_writer.h"
#include "leagues/league_list_conversion.h"
#include "leagues/league_list_dto.h"
#include "leagues/standing_positions.h"
#include "loaded_module.h"

namespace Orvel::Client::Leagues {
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

TEST_F(DtoFromJson, ANullSeriesLeavesTheSeriesRecordEmpty) {
    const auto item = Read<LCDS::LeagueItemDTO>(R"({"playerOrTeamId": "7", "miniSeries": null, "wins": 3})");
    EXPECT_EQ(item.playerOrTeamId, "7");
    EXPECT_EQ(item.wins, 3u);
    EXPECT_EQ(item.miniSeries.progress, "");
    EXPECT_EQ(item.miniSeries.wins, 0u);
    EXPECT_EQ(item.miniSeries.losses, 0u);
    EXPECT_EQ(item.miniSeries.target, 0u);
    EXPECT_EQ(item.miniSeries.timeLeftToPlayMillis, 0u);
}

TEST_F(DtoFromJson, ASeriesIsReadWithItsCounts) {
    const auto item = Read<LCDS::LeagueItemDTO>(
        R"({"miniSeries": {"progress": "WLN", "wins": 1, "losses": 1, "target": 2, "timeLeftToPlayMillis": 9}})");
    EXPECT_EQ(item.miniSeries.progress, "WLN");
    EXPECT_EQ(item.miniSeries.wins, 1u);
    EXPECT_EQ(item.miniSeries.losses, 1u);
    EXPECT_EQ(item.miniSeries.target, 2u);
    EXPECT_EQ(item.miniSeries.timeLeftToPlayMillis, 9u);
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

TEST_F(DtoFromJson, ASummonerLeaguesAnswerBecomesNumberedApiLeagues) {
    const auto answer = Read<LCDS::SummonerLeaguesDTO>(R"({
        "__class": "com.orvelsoft.platform.leagues.client.dto.SummonerLeaguesDTO",
        "summonerLeagues": [{
            "__class": "com.orvelsoft.leagues.pojo.SummonerLeagueListDTO",
            "name": "Blue Owl's Den", "tier": "GOLD", "queue": "RANKED_FLEX_SR", "requestorsName": "Ann",
            "requestorsRank": "II", "nextApexUpdate": 0, "maxLeagueSize": 250,
            "entries": [
                {"playerOrTeamId": "42", "playerOrTeamName": "Ann", "rank": "II", "leaguePoints": 75, "wins": 12,
                 "losses": 10, "previousDayLeaguePosition": 3, "hotStreak": true,
                 "miniSeries": {"progress": "WN", "wins": 1, "losses": 0, "target": 2}},
                {"playerOrTeamId": "43", "playerOrTeamName": "Bob", "rank": "II", "inactive": true},
                {"playerOrTeamId": "44", "playerOrTeamName": "Cy", "rank": "I", "leaguePoints": -2,
                 "miniSeries": null, "inactivityStatus": "ACTIVE", "apexDaysUntilDecay": 4}
            ]
        }]
    })");
    ASSERT_EQ(answer.summonerLeagues.size(), 1u);
    Api::League league = ConvertLeagueList(answer.summonerLeagues[0], 42);
    AssignStandingPositions(league, Api::League{});
    EXPECT_EQ(Write(league),
              R"({"challengerNextPromotionUpdateInMs":0,"leagueName":"BlueOwlsDen","leagueTier":"GOLD",)"
              R"("leagues":[{"leagueRank":"I","standings":[{"apexDaysUntilDecay":4,"emblems":[],"id":"44",)"
              R"("inactive":false,"inactivityStatus":"ACTIVE","losses":0,"miniseriesResults":[],"name":"Cy",)"
              R"("pendingDemotion":false,"pendingPromotion":false,"points":-2,"position":1,"positionDelta":0,)"
              R"("previousPosition":0,"wins":0}]},{"leagueRank":"II","standings":[{"apexDaysUntilDecay":0,)"
              R"("emblems":["HOTSTREAK"],"id":"42","inactive":false,"inactivityStatus":"","losses":10,)"
              R"("miniseriesResults":["W","N"],"name":"Ann","pendingDemotion":false,"pendingPromotion":false,)"
              R"("points":75,"position":1,"positionDelta":2,"previousPosition":3,"wins":12}]}],"name":"Ann",)"
              R"("queueType":"FLEXSR","requesterLeagueRank":"NA"})");
}

}  // namespace
}  // namespace Orvel::Client::Leagues
