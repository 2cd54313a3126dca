// The player's session kept from the watched resources, driven through the
// module's handlers as the subscriptions call them, and the meaning of a
// gameflow change.
#include "module/watched_resources.h"

#include <gtest/gtest.h>

#include <cstdint>
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

Api::LoginSession Session(LoginSessionStates state, std::uint64_t summonerId, std::uint64_t accountId) {
    return Api::LoginSession{state, summonerId, accountId};
}

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

TEST_F(WatchedStateTest, StartsWithNobodyLoggedInAndEverySwitchOff) {
    EXPECT_FALSE(state().loggedIn);
    EXPECT_EQ(state().summonerId, 0u);
    EXPECT_EQ(state().accountId, 0u);
    EXPECT_FALSE(state().seasonRewardConfigReceived);
    EXPECT_FALSE(state().leagueServiceEnabled);
    EXPECT_FALSE(state().jwtEnabled);
    EXPECT_TRUE(module().Signed().Cached().summonerLeagues.empty());
    EXPECT_EQ(state().gameflowPhase, Api::GameflowPhase::None);
    EXPECT_FALSE(module().Signed().RevalidationArmed());
}

TEST_F(WatchedStateTest, OnlyACompleteSuccessfulSessionLogsIn) {
    struct Row {
        Api::LoginSession session;
        bool loggedIn;
    };
    const Row rows[] = {
        {Session(LoginSessionStates::SUCCEEDED, 12, 34), true},
        {Session(LoginSessionStates::SUCCEEDED, 12, 0), false},
        {Session(LoginSessionStates::SUCCEEDED, 0, 34), false},
        {Session(LoginSessionStates::IN_PROGRESS, 12, 34), false},
        {Session(LoginSessionStates::LOGGING_OUT, 12, 34), false},
        {Session(LoginSessionStates::ERROR, 12, 34), false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(static_cast<int>(row.session.state) * 10000 + row.session.summonerId * 100 +
                     row.session.accountId);
        test::LoadedModule fresh;
        fresh.Module().OnLoginSession(kUpdate, row.session);
        const PlayerSession& after = fresh.Module().Session();
        EXPECT_EQ(after.loggedIn, row.loggedIn);
        EXPECT_EQ(after.summonerId, row.loggedIn ? 12u : 0u);
        EXPECT_EQ(after.accountId, row.loggedIn ? 34u : 0u);
    }
}

TEST_F(WatchedStateTest, OnlyTheFirstSeasonRewardConfigCountsAndAFirstDeleteLeavesTheFlagOff) {
    struct Row {
        const char* name;
        PluginResourceEventType firstEvent;
        bool firstFlag;
        bool warningEnabled;
    };
    const Row rows[] = {
        {"first on", kUpdate, true, true},
        {"first off", kCreate, false, false},
        {"first deleted, as a default record", kDelete, false, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        test::LoadedModule fresh;
        fresh.Module().OnSeasonRewardConfig(row.firstEvent, Api::SeasonRewardConfig{row.firstFlag});
        fresh.Module().OnSeasonRewardConfig(kUpdate, Api::SeasonRewardConfig{!row.warningEnabled});
        EXPECT_TRUE(fresh.Module().Session().seasonRewardConfigReceived);
        EXPECT_EQ(fresh.Module().Notifications().QualificationWarningEnabled(), row.warningEnabled);
    }
}

TEST_F(WatchedStateTest, TheSwitchesFollowTheirValuesAndADeleteTurnsThemOff) {
    using Handler = void (LeaguesModule::*)(PluginResourceEventType, const wex::BindingProperty&);
    struct Switch {
        const char* name;
        Handler handler;
        bool PlayerSession::*member;
    };
    const Switch switches[] = {
        {"leagueServiceEnabled", &LeaguesModule::OnLeagueServiceEnabled, &PlayerSession::leagueServiceEnabled},
        {"JWTEnabled", &LeaguesModule::OnJwtEnabled, &PlayerSession::jwtEnabled},
    };
    for (const Switch& item : switches) {
        SCOPED_TRACE(item.name);
        (module().*item.handler)(kCreate, Bool(true));
        EXPECT_TRUE(state().*item.member);
        (module().*item.handler)(kUpdate, Bool(false));
        EXPECT_FALSE(state().*item.member);
        (module().*item.handler)(kUpdate, Bool(true));
        (module().*item.handler)(kDelete, Bool(true));
        EXPECT_FALSE(state().*item.member);
    }
}

using Api::GameflowPhase;
using wex::PluginResourceEventType;

Api::GameflowSession Session(GameflowPhase phase, std::optional<std::string> queueType) {
    Api::GameflowSession session;
    session.phase = phase;
    if (queueType) {
        session.gameData.queue.type.SetString(*queueType);
    }
    return session;
}

class GameflowChangeTest : public ::testing::Test {
  protected:
    GameflowChange Read(GameflowPhase previous, PluginResourceEventType eventType,
                        const Api::GameflowSession& session) const {
        return ReadGameflowChange(previous, eventType, session, loaded.Registry());
    }

    test::LoadedModule loaded;
};

TEST_F(GameflowChangeTest, QueueTypesAreReadAsTheServerQueues) {
    struct Row {
        std::optional<std::string> type;
        std::optional<LCDS::QueueType> queue;
    };
    const Row rows[] = {
        {"RANKED_SOLO_5x5", LCDS::QueueType::RANKED_SOLO_5x5},
        {"RANKED_FLEX_SR", LCDS::QueueType::RANKED_FLEX_SR},
        {"RANKED_FLEX_TT", LCDS::QueueType::RANKED_FLEX_TT},
        {"ranked_flex_sr", std::nullopt},
        {"NORMAL_5x5", std::nullopt},
        {"", std::nullopt},
        {std::nullopt, std::nullopt},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.type.value_or("(missing)"));
        const GameflowChange change =
            Read(GameflowPhase::Lobby, PluginResourceEventType::Create, Session(GameflowPhase::Lobby, row.type));
        EXPECT_EQ(change.phase, GameflowPhase::Lobby);
        EXPECT_EQ(change.queue, row.queue);
        EXPECT_TRUE(change.notificationsAllowed);
    }
}

TEST_F(GameflowChangeTest, EnteringChampSelectInARankedQueueHandsOffTheSignedStanding) {
    struct Row {
        GameflowPhase previous;
        GameflowPhase phase;
        std::optional<std::string> type;
        bool handsOff;
    };
    const Row rows[] = {
        {GameflowPhase::Lobby, GameflowPhase::ChampSelect, "RANKED_FLEX_SR", true},
        {GameflowPhase::ReadyCheck, GameflowPhase::ChampSelect, "RANKED_SOLO_5x5", true},
        {GameflowPhase::ChampSelect, GameflowPhase::ChampSelect, "RANKED_FLEX_SR", false},
        {GameflowPhase::Lobby, GameflowPhase::ReadyCheck, "RANKED_FLEX_SR", false},
        {GameflowPhase::ChampSelect, GameflowPhase::GameStart, "RANKED_FLEX_SR", false},
        {GameflowPhase::Lobby, GameflowPhase::ChampSelect, "ARAM_UNRANKED_5x5", false},
        {GameflowPhase::Lobby, GameflowPhase::ChampSelect, std::nullopt, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(static_cast<int>(row.previous) * 100 + static_cast<int>(row.phase));
        const GameflowChange change = Read(row.previous, PluginResourceEventType::Update, Session(row.phase, row.type));
        EXPECT_EQ(change.handsOffSignedLeagues, row.handsOff);
        EXPECT_FALSE(change.notificationsAllowed);
    }
}

TEST_F(GameflowChangeTest, ADeletedSessionEndsTheGameWhateverItCarried) {
    const GameflowChange change = Read(GameflowPhase::ChampSelect, PluginResourceEventType::Delete,
                                       Session(GameflowPhase::ChampSelect, "RANKED_SOLO_5x5"));
    EXPECT_EQ(change.phase, GameflowPhase::None);
    EXPECT_EQ(change.queue, std::nullopt);
    EXPECT_TRUE(change.notificationsAllowed);
    EXPECT_FALSE(change.handsOffSignedLeagues);
}

}  // namespace

}  // namespace Orvel::Client::Leagues
