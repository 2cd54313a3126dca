#include "game_server.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "codec/json_writer.h"
#include "host_value_json.h"

namespace tav::host {
namespace {

TEST(GameServer, AScriptAnswersBeforeTheResponderWhichSeesTheArguments) {
    GameServer server;
    std::vector<std::string> seen;
    server.SetResponder(
        [&seen](std::string_view destination, std::string_view method, const wex::BindingProperty& arguments) {
            seen.push_back(std::string(destination) + "." + std::string(method) + " " + wex::WriteJson(arguments));
            return ServerAnswer::Failure("from the responder");
        });
    server.Script("leagues", "getChallengerLeague", ServerAnswer::Failure("from the script"));

    EXPECT_EQ(server.Answer("leagues", "getChallengerLeague", JsonValue(R"(["RANKED_SOLO_5x5"])")).error,
              "from the script");
    EXPECT_EQ(server.Answer("leagues", "getMasterLeagueTopX", JsonValue(R"(["RANKED_FLEX_TT","200"])")).error,
              "from the responder");
    EXPECT_EQ(seen, (std::vector<std::string>{R"(leagues.getMasterLeagueTopX ["RANKED_FLEX_TT","200"])"}));
}

TEST(GameServer, AnUnansweredCallFailsNamingTheCall) {
    const GameServer server;
    EXPECT_EQ(server.Answer("playerStatsService", "getAggregatedStats").error,
              "No answer scripted for playerStatsService.getAggregatedStats");
}

}  // namespace
}  // namespace tav::host
