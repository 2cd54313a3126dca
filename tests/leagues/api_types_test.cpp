#include "leagues/api_types.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/loaded_module.h"
#include "type_description.h"
#include "types/native_conversion.h"

namespace Orvel::Client::Leagues {
namespace {

using test::DescribeEnumValues;
using test::DescribeFields;

struct TypeRow {
    const char* name;
    std::vector<std::string> fields;
};

// Every API record with its fields, in registration order, as the server and
// the front end know them.
const std::vector<TypeRow> kApiRecords = {
    {"TavLeaguesLeagueStanding",
     {"id: string", "name: string", "position: uint64", "positionDelta: int64", "previousPosition: uint64",
      "emblems: vector of enum TavLeaguesLeagueEmblem", "wins: uint64", "losses: uint64",
      "miniseriesResults: vector of enum TavLeaguesMiniseries", "points: int64", "inactive: bool",
      "pendingPromotion: bool", "pendingDemotion: bool", "inactivityStatus: string", "apexDaysUntilDecay: int64"}},
    {"TavLeaguesLeagueDivision",
     {"leagueRank: enum TavLeaguesLeagueRank", "standings: vector of struct TavLeaguesLeagueStanding"}},
    {"TavLeaguesLeague",
     {"queueType: enum TavLeaguesLeagueQueueType", "leagueTier: enum TavLeaguesLeagueTier",
      "requesterLeagueRank: enum TavLeaguesLeagueRank", "leagueName: string", "name: string",
      "leagues: vector of struct TavLeaguesLeagueDivision", "challengerNextPromotionUpdateInMs: uint64"}},
    {"TavLeaguesApexLeagues",
     {"challengers: vector of struct TavLeaguesLeague", "masters: vector of struct TavLeaguesLeague"}},
    {"TavLeaguesLeagueTeamMember", {"id: uint64", "name: string", "totalGamePlayed: uint64", "winRate: float"}},
    {"TavLeaguesLeagueTeam", {"id: string", "name: string", "members: vector of struct TavLeaguesLeagueTeamMember"}},
    {"TavLeaguesLeagueChampAndStat", {"championId: int32", "totalGamePlayed: int64", "winRate: float"}},
    {"TavLeaguesLeaguesSummoner", {"summonerId: uint64", "accountId: uint64"}},
    {"TavLeaguesLeagueNotificationItem",
     {"notifyReason: string",
      "leaguePointsDelta: int64",
      "gameId: uint64",
      "minGamesForSeeding: int64",
      "playerOrTeamId: string",
      "playerOrTeamName: string",
      "leagueName: string",
      "queueType: string",
      "tier: string",
      "rank: string",
      "points: int64",
      "previousPosition: uint64",
      "wins: uint64",
      "losses: uint64",
      "lastPlayed: uint64",
      "timeUntilDecay: int64",
      "inactivityStatus: string",
      "timeUntilInactivityStatusChanges: uint64",
      "timeLastDecayMessageShown: uint64",
      "miniseriesResults: vector of enum TavLeaguesMiniseries",
      "displayDecayWarning: bool",
      "demotionWarning: int64",
      "seasonEndTier: string",
      "seasonEndRank: string",
      "seasonEndApexPosition: uint64",
      "emblems: vector of enum TavLeaguesLeagueEmblem",
      "inactive: bool",
      "totalPlayed: uint64",
      "miniseriesWins: uint64",
      "miniseriesTimeLeftToPlayMillis: uint64"}},
    {"TavLeaguesLeaguesNotification",
     {"id: uint64", "type: string", "titleType: string", "severity: enum TavLeaguesSeverity",
      "data: struct TavLeaguesLeagueNotificationItem", "priority: uint64", "acknowledgedByPlayer: bool"}},
    {"TavLeaguesLeaguesSeasonRewardConfig", {"QualificationWarningEnabled: bool"}},
    {"TavLeaguesSimpleMessage", {"accountId: uint64", "msgId: string", "type: string", "params: vector of string"}},
    {"TavLeaguesLeaguesLoginDataPacket", {"simpleMessages: vector of struct TavLeaguesSimpleMessage"}},
    {"TavLeaguesLoginSession", {"state: enum TavLeaguesLoginSessionStates", "summonerId: uint64", "accountId: uint64"}},
    {"TavLeaguesAchievedTier",
     {"queueType: enum TavLeaguesLeagueQueueType", "tier: enum TavLeaguesLeagueTier", "division: uint64"}},
    {"TavLeaguesParticipantTiers", {"summonerId: uint64", "achievedTiers: vector of struct TavLeaguesAchievedTier"}},
    {"TavLeaguesQueue", {"type: object"}},
    {"TavLeaguesGameflowGameData", {"queue: struct TavLeaguesQueue"}},
    {"TavLeaguesGameflowSession",
     {"phase: enum TavLeaguesGameflowPhase", "gameData: struct TavLeaguesGameflowGameData"}},
};

const std::vector<TypeRow> kApiEnums = {
    {"TavLeaguesSeverity", {"ALERT=1", "WARNING=0"}},
    {"TavLeaguesLeagueQueueType", {"FLEXSR=3", "FLEXTT=2", "NONE=0", "SOLO5V5=1"}},
    {"TavLeaguesLeagueTier",
     {"BRONZE=1", "CHALLENGER=7", "DIAMOND=5", "GOLD=3", "MASTER=6", "NONE=0", "PLATINUM=4", "SILVER=2"}},
    {"TavLeaguesLeagueRank", {"I=0", "II=1", "III=2", "IV=3", "NA=5", "V=4"}},
    {"TavLeaguesMiniseries", {"L=1", "N=2", "W=0"}},
    {"TavLeaguesLeagueEmblem", {"FRESHBLOOD=2", "HOTSTREAK=1", "VETERAN=0"}},
    {"TavLeaguesLoginSessionStates", {"ERROR=3", "IN_PROGRESS=0", "LOGGING_OUT=2", "SUCCEEDED=1"}},
    {"TavLeaguesGameflowPhase",
     {"ChampSelect=5", "CheckedIntoTournament=3", "EndOfGame=12", "FailedToLaunch=7", "GameStart=6", "InProgress=8",
      "Lobby=1", "Matchmaking=2", "None=0", "PreEndOfGame=11", "ReadyCheck=4", "Reconnect=9", "TerminatedInError=13",
      "WaitingForStats=10"}},
};

class LeagueApiTypes : public ::testing::Test {
  protected:
    test::LoadedModule loaded;
};

TEST_F(LeagueApiTypes, EveryRecordHasItsFieldsInOrderWithTheModuleTags) {
    const std::vector<std::string> tags = {"Plugins", "Plugin tav-leagues"};
    for (const TypeRow& row : kApiRecords) {
        SCOPED_TRACE(row.name);
        const wex::BindingTypeInfo* type = loaded.Registry().FindType(row.name);
        ASSERT_NE(type, nullptr);
        EXPECT_FALSE(type->isEnum);
        EXPECT_EQ(DescribeFields(*type, loaded.Registry()), row.fields);
        EXPECT_EQ(type->tags, tags);
    }
}

TEST_F(LeagueApiTypes, EveryEnumerationHasItsValuesWithTheModuleTags) {
    const std::vector<std::string> tags = {"Plugins", "Plugin tav-leagues"};
    for (const TypeRow& row : kApiEnums) {
        SCOPED_TRACE(row.name);
        const wex::BindingTypeInfo* type = loaded.Registry().FindType(row.name);
        ASSERT_NE(type, nullptr);
        EXPECT_TRUE(type->isEnum);
        EXPECT_EQ(DescribeEnumValues(*type), row.fields);
        EXPECT_EQ(type->tags, tags);
    }
}

std::vector<std::string> MemberNames(const wex::BindingProperty& value) {
    std::vector<std::string> names;
    for (const wex::BindingMember member : value.Members()) {
        names.emplace_back(member.name);
    }
    return names;
}

TEST_F(LeagueApiTypes, ALeagueSerialisesInNameOrderWithoutItsMaximumSize) {
    Api::League league;
    league.maxLeagueSize = 200;
    const wex::BindingProperty value = wex::ToBinding(league, loaded.Registry());
    ASSERT_TRUE(value.IsValid()) << value.GetError();
    EXPECT_EQ(MemberNames(value),
              (std::vector<std::string>{"challengerNextPromotionUpdateInMs", "leagueName", "leagueTier", "leagues",
                                        "name", "queueType", "requesterLeagueRank"}));
    EXPECT_EQ(value.Member("requesterLeagueRank").EnumValue(), static_cast<std::int32_t>(Api::LeagueRank::NA));
}

TEST_F(LeagueApiTypes, AStandingSerialisesWithoutItsSeriesCountsAndTier) {
    Api::LeagueStanding standing;
    standing.miniseriesWins = 2;
    standing.miniseriesLosses = 1;
    standing.leagueTier = Api::LeagueTier::GOLD;
    const wex::BindingProperty value = wex::ToBinding(standing, loaded.Registry());
    ASSERT_TRUE(value.IsValid()) << value.GetError();
    EXPECT_EQ(MemberNames(value),
              (std::vector<std::string>{"apexDaysUntilDecay", "emblems", "id", "inactive", "inactivityStatus", "losses",
                                        "miniseriesResults", "name", "pendingDemotion", "pendingPromotion", "points",
                                        "position", "positionDelta", "previousPosition", "wins"}));
}

}  // namespace
}  // namespace Orvel::Client::Leagues
