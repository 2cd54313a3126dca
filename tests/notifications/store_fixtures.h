#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "notifications/notification_store.h"

namespace Orvel::Client::Leagues::test {

// A param of a leagues message: a notify reason and a league entry's members.
inline std::string Param(std::string_view reason, std::string_view leagueItem = "{}") {
    return R"({"notifyReason": ")" + std::string(reason) + R"(", "leagueItem": )" + std::string(leagueItem) + "}";
}

inline Api::SimpleMessage LeaguesMessage(std::string msgId, std::vector<std::string> params,
                                         std::uint64_t accountId = 34) {
    return Api::SimpleMessage{accountId, std::move(msgId), "leagues", std::move(params)};
}

// The listed notifications, one line each: id, message key, title key,
// priority, severity and, when set, "acknowledged".
inline std::vector<std::string> Listed(const LeagueNotificationStore& store) {
    std::vector<std::string> lines;
    for (const Api::LeagueNotificationResource& record : store.GetNotifications()) {
        std::string line = std::to_string(record.id) + " " + record.type + " " + record.titleType + " " +
                           std::to_string(record.priority) +
                           (record.severity == Api::Severity::ALERT ? " ALERT" : " WARNING");
        if (record.acknowledgedByPlayer) {
            line += " acknowledged";
        }
        lines.push_back(line);
    }
    return lines;
}

// A server acknowledgement that records each call as "accountId msgId" and
// answers as told.
struct RecordedAcknowledgements {
    std::vector<std::string> calls;
    bool answer = true;
    // Runs during a call, as other handlers may run while the server is awaited.
    std::function<void()> meanwhile;

    ServerAcknowledgement Callable() {
        return [this](std::uint64_t accountId, const std::string& msgId) {
            calls.push_back(std::to_string(accountId) + " " + msgId);
            if (meanwhile) {
                meanwhile();
            }
            return answer;
        };
    }
};

}  // namespace Orvel::Client::Leagues::test
