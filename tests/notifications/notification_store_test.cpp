#include "notifications/notification_store.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace Orvel::Client::Leagues {

namespace {

using Api::GameflowPhase;
using Lines = std::vector<std::string>;

// A param of a leagues message: a notify reason and a league entry's members.
std::string Param(std::string_view reason, std::string_view leagueItem = "{}") {
    return R"({"notifyReason": ")" + std::string(reason) + R"(", "leagueItem": )" + std::string(leagueItem) + "}";
}

Api::SimpleMessage LeaguesMessage(std::string msgId, std::vector<std::string> params, std::uint64_t accountId = 34) {
    return Api::SimpleMessage{accountId, std::move(msgId), "leagues", std::move(params)};
}

constexpr const char* kGoldSeriesEnded = R"({"tier": "GOLD", "queueType": "RANKED_SOLO_5x5"})";

LCDS::LeagueItemDTO Entry(LCDS::LeagueTier tier, bool displayDecayWarning, std::string inactivityStatus,
                          std::string progress = "") {
    LCDS::LeagueItemDTO entry;
    entry.playerOrTeamId = "42";
    entry.playerOrTeamName = "Tester";
    entry.queueType = LCDS::QueueType::RANKED_FLEX_TT;
    entry.tier = tier;
    entry.displayDecayWarning = displayDecayWarning;
    entry.inactivityStatus = std::move(inactivityStatus);
    entry.miniSeries.progress = std::move(progress);
    entry.miniSeries.timeLeftToPlayMillis = 5000;
    entry.timeUntilInactivityStatusChanges = 86400000;
    return entry;
}

// The listed notifications, one line each: id, message key, title key,
// priority, severity and, when set, "acknowledged".
Lines Listed(const LeagueNotificationStore& store) {
    Lines lines;
    for (const Api::LeagueNotificationResource& record : store.GetNotifications()) {
        lines.push_back(std::to_string(record.id) + " " + record.type + " " + record.titleType + " " +
                        std::to_string(record.priority) +
                        (record.severity == Api::Severity::ALERT ? " ALERT" : " WARNING") +
                        (record.acknowledgedByPlayer ? " acknowledged" : ""));
    }
    return lines;
}

// A store whose server acknowledgement records each call as "accountId msgId"
// and answers as told.
class StoreTest : public ::testing::Test {
  protected:
    ServerAcknowledgement Server() {
        return [this](std::uint64_t accountId, const std::string& msgId) {
            calls.push_back(std::to_string(accountId) + " " + msgId);
            if (meanwhile) {
                meanwhile();
            }
            return answer;
        };
    }

    // "ok", or the failure's code and message.
    std::string Acknowledge(std::uint64_t id) {
        const auto result = store.AcknowledgeNotification(id, 34, Server());
        return result ? "ok"
                      : std::to_string(result.GetFailure().Code()) + " " + std::string(result.GetFailure().Message());
    }

    static std::string Refusal(std::uint64_t id) {
        return "403 Unable to delete notification with id " + std::to_string(id) +
               ". Either notification is acknowledged or it is not an acknowledgeable notification";
    }

