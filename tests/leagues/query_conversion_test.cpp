#include "leagues/query_conversion.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "support/case_table.h"

namespace Orvel::Client::Leagues {

namespace {

TEST(StatCount, TruncatesTowardZeroAndSaturatesOutsideTheRange) {
    const auto rows = tav::test::ReadCases(__FILE__, "stat_counts.tsv");
    ASSERT_EQ(rows.size(), 8u);
    for (const std::vector<std::string>& row : rows) {
        SCOPED_TRACE(row.at(0));
        EXPECT_EQ(StatCount(std::stof(row.at(0))), std::stoll(row.at(1)));
    }
}

TEST(ParseParticipantId, ReadsTheLeadingDecimalNumberOrFailsWithTheTextOfItsErrorKind) {
    const auto rows = tav::test::ReadCases(__FILE__, "participant_ids.tsv");
    ASSERT_EQ(rows.size(), 22u);
    for (const std::vector<std::string>& row : rows) {
        SCOPED_TRACE(row.at(0));
        try {
            EXPECT_EQ(std::to_string(ParseParticipantId(tav::test::Unescape(row.at(0)))), row.at(1));
        } catch (const ParticipantIdError& error) {
            EXPECT_EQ(error.what(), row.at(1));
        }
    }
    // A view ends where it ends, even when digits follow in memory.
    EXPECT_EQ(ParseParticipantId(std::string_view("12345").substr(0, 2)), 12u);
}

}  // namespace

}  // namespace Orvel::Client::Leagues
