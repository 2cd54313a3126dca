#include "notifications/league_messages.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "codec/json_writer.h"
#include "support/loaded_module.h"
#include "types/native_conversion.h"

namespace Orvel::Client::Leagues {

namespace {

Api::SimpleMessage Message(std::string type, std::vector<std::string> params) {
    Api::SimpleMessage message;
    message.accountId = 34;
    message.msgId = "m1";
    message.type = std::move(type);
    message.params = std::move(params);
    return message;
}

std::string Reason(const std::string& reason) {
    return R"({"notifyReason": ")" + reason + R"("})";
}

TEST(IsLeagueUpdateMessage, NeedsOneParamWithAReasonOfAChangedStanding) {
    for (const char* reason : {"LEAGUE_POINTS_UPDATE", "LEAGUE_PROMOTED", "LEAGUE_DEMOTED", "LEAGUE_UPDATE_DECAY",
                               "MINISERIES_START", "MINISERIES_LOST", "MINISERIES_CANCEL", "QUEUE_DODGE"}) {
        SCOPED_TRACE(reason);
        EXPECT_TRUE(IsLeagueUpdateMessage(Message("leagues", {Reason(reason)})));
        EXPECT_FALSE(IsLeagueUpdateMessage(Message("clash", {Reason(reason)})));
    }
    for (const char* reason : {"NOT_YET_SEEDED", "LEAGUE_RESET", "league_promoted", "", "QUEUE_DODGE "}) {
        SCOPED_TRACE(reason);
        EXPECT_FALSE(IsLeagueUpdateMessage(Message("leagues", {Reason(reason)})));
    }
}

TEST(IsLeagueUpdateMessage, LooksAtEveryParamSkippingThoseThatDoNotCount) {
    EXPECT_TRUE(IsLeagueUpdateMessage(
        Message("leagues", {"not json", Reason("NOT_YET_SEEDED"), "[]", Reason("LEAGUE_PROMOTED")})));
    EXPECT_FALSE(IsLeagueUpdateMessage(Message("leagues", {})));
    EXPECT_FALSE(IsLeagueUpdateMessage(Message(
        "leagues", {R"({"notifyReason": ["LEAGUE_PROMOTED"]})", R"({"reason": "LEAGUE_PROMOTED"})",
                    R"(["LEAGUE_PROMOTED"])", R"({"notifyReason": "LEAGUE_PROMOTED")", R"("LEAGUE_PROMOTED")"})));
}

class BuildNotificationDataTest : public ::testing::Test {
  protected:
    // The record built from params, as the JSON of its data.
    std::string DataOf(const std::vector<std::string>& params) {
        record = Api::LeagueNotificationResource{};
        BuildNotificationData(record, params);
        return wex::WriteJson(wex::ToBinding(record.data, loaded.Registry()), &loaded.Registry());
    }

    test::LoadedModule loaded;
    Api::LeagueNotificationResource record;
};

// Every member of a param at a value of its own.
constexpr const char* kFullParam = R"({
    "notifyReason": "LEAGUE_DEMOTED", "leaguePointsDelta": -15, "gameId": 9000000000, "minGamesForSeeding": 3,
    "leagueItem": {
        "leaguePoints": 75, "playerOrTeamId": "42", "playerOrTeamName": "Tester", "leagueName": "Orvel's 2nd Guard",
        "queueType": "RANKED_FLEX_SR", "tier": "SILVER", "rank": "II", "previousDayLeaguePosition": 7,
        "wins": 120, "losses": 110, "lastPlayed": 1700000000000, "timeUntilDecay": 86400,
        "inactivityStatus": "INACTIVE", "timeUntilInactivityStatusChanges": 3600000, "timeLastDecayMessageShown": 5,
        "miniSeries": {"progress": "WLN", "wins": 1, "losses": 1}, "demotionWarning": 2,
        "seasonEndTier": "GOLD", "seasonEndRank": "IV", "seasonEndApexPosition": 12, "totalPlayed": 230,
        "inactive": true, "displayDecayWarning": true, "freshBlood": true, "veteran": true, "hotStreak": false
    }
})";

