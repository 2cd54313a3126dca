// The signed standings of the built library: the cache and its resource
// events, the route, the revalidation timer on the host's virtual clock, and
// the hand-off to the matchmaking service in champion select.
#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

#include "league_plugin_fixture.h"
#include "support/token_text.h"

namespace tav::test {
namespace {

const std::string kNotAvailable = "LoadSignedSummonerLeaguesData called while League service is not available.";

// A token of the player expiring so many seconds after the system clock's now.
std::string TokenExpiringIn(long long seconds) {
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return Orvel::Client::Leagues::test::MakeToken(
        R"({"sub":"42","exp":)" +
        std::to_string(std::chrono::duration_cast<std::chrono::seconds>(now).count() + seconds) + "}");
}

// A signed entry of a server queue with its token.
std::string SignedEntry(const std::string& queue, const std::string& jwt) {
    return R"({"playerOrTeamId":"42","queueType":")" + queue + R"(","tier":"GOLD","jwt":")" + jwt + R"("})";
}

class SignedStandingsTest : public LeaguePluginTest {
  protected:
    void SetUp() override {
        LeaguePluginTest::SetUp();
        plugin.SetResource(kJwtEnabled, "true");
        plugin.host().ClearRecords();
    }

    // The player's one signed entry, of the solo queue, as the server answers it.
    void ServeSigned(const std::string& jwt) {
        plugin.ScriptServer("leagues", "getMySignedLeaguePositions", "",
                            SummonerLeagues({SignedEntry("RANKED_SOLO_5x5", jwt)}));
    }

    host::EndpointAnswer GetSigned() { return plugin.Get(kSignedLeaguesUri); }

    // The delays of the revalidation timers set, in whole seconds.
    std::vector<long long> TimerDelays() const {
        std::vector<long long> delays;
        for (const host::RecordedSchedule& schedule : plugin.records().schedules) {
            if (schedule.label == "wex-be-tav-leagues:revalidate-jwt") {
                delays.push_back(static_cast<long long>(schedule.delaySeconds + 0.5));
            }
        }
        return delays;
    }

    void Advance(double seconds) {
        plugin.host().AdvanceClock(seconds);
        plugin.host().RunUntilIdle();
    }
};

TEST_F(SignedStandingsTest, TheRouteLoadsAnEmptyCacheOnceAndAnnouncesItsCreationThenUpdates) {
    const std::string token = TokenExpiringIn(3600);
    ServeSigned(token);
    const host::EndpointAnswer first = GetSigned();
    const std::string cache =
        R"({"summonerLeagues":[{"apexDaysUntilDecay":0,"demotionWarning":0,"displayDecayWarning":false,)"
        R"("freshBlood":false,"hotStreak":false,"inactive":false,"inactivityStatus":"","jwt":")" +
        token +
        R"(","leaguePoints":0,"losses":0,"miniSeries":{"losses":0,"progress":"","target":0,)"
        R"("timeLeftToPlayMillis":0,"wins":0},"playerOrTeamId":"42","playerOrTeamName":"",)"
        R"("previousDayLeaguePosition":0,"queueType":"RANKED_SOLO_5x5","rank":"I","tier":"GOLD",)"
        R"("timeUntilInactivityStatusChanges":0,"veteran":false,"wins":0}]})";
    EXPECT_FALSE(first.failed) << first.error;
    EXPECT_EQ(first.json, cache);
    EXPECT_EQ(GetSigned().json, cache);
    EXPECT_EQ(plugin.ServerCalls(), (Lines{"leagues.getMySignedLeaguePositions []"}));
    EXPECT_EQ(ResourceEvents(plugin.records(), kSignedLeaguesUri), (Lines{"Create " + cache}));

