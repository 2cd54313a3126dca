// Notifications held back through a game by the gameflow changes of the
// simulated platform, and acknowledged through the built library's route.
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "notifications_fixture.h"

namespace tav::test {
namespace {

using Lines = std::vector<std::string>;

class NotificationGatingTest : public NotificationsTest {};

const std::string kReset = "LEAGUES_MESSAGE_LEAGUE_RESET LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE 0 ALERT";
const std::string kAck =
    R"(clientFacadeService.callPersistenceMessaging [{"__class":"com.orvelsoft.platform.messaging.persistence.)"
    R"(SimpleDialogMessageResponse","accountId":4242,"command":"ack","msgId":")";

std::string Refusal(const std::string& id) {
    return "Unable to delete notification with id " + id +
           ". Either notification is acknowledged or it is not an acknowledgeable notification";
}

TEST_F(NotificationGatingTest, ANotificationFiledDuringAGameWaitsForItsEnd) {
    Push("m0", {Param("LEAGUE_RESET")});
    EnterPhase("Lobby");
    EnterPhase("ChampSelect");
    Push("m1", {Param("LEAGUE_RESET")});
    EnterPhase("InProgress");
    EXPECT_EQ(Listed(), (Lines{"0 " + kReset}));
    const host::EndpointAnswer pending = Acknowledge("1");
    EXPECT_EQ(pending.status, 403u);
    EXPECT_EQ(pending.error, Refusal("1"));
    EnterPhase("EndOfGame");
    EXPECT_EQ(PublishedLists(), (Lines{
                                    "Update: 0 " + kReset,
                                    "Update: 0 " + kReset,
                                    "Update: 0 " + kReset + " | 1 " + kReset,
                                }));
    EXPECT_EQ(plugin.ServerCalls(), Lines{});
}

TEST_F(NotificationGatingTest, DeletingTheGameflowSessionReleasesAndPublishes) {
    EnterPhase("ChampSelect", "RANKED_TEAM_3x3");
    Push("m0", {Param("LEAGUE_RESET")});
    plugin.DeleteResource(kGameflowSession);
    EXPECT_EQ(PublishedLists(), (Lines{"Update:", "Update: 0 " + kReset}));
}

TEST_F(NotificationGatingTest, AcknowledgingAServerNotificationAcknowledgesItsMessageOnTheServer) {
    Push("m0", {Param("LEAGUE_RESET")});
    plugin.host().ClearRecords();
    const host::EndpointAnswer answer = Acknowledge("0");
    EXPECT_FALSE(answer.failed) << answer.error;
    EXPECT_EQ(answer.status, 0u);
    EXPECT_EQ(answer.json, "");
    EXPECT_EQ(plugin.ServerCalls(), (Lines{kAck + R"(m0"}])"}));
    EXPECT_EQ(LogLinesAt(plugin.records(), 3), (Lines{"ALWAYS| DBG| Acknowledged leagues notification 'm0'"}));
    EXPECT_EQ(Listed(), (Lines{"0 " + kReset + " acknowledged"}));
    EXPECT_EQ(PublishedLists(), Lines{});
    // Nothing keeps the player from acknowledging it again.
    EXPECT_FALSE(Acknowledge("0").failed);
    EXPECT_EQ(plugin.ServerCalls().size(), 2u);
}

TEST_F(NotificationGatingTest, AFailedServerAcknowledgementRefusesAndLeavesTheNotification) {
    Push("m7", {Param("LEAGUE_RESET")});
    plugin.FailServer("clientFacadeService", "callPersistenceMessaging", "no such message");
    plugin.host().ClearRecords();
    const host::EndpointAnswer answer = Acknowledge("0");
    EXPECT_EQ(answer.status, 403u);
    EXPECT_EQ(answer.error, Refusal("0"));
    EXPECT_EQ(plugin.WarningAndErrorLines(),
              (Lines{" ERROR| DBG| Failed to acknowledge leagues notification 'm7': 500 - Error response for POST "
                     "/tav-login/v1/session/invoke: no such message"}));
    EXPECT_EQ(Listed(), (Lines{"0 " + kReset}));
}

TEST_F(NotificationGatingTest, UnknownAndMalformedIdsAreRefused) {
    Push("m0", {Param("LEAGUE_RESET")});
    const host::EndpointAnswer unknown = Acknowledge("18446744073709551615");
    EXPECT_EQ(unknown.status, 403u);
    EXPECT_EQ(unknown.error, Refusal("18446744073709551615"));
    // Binding failures carry no status of their own; the host answers them with 400.
    const std::pair<const char*, const char*> malformed[] = {
        {"abc", "Value abc for 'id' of type uint64 is in an incorrect format"},
        {"-1", "Value -1 for 'id' of type uint64 is out of range"},
        {"18446744073709551616", "Value 18446744073709551616 for 'id' of type uint64 is out of range"},
    };
    for (const auto& [id, error] : malformed) {
        SCOPED_TRACE(id);
        const host::EndpointAnswer answer = Acknowledge(id);
        EXPECT_TRUE(answer.failed);
        EXPECT_EQ(answer.status, 0u);
        EXPECT_EQ(answer.error, error);
    }
    EXPECT_EQ(plugin.ServerCalls(), Lines{});
}

TEST_F(NotificationGatingTest, AcknowledgingADecayDemotionAcknowledgesTheDemotionsMessage) {
    Push("m3",
         {Param("LEAGUE_DEMOTED", R"({"tier":"GOLD","inactivityStatus":"INACTIVE","displayDecayWarning":true})")});
    plugin.host().ClearRecords();
    EXPECT_FALSE(Acknowledge("1").failed);
    EXPECT_EQ(plugin.ServerCalls(), (Lines{kAck + R"(m3"}])"}));
    EXPECT_EQ(Listed(), (Lines{
                            "0 LEAGUES_MESSAGE_PROMOHELPER_LEAGUE_DEMOTED LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE 0 ALERT",
                            "1 LEAGUES_SYSTEM_DECAY_DEMOTION LEAGUES_SYSTEM_DECAY_TITLE 1200 ALERT acknowledged",
                        }));
}

}  // namespace
}  // namespace tav::test
