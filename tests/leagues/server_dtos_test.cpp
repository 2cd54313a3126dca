#include "leagues/server_dtos.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "codec/json_reader.h"
#include "codec/json_writer.h"
#include "leagues/api_types.h"
#include "support/loaded_module.h"
#include "types/native_conversion.h"

namespace Orvel::Client::Leagues {

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