constexpr const char* kFullData =
    R"({"demotionWarning":2,"displayDecayWarning":true,"emblems":["VETERAN","FRESHBLOOD"],"gameId":9000000000,)"
    R"("inactive":true,"inactivityStatus":"INACTIVE","lastPlayed":1700000000000,"leagueName":"OrvelsndGuard",)"
    R"("leaguePointsDelta":-15,"losses":110,"minGamesForSeeding":3,"miniseriesResults":["W","L","N"],)"
    R"("miniseriesTimeLeftToPlayMillis":0,"miniseriesWins":1,"notifyReason":"LEAGUE_DEMOTED",)"
    R"("playerOrTeamId":"42","playerOrTeamName":"Tester","points":75,"previousPosition":7,"queueType":"FLEXSR",)"
    R"("rank":"II","seasonEndApexPosition":12,"seasonEndRank":"IV","seasonEndTier":"GOLD",)"
    R"("tier":"SILVER","timeLastDecayMessageShown":5,"timeUntilDecay":86400,)"
    R"("timeUntilInactivityStatusChanges":3600000,"totalPlayed":230,"wins":120})";

// The data of a record that no param reached.
constexpr const char* kInitialData =
    R"({"demotionWarning":0,"displayDecayWarning":false,"emblems":[],"gameId":0,"inactive":false,)"
    R"("inactivityStatus":"","lastPlayed":0,"leagueName":"","leaguePointsDelta":0,"losses":0,)"
    R"("minGamesForSeeding":-1,"miniseriesResults":[],"miniseriesTimeLeftToPlayMillis":0,"miniseriesWins":0,)"
    R"("notifyReason":"","playerOrTeamId":"","playerOrTeamName":"","points":0,"previousPosition":0,)"
    R"("queueType":"","rank":"","seasonEndApexPosition":0,"seasonEndRank":"","seasonEndTier":"","tier":"",)"
    R"("timeLastDecayMessageShown":0,"timeUntilDecay":0,"timeUntilInactivityStatusChanges":0,"totalPlayed":0,)"
    R"("wins":0})";

TEST_F(BuildNotificationDataTest, ReadsEveryMemberOfAParamAndChoosesTheKeys) {
    EXPECT_EQ(DataOf({kFullParam}), kFullData);
    EXPECT_EQ(record.type, "LEAGUES_MESSAGE_PROMOHELPER_LEAGUE_DEMOTED");
    EXPECT_EQ(record.titleType, "LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE");
    EXPECT_EQ(record.severity, Api::Severity::ALERT);
    EXPECT_EQ(record.priority, 0u);
}

TEST_F(BuildNotificationDataTest, SkipsParamsThatAreNoObjectWithANotifyReason) {
    const std::vector<std::string> skipped = {
        "",
        "not json",
        "[1, 2]",
        R"("LEAGUE_DEMOTED")",
        "42",
        "null",
        R"({"leagueItem": {"tier": "GOLD"}})",
        R"({"notifyReason": "LEAGUE_PROMOTED")",
        std::string(2000, '[') + std::string(2000, ']'),
    };
    EXPECT_EQ(DataOf(skipped), kInitialData);
    EXPECT_EQ(record.type, "");
    EXPECT_EQ(record.titleType, "");
    EXPECT_EQ(DataOf({}), kInitialData);
}

TEST_F(BuildNotificationDataTest, MissingAndWronglyKindedMembersReadAsTheirDefaults) {
    // Once a param counts, an absent queue reads as the empty server name, which maps to NONE.
    std::string defaults = kInitialData;
    defaults.replace(defaults.find("\"queueType\":\"\""), 14, "\"queueType\":\"NONE\"");
    EXPECT_EQ(DataOf({R"({"notifyReason": null})"}), defaults);
    EXPECT_EQ(record.type, "LEAGUES_MESSAGE_");

    const std::string wrongKinds = R"({
        "notifyReason": 7, "leaguePointsDelta": "-15", "gameId": true, "minGamesForSeeding": "3",
        "leagueItem": {
            "leaguePoints": [75], "playerOrTeamId": 42, "playerOrTeamName": {}, "leagueName": 3,
            "queueType": 2, "tier": null, "wins": "120", "inactive": 1, "displayDecayWarning": "true",
            "freshBlood": 1, "miniSeries": "WLN"
        }
    })";
    // A present minGamesForSeeding of another kind reads as 0, not as the initial -1.
    std::string expected = defaults;
    expected.replace(expected.find("\"minGamesForSeeding\":-1"), 23, "\"minGamesForSeeding\":0");
    EXPECT_EQ(DataOf({wrongKinds}), expected);
    EXPECT_EQ(record.type, "LEAGUES_MESSAGE_");
    EXPECT_EQ(record.titleType, "LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE");
}

