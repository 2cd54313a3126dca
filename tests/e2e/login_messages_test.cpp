// The login data packet's league messages and the warnings that the
// notifications refresh builds from the player's standings, through the
// built library on the simulated platform.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "notifications_fixture.h"

namespace tav::test {
namespace {

using Lines = std::vector<std::string>;

const std::string kAck =
    R"(clientFacadeService.callPersistenceMessaging [{"__class":"com.orvelsoft.platform.messaging.persistence.)"
    R"(SimpleDialogMessageResponse","accountId":)";

class LoginMessagesTest : public NotificationsTest {
  protected:
    void SendLoginPacket(const std::vector<std::string>& messages) {
        std::string json = R"({"simpleMessages":[)";
        for (std::size_t index = 0; index < messages.size(); ++index) {
            json += (index != 0 ? "," : "") + messages[index];
        }
        plugin.SetResource(kLoginDataPacket, json + "]}");
    }
    void SendSeasonReward() { plugin.SetResource(kSeasonReward, R"({"QualificationWarningEnabled":true})"); }
};

// A league entry of the server: its tier, whether its decay warning shows,
// its inactivity status and the rest of its members.
std::string Entry(const std::string& tier, bool decayWarning, const std::string& inactivity,
                  const std::string& more = "") {
    return R"({"playerOrTeamId":"42","playerOrTeamName":"Ann","queueType":"RANKED_SOLO_5x5","tier":")" + tier +
           R"(","displayDecayWarning":)" + (decayWarning ? "true" : "false") + R"(,"inactivityStatus":")" + inactivity +
           R"(")" + more + "}";
}

std::string Entries(const std::vector<std::string>& entries) {
    std::string json = R"({"summonerLeagues":[)";
    for (std::size_t index = 0; index < entries.size(); ++index) {
        json += (index != 0 ? "," : "") + entries[index];
    }
    return json + "]}";
}

TEST_F(LoginMessagesTest, TheLoginPacketFilesLeagueMessagesAndAcknowledgesTwoKindsAtOnce) {
    const std::string decayed = R"({"tier":"GOLD","inactivityStatus":"INACTIVE","displayDecayWarning":true})";
    SendLoginPacket({MessageJson("m1", {Param("LEAGUE_POINTS_UPDATE")}, "leagues", 77),
                     MessageJson("m2", {Param("NOT_YET_SEEDED")}),
                     MessageJson("m3", {Param("LEAGUE_DEMOTED", decayed)}),
                     MessageJson("m4", {Param("LEAGUE_POINTS_UPDATE")}, "mail")});
    EXPECT_EQ(plugin.ServerCalls(),
              (Lines{kAck + R"(77,"command":"ack","msgId":"m1"}])", kAck + R"(4242,"command":"ack","msgId":"m2"}])"}));
    EXPECT_EQ(LogLinesAt(plugin.records(), 3), (Lines{"ALWAYS| DBG| Acknowledged leagues notification 'm1'",
                                                      "ALWAYS| DBG| Acknowledged leagues notification 'm2'"}));
    // Without the season-reward configuration the refresh does nothing, so nothing is published.
    EXPECT_EQ(PublishedLists(), Lines{});
    const Lines filed = {
        "0 LEAGUES_MESSAGE_LEAGUE_POINTS_UPDATE LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE 0 ALERT",
        "1 LEAGUES_MESSAGE_NOT_YET_SEEDED LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE 0 ALERT",
        "2 LEAGUES_MESSAGE_PROMOHELPER_LEAGUE_DEMOTED LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE 0 ALERT",
    };
    EXPECT_EQ(Listed(), filed);

    plugin.host().ClearRecords();
    SendSeasonReward();
    EXPECT_EQ(plugin.ServerCalls(), (Lines{"leagues.getMyLeaguePositions []"}));
    ASSERT_EQ(PublishedLists().size(), 1u);
    EXPECT_EQ(Listed(), filed);
}

TEST_F(LoginMessagesTest, AFailedLoginAcknowledgementIsLoggedAndTheMessageKept) {
    plugin.FailServer("clientFacadeService", "callPersistenceMessaging", "gone");
    SendLoginPacket({MessageJson("m1", {Param("NOT_YET_SEEDED")})});
    EXPECT_EQ(plugin.WarningAndErrorLines(),
              (Lines{" ERROR| DBG| Failed to acknowledge leagues notification 'm1': 500 - Error response for POST "
                     "/tav-login/v1/session/invoke: gone"}));
    EXPECT_EQ(Listed(), (Lines{"0 LEAGUES_MESSAGE_NOT_YET_SEEDED LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE 0 ALERT"}));
}

