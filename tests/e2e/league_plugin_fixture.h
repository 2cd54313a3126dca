#pragma once

// A started library with a logged-in player and the league service on, the
// messages and answers the server sends it, and the ways of the end-to-end
// tests to drive it and read it back.
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "binding/property.h"
#include "codec/json_reader.h"
#include "codec/json_writer.h"
#include "host_records.h"
#include "support/started_league_plugin.h"

namespace tav::test {

inline constexpr const char* kSummonerLeaguesClass = "com.orvelsoft.platform.leagues.client.dto.SummonerLeaguesDTO";
inline constexpr const char* kSimpleDialogMessage = "com.orvelsoft.platform.messaging.persistence.SimpleDialogMessage";
inline constexpr const char* kLeagueItemsClass = "com.orvelsoft.platform.leagues.client.dto.SummonerLeagueItemsDTO";
inline constexpr const char* kNotificationsUri = "/tav-leagues/v2/notifications";
inline constexpr const char* kSignedLeaguesUri = "/tav-leagues/v2/summoner-leagues/current-summoner/signed-leagues";

// text as a JSON string.
inline std::string JsonText(std::string_view text) {
    wex::BindingProperty value;
    value.SetString(text);
    return wex::WriteJson(value);
}

// A param of a leagues message: a notify reason, a league entry and, before
// the entry, more top-level members ("\"gameId\":7,").
inline std::string Param(std::string_view reason, std::string_view leagueItem = "{}", std::string_view topLevel = "") {
    return R"({"notifyReason":")" + std::string(reason) + R"(",)" + std::string(topLevel) + R"("leagueItem":)" +
           std::string(leagueItem) + "}";
}

// JSON texts joined by commas, the members of a list.
inline std::string JoinedJson(const std::vector<std::string>& items) {
    std::string json;
    for (const std::string& item : items) {
        json += (json.empty() ? "" : ",") + item;
    }
    return json;
}

// A standings answer of the server holding the entries.
inline std::string SummonerLeagues(const std::vector<std::string>& entries) {
    return R"({"summonerLeagues":[)" + JoinedJson(entries) + "]}";
}

// A simple message of the server, as JSON text; each param becomes a string.
inline std::string MessageJson(std::string_view msgId, const std::vector<std::string>& params,
                               std::string_view type = "leagues", unsigned long long accountId = 4242) {
    std::vector<std::string> texts;
    for (const std::string& param : params) {
        texts.push_back(JsonText(param));
    }
    return R"({"accountId":)" + std::to_string(accountId) + R"(,"msgId":)" + JsonText(msgId) + R"(,"type":)" +
           JsonText(type) + R"(,"params":[)" + JoinedJson(texts) + "]}";
}

// One line per notification of a JSON list: "id type titleType priority
// severity", and " acknowledged" when the player acknowledged it.
inline std::vector<std::string> NotificationLines(std::string_view json) {
    const wex::BindingProperty list = wex::ParseJson(std::string(json));
    std::vector<std::string> lines;
    for (const wex::BindingProperty& record : list.Elements()) {
        std::string line = std::to_string(record.Member("id").AsUInt64()) + " " +
                           std::string(record.Member("type").AsString()) + " " +
                           std::string(record.Member("titleType").AsString()) + " " +
                           std::to_string(record.Member("priority").AsUInt64()) + " " +
                           std::string(record.Member("severity").AsString());
        if (record.Member("acknowledgedByPlayer").ToBool()) {
            line += " acknowledged";
        }
        lines.push_back(line);
    }
    return lines;
}

// The resource events sent for uri, in order: "Update" and the data as JSON,
// or "Delete" alone.
inline std::vector<std::string> ResourceEvents(const host::HostRecords& records, std::string_view uri) {
    std::vector<std::string> events;
    for (const host::RecordedEvent& event : records.events) {
        const wex::BindingProperty payload = wex::ParseJson(event.payload);
        if (event.name == "OnJsonApiEvent" && payload.Member("uri").AsString() == uri) {
            const wex::BindingProperty& data = payload.Member("data");
            events.push_back(std::string(payload.Member("eventType").AsString()) +
                             (data.IsEmpty() ? "" : " " + wex::WriteJson(data)));
        }
    }
    return events;
}

// A route's failure, compared whole.
inline void ExpectFailure(const host::EndpointAnswer& answer, std::uint32_t status, const std::string& error) {
    EXPECT_EQ(answer.status, status);
    EXPECT_TRUE(answer.failed);
    EXPECT_EQ(answer.error, error);
    EXPECT_EQ(answer.json, "");
}

class LeaguePluginTest : public ::testing::Test {
  protected:
    using Lines = std::vector<std::string>;

    static constexpr const char* kGameflowSession = "/tav-gameflow/v1/session";
    static constexpr const char* kSeasonReward = "/tav-platform-config/v1/namespaces/SeasonReward";
    static constexpr const char* kLoginDataPacket = "/tav-login/v1/login-data-packet";
    static constexpr const char* kJwtEnabled = "/tav-platform-config/v1/namespaces/LeagueConfig/JWTEnabled";

    void SetUp() override {
        ASSERT_TRUE(plugin.started()) << plugin.error();
        plugin.LogIn(42, 4242);
        plugin.SetLeagueService(true);
        ScriptPositions(R"({"summonerLeagues":[]})");
        plugin.ScriptServer("leagues", "getAllMyLeagues", kSummonerLeaguesClass, R"({"summonerLeagues":[]})");
        plugin.ScriptServer("clientFacadeService", "callPersistenceMessaging", "", "null");
        plugin.host().ClearRecords();
    }

    // The current player's league entries, as "getMyLeaguePositions" answers them.
    void ScriptPositions(std::string_view json) {
        plugin.ScriptServer("leagues", "getMyLeaguePositions", kLeagueItemsClass, json);
    }

    void Push(std::string_view msgId, const std::vector<std::string>& params, std::string_view type = "leagues") {
        plugin.host().PushServerMessage(kSimpleDialogMessage, MessageJson(msgId, params, type));
        plugin.host().RunUntilIdle();
    }

    // The gameflow phase, in a session of the queue.
    void EnterPhase(std::string_view phase, std::string_view queueType = "RANKED_SOLO_5x5") {
        plugin.SetResource(kGameflowSession, R"({"phase":")" + std::string(phase) +
                                                 R"(","gameData":{"queue":{"type":")" + std::string(queueType) +
                                                 R"("}}})");
    }

    // The notifications as the route lists them, one line each.
    Lines Listed() {
        const host::EndpointAnswer answer = plugin.Get(kNotificationsUri);
        EXPECT_FALSE(answer.failed) << answer.error;
        return NotificationLines(answer.json);
    }

    // Each publication of the list, its notifications joined by " | ".
    Lines PublishedLists() const {
        Lines published;
        for (const std::string& event : ResourceEvents(plugin.records(), kNotificationsUri)) {
            const std::size_t space = event.find(' ');
            std::string line = event.substr(0, space) + ":";
            for (const std::string& notification : NotificationLines(event.substr(space + 1))) {
                line += (line.back() == ':' ? " " : " | ") + notification;
            }
            published.push_back(line);
        }
        return published;
    }

    StartedLeaguePlugin plugin;
};

}  // namespace tav::test