TEST_F(BuildNotificationDataTest, ThirtyTwoBitReadingsKeepTheLowBitsWithSign) {
    struct Row {
        const char* number;
        std::int64_t points;
    };
    const Row rows[] = {
        {"4294967295", -1},
        {"2147483647", 2147483647},
        {"2147483648", -2147483648LL},
        {"4294967296", 0},
        {"-1", -1},
        {"-2147483649", 2147483647},
        {"18446744073709551615", -1},
        {"75.9", 75},
        {"-75.9", -75},
        {"1e300", -1},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.number);
        const std::string number = row.number;
        DataOf({R"({"notifyReason": "LEAGUE_POINTS_UPDATE", "leaguePointsDelta": )" + number +
                R"(, "minGamesForSeeding": )" + number + R"(, "leagueItem": {"leaguePoints": )" + number +
                R"(, "timeUntilDecay": )" + number + R"(, "demotionWarning": )" + number + "}}"});
        EXPECT_EQ(record.data.leaguePointsDelta, row.points);
        EXPECT_EQ(record.data.minGamesForSeeding, row.points);
        EXPECT_EQ(record.data.points, row.points);
        EXPECT_EQ(record.data.timeUntilDecay, row.points);
        EXPECT_EQ(record.data.demotionWarning, row.points);
    }
}

TEST_F(BuildNotificationDataTest, SixtyFourBitReadingsTakeTheWholeNumber) {
    DataOf({R"({"notifyReason": "X", "gameId": 18446744073709551615,
                "leagueItem": {"wins": 4294967296, "losses": -1, "lastPlayed": 12.7}})"});
    EXPECT_EQ(record.data.gameId, 18446744073709551615u);
    EXPECT_EQ(record.data.wins, 4294967296u);
    EXPECT_EQ(record.data.losses, 18446744073709551615u);
    EXPECT_EQ(record.data.lastPlayed, 12u);
}

TEST_F(BuildNotificationDataTest, ASeriesWhoseProgressIsTheTextNullKeepsTheSeriesMembers) {
    const std::string start =
        R"({"notifyReason": "MINISERIES_START", "leagueItem": {"tier": "BRONZE", "rank": "V",
            "miniSeries": {"progress": "WNN", "wins": 1}}})";
    const std::string nullSeries =
        R"({"notifyReason": "MINISERIES_START", "leagueItem": {"tier": "BRONZE", "rank": "V",
            "miniSeries": {"progress": "null", "wins": 2}}})";
    DataOf({nullSeries});
    EXPECT_TRUE(record.data.miniseriesResults.empty());
    EXPECT_EQ(record.data.miniseriesWins, 0u);
    EXPECT_EQ(record.type, "LEAGUES_MESSAGE_MINISERIES_START");

    DataOf({start, nullSeries});
    EXPECT_EQ(record.data.miniseriesResults, (std::vector{Api::Miniseries::W, Api::Miniseries::N, Api::Miniseries::N}));
    EXPECT_EQ(record.data.miniseriesWins, 1u);
    EXPECT_EQ(record.type, "LEAGUES_MESSAGE_PROMOHELPER_MINISERIES_START_SINGULAR");

    // A series of JSON null, or none at all, has the empty progress: no results.
    DataOf({start, R"({"notifyReason": "MINISERIES_START", "leagueItem": {"miniSeries": null}})"});
    EXPECT_TRUE(record.data.miniseriesResults.empty());
}

TEST_F(BuildNotificationDataTest, TheLastParamThatCountsDecidesEveryMemberItReads) {
    const std::string cancel =
        R"({"notifyReason": "MINISERIES_CANCEL", "minGamesForSeeding": 4,
            "leagueItem": {"queueType": "RANKED_SOLO_5x5", "tier": "GOLD", "wins": 3}})";
    const std::string decay =
        R"({"notifyReason": "LEAGUE_UPDATE_DECAY", "leagueItem": {"queueType": "RANKED_FLEX_TT"}})";
    DataOf({cancel, "skipped", decay, R"({"no reason": 1})"});
    EXPECT_EQ(record.data.notifyReason, "LEAGUE_UPDATE_DECAY");
    EXPECT_EQ(record.data.queueType, "FLEXTT");
    EXPECT_EQ(record.data.tier, "");
    EXPECT_EQ(record.data.wins, 0u);
    EXPECT_EQ(record.data.minGamesForSeeding, 4);  // read only when present
    EXPECT_EQ(record.type, "LEAGUES_SYSTEM_DECAY");
    EXPECT_EQ(record.titleType, "LEAGUES_SYSTEM_DECAY_TITLE");

    DataOf({decay, cancel});
    EXPECT_EQ(record.type, "LEAGUES_SYSTEM_SERIES_ENDED");
    EXPECT_EQ(record.titleType, "LEAGUES_SYSTEM_SERIES_ENDED_TITLE_SOLO5V5");
}

