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

TEST(ServerQueueMapping, NumbersAndNamesGiveTheApiQueueWithTheFlexQueuesSwapped) {
    const std::pair<std::int32_t, LeagueQueueType> numbers[] = {
        {1, LeagueQueueType::SOLO5V5}, {2, LeagueQueueType::FLEXSR}, {3, LeagueQueueType::FLEXTT},
        {0, LeagueQueueType::NONE},    {4, LeagueQueueType::NONE},   {-1, LeagueQueueType::NONE}};
    const char* const names[] = {"NONE", "SOLO5V5", "FLEXTT", "FLEXSR"};
    for (const auto& [number, queue] : numbers) {
        SCOPED_TRACE(number);
        EXPECT_EQ(LeagueQueueTypeOf(static_cast<LCDS::QueueType>(number)), queue);
        EXPECT_EQ(LeagueQueueNameOf(static_cast<LCDS::QueueType>(number)), names[static_cast<int>(queue)]);
    }
    // Server names are compared exactly; an API queue comes back through its server name.
    const std::pair<const char*, const char*> serverNames[] = {
        {"RANKED_SOLO_5x5", "SOLO5V5"}, {"RANKED_FLEX_SR", "FLEXSR"}, {"RANKED_FLEX_TT", "FLEXTT"},
        {"RANKED_SOLO_5X5", "NONE"},    {"ranked_flex_sr", "NONE"},   {"RANKED_FLEX_TT ", "NONE"}};
    for (const auto& [server, name] : serverNames) {
        SCOPED_TRACE(server);
        EXPECT_EQ(LeagueQueueNameOf(std::string_view(server)), name);
    }
    const std::pair<LeagueQueueType, const char*> queues[] = {{LeagueQueueType::SOLO5V5, "RANKED_SOLO_5x5"},
                                                              {LeagueQueueType::FLEXTT, "RANKED_FLEX_TT"},
                                                              {LeagueQueueType::FLEXSR, "RANKED_FLEX_SR"},
                                                              {LeagueQueueType::NONE, "INVALID"},
                                                              {static_cast<LeagueQueueType>(4), "INVALID"}};
    for (const auto& [queue, server] : queues) {
        EXPECT_EQ(QueueServerName(queue), server);
    }
}

TEST(ServerTierAndRankMapping, TiersOneToSevenAndDivisionsBelowTheApexTiers) {
    for (std::int32_t number : {0, 1, 4, 7, 8, -1}) {
        SCOPED_TRACE(number);
        const bool known = number >= 1 && number <= 7;
        EXPECT_EQ(LeagueTierOf(static_cast<LCDS::LeagueTier>(number)),
                  known ? static_cast<LeagueTier>(number) : LeagueTier::NONE);
    }
    struct Row {
        std::int32_t rank;
        LeagueTier tier;
        LeagueRank division;
        std::uint64_t number;
    };
    const Row rows[] = {
        {0, LeagueTier::GOLD, LeagueRank::I, 1},     {4, LeagueTier::BRONZE, LeagueRank::V, 5},
        {3, LeagueTier::DIAMOND, LeagueRank::IV, 4}, {2, LeagueTier::NONE, LeagueRank::III, 3},
        {5, LeagueTier::GOLD, LeagueRank::NA, 0},    {-1, LeagueTier::SILVER, LeagueRank::NA, 0},
        {0, LeagueTier::MASTER, LeagueRank::NA, 0},  {4, LeagueTier::CHALLENGER, LeagueRank::NA, 0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::to_string(row.rank) + " in tier " + std::to_string(static_cast<int>(row.tier)));
        EXPECT_EQ(LeagueRankOf(static_cast<LCDS::LeagueRank>(row.rank), row.tier), row.division);
        EXPECT_EQ(DivisionNumberOf(static_cast<LCDS::LeagueRank>(row.rank), row.tier), row.number);
    }
}

TEST(MiniseriesAndEmblems, OneResultPerCharacterAndEmblemsInAFixedOrder) {
    EXPECT_EQ(ParseMiniseriesProgress(std::string_view("WLNw\0", 5)),
              (std::vector{Miniseries::W, Miniseries::L, Miniseries::N, Miniseries::N, Miniseries::N}));
    EXPECT_TRUE(ParseMiniseriesProgress("").empty());
    using Api::LeagueEmblem;
    EXPECT_TRUE(MakeLeagueEmblems(false, false, false).empty());
    EXPECT_EQ(MakeLeagueEmblems(true, true, true),
              (std::vector{LeagueEmblem::HOTSTREAK, LeagueEmblem::VETERAN, LeagueEmblem::FRESHBLOOD}));
    EXPECT_EQ(MakeLeagueEmblems(true, false, true), (std::vector{LeagueEmblem::HOTSTREAK, LeagueEmblem::FRESHBLOOD}));
    EXPECT_EQ(MakeLeagueEmblems(false, true, true), (std::vector{LeagueEmblem::VETERAN, LeagueEmblem::FRESHBLOOD}));
}

}  // namespace
}  // namespace Orvel::Client::Leagues
