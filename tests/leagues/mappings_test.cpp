#include "leagues/mappings.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

namespace Orvel::Client::Leagues {
namespace {

using Api::LeagueQueueType;
using Api::LeagueRank;
using Api::LeagueTier;
using Api::Miniseries;

LCDS::QueueType ServerQueue(std::int32_t number) {
    return static_cast<LCDS::QueueType>(number);
}
LCDS::LeagueTier ServerTier(std::int32_t number) {
    return static_cast<LCDS::LeagueTier>(number);
}
LCDS::LeagueRank ServerRank(std::int32_t number) {
    return static_cast<LCDS::LeagueRank>(number);
}

TEST(ServerQueueMapping, NumbersGiveTheApiQueueAndItsNameWithTheFlexQueuesSwapped) {
    struct Row {
        std::int32_t server;
        LeagueQueueType queue;
        const char* name;
    };
    const Row rows[] = {
        {1, LeagueQueueType::SOLO5V5, "SOLO5V5"}, {2, LeagueQueueType::FLEXSR, "FLEXSR"},
        {3, LeagueQueueType::FLEXTT, "FLEXTT"},   {0, LeagueQueueType::NONE, "NONE"},
        {4, LeagueQueueType::NONE, "NONE"},       {-1, LeagueQueueType::NONE, "NONE"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.server);
        EXPECT_EQ(LeagueQueueTypeOf(ServerQueue(row.server)), row.queue);
        EXPECT_EQ(LeagueQueueNameOf(ServerQueue(row.server)), row.name);
    }
    EXPECT_EQ(static_cast<std::int32_t>(LeagueQueueTypeOf(LCDS::QueueType::RANKED_FLEX_SR)), 3);
}

TEST(ServerQueueMapping, ServerNamesAreComparedExactly) {
    const std::pair<const char*, const char*> rows[] = {
        {"RANKED_SOLO_5x5", "SOLO5V5"},
        {"RANKED_FLEX_SR", "FLEXSR"},
        {"RANKED_FLEX_TT", "FLEXTT"},
        {"RANKED_SOLO_5X5", "NONE"},
        {"ranked_flex_sr", "NONE"},
        {"RANKED_FLEX_TT ", "NONE"},
        {"", "NONE"},
        {"INVALID", "NONE"},
    };
    for (const auto& [server, name] : rows) {
        SCOPED_TRACE(server);
        EXPECT_EQ(LeagueQueueNameOf(std::string_view(server)), name);
    }
}

TEST(ServerQueueMapping, QueueServerNameIsInvalidForNoneAndUnknownValues) {
    EXPECT_EQ(QueueServerName(LeagueQueueType::SOLO5V5), "RANKED_SOLO_5x5");
    EXPECT_EQ(QueueServerName(LeagueQueueType::FLEXTT), "RANKED_FLEX_TT");
    EXPECT_EQ(QueueServerName(LeagueQueueType::FLEXSR), "RANKED_FLEX_SR");
    EXPECT_EQ(QueueServerName(LeagueQueueType::NONE), "INVALID");
    EXPECT_EQ(QueueServerName(static_cast<LeagueQueueType>(4)), "INVALID");
}

TEST(ServerQueueMapping, AnApiQueueComesBackThroughItsServerName) {
    const std::pair<LeagueQueueType, const char*> rows[] = {{LeagueQueueType::SOLO5V5, "SOLO5V5"},
                                                            {LeagueQueueType::FLEXTT, "FLEXTT"},
                                                            {LeagueQueueType::FLEXSR, "FLEXSR"}};
    for (const auto& [queue, name] : rows) {
        SCOPED_TRACE(name);
        EXPECT_EQ(LeagueQueueNameOf(QueueServerName(queue)), name);
    }
}

TEST(ServerTierMapping, KeepsTheNumbersOneToSevenAndNothingElse) {
    for (std::int32_t number = 1; number <= 7; ++number) {
        EXPECT_EQ(static_cast<std::int32_t>(LeagueTierOf(ServerTier(number))), number);
    }
    for (std::int32_t number : {0, 8, -1, 100}) {
        SCOPED_TRACE(number);
        EXPECT_EQ(LeagueTierOf(ServerTier(number)), LeagueTier::NONE);
    }
}

TEST(ServerRankMapping, GivesTheDivisionBelowTheApexTiersAndNaAtThem) {
    struct Row {
        std::int32_t rank;
        LeagueTier tier;
        LeagueRank division;
        std::uint64_t number;
    };
    const Row rows[] = {
        {0, LeagueTier::GOLD, LeagueRank::I, 1},        {1, LeagueTier::GOLD, LeagueRank::II, 2},
        {4, LeagueTier::BRONZE, LeagueRank::V, 5},      {3, LeagueTier::DIAMOND, LeagueRank::IV, 4},
        {2, LeagueTier::NONE, LeagueRank::III, 3},      {5, LeagueTier::GOLD, LeagueRank::NA, 0},
        {7, LeagueTier::PLATINUM, LeagueRank::NA, 0},   {-1, LeagueTier::SILVER, LeagueRank::NA, 0},
        {0, LeagueTier::MASTER, LeagueRank::NA, 0},     {4, LeagueTier::CHALLENGER, LeagueRank::NA, 0},
        {9, LeagueTier::CHALLENGER, LeagueRank::NA, 0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::to_string(row.rank) + " in tier " + std::to_string(static_cast<int>(row.tier)));
        EXPECT_EQ(LeagueRankOf(ServerRank(row.rank), row.tier), row.division);
        EXPECT_EQ(DivisionNumberOf(ServerRank(row.rank), row.tier), row.number);
    }
}

TEST(MiniseriesProgress, GivesOneResultPerCharacter) {
    EXPECT_EQ(ParseMiniseriesProgress("WLNN"),
              (std::vector{Miniseries::W, Miniseries::L, Miniseries::N, Miniseries::N}));
    EXPECT_EQ(ParseMiniseriesProgress("X"), std::vector{Miniseries::N});
    EXPECT_EQ(ParseMiniseriesProgress("wl"), (std::vector{Miniseries::N, Miniseries::N}));
    EXPECT_EQ(ParseMiniseriesProgress(std::string_view("W\0L", 3)),
              (std::vector{Miniseries::W, Miniseries::N, Miniseries::L}));
    EXPECT_TRUE(ParseMiniseriesProgress("").empty());
}

TEST(LeagueEmblems, FollowTheFlagsInAFixedOrder) {
    using Api::LeagueEmblem;
    EXPECT_TRUE(MakeLeagueEmblems(false, false, false).empty());
    EXPECT_EQ(MakeLeagueEmblems(false, true, true), (std::vector{LeagueEmblem::VETERAN, LeagueEmblem::FRESHBLOOD}));
    EXPECT_EQ(MakeLeagueEmblems(true, true, true),
              (std::vector{LeagueEmblem::HOTSTREAK, LeagueEmblem::VETERAN, LeagueEmblem::FRESHBLOOD}));
    EXPECT_EQ(MakeLeagueEmblems(true, false, true), (std::vector{LeagueEmblem::HOTSTREAK, LeagueEmblem::FRESHBLOOD}));
    EXPECT_EQ(MakeLeagueEmblems(false, false, true), std::vector{LeagueEmblem::FRESHBLOOD});
}

}  // namespace
}  // namespace Orvel::Client::Leagues