TEST(IsPromoHelperTier, BronzeSilverAndGoldBelowRankOne) {
    struct Row {
        const char* tier;
        const char* rank;
        bool promoHelper;
    };
    const Row rows[] = {
        {"BRONZE", "I", true},  {"BRONZE", "", true},   {"SILVER", "I", true},     {"SILVER", "V", true},
        {"GOLD", "II", true},   {"GOLD", "V", true},    {"GOLD", "", true},        {"GOLD", "i", true},
        {"GOLD", "I ", true},   {"GOLD", "I", false},   {"PLATINUM", "IV", false}, {"DIAMOND", "V", false},
        {"MASTER", "I", false}, {"bronze", "V", false}, {"", "", false},           {"SILVER ", "II", false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.tier) + " " + row.rank);
        EXPECT_EQ(IsPromoHelperTier(row.tier, row.rank), row.promoHelper);
    }
}

struct KeyRow {
    const char* reason;
    const char* tier;
    const char* rank;
    std::uint64_t seriesWins;
    bool displayDecayWarning;
    const char* inactivityStatus;
    const char* key;
};

Api::LeagueNotificationResource RecordOf(const KeyRow& row) {
    Api::LeagueNotificationResource record;
    record.data.notifyReason = row.reason;
    record.data.tier = row.tier;
    record.data.rank = row.rank;
    record.data.miniseriesWins = row.seriesWins;
    record.data.displayDecayWarning = row.displayDecayWarning;
    record.data.inactivityStatus = row.inactivityStatus;
    return record;
}

