// The player's session kept from the watched resources, driven through the
// module's handlers as the subscriptions call them, and the meaning of a
// gameflow change.
#include "module/watched_resources.h"

#include <gtest/gtest.h>

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

}  // namespace

}  // namespace Orvel::Client::Leagues
