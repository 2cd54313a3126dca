// The league state kept from the watched resources, driven through the
// module's handlers as the subscriptions call them.
#include <gtest/gtest.h>

#include <cstdint>

#include "leagues/leagues_module.h"
#include "loaded_module.h"

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
    const LeagueState& state() { return loaded.Module().WatchedState(); }

    test::LoadedModule loaded;
};

TEST_F(WatchedStateTest, StartsWithNobodyLoggedInAndEverySwitchOff) {
    EXPECT_FALSE(state().loggedIn);
    EXPECT_EQ(state().summonerId, 0u);
    EXPECT_EQ(state().accountId, 0u);
    EXPECT_FALSE(state().seasonRewardConfigReceived);
    EXPECT_FALSE(state().leagueServiceEnabled);
    EXPECT_FALSE(state().jwtEnabled);
    EXPECT_TRUE(state().signedLeagues.summonerLeagues.empty());
    EXPECT_EQ(state().gameflowPhase, Api::GameflowPhase::None);
    EXPECT_FALSE(state().revalidationArmed);
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
        const LeagueState& after = fresh.Module().WatchedState();
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
        EXPECT_TRUE(fresh.Module().WatchedState().seasonRewardConfigReceived);
        EXPECT_EQ(fresh.Module().WatchedState().notifications.QualificationWarningEnabled(), row.warningEnabled);
    }
}

TEST_F(WatchedStateTest, TheSwitchesFollowTheirValuesAndADeleteTurnsThemOff) {
    using Handler = void (LeaguesModule::*)(PluginResourceEventType, const wex::BindingProperty&);
    struct Switch {
        const char* name;
        Handler handler;
        bool LeagueState::*member;
    };
    const Switch switches[] = {
        {"leagueServiceEnabled", &LeaguesModule::OnLeagueServiceEnabled, &LeagueState::leagueServiceEnabled},
        {"JWTEnabled", &LeaguesModule::OnJwtEnabled, &LeagueState::jwtEnabled},
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

}  // namespace
}  // namespace Orvel::Client::Leagues
