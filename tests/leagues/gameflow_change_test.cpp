#include "leagues/gameflow_change.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "loaded_module.h"

namespace Orvel::Client::Leagues {
namespace {

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
