// The signed standings of the built library: the cache and its resource
// events, the route, the revalidation timer on the host's virtual clock, and
// the hand-off to the matchmaking service in champion select.
#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "notifications_fixture.h"
#include "support/token_text.h"

namespace tav::test {
namespace {

using Lines = std::vector<std::string>;
using Orvel::Client::Leagues::test::MakeToken;

constexpr const char* kTimerLabel = "wex-be-tav-leagues:revalidate-jwt";
constexpr const char* kNotAvailable = "LoadSignedSummonerLeaguesData called while League service is not available.";

// Seconds since 1970 of the system clock, as tokens give their expiry.
long long SecondsFromNow(long long seconds) {
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::seconds>(now).count() + seconds;
}

std::string TokenExpiringIn(long long seconds) {
    return MakeToken(R"({"sub":"42","exp":)" + std::to_string(SecondsFromNow(seconds)) + "}");
}

// A signed entry of a server queue with its token.
std::string SignedEntry(const std::string& queue, const std::string& jwt) {
    return R"({"playerOrTeamId":"42","queueType":")" + queue + R"(","tier":"GOLD","jwt":")" + jwt + R"("})";
}

std::string Signed(const std::vector<std::string>& entries) {
    std::string json = R"({"summonerLeagues":[)";
    for (std::size_t index = 0; index < entries.size(); ++index) {
        json += (index != 0 ? "," : "") + entries[index];
    }
    return json + "]}";
}

class SignedStandingsTest : public NotificationsTest {
  protected:
    void SetUp() override {
        NotificationsTest::SetUp();
        plugin.SetResource(kJwtEnabled, "true");
        plugin.host().ClearRecords();
    }

    // The answers of "getMySignedLeaguePositions", one per call, the last
    // one repeated.
    void ServeSignedLeagues(std::vector<std::string> answers) {
        auto calls = std::make_shared<std::size_t>(0);
        plugin.host().SetServerResponder([answers = std::move(answers), calls](
                                             std::string_view, std::string_view method, const wex::BindingProperty&) {
            if (method != "getMySignedLeaguePositions") {
                return host::ServerAnswer::Failure("unexpected call", 500, StartedLeaguePlugin::kServerTurns);
            }
            const std::string& answer = answers[std::min(*calls, answers.size() - 1)];
            ++*calls;
            return host::ServerAnswer::Json("", answer, StartedLeaguePlugin::kServerTurns);
        });
    }

    host::EndpointAnswer GetSigned() { return plugin.Get(kSignedLeaguesUri); }

