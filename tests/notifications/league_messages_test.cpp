#include "notifications/league_messages.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "codec/json_writer.h"
#include "support/case_table.h"
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

TEST_F(BuildNotificationDataTest, SkipsParamsWithoutANotifyReasonAndReadsMissingOrWronglyKindedMembersAsDefaults) {
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
    const auto rows = tav::test::ReadCases(__FILE__, "number_readings.tsv");
    ASSERT_EQ(rows.size(), 8u);
    for (const std::vector<std::string>& row : rows) {
        SCOPED_TRACE(row.at(0));
        const std::string& number = row.at(0);
        DataOf({R"({"notifyReason": "LEAGUE_POINTS_UPDATE", "leaguePointsDelta": )" + number +
                R"(, "minGamesForSeeding": )" + number + R"(, "leagueItem": {"leaguePoints": )" + number +
                R"(, "timeUntilDecay": )" + number + R"(, "demotionWarning": )" + number + "}}"});
        const Api::LeagueNotificationItem& data = record.data;
        EXPECT_EQ((std::vector<std::int64_t>{data.leaguePointsDelta, data.minGamesForSeeding, data.points,
                                             data.timeUntilDecay, data.demotionWarning}),
                  std::vector<std::int64_t>(5, std::stoll(row.at(1))));
    }
    DataOf({R"({"notifyReason": "X", "gameId": 18446744073709551615,
                "leagueItem": {"wins": 4294967296, "losses": -1, "lastPlayed": 12.7}})"});
    EXPECT_EQ(record.data.gameId, 18446744073709551615u);
    EXPECT_EQ(record.data.wins, 4294967296u);
    EXPECT_EQ(record.data.losses, 18446744073709551615u);
    EXPECT_EQ(record.data.lastPlayed, 12u);
}

TEST(LeagueUpdateMessages, WhichCountAndTheKeysTheirDataSelects) {
    const auto rows = tav::test::ReadCases(__FILE__, "message_keys.tsv");
    ASSERT_EQ(rows.size(), 41u);
    for (const std::vector<std::string>& row : rows) {
        SCOPED_TRACE(::testing::PrintToString(row));
        Api::LeagueNotificationResource record;
        record.data.notifyReason = row.at(1);
        if (row[0] == "update") {
            EXPECT_EQ(IsLeagueUpdateMessage(
                          Message("leagues", {"not json", "[]", Reason("LEAGUE_RESET"), Reason(row.at(1))})),
                      row.at(2) == "1");
            EXPECT_FALSE(IsLeagueUpdateMessage(Message("clash", {Reason(row.at(1))})));
        } else if (row[0] == "promo") {
            EXPECT_EQ(IsPromoHelperTier(row.at(1), row.at(2)), row.at(3) == "1");
        } else if (row[0] == "title") {
            record.data.queueType = "FLEXTT";
            EXPECT_EQ(SelectTitleKey(record), row.at(2));
        } else {
            record.data.tier = row.at(2);
            record.data.rank = row.at(3);
            record.data.miniseriesWins = std::stoull(row.at(4));
            record.data.displayDecayWarning = row.at(5) == "1";
            record.data.inactivityStatus = row.at(6);
            EXPECT_EQ(SelectMessageKey(record), row.at(7));
        }
    }
}

}  // namespace

}  // namespace Orvel::Client::Leagues
