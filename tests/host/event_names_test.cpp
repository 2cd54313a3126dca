#include "host/events.h"

#include <gtest/gtest.h>

#include "support/case_table.h"

namespace wex {

namespace {

TEST(ResourceEventName, TakesTheFirstThreeSegmentsOrFiveUnderThePlatformConfiguration) {
    const auto rows = tav::test::ReadCases(__FILE__, "resource_event_names.tsv");
    ASSERT_EQ(rows.size(), 7u);
    for (const auto& row : rows) {
        SCOPED_TRACE(row.at(0));
        EXPECT_EQ(ResourceEventName(row[0]), row.at(1));
    }
    // Every dot of a server message's type becomes an underscore.
    EXPECT_EQ(LcdsEventName(".a.b"), "OnLcdsEvent__a_b");
}

TEST(MatchesUriPattern, AStarTakesOneSegment) {
    const auto rows = tav::test::ReadCases(__FILE__, "uri_patterns.tsv");
    ASSERT_EQ(rows.size(), 11u);
    for (const auto& row : rows) {
        SCOPED_TRACE(row.at(0) + " against " + row.at(1));
        EXPECT_EQ(MatchesUriPattern(row[0], row[1]), row.at(2) == "yes");
    }
}

}  // namespace

}  // namespace wex