    Lines TimerDelays() const {
        Lines delays;
        for (const host::RecordedSchedule& schedule : plugin.records().schedules) {
            if (schedule.label == kTimerLabel) {
                delays.push_back(std::to_string(static_cast<long long>(schedule.delaySeconds + 0.5)));
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
    ServeSignedLeagues({Signed({SignedEntry("RANKED_SOLO_5x5", token)})});
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

TEST_F(SignedStandingsTest, TheTimerIsSetAMinuteBeforeTheEarliestExpiry) {
    ServeSignedLeagues({Signed({SignedEntry("RANKED_SOLO_5x5", TokenExpiringIn(4600)),
                                SignedEntry("RANKED_FLEX_SR", TokenExpiringIn(1000))})});
    GetSigned();
    const Lines delays = TimerDelays();
    ASSERT_EQ(delays.size(), 1u);
    // The plug-in reads the system clock itself, a moment after the test did.
    EXPECT_NEAR(std::stod(delays[0]), 940.0, 2.0);
}

TEST_F(SignedStandingsTest, ANearExpiryFiresAtOnceAndTheTimerLoadsAgain) {
    ServeSignedLeagues({Signed({SignedEntry("RANKED_SOLO_5x5", TokenExpiringIn(30))}),
                        Signed({SignedEntry("RANKED_SOLO_5x5", TokenExpiringIn(7260))})});
    GetSigned();
    plugin.host().RunUntilIdle();
    EXPECT_EQ(plugin.ServerCalls(),
              (Lines{"leagues.getMySignedLeaguePositions []", "leagues.getMySignedLeaguePositions []"}));
    const Lines delays = TimerDelays();
    ASSERT_EQ(delays.size(), 2u);
    EXPECT_EQ(delays[0], "0");
    EXPECT_NEAR(std::stod(delays[1]), 7200.0, 2.0);
    EXPECT_EQ(ResourceEvents(plugin.records(), kSignedLeaguesUri).size(), 2u);
}

TEST_F(SignedStandingsTest, ALoadWhileTheTimerIsPendingDoesNotMoveIt) {
    ServeSignedLeagues({Signed({SignedEntry("RANKED_SOLO_5x5", TokenExpiringIn(3660))}),
                        Signed({SignedEntry("RANKED_SOLO_5x5", TokenExpiringIn(660))})});
    GetSigned();
    Push("m1", {Param("LEAGUE_PROMOTED")});
    ASSERT_EQ(TimerDelays().size(), 1u);
    EXPECT_NEAR(std::stod(TimerDelays()[0]), 3600.0, 2.0);
    Advance(3500);
    EXPECT_EQ(plugin.ServerCalls().size(), 4u);
    Advance(200);
    // The timer's load arms the next timer, from the newer tokens.
    EXPECT_EQ(plugin.ServerCalls().back(), "leagues.getMySignedLeaguePositions []");
    EXPECT_EQ(plugin.ServerCalls().size(), 5u);
    ASSERT_EQ(TimerDelays().size(), 2u);
    EXPECT_NEAR(std::stod(TimerDelays()[1]), 600.0, 2.0);
}

TEST_F(SignedStandingsTest, TokensWithoutAnExpiryAreLoggedAndArmNoTimer) {
    const std::vector<std::string> tokens = {
        "",
        "no-dots",
        MakeToken(R"({"alg":"none"})") + "..",
        "!!!.@@@.###",
        MakeToken("not json"),
        MakeToken("[1]"),
        MakeToken(R"({"exp":1,"exp":2})"),
        MakeToken(R"({"sub":"\q"})"),
        MakeToken(R"({"nbf":1700000000})"),
        MakeToken(std::string(100000, '[')),
    };
    std::vector<std::string> entries;
    for (const std::string& token : tokens) {
        entries.push_back(SignedEntry("RANKED_SOLO_5x5", token));
    }
    ServeSignedLeagues({Signed(entries)});
    EXPECT_FALSE(GetSigned().failed);
    EXPECT_EQ(TimerDelays(), Lines{});
    EXPECT_EQ(
        plugin.WarningAndErrorLines(),
        Lines(tokens.size(), " ERROR| DBG| UpdateSignedSummonerLeaguesData: JWT did not contain an expiration date."));
}

TEST_F(SignedStandingsTest, WithASwitchOffTheRouteFailsOnAnEmptyCacheAndAnswersAFilledOne) {
    plugin.SetResource(kJwtEnabled, "false");
    const host::EndpointAnswer off = GetSigned();
    EXPECT_EQ(off.status, 500u);
    EXPECT_EQ(off.error, kNotAvailable);
    EXPECT_EQ(plugin.WarningAndErrorLines(), (Lines{std::string("  WARN| DBG| ") + kNotAvailable}));
    EXPECT_EQ(ResourceEvents(plugin.records(), kSignedLeaguesUri), Lines{});

    plugin.SetResource(kJwtEnabled, "true");
    ServeSignedLeagues({Signed({SignedEntry("RANKED_SOLO_5x5", TokenExpiringIn(3600))})});
    const std::string cache = GetSigned().json;
    plugin.SetLeagueService(false);
    EXPECT_EQ(GetSigned().json, cache);
}

TEST_F(SignedStandingsTest, ALeagueUpdateWithSignedStandingsOffEmptiesTheCacheOnce) {
    ServeSignedLeagues({Signed({SignedEntry("RANKED_SOLO_5x5", TokenExpiringIn(3600))})});
    GetSigned();
    plugin.SetResource(kJwtEnabled, "false");
    plugin.host().ClearRecords();
    Push("m1", {Param("LEAGUE_PROMOTED")});
    Push("m2", {Param("LEAGUE_PROMOTED")});
    EXPECT_EQ(ResourceEvents(plugin.records(), kSignedLeaguesUri), (Lines{"Delete"}));
    EXPECT_EQ(plugin.WarningAndErrorLines(),
              (Lines{std::string("  WARN| DBG| ") + kNotAvailable, std::string("  WARN| DBG| ") + kNotAvailable}));
    EXPECT_EQ(GetSigned().error, kNotAvailable);
}

TEST_F(SignedStandingsTest, AFailedLoadKeepsTheCacheAndFailsTheRoute) {
    plugin.FailServer("leagues", "getMySignedLeaguePositions", "timed out");
    const host::EndpointAnswer answer = GetSigned();
    EXPECT_EQ(answer.status, 500u);
    EXPECT_EQ(answer.error, "timed out");
    EXPECT_EQ(plugin.WarningAndErrorLines(), (Lines{" ERROR| DBG| Failed to get my leagues: timed out"}));
    EXPECT_EQ(plugin.records().events.size(), 0u);
    EXPECT_EQ(TimerDelays(), Lines{});
}

// ---- The hand-off in champion select -----------------------------------------------

class SignedHandOffTest : public SignedStandingsTest {
  protected:
    void SetUp() override {
        SignedStandingsTest::SetUp();
        ServeSignedLeagues({Signed({SignedEntry("RANKED_SOLO_5x5", solo), SignedEntry("RANKED_FLEX_TT", flexTT)})});
        GetSigned();
        plugin.ScriptServer("teambuilder-draft", "setJwtAsGameCustomizationV1", "", "null");
        EnterPhase("Lobby");
        plugin.host().ClearRecords();
    }

    std::string HandOff(const std::string& jwt) const {
        return R"(teambuilder-draft.setJwtAsGameCustomizationV1 [{"prefix":"leagues","signedJWT":")" + jwt + R"("}])";
    }

    const std::string solo = TokenExpiringIn(3600);
    const std::string flexTT = TokenExpiringIn(7200);
};

TEST_F(SignedHandOffTest, EnteringChampionSelectHandsOverTheTokenOfTheQueueOnce) {
    EnterPhase("ChampSelect", "RANKED_FLEX_TT");
    EnterPhase("ChampSelect", "RANKED_FLEX_TT");
    EXPECT_EQ(plugin.ServerCalls(), (Lines{HandOff(flexTT)}));
    EXPECT_EQ(LogLinesAt(plugin.records(), 0),
              (Lines{"  OKAY| GEN| Successfully passed signed leagues game customization to TB"}));
    EXPECT_EQ(plugin.WarningAndErrorLines(), Lines{});
}

TEST_F(SignedHandOffTest, AQueueWithoutACachedEntryOrOutsideTheServerQueuesHandsOverNothing) {
    for (const char* queue : {"RANKED_FLEX_SR", "NORMAL_5x5", ""}) {
        SCOPED_TRACE(queue);
        EnterPhase("ChampSelect", queue);
        EnterPhase("Lobby", queue);
    }
    EXPECT_EQ(plugin.ServerCalls(), Lines{});
    // Notifications were held back and released all the same.
    EXPECT_EQ(PublishedLists().size(), 3u);
}

TEST_F(SignedHandOffTest, AFailedHandOffIsLoggedAndTheGameGoesOn) {
    plugin.FailServer("teambuilder-draft", "setJwtAsGameCustomizationV1", "busy");
    EnterPhase("ChampSelect", "RANKED_SOLO_5x5");
    EXPECT_EQ(plugin.ServerCalls(), (Lines{HandOff(solo)}));
    EXPECT_EQ(plugin.WarningAndErrorLines(),
              (Lines{" ERROR| DBG| Failed to pass signed leagues game customization to TB"}));
}

}  // namespace
}  // namespace tav::test
