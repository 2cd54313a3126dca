#include "notifications/league_message.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

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

}  // namespace
}  // namespace Orvel::Client::Leagues