    Push("m1", {Param("LEAGUE_PROMOTED")});
    EXPECT_EQ(ResourceEvents(plugin.records(), kSignedLeaguesUri), (Lines{"Create " + cache, "Update " + cache}));
    EXPECT_EQ(plugin.WarningAndErrorLines(), Lines{});
}

TEST_F(SignedStandingsTest, WithASwitchOffTheRouteFailsOnAnEmptyCacheAndAnswersAFilledOne) {
    plugin.SetResource(kJwtEnabled, "false");
    ExpectFailure(GetSigned(), 500, kNotAvailable);
    EXPECT_EQ(plugin.WarningAndErrorLines(), (Lines{"  WARN| DBG| " + kNotAvailable}));
    EXPECT_EQ(ResourceEvents(plugin.records(), kSignedLeaguesUri), Lines{});

    plugin.SetResource(kJwtEnabled, "true");
    ServeSigned(TokenExpiringIn(3600));
    const std::string cache = GetSigned().json;
    plugin.SetLeagueService(false);
    EXPECT_EQ(GetSigned().json, cache);

    // A league update with signed standings off empties the cache once.
    plugin.SetLeagueService(true);
    plugin.SetResource(kJwtEnabled, "false");
    plugin.host().ClearRecords();
    Push("m1", {Param("LEAGUE_PROMOTED")});
    Push("m2", {Param("LEAGUE_PROMOTED")});
    EXPECT_EQ(ResourceEvents(plugin.records(), kSignedLeaguesUri), (Lines{"Delete"}));
    EXPECT_EQ(plugin.WarningAndErrorLines(), (Lines{"  WARN| DBG| " + kNotAvailable, "  WARN| DBG| " + kNotAvailable}));
    EXPECT_EQ(GetSigned().error, kNotAvailable);
}

TEST_F(SignedStandingsTest, AFailedLoadFailsTheRouteAndTokensWithoutAnExpiryArmNoTimer) {
    plugin.FailServer("leagues", "getMySignedLeaguePositions", "timed out");
    ExpectFailure(GetSigned(), 500, "timed out");
    EXPECT_EQ(plugin.WarningAndErrorLines(), (Lines{" ERROR| DBG| Failed to get my leagues: timed out"}));
    EXPECT_EQ(plugin.records().events.size(), 0u);
    EXPECT_EQ(TimerDelays(), std::vector<long long>{});

    // Tokens without an expiry arm no timer either, each logged.
    plugin.host().ClearRecords();
    const std::string noExpiry = Orvel::Client::Leagues::test::MakeToken(R"({"nbf":1700000000})");
    plugin.ScriptServer("leagues", "getMySignedLeaguePositions", "",
                        SummonerLeagues({SignedEntry("RANKED_SOLO_5x5", ""), SignedEntry("RANKED_FLEX_SR", noExpiry)}));
    EXPECT_FALSE(GetSigned().failed);
    EXPECT_EQ(TimerDelays(), std::vector<long long>{});
    EXPECT_EQ(plugin.WarningAndErrorLines(),
              Lines(2, " ERROR| DBG| UpdateSignedSummonerLeaguesData: JWT did not contain an expiration date."));
}

TEST_F(SignedStandingsTest, ChampionSelectHandsOverTheQueuesTokenAndLogsTheOutcome) {
    const std::string solo = TokenExpiringIn(3600);
    ServeSigned(solo);
    GetSigned();
    plugin.ScriptServer("teambuilder-draft", "setJwtAsGameCustomizationV1", "", "null");
    plugin.host().ClearRecords();
    EnterPhase("ChampSelect", "RANKED_FLEX_SR");  // no cached entry, nothing to hand over
    EnterPhase("Lobby");
    EnterPhase("ChampSelect", "RANKED_SOLO_5x5");
    const std::string handOff =
        R"(teambuilder-draft.setJwtAsGameCustomizationV1 [{"prefix":"leagues","signedJWT":")" + solo + R"("}])";
    EXPECT_EQ(plugin.ServerCalls(), (Lines{handOff}));
    EXPECT_EQ(LogLinesAt(plugin.records(), 0),
              (Lines{"  OKAY| GEN| Successfully passed signed leagues game customization to TB"}));

    // A failed hand-off is logged and the game goes on.
    EnterPhase("Lobby");
    plugin.FailServer("teambuilder-draft", "setJwtAsGameCustomizationV1", "busy");
    plugin.host().ClearRecords();
    EnterPhase("ChampSelect", "RANKED_SOLO_5x5");
    EXPECT_EQ(plugin.ServerCalls(), (Lines{handOff}));
    EXPECT_EQ(plugin.WarningAndErrorLines(),
              (Lines{" ERROR| DBG| Failed to pass signed leagues game customization to TB"}));
}

}  // namespace
}  // namespace tav::test