TEST(SelectMessageKey, FollowsTheReasonAndItsConditionsInOrder) {
    const KeyRow rows[] = {
        {"LEAGUE_DEMOTED", "SILVER", "II", 0, false, "", "LEAGUES_MESSAGE_PROMOHELPER_LEAGUE_DEMOTED"},
        {"LEAGUE_DEMOTED", "GOLD", "I", 0, false, "", "LEAGUES_MESSAGE_LEAGUE_DEMOTED"},
        {"LEAGUE_DEMOTED", "PLATINUM", "IV", 0, false, "", "LEAGUES_MESSAGE_LEAGUE_DEMOTED"},
        {"LEAGUE_DEMOTED", "BRONZE", "V", 0, true, "INACTIVE", "LEAGUES_MESSAGE_PROMOHELPER_LEAGUE_DEMOTED"},
        {"MINISERIES_START", "BRONZE", "V", 1, false, "", "LEAGUES_MESSAGE_PROMOHELPER_MINISERIES_START_SINGULAR"},
        {"MINISERIES_START", "BRONZE", "V", 2, false, "", "LEAGUES_MESSAGE_PROMOHELPER_MINISERIES_START_PLURAL"},
        {"MINISERIES_START", "GOLD", "II", 18446744073709551615u, false, "",
         "LEAGUES_MESSAGE_PROMOHELPER_MINISERIES_START_PLURAL"},
        {"MINISERIES_START", "BRONZE", "V", 0, false, "", "LEAGUES_MESSAGE_MINISERIES_START"},
        {"MINISERIES_START", "GOLD", "I", 1, false, "", "LEAGUES_MESSAGE_MINISERIES_START"},
        {"MINISERIES_START", "DIAMOND", "II", 2, false, "", "LEAGUES_MESSAGE_MINISERIES_START"},
        {"LEAGUE_UPDATE_DECAY", "BRONZE", "I", 3, true, "INACTIVE", "LEAGUES_SYSTEM_DECAY"},
        {"LEAGUE_UPDATE_DECAY", "", "", 0, false, "", "LEAGUES_SYSTEM_DECAY"},
        {"MINISERIES_CANCEL", "GOLD", "II", 0, true, "INACTIVE", "LEAGUES_SYSTEM_SERIES_ENDED_DECAY"},
        {"MINISERIES_CANCEL", "GOLD", "II", 0, false, "INACTIVE", "LEAGUES_SYSTEM_SERIES_ENDED"},
        {"MINISERIES_CANCEL", "GOLD", "II", 0, true, "WARNING", "LEAGUES_SYSTEM_SERIES_ENDED"},
        {"MINISERIES_CANCEL", "GOLD", "II", 0, true, "inactive", "LEAGUES_SYSTEM_SERIES_ENDED"},
        {"MINISERIES_LOST", "GOLD", "III", 0, false, "", "LEAGUES_MESSAGE_PROMOHELPER_MINISERIES_LOST"},
        {"MINISERIES_LOST", "GOLD", "I", 0, false, "", "LEAGUES_MESSAGE_MINISERIES_LOST"},
        {"MINISERIES_LOST", "CHALLENGER", "", 0, false, "", "LEAGUES_MESSAGE_MINISERIES_LOST"},
        {"LEAGUE_PROMOTED", "BRONZE", "V", 1, true, "INACTIVE", "LEAGUES_MESSAGE_LEAGUE_PROMOTED"},
        {"LEAGUE_POINTS_UPDATE", "SILVER", "I", 0, false, "", "LEAGUES_MESSAGE_LEAGUE_POINTS_UPDATE"},
        {"QUEUE_DODGE", "SILVER", "I", 0, false, "", "LEAGUES_MESSAGE_QUEUE_DODGE"},
        {"NOT_YET_SEEDED", "", "", 0, false, "", "LEAGUES_MESSAGE_NOT_YET_SEEDED"},
        {"LEAGUE_RESET", "GOLD", "I", 0, false, "", "LEAGUES_MESSAGE_LEAGUE_RESET"},
        {"league_demoted", "SILVER", "II", 0, false, "", "LEAGUES_MESSAGE_league_demoted"},
        {"", "", "", 0, false, "", "LEAGUES_MESSAGE_"},
    };
    for (const KeyRow& row : rows) {
        SCOPED_TRACE(std::string(row.reason) + " " + row.tier + " " + row.rank);
        EXPECT_EQ(SelectMessageKey(RecordOf(row)), row.key);
    }
}

TEST(SelectTitleKey, GivesTheReasonsOwnTitleOrTheGeneralOne) {
    struct Row {
        const char* reason;
        const char* queueType;
        const char* title;
    };
    const Row rows[] = {
        {"MINISERIES_START", "SOLO5V5", "LEAGUES_GENERAL_LEAGUE_MINISERIES_TITLE"},
        {"QUEUE_DODGE", "SOLO5V5", "LEAGUES_GENERAL_LEAGUE_MINISERIES_TITLE"},
        {"MINISERIES_LOST", "FLEXTT", "LEAGUES_GENERAL_LEAGUE_MINISERIES_TITLE"},
        {"MINISERIES_CANCEL", "SOLO5V5", "LEAGUES_SYSTEM_SERIES_ENDED_TITLE_SOLO5V5"},
        {"MINISERIES_CANCEL", "FLEXSR", "LEAGUES_SYSTEM_SERIES_ENDED_TITLE_FLEXSR"},
        {"MINISERIES_CANCEL", "NONE", "LEAGUES_SYSTEM_SERIES_ENDED_TITLE_NONE"},
        {"MINISERIES_CANCEL", "", "LEAGUES_SYSTEM_SERIES_ENDED_TITLE_"},
        {"LEAGUE_UPDATE_DECAY", "SOLO5V5", "LEAGUES_SYSTEM_DECAY_TITLE"},
        {"LEAGUE_DEMOTED", "SOLO5V5", "LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE"},
        {"LEAGUE_PROMOTED", "SOLO5V5", "LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE"},
        {"LEAGUE_POINTS_UPDATE", "SOLO5V5", "LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE"},
        {"NOT_YET_SEEDED", "SOLO5V5", "LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE"},
        {"MINISERIES_CANCEL ", "SOLO5V5", "LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE"},
        {"", "SOLO5V5", "LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.reason);
        Api::LeagueNotificationResource record;
        record.data.notifyReason = row.reason;
        record.data.queueType = row.queueType;
        EXPECT_EQ(SelectTitleKey(record), row.title);
    }
}

}  // namespace

}  // namespace Orvel::Client::Leagues