    LeagueNotificationStore store;
    Lines calls;
    bool answer = true;
    // Runs during a server call, as other handlers may run while the server is awaited.
    std::function<void()> meanwhile;
};

// Plays store_scenarios.txt, whose head describes its commands.
TEST_F(StoreTest, PlaysTheScenarios) {
    std::ifstream file(std::filesystem::path(__FILE__).replace_filename("store_scenarios.txt"));
    ASSERT_TRUE(file.good()) << "cannot read store_scenarios.txt";
    Lines script;
    for (std::string line; std::getline(file, line);) {
        if (!line.empty() && line[0] != '#') {
            script.push_back(line);
        }
    }
    std::string scenario;
    for (std::size_t at = 0; at < script.size(); ++at) {
        SCOPED_TRACE(scenario + ": " + script[at]);
        const std::size_t arrow = script[at].find(" ->");
        const std::string expected =
            arrow == std::string::npos ? "" : script[at].substr(std::min(arrow + 4, script[at].size()));
        std::istringstream words(script[at].substr(0, arrow));
        std::string command;
        std::string id;
        std::string rest;
        words >> command >> id;
        std::getline(words >> std::ws, rest);
        if (command == "scenario") {
            scenario = script[at];
            store = LeagueNotificationStore{};
            calls.clear();
            answer = true;
        } else if (command == "add" || command == "raw" || command == "other") {
            Api::SimpleMessage message{77, id == "-" ? "" : id, command == "other" ? "Leagues" : "leagues", {rest}};
            if (command != "raw") {
                const std::size_t space = rest.find(' ');
                message.params = {
                    Param(rest.substr(0, space), space == std::string::npos ? "{}" : rest.substr(space + 1))};
            }
            EXPECT_EQ(store.AddLeagueMessage(message), command != "other");
        } else if (command == "decay") {
            const std::string tiers[] = {"NONE",     "BRONZE",  "SILVER", "GOLD",
                                         "PLATINUM", "DIAMOND", "MASTER", "CHALLENGER"};
            std::vector<LCDS::LeagueItemDTO> entries;
            std::istringstream fields(id + " " + rest);
            std::string tier, shown, status, progress;
            for (std::uint64_t level = 0; fields >> tier >> shown >> status >> progress >> level;) {
                const auto number = static_cast<LCDS::LeagueTier>(std::find(tiers, std::end(tiers), tier) - tiers);
                entries.push_back(
                    Entry(number, shown == "1", status == "-" ? "" : status, progress == "-" ? "" : progress));
                entries.back().demotionWarning = level;
            }
            store.UpdateDecayWarnings(entries);
        } else if (command == "shield") {
            std::vector<LCDS::LeagueItemDTO> entries;
            std::istringstream levels(id + " " + rest);
            for (std::uint64_t level = 0; levels >> level;) {
                entries.emplace_back().demotionWarning = level;
                entries.back().playerOrTeamId = "p" + std::to_string(entries.size() - 1);
                entries.back().queueType = static_cast<LCDS::QueueType>(entries.size() - 1);
            }
            store.UpdateDemotionShieldWarnings(entries);
        } else if (command == "allow") {
            EXPECT_EQ(store.SetNotificationsAllowed(id == "true") ? "true" : "false", expected);
        } else if (command == "ack") {
            EXPECT_EQ(Acknowledge(std::stoull(id)), expected == "ok" ? "ok" : Refusal(std::stoull(id)));
        } else if (command == "answer") {
            answer = false;
        } else if (command == "calls") {
            std::string text;
            for (const std::string& call : calls) {
                text += (text.empty() ? "" : ", ") + call;
            }
            EXPECT_EQ(text, expected);
        } else if (command == "record") {
            const Api::LeagueNotificationResource record = store.GetNotifications().at(std::stoul(id));
            EXPECT_EQ(record.msgId + "/" + record.data.tier + "/" + record.data.notifyReason + "/" +
                          std::to_string(record.data.minGamesForSeeding) + "/" + record.data.playerOrTeamId + "/" +
                          record.data.queueType,
                      expected);
        } else if (command == "list") {
            Lines listed;
            while (at + 1 < script.size() && script[at + 1].starts_with("  ")) {
                listed.push_back(script[++at].substr(2));
            }
            EXPECT_EQ(Listed(store), listed);
        } else {
            ADD_FAILURE() << "unknown command";
        }
    }
}

TEST_F(StoreTest, HoldsTheRecordWhileTheListsChangeDuringTheServerCall) {
    ASSERT_TRUE(store.AddLeagueMessage(
        LeaguesMessage("demoted", {Param("LEAGUE_DEMOTED", R"({"tier": "GOLD", "inactivityStatus": "INACTIVE",
                                               "displayDecayWarning": true})")})));
    ASSERT_FALSE(store.SetNotificationsAllowed(false));
    for (int index = 0; index < 20; ++index) {
        ASSERT_TRUE(store.AddLeagueMessage(LeaguesMessage("pending", {Param("MINISERIES_CANCEL", kGoldSeriesEnded)})));
    }
    // The release while the server is awaited grows the derived messages under the search.
    meanwhile = [this] { store.SetNotificationsAllowed(true); };
    EXPECT_EQ(Acknowledge(1), "ok");
    EXPECT_TRUE(store.GetNotifications().at(21).acknowledgedByPlayer);
    EXPECT_EQ(store.GetNotifications().size(), 42u);
}

}  // namespace

}  // namespace Orvel::Client::Leagues