TEST_F(LoginMessagesTest, TheRefreshWaitsForTheLoginAndTheFirstSeasonRewardConfiguration) {
    plugin.DeleteResource(StartedLeaguePlugin::kLoginSession);
    SendSeasonReward();
    EXPECT_EQ(plugin.ServerCalls(), Lines{});
    plugin.LogIn(42, 4242);
    EXPECT_EQ(plugin.ServerCalls(), Lines{});
    // A second configuration is ignored, so only the login data packet refreshes now.
    SendSeasonReward();
    EXPECT_EQ(plugin.ServerCalls(), Lines{});
    EXPECT_EQ(PublishedLists(), Lines{});
    SendLoginPacket({});
    EXPECT_EQ(plugin.ServerCalls(), (Lines{"leagues.getMyLeaguePositions []"}));
    EXPECT_EQ(PublishedLists(), (Lines{"Update:"}));
    plugin.DeleteResource(kLoginDataPacket);
    EXPECT_EQ(plugin.ServerCalls().size(), 1u);
}

TEST_F(LoginMessagesTest, TheDecayWarningsComeFromTheFirstMatchingRowOfEachEntry) {
    ScriptPositions(Entries({
        Entry("SILVER", true, "INACTIVE", R"(,"miniSeries":{"progress":"WN"})"),
        Entry("BRONZE", true, "INACTIVE"),
        Entry("GOLD", true, "WARNING", R"(,"miniSeries":{"progress":"WN"})"),
        Entry("GOLD", true, "WARNING"),
        Entry("DIAMOND", true, "GRACE"),
        Entry("GOLD", true, ""),
        Entry("GOLD", false, "INACTIVE"),
    }));
    SendSeasonReward();
    EXPECT_EQ(Listed(), (Lines{
                            "0 LEAGUES_SYSTEM_DECAY LEAGUES_SYSTEM_DECAY_TITLE 1300 ALERT",
                            "1 LEAGUES_SYSTEM_SERIES_INACTIVITY LEAGUES_SYSTEM_SERIES_INACTIVITY_TITLE 1400 ALERT",
                            "2 LEAGUES_SYSTEM_DECAY_SOON LEAGUES_SYSTEM_DECAY_SOON_TITLE 1500 ALERT",
                            "3 LEAGUES_SYSTEM_DECAY_IMMINENT LEAGUES_SYSTEM_DECAY_IMMINENT_TITLE 1600 ALERT",
                        }));
    // Each refresh rebuilds them with new ids; the demotion-shield pass took seven between.
    SendLoginPacket({});
    EXPECT_EQ(Listed().front(), "11 LEAGUES_SYSTEM_DECAY LEAGUES_SYSTEM_DECAY_TITLE 1300 ALERT");
    EXPECT_EQ(Listed().size(), 4u);
}

TEST_F(LoginMessagesTest, AWarningCarriesTheFactsOfItsEntry) {
    ScriptPositions(
        Entries({Entry("GOLD", true, "WARNING",
                       R"(,"queueType":"RANKED_FLEX_TT","timeUntilInactivityStatusChanges":86400000,)"
                       R"("miniSeries":{"progress":"","timeLeftToPlayMillis":3600000},"demotionWarning":1)")}));
    SendSeasonReward();
    EXPECT_EQ(plugin.Get(kNotificationsUri).json,
              R"([{"acknowledgedByPlayer":false,"data":{"demotionWarning":0,"displayDecayWarning":false,"emblems":[],)"
              R"("gameId":0,"inactive":false,"inactivityStatus":"WARNING","lastPlayed":0,"leagueName":"",)"
              R"("leaguePointsDelta":0,"losses":0,"minGamesForSeeding":-1,"miniseriesResults":[],)"
              R"("miniseriesTimeLeftToPlayMillis":3600000,"miniseriesWins":0,"notifyReason":"","playerOrTeamId":"",)"
              R"("playerOrTeamName":"Ann","points":0,"previousPosition":0,"queueType":"FLEXTT","rank":"",)"
              R"("seasonEndApexPosition":0,"seasonEndRank":"","seasonEndTier":"","tier":"",)"
              R"("timeLastDecayMessageShown":0,"timeUntilDecay":0,"timeUntilInactivityStatusChanges":86400000,)"
              R"("totalPlayed":0,"wins":0},"id":0,"priority":1500,"severity":"ALERT",)"
              R"("titleType":"LEAGUES_SYSTEM_DECAY_SOON_TITLE","type":"LEAGUES_SYSTEM_DECAY_SOON"},)"
              R"({"acknowledgedByPlayer":false,"data":{"demotionWarning":0,"displayDecayWarning":false,"emblems":[],)"
              R"("gameId":0,"inactive":false,"inactivityStatus":"","lastPlayed":0,"leagueName":"",)"
              R"("leaguePointsDelta":0,"losses":0,"minGamesForSeeding":-1,"miniseriesResults":[],)"
              R"("miniseriesTimeLeftToPlayMillis":0,"miniseriesWins":0,"notifyReason":"","playerOrTeamId":"42",)"
              R"("playerOrTeamName":"","points":0,"previousPosition":0,"queueType":"FLEXTT","rank":"",)"
              R"("seasonEndApexPosition":0,"seasonEndRank":"","seasonEndTier":"","tier":"",)"
              R"("timeLastDecayMessageShown":0,"timeUntilDecay":0,"timeUntilInactivityStatusChanges":0,)"
              R"("totalPlayed":0,"wins":0},"id":1,"priority":2100,"severity":"WARNING",)"
              R"("titleType":"LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE",)"
              R"("type":"LEAGUES_SYSTEM_DEMOTION_SHIELD_LEVEL_1_WARNING"}])");
}

