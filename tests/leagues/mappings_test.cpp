#include "leagues/mappings.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "support/case_table.h"

namespace Orvel::Client::Leagues {
namespace {

using Api::LeagueQueueType;
using Api::LeagueTier;
using Api::Miniseries;

TEST(ServerMappings, QueuesTiersAndDivisionsBothWays) {
    const std::vector<std::string> queues = {"NONE", "SOLO5V5", "FLEXTT", "FLEXSR"};
    const std::vector<std::string> tiers = {"NONE",     "BRONZE",  "SILVER", "GOLD",
                                            "PLATINUM", "DIAMOND", "MASTER", "CHALLENGER"};
    const std::vector<std::string> divisions = {"I", "II", "III", "IV", "V", "NA"};
    const auto rows = tav::test::ReadCases(__FILE__, "mappings.tsv");
    ASSERT_EQ(rows.size(), 31u);
    for (const std::vector<std::string>& row : rows) {
        SCOPED_TRACE(::testing::PrintToString(row));
        const std::int32_t number = row.at(0) == "server" ? 0 : std::stoi(row.at(1));
        if (row[0] == "queue") {
            EXPECT_EQ(queues.at(static_cast<int>(LeagueQueueTypeOf(static_cast<LCDS::QueueType>(number)))), row.at(2));
            EXPECT_EQ(LeagueQueueNameOf(static_cast<LCDS::QueueType>(number)), row.at(2));
        } else if (row[0] == "server") {
            EXPECT_EQ(LeagueQueueNameOf(std::string_view(row.at(1))), row.at(2));
        } else if (row[0] == "api") {
            EXPECT_EQ(QueueServerName(static_cast<LeagueQueueType>(number)), row.at(2));
        } else if (row[0] == "tier") {
            EXPECT_EQ(tiers.at(static_cast<int>(LeagueTierOf(static_cast<LCDS::LeagueTier>(number)))), row.at(2));
        } else {
            const auto tier = static_cast<LeagueTier>(std::find(tiers.begin(), tiers.end(), row.at(2)) - tiers.begin());
            const auto rank = static_cast<LCDS::LeagueRank>(number);
            EXPECT_EQ(divisions.at(static_cast<int>(LeagueRankOf(rank, tier))), row.at(3));
            EXPECT_EQ(DivisionNumberOf(rank, tier), std::stoull(row.at(4)));
        }
    }
}

}  // namespace
}  // namespace Orvel::Client::Leagues
