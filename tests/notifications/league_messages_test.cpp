#include "notifications/league_messages.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <tuple>
#include <vector>

#include "codec/json_writer.h"
#include "support/loaded_module.h"
#include "types/native_conversion.h"

namespace Orvel::Client::Leagues {

namespace {

Api::SimpleMessage Message(std::string type, std::vector<std::string> params) {
    return Api::SimpleMessage{34, "m1", std::move(type), std::move(params)};
}

std::string Reason(const std::string& reason) {
    return R"({"notifyReason": ")" + reason + R"("})";
}

TEST(IsLeagueUpdateMessage, NeedsALeaguesMessageWithAParamWhoseReasonIsOfAChangedStanding) {
    for (const char* reason : {"LEAGUE_POINTS_UPDATE", "LEAGUE_PROMOTED", "LEAGUE_DEMOTED", "LEAGUE_UPDATE_DECAY",
                               "MINISERIES_START", "MINISERIES_LOST", "MINISERIES_CANCEL", "QUEUE_DODGE"}) {
        SCOPED_TRACE(reason);
        EXPECT_TRUE(
            IsLeagueUpdateMessage(Message("leagues", {"not json", "[]", Reason("LEAGUE_RESET"), Reason(reason)})));
        EXPECT_FALSE(IsLeagueUpdateMessage(Message("clash", {Reason(reason)})));
    }
    for (const char* reason : {"NOT_YET_SEEDED", "league_promoted", "", "QUEUE_DODGE "}) {
        SCOPED_TRACE(reason);
        EXPECT_FALSE(IsLeagueUpdateMessage(Message("leagues", {Reason(reason)})));
    }
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
    const std::string initial = DataOf({});
    EXPECT_EQ(record.data.minGamesForSeeding, -1);
    EXPECT_EQ(DataOf(skipped), initial);
    EXPECT_EQ(record.type + record.titleType, "");
}

TEST_F(BuildNotificationDataTest, MissingAndWronglyKindedMembersReadAsTheirDefaults) {
    // Once a param counts, an absent queue reads as the empty server name, which maps to NONE.
    std::string defaults = DataOf({});
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

TEST_F(BuildNotificationDataTest, ThirtyTwoBitReadingsKeepTheLowBitsWithSignAndSixtyFourBitOnesTheWholeNumber) {
    const std::pair<const char*, std::int64_t> rows[] = {
        {"4294967295", -1},
        {"2147483647", 2147483647},
        {"2147483648", -2147483648LL},
        {"4294967296", 0},
        {"-2147483649", 2147483647},
        {"18446744073709551615", -1},
        {"-75.9", -75},
        {"1e300", -1},
    };
    for (const auto& [text, points] : rows) {
        SCOPED_TRACE(text);
        const std::string number = text;
        DataOf({R"({"notifyReason": "LEAGUE_POINTS_UPDATE", "leaguePointsDelta": )" + number +
                R"(, "minGamesForSeeding": )" + number + R"(, "leagueItem": {"leaguePoints": )" + number +
                R"(, "timeUntilDecay": )" + number + R"(, "demotionWarning": )" + number + "}}"});
        EXPECT_EQ(record.data.leaguePointsDelta, points);
        EXPECT_EQ(record.data.minGamesForSeeding, points);
        EXPECT_EQ(record.data.points, points);
        EXPECT_EQ(record.data.timeUntilDecay, points);
        EXPECT_EQ(record.data.demotionWarning, points);
    }
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
    const std::tuple<const char*, const char*, bool> rows[] = {
        {"BRONZE", "I", true},  {"SILVER", "I", true},    {"GOLD", "II", true},      {"GOLD", "", true},
        {"GOLD", "i", true},    {"GOLD", "I", false},     {"PLATINUM", "IV", false}, {"MASTER", "I", false},
        {"bronze", "V", false}, {"SILVER ", "II", false},
    };
    for (const auto& [tier, rank, promoHelper] : rows) {
        SCOPED_TRACE(std::string(tier) + " " + rank);
        EXPECT_EQ(IsPromoHelperTier(tier, rank), promoHelper);
    }
}

TEST(SelectKeys, FollowTheReasonAndItsConditionsInOrder) {
    struct Row {
        const char* reason;
        const char* tier;
        const char* rank;
        std::uint64_t seriesWins;
        bool displayDecayWarning;
        const char* inactivityStatus;
        const char* key;
    };
    const Row rows[] = {
        {"LEAGUE_DEMOTED", "SILVER", "II", 0, false, "", "LEAGUES_MESSAGE_PROMOHELPER_LEAGUE_DEMOTED"},
        {"LEAGUE_DEMOTED", "GOLD", "I", 0, false, "", "LEAGUES_MESSAGE_LEAGUE_DEMOTED"},
        {"MINISERIES_START", "BRONZE", "V", 1, false, "", "LEAGUES_MESSAGE_PROMOHELPER_MINISERIES_START_SINGULAR"},
        {"MINISERIES_START", "BRONZE", "V", 2, false, "", "LEAGUES_MESSAGE_PROMOHELPER_MINISERIES_START_PLURAL"},
        {"MINISERIES_START", "BRONZE", "V", 0, false, "", "LEAGUES_MESSAGE_MINISERIES_START"},
        {"MINISERIES_START", "GOLD", "I", 1, false, "", "LEAGUES_MESSAGE_MINISERIES_START"},
        {"LEAGUE_UPDATE_DECAY", "BRONZE", "I", 3, true, "INACTIVE", "LEAGUES_SYSTEM_DECAY"},
        {"MINISERIES_CANCEL", "GOLD", "II", 0, true, "INACTIVE", "LEAGUES_SYSTEM_SERIES_ENDED_DECAY"},
        {"MINISERIES_CANCEL", "GOLD", "II", 0, false, "INACTIVE", "LEAGUES_SYSTEM_SERIES_ENDED"},
        {"MINISERIES_CANCEL", "GOLD", "II", 0, true, "inactive", "LEAGUES_SYSTEM_SERIES_ENDED"},
        {"MINISERIES_LOST", "GOLD", "III", 0, false, "", "LEAGUES_MESSAGE_PROMOHELPER_MINISERIES_LOST"},
        {"MINISERIES_LOST", "GOLD", "I", 0, false, "", "LEAGUES_MESSAGE_MINISERIES_LOST"},
        {"LEAGUE_PROMOTED", "BRONZE", "V", 1, true, "INACTIVE", "LEAGUES_MESSAGE_LEAGUE_PROMOTED"},
        {"league_demoted", "SILVER", "II", 0, false, "", "LEAGUES_MESSAGE_league_demoted"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.reason) + " " + row.tier + " " + row.rank);
        Api::LeagueNotificationResource record;
        record.data.notifyReason = row.reason;
        record.data.tier = row.tier;
        record.data.rank = row.rank;
        record.data.miniseriesWins = row.seriesWins;
        record.data.displayDecayWarning = row.displayDecayWarning;
        record.data.inactivityStatus = row.inactivityStatus;
        EXPECT_EQ(SelectMessageKey(record), row.key);
    }
    // Titles: the reason's own or the general one; an ended series adds its queue.
    const std::pair<const char*, const char*> titles[] = {
        {"MINISERIES_START", "LEAGUES_GENERAL_LEAGUE_MINISERIES_TITLE"},
        {"MINISERIES_CANCEL", "LEAGUES_SYSTEM_SERIES_ENDED_TITLE_FLEXTT"},
        {"LEAGUE_UPDATE_DECAY", "LEAGUES_SYSTEM_DECAY_TITLE"},
        {"MINISERIES_CANCEL ", "LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE"},
        {"", "LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE"},
    };
    for (const auto& [reason, title] : titles) {
        SCOPED_TRACE(reason);
        Api::LeagueNotificationResource record;
        record.data.notifyReason = reason;
        record.data.queueType = "FLEXTT";
        EXPECT_EQ(SelectTitleKey(record), title);
    }
}

}  // namespace

}  // namespace Orvel::Client::Leagues
