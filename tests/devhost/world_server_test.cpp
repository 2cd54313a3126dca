#include "world_server.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "codec/json_writer.h"
#include "host_value_json.h"
#include "support/case_table.h"

namespace tav::host {
namespace {

std::shared_ptr<const LeagueWorld> ApexWorld() {
    WorldReading reading = ReadLeagueWorld(
        "currentPlayer: 1\nplayers: [{summonerId: 1, accountId: 11, name: One}]\n"
        "leagues: [{name: Den, queue: RANKED_SOLO_5x5, tier: MASTER, generate: {count: 3, seed: 5}}]\n");
    EXPECT_EQ(reading.error, "");
    return std::make_shared<const LeagueWorld>(std::move(reading.world));
}

// What an apex answer says: its class, then the list's size, limit, tier and queue.
std::string Described(const ServerAnswer& answer) {
    if (!answer.error.empty() || !answer.payloadText) {
        return "error " + answer.error;
    }
    const wex::BindingProperty list = JsonValue(*answer.payloadText);
    return answer.className + " " + std::to_string(list.Member("entries").Size()) + " of " +
           std::to_string(list.Member("maxLeagueSize").AsUInt64()) + " " + std::string(list.Member("tier").AsString()) +
           " " + std::string(list.Member("queue").AsString());
}

// Apex lists are written once per tier, queue and limit; each limit keeps its own answer, and a fault set later
// changes it.
TEST(WorldServer, AnswersEachApexListByItsTierQueueAndLimitUnlessAFaultIsSet) {
    WorldServer server(ApexWorld());
    for (const auto& row : tav::test::ReadCaseTable(__FILE__, "apex_lists.tsv", 3)) {
        SCOPED_TRACE(row[0] + " " + row[1]);
        EXPECT_EQ(Described(server.Answer("leagues", row[0], JsonValue(row[1]))), row[2]);
    }
    // A fault changes a list already written.
    const wex::BindingProperty arguments = JsonValue(R"(["RANKED_SOLO_5x5","200"])");
    server.SetFault("leagues", "getMasterLeagueTopX", ServerFault{"", 500, 0.0, "com.example.Other", true});
    const ServerAnswer answer = server.Answer("leagues", "getMasterLeagueTopX", arguments);
    EXPECT_EQ(answer.className, "com.example.Other");
    EXPECT_EQ(answer.payloadText, R"({"summonerLeagues":[{"tier":)");
    server.ClearFaults();
    EXPECT_EQ(Described(server.Answer("leagues", "getMasterLeagueTopX", arguments)),
              "com.orvelsoft.leagues.pojo.LeagueListDTO 3 of 3 MASTER RANKED_SOLO_5x5");
}

// A call whose answer the plug-in does not read still has one; a method the server lacks is named.
TEST(WorldServer, AnswersABodilessCallAndRefusesAnUnknownMethod) {
    WorldServer server(ApexWorld());
    const ServerAnswer jwt = server.Answer("teambuilder-draft", "setJwtAsGameCustomizationV1", JsonValue("[]"));
    EXPECT_EQ(jwt.error, "");
    EXPECT_EQ(wex::WriteJson(jwt.body), "{}");
    const ServerAnswer unknown = server.Answer("teambuilder-draft", "setJwt", JsonValue("[]"));
    EXPECT_EQ(unknown.error, "The game server has no method teambuilder-draft.setJwt");
    EXPECT_EQ(unknown.status, 404u);
}

}  // namespace
}  // namespace tav::host
