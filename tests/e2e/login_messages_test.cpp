// The login data packet's league messages and the warnings that the
// notifications refresh builds from the player's standings, through the
// built library on the simulated platform.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "league_plugin_fixture.h"

namespace tav::test {
namespace {

const std::string kImminent = " LEAGUES_SYSTEM_DECAY_IMMINENT LEAGUES_SYSTEM_DECAY_IMMINENT_TITLE 1600 ALERT";

class LoginMessagesTest : public LeaguePluginTest {
  protected:
    void SendLoginPacket(const std::vector<std::string>& messages) {
        plugin.SetResource(kLoginDataPacket, R"({"simpleMessages":[)" + JoinedJson(messages) + "]}");
    }
    void SendSeasonReward() { plugin.SetResource(kSeasonReward, R"({"QualificationWarningEnabled":true})"); }
};

// The player's entry in a league whose decay is near, with more members.
std::string GraceEntry(const std::string& more = "") {
    return R"({"playerOrTeamId":"42","queueType":"RANKED_SOLO_5x5","tier":"GOLD","displayDecayWarning":true,)"
           R"("inactivityStatus":"GRACE")" +
           more + "}";
}

TEST_F(LoginMessagesTest, TheLoginPacketFilesLeagueMessagesWithoutCopiesAndAcknowledgesTwoKindsAtOnceOrLogsWhy) {
    const std::string decayed = R"({"tier":"GOLD","inactivityStatus":"INACTIVE","displayDecayWarning":true})";
    SendLoginPacket({MessageJson("m1", {Param("LEAGUE_POINTS_UPDATE")}, "leagues", 77),
                     MessageJson("m2", {Param("NOT_YET_SEEDED")}),
                     MessageJson("m3", {Param("LEAGUE_DEMOTED", decayed)}),
                     MessageJson("m4", {Param("LEAGUE_POINTS_UPDATE")}, "mail"),
                     MessageJson("m5", {Param("MINISERIES_CANCEL", R"({"tier":"GOLD"})")})});
    const std::string ack =
        R"(clientFacadeService.callPersistenceMessaging [{"__class":"com.orvelsoft.platform.messaging.persistence.)"
        R"(SimpleDialogMessageResponse","accountId":)";
    EXPECT_EQ(plugin.ServerCalls(),
              (Lines{ack + R"(77,"command":"ack","msgId":"m1"}])", ack + R"(4242,"command":"ack","msgId":"m2"}])"}));
    EXPECT_EQ(LogLinesAt(plugin.records(), 3), (Lines{"ALWAYS| DBG| Acknowledged leagues notification 'm1'",
                                                      "ALWAYS| DBG| Acknowledged leagues notification 'm2'"}));
    // Without the season-reward configuration the refresh does nothing, so nothing is published.
    EXPECT_EQ(PublishedLists(), Lines{});
    const Lines filed = {
        "0 LEAGUES_MESSAGE_LEAGUE_POINTS_UPDATE LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE 0 ALERT",
        "1 LEAGUES_MESSAGE_NOT_YET_SEEDED LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE 0 ALERT",
        "2 LEAGUES_MESSAGE_PROMOHELPER_LEAGUE_DEMOTED LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE 0 ALERT",
        "3 LEAGUES_SYSTEM_SERIES_ENDED LEAGUES_SYSTEM_SERIES_ENDED_TITLE_NONE 0 ALERT",
    };
    EXPECT_EQ(Listed(), filed);

    plugin.host().ClearRecords();
    SendSeasonReward();
    EXPECT_EQ(plugin.ServerCalls(), (Lines{"leagues.getMyLeaguePositions []"}));
    ASSERT_EQ(PublishedLists().size(), 1u);
    EXPECT_EQ(Listed(), filed);

    // A failed acknowledgement is logged and its message kept.
    plugin.FailServer("clientFacadeService", "callPersistenceMessaging", "gone");
    plugin.host().ClearRecords();
    SendLoginPacket({MessageJson("m6", {Param("NOT_YET_SEEDED")})});
    EXPECT_EQ(plugin.WarningAndErrorLines(),
              (Lines{" ERROR| DBG| Failed to acknowledge leagues notification 'm6': 500 - Error response for POST "
                     "/tav-login/v1/session/invoke: gone"}));
    Lines kept = filed;
    kept.push_back("4 LEAGUES_MESSAGE_NOT_YET_SEEDED LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE 0 ALERT");
    EXPECT_EQ(Listed(), kept);
}

TEST_F(LoginMessagesTest, WithSignedStandingsOnTheRefreshReadsThemAndNeedsTheLeagueService) {
    plugin.SetResource(kJwtEnabled, "true");
    plugin.ScriptServer("leagues", "getMySignedLeaguePositions", "",
                        SummonerLeagues({GraceEntry(R"(,"jwt":"a.b.c")")}));
    SendSeasonReward();
    EXPECT_EQ(plugin.ServerCalls(), (Lines{"leagues.getMySignedLeaguePositions []"}));
    EXPECT_EQ(Listed(), (Lines{"0" + kImminent}));

    plugin.SetLeagueService(false);
    plugin.host().ClearRecords();
    SendLoginPacket({});
    EXPECT_EQ(plugin.ServerCalls(), Lines{});
    EXPECT_EQ(plugin.WarningAndErrorLines(),
              (Lines{"  WARN| DBG| LoadSignedSummonerLeaguesData called while League service is not available."}));
    EXPECT_EQ(ResourceEvents(plugin.records(), kSignedLeaguesUri), (Lines{"Delete"}));
    EXPECT_EQ(PublishedLists(), (Lines{"Update: 0" + kImminent}));
}

}  // namespace
}  // namespace tav::test