TEST_F(LoginMessagesTest, AcknowledgingAWarningMarksItWithoutTheServer) {
    ScriptPositions(Entries({Entry("GOLD", true, "GRACE")}));
    SendSeasonReward();
    plugin.host().ClearRecords();
    EXPECT_FALSE(Acknowledge("0").failed);
    EXPECT_EQ(plugin.ServerCalls(), Lines{});
    EXPECT_EQ(Listed(), (Lines{"0 LEAGUES_SYSTEM_DECAY_IMMINENT LEAGUES_SYSTEM_DECAY_IMMINENT_TITLE 1600 ALERT "
                               "acknowledged"}));
}

TEST_F(LoginMessagesTest, ARefreshDuringAGameKeepsTheOldWarningsListedAndAppendsTheNewAtItsEnd) {
    ScriptPositions(Entries({Entry("GOLD", true, "GRACE")}));
    SendSeasonReward();
    EnterPhase("InProgress");
    SendLoginPacket({});
    const std::string imminent = " LEAGUES_SYSTEM_DECAY_IMMINENT LEAGUES_SYSTEM_DECAY_IMMINENT_TITLE 1600 ALERT";
    EXPECT_EQ(Listed(), (Lines{"0" + imminent}));
    EnterPhase("EndOfGame");
    EXPECT_EQ(Listed(), (Lines{"0" + imminent, "2" + imminent}));
}

TEST_F(LoginMessagesTest, AFailedStandingsLoadRebuildsNothingAndStillPublishes) {
    ScriptPositions(Entries({Entry("GOLD", true, "GRACE")}));
    SendSeasonReward();
    plugin.FailServer("leagues", "getMyLeaguePositions", "timed out");
    plugin.host().ClearRecords();
    SendLoginPacket({});
    EXPECT_EQ(plugin.WarningAndErrorLines(), (Lines{" ERROR| DBG| Failed to get my leagues: timed out"}));
    EXPECT_EQ(PublishedLists(),
              (Lines{"Update: 0 LEAGUES_SYSTEM_DECAY_IMMINENT LEAGUES_SYSTEM_DECAY_IMMINENT_TITLE 1600 ALERT"}));
}

TEST_F(LoginMessagesTest, WithSignedStandingsOnTheRefreshReadsThemAndNeedsTheLeagueService) {
    plugin.SetResource(kJwtEnabled, "true");
    plugin.ScriptServer("leagues", "getMySignedLeaguePositions", "",
                        Entries({Entry("GOLD", true, "GRACE", R"(,"jwt":"a.b.c")")}));
    SendSeasonReward();
    EXPECT_EQ(plugin.ServerCalls(), (Lines{"leagues.getMySignedLeaguePositions []"}));
    EXPECT_EQ(Listed(), (Lines{"0 LEAGUES_SYSTEM_DECAY_IMMINENT LEAGUES_SYSTEM_DECAY_IMMINENT_TITLE 1600 ALERT"}));

    plugin.SetLeagueService(false);
    plugin.host().ClearRecords();
    SendLoginPacket({});
    EXPECT_EQ(plugin.ServerCalls(), Lines{});
    EXPECT_EQ(plugin.WarningAndErrorLines(),
              (Lines{"  WARN| DBG| LoadSignedSummonerLeaguesData called while League service is not available."}));
    EXPECT_EQ(ResourceEvents(plugin.records(), kSignedLeaguesUri), (Lines{"Delete"}));
    EXPECT_EQ(PublishedLists(),
              (Lines{"Update: 0 LEAGUES_SYSTEM_DECAY_IMMINENT LEAGUES_SYSTEM_DECAY_IMMINENT_TITLE 1600 ALERT"}));
}

}  // namespace
}  // namespace tav::test
