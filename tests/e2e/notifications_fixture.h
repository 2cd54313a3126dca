#pragma once

// A started library with a logged-in player and the league service on, and
// the ways of the tests of the notifications to drive it and read it back.
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "league_json.h"
#include "notification_json.h"
#include "support/started_league_plugin.h"

namespace tav::test {

class NotificationsTest : public ::testing::Test {
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

    host::EndpointAnswer Acknowledge(std::string_view id) {
        return plugin.host().CallEndpoint(HostMethodPost,
                                          "/tav-leagues/v2/notifications/" + std::string(id) + "/acknowledge");
    }

    StartedLeaguePlugin plugin;
};

}  // namespace tav::test
