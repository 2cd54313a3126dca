// The player's session kept from the watched resources, driven through the
// module's handlers as the subscriptions call them, and the meaning of a
// gameflow change.
#include "module/watched_resources.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "module/leagues_module.h"
#include "support/loaded_module.h"

namespace Orvel::Client::Leagues {

namespace {

using Api::LoginSessionStates;
using wex::PluginResourceEventType;

constexpr auto kCreate = PluginResourceEventType::Create;
constexpr auto kUpdate = PluginResourceEventType::Update;
constexpr auto kDelete = PluginResourceEventType::Delete;

wex::BindingProperty Bool(bool value) {
    wex::BindingProperty property;
    property.SetBool(value);
    return property;
}

class WatchedStateTest : public ::testing::Test {
  protected:
    LeaguesModule& module() { return loaded.Module(); }
    const PlayerSession& state() { return loaded.Module().Session(); }

    test::LoadedModule loaded;
};

TEST_F(WatchedStateTest, OnlyACompleteSuccessfulSessionLogsIn) {
    // The ids' side of the rule is followed end to end through the login resource.
    const std::pair<Api::LoginSession, bool> rows[] = {
        {{LoginSessionStates::SUCCEEDED, 12, 34}, true},
        {{LoginSessionStates::SUCCEEDED, 0, 34}, false},
        {{LoginSessionStates::IN_PROGRESS, 12, 34}, false},
    };
    for (const auto& [session, loggedIn] : rows) {
        SCOPED_TRACE(static_cast<int>(session.state) * 10000 + session.summonerId * 100 + session.accountId);
        test::LoadedModule fresh;
        fresh.Module().OnLoginSession(kUpdate, session);
        const PlayerSession& after = fresh.Module().Session();
        EXPECT_EQ(after.loggedIn, loggedIn);
        EXPECT_EQ(after.summonerId, loggedIn ? 12u : 0u);
        EXPECT_EQ(after.accountId, loggedIn ? 34u : 0u);
    }
}

// The first record counts, a deleted one arriving as a default record; later ones change nothing.
TEST_F(WatchedStateTest, OnlyTheFirstSeasonRewardConfigCounts) {
    const std::tuple<PluginResourceEventType, bool, bool> rows[] = {
        {kUpdate, true, true}, {kCreate, false, false}, {kDelete, false, false}};
    for (const auto& [firstEvent, firstFlag, warningEnabled] : rows) {
        SCOPED_TRACE(static_cast<int>(firstEvent));
        test::LoadedModule fresh;
        fresh.Module().OnSeasonRewardConfig(firstEvent, Api::SeasonRewardConfig{firstFlag});
        fresh.Module().OnSeasonRewardConfig(kUpdate, Api::SeasonRewardConfig{!warningEnabled});
        EXPECT_TRUE(fresh.Module().Session().seasonRewardConfigReceived);
        EXPECT_EQ(fresh.Module().Notifications().QualificationWarningEnabled(), warningEnabled);
    }
}

TEST_F(WatchedStateTest, TheSwitchesFollowTheirValuesAndADeleteTurnsThemOff) {
    using Handler = void (LeaguesModule::*)(PluginResourceEventType, const wex::BindingProperty&);
    const std::pair<Handler, bool PlayerSession::*> switches[] = {
        {&LeaguesModule::OnLeagueServiceEnabled, &PlayerSession::leagueServiceEnabled},
        {&LeaguesModule::OnJwtEnabled, &PlayerSession::jwtEnabled},
    };
    for (const auto& [handler, member] : switches) {
        SCOPED_TRACE(member == &PlayerSession::jwtEnabled ? "JWTEnabled" : "leagueServiceEnabled");
        EXPECT_FALSE(state().*member);
        (module().*handler)(kCreate, Bool(true));
        EXPECT_TRUE(state().*member);
        (module().*handler)(kUpdate, Bool(false));
        EXPECT_FALSE(state().*member);
        (module().*handler)(kUpdate, Bool(true));
        (module().*handler)(kDelete, Bool(true));
        EXPECT_FALSE(state().*member);
    }
}

using Api::GameflowPhase;

Api::GameflowSession Session(GameflowPhase phase, std::optional<std::string> queueType) {
    Api::GameflowSession session;
    session.phase = phase;
    if (queueType) {
        session.gameData.queue.type.SetString(*queueType);
    }
    return session;
}

// Queue types are read as the server's ranked queues; entering champion select
// in one hands off the signed standing; a deleted session ends the game
// whatever it carried.
TEST(GameflowChange, FollowsThePhaseAndTheQueue) {
    using Phase = GameflowPhase;
    using Queue = LCDS::QueueType;
    const struct {
        Phase previous;
        PluginResourceEventType event;
        Phase phase;
        std::optional<std::string> type;
        std::optional<Queue> queue;
        bool handsOff;
    } rows[] = {
        {Phase::Lobby, kCreate, Phase::Lobby, "RANKED_FLEX_TT", Queue::RANKED_FLEX_TT, false},
        {Phase::Lobby, kCreate, Phase::Lobby, "ranked_flex_sr", std::nullopt, false},
        {Phase::Lobby, kCreate, Phase::Lobby, "", std::nullopt, false},
        {Phase::Lobby, kCreate, Phase::Lobby, std::nullopt, std::nullopt, false},
        {Phase::Lobby, kUpdate, Phase::ChampSelect, "RANKED_FLEX_SR", Queue::RANKED_FLEX_SR, true},
        {Phase::ReadyCheck, kUpdate, Phase::ChampSelect, "RANKED_SOLO_5x5", Queue::RANKED_SOLO_5x5, true},
        {Phase::ChampSelect, kUpdate, Phase::ChampSelect, "RANKED_FLEX_SR", Queue::RANKED_FLEX_SR, false},
        {Phase::Lobby, kUpdate, Phase::ReadyCheck, "RANKED_FLEX_SR", Queue::RANKED_FLEX_SR, false},
        {Phase::ChampSelect, kUpdate, Phase::GameStart, "RANKED_FLEX_SR", Queue::RANKED_FLEX_SR, false},
        {Phase::Lobby, kUpdate, Phase::ChampSelect, "ARAM_UNRANKED_5x5", std::nullopt, false},
        {Phase::Lobby, kUpdate, Phase::ChampSelect, std::nullopt, std::nullopt, false},
        {Phase::ChampSelect, kDelete, Phase::None, "RANKED_SOLO_5x5", std::nullopt, false},
    };
    const test::LoadedModule loaded;
    for (const auto& row : rows) {
        SCOPED_TRACE(static_cast<int>(row.previous) * 100 + static_cast<int>(row.phase));
        const Phase sent = row.event == kDelete ? row.previous : row.phase;
        const GameflowChange change =
            ReadGameflowChange(row.previous, row.event, Session(sent, row.type), loaded.Registry());
        EXPECT_EQ(change.phase, row.phase);
        EXPECT_EQ(change.queue, row.queue);
        EXPECT_EQ(change.handsOffSignedLeagues, row.handsOff);
        EXPECT_EQ(change.notificationsAllowed, row.phase == Phase::Lobby || row.phase == Phase::None);
    }
}

}  // namespace

}  // namespace Orvel::Client::Leagues
